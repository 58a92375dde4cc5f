// Dates and times in patterns, and short dates read back.

#include "base/date_patterns.h"
#include "base/formats.h"
#include "base/locale_digits.h"

#include <array>
#include <cstdlib>

namespace
{

bool Names(QStringView pattern, QStringView name)
{
    return pattern.compare(name, Qt::CaseInsensitive) == 0;
}

QString Padded(int number, int width)
{
    return QStringLiteral("%1").arg(number, width, 10, QLatin1Char('0'));
}

QString DayText(const QLocale &locale, QDate date, qsizetype letters)
{
    switch (letters) {
    case 1:
    case 2:
        return Padded(date.day(), static_cast<int>(letters));
    case 3:
        return locale.dayName(date.dayOfWeek(), QLocale::ShortFormat);
    default:
        return locale.dayName(date.dayOfWeek(), QLocale::LongFormat);
    }
}

QString MonthText(const QLocale &locale, QDate date, qsizetype letters)
{
    switch (letters) {
    case 1:
    case 2:
        return Padded(date.month(), static_cast<int>(letters));
    case 3:
        return locale.monthName(date.month(), QLocale::ShortFormat);
    default:
        return locale.monthName(date.month(), QLocale::LongFormat);
    }
}

QString YearText(QDate date, qsizetype letters)
{
    return letters <= 2 ? Padded(std::abs(date.year()) % 100, 2) : Padded(date.year(), 4);
}

/// The order of the fields in a short date, and what may follow them.
struct DateOrder
{
    QString Fields; ///< "mdy" in the United States
    QString Tail;   ///< text behind the last field, if any
};

DateOrder OrderOf(QStringView pattern)
{
    DateOrder order;
    for (qsizetype at = 0; at < pattern.size(); ++at) {
        const QChar letter = pattern[at].toLower();
        if (letter == u'd' || letter == u'm' || letter == u'y') {
            order.Fields += letter;
            order.Tail.clear();
            at += RunLength(pattern, at) - 1;
        } else {
            order.Tail += LiteralText(pattern, at);
        }
    }
    order.Tail = order.Tail.trimmed();
    return order;
}

/// A number in a date and how many digits it was written with.
struct DateNumber
{
    int Value = 0;
    int DigitCount = 0;
};

/// Takes up to four digits from `at` on.
DateNumber TakeNumber(const QList<uint> &text, qsizetype &at, const LocaleDigits &digits)
{
    constexpr int MostDigits = 4;
    DateNumber number;
    for (; at < text.size() && number.DigitCount < MostDigits; ++at, ++number.DigitCount) {
        const int digit = digits.ValueOf(text[at]);
        if (digit < 0)
            break;
        number.Value = number.Value * 10 + digit;
    }
    return number;
}

/// Takes blanks with at most one "/", "-" or "." among them; false when there is nothing.
bool TakeSeparator(const QList<uint> &text, qsizetype &at)
{
    const qsizetype begin = at;
    bool markSeen = false;
    for (; at < text.size(); ++at) {
        const uint symbol = text[at];
        const bool mark = symbol == U'/' || symbol == U'-' || symbol == U'.';
        if (mark ? markSeen : !QChar::isSpace(symbol))
            break;
        markSeen = markSeen || mark;
    }
    return at > begin;
}

/// Takes the word off the front or the end of `text`, with the blanks around it.
bool TakeWord(QStringView &text, QStringView word)
{
    if (word.isEmpty())
        return false;
    if (text.endsWith(word, Qt::CaseInsensitive))
        text = text.chopped(word.size()).trimmed();
    else if (text.startsWith(word, Qt::CaseInsensitive))
        text = text.sliced(word.size()).trimmed();
    else
        return false;
    return true;
}

} // namespace

Formats::Formats(const QLocale &locale)
    : m_locale(locale), m_decimalPoint(locale.decimalPoint()),
      m_groupSeparator(locale.groupSeparator()),
      m_shortDatePattern(PatternFromLocale(locale.dateFormat(QLocale::ShortFormat))),
      m_longDatePattern(PatternFromLocale(locale.dateFormat(QLocale::LongFormat)))
{
    // The neutral locale has the month's name in its short date; ours has numbers alone.
    if (m_shortDatePattern.contains(QStringLiteral("MMM")))
        m_shortDatePattern = QStringLiteral("yyyy-mm-dd");
    const bool twelveHours =
        locale.timeFormat(QLocale::ShortFormat).contains(QStringLiteral("AP"), Qt::CaseInsensitive);
    m_longTimePattern = twelveHours ? QStringLiteral("h:mm:ss AMPM") : QStringLiteral("hh:mm:ss");
}

QString Formats::FormatDate(QDate date, QStringView pattern) const
{
    if (!date.isValid())
        return QString();
    if (pattern.isEmpty() || Names(pattern, u"Short Date"))
        pattern = m_shortDatePattern;
    else if (Names(pattern, u"Long Date"))
        pattern = m_longDatePattern;
    else if (Names(pattern, u"Medium Date"))
        pattern = u"dd-mmm-yy";

    QString text;
    for (qsizetype at = 0; at < pattern.size(); ++at) {
        const qsizetype letters = RunLength(pattern, at);
        switch (pattern[at].toLower().unicode()) {
        case u'd':
            text += DayText(m_locale, date, letters);
            at += letters - 1;
            break;
        case u'm':
            text += MonthText(m_locale, date, letters);
            at += letters - 1;
            break;
        case u'y':
            text += YearText(date, letters);
            at += letters - 1;
            break;
        default:
            text += LiteralText(pattern, at);
        }
    }
    return text;
}

