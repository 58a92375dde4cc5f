/// The help as it is delivered: no topic that the program opens is missing, no link leads nowhere,
/// and its window shows, lists and finds them all.

#include "shell/help_window.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDialog>
#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QSet>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QWindow>

#include <algorithm>

namespace
{

const QString ProjectFolder = QStringLiteral(QUILLON_PROJECT);
const QString HelpFolder = QStringLiteral(QUILLON_DELIVERED) + QStringLiteral("/help");
const QString StartPage = QStringLiteral("AboutQuillon.htm");

QString TextOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << path.toStdString() << " cannot be read";
        return QString();
    }
    return QString::fromUtf8(file.readAll());
}

QStringList Pages()
{
    return QDir(HelpFolder)
        .entryList({QStringLiteral("*.htm"), QStringLiteral("*.html")}, QDir::Files);
}

QStringList Captures(const QString &text, const QString &pattern)
{
    QStringList found;
    QRegularExpressionMatchIterator matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

QStringList LinksOf(const QString &page)
{
    return Captures(TextOf(HelpFolder + QLatin1Char('/') + page),
                    QStringLiteral("href=\"([^\"]*)\""));
}

/// Of "Page.html#place" and, within a page, "#place".
QString PageOf(const QString &link, const QString &from)
{
    const QString page = link.section(QLatin1Char('#'), 0, 0);
    return page.isEmpty() ? from : page;
}

struct Picture
{
    QString File;
    QString Told; ///< what it shows, for who does not see it
};

QList<Picture> PicturesOf(const QString &page)
{
    QList<Picture> pictures;
    const QString text = TextOf(HelpFolder + QLatin1Char('/') + page);
    for (const QString &tag : Captures(text, QStringLiteral("<img\\b([^>]*)>")))
        pictures << Picture{Captures(tag, QStringLiteral("src=\"([^\"]*)\"")).value(0),
                            Captures(tag, QStringLiteral("alt=\"([^\"]*)\"")).value(0)};
    return pictures;
}

bool LeadsSomewhere(const QString &link, const QString &from)
{
    const QString path = HelpFolder + QLatin1Char('/') + PageOf(link, from);
    if (!QFileInfo(path).isFile())
        return false;
    const QString place = link.section(QLatin1Char('#'), 1);
    return place.isEmpty() || TextOf(path).contains(QStringLiteral("name=\"%1\"").arg(place));
}

QStringList TopicsNamedInSources()
{
    QStringList topics;
    QDirIterator files(ProjectFolder + QStringLiteral("/src"),
                       {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        topics += Captures(TextOf(files.next()), QStringLiteral("\"(\\w+\\.html?)\""));
    topics.removeDuplicates();
    return topics;
}

} // namespace

TEST(Help, HasEveryTopicThatTheProgramOpens)
{
    const QStringList topics = TopicsNamedInSources();
    EXPECT_TRUE(topics.contains(StartPage)) << "the sources were not found";
    for (const QString &topic : topics)
        EXPECT_TRUE(QFileInfo(HelpFolder + QLatin1Char('/') + topic).isFile())
            << topic.toStdString();
}

TEST(Help, HasNoLinkThatLeadsNowhere)
{
    for (const QString &page : Pages()) {
        const QStringList links = LinksOf(page);
        EXPECT_GT(links.size(), 1) << page.toStdString(); // the style, and the way on
        for (const QString &link : links)
            EXPECT_TRUE(LeadsSomewhere(link, page))
                << link.toStdString() << " in " << page.toStdString();
    }
}

TEST(Help, HasNoPlaceThatNoLinkLeadsTo)
{
    QSet<QString> led;
    for (const QString &page : Pages())
        for (const QString &link : LinksOf(page))
            led.insert(PageOf(link, page) + QLatin1Char('#') + link.section(QLatin1Char('#'), 1));
    for (const QString &page : Pages())
        for (const QString &place : Captures(TextOf(HelpFolder + QLatin1Char('/') + page),
                                             QStringLiteral("name=\"([^\"]*)\"")))
            EXPECT_TRUE(led.contains(page + QLatin1Char('#') + place))
                << place.toStdString() << " in " << page.toStdString();
}

TEST(Help, LeadsToEveryTopicFromAnotherOneThanTheContents)
{
    QSet<QString> led = {StartPage};
    for (const QString &page : Pages()) {
        const QString text = TextOf(HelpFolder + QLatin1Char('/') + page);
        const QString read = page == StartPage ? text.section(QStringLiteral("</ul>"), 1) : text;
        for (const QString &link : Captures(read, QStringLiteral("href=\"([^\"]*)\"")))
            if (PageOf(link, page) != page)
                led.insert(PageOf(link, page));
    }
    for (const QString &page : Pages())
        EXPECT_TRUE(led.contains(page)) << page.toStdString();
}

TEST(Help, ShowsAPictureInEveryTopicThatAScreenOpens)
{
    for (const QString &topic : TopicsNamedInSources())
        EXPECT_FALSE(PicturesOf(topic).isEmpty()) << topic.toStdString();
}

TEST(Help, HasEveryPictureThatATopicShowsAndTellsWhatItIs)
{
    for (const QString &page : Pages())
        for (const Picture &picture : PicturesOf(page)) {
            EXPECT_FALSE(QImage(HelpFolder + QLatin1Char('/') + picture.File).isNull())
                << picture.File.toStdString() << " in " << page.toStdString();
            EXPECT_GT(picture.Told.size(), 20)
                << picture.File.toStdString() << " in " << page.toStdString();
        }
}

TEST(Help, ShowsEveryPictureThatWasTakenForItAndFitsTheWindow)
{
    QSet<QString> shown;
    for (const QString &page : Pages())
        for (const Picture &picture : PicturesOf(page))
            shown.insert(picture.File);
    qint64 bytes = 0;
    const QFileInfoList taken = QDir(HelpFolder + QStringLiteral("/pictures")).entryInfoList();
    for (const QFileInfo &picture : taken) {
        if (!picture.isFile())
            continue;
        bytes += picture.size();
        EXPECT_TRUE(shown.contains(QStringLiteral("pictures/") + picture.fileName()))
            << picture.fileName().toStdString();
        EXPECT_LE(QImage(picture.filePath()).width(), 760) << picture.fileName().toStdString();
    }
    EXPECT_GT(bytes, 0);
    EXPECT_LT(bytes, 2 << 20);
}

TEST(Help, ReachesEveryTopicFromTheContents)
{
    QSet<QString> reached = {StartPage};
    for (const QString &link : LinksOf(StartPage))
        reached.insert(PageOf(link, StartPage));
    for (const QString &page : Pages()) {
        EXPECT_TRUE(reached.contains(page)) << page.toStdString();
        EXPECT_TRUE(page == StartPage || LinksOf(page).contains(StartPage)) << page.toStdString();
    }
}

TEST(Help, LeavesTheColoursOfTextAndPageToTheDesktop)
{
    for (const QString &file : Pages() + QStringList(QStringLiteral("style.css")))
        EXPECT_EQ(Captures(TextOf(HelpFolder + QLatin1Char('/') + file),
                           QStringLiteral("(color\\s*[:=]|background\\s*:|#[0-9a-f]{6})")),
                  QStringList())
            << file.toStdString();
}

TEST(Help, ListsEveryPageInTheContentsUnderATitleOfItsOwn)
{
    const HelpIndex index(HelpFolder);
    QSet<QString> links, titles;
    for (const HelpTopic &topic : index.Contents()) {
        EXPECT_TRUE(LeadsSomewhere(topic.Link, StartPage)) << topic.Link.toStdString();
        EXPECT_FALSE(titles.contains(topic.Title)) << topic.Title.toStdString();
        links.insert(topic.Link);
        titles.insert(topic.Title);
    }
    for (const QString &page : Pages())
        EXPECT_TRUE(links.contains(page)) << page.toStdString();
}

TEST(Help, FindsEveryPageByItsTitle)
{
    const HelpIndex index(HelpFolder);
    for (const HelpTopic &topic : index.Contents()) {
        if (topic.Link.contains(QLatin1Char('#')))
            continue;
        const QList<HelpTopic> found = index.Search(topic.Title);
        EXPECT_TRUE(std::any_of(found.begin(), found.end(), [&topic](const HelpTopic &one) {
            return one.Link == topic.Link;
        })) << topic.Title.toStdString();
    }
}

/// The window with the start page shown, and what a reader does with it.
class HelpReader : public testing::Test
{
protected:
    HelpReader()
    {
        EXPECT_TRUE(help.ShowTopic(StartPage));
        EXPECT_TRUE(QTest::qWaitForWindowActive(&help));
    }

    template <class T>
    T *Part(const char *name)
    {
        return help.findChild<T *>(name);
    }
    QTextBrowser *Page() { return Part<QTextBrowser>("txtHelpPage"); }
    QListWidget *Contents() { return Part<QListWidget>("lstHelpContents"); }
    QListWidget *Found() { return Part<QListWidget>("lstHelpFound"); }
    QString Shown() { return Page()->source().toString().section(QLatin1Char('/'), -1); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void Click(QListWidget *list, const QString &title)
    {
        const QList<QListWidgetItem *> items = list->findItems(title, Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1) << title.toStdString();
        list->scrollToItem(items.front());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(items.front()).center());
    }
    /// As a reader does it: Ctrl+F, and type.
    void Search(const QString &words)
    {
        Press(Qt::Key_F, Qt::ControlModifier);
        ASSERT_EQ(QApplication::focusWidget(), Part<QLineEdit>("txtHelpSearch"));
        Press(Qt::Key_Delete); // what stood there is selected
        QTest::keyClicks(QApplication::focusWidget(), words);
    }
    /// Of the picture in the page, in the units of the page's layout.
    int ShownWidth(const QString &name)
    {
        const QVariant shown = Page()->document()->resource(
            QTextDocument::ImageResource, QUrl(QStringLiteral("pictures/%1.png").arg(name)));
        return qRound(shown.value<QImage>().deviceIndependentSize().width());
    }
    QStringList Marked()
    {
        QStringList words;
        for (const QTextEdit::ExtraSelection &mark : Page()->extraSelections())
            words << mark.cursor.selectedText();
        return words;
    }
    /// The titles in bold.
    QString MarkedTopic()
    {
        QStringList titles;
        for (int row = 0; row < Contents()->count(); ++row)
            if (Contents()->item(row)->font().bold())
                titles << Contents()->item(row)->text();
        return titles.join(QLatin1String("; "));
    }

    HelpWindow help{HelpFolder};
};

TEST_F(HelpReader, ShowsWhatIsClickedInTheContentsAndMarksIt)
{
    EXPECT_EQ(MarkedTopic(), "Quillon Help");
    Click(Contents(), "Signing on");
    EXPECT_EQ(Shown(), "SignOn.html");
    EXPECT_EQ(MarkedTopic(), "Signing on");
    EXPECT_EQ(Contents()->currentItem()->text(), "Signing on");
    Click(Contents(), "Accounts and their files");
    EXPECT_EQ(Shown(), "AboutQuillon.htm#accounts");
    EXPECT_EQ(MarkedTopic(), "Accounts and their files");
}

TEST_F(HelpReader, ChoosesInTheContentsByKeys)
{
    Contents()->setFocus();
    Press(Qt::Key_Down);
    EXPECT_EQ(Shown(), StartPage); // looking only
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), "AboutQuillon.htm#five");
}

