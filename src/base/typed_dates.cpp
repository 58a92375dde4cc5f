// Dates as users type them, with names of months and weekdays.
//
// The reader takes names, numbers and the words of the locale's long date ("de", "年") one after the
// other; blanks and punctuation between them say nothing. What the numbers mean follows from their
// order in the long date, and from the four digits of a year.

#include "base/date_patterns.h"
#include "base/formats.h"

#include <algorithm>
#include <array>

namespace
{

QString Normal(const QLocale &locale, const QString &text)
{
    // Full-width digits and signs, as an input method gives them, become plain ones.
    QString normal = locale.toLower(text.normalized(QString::NormalizationForm_KC));
    normal.removeIf([](QChar symbol) { return IsDirectionMark(symbol.unicode()); });
    return normal.trimmed();
}

/// Whether a word of letters, or a number, goes on from one symbol to the next. Scripts that write
/// without blanks have no such words.
bool ContinuesAWord(QChar last, QChar next)
{
    switch (last.script()) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Hangul:
    case QChar::Script_Thai:
        return false;
    default:
        return (last.isLetter() && next.isLetter()) || (last.isDigit() && next.isDigit());
    }
}

/// The order of day, month and year in a long date, and the words among them.
struct LongDate
{
    explicit LongDate(const QLocale &locale)
    {
        const QString pattern = PatternFromLocale(locale.dateFormat(QLocale::LongFormat));
        QString literals;
        for (qsizetype at = 0; at < pattern.size(); ++at) {
            const QChar letter = pattern[at].toLower();
            const qsizetype length = RunLength(pattern, at);
            const bool isField = letter == u'd' || letter == u'm' || letter == u'y';
            if (!isField) {
                literals += LiteralText(pattern, at);
                continue;
            }
            literals += u' ';
            at += length - 1;
            if (letter != u'd' || length <= 2) // the others are weekdays
                Fields += letter;
        }
        QString word;
        for (const QChar symbol : Normal(locale, literals) + u' ') {
            if (symbol.isLetter() || symbol.isMark()) {
                word += symbol;
            } else if (!word.isEmpty()) {
                Words << word;
                word.clear();
            }
        }
    }

    QString Fields; ///< "mdy" in the United States
    QStringList Words;
};

class NamedDateReader
{
public:
    NamedDateReader(const QLocale &locale, QStringView text)
        : m_locale(locale), m_digits(locale), m_longDate(locale),
          m_text(Normal(locale, text.toString()))
    {}

    std::optional<QDate> Read()
    {
        for (SkipMarks(); m_at < m_text.size(); SkipMarks())
            if (!TakeMonth() && !TakeWeekdayOrWord() && !TakeNumber())
                return std::nullopt;
        if (!m_nameSeen) // numbers alone are a short date
            return std::nullopt;
        const std::optional<QDate> date = Assembled();
        return date && (m_weekday == 0 || date->dayOfWeek() == m_weekday) ? date : std::nullopt;
    }

private:
    struct Number
    {
        int Value = 0;
        int DigitCount = 0;
    };

    void SkipMarks()
    {
        while (m_at < m_text.size() &&
               (m_text[m_at].isSpace() || m_text[m_at].isPunct() || m_text[m_at].isSymbol()))
            ++m_at;
    }

    /// The length of `name` when the text goes on with it; 0 otherwise. The dot of an abbreviation may
    /// be missing.
    qsizetype LengthOf(const QString &name, bool asWholeWord) const
    {
        QString normal = Normal(m_locale, name);
        if (normal.endsWith(u'.'))
            normal.chop(1);
        if (normal.isEmpty() || !QStringView(m_text).mid(m_at).startsWith(normal))
            return 0;
        const qsizetype end = m_at + normal.size();
        const bool goesOn =
            asWholeWord && end < m_text.size() && ContinuesAWord(m_text[end - 1], m_text[end]);
        return goesOn ? 0 : normal.size();
    }

    /// The longest name that `nameOf` has for 1 to `count`: its number and length, 0 for none.
    template <class NameOf>
    std::pair<int, qsizetype> LongestName(int count, NameOf nameOf) const
    {
        qsizetype longest = 0;
        int found = 0;
        for (int number = 1; number <= count; ++number)
            for (const QLocale::FormatType form : {QLocale::LongFormat, QLocale::ShortFormat})
                for (const bool standalone : {false, true}) {
                    const qsizetype length = LengthOf(nameOf(number, form, standalone), true);
                    if (length > longest) {
                        longest = length;
                        found = number;
                    }
                }
        return {found, longest};
    }

