#include "base/formats.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};
const Formats British{QLocale(QLocale::English, QLocale::UnitedKingdom)};
const Formats German{QLocale(QLocale::German, QLocale::Germany)};
const Formats French{QLocale(QLocale::French, QLocale::France)};

const QDate Monday(2026, 3, 2);

std::string Utf8(QStringView text)
{
    return text.toString().toStdString();
}

std::string Shown(QDate date, QStringView pattern)
{
    return Utf8(English.FormatDate(date, pattern));
}

std::string Shown(QTime time, QStringView pattern)
{
    return Utf8(English.FormatTime(time, pattern));
}

} // namespace

TEST(FormatDate, WritesThePatternsOfTheScreens)
{
    EXPECT_EQ(Shown(Monday, u"ddd d MMMM yyyy"), "Mon 2 March 2026");
    EXPECT_EQ(Shown(Monday, u"mmm-dd-yy"), "Mar-02-26");
    EXPECT_EQ(Shown(Monday, u"mm/dd/yyyy"), "03/02/2026");
    EXPECT_EQ(Shown(Monday, u"yyyy-mm-dd"), "2026-03-02");
    EXPECT_EQ(Shown(Monday, u"YYYY-MM-DD"), "2026-03-02");
    EXPECT_EQ(Shown(Monday, u"yyyy"), "2026");
    EXPECT_EQ(Shown(Monday, u"Short date"), "3/2/2026");
    EXPECT_EQ(Shown(Monday, u"Medium Date"), "02-Mar-26");
    EXPECT_EQ(Shown(Monday, u"Long Date"), "Monday, March 2, 2026");
    EXPECT_EQ(Shown(Monday, u"long date"), "Monday, March 2, 2026");
    EXPECT_EQ(Shown(Monday, u"\"day\" d\\d"), "day 2d");
    EXPECT_EQ(Shown(Monday, u""), "3/2/2026");
}

