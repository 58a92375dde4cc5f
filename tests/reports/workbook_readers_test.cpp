/// Workbooks as spreadsheet programs read them: every cell, its type and its number format.

#include "checked_book.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <tuple>

namespace
{

QString Of(const char *text)
{
    return QString::fromUtf8(text);
}

/// Texts with letters of one byte, of two, and pairs of surrogates.
QString RandomText(QRandomGenerator &random, int length)
{
    const int kind = random.bounded(3);
    QString text;
    while (text.size() < length) {
        const char32_t letter = kind == 0   ? U'a' + random.bounded(26)
                                : kind == 1 ? U'\u0410' + random.bounded(64)
                                            : U'\U0001F600' + random.bounded(64);
        text += QString::fromUcs4(&letter, 1);
    }
    return text;
}

/// Which readers a book is for: there are many books of the slow kinds, or they are large.
enum class For
{
    All,
    NotGnumeric,
    Xlrd
};

/// The books that readers read. They are made once and read in one call, since a spreadsheet program
/// takes seconds to start.
class Workbooks : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        AddTyped();
        AddGerman();
        AddTexts();
        AddLongTexts();
        AddNumbers();
        AddPlaces();
        Add("empty");
        AddRows(65536, For::Xlrd);
        AddRows(65537, For::All);
        AddCutTexts();
        for (int seed = 0; seed < 12; ++seed)
            AddRandomTexts(seed);
        AddRandomCells();
        for (const auto &[readers, book] : m_books)
            book->Save(m_folder->path());
    }
    static void TearDownTestSuite()
    {
        m_books.clear();
        m_folder.reset();
    }

    static std::vector<const CheckedBook *> BooksFor(std::initializer_list<For> kinds)
    {
        std::vector<const CheckedBook *> books;
        for (const auto &[kind, book] : m_books) {
            if (std::find(kinds.begin(), kinds.end(), kind) != kinds.end())
                books.push_back(book.get());
        }
        return books;
    }