TEST_F(HelpReader, MarksTheTopicToWhichALinkInThePageLeads)
{
    Page()->setSource(Page()->source().resolved(QUrl("USUserSetup.html#nowhere")));
    EXPECT_EQ(MarkedTopic(), "Settings");
}

TEST_F(HelpReader, GoesBackAndForwardAndHome)
{
    Press(Qt::Key_Left, Qt::AltModifier); // nothing to go back to
    EXPECT_EQ(Shown(), StartPage);
    EXPECT_FALSE(Part<QAbstractButton>("cmdBack")->isEnabled());
    Click(Contents(), "Settings");
    Click(Contents(), "Signing on");
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Shown(), "USUserSetup.html");
    EXPECT_EQ(MarkedTopic(), "Settings");
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Shown(), "SignOn.html");
    EXPECT_FALSE(Part<QAbstractButton>("cmdForward")->isEnabled());
    Part<QAbstractButton>("cmdBack")->click();
    EXPECT_EQ(Shown(), "USUserSetup.html");
    Press(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(Shown(), StartPage);
}

TEST_F(HelpReader, ShowsAPictureAtItsSizeOrAsWideAsANarrowerPage)
{
    help.resize(1110, 720);
    Click(Contents(), "The Daily Tracker");
    const QImage picture(HelpFolder + "/pictures/daily_tracker.png");
    EXPECT_EQ(ShownWidth("daily_tracker"), picture.width());
    help.resize(700, 500);
    EXPECT_LT(ShownWidth("daily_tracker"), picture.width());
    EXPECT_GT(ShownWidth("daily_tracker"), 300);
    EXPECT_LE(Page()->document()->size().width(), Page()->viewport()->width());
    help.resize(1110, 720);
    EXPECT_EQ(ShownWidth("daily_tracker"), picture.width());
}

