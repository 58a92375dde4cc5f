#include "base/formats.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <limits>
#include <string>

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};
const Formats German{QLocale(QLocale::German, QLocale::Germany)};
const Formats French{QLocale(QLocale::French, QLocale::France)};

template <typename Value>
std::string Formatted(Value value, QStringView pattern)
{
    return English.Format(value, pattern).toStdString();
}

template <typename Value>
std::string Plain(Value value)
{
    return English.ToText(value).toStdString();
}

Single SingleOf(float value)
{
    return Single::FromFloat(value);
}

} // namespace

TEST(FormatNumber, ShowsMoneyInThePatternsOfTheScreens)
{
    struct Row
    {
        const char *Value;
        const char16_t *Pattern;
        const char *Shown;
    };
    const Row rows[] = {
        {"0", u"0.0000", "0.0000"},
        {"12.5", u"0.0000", "12.5000"},
        {"1234.5678", u"0.00", "1234.57"},
        {"0", u"###,##0.00", "0.00"},
        {"0.5", u"###,##0.00", "0.50"},
        {"999.99", u"###,##0.00", "999.99"},
        {"999.995", u"###,##0.00", "1,000.00"},
        {"1234567.891", u"###,##0.00", "1,234,567.89"},
        {"-1234567.891", u"###,##0.00", "-1,234,567.89"},
        {"922337203685477.5807", u"###,##0.00", "922,337,203,685,477.58"},
        {"-922337203685477.5808", u"0.0000", "-922337203685477.5808"},
        {"0.002", u"###,##0.000", "0.002"},
        {"12.375", u"###,##0.00000", "12.37500"},
        {"1234.5601", u"###,##0.0000", "1,234.5601"},
        {"0.25", u"0.00%", "25.00%"},
        {"0.0825", u"Percent", "8.25%"},
        {"1", u"percent", "100.00%"},
        {"-0.3333", u"0.00%", "-33.33%"},
        {"12.5", u"", "12.5"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(Formatted(Currency(row.Value), row.Pattern), row.Shown) << row.Value;
}

TEST(FormatNumber, RoundsHalvesOfMoneyAwayFromZero)
{
    EXPECT_EQ(Formatted(Currency("0.005"), u"0.00"), "0.01");
    EXPECT_EQ(Formatted(Currency("0.015"), u"0.00"), "0.02");
    EXPECT_EQ(Formatted(Currency("0.025"), u"0.00"), "0.03");
    EXPECT_EQ(Formatted(Currency("-0.025"), u"0.00"), "-0.03");
    EXPECT_EQ(Formatted(Currency("0.0249"), u"0.00"), "0.02");
    EXPECT_EQ(Formatted(Currency("0.5"), u"0"), "1");
    EXPECT_EQ(Formatted(Currency("99.5"), u"0"), "100");
}

TEST(FormatNumber, TakesADoubleWithFifteenDigitsSoThatItsHalfIsTheOneSeen)
{
    EXPECT_EQ(Formatted(2.675, u"0.00"), "2.68"); // 2.67499999999999982 in binary
    EXPECT_EQ(Formatted(1.005, u"0.00"), "1.01"); // 1.00499999999999989
    EXPECT_EQ(Formatted(-2.675, u"0.00"), "-2.68");
    EXPECT_EQ(Formatted(2.6749999, u"0.00"), "2.67");
    EXPECT_EQ(Formatted(0.1 + 0.2, u"0.0000000000000000"), "0.3000000000000000");
    EXPECT_EQ(Formatted(1.0 / 3, u"0.00000000000000000"), "0.33333333333333300");
}

TEST(FormatNumber, TakesASingleWithSevenDigits)
{
    EXPECT_EQ(Formatted(SingleOf(0.285f), u"0.00%"), "28.50%"); // 0.284999996 in binary
    EXPECT_EQ(Formatted(SingleOf(0.00005f), u"0.00%"), "0.01%");
    EXPECT_EQ(Formatted(SingleOf(33.3333f), u"0.0000"), "33.3333");
    EXPECT_EQ(Formatted(SingleOf(-1234567.0f), u"###,##0.0000"), "-1,234,567.0000");
    EXPECT_EQ(Formatted(SingleOf(16777216.0f), u"0"), "16777220");
}

TEST(FormatNumber, ShowsWholeNumbersOfEveryWidth)
{
    EXPECT_EQ(Formatted(1234, u"###,##0"), "1,234");
    EXPECT_EQ(Formatted(Integer::FromWide(-7), u"0.00"), "-7.00");
    EXPECT_EQ(Formatted(std::numeric_limits<qint64>::min(), u"#,##0"),
              "-9,223,372,036,854,775,808");
    EXPECT_EQ(Formatted(std::int64_t{5}, u"000"), "005");
    EXPECT_EQ(Formatted(5, u""), "5");
}

TEST(FormatNumber, GivesZeroNoMinus)
{
    EXPECT_EQ(Formatted(-0.001, u"0.00"), "0.00");
    EXPECT_EQ(Formatted(-0.0, u"0.00"), "0.00");
    EXPECT_EQ(Formatted(Currency("-0.0049"), u"###,##0.00"), "0.00");
    EXPECT_EQ(Formatted(SingleOf(-0.00001f), u"0.00%"), "0.00%");
    EXPECT_EQ(Formatted(-0.005, u"0.00"), "-0.01");
    EXPECT_EQ(Plain(-0.0), "0");
}

TEST(FormatNumber, ShowsAsManyDigitsAsThePlacesAsk)
{
    EXPECT_EQ(Formatted(0.5, u"#.##"), ".5");
    EXPECT_EQ(Formatted(0.0, u"#.##"), ".");
    EXPECT_EQ(Formatted(0.0, u"#"), "");
    EXPECT_EQ(Formatted(1.5, u"0.0##"), "1.5");
    EXPECT_EQ(Formatted(1.23456, u"0.0##"), "1.235");
    EXPECT_EQ(Formatted(7, u"00.0"), "07.0");
    EXPECT_EQ(Formatted(7, u"0#"), "07");
    EXPECT_EQ(Formatted(1234567, u"0"), "1234567");
    EXPECT_EQ(Formatted(12, u"000,000"), "000,012");
    EXPECT_EQ(Formatted(0.12345, u"0.00%%"), "1234.50%%");
}

TEST(FormatNumber, KeepsTheTextAroundTheNumber)
{
    EXPECT_EQ(Formatted(5, u"$0.00"), "$5.00");
    EXPECT_EQ(Formatted(-5, u"$0.00"), "-$5.00");
    EXPECT_EQ(Formatted(5, u"0.00 USD"), "5.00 USD");
    EXPECT_EQ(Formatted(5, u"\"0#%\" 0"), "0#% 5");
    EXPECT_EQ(Formatted(0.5, u"0.0\\%"), "0.5%");
    EXPECT_EQ(Formatted(5, u"0\\"), "5");
    EXPECT_EQ(Formatted(5, u"0\"open"), "5open");
    EXPECT_EQ(Formatted(5, u"none"), "none");
}

TEST(FormatNumber, ChoosesTheSectionByTheSign)
{
    EXPECT_EQ(Formatted(5, u"0.00;(0.00)"), "5.00");
    EXPECT_EQ(Formatted(-5, u"0.00;(0.00)"), "(5.00)");
    EXPECT_EQ(Formatted(0, u"0.00;(0.00)"), "0.00");
    EXPECT_EQ(Formatted(0, u"0.00;(0.00);none"), "none");
    EXPECT_EQ(Formatted(-0.001, u"0.00;(0.00);none"), "none");
    EXPECT_EQ(Formatted(-0.001, u"0.00;(0.00)"), "0.00");
    EXPECT_EQ(Formatted(-5, u"0.00;;none"), "-5.00");
    EXPECT_EQ(Formatted(5, u"\";\"0"), ";5");
    EXPECT_EQ(Formatted(-0.04, u"0;(0.0)"), "0");
}

TEST(FormatNumber, WritesTheMarksOfTheLocale)
{
    EXPECT_EQ(German.Format(Currency("-1234567.891"), u"###,##0.00"), u"-1.234.567,89");
    EXPECT_EQ(German.Format(0.0825, u"Percent"), u"8,25%");
    EXPECT_EQ(French.Format(1234.5, u"###,##0.00"), u"1\u202f234,50");
    EXPECT_EQ(Formats(QLocale::c()).Format(1234.5, u"###,##0.00"), u"1,234.50");
    EXPECT_EQ(Formats(QLocale("ar_EG")).Format(1234.5, u"#,##0.0"), u"1\u066c234\u066b5");
}

TEST(FormatNumber, HoldsForTheLargestAndTheSmallest)
{
    const std::string largest = Formatted(DBL_MAX, u"0.0");
    EXPECT_EQ(largest.substr(0, 17), "17976931348623200"); // 15 digits count
    EXPECT_EQ(largest.size(), 311U);
    EXPECT_EQ(Formatted(DBL_MIN, u"0.00"), "0.00");
    EXPECT_EQ(Formatted(-5e-324, u"0.00"), "0.00");
    EXPECT_EQ(Formatted(1e15, u"#,##0"), "1,000,000,000,000,000");
    EXPECT_EQ(Formatted(5, QString(100'000, u'0')).size(), 100'000U);
    EXPECT_EQ(Formatted(5, QString(100'000, u';')).size(), 0U);
}

TEST(FormatNumber, RefusesWhatIsNoNumber)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
        try {
            English.Format(value, u"0.00");
            FAIL() << value;
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.Number(), RuntimeError::OverflowNumber);
        }
        EXPECT_THROW(English.ToText(value), RuntimeError);
        EXPECT_THROW(English.Format(SingleOf(static_cast<float>(value)), u"0"), RuntimeError);
    }
}

TEST(Reformat, ShowsTypedNumbersInAPatternAndLeavesOtherTextsAlone)
{
    EXPECT_EQ(English.Reformat(u"1000.125", u"###,##0.00"), u"1,000.13");
    EXPECT_EQ(English.Reformat(u" $1,000 ", u"###,##0.00"), u"1,000.00");
    EXPECT_EQ(English.Reformat(u"123456789012345678.125", u"0.00"), u"123456789012345678.13");
    EXPECT_EQ(English.Reformat(u"", u"###,##0.00"), u"");
    EXPECT_EQ(English.Reformat(u"12 3/8", u"###,##0.00"), u"12 3/8");
    EXPECT_EQ(English.Reformat(u"1E999999999999999999999", u"0.00"), u"1E999999999999999999999");
    EXPECT_EQ(English.Reformat(u"-1E-999999999999999999999", u"0.00"), u"0.00");
    EXPECT_EQ(English.Reformat(u"1E-400", u""), u"0");
    EXPECT_EQ(German.Reformat(u"1000,126", u"###,##0.00"), u"1.000,13");
}

TEST(NumberText, GivesMoneyAsShortestDecimal)
{
    EXPECT_EQ(Plain(Currency("250")), "250");
    EXPECT_EQ(Plain(Currency("-12.5")), "-12.5");
    EXPECT_EQ(Plain(Currency("0.0001")), "0.0001");
    EXPECT_EQ(Plain(Currency("-0.01")), "-0.01");
    EXPECT_EQ(Plain(Currency()), "0");
    EXPECT_EQ(Plain(Currency("922337203685477.5807")), "922337203685477.5807");
    EXPECT_EQ(Plain(Currency::FromUnits(std::numeric_limits<std::int64_t>::min())),
              "-922337203685477.5808");
    EXPECT_EQ(German.ToText(Currency("-1234.5")), u"-1234,5");
}

TEST(NumberText, GivesASingleSevenDigits)
{
    EXPECT_EQ(Plain(SingleOf(100.0f)), "100");
    EXPECT_EQ(Plain(SingleOf(-33.3333f)), "-33.3333");
    EXPECT_EQ(Plain(SingleOf(0.1f)), "0.1");
    EXPECT_EQ(Plain(SingleOf(1.0f / 3)), "0.3333333");
    EXPECT_EQ(Plain(SingleOf(9999999.0f)), "9999999");
    EXPECT_EQ(Plain(SingleOf(10000000.0f)), "1E+07");
    EXPECT_EQ(Plain(SingleOf(12345678.0f)), "1.234568E+07");
    EXPECT_EQ(Plain(SingleOf(-FLT_MAX)), "-3.402823E+38");
    EXPECT_EQ(Plain(SingleOf(0.0001f)), "0.0001");
    EXPECT_EQ(Plain(SingleOf(0.00001f)), "1E-05");
    EXPECT_EQ(Plain(SingleOf(-0.0f)), "0");
    EXPECT_EQ(German.ToText(SingleOf(12345678.0f)), u"1,234568E+07");
}

TEST(NumberText, GivesADoubleFifteenDigits)
{
    EXPECT_EQ(Plain(0.1 + 0.2), "0.3");
    EXPECT_EQ(Plain(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(Plain(-2.0 / 3), "-0.666666666666667");
    EXPECT_EQ(Plain(999999999999999.0), "999999999999999");
    EXPECT_EQ(Plain(1e15), "1E+15");
    EXPECT_EQ(Plain(999999999999999.9), "1E+15");
    EXPECT_EQ(Plain(1.5e300), "1.5E+300");
    EXPECT_EQ(Plain(0.0001), "0.0001");
    EXPECT_EQ(Plain(0.00001), "1E-05");
    EXPECT_EQ(Plain(-1.25e-7), "-1.25E-07");
    EXPECT_EQ(Plain(5e-324), "4.94065645841247E-324");
}

TEST(NumberText, GivesWholeNumbersTheirDigits)
{
    EXPECT_EQ(Plain(-32768), "-32768");
    EXPECT_EQ(Plain(Integer::FromWide(12)), "12");
    EXPECT_EQ(Plain(std::numeric_limits<qint64>::min()), "-9223372036854775808");
}