TEST(FormatDate, HoldsForOddDaysAndPatterns)
{
    EXPECT_EQ(Shown(QDate(2024, 2, 29), u"d mmm yyyy"), "29 Feb 2024");
    EXPECT_EQ(Shown(QDate(1900, 1, 1), u"Short Date"), "1/1/1900");
    EXPECT_EQ(Shown(QDate(2000, 12, 31), u"yy"), "00");
    EXPECT_EQ(Shown(QDate(150, 1, 1), u"yyyy"), "0150");
    EXPECT_EQ(Shown(QDate(12026, 1, 1), u"yyyy-mm-dd"), "12026-01-01");
    EXPECT_EQ(Shown(QDate(), u"yyyy-mm-dd"), "");
    EXPECT_EQ(Shown(QDate(2026, 2, 30), u"Short date"), "");
    EXPECT_EQ(Shown(Monday, u"\"open d"), "open d");
    EXPECT_EQ(Shown(Monday, u"d\\"), "2");
    EXPECT_EQ(Shown(Monday, QString(100'000, u'd')), "Monday");
}

TEST(FormatDate, SpeaksTheLocale)
{
    EXPECT_EQ(British.ShortDate(Monday), u"02/03/2026");
    EXPECT_EQ(German.ShortDate(Monday), u"02.03.2026");
    EXPECT_EQ(French.FormatDate(Monday, u"ddd d MMMM yyyy"), u"lun. 2 mars 2026");
    EXPECT_EQ(German.FormatDate(Monday, u"Long Date"), u"Montag, 2. M\u00e4rz 2026");
    EXPECT_EQ(Formats(QLocale("es_ES")).FormatDate(Monday, u"Long Date"),
              u"lunes, 2 de marzo de 2026");
    EXPECT_EQ(Formats(QLocale::c()).ShortDate(Monday), u"2026-03-02");
}

TEST(FormatTime, WritesThePatternsOfTheScreens)
{
    EXPECT_EQ(Shown(QTime(14, 5, 9), u"h:mm:ss AMPM"), "2:05:09 PM");
    EXPECT_EQ(Shown(QTime(0, 0), u"h:mm:ss AMPM"), "12:00:00 AM");
    EXPECT_EQ(Shown(QTime(12, 0), u"h:mm:ss AMPM"), "12:00:00 PM");
    EXPECT_EQ(Shown(QTime(23, 59, 59, 999), u"h:mm:ss AMPM"), "11:59:59 PM");
    EXPECT_EQ(Shown(QTime(9, 5), u"h:mm"), "9:05");
    EXPECT_EQ(Shown(QTime(0, 5), u"h:mm"), "0:05");
    EXPECT_EQ(Shown(QTime(9, 5, 7), u"hh:mm:ss"), "09:05:07");
    EXPECT_EQ(Shown(QTime(9, 5, 7), u"HH:NN:S"), "09:05:7");
    EXPECT_EQ(Shown(QTime(21, 5), u"hh.mm am/pm"), "09.05 PM");
    EXPECT_EQ(Shown(QTime(14, 5, 9), u"Long Time"), "2:05:09 PM");
    EXPECT_EQ(Shown(QTime(), u"h:mm"), "");
    EXPECT_EQ(German.FormatTime(QTime(9, 5, 9), u"Long Time"), u"09:05:09");
}

TEST(DateText, GivesDatesAndTimesInTheirDefaultForm)
{
    EXPECT_EQ(English.ToText(Monday), u"3/2/2026");
    EXPECT_EQ(English.ToText(QTime(10, 15)), u"10:15:00 AM");
    EXPECT_EQ(English.ToText(QDateTime(Monday, QTime(10, 15))), u"3/2/2026 10:15:00 AM");
    EXPECT_EQ(English.ToText(QDateTime(Monday, QTime(0, 0))), u"3/2/2026");
    EXPECT_EQ(German.ToText(QDateTime(Monday, QTime(10, 15))), u"02.03.2026 10:15:00");
    EXPECT_EQ(English.ToText(QDate()), u"");
    EXPECT_EQ(English.ToText(QTime()), u"");
    EXPECT_EQ(English.ToText(QDateTime()), u"");
}

TEST(DateFromText, ReadsShortDatesOfTheLocaleAndYearFirst)
{
    for (const char16_t *text :
         {u"3/2/2026", u"03/02/2026", u"3/2/26", u" 3/2/2026 ", u"3-2-2026", u"3.2.2026",
          u"3 / 2 / 2026", u"3 2 2026", u"2026-03-02", u"2026/3/2"})
        EXPECT_EQ(English.DateFromText(text), Monday) << Utf8(text);
    EXPECT_EQ(British.DateFromText(u"2/3/2026"), Monday);
    EXPECT_EQ(German.DateFromText(u"2.3.26"), Monday);
    EXPECT_EQ(German.DateFromText(u"2026-03-02"), Monday);
    EXPECT_EQ(Formats(QLocale::c()).DateFromText(u"2026-03-02"), Monday);
    EXPECT_EQ(English.DateFromText(u"2/29/2024"), QDate(2024, 2, 29));
}

TEST(DateFromText, TakesTwoDigitYearsFrom1930To2029)
{
    EXPECT_EQ(English.DateFromText(u"1/1/29"), QDate(2029, 1, 1));
    EXPECT_EQ(English.DateFromText(u"1/1/30"), QDate(1930, 1, 1));
    EXPECT_EQ(English.DateFromText(u"1/1/00"), QDate(2000, 1, 1));
    EXPECT_EQ(English.DateFromText(u"1/1/5"), QDate(2005, 1, 1));
}

TEST(DateFromText, GivesNothingForWhatIsNoDate)
{
    const char16_t *const texts[] = {
        u"",
        u" ",
        u"abc",
        u"3/2",
        u"3/2/",
        u"/3/2/2026",
        u"13/1/2026",
        u"2/29/2026",
        u"2/30/2024",
        u"0/1/2026",
        u"1/0/2026",
        u"3//2/2026",
        u"3/2/202",
        u"3/2/20266",
        u"3/2/0000",
        u"3/2/0099",
        u"003/2/2026",
        u"3/2/2026x",
        u"3/2/2026 10:15:00 AM",
        u"20260302",
        u"2026-3-2-1",
        u"2026-13-01",
        u"-3/2/2026",
        u"\u0663/2/2026",
    };
    for (const char16_t *text : texts)
        EXPECT_FALSE(English.DateFromText(text).has_value()) << Utf8(text);
    for (const char16_t symbol : {u'1', u' ', u'/'})
        EXPECT_FALSE(English.DateFromText(QString(10'000'000, QChar(symbol))).has_value());
}

TEST(DateFromText, ReadsInEveryLocaleWhatWasWrittenThere)
{
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const Formats formats(locale);
        for (const QDate date : {Monday, QDate(2031, 12, 25), QDate(1900, 1, 1)})
            EXPECT_EQ(formats.DateFromText(formats.ShortDate(date)), date)
                << Utf8(locale.name()) << " " << Utf8(formats.ShortDate(date));
        EXPECT_EQ(formats.DateFromText(locale.toString(Monday, QLocale::ShortFormat)),
                  locale.language() == QLocale::C ? std::nullopt : std::optional(Monday))
            << Utf8(locale.name());
    }
}

TEST(TimeFromText, ReadsTimesOfDayWithAndWithoutHalves)
{
    EXPECT_EQ(English.TimeFromText(u"10:15"), QTime(10, 15));
    EXPECT_EQ(English.TimeFromText(u" 22:15:30 "), QTime(22, 15, 30));
    EXPECT_EQ(English.TimeFromText(u"10:15:30 PM"), QTime(22, 15, 30));
    EXPECT_EQ(English.TimeFromText(u"12:00 am"), QTime(0, 0));
    EXPECT_EQ(English.TimeFromText(u"12 PM"), QTime(12, 0));
    EXPECT_EQ(German.TimeFromText(u"9.05"), QTime(9, 5));
    for (const QTime time : {QTime(0, 0), QTime(12, 0, 1), QTime(23, 59, 59)})
        for (const Formats *formats : {&English, &British, &German, &French})
            EXPECT_EQ(formats->TimeFromText(formats->ToText(time)), time);
}

TEST(TimeFromText, TakesNothingElse)
{
    for (const QStringView text : {u"", u"10", u"24:00", u"10:60", u"10:15:60", u"13:00 PM",
                                   u"0:30 AM", u"10:15:30:1", u"10:", u"noon", u"3/2/2026"})
        EXPECT_EQ(English.TimeFromText(text), std::nullopt) << Utf8(text);
}