TEST_F(HelpReader, FitsThePicturesAfterALinkToAnotherPlaceOfTheTopicToo)
{
    help.resize(1110, 720);
    Click(Contents(), "Working with a chart");
    Page()->setSource(Page()->source().resolved(QUrl("#colours")));
    EXPECT_EQ(ShownWidth("chart_security_performance"), 760);
    help.resize(700, 500);
    EXPECT_LT(ShownWidth("chart_security_performance"), 500);
}

TEST_F(HelpReader, LeavesASmallPictureAsItIsInANarrowWindow)
{
    help.resize(700, 500);
    Click(Contents(), "Portfolio Selection");
    EXPECT_EQ(ShownWidth("portfolio_select"),
              QImage(HelpFolder + "/pictures/portfolio_select.png").width());
}

TEST_F(HelpReader, FindsATopicByAWordOfItsTextAndMarksTheWordThere)
{
    Search("encrypted");
    Click(Found(), "Signing on");
    EXPECT_EQ(Shown(), "SignOn.html");
    EXPECT_EQ(Marked(), QStringList("encrypted"));
    EXPECT_TRUE(Page()->textCursor().block().text().contains("encrypted")); // scrolled to
}

TEST_F(HelpReader, ClosesFromTheSearchToo)
{
    Search("encrypted");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST_F(HelpReader, OpensTheBestTopicByEnterAndAnyOtherByAClick)
{
    Search("PASSWORD account");
    ASSERT_GT(Found()->count(), 1);
    EXPECT_EQ(Part<QLabel>("lblHelpFound")->text(),
              QStringLiteral("%1 topics").arg(Found()->count()));
    Press(Qt::Key_Return);
    EXPECT_EQ(Found()->currentRow(), 0);
    EXPECT_EQ(MarkedTopic(), Found()->item(0)->text());
    Click(Found(), "Settings");
    EXPECT_EQ(Shown(), "USUserSetup.html");
    EXPECT_TRUE(Marked().contains("password"));
}

TEST_F(HelpReader, SaysSoWhenNoTopicHoldsTheWords)
{
    Search("xyzzy");
    EXPECT_EQ(Found()->count(), 0);
    EXPECT_TRUE(Part<QLabel>("lblHelpFound")->isVisible());
    EXPECT_EQ(Part<QLabel>("lblHelpFound")->text(), "No topic holds these words.");
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), StartPage);
}

