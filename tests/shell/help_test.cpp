/// The help as it is delivered: no topic that the program opens is missing, no link leads nowhere.

#include "shell/help_window.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace
{

const QString ProjectFolder = QStringLiteral(QUILLON_PROJECT);
const QString HelpFolder = ProjectFolder + QStringLiteral("/help");
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

TEST(Help, ShowsEveryTopicUnderItsTitle)
{
    HelpWindow help(HelpFolder);
    for (const QString &page : Pages()) {
        ASSERT_TRUE(help.ShowTopic(page)) << page.toStdString();
        const QString title = help.document()->metaInformation(QTextDocument::DocumentTitle);
        EXPECT_FALSE(title.isEmpty()) << page.toStdString();
        // No line is wider than the window: nobody scrolls sideways to read.
        EXPECT_LE(help.document()->size().width(), help.width()) << page.toStdString();
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
    EXPECT_EQ(help.source().fileName(), StartPage);
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
