#include "store/setup_choices.h"

#include "base/character_shift.h"
#include "store/control_rows.h"

#include <cstdint>

namespace
{

const QString SetupMoney = QStringLiteral("###,##0.00");
constexpr int FactorStyle = 4;     // Style5: a factor on the amount, not a cost of shares
constexpr int FirstShareStyle = 1; // Style2 to Style4 have share limits
constexpr int LastShareStyle = 3;
const QString ShareLimitAtFirst = QStringLiteral("1000");

bool HasShares(int index)
{
    return index >= FirstShareStyle && index <= LastShareStyle;
}

QString StyleField(int index, const char *figure)
{
    return QStringLiteral("txtStyle%1%2").arg(index + 1).arg(QLatin1String(figure));
}

const char *PerShareName(int index)
{
    return index == FactorStyle ? "FlatCost" : "PerShare";
}

/// Above these amounts a figure is taken for a slip, and asked about.
struct Threshold
{
    Currency Cost;
    Currency PerShare;
};
Threshold ThresholdOf(int index)
{
    static const Threshold thresholds[] = {{Currency("40"), Currency("0.10")},
                                           {Currency("20"), Currency("0.05")},
                                           {Currency("30"), Currency("0.05")},
                                           {Currency("30"), Currency("0.05")},
                                           {Currency("0.1"), Currency("50")}};
    return thresholds[index];
}

bool IsWhole(const QString &text, int lowest)
{
    bool isNumber = false;
    const int number = text.trimmed().toInt(&isNumber);
    return isNumber && number >= lowest && number <= INT16_MAX;
}

/// An amount as its field shows it; what was not touched is as it is stored, with all decimals.
Currency AmountOf(const QString &text, Currency stored, const QString &format,
                  const Formats &formats)
{
    if (text == formats.Format(stored, format))
        return stored;
    return text.trimmed().isEmpty()
               ? Currency()
               : formats.CurrencyFromText(formats.TypedNumber(text).value_or(QString()));
}

Single SharesOf(const QString &text, const Formats &formats)
{
    return text.trimmed().isEmpty()
               ? Single()
               : formats.SingleFromText(formats.TypedNumber(text).value_or(QString()));
}

bool IsAmount(const QString &text, const Formats &formats)
{
    return text.trimmed().isEmpty() ||
           MoneyFromText(text, formats).value_or(Currency("-1")) >= Currency();
}

// --- checks --------------------------------------------------------------------------------------

using Findings = std::vector<SetupFinding>;

/// The checks of the whole screen, in their order. True when one refused.
bool CheckFields(Findings &findings, const SetupChoices &choices, const AccountState &account)
{
    const auto refuse = [&](const char *field, const QString &text) {
        findings.push_back({QString::fromLatin1(field), text});
        return true;
    };
    if (choices.WebUpdateMinutes.trimmed().toInt() <= 0)
        return refuse("txtWebTimeUpdate",
                      QStringLiteral("The current price update interval is invalid!\n"
                                     "The application is not setup for streaming updates."));
    const bool loginChanged =
        choices.LoginPassword != account.LoginPassword || choices.LoginID != account.LoginID;
    if (loginChanged && choices.LoginPassword != choices.VerifyPassword)
        return refuse("txtPassword",
                      QStringLiteral("Passwords do not match, please re-enter and verify"));
    constexpr int ShortestLogoff = 5;
    if (choices.LogoffEnabled && choices.LogoffMinutes.trimmed().toInt() < ShortestLogoff)
        return refuse("txtLogoffMinutes",
                      QStringLiteral("If you select logoff values less than 5 minutes, you may \n"
                                     "not be able to Login again. Reconsider."));
    if (choices.PasswordProtected && (choices.LoginPassword.isEmpty() || choices.LoginID.isEmpty()))
        return refuse(choices.LoginID.isEmpty() ? "txtLoginID" : "txtPassword",
                      QStringLiteral("Please select a signon ID and password"));
    return false;
}

/// Whole numbers, the balance and the password must fit what they are kept in.
bool CheckValues(Findings &findings, const SetupChoices &choices, const Formats &formats)
{
    const struct
    {
        const char *field;
        const QString &text;
        int lowest;
    } numbers[] = {{"txtBackupDays", choices.NotifyDays, 0},
                   {"txtAverageTrans", choices.AverageTrans, 0},
                   // With no months between them a reset would be due again at once, for ever.
                   {"txtResetMonths", choices.ResetMonths, choices.NeverReset ? 0 : 1},
                   {"txtLogoffMinutes", choices.LogoffMinutes, 0},
                   {"txtCompactDays", choices.CompactDays, 0},
                   {"txtHistPriceMonths", choices.HistPriceMonths, 0},
                   // With no years the next compaction would delete everything but today.
                   {"txtKeepPortfolioData", choices.KeepPortfolioData, 1},
                   {"txtWebTimeUpdate", choices.WebUpdateMinutes, 1}};
    for (const auto &number : numbers) {
        if (IsWhole(number.text, number.lowest))
            continue;
        findings.push_back({QString::fromLatin1(number.field),
                            QStringLiteral("Please enter a whole number from %1 to %2.")
                                .arg(number.lowest)
                                .arg(INT16_MAX)});
        return true;
    }
    if (!MoneyFromText(choices.AccountBalance, formats)) {
        findings.push_back({QStringLiteral("txtBalance"),
                            QStringLiteral("Please enter the account balance as a number.")});
        return true;
    }
    try {
        ShiftUp(choices.LoginPassword);
    } catch (const RuntimeError &error) {
        findings.push_back(
            {QStringLiteral("txtPassword"),
             QStringLiteral("This password has a character that cannot be stored, please select "
                            "another one.\nError number %1\nDescription: %2")
                 .arg(error.Number())
                 .arg(error.Description())});
        return true;
    }
    return false;
}

bool CheckStyleTexts(Findings &findings, int index, const StyleChoice &style,
                     const Formats &formats)
{
    const struct
    {
        const char *figure;
        const QString &text;
    } amounts[] = {{"Cost", style.Cost},
                   {PerShareName(index), style.PerShare},
                   {"Shares", style.Shares},
                   {"Shares2", style.Shares2}};
    for (const auto &amount : amounts) {
        if (IsAmount(amount.text, formats))
            continue;
        findings.push_back({StyleField(index, amount.figure),
                            QStringLiteral("Please enter a number that is not negative.")});
        return true;
    }
    return false;
}

bool DiffersFromAccount(int index, const CommissionFigures &figures, const AccountState &account)
{
    return figures.Cost != account.CommissionCost ||
           figures.PerShare != account.CommissionPerShare ||
           (HasShares(index) && figures.Shares != account.CommissionShares);
}

void CheckStyle(Findings &findings, int index, const StyleChoice &style,
                const AccountState &account, const Formats &formats)
{
    if (CheckStyleTexts(findings, index, style, formats))
        return;
    const CommissionFigures figures = FiguresOf(index, style, formats);
    const QString costField = StyleField(index, "Cost");
    if (index == FactorStyle && figures.Cost.IsZero()) {
        findings.push_back(
            {costField, QStringLiteral("A percent number must be entered to select this style.")});
        return;
    }
    if (!DiffersFromAccount(index, figures, account))
        return;
    const Threshold threshold = ThresholdOf(index);
    if (figures.Cost > threshold.Cost)
        findings.push_back({costField,
                            index == FactorStyle
                                ? QStringLiteral("Percent amount seems too high! Is this Ok?")
                                : QStringLiteral("Transaction cost seems excessive, Is this Ok?"),
                            true});
    if (figures.PerShare > threshold.PerShare)
        findings.push_back({StyleField(index, PerShareName(index)),
                            index == FactorStyle
                                ? QStringLiteral("Flat rate seems too high! Is this Ok?")
                                : QStringLiteral("Cost per share seems too high! Is this Ok?"),
                            true});
}

// --- rows ----------------------------------------------------------------------------------------

std::optional<CommissionFigures> StoredFigures(const Connection &gConnAccount, int index)
{
    Statement row = gConnAccount.Prepare(QStringLiteral(
        "SELECT Field01, Field02, Field06, Field07 FROM DescriptiveTable WHERE TableName = ?"));
    row.BindAll(StyleName(index));
    if (!row.Step())
        return std::nullopt;
    return CommissionFigures{row.Money(0), row.Money(1), row.ShareCount(2), row.ShareCount(3)};
}

bool HasBalanceRow(const Connection &gConnAccount)
{
    return gConnAccount
        .Prepare(QStringLiteral("SELECT 1 FROM DescriptiveTable WHERE TableName = 'Balance'"))
        .Step();
}

} // namespace

