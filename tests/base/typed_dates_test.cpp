#include "base/formats.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

std::string Read(const char *locale, const QString &text)
{
    const std::optional<QDate> date =
        Formats(QLocale(QString::fromLatin1(locale))).DateFromTyped(text);
    return date ? date->toString(Qt::ISODate).toStdString() : "nothing";
}

struct Row
{
    const char *Locale;
    const char16_t *Text;
    const char *Date;
};

void ExpectRows(std::initializer_list<Row> rows)
{
    for (const Row &row : rows)
        EXPECT_EQ(Read(row.Locale, QString::fromUtf16(row.Text)), row.Date)
            << row.Locale << ": " << QString::fromUtf16(row.Text).toStdString();
}

} // namespace

TEST(DateFromTyped, ReadsTheShortDateInTheOrderOfTheLocale)
{
    ExpectRows(
        {{"en_US", u"11/05/2026", "2026-11-05"},
         {"en_GB", u"11/05/2026", "2026-05-11"},
         {"de_DE", u"11.05.2026", "2026-05-11"},
         {"de_DE", u"11. 5. 2026", "2026-05-11"},
         {"ja_JP", u"2026/05/11", "2026-05-11"},
         {"ja_JP", u"\uff12\uff10\uff12\uff16\uff0f\uff10\uff15\uff0f\uff11\uff11", "2026-05-11"},
         {"C", u"2026-05-11", "2026-05-11"},
         {"en_US", u"  11-5-2026 ", "2026-11-05"},
         {"en_US", u"11 5 2026", "2026-11-05"},
         {"ar_EG", u"\u0661\u0661/\u0665/\u0662\u0660\u0662\u0666", "2026-05-11"}});
}

TEST(DateFromTyped, ReadsTheYearFirstInEveryLocale)
{
    for (const char *locale : {"en_US", "en_GB", "de_DE", "ja_JP", "C", "ar_EG", "fr_FR"})
        EXPECT_EQ(Read(locale, "2026-11-05"), "2026-11-05") << locale;
}

TEST(DateFromTyped, ReadsNamesOfMonthsAndWeekdays)
{
    ExpectRows({{"en_US", u"November 5, 2026", "2026-11-05"},
                {"en_US", u"Thursday, November 5, 2026", "2026-11-05"},
                {"en_US", u"nov 5 26", "2026-11-05"},
                {"en_US", u"5 Nov. 2026", "2026-11-05"},
                {"en_US", u"2026 Nov 5", "2026-11-05"},
                {"en_GB", u"Thursday, 5 November 2026", "2026-11-05"},
                {"C", u"5 Jan 2026", "2026-01-05"},
                {"C", u"Monday, 5 January 2026", "2026-01-05"},
                {"de_DE", u"Donnerstag, 5. November 2026", "2026-11-05"},
                {"de_DE", u"2. M\u00e4rz 2026", "2026-03-02"},
                {"ja_JP", u"2026\u5e7411\u67085\u65e5\u6728\u66dc\u65e5", "2026-11-05"},
                {"ja_JP", u"2026\u5e7411\u67085\u65e5", "2026-11-05"},
                {"es_ES", u"2 de marzo de 2026", "2026-03-02"},
                {"ru_RU", u"2 \u043c\u0430\u0440\u0442\u0430 2026 \u0433.", "2026-03-02"}});
}

TEST(DateFromTyped, ReadsYearsOfTwoDigitsAs1930To2029)
{
    ExpectRows({{"en_US", u"1/5/00", "2000-01-05"},
                {"en_US", u"1/5/29", "2029-01-05"},
                {"en_US", u"1/5/30", "1930-01-05"},
                {"en_US", u"Jan 5, 99", "1999-01-05"}});
}

TEST(DateFromTyped, RefusesWhatNoCalendarHasAndWhatIsNotFinished)
{
    ExpectRows({{"en_US", u"2/31/2026", "nothing"},
                {"en_US", u"13/5/2026", "nothing"},
                {"de_DE", u"31.02.2026", "nothing"},
                {"en_US", u"2026-02-31", "nothing"},
                {"en_US", u"February 31, 2026", "nothing"},
                {"en_US", u"2/29/2025", "nothing"},
                {"en_US", u"Friday, November 5, 2026", "nothing"}, // it is a Thursday
                {"en_US", u"11/05", "nothing"},
                {"en_US", u"11/05/2", "nothing"},
                {"en_US", u"11/05/202", "nothing"},
                {"en_US", u"11/05/20265", "nothing"},
                {"en_US", u"November 2026", "nothing"},
                {"en_US", u"November 5", "nothing"},
                {"en_US", u"November November 5, 2026", "nothing"},
                {"en_US", u"Novembers 5, 2026", "nothing"},
                {"en_US", u"5 Brumaire 2026", "nothing"},
                {"en_US", u"today", "nothing"},
                {"en_US", u"11052026", "nothing"},
                {"en_US", u"", "nothing"},
                {"en_US", u" ", "nothing"}});
    EXPECT_EQ(Read("en_US", QString(1'000'000, QLatin1Char('1'))), "nothing");
}

TEST(DateFromTyped, ReadsInEveryLocaleWhatIsWrittenThere)
{
    int locales = 0;
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const Formats formats(locale);
        for (const QDate date : {QDate(2026, 2, 1), QDate(2025, 11, 30), QDate(2026, 5, 10)})
            for (const QString &text : {formats.ShortDate(date), date.toString(Qt::ISODate)}) {
                EXPECT_EQ(formats.DateFromTyped(text), date)
                    << locale.name().toStdString() << ": " << text.toStdString();
            }
        ++locales;
    }
    EXPECT_GT(locales, 300);
}

TEST(DateFromTyped, ReadsTheLongDateOfThirtyLocales)
{
    for (const char *name :
         {"en_US", "en_GB", "de_DE", "ja_JP", "C",     "fr_FR", "it_IT", "es_ES", "pt_BR", "nl_NL",
          "sv_SE", "da_DK", "nb_NO", "fi_FI", "pl_PL", "cs_CZ", "hu_HU", "ru_RU", "uk_UA", "el_GR",
          "tr_TR", "he_IL", "ar_EG", "hi_IN", "th_TH", "vi_VN", "ko_KR", "zh_CN", "de_CH", "en_IN"})
        for (QDate date(2026, 1, 1); date.year() == 2026; date = date.addDays(1)) {
            const QLocale locale(QString::fromLatin1(name));
            const QString text = locale.toString(date, QLocale::LongFormat);
            ASSERT_EQ(Read(name, text), date.toString(Qt::ISODate).toStdString())
                << name << ": " << text.toStdString();
        }
}
