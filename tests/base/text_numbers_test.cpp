#include "base/formats.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <string>

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};
const Formats German{QLocale(QLocale::German, QLocale::Germany)};
const Formats French{QLocale(QLocale::French, QLocale::France)};
const Formats Swiss{QLocale(QLocale::German, QLocale::Switzerland)};

/// The error number of what `read` throws, 0 for none.
template <typename Read>
int ErrorOf(Read read)
{
    try {
        read();
        return 0;
    } catch (const RuntimeError &error) {
        return error.Number();
    }
}

std::string Utf8(QStringView text)
{
    return text.toString().toStdString();
}

} // namespace

TEST(NumberFromText, ReadsWhatAUserWrites)
{
    struct Row
    {
        const char16_t *Text;
        double Number;
    };
    const Row rows[] = {
        {u"0", 0},
        {u"1000.50", 1000.5},
        {u"  12.5\t", 12.5},
        {u"\u00a012.5\u00a0", 12.5},
        {u"1,000.50", 1000.5},
        {u"1,0,00", 1000},
        {u",5", 5},
        {u"5,", 5},
        {u".5", 0.5},
        {u"5.", 5},
        {u"-.5", -0.5},
        {u"+5", 5},
        {u"-5", -5},
        {u"- 5", -5},
        {u"\u22125", -5},
        {u"(5)", -5},
        {u"( 5.25 )", -5.25},
        {u"$5", 5},
        {u"$ 5", 5},
        {u"-$5", -5},
        {u"$-5", -5},
        {u"($1,234.50)", -1234.5},
        {u"$(5)", -5},
        {u"5 $", 5},
        {u"1E3", 1000},
        {u"1e+3", 1000},
        {u"1.5D-2", 0.015},
        {u"1d2", 100},
        {u"0E999999999999999999999999", 0},
        {u"1E-999999999999999999999999", 0},
        {u"1.7976931348623157E308", DBL_MAX},
        {u"4.9E-324", 5e-324},
        {u"0.1", 0.1},
        {u"007", 7},
        {u"9007199254740993", 9007199254740992.0},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(ErrorOf([&] { English.NumberFromText(row.Text); }), 0) << Utf8(row.Text);
        EXPECT_EQ(English.NumberFromText(row.Text), row.Number) << Utf8(row.Text);
        EXPECT_TRUE(English.IsNumeric(row.Text)) << Utf8(row.Text);
    }
}

TEST(NumberFromText, RefusesEverythingElse)
{
    const char16_t *const texts[] = {
        u"",
        u" ",
        u"abc",
        u"1.2.3",
        u"12 3/8",
        u"3/8",
        u"1 000",
        u".",
        u",",
        u"-",
        u"$",
        u"()",
        u"(5",
        u"5)",
        u"(-5)",
        u"-(5)",
        u"--5",
        u"+-5",
        u"5-",
        u"$$5",
        u"$5$",
        u"1E",
        u"E5",
        u"1E+",
        u"1E5.5",
        u"1E1E1",
        u"12%",
        u"1.5,0",
        u"&H10",
        u"0x10",
        u"inf",
        u"nan",
        u"12abc",
        u"5\n6",
        u"N/A",
        u"\u0663",
        u"\uff15",
        u"\u00bd",
        u"\u20ac5",
        u"1'000",
        u"5\ufffd",
        u"1_000",
        u"\u0661\u0662",
    };
    for (const char16_t *text : texts) {
        EXPECT_EQ(ErrorOf([&] { English.NumberFromText(text); }), RuntimeError::TypeMismatchNumber)
            << Utf8(text);
        EXPECT_FALSE(English.IsNumeric(text)) << Utf8(text);
    }
    constexpr char16_t HalfOfAPair = 0xd83d;
    for (const char16_t symbol : {char16_t{0}, HalfOfAPair})
        EXPECT_EQ(ErrorOf([&] { English.NumberFromText("5" + QString(QChar(symbol))); }),
                  RuntimeError::TypeMismatchNumber);
}

