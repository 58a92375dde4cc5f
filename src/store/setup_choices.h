#pragma once

/// What the settings screen holds: the choices of the user as they stand in its fields, the checks
/// that come before they are applied, and how they go into the settings and the account's state.
///
///     SetupChoices choices = ChoicesOf(settings, account, connection, formats);
///     choices.LogoffEnabled = true;
///     choices.LogoffMinutes = "4";
///     CheckSetup(choices, account, formats)     one finding, at "txtLogoffMinutes"
///
/// Numbers are the texts of their fields. An amount that is shown rounded and was not touched keeps
/// all of its decimals.

#include "base/formats.h"
#include "platform/services.h"
#include "store/account_state.h"
#include "store/connection.h"
#include "store/settings.h"

#include <array>
#include <optional>
#include <vector>

/// The four figures of a commission style.
struct CommissionFigures
{
    Currency Cost;     ///< of Style5 the factor on the amount
    Currency PerShare; ///< of Style5 the flat cost
    Single Shares;
    Single Shares2;
};

/// A commission style on the screen.
struct StyleChoice
{
    QString Cost;
    QString PerShare;
    QString Shares; ///< empty for Style1 and Style5
    QString Shares2;
    CommissionFigures Stored; ///< as the account has them; zero before they are saved
};

enum class PriceUpdateOption
{
    Enabled,
    DisabledTemp, ///< off until the program, or the Daily Tracker, is opened again
    DisabledPerm
};

struct SetupChoices
{
    bool CheckNotify = false;
    QString NotifyDays;
    bool CheckAverage = false;
    QString AverageTrans;

    bool DailyTracker = false;
    bool HistoryList = false;
    bool DailyProfitLoss = false;
    bool PurchaseList = false;
    bool ChartScreen = false;
    bool BrowserScreen = false;
    bool HistoricalPriceList = false;
    bool ArgNormal = false;
    bool ArgMaximize = false;
    bool ArgCascade = false;
    bool ArgHorizontal = false;
    bool ArgVertical = false;
    bool ShowTipOfDay = false;
    bool ShowReminderScreen = false;

    QString AccountBalance;
    bool NeverReset = false;
    QString ResetMonths;
    QDate ResetDate;

    bool LogoffEnabled = false;
    QString LogoffMinutes;
    bool PasswordProtected = false;
    QString LoginID;
    QString LoginPassword;
    QString VerifyPassword;

    bool CheckCompact = false;
    QString CompactDays;
    QString ElapsedDays; ///< shown only
    QString HistPriceMonths;
    QString KeepPortfolioData;

    int AccessType = 2;  ///< 1 default, 2 proxy, 3 direct
    QString WebSiteName; ///< empty: none chosen
    QString WebUpdateMinutes;
    PriceUpdateOption PriceUpdate = PriceUpdateOption::Enabled;

    std::array<StyleChoice, 5> Styles; ///< Style1 to Style5
};

/// Something to correct, or to confirm, before the choices can be applied.
struct SetupFinding
{
    QString Field; ///< the control that it is about
    QString Text;
    bool IsQuestion = false;
};

/// "Style1" gives 0; nothing for a name that is no style ("n/a").
std::optional<int> StyleIndex(const QString &commissionStyle);
QString StyleName(int index);
/// How amounts of a style are shown: the factor of Style5 with three decimals, all else with two.
QString StyleCostFormat(int index);

/// The choices as settings and account have them. The figures of the style in force come from
/// `account`, those of styles used earlier from their rows; a style never saved shows 1000 shares.
SetupChoices ChoicesOf(const Settings &settings, const AccountState &account,
                       const Connection &gConnAccount, const Formats &formats);
/// The style's fields for these figures.
StyleChoice ShowStyle(int index, const CommissionFigures &figures, const Formats &formats);

/// An amount as it is typed; nothing for a text that is none, or does not fit.
std::optional<Currency> MoneyFromText(const QString &text, const Formats &formats);

/// What stands in the way of the choices, in the order in which it is to be told: any number of
/// questions, and at most one refusal, which is the last. The style in force is
/// account.CommissionStyle; it is questioned when its figures differ from the account's.
std::vector<SetupFinding> CheckSetup(const SetupChoices &choices, const AccountState &account,
                                     const Formats &formats);
/// What keeps a new account from being left: `site` is the name on the screen.
std::optional<SetupFinding> CheckNewAccount(const QString &site, const Settings &settings,
                                            const AccountState &account, QDate today);

/// Copies the choices; only for choices that CheckSetup lets pass, up to questions.
void TakeSettings(Settings &settings, const SetupChoices &choices);
/// The figures of the style in force, login, logoff, site and minutes; not the balance, which is
/// written as soon as its field is left. Without a chosen site the account keeps its own.
void TakeAccount(AccountState &account, const SetupChoices &choices, const Formats &formats);

/// The figures that a style's fields hold; throws RuntimeError 13 for a text that is no number.
CommissionFigures FiguresOf(int index, const StyleChoice &style, const Formats &formats);

/// Writes the control rows of the account, Balance first when it is not there yet, in one piece.
/// Throws RuntimeError 5, with nothing written, when the password cannot be stored.
void WriteControlRows(Connection &gConnAccount, const AccountState &account, Services &services);
