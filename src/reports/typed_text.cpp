#include "reports/typed_text.h"

#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace
{

constexpr double SecondsPerDay = 86400;

bool IsDigit(QChar symbol)
{
    return symbol >= u'0' && symbol <= u'9';
}

/// Days as spreadsheets count them. They know a 29 February 1900, and agree from the day behind it.
std::optional<int> SerialOf(QDate date)
{
    if (date < QDate(1900, 3, 1) || date.year() > 9999)
        return std::nullopt;
    return static_cast<int>(QDate(1899, 12, 30).daysTo(date));
}

/// The numbers that a text holds, with their lengths.
struct DigitRun
{
    int Value;
    qsizetype Length;
};
using DigitRuns = QVarLengthArray<DigitRun, 4>;

/// At most four numbers of at most four digits.
std::optional<DigitRuns> DigitRunsOf(QStringView text)
{
    DigitRuns runs;
    for (qsizetype at = 0; at < text.size();) {
        DigitRun run{0, 0};
        for (; at < text.size() && IsDigit(text[at]); ++at, ++run.Length) {
            if (run.Length == 4)
                return std::nullopt;
            run.Value = run.Value * 10 + text[at].digitValue();
        }
        if (run.Length == 0)
            ++at;
        else if (runs.size() == 4)
            return std::nullopt;
        else
            runs.append(run);
    }
    return runs;
}

int YearOf(DigitRun run)
{
    constexpr int FirstTwoDigitYear = 30; // as Formats reads them
    if (run.Length > 2)
        return run.Value;
    return run.Value + (run.Value < FirstTwoDigitYear ? 2000 : 1900);
}

/// The locale's long date as a number format: a day with parts of its own is written, and its parts
/// are named.
QString LongDateCode(const Formats &formats)
{
    const QDate day(2345, 6, 7);
    struct Part
    {
        QString Text;
        const char *Code;
    };
    QList<Part> parts;
    for (const char *code : {"dddd", "mmmm", "mmm", "ddd", "yyyy", "yy", "mm", "m", "dd", "d"})
        parts.append({formats.FormatDate(day, QString::fromLatin1(code)), code});

    const QString text = formats.FormatDate(day, u"Long Date");
    QString code;
    QString literal;
    const auto addLiteral = [&] {
        const bool plain = std::all_of(literal.begin(), literal.end(), [](QChar symbol) {
            return QStringView(u" ,-/").contains(symbol);
        });
        code += plain ? literal : u'"' + literal.remove(u'"') + u'"';
        literal.clear();
    };
    for (qsizetype at = 0; at < text.size();) {
        const QStringView rest = QStringView(text).sliced(at);
        const auto part = std::find_if(parts.begin(), parts.end(), [&](const Part &each) {
            return rest.startsWith(each.Text);
        });
        if (part == parts.end()) {
            literal += text[at++];
            continue;
        }
        addLiteral();
        code += QLatin1String(part->Code);
        at += part->Text.size();
    }
    addLiteral();
    return code;
}

} // namespace

TypedText::TypedText(const Formats &formats, NumberFormats &numberFormats)
    : m_formats(formats), m_numberFormats(numberFormats)
{
    const QString sample = formats.Format(1234.5, u"#,##0.0"); // 1,234.5
    m_group = IsDigit(sample[1]) ? m_group : sample[1];        // a locale may have none
    m_point = sample[sample.size() - 2];
    const QString day = formats.ShortDate(QDate(2345, 6, 7));
    m_dateMark = *std::find_if_not(day.begin(), day.end(), IsDigit);
}

std::optional<TypedText::Value> TypedText::Read(const QString &text)
{
    constexpr qsizetype Remembered = 16384;
    const QStringView trimmed = QStringView(text).trimmed();
    if (const std::optional<Value> number = ReadNumber(trimmed))
        return number;
    // Dates and times have two numbers at least; words are told apart at once.
    if (std::count_if(trimmed.begin(), trimmed.end(), IsDigit) < 2)
        return std::nullopt;
    const auto found = m_moments.constFind(text);
    if (found != m_moments.constEnd())
        return *found;
    if (m_moments.size() >= Remembered)
        m_moments.clear();
    return m_moments[text] = ReadMoment(trimmed.toString());
}