TEST(NumberFromText, OverflowsBeyondADouble)
{
    for (const char16_t *text : {u"1E309", u"-1E309", u"1E99999999999999999999", u"1.8E308"}) {
        EXPECT_EQ(ErrorOf([&] { English.NumberFromText(text); }), RuntimeError::OverflowNumber)
            << Utf8(text);
        EXPECT_FALSE(English.IsNumeric(text)) << Utf8(text);
    }
}

TEST(NumberFromText, HoldsForTextsOfTenMegabytes)
{
    constexpr qsizetype Long = 10'000'000;
    EXPECT_EQ(ErrorOf([] { English.NumberFromText(QString(Long, u'1')); }),
              RuntimeError::OverflowNumber);
    EXPECT_EQ(ErrorOf([] { English.NumberFromText(QString(Long, u'(')); }),
              RuntimeError::TypeMismatchNumber);
    EXPECT_EQ(English.NumberFromText("5" + QString(Long, u' ')), 5);
    EXPECT_EQ(English.NumberFromText(QString(Long, u'0') + "5"), 5);
    EXPECT_EQ(English.NumberFromText("0." + QString(Long, u'0') + "5E10000001"), 5);
    EXPECT_EQ(English.NumberFromText("0." + QString(Long, u'3')), 1.0 / 3);
    EXPECT_EQ(English.CurrencyFromText("0." + QString(Long, u'9')), Currency("1"));
    EXPECT_EQ(English.Reformat("0." + QString(Long, u'9'), u"0.00"), u"1.00");
}

TEST(NumberFromText, ReadsTheMarksOfTheLocale)
{
    EXPECT_EQ(German.NumberFromText(u"1.000,50"), 1000.5);
    EXPECT_EQ(German.NumberFromText(u"12.34"), 1234); // there the point groups
    EXPECT_EQ(German.NumberFromText(u"-5,25 \u20ac"), -5.25);
    EXPECT_FALSE(German.IsNumeric(u"1,000,50"));

    for (const char16_t *text : {u"1\u202f234,5", u"1\u00a0234,5", u"1 234,5", u" 1 234,5 \u20ac "})
        EXPECT_EQ(French.NumberFromText(text), 1234.5) << Utf8(text);
    EXPECT_FALSE(French.IsNumeric(u"12 3/8"));
    EXPECT_FALSE(French.IsNumeric(u"1,2 3"));

    EXPECT_EQ(Swiss.NumberFromText(u"1\u2019234.5"), 1234.5);
    EXPECT_EQ(Swiss.NumberFromText(u"1'234.5"), 1234.5);
}

TEST(NumberFromText, ReadsTheDigitsOfTheLocale)
{
    const Formats egyptian{QLocale("ar_EG")};
    EXPECT_EQ(egyptian.NumberFromText(u"\u0661\u0662\u066b\u0665"), 12.5);
    EXPECT_EQ(egyptian.NumberFromText(u"12\u066b5"), 12.5);
    EXPECT_EQ(egyptian.NumberFromText(u"\u061c-\u0665"), -5);
    EXPECT_EQ(Formats(QLocale("ccp_BD")).NumberFromText(u"\U00011137\U00011136"), 10);
}

TEST(NumberFromText, ReadsInEveryLocaleWhatWasWrittenThere)
{
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const Formats formats(locale);
        for (const char *value : {"-1234567.8912", "0.05", "12"}) {
            const Currency money(value);
            EXPECT_EQ(formats.CurrencyFromText(formats.Format(money, u"#,##0.0000")), money)
                << Utf8(locale.name());
            EXPECT_EQ(formats.CurrencyFromText(formats.ToText(money)), money)
                << Utf8(locale.name());
        }
        EXPECT_EQ(formats.NumberFromText(locale.toString(-1234.5, 'f', 2)), -1234.5)
            << Utf8(locale.name());
    }
}