TEST_F(HelpReader, ShowsAndMarksNothingForAnEmptySearch)
{
    Search("account");
    ASSERT_FALSE(Marked().isEmpty());
    Search("");
    EXPECT_EQ(Found()->count(), 0);
    EXPECT_FALSE(Part<QLabel>("lblHelpFound")->isVisible());
    EXPECT_TRUE(Marked().isEmpty());
}

TEST_F(HelpReader, ShowsWhatTheProgramOpensWithoutMarksOfTheSearchBefore)
{
    Search("account");
    help.ShowTopic("SignOn.html");
    EXPECT_TRUE(Marked().isEmpty());
    EXPECT_EQ(Part<QLineEdit>("txtHelpSearch")->text(), "");
    EXPECT_TRUE(Contents()->isVisible());
}

TEST_F(HelpReader, MarksInTheColoursOfTheDesktopWhenTheyChange)
{
    Search("account");
    QPalette dark = help.palette();
    dark.setColor(QPalette::Highlight, Qt::darkMagenta);
    help.setPalette(dark);
    EXPECT_EQ(Page()->extraSelections().front().format.background().color(),
              QColor(Qt::darkMagenta));
}

TEST_F(HelpReader, NamesEveryControlAndGivesEachMnemonicOnce)
{
    for (const char *name : {"cmdBack", "cmdForward", "cmdHome", "tabHelp", "lstHelpContents",
                             "txtHelpSearch", "lstHelpFound", "txtHelpPage"})
        EXPECT_FALSE(Part<QWidget>(name)->accessibleName().isEmpty()) << name;
    auto *tabs = Part<QTabWidget>("tabHelp");
    QSet<QKeySequence> keys = {QKeySequence::mnemonic(tabs->tabText(0)),
                               QKeySequence::mnemonic(tabs->tabText(1))};
    for (const char *name : {"cmdBack", "cmdForward", "cmdHome"})
        keys.insert(QKeySequence::mnemonic(Part<QAbstractButton>(name)->text()));
    EXPECT_EQ(keys.size(), 5);
    EXPECT_FALSE(keys.contains(QKeySequence()));
}