// --- numbers ---------------------------------------------------------------------------------------

std::optional<TypedText::Value> TypedText::ReadNumber(QStringView text)
{
    constexpr qsizetype GroupDigits = 3;
    const auto isGroup = [this](QChar symbol) {
        return !symbol.isNull() && (symbol == m_group || (m_group.isSpace() && symbol.isSpace()));
    };

    qsizetype at = 0;
    const auto here = [&] { return at < text.size() ? text[at] : QChar(); };
    QVarLengthArray<char, 64> digits; // with a sign in front, an exponent behind
    if (here() == u'-' || here() == u'+') {
        if (here() == u'-')
            digits.append('-');
        ++at;
    }
    const qsizetype firstDigit = digits.size();
    qsizetype groupStart = at;
    bool grouped = false;
    for (; IsDigit(here()) || (isGroup(here()) && at > 0); ++at) {
        if (IsDigit(here())) {
            digits.append(here().toLatin1());
            continue;
        }
        const qsizetype length = at - groupStart;
        if (length < 1 || length > GroupDigits || (grouped && length != GroupDigits))
            return std::nullopt;
        grouped = true;
        groupStart = at + 1;
    }
    if (grouped && at - groupStart != GroupDigits)
        return std::nullopt;

    const qsizetype wholeDigits = digits.size() - firstDigit;
    if (here() == m_point) {
        for (++at; IsDigit(here()); ++at)
            digits.append(here().toLatin1());
    }
    const qsizetype allDigits = digits.size() - firstDigit;
    if (allDigits == 0)
        return std::nullopt;
    const qsizetype decimals = allDigits - wholeDigits;
    const bool endsInZero = decimals > 0 && digits.back() == '0';

    int exponent = 0;
    const bool hasExponent = here() == u'E' || here() == u'e';
    if (hasExponent) {
        ++at;
        const bool negative = here() == u'-';
        if (negative || here() == u'+')
            ++at;
        const qsizetype first = at;
        for (; IsDigit(here()) && at - first < 4; ++at)
            exponent = exponent * 10 + here().digitValue();
        if (at == first)
            return std::nullopt;
        exponent = negative ? -exponent : exponent;
    }
    const qsizetype percentSign = at < text.size() && here().isSpace() ? at + 1 : at;
    const bool percent = percentSign + 1 == text.size() && text[percentSign] == u'%';
    if (percent)
        at = text.size();
    if (at < text.size() || (percent && hasExponent))
        return std::nullopt;

    digits.append('e');
    std::array<char, 16> buffer;
    const auto shift = exponent - decimals - (percent ? 2 : 0);
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), shift);
    digits.append(buffer.data(), written.ptr - buffer.data());
    double number = 0;
    if (std::from_chars(digits.begin(), digits.end(), number).ec != std::errc())
        return std::nullopt;

    if (hasExponent)
        return Value{number, m_numberFormats.PlaceOf(QStringLiteral("0.00E+00"))};
    // General shows up to eleven characters, no zeros at the end, and small numbers with an exponent.
    constexpr qsizetype GeneralDigits = 10;
    constexpr double SmallestGeneral = 1e-4;
    const bool asGeneral = !grouped && !percent && !endsInZero && allDigits <= GeneralDigits &&
                           (number == 0 || std::abs(number) >= SmallestGeneral);
    return Value{number,
                 asGeneral ? NumberFormats::General : DecimalFormat(grouped, decimals, percent)};
}

