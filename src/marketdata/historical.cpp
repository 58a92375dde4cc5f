// Each symbol is looked at until nothing of its gap is left: older rows first, then newer ones. The
// repeat counts of the looks (historical_ranges.h) end this for a service that has no more to give.
// They run apart from each other, so that with a page that is the same whatever is asked for they could
// fall due in turns for ever; a symbol that has got no older and no newer day in two full rounds of both
// counts is therefore left alone.
//
// After a split the symbol is loaded anew, as far back as it is stored: all pages are gathered first,
// and replace what is stored when they reach back as far, or over the months to keep. Until then the
// rows stay, and so does the mark.

#include "marketdata/historical.h"

#include "marketdata/historical_page.h"
#include "marketdata/historical_ranges.h"
#include "marketdata/historical_rows.h"

#include <algorithm>
#include <map>

namespace
{

/// The service cannot be reached: no symbol will get its prices now.
struct OutOfReach
{};
/// The service asks not to be asked for a while.
struct ToldToWait
{};

/// A connection that was cut says nothing of the next one.
bool IsOutOfReach(int responseCode)
{
    return responseCode >= Inet::TimedOut && responseCode != Inet::Cancelled &&
           responseCode != Inet::ConnectionReset;
}

class Download
{
public:
    explicit Download(HistoricalWork &work)
        : m_work(work), m_today(work.services.clock.Today()),
          m_toReload(PricesToReload(work.gConnHistPrices))
    {}

    void Run(const PortfolioArray &entries)
    {
        const int last = int(entries.size());
        m_work.screens.ShowProgress(QStringLiteral("Historical price update..."), 1,
                                    std::max(2, last)); // a bar needs a range
        for (int index = 1; index <= last; ++index) {
            m_work.screens.MoveProgress(index);
            if (!UpdateSymbol(entries[size_t(index - 1)].Symbol))
                return; // the price update was switched off
        }
        m_work.state.HistoricalRetryNeeded = false;
        m_work.screens.UnloadProgress();
        m_work.screens.RefreshHistoricalPriceList();
    }

private:
    bool Stopped()
    {
        m_work.services.clock.Yield();
        return m_work.StopRequested;
    }

    /// False, as from the routines below, when the price update was switched off.
    bool UpdateSymbol(const QString &symbolField)
    {
        m_request.symbol = symbolField;
        m_symbol = symbolField.trimmed();
        m_oldest = m_newest = QDate();
        m_ranges = HistoricalRanges();
        if (m_toReload.contains(m_symbol) && !ReloadAfterSplit())
            return false;
        constexpr int LooksOfTwoRounds = 8;
        int looksWithoutGain = 0;
        do {
            if (Stopped())
                return false;
            const QDate oldest = m_oldest;
            const QDate newest = m_newest;
            m_ranges.RangeStart = m_ranges.RangeEnd = m_work.account.LastPriceUpdate;
            if (GetOlderPriceRange(m_ranges, m_work.gConnHistPrices, m_symbol, m_today,
                                   m_work.settings.HistPriceMonths) &&
                !UpdateHistoricalPrices())
                return false;
            if (GetNewerPriceRange(m_ranges, m_work.gConnHistPrices, m_symbol, m_today,
                                   m_work.state.LatestPriceDate) &&
                !UpdateHistoricalPrices())
                return false;
            const bool hasGained = m_oldest != oldest || m_newest != newest;
            looksWithoutGain = hasGained ? 0 : looksWithoutGain + 1;
        } while ((m_ranges.MoreOlderRows || m_ranges.MoreNewerRows) &&
                 looksWithoutGain < LooksOfTwoRounds);
        return true;
    }

    /// Stores what the service has from RangeStart to RangeEnd.
    bool UpdateHistoricalPrices()
    {
        std::vector<HistPrice> rows;
        bool goesOn = false;
        try {
            goesOn = FetchRows(m_ranges.RangeStart, m_ranges.RangeEnd, rows);
        } catch (...) {
            Store(rows);
            throw;
        }
        Store(rows);
        if (goesOn && rows.empty())
            m_ranges.MoreOlderRows = m_ranges.MoreNewerRows = false;
        return goesOn;
    }

    /// Adds the rows of one page; also those before an error, or before the update was switched off.
    bool FetchRows(QDate from, QDate to, std::vector<HistPrice> &rows)
    {
        m_request.RangeStart = from;
        m_request.RangeEnd = to;
        HistoricalPage page(Fetch(), m_symbol, m_today);
        while (page.FindCell()) {
            if (Stopped())
                return false;
            // A day to come would be the newest one for ever, and no later one asked for.
            if (page.ReadRow() && page.Row().PriceDate >= from &&
                page.Row().PriceDate <= std::min(to, m_today))
                rows.push_back(page.Row());
        }
        return !m_work.StopRequested;
    }