TEST(CurrencyFromText, IsExactToTheTenThousandthWithTiesToEven)
{
    struct Row
    {
        const char16_t *Text;
        const char *Money;
    };
    const Row rows[] = {
        {u"12.5", "12.5"},
        {u"$1,000.50", "1000.5"},
        {u"(0.0001)", "-0.0001"},
        {u"0.00005", "0"},
        {u"0.00015", "0.0002"},
        {u"0.00025", "0.0002"},
        {u"-0.00035", "-0.0004"},
        {u"0.000250000000000000000000000001", "0.0003"},
        {u"1.25E2", "125"},
        {u"1E-999999999", "0"},
        {u"922337203685477.5807", "922337203685477.5807"},
        {u"922337203685477.58074999", "922337203685477.5807"},
        {u"-922337203685477.5808", "-922337203685477.5808"},
        {u"-922337203685477.58085", "-922337203685477.5808"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(English.CurrencyFromText(row.Text), Currency(row.Money)) << Utf8(row.Text);
}

TEST(CurrencyFromText, OverflowsBeyondSixtyFourBits)
{
    for (const char16_t *text :
         {u"922337203685477.5808", u"922337203685477.58075", u"-922337203685477.5809",
          u"9999999999999999", u"1E15", u"1E400", u"-1E99999999999999999999"})
        EXPECT_EQ(ErrorOf([&] { English.CurrencyFromText(text); }), RuntimeError::OverflowNumber)
            << Utf8(text);
    EXPECT_EQ(ErrorOf([] { English.CurrencyFromText(u"1.2.3"); }),
              RuntimeError::TypeMismatchNumber);
}

TEST(SingleFromText, GivesTheNearestFloat)
{
    EXPECT_EQ(English.SingleFromText(u"1234.56").Value(), 1234.56f);
    EXPECT_EQ(English.SingleFromText(u"16,777,217").Value(), 16777216.0f);
    EXPECT_EQ(English.SingleFromText(u"1E-50").Value(), 0.0f);
    EXPECT_EQ(ErrorOf([] { English.SingleFromText(u"1E39"); }), RuntimeError::OverflowNumber);
    EXPECT_EQ(ErrorOf([] { English.SingleFromText(u"1E400"); }), RuntimeError::OverflowNumber);
    EXPECT_EQ(ErrorOf([] { English.SingleFromText(u"x"); }), RuntimeError::TypeMismatchNumber);
}

TEST(SingleFromText, KeepsTheSevenDigitsOfAPriceWhenItBecomesMoney)
{
    const Single price = English.SingleFromText(u"1234.56");
    EXPECT_EQ(Currency::FromDouble(price.ToDouble()), Currency("1234.5601"));
}

TEST(IntegerFromText, RoundsTiesToEvenWithinSixteenBits)
{
    struct Row
    {
        const char16_t *Text;
        int Number;
    };
    const Row rows[] = {
        {u"0.5", 0},          {u"1.5", 2},          {u"2.5", 2},      {u"-2.5", -2},
        {u"2.5000001", 3},    {u"32767.49", 32767}, {u"1,000", 1000}, {u"-32768.5", -32768},
        {u"-32,768", -32768}, {u"3.2767E4", 32767},
    };
    for (const Row &row : rows)
        EXPECT_EQ(English.IntegerFromText(row.Text).Value(), row.Number) << Utf8(row.Text);
    for (const char16_t *text : {u"32767.5", u"-32768.6", u"1E10", u"1E30", u"-1E999"})
        EXPECT_EQ(ErrorOf([&] { English.IntegerFromText(text); }), RuntimeError::OverflowNumber)
            << Utf8(text);
    EXPECT_EQ(ErrorOf([] { English.IntegerFromText(u""); }), RuntimeError::TypeMismatchNumber);
}