quint16 TypedText::DecimalFormat(bool grouped, qsizetype decimals, bool percent)
{
    constexpr qsizetype MostDecimals = 30; // of a number format
    decimals = std::min(decimals, MostDecimals);
    const quint32 key = static_cast<quint32>(decimals) << 2 | (grouped ? 2 : 0) | (percent ? 1 : 0);
    const auto found = m_decimalFormats.constFind(key);
    if (found != m_decimalFormats.constEnd())
        return *found;
    QString code = grouped ? QStringLiteral("#,##0") : QStringLiteral("0");
    if (decimals > 0)
        code += u'.' + QString(decimals, u'0');
    if (percent)
        code += u'%';
    return m_decimalFormats[key] = m_numberFormats.PlaceOf(code);
}

// --- dates and times -------------------------------------------------------------------------------

std::optional<TypedText::Value> TypedText::ReadMoment(const QString &text)
{
    if (const std::optional<Value> date = ReadDate(text))
        return date;
    if (const std::optional<Value> time = ReadTime(text))
        return time;
    const qsizetype blank = text.indexOf(u' ');
    if (blank < 0)
        return std::nullopt;
    const std::optional<Value> date = ReadDate(text.first(blank));
    const std::optional<Value> time = ReadTime(QStringView(text).sliced(blank + 1));
    if (!date || !time)
        return std::nullopt;
    const QString code = m_numberFormats.Entries()[date->Format].Code + u' ' +
                         m_numberFormats.Entries()[time->Format].Code;
    return Value{date->Number + time->Number, m_numberFormats.PlaceOf(code)};
}

std::optional<TypedText::Value> TypedText::ReadDate(const QString &text)
{
    std::optional<QDate> date;
    QString code;
    const auto marks = std::count_if(text.begin(), text.end(), [this](QChar symbol) {
        return symbol == u'/' || symbol == u'-' || symbol == m_dateMark;
    });
    if (marks >= 2) {
        date = m_formats.DateFromText(text);
        const bool yearFirst =
            text.indexOf(u'-') == 4 && date && m_formats.ShortDate(*date) != text;
        code = yearFirst ? QStringLiteral("yyyy-mm-dd") : QStringLiteral("m/d/yyyy");
    }
    if (!date && text.count(u'-') >= 2) {
        date = DateOfPattern(text, u"Medium Date");
        code = QStringLiteral("d-mmm-yy");
    }
    if (!date) {
        date = DateOfPattern(text, u"Long Date");
        code = date ? LongDateCode(m_formats) : QString();
    }
    const std::optional<int> serial = date ? SerialOf(*date) : std::nullopt;
    if (!serial)
        return std::nullopt;
    return Value{static_cast<double>(*serial), m_numberFormats.PlaceOf(code)};
}

/// The day that is written so in the pattern: each that the numbers of the text allow is written and
/// compared.
std::optional<QDate> TypedText::DateOfPattern(const QString &text, QStringView pattern) const
{
    const std::optional<DigitRuns> runs = DigitRunsOf(text);
    if (!runs)
        return std::nullopt;
    for (const DigitRun &year : *runs) {
        for (const DigitRun &day : *runs) {
            for (int month = 1; &day != &year && day.Length <= 2 && month <= 12; ++month) {
                const QDate date(YearOf(year), month, day.Value);
                if (date.isValid() && m_formats.FormatDate(date, pattern) == text)
                    return date;
            }
        }
    }
    return std::nullopt;
}

std::optional<TypedText::Value> TypedText::ReadTime(QStringView text)
{
    const auto colons = std::count(text.begin(), text.end(), u':');
    const std::optional<QTime> time = m_formats.TimeFromText(text);
    if (colons == 0 || !time)
        return std::nullopt;
    QString code = colons == 2 ? QStringLiteral("h:mm:ss") : QStringLiteral("h:mm");
    if (std::any_of(text.begin(), text.end(), [](QChar symbol) { return symbol.isLetter(); }))
        code += QStringLiteral(" AM/PM");
    return Value{time->msecsSinceStartOfDay() / 1000 / SecondsPerDay,
                 m_numberFormats.PlaceOf(code)};
}
