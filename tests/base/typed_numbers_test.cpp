#include "base/formats.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include <string>

namespace
{

const char *const Locales[] = {
    "en_US", "en_GB", "de_DE", "ja_JP", "C",     "fr_FR", "it_IT", "es_ES", "pt_BR", "nl_NL",
    "sv_SE", "da_DK", "nb_NO", "fi_FI", "pl_PL", "cs_CZ", "hu_HU", "ru_RU", "uk_UA", "el_GR",
    "tr_TR", "he_IL", "ar_EG", "fa_IR", "hi_IN", "en_IN", "th_TH", "ko_KR", "de_CH", "fr_CH"};

Formats In(const char *locale)
{
    return Formats(QLocale(QString::fromLatin1(locale)));
}

/// The number that is meant, in C's writing; "nothing" for a text that is refused.
std::string Meant(const char *locale, const QString &text)
{
    const Formats formats = In(locale);
    const std::optional<QString> typed = formats.TypedNumber(text);
    if (!typed)
        return "nothing";
    return typed->isEmpty()
               ? ""
               : Formats(QLocale::c()).ToText(formats.NumberFromText(*typed)).toStdString();
}

struct Row
{
    const char *Locale;
    const char16_t *Text;
    const char *Meant;
};

void ExpectRows(std::initializer_list<Row> rows)
{
    for (const Row &row : rows)
        EXPECT_EQ(Meant(row.Locale, QString::fromUtf16(row.Text)), row.Meant)
            << row.Locale << ": " << QString::fromUtf16(row.Text).toStdString();
}

Currency RandomAmount(QRandomGenerator &random)
{
    // From small change to billions, so that all counts of groups come up.
    const qint64 units = random.generate64() >> random.bounded(18, 60);
    return Currency::FromUnits(units);
}

} // namespace

TEST(TypedNumber, TakesASignThatIsNotFollowedByThreeDigitsForTheDecimalSign)
{
    for (const char *locale : Locales)
        ExpectRows({{locale, u"1.5", "1.5"},
                    {locale, u"1,5", "1.5"},
                    {locale, u"2.50", "2.5"},
                    {locale, u"1234.5678", "1234.5678"},
                    {locale, u"1234,5678", "1234.5678"},
                    {locale, u".5", "0.5"},
                    {locale, u",5", "0.5"},
                    {locale, u"5.", "5"},
                    {locale, u"0.125", "0.125"}, // no group is a zero
                    {locale, u"0,125", "0.125"},
                    {locale, u".125", "0.125"}});
}

TEST(TypedNumber, TakesASignBeforeThreeDigitsAsTheLocaleDoes)
{
    ExpectRows({{"de_DE", u"1.234", "1234"},
                {"de_DE", u"1,234", "1.234"},
                {"en_US", u"1,234", "1234"},
                {"en_US", u"1.234", "1.234"},
                {"de_DE", u"1.234.567,5", "1234567.5"},
                {"en_US", u"1,234,567.5", "1234567.5"},
                {"fr_FR", u"1 234,5", "1234.5"},
                {"fr_FR", u"1\u202f234,567", "1234.567"},
                {"fr_FR", u"1 234.5", "1234.5"},
                {"de_CH", u"1'234.5", "1234.5"},
                {"en_IN", u"12,34,567.5", "1234567.5"},
                {"en_IN", u"1,234,567.5", "1234567.5"}});
}

TEST(TypedNumber, RefusesWhatCanBeReadInTwoWays)
{
    ExpectRows({{"fr_FR", u"1.234", "nothing"},
                {"fr_FR", u"12.345", "nothing"},
                {"ar_EG", u"1.234", "nothing"},
                {"de_CH", u"1,234", "nothing"},
                {"de_DE", u"1,234.5", "nothing"},
                {"en_US", u"1.234,5", "nothing"},
                {"fr_FR", u"1234.567", "1234.567"}}); // no groups: the first has four digits
}

TEST(TypedNumber, RefusesAGroupSignInAWrongPlace)
{
    ExpectRows({{"en_US", u"1,23,456", "nothing"},
                {"en_US", u"1234,567", "nothing"},
                {"en_US", u"1,234,56", "nothing"},
                {"en_US", u"12,34.5", "nothing"},
                {"en_US", u"1,,234", "nothing"},
                {"en_US", u",1,234", "nothing"},
                {"en_US", u"1.5,000", "nothing"},
                {"de_DE", u"1.23.456", "nothing"},
                {"de_DE", u"1234.567", "nothing"},
                {"de_DE", u"1.234.56", "nothing"},
                {"fr_FR", u"12 3", "nothing"},
                {"en_IN", u"1,2,345", "nothing"}});
}

