/// What a text becomes that is typed into a cell.

#include "reports/typed_text.h"

#include "print_qt.h"

#include <gtest/gtest.h>

namespace
{

struct Reading
{
    const char *Text;
    double Number;
    const char *Code;
};

/// "1234.5 as #,##0.00", or "text".
std::string Read(const char *locale, const char *text)
{
    const Formats formats{QLocale(QString::fromLatin1(locale))};
    NumberFormats used;
    TypedText typed(formats, used);
    const std::optional<TypedText::Value> value = typed.Read(QString::fromUtf8(text));
    if (!value)
        return "text";
    char number[64];
    std::snprintf(number, sizeof number, "%.17g", value->Number);
    return number + std::string(" as ") + used.Entries()[value->Format].Code.toStdString();
}

void ExpectReadings(const char *locale, std::initializer_list<Reading> readings)
{
    for (const Reading &reading : readings) {
        char number[64];
        std::snprintf(number, sizeof number, "%.17g", reading.Number);
        EXPECT_EQ(Read(locale, reading.Text), number + std::string(" as ") + reading.Code)
            << reading.Text;
    }
}

void ExpectTexts(const char *locale, std::initializer_list<const char *> texts)
{
    for (const char *text : texts)
        EXPECT_EQ(Read(locale, text), "text") << text;
}

} // namespace

TEST(TypedText, ReadsNumbersWithTheFormatTheyAreWrittenIn)
{
    ExpectReadings("en_US", {
                                {"1,234.50", 1234.5, "#,##0.00"},
                                {"1,234", 1234, "#,##0"},
                                {"-1,234,567.8901", -1234567.8901, "#,##0.0000"},
                                {"12.50", 12.5, "0.00"},
                                {"12.0000", 12, "0.0000"},
                                {"12.34%", 0.1234, "0.00%"},
                                {"-8%", -0.08, "0%"},
                                {"0.00%", 0, "0.00%"},
                                {"12.5 %", 0.125, "0.0%"},
                                {"1,234.50%", 12.345, "#,##0.00%"},
                                {"1E5", 100000, "0.00E+00"},
                                {"1.234568E+07", 12345680, "0.00E+00"},
                                {"-1e-05", -0.00001, "0.00E+00"},
                            });
}

TEST(TypedText, LeavesANumberGeneralThatGeneralShowsAsItIsWritten)
{
    ExpectReadings("en_US", {
                                {"0", 0, "General"},
                                {"-12.5", -12.5, "General"},
                                {"  7  ", 7, "General"},
                                {"+7", 7, "General"},
                                {".5", 0.5, "General"},
                                {"5.", 5, "General"},
                                {"0.0001", 0.0001, "General"},
                                {"1234567890", 1234567890, "General"},
                            });
}

TEST(TypedText, GivesNumbersPlacesThatGeneralWouldShowShortened)
{
    ExpectReadings("en_US", {
                                {"12345678901", 12345678901.0, "0"},
                                {"0.00005", 0.00005, "0.00000"},
                                {"922337203685477.5807", 922337203685477.5807, "0.0000"},
                                {"0.0000000000000000000000000000000001", 1e-34,
                                 "0.000000000000000000000000000000"}, // thirty places, no more
                            });
}

TEST(TypedText, TakesTheDoubleNearestToTheDecimal)
{
    ExpectReadings("en_US", {
                                {"12.3456", 12.3456, "General"},
                                {"0.1", 0.1, "General"},
                                {"70.07%", 0.7007, "0.00%"},
                                {"9007199254740993", 9007199254740992.0, "0"},
                                {"1.7976931348623157E308", 1.7976931348623157e308, "0.00E+00"},
                            });
}

TEST(TypedText, KnowsNoMinusBeforeAZero)
{
    ExpectReadings("en_US", {{"-0.00", -0.0, "0.00"}}); // which the workbook then drops
}

TEST(TypedText, ReadsDatesAndTimesWithTheFormatTheyAreWrittenIn)
{
    ExpectReadings("en_US",
                   {
                       {"3/2/2026", 46083, "m/d/yyyy"},
                       {"03/02/2026", 46083, "m/d/yyyy"},
                       {"3-2-26", 46083, "m/d/yyyy"},
                       {"2026-03-02", 46083, "yyyy-mm-dd"},
                       {"02-Mar-26", 46083, "d-mmm-yy"},
                       {"01-Jan-30", 10959, "d-mmm-yy"},
                       {"31-Dec-29", 47483, "d-mmm-yy"},
                       {"Monday, March 2, 2026", 46083, "dddd, mmmm d, yyyy"},
                       {"Thursday, February 29, 2024", 45351, "dddd, mmmm d, yyyy"},
                       {"10:15:00 AM", 36900 / 86400.0, "h:mm:ss AM/PM"},
                       {"12:00:00 AM", 0, "h:mm:ss AM/PM"},
                       {"12:00:00 PM", 0.5, "h:mm:ss AM/PM"},
                       {"11:59:59 PM", 86399 / 86400.0, "h:mm:ss AM/PM"},
                       {"22:15:30", 80130 / 86400.0, "h:mm:ss"},
                       {"22:15", 80100 / 86400.0, "h:mm"},
                       {"10:15 pm", 80100 / 86400.0, "h:mm AM/PM"},
                       {"3/2/2026 10:15:00 AM", 46083 + 36900 / 86400.0, "m/d/yyyy h:mm:ss AM/PM"},
                       {"3/2/2026 22:15", 46083 + 80100 / 86400.0, "m/d/yyyy h:mm"},
                   });
}

