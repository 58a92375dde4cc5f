#include "shell/command_table.h"

#include <QHash>

namespace
{

using enum CommandKind;
using enum CommandVerb;

// clang-format off
constexpr Command Table[] = {
    {"mnuFile", "&File", "", Menu},
    {"mnuFLNew", "&New Account...", "mnuFile", Entry, Own, "", "Ctrl+N"},
    {"mnuFLOpenExisting", "&Open Existing...", "mnuFile", Entry, Own, "", "Ctrl+O"},
    {"mnuFLSaveAs", "&Save As...", "mnuFile", Entry, Own},
    {"mnuFline1", "", "mnuFile", Separator},
    {"mnuFLScreenPrint", "Screen &Print...", "mnuFile", Menu},
    {"mnuFLSCScreen", "&Screen", "mnuFLScreenPrint", Entry, Own},
    {"mnuFLSCForm", "&Form", "mnuFLScreenPrint", Entry, Own, "", "Ctrl+P"},
    {"mnuFLSCClient", "&Client", "mnuFLScreenPrint", Entry, Own},
    {"mnuFLSCActive", "&Active", "mnuFLScreenPrint", Entry, Own},
    {"mnuFline2", "", "mnuFile", Separator},
    {"mnuFLDatabaseOptions", "&Database Options...", "mnuFile", Menu},
    {"mnuFLBackup", "&Backup", "mnuFLDatabaseOptions", Entry, Own, "frmBackupRestore"},
    {"mnuFLRestore", "&Restore from Backup", "mnuFLDatabaseOptions", Entry, Own, "frmBackupRestore"},
    {"mnuFLCompactDBA", "&Compact Database", "mnuFile", Entry, Own},
    {"mnuFline3", "", "mnuFile", Separator},
    {"mnuFLUserSetup", "S&ettings...", "mnuFile", Entry, ModalScreen, "frmUserSetup"},
    {"mnuFline4", "", "mnuFile", Separator},
    {"mnuFLExit", "E&xit", "mnuFile", Entry, Own, "", "Ctrl+Q"},

    {"mnuView", "&View", "", Menu},
    {"mnuVWDailyTracker", "Daily &Tracker", "mnuView", Entry, Toggle, "frmDailyTracker"},
    {"mnuVWHistory", "Transaction &History", "mnuView", Entry, Toggle, "frmHistoryList"},
    {"mnuVWDailyProfitLoss", "&Daily Profit and Loss", "mnuView", Entry, Toggle, "frmDailyProfitLoss"},
    {"mnuVWPurchaseList", "&Purchase Price List", "mnuView", Entry, Toggle, "frmPurchaseList"},
    {"mnuVWHistoricalPriceList", "H&istorical Price List", "mnuView", Entry, Toggle, "frmHistoricalPriceList"},
    {"mnuVWQuoteServerUpdate", "&Quote Server Update", "mnuView", Entry, Toggle, "frmQuoteServerUpdate"},

    {"mnuExcel", "&Excel", "", Menu},
    {"mnuEXDetailHistory", "Transaction &History", "mnuExcel", Entry, Report, "frmDateSelect"},
    {"mnuEXProfitLoss", "&Daily Profit and Loss", "mnuExcel", Entry, Report, "frmDateSelect"},
    {"mnuEXRealizeGainLoss", "&Realized Gain/Loss...", "mnuExcel", Menu},
    {"mnuEXCostBasis", "&Cost Basis Information from Sales", "mnuEXRealizeGainLoss", Entry, Report, "frmDateSelect"},
    {"mnuEXSummary", "&Summary (IRS Schedule D-1)", "mnuEXRealizeGainLoss", Entry, Report, "frmDateSelect"},
    {"mnuEXDailyBalanceList", "&Amount Gain List...", "mnuExcel", Menu},
    {"mnuEXDBSelectedSec", "&Selected Security", "mnuEXDailyBalanceList", Entry, Report, "frmDateSelect"},
    {"mnuEXDBPortfolio", "&Portfolio", "mnuEXDailyBalanceList", Entry, Report, "frmDateSelect"},
    {"mnuEXDailyTracker", "Daily &Tracker", "mnuExcel", Entry, Report, "frmDateSelect"},
    {"mnuEXPerformance", "&Performnace...", "mnuExcel", Menu},
    {"mnuEXPERFMonthly", "&Monthly", "mnuEXPerformance", Entry, Report, "frmPortfolioSelect"},
    {"mnuEXPERFQuarterly", "&Quarterly", "mnuEXPerformance", Entry, Report, "frmPortfolioSelect"},
    {"mnuEXPERFYearly", "&Yearly", "mnuEXPerformance", Entry, Report, "frmPortfolioSelect"},
    {"mnuEXHistoricalPriceList", "H&istorical Price List", "mnuExcel", Entry, Report, "frmDateSelect"},

    {"mnuCharts", "&Charts", "", Menu},
    {"mnuChartPositions", "&Positions", "mnuCharts", Entry, Chart},
    {"mnuChartAssetAllocation", "&Asset Allocation", "mnuCharts", Entry, Chart},
    {"mnuChartDailyProfiLoss", "&Daily Profit and Loss...", "mnuCharts", Menu},
    {"mnuChartSelectedSecPL", "&Selected Security", "mnuChartDailyProfiLoss", Entry, Chart},
    {"mnuChartPortfolioPL", "&Portfolio", "mnuChartDailyProfiLoss", Entry, Chart},
    {"mnuChartPerformance", "P&erformance...", "mnuCharts", Menu},
    {"mnuChartSelectedSecPerf", "&Selected Security", "mnuChartPerformance", Entry, Chart},
    {"mnuChartPortfolioPerf", "&Portfolio", "mnuChartPerformance", Entry, Chart},
    {"mnuChartHistoricalPrices", "&Historical Prices", "mnuCharts", Entry, Chart},

    // Labels as the pages are known; where an initial is taken there is no mnemonic.
    {"mnuInternet", "&Internet", "", Menu},
    {"mnuIntSmartMoney", "&Smart Money", "mnuInternet", Entry, Link},
    {"mnuIntYahooFinance", "&Yahoo Finance", "mnuInternet", Menu},
    {"mnuIntYahooFrontPage", "&Front Page", "mnuIntYahooFinance", Entry, Link},
    {"mnuIntYahooMarketOverview", "&Market Overview", "mnuIntYahooFinance", Entry, Link},
    {"mnuIntETF", "&Exchange Traded Funds", "mnuInternet", Entry, Link},
    {"mnuIntCBSMarketWatch", "&CBS Market Watch", "mnuInternet", Menu},
    {"mnuIntCBSFrontPage", "&Front Page", "mnuIntCBSMarketWatch", Entry, Link},
    {"mnuIntCBSMarketOverview", "&Market Overview", "mnuIntCBSMarketWatch", Entry, Link},
    {"mnuIntCBSMarketMonitor", "Market Monitor", "mnuIntCBSMarketWatch", Entry, Link},
    {"mnuIntLipper", "&Lipper", "mnuInternet", Entry, Link},
    {"mnuIntMFEA", "Mutual Fund Investor's Center", "mnuInternet", Entry, Link},
    {"mnuIntMorningstar", "&MORNINGSTAR", "mnuInternet", Menu},
    {"mnuIntMorningstarFrontPage", "&Front Page", "mnuIntMorningstar", Entry, Link},
    {"mnuIntMorningstarMarkets", "&Market Overview", "mnuIntMorningstar", Entry, Link},
    {"mnuIntMorningstarTools", "&Tools", "mnuIntMorningstar", Entry, Link},
    {"mnuIntReuters", "&REUTERS", "mnuInternet", Menu},
    {"mnuIntReutersFrontPage", "&Front Page", "mnuIntReuters", Entry, Link},
    {"mnuIntReutersFinanceNews", "Finance News", "mnuIntReuters", Entry, Link},
    {"mnuIntMSN", "MSN", "mnuInternet", Menu},
    {"mnuIntMSNFrontPage", "&Front Page", "mnuIntMSN", Entry, Link},
    {"mnuIntMSNMarketSummary", "&Market Summary", "mnuIntMSN", Entry, Link},

    {"mnuWindow", "&Window", "", Menu},
    {"mnuWinCascade", "&Cascade", "mnuWindow", Entry, Arrange, "0"},
    {"mnuWinTileVertical", "Tile &Vertically", "mnuWindow", Entry, Arrange, "2"},
    {"mnuWinHorizontally", "Tile &Horizontally", "mnuWindow", Entry, Arrange, "1"},

    {"mnuHelp", "&Help", "", Menu},
    {"mnuHelpTopics", "&Help Topics", "mnuHelp", Entry, Own, "", "F1"},
    {"mnuHelpAbout", "&About...", "mnuHelp", Entry, ModalScreen, "frmAbout"},
    {"mnuQuillonHome", "&Quillon Home Page", "mnuHelp", Entry, Link},

    {"popDailyTracker", "Daily Tracker Pop Menu", "", Popup},
    {"popDTNew", "New...", "popDailyTracker", Entry, ToScreen, "frmDailyTracker"},
    {"popDTEdit", "Edit...", "popDailyTracker", Entry, ToScreen, "frmDailyTracker"},
    {"popDTDeleteRow", "Delete", "popDailyTracker", Entry, ToScreen, "frmDailyTracker"},
    {"popDTClear", "Clear", "popDailyTracker", Entry, ToScreen, "frmDailyTracker"},
    {"popDTUndoLast", "Undo Last", "popDailyTracker", Entry, Forward, "UndoLast"},
    {"popDTline1", "", "popDailyTracker", Separator},
    {"popDTTransactionUpdate", "Transaction Update", "popDailyTracker", Entry, ToScreen, "frmDailyTracker"},
    {"popDTSplitMode", "Split Mode", "popDailyTracker", Entry, ToScreen, "frmDailyTracker"},
    {"popDTPrintExcel", "Print to Excel", "popDailyTracker", Entry, Forward, "mnuEXDailyTracker"},
    {"popDTline2", "", "popDailyTracker", Separator},
    {"popDTHistoricalPrices", "Views", "popDailyTracker", Menu},
    {"popDTViewHistoricalPrice", "Historical Price", "popDTHistoricalPrices", Entry, Own},
    {"popDTCharts", "Charts", "popDailyTracker", Menu},
    {"popDTChartIntraday", "Intra-day", "popDTCharts", Entry, Own},
    {"popDTChartMapOfMarket", "Map of the Market", "popDTCharts", Entry, Own},
    {"popDTChartHistoricalPrice", "Historical Price", "popDTCharts", Entry, Forward, "mnuChartHistoricalPrices"},
    {"popDTChartPerformance", "Performance...", "popDTCharts", Menu},
    {"popDTChartPerSelectedSec", "Selected Security", "popDTChartPerformance", Entry, Forward, "mnuChartSelectedSecPerf"},
    {"popDTChartPerPortfolio", "Portfolio", "popDTChartPerformance", Entry, Forward, "mnuChartPortfolioPerf"},
    {"popDTChartDailyProfiLoss", "Daily Profit and Loss", "popDTCharts", Menu},
    {"popDTChartPLSelectedSec", "Selected Security", "popDTChartDailyProfiLoss", Entry, Forward, "mnuChartSelectedSecPL"},
    {"popDTChartPLPortfolio", "Portfolio", "popDTChartDailyProfiLoss", Entry, Forward, "mnuChartPortfolioPL"},
    {"popDTPreference", "Preference...", "popDailyTracker", Menu},
    {"popDTDailyGridColor", "Detail Grid Color", "popDTPreference", Entry, ToScreen, "frmDailyTracker"},
    {"popDTSummaryGridColor", "Summary Grid Color", "popDTPreference", Entry, ToScreen, "frmDailyTracker"},

    {"popHistoryList", "History List Pop Menu", "", Popup},
    {"popHLDelete", "Delete", "popHistoryList", Entry, ToScreen, "frmHistoryList"},
    {"popHLSplitMode", "Split Mode", "popHistoryList", Entry, ToScreen, "frmHistoryList"},
    {"popHLPrintExcel", "Print to Excel", "popHistoryList", Entry, Forward, "mnuEXDetailHistory"},
    {"popHLPreference", "Preference", "popHistoryList", Menu},
    {"popHLHistoryGridColor", "Grid Color", "popHLPreference", Entry, ToScreen, "frmHistoryList"},

    {"popHistoricalPriceList", "Historical Price List Pop Menu", "", Popup},
    {"popHPLSplitMode", "Split Mode", "popHistoricalPriceList", Entry, ToScreen, "frmHistoricalPriceList"},
    {"popHPLPrintExcel", "Print to Excel", "popHistoricalPriceList", Entry, Forward, "mnuEXHistoricalPriceList"},
    {"popHPLChart", "Chart", "popHistoricalPriceList", Entry, Forward, "mnuChartHistoricalPrices"},
    {"popHPLPreference", "Preference", "popHistoricalPriceList", Menu},
    {"popHPLHistoricalGridColor", "Grid Color", "popHPLPreference", Entry, ToScreen, "frmHistoricalPriceList"},

    {"popDailyProfitLoss", "Profit and Loss Pop Menu", "", Popup},
    {"popPLDelete", "Delete", "popDailyProfitLoss", Entry, ToScreen, "frmDailyProfitLoss"},
    {"popPLPrintExcel", "Print to Excel", "popDailyProfitLoss", Entry, Forward, "mnuEXProfitLoss"},
    {"popPLChart", "Chart", "popDailyProfitLoss", Menu},
    {"popPLChartPLSelectedSec", "Selected Security", "popPLChart", Entry, Forward, "mnuChartSelectedSecPL"},
    {"popPLChartPLPortfolio", "Portfolio", "popPLChart", Entry, Forward, "mnuChartPortfolioPL"},
    {"popPLPreference", "Preference...", "popDailyProfitLoss", Menu},
    {"popPLProfitLossColor", "Grid Color", "popPLPreference", Entry, ToScreen, "frmDailyProfitLoss"},

    {"popPPPurchasePrice", "Purchase Price List Menu", "", Popup},
    {"popPPDelete", "Delete", "popPPPurchasePrice", Entry, ToScreen, "frmPurchaseList"},
    {"popPPPreference", "Preference...", "popPPPurchasePrice", Menu},
    {"popPPPriceGridColor", "Grid Color", "popPPPreference", Entry, ToScreen, "frmPurchaseList"},

    {"popChartScreen", "Chart Menu", "", Popup},
    {"popCHSavePicture", "Save picture…", "popChartScreen", Entry, ToScreen, "frmChartScreen"},
    {"popCHCopyPicture", "Copy picture", "popChartScreen", Entry, ToScreen, "frmChartScreen"},
    {"popCHline1", "", "popChartScreen", Separator},
    {"popCHSeriesColor", "Series color…", "popChartScreen", Entry, ToScreen, "frmChartScreen"},
    {"popCHAreaColor", "Area color…", "popChartScreen", Entry, ToScreen, "frmChartScreen"},

    {"popQSQuoteServer", "Quote Server Menu", "", Popup},
    {"popQSPreference", "Preference...", "popQSQuoteServer", Menu},
    {"popQSQuoteGridColor", "Quote Server Grid Color", "popQSPreference", Entry, ToScreen, "frmQuoteServerUpdate"},

    {"Connect", "Connect", "", Button, Own},
    {"New", "New", "", Button, Forward, "mnuFLNew"},
    {"Open", "Open", "", Button, Forward, "mnuFLOpenExisting"},
    {"SaveAs", "Save As", "", Button, Forward, "mnuFLSaveAs"},
    {"UndoLast", "Undo Last", "", Button, Own, "", "Ctrl+Z"},
    {"Setup", "Setup", "", Button, Forward, "mnuFLUserSetup"},
    {"Wizard", "Wizard", "", Button, Own},
    {"SplitScreen", "Split Screen", "", Button, Own},
};
// clang-format on

QHash<QString, const Command *> IndexByName()
{
    QHash<QString, const Command *> index;
    for (const Command &command : Table)
        index.insert(command.Name(), &command);
    return index;
}

} // namespace

std::span<const Command> CommandTable()
{
    return Table;
}

const Command *FindCommand(const QString &name)
{
    static const QHash<QString, const Command *> index = IndexByName();
    return index.value(name, nullptr);
}

void RegisterCommands(CommandStates &states)
{
    for (const Command &command : Table) {
        states.SetCaption(command.Name(), command.Caption());
        // Nothing was posted yet that could be undone.
        states.SetEnabled(command.Name(), qstrcmp(command.name, "UndoLast") != 0);
        states.SetChecked(command.Name(), false);
    }
}

bool CommandUsable(const CommandStates &states, const QString &name)
{
    for (const Command *command = FindCommand(name); command != nullptr;
         command = FindCommand(command->Parent())) {
        if (!states.Enabled(command->Name()))
            return false;
    }
    return true;
}

QString PlainCaption(const QString &caption)
{
    QString plain = caption;
    plain.remove(QLatin1Char('&'));
    while (plain.endsWith(QLatin1Char('.')))
        plain.chop(1);
    return plain;
}