    bool Take(qsizetype length)
    {
        m_at += length;
        m_nameSeen = m_nameSeen || length > 0;
        return length > 0;
    }

    bool TakeMonth()
    {
        if (m_month != 0)
            return false;
        const auto [month, length] =
            LongestName(12, [this](int number, QLocale::FormatType form, bool standalone) {
                return standalone ? m_locale.standaloneMonthName(number, form)
                                  : m_locale.monthName(number, form);
            });
        m_month = month;
        return Take(length);
    }

    /// Of both the longer: in Japanese the word behind the day is also the short name of Sunday.
    bool TakeWeekdayOrWord()
    {
        const auto [weekday, length] =
            LongestName(7, [this](int number, QLocale::FormatType form, bool standalone) {
                return standalone ? m_locale.standaloneDayName(number, form)
                                  : m_locale.dayName(number, form);
            });
        qsizetype wordLength = 0; // Hebrew writes its word and the month as one
        for (const QString &word : m_longDate.Words)
            wordLength = std::max(wordLength, LengthOf(word, false));
        if (length <= wordLength)
            return Take(wordLength);
        if (m_weekday != 0)
            return false;
        m_weekday = weekday;
        return Take(length);
    }

    bool TakeNumber()
    {
        constexpr int MostDigits = 4;
        Number number;
        for (; m_at < m_text.size(); ++number.DigitCount) {
            const bool isPair = m_text[m_at].isHighSurrogate() && m_at + 1 < m_text.size();
            const uint symbol = isPair ? QChar::surrogateToUcs4(m_text[m_at], m_text[m_at + 1])
                                       : m_text[m_at].unicode();
            const int digit = m_digits.ValueOf(symbol);
            if (digit < 0)
                break;
            if (number.DigitCount == MostDigits)
                return false;
            number.Value = number.Value * 10 + digit;
            m_at += isPair ? 2 : 1;
        }
        if (number.DigitCount == 0 || m_numberCount == m_numbers.size())
            return false;
        m_numbers[m_numberCount++] = number;
        return true;
    }

    std::optional<QDate> Assembled() const
    {
        QString fields = m_longDate.Fields;
        if (m_month != 0)
            fields.remove(u'm');
        if (m_numberCount != std::size_t(fields.size()))
            return std::nullopt;
        if (m_numbers[0].DigitCount == 4)
            fields = m_month != 0 ? QStringLiteral("yd") : QStringLiteral("ymd");
        else if (m_month != 0 && m_numbers[1].DigitCount == 4)
            fields = QStringLiteral("dy");
        const auto numberOf = [&](QChar field) {
            const qsizetype place = fields.indexOf(field);
            return place < 0 ? Number() : m_numbers[std::size_t(place)];
        };
        const Number day = numberOf(u'd');
        const Number month = m_month != 0 ? Number{m_month, 1} : numberOf(u'm');
        const Number year = numberOf(u'y');
        if (day.DigitCount > 2 || month.DigitCount > 2 || year.DigitCount < 2)
            return std::nullopt;
        const int fullYear = YearOf(year.Value, year.DigitCount);
        const QDate date(fullYear, month.Value, day.Value);
        return fullYear != 0 && date.isValid() ? std::optional(date) : std::nullopt;
    }

    const QLocale &m_locale;
    const LocaleDigits m_digits;
    const LongDate m_longDate;
    const QString m_text;
    qsizetype m_at = 0;
    bool m_nameSeen = false;
    int m_month = 0;
    int m_weekday = 0;
    std::array<Number, 3> m_numbers;
    std::size_t m_numberCount = 0;
};

} // namespace

std::optional<QDate> Formats::DateFromTyped(QStringView text) const
{
    constexpr int LongestText = 100; // what is longer was not meant as a date
    if (text.size() > LongestText)
        return std::nullopt;
    const QString normal = Normal(m_locale, text.toString());
    if (const std::optional<QDate> date = DateFromNumbers(normal, 2))
        return date;
    return NamedDateReader(m_locale, normal).Read();
}
