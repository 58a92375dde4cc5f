#include "datamaker/sample_account.h"

#include "datamaker/unattended.h"
#include "marketdata/practice_walk.h"
#include "platform/simulated_clock.h"
#include "store/control_rows.h"
#include "tracking/daily_balances.h"
#include "tracking/recompute.h"
#include "tracking/sort_order.h"
#include "transactions/commission.h"
#include "transactions/posting.h"
#include "transactions/undo.h"

#include <algorithm>

namespace
{

/// A changed action would post another trade than the plan's.
class PlanFiller : public EntryFiller
{
public:
    void Focus(EntryField) override {}
    void SelectAction(Action action) override
    {
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("The position asks for another action: ") +
                               ActionText(action));
    }
};

class SampleAccount
{
public:
    SampleAccount(const QString &path, const SamplePlan &plan, QDate today)
        : m_plan(plan), m_today(today),
          m_settingsStore(path + QStringLiteral(".ini")) // never written to
    {
        m_gConnAccount.Open(path);
        m_gConnUndo.Open(path);
        // The file gets its name only when it is finished: no need to sync the disk at every
        // commit.
        m_gConnAccount.ExecuteScript(QStringLiteral("PRAGMA synchronous=OFF"));
        m_gConnUndo.ExecuteScript(QStringLiteral("PRAGMA synchronous=OFF"));
    }

    void Run(int siteMinutes)
    {
        size_t next = 0;
        const auto dayOf = [&](size_t i) {
            return WeekdaysBefore(m_today, m_plan.Transactions[i].DaysBack);
        };
        const QDate first = m_plan.Transactions.empty() ? LatestWeekday(m_today) : dayOf(0);
        MoveTo(first, QTime(8, 0));
        WriteControlRows(siteMinutes);
        m_rows.Open(m_gConnAccount, InitialGridOrder());
        m_lots.Open(m_gConnUndo);

        for (QDate day = first; day <= m_today; day = day.addDays(1)) {
            if (day.dayOfWeek() > 5)
                continue;
            OpenDay(day);
            for (; next < m_plan.Transactions.size() && dayOf(next) == day; ++next)
                Post(m_plan.Transactions[next]);
            CommitUndoTransaction(m_work);
            ValueDay(day);
        }
        if (m_account.TrackerDay != m_today)
            OpenDay(m_today);
        m_gConnAccount.Execute(
            QStringLiteral("UPDATE DescriptiveTable SET Field05 = ? WHERE TableName = 'Balance'"),
            m_today);
        LoadDescriptiveTable(m_gConnAccount, m_account, m_today); // stamps the version
    }

private:
    void MoveTo(QDate day, QTime time) { m_clock.Set(QDateTime(day, time, Qt::UTC)); }

    void WriteControlRows(int siteMinutes)
    {
        InsertBalanceRow(m_gConnAccount, m_plan.Balance, m_services);
        m_account.CommissionStyle = m_plan.CommissionStyle;
        m_account.CommissionCost = m_plan.CommissionCost;
        m_account.CommissionPerShare = m_plan.CommissionPerShare;
        InsertStyleRow(m_gConnAccount, m_account, m_services);
        UpdateCommissionStyle(m_gConnAccount, m_plan.CommissionStyle, m_services);
        m_account.WebUpdateMinutes = Integer::FromWide(siteMinutes);
        m_account.CurrentWebSiteName = m_plan.QuoteSite;
        InsertWebSiteRow(m_gConnAccount, m_account, m_services);
        InsertSecurityRow(m_gConnAccount, m_account, m_services);
        LoadDescriptiveTable(m_gConnAccount, m_account, m_clock.Today());
    }

    void OpenDay(QDate day)
    {
        MoveTo(day, QTime(8, 30));
        RecomputeRows(m_recompute, true);
        UpdateTrackerDay(m_gConnAccount, m_account, day);
        for (const SampleSecurity &security : m_plan.Securities)
            if (StartsOn(security, day))
                m_rows.AddNew(security.Symbol, security.Name, day, m_clock.TimeOfDay());
        m_rows.Requery();
    }

    /// A security enters the portfolio with its first trade, one without any at the beginning.
    bool StartsOn(const SampleSecurity &security, QDate day)
    {
        if (m_rows.Find(security.Symbol))
            return false;
        const auto trade = std::find_if(
            m_plan.Transactions.begin(), m_plan.Transactions.end(),
            [&](const SampleTransaction &other) { return other.Symbol == security.Symbol; });
        return trade == m_plan.Transactions.end() ||
               WeekdaysBefore(m_today, trade->DaysBack) <= day;
    }