// --- styles --------------------------------------------------------------------------------------

QString StyleName(int index)
{
    return QStringLiteral("Style%1").arg(index + 1);
}

std::optional<int> StyleIndex(const QString &commissionStyle)
{
    for (int index = 0; index <= FactorStyle; ++index)
        if (commissionStyle == StyleName(index))
            return index;
    return std::nullopt;
}

QString StyleCostFormat(int index)
{
    return index == FactorStyle ? QStringLiteral("###,##0.000") : SetupMoney;
}

StyleChoice ShowStyle(int index, const CommissionFigures &figures, const Formats &formats)
{
    StyleChoice style;
    style.Stored = figures;
    style.Cost = formats.Format(figures.Cost, StyleCostFormat(index));
    style.PerShare = formats.Format(figures.PerShare, SetupMoney);
    if (HasShares(index)) {
        style.Shares = formats.ToText(figures.Shares);
        style.Shares2 = formats.ToText(figures.Shares2);
    }
    return style;
}

CommissionFigures FiguresOf(int index, const StyleChoice &style, const Formats &formats)
{
    CommissionFigures figures;
    figures.Cost = AmountOf(style.Cost, style.Stored.Cost, StyleCostFormat(index), formats);
    figures.PerShare = AmountOf(style.PerShare, style.Stored.PerShare, SetupMoney, formats);
    if (HasShares(index)) {
        figures.Shares = SharesOf(style.Shares, formats);
        figures.Shares2 = SharesOf(style.Shares2, formats);
    }
    return figures;
}

