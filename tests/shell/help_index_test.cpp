/// The contents and the search of the help, on a small help of its own.

#include "shell/help_index.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace
{

class SmallHelp : public testing::Test
{
protected:
    void Page(const QString &file, const QString &title, const QString &body)
    {
        QFile page(folder.filePath(file));
        ASSERT_TRUE(page.open(QIODevice::WriteOnly));
        page.write(QStringLiteral("<html><head><meta charset=\"utf-8\"><title>%1</title></head>"
                                  "<body>%2</body></html>")
                       .arg(title, body)
                       .toUtf8());
    }
    /// A start page with a list of these links, and words in front of it.
    void Start(const QStringList &links)
    {
        QString list;
        for (const QString &link : links)
            list += QStringLiteral("<li><a href=\"%1\">To <b>%1</b></a></li>").arg(link);
        Page(QStringLiteral("AboutQuillon.htm"), QStringLiteral("Start"),
             QStringLiteral("<p>See <a href=\"Last.html\">it</a>.</p><ul>%1</ul>").arg(list));
    }
    QString Contents() const { return Told(HelpIndex(folder.path()).Contents()); }
    QString Search(const QString &text) const
    {
        QStringList links;
        for (const HelpTopic &topic : HelpIndex(folder.path()).Search(text))
            links << topic.Link;
        return links.join(QLatin1Char(' '));
    }
    static QString Told(const QList<HelpTopic> &topics)
    {
        QStringList lines;
        for (const HelpTopic &topic : topics)
            lines << topic.Link + QLatin1Char('=') + topic.Title;
        return lines.join(QLatin1String("; "));
    }

    QTemporaryDir folder;
};

/// "start+length" of each place.
QString Places(const QString &searched, const QString &text)
{
    QStringList places;
    for (const WordPlace &place : PlacesOf(SearchWords(searched), text))
        places << QStringLiteral("%1+%2").arg(place.Start).arg(place.Length);
    return places.join(QLatin1Char(' '));
}

} // namespace

TEST_F(SmallHelp, ListsTheLinksOfTheStartPageInTheirOrderAndEachOnce)
{
    Page("First.html", "One", "");
    Page("Last.html", "Two &amp; more", "");
    Start({"First.html", "#place", "Last.html", "First.html"});
    EXPECT_EQ(Contents(),
              "AboutQuillon.htm=Start; First.html=One; AboutQuillon.htm#place=To #place; "
              "Last.html=Two & more");
}

TEST_F(SmallHelp, LeavesOutAPageThatIsMissing)
{
    Page("Last.html", "", "");
    Start({"Missing.html", "Last.html"});
    EXPECT_EQ(Contents(), "AboutQuillon.htm=Start; Last.html=Last.html");
}

TEST_F(SmallHelp, IsEmptyWithoutAStartPage)
{
    Page("Last.html", "Lots", "");
    EXPECT_EQ(Contents(), "");
    EXPECT_EQ(Search("lots"), "");
}

TEST_F(SmallHelp, FindsFirstInTitlesThenInHeadingsThenInTheText)
{
    Page("Text.html", "One", "<h2>Two</h2><table><tr><td>the split</td></tr></table>");
    Page("Heading.html", "One", "<h2>A split</h2>");
    Page("Title.html", "The split", "");
    Page("None.html", "One", "Two");
    Start({"Text.html", "Heading.html", "Title.html", "None.html"});
    EXPECT_EQ(Search("split"), "Title.html Heading.html Text.html");
}

TEST_F(SmallHelp, FindsOnlyTopicsThatHoldAllTheWords)
{
    Page("Both.html", "Backup", "of an account");
    Page("One.html", "Backup", "of a file");
    Start({"One.html", "Both.html"});
    EXPECT_EQ(Search("backup account"), "Both.html");
    EXPECT_EQ(Search(" account,\tbackup! "), "Both.html");
    EXPECT_EQ(Search("backup"), "One.html Both.html"); // equals: as in the contents
    EXPECT_EQ(Search("backup xyzzy"), "");
}

TEST_F(SmallHelp, FindsAWordByItsBeginningAndNotByItsMiddle)
{
    Page("Page.html", "Charts", "");
    Start({"Page.html"});
    EXPECT_EQ(Search("char"), "Page.html");
    EXPECT_EQ(Search("art"), "");
}

TEST_F(SmallHelp, FindsWithoutRegardToCaseAndAccents)
{
    Page("Page.html", "Café", QStringLiteral("DÉPÔT, don’t, P&amp;L"));
    Start({"Page.html"});
    for (const char *words :
         {"cafe", "CAFÉ", "cafe\u0301", "depot", "Dépôt", "don't", "don’t", "p&l"})
        EXPECT_EQ(Search(words), "Page.html") << words;
}

TEST_F(SmallHelp, FindsNothingWithoutWords)
{
    Page("Page.html", "One", "");
    Start({"Page.html"});
    for (const char *words : {"", "   ", "?!", "\u0301"})
        EXPECT_EQ(Search(words), "") << words;
}

TEST(PlacesOf, AreThoseOfTheWholeWordsAsTheyAreWritten)
{
    EXPECT_EQ(Places("depot fee", "A DÉPÔT's fees: coffee."), "2+7 10+4");
    EXPECT_EQ(Places("", "A word"), "");
    EXPECT_EQ(Places("e", ""), "");
}
