#include "transactions/profit_loss_book.h"

void ProfitLossBook::Post(const TrackerRow &row, QDate transDate, QTime now)
{
    const std::pair<QString, QDate> key(row.Symbol, transDate);
    const auto found = m_index.constFind(key);
    if (found != m_index.constEnd()) {
        DailyProfitLossRow &day = m_rows[*found];
        day.ProfitLoss = row.ProfitLossToday;
        day.Time = now;
        if (day.ProfitLoss.IsZero())
            m_index.remove(key);
    } else if (!row.ProfitLossToday.IsZero()) {
        m_index.insert(key, m_rows.size());
        m_rows.push_back({0, row.Symbol, row.Name, row.ProfitLossToday, transDate, now});
    }
}

void ProfitLossBook::Write(Connection &gConnAccount) const
{
    WriteGuard guard(gConnAccount);
    Statement insert = gConnAccount.Prepare(
        QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) "
                       "VALUES (?, ?, ?, ?, ?)"));
    for (const DailyProfitLossRow &day : m_rows) {
        if (day.ProfitLoss.IsZero())
            continue;
        insert.BindAll(day.Symbol, day.Name, day.ProfitLoss, day.TransDate, day.Time);
        insert.Step();
        insert.Reset();
    }
    guard.Commit();
}