// --- from the state and back ---------------------------------------------------------------------

SetupChoices ChoicesOf(const Settings &settings, const AccountState &account,
                       const Connection &gConnAccount, const Formats &formats)
{
    SetupChoices choices;
    choices.CheckNotify = settings.CheckNotify == 1;
    choices.NotifyDays = QString::number(settings.NotifyDays);
    choices.CheckAverage = settings.CheckAverage == 1;
    choices.AverageTrans = QString::number(settings.AverageTrans);
    choices.DailyTracker = settings.DailyTracker == 1;
    choices.HistoryList = settings.HistoryList == 1;
    choices.DailyProfitLoss = settings.DailyProfitLoss == 1;
    choices.PurchaseList = settings.PurchaseList == 1;
    choices.ChartScreen = settings.ChartScreen == 1;
    choices.BrowserScreen = settings.BrowserScreen == 1;
    choices.HistoricalPriceList = settings.HistoricalPriceList == 1;
    choices.ArgNormal = settings.ArgNormal;
    choices.ArgMaximize = settings.ArgMaximize;
    choices.ArgCascade = settings.ArgCascade;
    choices.ArgHorizontal = settings.ArgHorizontal;
    choices.ArgVertical = settings.ArgVertical;
    choices.ShowTipOfDay = settings.ShowTipOfDay == 1;
    choices.ShowReminderScreen = settings.ShowReminderScreen == 1;

    choices.AccountBalance = formats.Format(account.AccountBalance, SetupMoney);
    choices.NeverReset = settings.NeverReset == 1;
    choices.ResetMonths = QString::number(settings.ResetMonths);
    choices.ResetDate = settings.ResetDate;
    choices.LogoffEnabled = account.LogoffEnabled == 1;
    choices.LogoffMinutes = QString::number(account.LogoffMinutes);
    choices.PasswordProtected = account.PasswordProtected == 1;
    choices.LoginID = account.LoginID;
    choices.LoginPassword = choices.VerifyPassword = account.LoginPassword;

    choices.CheckCompact = settings.CheckCompact == 1;
    choices.CompactDays = QString::number(settings.CompactDays);
    choices.ElapsedDays = formats.ToText(account.ElapsedDays);
    choices.HistPriceMonths = QString::number(settings.HistPriceMonths);
    choices.KeepPortfolioData = QString::number(settings.KeepPortfolioData);

    choices.AccessType = settings.AccessType;
    choices.WebSiteName = account.CurrentWebSiteName;
    choices.WebUpdateMinutes = formats.ToText(account.WebUpdateMinutes);
    choices.PriceUpdate =
        settings.WebPriceUpdate ? PriceUpdateOption::Enabled : PriceUpdateOption::DisabledPerm;

    for (int index = 0; index <= FactorStyle; ++index) {
        std::optional<CommissionFigures> figures = StoredFigures(gConnAccount, index);
        if (account.CommissionStyle == StyleName(index))
            figures = {account.CommissionCost, account.CommissionPerShare, account.CommissionShares,
                       account.CommissionShares2};
        StyleChoice &style = choices.Styles[size_t(index)];
        style = ShowStyle(index, figures.value_or(CommissionFigures()), formats);
        if (!figures && HasShares(index))
            style.Shares = style.Shares2 = ShareLimitAtFirst;
    }
    return choices;
}

