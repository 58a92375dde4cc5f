#include "reports/report_run.h"

#include "platform/files.h"
#include "reports/gain_list_report.h"
#include "reports/list_reports.h"
#include "reports/performance_report.h"
#include "reports/tax_reports.h"
#include "store/recent_accounts.h"

#include <QFileInfo>

namespace
{

void WriteSheet(Report &report, ReportWork &work, const ReportChoice &choice)
{
    const Connection &gConnAccount = work.databases.gConnAccount;
    switch (choice.kind) {
    case ReportKind::TransactionHistory:
        return WriteTransactionHistory(report, gConnAccount, choice);
    case ReportKind::ProfitLoss:
        return WriteProfitLoss(report, gConnAccount, choice);
    case ReportKind::HistoricalPriceList:
        return WriteHistoricalPriceList(report, work.databases.gConnHistPrices, choice);
    case ReportKind::Summary:
        return WriteSummary(report, gConnAccount, choice);
    case ReportKind::CostBasis:
        return WriteCostBasis(report, gConnAccount, choice);
    case ReportKind::DailyTracker:
        return WriteDailyTracker(report, work.tracker, work.services.clock.Today());
    case ReportKind::MonthlyPerformance:
    case ReportKind::QuarterlyPerformance:
    case ReportKind::YearlyPerformance:
        return WritePerformance(
            report,
            {ReadPortfolios(work.databases.gRsApplication),
             work.settings.AccountName,
             gConnAccount,
             {work.settings.CurrentFilePath, RecentAccounts(work.services.settingsStore)}},
            choice);
    case ReportKind::SelectedSecurityGain:
    case ReportKind::PortfolioGain:
        return WriteGainList(report, gConnAccount, choice);
    }
    throw RuntimeError(RuntimeError::InvalidArgumentNumber, QStringLiteral("No such report"));
}

/// A name that no earlier report of this run has: that one may still be open.
QString UnsavedPath(const QString &folder)
{
    QString path = folder + QStringLiteral("/Daily Tracker.xls");
    for (int number = 2; Files::FileExists(path); ++number)
        path = folder + QStringLiteral("/Daily Tracker %1.xls").arg(number);
    return path;
}

QString PathOf(const ReportWork &work, const ReportEntry &entry)
{
    const QString fileName = QString::fromUtf8(entry.fileName);
    if (fileName.isEmpty())
        return UnsavedPath(work.unsavedFolder);
    return QFileInfo(work.settings.CurrentFilePath).path() + QLatin1Char('/') + fileName;
}

/// Shows the workbook in the user's spreadsheet program; where there is none, tells where it lies.
void Open(ReportWork &work, const QString &path)
{
    const Services &services = work.services;
    work.ExcelServerFound = services.openDocument && services.openDocument(path);
    if (!work.ExcelServerFound)
        services.dialogs.MsgBox(
            QStringLiteral("No program was found that shows this report. It is in the file\n%1")
                .arg(path),
            Box::Ok + Box::Information, EditorTitle(QStringLiteral("Excel")));
}

} // namespace

bool RunReport(ReportWork &work, const ReportChoice &choice)
{
    const ReportEntry &entry = EntryOf(choice.kind);
    const QString path = PathOf(work, entry);
    work.services.status.Post(QStringLiteral("Working on report...."));
    try {
        Report report(work.services.formats);
        WriteSheet(report, work, choice);
        report.ReportSheet.Save(path);
        Files::RestrictToOwner(path); // it tells what the account tells
    } catch (const RuntimeError &error) {
        work.services.dialogs.MsgBox(
            QStringLiteral("This report could not be written:\n%1\n").arg(path) + ErrorLines(error),
            Box::Ok + Box::Exclamation, EditorTitle(QStringLiteral("Excel")));
        return false;
    }
    Open(work, path);
    return true;
}
