// Numbers as users type them into fields, brought into the locale's own writing.
//
// A field takes the decimal sign of any keyboard; so each point and comma has to be judged by what
// follows it. Signs around the digits, currency and exponent are left to the reader of numbers.

#include "base/decimal.h"
#include "base/formats.h"
#include "base/number_marks.h"

#include <algorithm>
#include <vector>

namespace
{

bool IsPointOrComma(uint symbol)
{
    return symbol == U'.' || symbol == U',';
}

/// The digits of a number with the signs among them: 1.234,5 has the runs 1, 234 and 5.
class DigitRuns
{
public:
    DigitRuns(const QList<uint> &text, const NumberMarks &marks, bool groupsByTwo)
        : m_marks(marks), m_groupsByTwo(groupsByTwo)
    {
        const auto isSign = [&](uint symbol) {
            return IsPointOrComma(symbol) || symbol == marks.Point || marks.IsGroup(symbol);
        };
        const auto isBlank = [](uint symbol) { return QChar::isSpace(symbol); };
        qsizetype end = text.size();
        while (Begin < end && (marks.Digits.ValueOf(text[Begin]) < 0 &&
                               (!isSign(text[Begin]) || isBlank(text[Begin]))))
            ++Begin;
        for (End = Begin; End < end; ++End)
            if (marks.Digits.ValueOf(text[End]) < 0 && !isSign(text[End]))
                break;
        while (End > Begin && isBlank(text[End - 1])) // behind the number, not within
            --End;
        m_runs.emplace_back();
        for (qsizetype at = Begin; at < End; ++at) {
            if (marks.Digits.ValueOf(text[at]) >= 0) {
                m_runs.back().append(text[at]);
            } else {
                m_signs.push_back(text[at]);
                m_runs.emplace_back();
            }
        }
    }

    bool HasDigits() const
    {
        return std::any_of(m_runs.begin(), m_runs.end(),
                           [](const QList<uint> &run) { return !run.isEmpty(); });
    }
    bool IsSignAlone() const { return m_signs.size() == 1 && !HasDigits(); }

    /// Digits with the locale's point; nothing when the signs do not tell what is meant.
    std::optional<QList<uint>> InTheLocale() const
    {
        const std::optional<bool> lastIsPoint = LastIsPoint();
        if (!lastIsPoint)
            return std::nullopt;
        const std::size_t groups = m_runs.size() - (*lastIsPoint ? 1 : 0);
        for (std::size_t at = 0; at + 1 < groups; ++at)
            if (!m_marks.IsGroup(m_signs[at]))
                return std::nullopt;
        if (!AreGroups(groups))
            return std::nullopt;
        QList<uint> digits;
        for (std::size_t at = 0; at < groups; ++at)
            digits += m_runs[at];
        if (*lastIsPoint) {
            digits += m_marks.Point;
            digits += m_runs.back();
        }
        return digits;
    }

    qsizetype Begin = 0; ///< of the digits and signs in the text
    qsizetype End = 0;

private:
    /// Whether the last sign is the decimal sign; nothing when it may be either.
    std::optional<bool> LastIsPoint() const
    {
        if (m_signs.empty())
            return false;
        const uint sign = m_signs.back();
        if (sign == m_marks.Point)
            return true;
        const bool isSingle = std::count(m_signs.begin(), m_signs.end(), sign) == 1;
        if (!IsPointOrComma(sign) || !isSingle)
            return false;
        const bool nothingBefore =
            m_signs.size() == 1 && std::all_of(m_runs[0].begin(), m_runs[0].end(), [&](uint digit) {
                return m_marks.Digits.ValueOf(digit) == 0;
            });
        if (m_runs.back().size() != 3 || nothingBefore)
            return true;
        if (m_marks.IsGroup(sign))
            return false;
        // Neither sign of the locale: "1.234" may be groups of another one, "1234.567" may not.
        const bool mayBeGroups = m_signs.size() == 1 && m_runs[0].size() <= 3;
        return mayBeGroups ? std::nullopt : std::optional(true);
    }

    /// Whether the first `count` runs are the groups of one number.
    bool AreGroups(std::size_t count) const
    {
        if (count == 1)
            return true;
        const auto have = [&](qsizetype size) {
            if (m_runs[0].isEmpty() || m_runs[0].size() > size)
                return false;
            return std::all_of(m_runs.begin() + 1, m_runs.begin() + std::ptrdiff_t(count) - 1,
                               [&](const QList<uint> &run) { return run.size() == size; });
        };
        return m_runs[count - 1].size() == 3 && (have(3) || (m_groupsByTwo && have(2)));
    }

    const NumberMarks &m_marks;
    const bool m_groupsByTwo; ///< 12,34,567 as in India
    std::vector<QList<uint>> m_runs;
    std::vector<uint> m_signs; ///< one less than runs
};

bool GroupsByTwo(const QLocale &locale)
{
    constexpr qlonglong TenMillion = 10'000'000;
    return locale.toString(TenMillion).count(locale.groupSeparator()) == 3; // 1,00,00,000
}

} // namespace

std::optional<QString> Formats::TypedNumber(QStringView text) const
{
    const NumberMarks marks(m_locale);
    const QList<uint> symbols = text.toUcs4();
    const DigitRuns runs(symbols, marks, GroupsByTwo(m_locale));
    const auto toText = [](const QList<uint> &part) {
        return QString::fromUcs4(reinterpret_cast<const char32_t *>(part.data()), part.size());
    };
    const QString before = toText(symbols.first(runs.Begin));
    const QString behind = toText(symbols.sliced(runs.End));
    if (!runs.HasDigits()) {
        const bool isAlone = runs.IsSignAlone() || runs.Begin == runs.End;
        return isAlone && (before + behind).trimmed().isEmpty() ? std::optional(QString())
                                                                : std::nullopt;
    }
    const std::optional<QList<uint>> digits = runs.InTheLocale();
    if (!digits)
        return std::nullopt;
    const QString number = before + toText(*digits) + behind;
    return DecimalFromText(number) ? std::optional(number) : std::nullopt;
}

QString Formats::NumberKeys() const
{
    QString keys = QStringLiteral("0123456789.");
    const uint zero = m_locale.zeroDigit().toUcs4().value(0, U'0');
    for (uint digit = zero; digit != U'0' && digit < zero + 10; ++digit)
        keys += QString::fromUcs4(reinterpret_cast<const char32_t *>(&digit), 1);
    return keys + m_decimalPoint;
}

QString Formats::DecimalSigns() const
{
    const bool pointGroups = NumberMarks(m_locale).IsGroup(U'.');
    return pointGroups ? m_decimalPoint : m_decimalPoint + QLatin1Char('.');
}