TEST(Help, ShowsEveryTopicUnderItsTitle)
{
    HelpWindow help(HelpFolder);
    for (const QString &page : Pages()) {
        ASSERT_TRUE(help.ShowTopic(page)) << page.toStdString();
        const auto *shown = help.findChild<QTextBrowser *>("txtHelpPage");
        const QString title = shown->document()->metaInformation(QTextDocument::DocumentTitle);
        EXPECT_FALSE(title.isEmpty()) << page.toStdString();
        // No line is wider than the page: nobody scrolls sideways to read.
        EXPECT_LE(shown->document()->size().width(), shown->viewport()->width())
            << page.toStdString();
    }
}

TEST(Help, StaysAsItIsWhenThereIsNoSuchTopic)
{
    HelpWindow help(HelpFolder);
    EXPECT_FALSE(help.ShowTopic(QStringLiteral("Missing.html")));
    EXPECT_FALSE(help.isVisible());
    ASSERT_TRUE(help.ShowTopic(StartPage));
    EXPECT_FALSE(help.ShowTopic(QStringLiteral("Missing.html")));
    EXPECT_TRUE(help.isVisible());
    EXPECT_EQ(help.findChild<QTextBrowser *>("txtHelpPage")->source().fileName(), StartPage);
}

TEST(Help, IsReadWhileAModalScreenWaits)
{
    HelpWindow help(HelpFolder);
    ASSERT_TRUE(help.ShowTopic(StartPage)); // open already, and shut out by what comes up now
    QDialog waiting;
    waiting.open();
    ASSERT_TRUE(help.ShowTopic(StartPage));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
    EXPECT_EQ(help.windowHandle()->transientParent(), waiting.windowHandle());
    QTest::keyClick(help.windowHandle(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(help.findChild<QTabWidget *>("tabHelp")->currentIndex(), 1); // the search

    waiting.reject();
    EXPECT_TRUE(help.isVisible());
    ASSERT_TRUE(help.ShowTopic(StartPage));
    EXPECT_EQ(help.windowHandle()->transientParent(), nullptr);
}

TEST(Help, ClosesWithEscapeAndComesBack)
{
    HelpWindow help(HelpFolder);
    ASSERT_TRUE(help.ShowTopic(StartPage));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
    QTest::keyClick(&help, Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
    EXPECT_TRUE(help.ShowTopic(StartPage));
    EXPECT_TRUE(help.isVisible());
}