    QString Fetch()
    {
        const QString text = m_work.source.FetchTable(m_work.inet, m_request);
        if (m_work.StopRequested)
            return QString();
        if (m_work.state.Waits.Note(m_work.inet, m_work.host, m_work.services.clock.Now()))
            throw ToldToWait();
        if (text.isEmpty() && IsOutOfReach(m_work.inet.ResponseCode()))
            throw OutOfReach();
        return text;
    }

    /// In one piece, behind the yields of the walk: no other writer meets an open transaction.
    void Store(const std::vector<HistPrice> &rows)
    {
        if (!m_work.gConnHistPrices.IsOpen()) // the program was left meanwhile
            return;
        InsertHistoricalPrices(m_work.gConnHistPrices, rows, m_work.services);
        for (const HistPrice &row : rows) {
            if (!m_oldest.isValid() || row.PriceDate < m_oldest)
                m_oldest = row.PriceDate;
            if (!m_newest.isValid() || row.PriceDate > m_newest)
                m_newest = row.PriceDate;
        }
    }

    bool ReloadAfterSplit()
    {
        Status(QStringLiteral("Loading the daily prices of %1 anew after its split..."));
        constexpr int DaysOfGrace = 7; // a wanted first day may be a holiday
        const QDate wanted = m_today.addMonths(-m_work.settings.HistPriceMonths).addDays(-3);
        const QDate stored = OldestPriceDate(m_work.gConnHistPrices, m_symbol);
        std::map<QDate, HistPrice> days;
        if (!GatherDays(stored.isValid() ? std::min(stored, wanted) : wanted, days))
            return false;
        const bool reachesBack =
            !stored.isValid() ||
            (!days.empty() && days.begin()->first <= std::max(stored, wanted).addDays(DaysOfGrace));
        if (!reachesBack) {
            Status(QStringLiteral("The daily prices of %1 before its split are kept: no new ones "
                                  "came. The next update of daily prices tries again."));
            return true;
        }
        std::vector<HistPrice> rows;
        for (const auto &[date, row] : days)
            rows.push_back(row);
        ReplaceHistoricalPrices(m_work.gConnHistPrices, m_symbol, rows, m_work.services);
        Status(QStringLiteral("The daily prices of %1 were loaded anew after its split"));
        return true;
    }

    /// Two months at a time from today back to `first`, or as far as the service goes.
    bool GatherDays(QDate first, std::map<QDate, HistPrice> &days)
    {
        for (QDate end = m_today;;) {
            const QDate start = std::max(first, end.addMonths(-2).addDays(-3));
            std::vector<HistPrice> rows;
            if (!FetchRows(start, end, rows))
                return false;
            for (const HistPrice &row : rows)
                days.insert_or_assign(row.PriceDate, row);
            if (start == first || days.empty() || days.begin()->first >= end)
                return true;
            end = days.begin()->first;
        }
    }

    void Status(const QString &text) { m_work.services.status.Post(text.arg(m_symbol)); }

    HistoricalWork &m_work;
    const QDate m_today;
    const QStringList m_toReload;
    HistoricalRanges m_ranges;
    HistoricalRequest m_request;
    QString m_symbol; ///< without its blanks
    QDate m_oldest;   ///< of the days stored for the symbol by this download; invalid: none yet
    QDate m_newest;
};

} // namespace

void GetHistoricalPrices(HistoricalWork &work, const PortfolioArray &entries)
{
    try {
        Download(work).Run(entries);
    } catch (const OutOfReach &) {
        work.account.HistoryRestsOn = work.services.clock.Today();
        work.state.HistoricalRetryNeeded = false;
        work.screens.UnloadProgress();
        work.screens.RefreshHistoricalPriceList();
        work.services.dialogs.MsgBox(
            QStringLiteral("The daily prices could not be loaded: the service cannot be reached.\n"
                           "%1: %2\n\nThe next download of daily prices is tomorrow. Current "
                           "prices are updated as usual.")
                .arg(work.inet.ResponseCode())
                .arg(work.inet.ResponseInfo()),
            Box::Exclamation, work.title);
    } catch (const ToldToWait &) {
        work.state.HistoricalRetryNeeded = true;
        work.screens.UnloadProgress();
        work.screens.RefreshHistoricalPriceList();
    } catch (const RuntimeError &error) {
        if (error.Number() != Inet::TimeOutError)
            throw;
        work.services.dialogs.MsgBox(
            QStringLiteral("A time out has occured. The cause is usually a slow response from \n"
                           "the server. The application will automatically retry this operation "
                           "again \nin the next price update cycle."),
            Box::Information, work.title);
        work.state.HistoricalRetryNeeded = true;
        work.screens.UnloadProgress();
    }
}