QString Formats::FormatTime(QTime time, QStringView pattern) const
{
    if (!time.isValid())
        return QString();
    if (pattern.isEmpty() || Names(pattern, u"Long Time"))
        pattern = m_longTimePattern;

    // A half-day mark anywhere in the pattern rules the hours before it.
    const bool halfDays = pattern.contains(u"AMPM", Qt::CaseInsensitive) ||
                          pattern.contains(u"AM/PM", Qt::CaseInsensitive);
    const bool morning = time.hour() < 12;
    const int hour = halfDays ? (time.hour() + 11) % 12 + 1 : time.hour();

    QString text;
    for (qsizetype at = 0; at < pattern.size(); ++at) {
        const QStringView rest = pattern.mid(at);
        if (rest.startsWith(u"AMPM", Qt::CaseInsensitive)) {
            text += morning ? m_locale.amText() : m_locale.pmText();
            at += 3;
            continue;
        }
        if (rest.startsWith(u"AM/PM", Qt::CaseInsensitive)) {
            text += morning ? u"AM" : u"PM";
            at += 4;
            continue;
        }
        const qsizetype letters = RunLength(pattern, at);
        const int width = letters == 1 ? 1 : 2;
        switch (pattern[at].toLower().unicode()) {
        case u'h':
            text += Padded(hour, width);
            at += letters - 1;
            break;
        case u'm':
        case u'n':
            text += Padded(time.minute(), width);
            at += letters - 1;
            break;
        case u's':
            text += Padded(time.second(), width);
            at += letters - 1;
            break;
        default:
            text += LiteralText(pattern, at);
        }
    }
    return text;
}

QString Formats::ShortDate(QDate date) const
{
    return FormatDate(date, m_shortDatePattern);
}

QString Formats::ToText(QTime time) const
{
    return FormatTime(time, m_longTimePattern);
}

QString Formats::ToText(const QDateTime &moment) const
{
    if (!moment.isValid())
        return QString();
    const QString date = ShortDate(moment.date());
    return moment.time() == QTime(0, 0) ? date : date + u' ' + ToText(moment.time());
}

std::optional<QDate> Formats::DateFromText(QStringView text) const
{
    return DateFromNumbers(text, 1);
}

std::optional<QDate> Formats::DateFromNumbers(QStringView text, int fewestYearDigits) const
{
    QList<uint> symbols = text.trimmed().toUcs4();
    symbols.removeIf(IsDirectionMark);
    const LocaleDigits digits(m_locale);
    const DateOrder order = OrderOf(m_shortDatePattern);

    qsizetype at = 0;
    std::array<DateNumber, 3> numbers;
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        if (index > 0 && !TakeSeparator(symbols, at))
            return std::nullopt;
        numbers[index] = TakeNumber(symbols, at, digits);
    }
    while (at < symbols.size() && QChar::isSpace(symbols[at]))
        ++at;
    if (at < symbols.size() && symbols.mid(at) != order.Tail.toUcs4())
        return std::nullopt;

    const bool yearFirst = numbers[0].DigitCount == 4;
    const QString fields = yearFirst ? QStringLiteral("ymd") : order.Fields;
    const auto numberOf = [&](QChar field) {
        const qsizetype place = fields.indexOf(field);
        return place < 0 || place >= 3 ? DateNumber() : numbers[static_cast<std::size_t>(place)];
    };
    const DateNumber month = numberOf(u'm');
    const DateNumber day = numberOf(u'd');
    const DateNumber yearNumber = numberOf(u'y');
    const int year = YearOf(yearNumber.Value, yearNumber.DigitCount);
    if (year == 0 || yearNumber.DigitCount < fewestYearDigits || month.DigitCount > 2 ||
        day.DigitCount > 2)
        return std::nullopt;
    const QDate date(year, month.Value, day.Value);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<QTime> Formats::TimeFromText(QStringView text) const
{
    text = text.trimmed();
    const bool morning = TakeWord(text, m_locale.amText()) || TakeWord(text, u"AM");
    const bool evening =
        !morning && (TakeWord(text, m_locale.pmText()) || TakeWord(text, u"PM"));
    const bool halfDays = morning || evening;

    const QList<uint> symbols = text.toUcs4();
    const LocaleDigits digits(m_locale);
    std::array<int, 3> numbers{};
    qsizetype at = 0;
    std::size_t count = 0;
    for (; count < numbers.size() && at < symbols.size(); ++count) {
        if (count > 0) {
            if (symbols[at] != U':' && symbols[at] != U'.')
                return std::nullopt;
            ++at;
        }
        const DateNumber number = TakeNumber(symbols, at, digits);
        if (number.DigitCount < 1 || number.DigitCount > 2)
            return std::nullopt;
        numbers[count] = number.Value;
    }
    if (at < symbols.size() || count < (halfDays ? 1U : 2U))
        return std::nullopt;
    if (halfDays) {
        if (numbers[0] < 1 || numbers[0] > 12)
            return std::nullopt;
        numbers[0] = numbers[0] % 12 + (evening ? 12 : 0);
    }
    const QTime time(numbers[0], numbers[1], numbers[2]);
    return time.isValid() ? std::optional(time) : std::nullopt;
}