private:
    static CheckedBook &Add(const std::string &name, For readers = For::All,
                            const char *locale = "en_US")
    {
        m_books.emplace_back(readers,
                             std::make_unique<CheckedBook>(name.c_str(), FormatsOf(locale)));
        return *m_books.back().second;
    }

    static void AddTyped()
    {
        CheckedBook &book = Add("typed");
        int row = 0;
        for (const auto &[text, number, code] :
             {std::tuple{"1,234.50", 1234.5, "#,##0.00"},
              {"1,234.5678", 1234.5678, "#,##0.0000"},
              {"-12.5", -12.5, "General"},
              {"12.50", 12.5, "0.00"},
              {"12.3456", 12.3456, "General"},
              {"1,234", 1234.0, "#,##0"},
              {"-0.00", 0.0, "0.00"},
              {"12.34%", 0.1234, "0.00%"},
              {"12%", 0.12, "0%"},
              {"12.3%", 0.123, "0.0%"},
              {"1E5", 1e5, "0.00E+00"},
              {"123456789012", 123456789012.0, "0"},
              {"3/1/1900", 61.0, "m/d/yyyy"},
              {"2/29/2024", 45351.0, "m/d/yyyy"},
              {"3/2/2026", 46083.0, "m/d/yyyy"},
              {"12/31/9999", 2958465.0, "m/d/yyyy"},
              {"2026-03-02", 46083.0, "yyyy-mm-dd"},
              {"02-Mar-26", 46083.0, "d-mmm-yy"},
              {"Monday, March 2, 2026", 46083.0, "dddd, mmmm d, yyyy"},
              {"10:15:00 AM", 36900 / 86400.0, "h:mm:ss AM/PM"},
              {"12:00:00 AM", 0.0, "h:mm:ss AM/PM"},
              {"22:15:30", 80130 / 86400.0, "h:mm:ss"}}) {
            book.Typed(++row, 1, Of(text), number, code);
            book.Text(row, 2, Of(text)); // written raw, it stays as it is
        }
        row = 0;
        for (const char *text :
             {"DATE", "N E T   T O T A L", "MAR1", "12,34", "1/1/1900", "2/28/1900", "=SUM(A1:A9)",
              "'7", "Date:02-Mar-26", "1e400", "12 3/8", "$5"})
            book.TypedText(++row, 3, Of(text));
    }

    static void AddGerman()
    {
        CheckedBook &book = Add("german", For::All, "de_DE");
        book.Typed(1, 1, Of("1.234,50"), 1234.5, "#,##0.00");
        book.Typed(2, 1, Of("-12,5"), -12.5, "General");
        book.Typed(3, 1, Of("12,34%"), 0.1234, "0.00%");
        book.Typed(4, 1, Of("02.03.2026"), 46083, "m/d/yyyy");
        book.TypedText(5, 1, Of("1,234.50"));
    }

    static void AddTexts()
    {
        CheckedBook &book = Add("texts");
        int row = 0;
        for (const char *text : {"A",
                                 "A",
                                 "Zoë Müller & Söhne",
                                 "Łódź",
                                 "日本電気",
                                 "עברית",
                                 "😀",
                                 "a😀b😀",
                                 "ÿ",
                                 "Ā",
                                 "O'Brien",
                                 "'quoted'",
                                 "\"quoted\"",
                                 "=1+2",
                                 "+1",
                                 "-1",
                                 "@x",
                                 "1E5",
                                 "MAR1",
                                 "1/2",
                                 "007",
                                 "TRUE",
                                 "#REF!",
                                 "two\nlines",
                                 "\nx\n",
                                 " leading",
                                 "trailing ",
                                 "a  b   c",
                                 "tab\there",
                                 "back\\slash",
                                 "<b>&amp;</b>",
                                 "100%",
                                 "€ 5",
                                 "a\u00a0b",
                                 "\ufeffx"})
            book.Text(++row, 1, Of(text));
        book.Text(row + 2, 200, Of("A"));
    }

    static void AddLongTexts()
    {
        CheckedBook &book = Add("long");
        int row = 0;
        for (const int length :
             {255, 256, 4110, 4111, 8210, 8221, 8222, 8224, 8225, 16448, 32766}) {
            book.Text(++row, 1, QString(length, u'n'));
            book.Text(row, 2, QString(length, u'Ж'));
        }
        book.Text(++row, 1, QString(32767, u'x'));
        // One more than a cell holds, and a pair that would be cut in the middle.
        book.Book().SetText(++row, 1, QString(40000, u'y'));
        book.ExpectText(row, 1, QString(32767, u'y'));
        book.Book().SetText(++row, 1, QString(32766, u'z') + Of("😀"));
        book.ExpectText(row, 1, QString(32766, u'z'));
    }

    static void AddNumbers()
    {
        CheckedBook &book = Add("numbers");
        int row = 0;
        for (const double value : {0.0,
                                   1.0,
                                   -1.0,
                                   0.5,
                                   0.1,
                                   12.34,
                                   -12.34,
                                   1.005,
                                   1e300,
                                   -1e300,
                                   5e-324,
                                   1e-300,
                                   double(1 << 29),
                                   double((1 << 29) - 1),
                                   -double(1 << 29),
                                   -double((1 << 29) + 1),
                                   5368709.11,
                                   5368709.12,
                                   0.07,
                                   0.57,
                                   1e15,
                                   123456789.125,
                                   std::numeric_limits<double>::max(),
                                   std::nextafter(12.34, 13)})
            book.Value(++row, 1, value, value);
        book.Value(++row, 1, -0.0, 0);
        row = 0;
        book.Value(++row, 2, Currency("0.0001"), 0.0001);
        book.Value(++row, 2, Currency("-1234.5678"), -1234.5678);
        book.Value(++row, 2, Currency("922337203685477.5807"), 922337203685477.5807);
        book.Value(++row, 2, Currency("-922337203685477.5808"), -922337203685477.5808);
        book.Value(++row, 2, Currency("900719925474.0993"), 900719925474.0993);
        row = 0;
        book.Value(++row, 3, Single::FromFloat(12.3456f), 12.3456);
        book.Value(++row, 3, Single::FromFloat(0.1f), 0.1);
        book.Value(++row, 3, Single::FromFloat(-33.3333f), -33.3333);
        book.Value(++row, 3, Single::FromFloat(16777216), 16777216);
        book.Value(++row, 3, Single::FromFloat(1234567.9f), 1234567.9);
        book.Value(++row, 3, Single::FromFloat(3.4028235e38f), 3.4028235e38);
    }

    static void AddPlaces()
    {
        CheckedBook &book = Add("places");
        book.Text(100, 256, Of("last column"));
        book.Value(1, 256, 1.0, 1.0);
        book.Text(40, 7, Of("in between"));
        book.Text(40, 3, Of("before it"));
        book.Text(33, 1, Of("first"));
        book.Value(33, 1, 2.0, 2.0); // set again as a number
        book.Text(33, 2, Of("gone"));
        book.Empty(33, 2);
        book.Text(34, 2, Of("old"));
        book.Text(34, 2, Of("new"));
        book.Empty(35, 1);
        book.Text(35, 1, Of("set again"));
        book.Typed(100, 1, Of("5%"), 0.05, "0%");
        book.Value(100, 1, 3.0, 3.0); // has no format any more
    }

    static void AddRows(int rows, For readers)
    {
        CheckedBook &book = Add("rows" + std::to_string(rows), readers);
        for (int row = 1; row <= rows; ++row) {
            if (row % 3 == 0 || row == rows)
                book.Text(row, 1, QStringLiteral("S%1").arg(row % 1000));
            else
                book.Value(row, 1, row / 4.0, row / 4.0);
        }
    }

    /// Texts that begin or go on at every place around the end of a record.
    static void AddCutTexts()
    {
        constexpr int Record = 8224;
        constexpr int TableHead = 8;
        constexpr int TextHead = 3;
        for (const char *letter : {"n", "Ж", "😀"}) {
            for (int room = 0; room <= 24; ++room) {
                // So many bytes are left in the first record for the second text.
                CheckedBook &book = Add("cut" + std::to_string(m_books.size()), For::NotGnumeric);
                book.Text(1, 1, QString(Record - TableHead - TextHead - room, u'f'));
                book.Text(2, 1, Of(letter).repeated(9));
                book.Text(3, 1, Of("x"));
            }
        }
    }

    static void AddRandomTexts(int seed)
    {
        QRandomGenerator random(static_cast<quint32>(seed));
        CheckedBook &book =
            Add("random" + std::to_string(seed), seed < 3 ? For::All : For::NotGnumeric);
        for (int row = 1; row <= 60; ++row) {
            const int longest = std::array{20, 300, 4200, 20000}[std::size_t(random.bounded(4))];
            book.Text(row, 1 + random.bounded(256),
                      RandomText(random, 1 + random.bounded(longest)));
        }
    }

    static void AddRandomCells()
    {
        QRandomGenerator random(7);
        // Doubles of 17 digits, of which LibreOffice tells 15.
        CheckedBook &book = Add("cells", For::Xlrd);
        for (int cell = 0; cell < 5000; ++cell) {
            const int row = 1 + random.bounded(300);
            const int column = 1 + random.bounded(20);
            switch (random.bounded(4)) {
            case 0:
                book.Text(row, column, RandomText(random, 1 + random.bounded(5)));
                break;
            case 1:
                book.Empty(row, column);
                break;
            case 2: {
                const double hundredths = random.bounded(-1000000, 1000000) / 100.0;
                book.Value(row, column, hundredths, hundredths);
                break;
            }
            default: {
                const double any =
                    std::ldexp(random.generateDouble() - 0.5, random.bounded(-60, 60));
                book.Value(row, column, any, any);
            }
            }
        }
    }

    static std::unique_ptr<QTemporaryDir> m_folder;
    static std::vector<std::pair<For, std::unique_ptr<CheckedBook>>> m_books;
};

std::unique_ptr<QTemporaryDir> Workbooks::m_folder;
std::vector<std::pair<For, std::unique_ptr<CheckedBook>>> Workbooks::m_books;

} // namespace

TEST_F(Workbooks, AreReadByXlrdWithoutAComplaint)
{
    ExpectCells("xlrd", BooksFor({For::All, For::NotGnumeric, For::Xlrd}));
}

TEST_F(Workbooks, AreReadByLibreOffice)
{
    if (!ReaderIsInstalled("libreoffice"))
        GTEST_SKIP() << "LibreOffice is not installed";
    ExpectCells("libreoffice", BooksFor({For::All, For::NotGnumeric}));
}

TEST_F(Workbooks, AreReadByGnumericWithoutAComplaint)
{
    if (!ReaderIsInstalled("gnumeric"))
        GTEST_SKIP() << "Gnumeric is not installed";
    ExpectCells("gnumeric", BooksFor({For::All}));
}

TEST_F(Workbooks, HaveTheirRecordsInOrderAndTheirTotalsRight)
{
    ExpectSoundRecords(BooksFor({For::All, For::NotGnumeric, For::Xlrd}));
}