    void Post(const SampleTransaction &transaction)
    {
        const QDate day = WeekdaysBefore(m_today, transaction.DaysBack);
        MoveTo(day, transaction.Time);
        TransactionEntry entry;
        entry.action = transaction.Kind;
        entry.TransDate = day;
        entry.NumberOfShares = transaction.Count;
        if (transaction.Kind == Action::Split) {
            entry.NumberOfShares = m_formats.ToText(transaction.NewShares);
            entry.PurchasePrice = m_formats.ToText(transaction.OldShares);
        }
        if (!IsCashAction(transaction.Kind))
            FillSecurity(entry, transaction);

        PlanFiller filler;
        const PostingOutcome outcome = PostTransaction(m_work, entry, filler);
        if (outcome == PostingOutcome::Rejected)
            throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                               QStringLiteral("Sample portfolio: %1 %2 was rejected")
                                   .arg(ActionText(transaction.Kind), transaction.Symbol));
        FinishPosting(m_work, outcome);
    }

    void FillSecurity(TransactionEntry &entry, const SampleTransaction &transaction)
    {
        const SampleSecurity &security = *std::find_if(
            m_plan.Securities.begin(), m_plan.Securities.end(),
            [&](const SampleSecurity &other) { return other.Symbol == transaction.Symbol; });
        entry.Symbol = security.Symbol;
        entry.Name = security.Name;
        m_entry.CurrentSecurityType = security.SecurityType;
        m_entry.NoCommission = security.SecurityType == QLatin1String("Mutual Fund") ||
                               transaction.Kind == Action::Split ||
                               transaction.Kind == Action::DividendReinvestment;
        m_entry.Commission = Currency();
        if (transaction.Kind == Action::Split)
            return;
        const Currency price = PriceNow(security.Symbol);
        const Single shares = m_formats.SingleFromText(entry.NumberOfShares);
        entry.PurchasePrice = m_formats.ToText(price);
        if (!m_entry.NoCommission)
            m_entry.Commission = ComputeCommission(
                m_account, shares, Currency::FromDouble(shares.ToDouble() * price.ToDouble()));
    }

    /// The practice market's price at the time of the clock, as it was before later splits.
    Currency PriceNow(const QString &symbol) const
    {
        qint64 units = PracticePriceAt(symbol, m_clock.Now()).Units();
        for (const SampleTransaction &split : m_plan.Transactions)
            if (split.Kind == Action::Split && split.Symbol == symbol &&
                QDateTime(WeekdaysBefore(m_today, split.DaysBack), split.Time, Qt::UTC) >
                    m_clock.Now())
                units = units * split.NewShares / split.OldShares;
        return Currency::FromUnits(units);
    }

    void ValueDay(QDate day)
    {
        const QTime time = ValuationTime(day, m_today);
        if (m_clock.TimeOfDay() > time)
            throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                               QStringLiteral("Sample portfolio: a transaction later than %1")
                                   .arg(time.toString(Qt::ISODate)));
        MoveTo(day, time);
        for (m_rows.MoveFirst(); !m_rows.AtEnd(); m_rows.MoveNext()) {
            TrackerRow &row = m_rows.Edit();
            row.CurrPrice = PriceNow(row.Symbol);
            row.Time = time;
        }
        RecomputeRows(m_recompute, false);
        UpdateDailyBalance(m_gConnAccount, m_account, day, m_services, EditorTitle());
        UpdateDailySecurityBalance(m_gConnAccount, m_rows, day, m_services, EditorTitle());
    }

    const SamplePlan &m_plan;
    const QDate m_today;
    const Formats m_formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    SimulatedClock m_clock{QDateTime(QDate(2000, 1, 3), QTime(8, 0), Qt::UTC)};
    UnattendedDialogs m_dialogs;
    SilentStatus m_status;
    CommandStates m_commands;
    UnattendedLifetime m_lifetime;
    SettingsStore m_settingsStore;
    Services m_services{.clock = m_clock,
                        .dialogs = m_dialogs,
                        .status = m_status,
                        .commands = m_commands,
                        .lifetime = m_lifetime,
                        .settingsStore = m_settingsStore,
                        .formats = m_formats,
                        .appPath = QString()};

    Connection m_gConnAccount;
    Connection m_gConnUndo;
    TrackerRecordset m_rows;
    PurchaseLots m_lots;
    PortfolioTotals m_totals;
    AccountState m_account;
    Settings m_settings;
    UndoState m_undo;
    EntryState m_entry;
    PostingWork m_work{m_rows, m_lots,  m_totals,       m_account,
                       m_undo, m_entry, m_gConnAccount, m_services};
    RecomputeWork m_recompute{m_rows,     m_totals,     m_account,
                              m_settings, m_lots,       m_undo.UndoLast.Balance,
                              m_services, EditorTitle()};
};

} // namespace

void PostSampleAccount(const QString &path, const SamplePlan &plan, int siteMinutes, QDate today)
{
    SampleAccount(path, plan, today).Run(siteMinutes);
}
