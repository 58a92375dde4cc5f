#include "marketdata/practice_walk.h"

#include "base/runtime_error.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

/// The logarithm of a close is a sum of noises on nine time scales. The noise of scale k has a
/// random value every 2^k weekdays and runs straight between them, with an amplitude that grows
/// with the root of its span. That looks like a random walk from one day to a year, but needs two
/// random values a scale instead of all days before, and is bounded: with an amplitude a, no day
/// moves more than 7a and no price leaves e^(52a) times its middle. The random values are hashes.
///
/// Doubles are added, multiplied and divided only, which every machine does alike to the last bit;
/// the exponential is therefore made here.

namespace
{

struct Character
{
    double lowestBase;
    double highestBase;
    double amplitude; ///< of the shortest scale; a usual day moves about 1.15 times as much
    double yearlyGrowth;
    double volumeBase; ///< the least of usual volumes; the highest is twenty times that
};

constexpr Character Index{1000, 5000, 0.007, 0.05, 10'000'000};
constexpr Character Fund{20, 60, 0.0045, 0.05, 0};
constexpr Character Option{2, 9, 0.03, 0, 100};
constexpr Character Bond{92, 108, 0.0018, 0, 500};
constexpr Character Stock{15, 180, 0.012, 0.06, 150'000};

/// Independent series of random values of one symbol.
enum Channel : std::uint64_t
{
    Base,
    Gap,
    Above,
    Below,
    Trades,
    HalfHours,
    Minutes,
    FirstScale
};

constexpr int WeekdaysOfYear = 261;

std::uint64_t Mix(std::uint64_t x)
{
    x += 0x9e3779b97f4a7c15u;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9u;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebu;
    return x ^ (x >> 31);
}

double Exp(double x)
{
    // A short series for x / 1024, then squared ten times.
    const double part = x / 1024;
    double power = 1 + part * (1 + part / 2 * (1 + part / 3 * (1 + part / 4)));
    for (int i = 0; i < 10; ++i)
        power *= power;
    return power;
}

Currency ToCents(double price)
{
    return Currency::FromUnits(std::max<std::int64_t>(1, std::llround(price * 100)) * 100);
}

Character CharacterOf(const QString &symbol)
{
    const auto isLetter = [](QChar c) { return c >= u'A' && c <= u'Z'; };
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (symbol.startsWith(u'.'))
        return Index;
    if (symbol.size() == 5 && symbol.endsWith(u'X') &&
        std::all_of(symbol.begin(), symbol.end(), isLetter))
        return Fund;
    const auto digits = std::find_if_not(symbol.rbegin(), symbol.rend(), isDigit);
    if (digits == symbol.rbegin() || digits == symbol.rend())
        return Stock;
    return *digits == u'C' || *digits == u'P' ? Option : Bond;
}

/// Weekdays on end, so that a Monday follows its Friday.
std::int64_t WeekdayNumber(QDate weekday)
{
    const std::int64_t day = weekday.toJulianDay(); // day 0 was a Monday
    const std::int64_t week = (day >= 0 ? day : day - 6) / 7;
    return week * 5 + (day - week * 7);
}

class Walk
{
public:
    explicit Walk(const QString &symbol)
    {
        const QString name = symbol.trimmed().toUpper();
        m_seed = 0xcbf29ce484222325u;
        for (const char byte : name.toUtf8())
            m_seed = (m_seed ^ static_cast<unsigned char>(byte)) * 0x100000001b3u;
        m_character = CharacterOf(name);
        m_base = m_character.lowestBase +
                 (m_character.highestBase - m_character.lowestBase) * Portion(Base, 0);
    }

    PracticeDay DayOf(std::int64_t day) const
    {
        const double before = Level(day - 1);
        const double level = Level(day);
        const double swing = m_character.amplitude;
        const double open = m_base * Exp(before + swing * 0.4 * Noise(Gap, day));
        const double close = m_base * Exp(level);
        PracticeDay prices;
        prices.Open = ToCents(open);
        prices.Close = ToCents(close);
        prices.High = ToCents(std::max(open, close) * (1 + swing * 0.8 * Portion(Above, day)));
        prices.Low = ToCents(std::min(open, close) * (1 - swing * 0.8 * Portion(Below, day)));
        // Busy days are those on which the price moves.
        const double usual =
            m_character.volumeBase * (1 + 19 * Portion(Trades, 0) * Portion(Trades, 0));
        const double moved = std::min(3.0, std::fabs(level - before) / swing);
        prices.Volume = std::llround(usual * (0.5 + 0.5 * Portion(Trades, day) + 0.4 * moved));
        return prices;
    }

    Currency PriceAt(std::int64_t day, QTime time) const
    {
        const PracticeDay prices = DayOf(day);
        const int length = PracticeOpen().secsTo(PracticeClose());
        const int second = std::clamp(PracticeOpen().secsTo(time), 0, length);
        if (second == 0 || second == length)
            return second == 0 ? prices.Open : prices.Close;
        const double part = double(second) / length;
        const double wave =
            0.7 * Between(HalfHours, day, second, 1800) + 0.2 * Between(Minutes, day, second, 60);
        const double open = prices.Open.ToDouble();
        const double price =
            open + (prices.Close.ToDouble() - open) * part +
            wave * 4 * part * (1 - part) * (prices.High.ToDouble() - prices.Low.ToDouble());
        return std::clamp(ToCents(price), prices.Low, prices.High);
    }

private:
    /// From 0 to 1.
    double Portion(std::uint64_t channel, std::int64_t index) const
    {
        const std::uint64_t hash = Mix(Mix(m_seed + channel) ^ static_cast<std::uint64_t>(index));
        return double(hash >> 11) / 9007199254740992.0; // 2^53
    }
    /// From -1 to 1.
    double Noise(std::uint64_t channel, std::int64_t index) const
    {
        return 2 * Portion(channel, index) - 1;
    }
    /// Noise within a day that changes every `span` seconds and runs straight between.
    double Between(std::uint64_t channel, std::int64_t day, int second, int span) const
    {
        const std::int64_t at = day * 1000 + second / span;
        const double part = double(second % span) / span;
        return Noise(channel, at) * (1 - part) + Noise(channel, at + 1) * part;
    }

    double Level(std::int64_t day) const
    {
        static constexpr double roots[] = {1, 1.4142135623730951, 2, 2.8284271247461903,
                                           4, 5.656854249492381,  8, 11.313708498984761,
                                           16};
        double sum = 0;
        for (int scale = 0; scale < int(std::size(roots)); ++scale) {
            const std::int64_t span = std::int64_t{1} << scale;
            const std::int64_t at = day >> scale;
            const double part = double(day - at * span) / double(span);
            const std::uint64_t channel = FirstScale + static_cast<std::uint64_t>(scale);
            sum += roots[scale] * (Noise(channel, at) * (1 - part) + Noise(channel, at + 1) * part);
        }
        // Growth is the market's since 2020, and stands still long before and after.
        static const std::int64_t start = WeekdayNumber(QDate(2020, 1, 1));
        const std::int64_t grown =
            std::clamp<std::int64_t>(day - start, -10 * WeekdaysOfYear, 30 * WeekdaysOfYear);
        return m_character.amplitude * sum +
               m_character.yearlyGrowth * double(grown) / WeekdaysOfYear;
    }

    std::uint64_t m_seed = 0;
    Character m_character{};
    double m_base = 0;
};

} // namespace

QDate LatestWeekday(QDate date)
{
    return date.addDays(-std::max(0, date.dayOfWeek() - 5));
}

std::optional<PracticeDay> PracticePricesOf(const QString &symbol, QDate date)
{
    if (!date.isValid() || date.dayOfWeek() > 5)
        return std::nullopt;
    return Walk(symbol).DayOf(WeekdayNumber(date));
}

Currency PracticePriceAt(const QString &symbol, const QDateTime &moment)
{
    if (!moment.isValid())
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("Invalid procedure call or argument"));
    const Walk walk(symbol);
    const QDate day = LatestWeekday(moment.date());
    if (day != moment.date())
        return walk.DayOf(WeekdayNumber(day)).Close;
    if (moment.time() < PracticeOpen())
        return walk.DayOf(WeekdayNumber(day) - 1).Close;
    return walk.PriceAt(WeekdayNumber(day), moment.time());
}