TEST(TypedNumber, RefusesWhatIsNoNumber)
{
    for (const char *locale : {"en_US", "de_DE", "fr_FR", "ar_EG"})
        ExpectRows({{locale, u"1.2.3", "nothing"},
                    {locale, u"1,2,3", "nothing"},
                    {locale, u"..", "nothing"},
                    {locale, u"-", "nothing"},
                    {locale, u"abc", "nothing"},
                    {locale, u"12a", "nothing"},
                    {locale, u"1 2/3", "nothing"},
                    {locale, u"--1", "nothing"}});
}

TEST(TypedNumber, TakesASignAloneForNothing)
{
    for (const char *locale : Locales)
        ExpectRows(
            {{locale, u"", ""}, {locale, u"  ", ""}, {locale, u".", ""}, {locale, u",", ""}});
    ExpectRows({{"ar_EG", u"\u066b", ""}});
}

TEST(TypedNumber, KeepsWhatStandsAroundTheDigits)
{
    ExpectRows({{"en_US", u"$1,234.50", "1234.5"},
                {"en_US", u"-1,234.50", "-1234.5"},
                {"en_US", u"(1,234.50)", "-1234.5"},
                {"de_DE", u" 1.234,50 \u20ac ", "1234.5"},
                {"de_DE", u"1.5E3", "1500"},
                {"en_US", u"1.234568E+07", "12345680"}});
}

TEST(TypedNumber, TakesTheDigitsOfTheLocale)
{
    ExpectRows({{"ar_EG", u"\u0661\u0662\u066b\u0665", "12.5"},
                {"ar_EG", u"\u0661\u0662.\u0665", "12.5"},
                {"ar_EG", u"12.5", "12.5"},
                {"ar_EG", u"\u0661\u066c\u0662\u0663\u0664\u066b\u0665", "1234.5"},
                {"en_US", u"\u0661\u0662", "nothing"}});
    const QString keys = In("ar_EG").NumberKeys();
    for (const QChar key : QStringView(u"0123456789.\u066b\u0660\u0661\u0669"))
        EXPECT_TRUE(keys.contains(key));
    EXPECT_EQ(In("en_US").NumberKeys(), "0123456789..");
}

TEST(TypedNumber, ReadsBackEveryAmountThatIsWrittenInThirtyLocales)
{
    QRandomGenerator random(16);
    for (const char *locale : Locales) {
        const Formats formats = In(locale);
        for (int count = 0; count < 500; ++count) {
            const Currency amount = RandomAmount(random);
            for (const QString &text :
                 {formats.Format(amount, u"###,##0.0000"), formats.ToText(amount),
                  QStringLiteral("-") + formats.Format(amount, u"#,##0.0000")}) {
                const std::optional<QString> typed = formats.TypedNumber(text);
                ASSERT_TRUE(typed) << locale << ": " << text.toStdString();
                const Currency read = formats.CurrencyFromText(*typed);
                ASSERT_EQ(text.startsWith(QLatin1Char('-')) ? -read : read, amount)
                    << locale << ": " << text.toStdString();
            }
            const Currency cents = formats.CurrencyFromText(formats.Format(amount, u"0.00"));
            ASSERT_EQ(formats.CurrencyFromText(
                          *formats.TypedNumber(formats.Format(amount, u"###,##0.00"))),
                      cents)
                << locale;
            const Single shares = Single::FromDouble(amount.ToDouble());
            ASSERT_EQ(formats.SingleFromText(*formats.TypedNumber(formats.ToText(shares))).Value(),
                      formats.SingleFromText(formats.ToText(shares)).Value())
                << locale;
        }
    }
}

/// With three decimals the point is read as the locale reads it, which the tests above show.
TEST(TypedNumber, ReadsEveryAmountTypedWithAPointInThirtyLocales)
{
    QRandomGenerator random(17);
    for (const char *locale : Locales) {
        const Formats formats = In(locale);
        for (int count = 0; count < 500; ++count) {
            const Currency amount = RandomAmount(random);
            for (const char16_t *pattern : {u"0", u"0.0", u"0.00", u"0.0000", u"0.00000"}) {
                const QString text = Formats(QLocale::c()).Format(amount, pattern);
                const std::optional<QString> typed = formats.TypedNumber(text);
                ASSERT_TRUE(typed) << locale << ": " << text.toStdString();
                ASSERT_EQ(formats.CurrencyFromText(*typed),
                          Formats(QLocale::c()).CurrencyFromText(text))
                    << locale << ": " << text.toStdString();
            }
        }
    }
}

TEST(TypedNumber, HoldsForTextsOfTenMegabytes)
{
    const Formats english = In("en_US");
    constexpr qsizetype Long = 10'000'000;
    EXPECT_FALSE(english.TypedNumber(QString(Long, QLatin1Char('.'))));
    EXPECT_FALSE(english.TypedNumber(QString(Long, QLatin1Char('('))));
    EXPECT_TRUE(english.TypedNumber(QString(Long, QLatin1Char('1'))));
}