TEST(TypedText, ReadsTheDaysOnWhichAllSpreadsheetsAgree)
{
    ExpectReadings("en_US", {{"3/1/1900", 61, "m/d/yyyy"},
                             {"2/29/2024", 45351, "m/d/yyyy"},
                             {"12/31/9999", 2958465, "m/d/yyyy"}});
    // Some know a 29 February 1900 and some don't: before it their days differ by one.
    ExpectTexts("en_US", {"1/1/1900", "2/28/1900", "2/29/1900", "12/31/1899", "2/29/2023"});
}

TEST(TypedText, LeavesAllElseATextAsItIs)
{
    ExpectTexts("en_US", {"",
                          " ",
                          "-",
                          "+",
                          ".",
                          ",",
                          "%",
                          "E5",
                          "1E",
                          "1E+",
                          "1e400",
                          "-1e400",
                          "1e-400",
                          "12,34",
                          "1,23",
                          "1,2345",
                          ",123",
                          "1234,567",
                          "1,234,56",
                          "1.234,5",
                          "1,234.5,6",
                          "--5",
                          "5-",
                          "- 5",
                          "1 234",
                          "5%%",
                          "1E5%",
                          "(5)",
                          "$5",
                          "5 USD",
                          "12 3/8",
                          "3/8",
                          "0x10",
                          "1.2.3",
                          "NaN",
                          "inf",
                          "infinity",
                          "TRUE",
                          "MAR1",
                          "MAR 1",
                          "Mar-26",
                          "=1+2",
                          "'5",
                          "Date:02-Mar-26",
                          "DATE",
                          "N E T   T O T A L",
                          "2-Mar-26",
                          "32-Mar-26",
                          "02-Mrz-26",
                          "Tuesday, March 2, 2026",
                          "Monday, March 02, 2026",
                          "Monday, March 2, 20261",
                          "13:00:00 PM",
                          "24:00",
                          "10:60",
                         
                          "10 PM x",
                          "1:2:3:4",
                          "3/2/2026 x",
                          "3/2/2026 3/2/2026",
                          "1 2 2026",
                          "13/1/2026"});
}

TEST(TypedText, ReadsWhatAGermanTypes)
{
    ExpectReadings("de_DE", {
                                {"1.234,50", 1234.5, "#,##0.00"},
                                {"-12,5", -12.5, "General"},
                                {"1.234", 1234, "#,##0"},
                                {"12,34%", 0.1234, "0.00%"},
                                {"02.03.2026", 46083, "m/d/yyyy"},
                                {"02-März-26", 46083, "d-mmm-yy"},
                                {"Montag, 2. März 2026", 46083, "dddd, d\". \"mmmm yyyy"},
                                {"22:15:30", 80130 / 86400.0, "h:mm:ss"},
                            });
    ExpectTexts("de_DE", {"1,234.50", "12.5", "Monday, March 2, 2026"});
}

TEST(TypedText, ReadsWhatFormatsWriteInEveryLocale)
{
    const QDate day(2026, 3, 2);
    for (const char *name :
         {"C", "en_US", "en_GB", "de_DE", "de_CH", "fr_FR", "sv_SE", "es_ES", "pt_BR", "pl_PL",
          "ru_RU", "ja_JP", "zh_CN", "ko_KR", "cs_CZ", "hu_HU", "en_IN"}) {
        SCOPED_TRACE(name);
        const Formats formats{QLocale(QString::fromLatin1(name))};
        const auto expect = [&](const QString &text, const std::string &reading) {
            EXPECT_EQ(Read(name, text.toUtf8().constData()), reading) << text.toStdString();
        };
        expect(formats.Format(Currency("-1234567.5"), u"###,##0.00"), "-1234567.5 as #,##0.00");
        expect(formats.Format(Currency("0.25"), u"###,##0.0000"), "0.25 as 0.0000");
        expect(formats.Format(0.25, u"Percent"), "0.25 as 0.00%");
        expect(formats.ToText(12.5), "12.5 as General");
        expect(formats.ShortDate(day), "46083 as m/d/yyyy");
        // In the hours of the locale: 12:00:00, or with its word for the half of the day.
        const QString noon = formats.FormatTime(QTime(12, 0), u"Long Time");
        expect(noon, noon == u"12:00:00" ? "0.5 as h:mm:ss" : "0.5 as h:mm:ss AM/PM");
        // The names of the parts go into the code; the day is what counts.
        for (const char16_t *pattern : {u"Medium Date", u"Long Date"}) {
            const QString text = formats.FormatDate(day, pattern);
            EXPECT_EQ(Read(name, text.toUtf8().constData()).substr(0, 9), "46083 as ")
                << text.toStdString();
        }
    }
}
