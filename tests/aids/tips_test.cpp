/// The file of tips and the order in which they are shown.

#include "aids/tips.h"
#include "support/print_qt.h"
#include "support/test_app_folder.h"

#include <gtest/gtest.h>

namespace
{

QStringList Loaded(const QByteArray &content)
{
    const TestAppFolder folder;
    return LoadTips(folder.AddFile("TIPOFDAY.TXT", content)).value_or(QStringList{"(no file)"});
}

} // namespace

TEST(Tips, AreTheLinesOfTheFileInTheApplicationFolder)
{
    EXPECT_EQ(TipFile("/app"), "/app/TIPOFDAY.TXT");
    EXPECT_EQ(Loaded("One.\nTwo.\nThree.\n"), QStringList({"One.", "Two.", "Three."}));
}

TEST(Tips, NeedNoLineEndBehindTheLastOne)
{
    EXPECT_EQ(Loaded("One.\nTwo."), QStringList({"One.", "Two."}));
}

TEST(Tips, EndAsTheEditorsOfAllSystemsEndALine)
{
    EXPECT_EQ(Loaded("One.\r\nTwo.\rThree.\n"), QStringList({"One.", "Two.", "Three."}));
}

TEST(Tips, KeepAnEmptyLineAsATip)
{
    EXPECT_EQ(Loaded("One.\n\nThree.\n"), QStringList({"One.", "", "Three."}));
    EXPECT_EQ(Loaded("\n"), QStringList(QString("")));
}

TEST(Tips, AreNoneInAnEmptyFile)
{
    EXPECT_EQ(Loaded(""), QStringList());
}

TEST(Tips, KeepTheirAccentsInTheEncodingsThatEditorsWrite)
{
    const QString tip = QStringLiteral("Caf\u00e9 O'Neil");
    EXPECT_EQ(Loaded("Caf\xc3\xa9 O'Neil"), QStringList(tip));
    EXPECT_EQ(Loaded("\xef\xbb\xbf"
                     "Caf\xc3\xa9 O'Neil"),
              QStringList(tip));
    EXPECT_EQ(Loaded("Caf\xe9 O'Neil"), QStringList(tip)); // Latin-1
    const QByteArray utf16("\xff\xfe"
                           "C\0a\0f\0\xe9\0 \0O\0'\0N\0e\0i\0l\0",
                           24);
    EXPECT_EQ(Loaded(utf16), QStringList(tip));
}

TEST(Tips, OfAnEndlessLineAreCutOff)
{
    const QStringList tips = Loaded("One.\n" + QByteArray(5'000'000, 'x') + "\nThree.");
    ASSERT_EQ(tips.size(), 3);
    EXPECT_EQ(tips[1], QString(50'000, 'x') + QChar(0x2026));
    EXPECT_EQ(tips[2], "Three.");
}

TEST(Tips, AreNotLoadedFromAFileThatIsNotThereOrFromAnEmptyName)
{
    const TestAppFolder folder;
    EXPECT_FALSE(LoadTips(folder.File("TIPOFDAY.TXT")));
    EXPECT_FALSE(LoadTips(folder.Path())); // a folder
    EXPECT_FALSE(LoadTips(QString()));
}

TEST(Tips, OfThreeLinesCycleOneTwoThreeOne)
{
    QList<int> shown;
    for (int current = 0; shown.size() < 5; shown << current)
        current = NextTip(current, 3);
    EXPECT_EQ(shown, QList<int>({1, 2, 3, 1, 2}));
}

TEST(Tips, BeginAnewWhenTheFileHasShrunk)
{
    EXPECT_EQ(NextTip(17, 3), 1);
    EXPECT_EQ(NextTip(3, 2), 1);
}

TEST(Tips, BeginAnewBehindANumberThatNobodyCounted)
{
    EXPECT_EQ(NextTip(-7, 3), 1);
    EXPECT_EQ(NextTip(2147483647, 3), 1);
    EXPECT_EQ(NextTip(0, 0), 1);
}

TEST(Tips, HaveATextForEachNumberFromOne)
{
    const QStringList tips{"One.", "Two."};
    EXPECT_EQ(TipText(tips, 1), "One.");
    EXPECT_EQ(TipText(tips, 2), "Two.");
    EXPECT_EQ(TipText(tips, 3), "");
    EXPECT_EQ(TipText(tips, 0), "");
}

TEST(Tips, TellHowToMakeTheFileWhenItIsMissing)
{
    EXPECT_EQ(TipsNotFoundText(),
              "That the TIPOFDAY.TXT file was not found? \n"
              "Create a text file named TIPOFDAY.TXT using NotePad with 1 tip per line. "
              "Then place it in the same directory as the application. ");
}
