/// What a workbook makes of its cells: many rows, values that no cell holds.

#include "checked_book.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <limits>

namespace
{

QString Of(const char *text)
{
    return QString::fromUtf8(text);
}

int ErrorOf(const std::function<void()> &use)
{
    try {
        use();
    } catch (const RuntimeError &error) {
        return error.Number();
    }
    return 0;
}

} // namespace

TEST(Workbook, IsCheckedByAScriptThatFindsFaults)
{
    const QTemporaryDir folder;
    CheckedBook book("sound");
    for (int row = 1; row <= 40; ++row) {
        book.Text(row, 1, QStringLiteral("text %1").arg(row));
        book.Value(row, 2, row + 0.123, row + 0.123);
    }
    book.Save(folder.path());
    QFile file(book.Path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray sound = file.readAll();

    // Type and length of a record, and the byte of its content that is changed.
    struct Change
    {
        const char *What;
        QByteArray Header;
        int Byte;
    };
    for (const Change &change :
         {Change{"cells with texts", QByteArray("\xfc\x00", 2), 0},
          Change{"distinct texts", QByteArray("\xfc\x00", 2), 4},
          Change{"index of texts", QByteArray("\xff\x00\x2a\x00", 4), 2},
          Change{"place of a sheet", QByteArray("\x85\x00\x0e\x00", 4), 0},
          Change{"name of a sheet", QByteArray("\x85\x00\x0e\x00", 4), 7},
          Change{"place of a block", QByteArray("\x0b\x02\x18\x00", 4), 16},
          Change{"rows of a sheet", QByteArray("\x00\x02\x0e\x00", 4), 4},
          Change{"columns of a sheet", QByteArray("\x00\x02\x0e\x00", 4), 10},
          Change{"number of a row", QByteArray("\x08\x02\x10\x00", 4), 0},
          Change{"columns of a row", QByteArray("\x08\x02\x10\x00", 4), 4},
          Change{"row of a cell", QByteArray("\xfd\x00\x0a\x00", 4), 0},
          Change{"column of a cell", QByteArray("\xfd\x00\x0a\x00", 4), 2},
          Change{"style of a cell", QByteArray("\x03\x02\x0e\x00", 4), 4},
          Change{"place of a row's cells", QByteArray("\xd7\x00\x44\x00", 4), 8}}) {
        const qsizetype header = sound.indexOf(change.Header, 512);
        ASSERT_GT(header, 0) << change.What;
        QByteArray changed = sound;
        char &byte = changed[header + 4 + change.Byte];
        byte = char(byte ^ 0x2D);
        QFile faulty(folder.filePath(Of("faulty.xls")));
        ASSERT_TRUE(faulty.open(QIODevice::WriteOnly));
        faulty.write(changed);
        faulty.close();
        EXPECT_FALSE(FaultsOf(faulty.fileName()).isEmpty()) << change.What;
    }
    EXPECT_TRUE(FaultsOf(book.Path()).isEmpty());
}

TEST(Workbook, HoldsTwoHundredThousandRowsOnFourSheets)
{
    const QTemporaryDir folder;
    CheckedBook book("many");
    for (int row = 1; row <= 200000; ++row) {
        if (row % 4 == 0)
            book.Text(row, 1, QStringLiteral("Name %1").arg(row));
        else
            book.Typed(row, 2, QStringLiteral("%1.50").arg(row), row + 0.5, "0.00");
    }
    EXPECT_EQ(book.Book().RowCount(), 200000);
    book.Save(folder.path());
    ExpectCells("xlrd", {&book});
    ExpectSoundRecords({&book});
}

TEST(Workbook, LeavesSheetsEmptyThatNoRowIsOn)
{
    const QTemporaryDir folder;
    CheckedBook book("late");
    book.Text(65536 * 2 + 7, 3, Of("here"));
    book.Save(folder.path());
    ExpectCells("xlrd", {&book});
    ExpectSoundRecords({&book});
}

TEST(Workbook, ReplacesWhatNoReaderCanDecode)
{
    const QTemporaryDir folder;
    CheckedBook book("broken");
    QString text = Of("a-b-c-");
    text[1] = QChar(0xD83D); // the first half of a pair
    text[3] = QChar(0xDE00); // the second
    text[5] = QChar(u'\0');
    book.Book().SetText(1, 1, text);
    book.ExpectText(1, 1, Of("a\uFFFDb\uFFFDc\uFFFD"));
    book.Text(2, 1, Of("line\r\nend")); // which Gnumeric writes to its own files without the CR
    book.Save(folder.path());
    ExpectCells("xlrd", {&book});
    ExpectSoundRecords({&book});
}

TEST(Workbook, LeavesACellEmptyForWhatIsNoNumberAndNoText)
{
    const QTemporaryDir folder;
    CheckedBook book("holes");
    book.Book().SetNumber(1, 1, std::numeric_limits<double>::infinity());
    book.Book().SetNumber(1, 2, std::numeric_limits<double>::quiet_NaN());
    book.Book().SetText(1, 3, QString());
    book.Book().SetTyped(1, 4, QString());
    EXPECT_EQ(book.Book().RowCount(), 0);
    book.Book().SetNumber(2, 1, 5.0);
    book.Book().SetNumber(2, 1, std::numeric_limits<double>::infinity());
    EXPECT_EQ(book.Book().RowCount(), 2);
    book.Save(folder.path());
    ExpectCells("xlrd", {&book});
    ExpectSoundRecords({&book});
}

TEST(Workbook, RefusesAPlaceOutsideOfASheet)
{
    constexpr int SubscriptOutOfRange = 9;
    Workbook book(FormatsOf("en_US"));
    EXPECT_EQ(ErrorOf([&] { book.SetText(1, 257, Of("x")); }), SubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([&] { book.SetTyped(1, 0, Of("x")); }), SubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([&] { book.SetNumber(0, 1, 1.0); }), SubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([&] { book.SetNumber(-1, 1, Currency("1")); }), SubscriptOutOfRange);
    EXPECT_EQ(book.RowCount(), 0);
}

TEST(Workbook, CanBeSavedAgainWithMoreCells)
{
    const QTemporaryDir folder;
    CheckedBook book("again");
    book.Text(2, 1, Of("first"));
    book.Text(1, 1, Of("second"));
    book.Save(folder.path());
    book.Text(1, 2, Of("third"));
    book.Text(2, 1, Of("first, changed"));
    book.Save(folder.path());
    ExpectCells("xlrd", {&book});
    ExpectSoundRecords({&book});
}
