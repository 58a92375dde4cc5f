#include "tracking/recompute.h"

#include "base/put_back.h"
#include "store/pending_changes.h"
#include "tracking/valuation.h"

#include <algorithm>

namespace
{

void ValueRow(PortfolioTotals &totals, TrackerRow &row)
{
    if (!row.Shares.IsZero()) {
        row.InvestedValue = MarketValue(row, row.InvestedValue);
        ComputeNewBasis(totals, row);
    } else {
        row.InvestedValue = Currency();
        row.Basis = Currency();
        row.PerCentGainToday = Single();
    }
    row.ActualProfitLoss = row.ProfitLossToDate + row.ProfitLossToday;
    ComputeTotals(totals, row);
}

void ResetToDateAmounts(RecomputeWork &work)
{
    Services &services = work.services;
    const Answer answer = services.dialogs.MsgBox(
        QStringLiteral("'ToDate' amounts will be reset according to setup \n"
                       "instructions.  Continue?"),
        Box::YesNo + Box::Question + Box::SecondDefault, work.title);
    if (answer != Answer::Yes) {
        services.dialogs.MsgBox(QStringLiteral("Reset cancelled. Check 'User Setups' from the file "
                                               "menu if you need to change this option."),
                                Box::Information, work.title);
        return;
    }
    for (; !work.rows.AtEnd(); work.rows.MoveNext()) {
        if (!work.rows.Unreadable(work.rows.Position()).isEmpty())
            continue; // a write would put zeros in place of what is stored
        TrackerRow &row = work.rows.Edit();
        row.ProfitLossToDate = row.TransCostToDate = row.InvestedToDate = Currency();
        row.NumberTransToDate = Integer();
        row.TransDate = services.clock.Today();
        row.Time = services.clock.TimeOfDay();
    }
    work.rows.UpdateBatch();
    work.rows.MoveFirst();
    services.dialogs.MsgBox(
        QStringLiteral("All 'ToDate' amounts have been reset. Check 'User Setups' from the file "
                       "menu if you need to change this option."),
        Box::Information, work.title);
}

/// Gains and the balance that holds them belong together.
void WriteRows(TrackerRecordset &rows, Currency balance, Currency before)
{
    if (balance == before) {
        rows.UpdateBatch();
        return;
    }
    WriteGuard guard(rows.File());
    rows.UpdateBatch();
    SavePendingBalance(rows.File(), balance);
    guard.Commit();
}

} // namespace

void RecomputeRows(RecomputeWork &work, bool loading)
{
    PortfolioTotals &totals = work.totals;
    TrackerRecordset &rows = work.rows;
    PutBack before(rows, totals, work.account, work.undoBalance);
    InitializeTotals(totals);
    totals.BasisTotal = Single();
    totals.TransCost = Currency();

    const bool newDay = work.account.TrackerDay != work.services.clock.Today();
    for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext()) {
        if (loading && work.lots.IsOpen() &&
            CheckPurchasePriceList(rows.Current(), work.lots, work.services, work.title) &&
            work.services.showHelp)
            work.services.showHelp(QStringLiteral("ErrorMessageHelp.html"));
        OrLeaveOut(totals, rows, [&](TrackerRow &row) {
            if (newDay)
                RollDayForward(row);
            ValueRow(totals, row);
        });
    }
    const Currency balance = work.account.AccountBalance;
    if (loading)
        totals.PriorBasisTotal = totals.BasisTotal;
    else
        ComputePortfolioBalance(work.account, totals, work.undoBalance);
    WriteRows(rows, work.account.AccountBalance, balance);
    rows.MoveFirst();
    before.Keep();
}

void TellRowsLeftOut(RecomputeWork &work)
{
    const std::vector<int> rows = work.rows.TakeNewlyLeftOut();
    if (rows.empty())
        return;
    constexpr size_t MostNamed = 20;
    const Formats &formats = work.services.formats;
    QString lines;
    for (size_t i = 0; i < std::min(rows.size(), MostNamed); ++i) {
        const TrackerRow &row = work.rows.At(rows[i]);
        const QString &unreadable = work.rows.Unreadable(rows[i]);
        lines += QLatin1Char('\n') + row.Symbol + QStringLiteral(": ") +
                 (unreadable.isEmpty()
                      ? QStringLiteral("Price %1, Shares %2")
                            .arg(formats.Format(row.CurrPrice, u"#,##0.0000"),
                                 formats.Format(row.Shares, u"#,##0.0000"))
                      : QStringLiteral("no usable number in the column %1").arg(unreadable));
    }
    if (rows.size() > MostNamed)
        lines += QStringLiteral("\nand %1 more").arg(rows.size() - MostNamed);
    work.services.dialogs.MsgBox(
        QStringLiteral("These rows of the Daily Tracker cannot be valued, and are left out of the "
                       "totals:") +
            lines +
            QStringLiteral("\nThe next good price brings a row back. 'Clear' and 'Delete' of the "
                           "popup menu remove its amounts."),
        Box::Exclamation, work.title);
}

void TestToDateReset(RecomputeWork &work)
{
    Settings &settings = work.settings;
    if (work.services.clock.Today() < settings.ResetDate)
        return;
    if (settings.NeverReset == 0)
        ResetToDateAmounts(work);
    settings.ResetDate = settings.ResetDate.addMonths(settings.ResetMonths);
}

namespace
{

bool LotsMatch(const TrackerRow &row, const PurchaseLots &lots)
{
    try {
        return lots.SharesOf(row.Symbol) == row.Shares;
    } catch (const RuntimeError &) { // too many shares to be counted
        return false;
    }
}

} // namespace

bool CheckPurchasePriceList(const TrackerRow &row, const PurchaseLots &lots, Services &services,
                            const QString &title)
{
    if (LotsMatch(row, lots))
        return false;
    return services.dialogs.MsgBox(
               QStringLiteral("Message number: 100\n"
                              "ATTENTION: There is an imbalance in the total number \n"
                              "of shares in the Price History and the Daily Tracker information \n"
                              "for symbol %1.\n"
                              "To fix this problem you must delete invalid information in the \n"
                              "Purchase Price List screen.\n\n"
                              "If you need further help click 'Yes'")
                   .arg(row.Symbol),
               Box::YesNo + Box::Stop + Box::SecondDefault, title) == Answer::Yes;
}

void UpdateTrackerDay(Connection &gConnAccount, AccountState &account, QDate today)
{
    if (account.TrackerDay == today)
        return;
    account.TrackerDay = today;
    gConnAccount.Execute(
        QStringLiteral("UPDATE DescriptiveTable SET Field04 = ? WHERE TableName = 'Balance'"),
        today);
}