void TakeSettings(Settings &settings, const SetupChoices &choices)
{
    settings.CheckNotify = choices.CheckNotify;
    settings.NotifyDays = choices.NotifyDays.toInt();
    settings.CheckAverage = choices.CheckAverage;
    settings.AverageTrans = choices.AverageTrans.toInt();
    settings.DailyTracker = choices.DailyTracker;
    settings.HistoryList = choices.HistoryList;
    settings.DailyProfitLoss = choices.DailyProfitLoss;
    settings.PurchaseList = choices.PurchaseList;
    settings.ChartScreen = choices.ChartScreen;
    settings.BrowserScreen = choices.BrowserScreen;
    settings.HistoricalPriceList = choices.HistoricalPriceList;
    settings.ArgNormal = choices.ArgNormal;
    settings.ArgMaximize = choices.ArgMaximize;
    settings.ArgCascade = choices.ArgCascade;
    settings.ArgHorizontal = choices.ArgHorizontal;
    settings.ArgVertical = choices.ArgVertical;
    settings.ShowTipOfDay = choices.ShowTipOfDay;
    settings.ShowReminderScreen = choices.ShowReminderScreen;
    settings.NeverReset = choices.NeverReset;
    settings.ResetMonths = choices.ResetMonths.toInt();
    settings.ResetDate = choices.ResetDate;
    settings.CheckCompact = choices.CheckCompact;
    settings.CompactDays = choices.CompactDays.toInt();
    settings.HistPriceMonths = choices.HistPriceMonths.toInt();
    settings.KeepPortfolioData = choices.KeepPortfolioData.toInt();
    // Off for now only: the next start brings the prices back.
    settings.WebPriceUpdate = choices.PriceUpdate != PriceUpdateOption::DisabledPerm;
    settings.AccessType = choices.AccessType;
}

void TakeAccount(AccountState &account, const SetupChoices &choices, const Formats &formats)
{
    account.LogoffEnabled = choices.LogoffEnabled;
    account.LogoffMinutes = choices.LogoffMinutes.toInt();
    account.PasswordProtected = choices.PasswordProtected;
    account.LoginID = choices.LoginID;
    account.LoginPassword = choices.LoginPassword;
    if (!choices.WebSiteName.isEmpty())
        account.CurrentWebSiteName = choices.WebSiteName;
    account.WebUpdateMinutes = Integer::FromWide(choices.WebUpdateMinutes.toInt());
    if (const std::optional<int> index = StyleIndex(account.CommissionStyle)) {
        const CommissionFigures figures =
            FiguresOf(*index, choices.Styles[size_t(*index)], formats);
        account.CommissionCost = figures.Cost;
        account.CommissionPerShare = figures.PerShare;
        account.CommissionShares = figures.Shares;
        account.CommissionShares2 = figures.Shares2;
    }
}

// --- what is told --------------------------------------------------------------------------------

std::optional<Currency> MoneyFromText(const QString &text, const Formats &formats)
{
    const std::optional<QString> typed = formats.TypedNumber(text);
    if (!typed)
        return std::nullopt;
    try {
        return formats.CurrencyFromText(*typed);
    } catch (const RuntimeError &) {
        return std::nullopt; // no number, or none that fits
    }
}

std::vector<SetupFinding> CheckSetup(const SetupChoices &choices, const AccountState &account,
                                     const Formats &formats)
{
    Findings findings;
    if (CheckFields(findings, choices, account) || CheckValues(findings, choices, formats))
        return findings;
    if (const std::optional<int> index = StyleIndex(account.CommissionStyle))
        CheckStyle(findings, *index, choices.Styles[size_t(*index)], account, formats);
    return findings;
}

std::optional<SetupFinding> CheckNewAccount(const QString &site, const Settings &settings,
                                            const AccountState &account, QDate today)
{
    if (site.isEmpty())
        return SetupFinding{QStringLiteral("combCurrentWebSite"),
                            QStringLiteral("Please select a website for current price downloads")};
    if (account.AccountBalance.IsZero())
        return SetupFinding{
            QStringLiteral("txtBalance"),
            QStringLiteral("You have not entered the current account balance for this account, \n"
                           "please enter it now.")};
    if (settings.ResetDate <= today && settings.NeverReset == 0)
        return SetupFinding{
            QStringLiteral("dtpResetDate"),
            QStringLiteral("Please select a reset date for 'ToDate' amounts reset. This \n"
                           "date is the length of time you wish to keep the 'ToDate' totals in \n"
                           "the Daily Tracker screen. Also, select the number of month interval \n"
                           "between resets if different than the default value.")};
    if (!StyleIndex(account.CommissionStyle))
        return SetupFinding{
            QStringLiteral("chkStyle1"),
            QStringLiteral("You have not done the commission cost setup or have not \n"
                           "selected a style, please set it now.")};
    return std::nullopt;
}

// --- rows ----------------------------------------------------------------------------------------

void WriteControlRows(Connection &gConnAccount, const AccountState &account, Services &services)
{
    WriteGuard guard(gConnAccount);
    // First of all rows: the name of the style in force is read before the style's own row.
    if (!HasBalanceRow(gConnAccount))
        InsertBalanceRow(gConnAccount, account.AccountBalance, services);
    InsertWebSiteRow(gConnAccount, account, services);
    if (StyleIndex(account.CommissionStyle))
        InsertStyleRow(gConnAccount, account, services);
    UpdateCommissionStyle(gConnAccount, account.CommissionStyle, services);
    InsertSecurityRow(gConnAccount, account, services);
    guard.Commit();
}
