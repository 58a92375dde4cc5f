/// The checks of the settings screen, and how its choices go into state and rows.

#include "store/control_rows.h"
#include "store/setup_choices.h"
#include "support/account_file.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};

class Setup : public testing::Test
{
protected:
    Setup()
    {
        gConnAccount.Open(file.Path());
        settings.ResetDate = QDate(2026, 6, 1);
        account.WebUpdateMinutes = Integer::FromWide(5);
        account.CurrentWebSiteName = "Cobalt";
        choices = ChoicesOf(settings, account, gConnAccount, English);
    }
    /// "field: text" of what stands in the way, "?" before a question.
    std::vector<std::string> Found() const
    {
        std::vector<std::string> found;
        for (const SetupFinding &finding : CheckSetup(choices, account, English))
            found.push_back((finding.IsQuestion ? "?" : "") + finding.Field.toStdString());
        return found;
    }
    std::string Text() const
    {
        return CheckSetup(choices, account, English).at(0).Text.toStdString();
    }
    StyleChoice &Style(int style)
    {
        account.CommissionStyle = StyleName(style - 1);
        return choices.Styles[size_t(style) - 1];
    }
    std::string Row(const char *kind, const char *columns)
    {
        Statement row = gConnAccount.Prepare(
            QStringLiteral("SELECT %1 FROM DescriptiveTable WHERE TableName = ?").arg(columns));
        row.BindAll(QString::fromLatin1(kind));
        return row.Step() ? row.Text(0).toStdString() : "(none)";
    }

    using Fields = std::vector<std::string>;
    AccountFile file;
    TestServices machine;
    Services &services = machine.services;
    Connection gConnAccount;
    Settings settings;
    AccountState account;
    SetupChoices choices;
};

} // namespace

// --- checks of the fields ------------------------------------------------------------------------

TEST_F(Setup, LetsUntouchedChoicesPass)
{
    EXPECT_EQ(Found(), Fields());
}

TEST_F(Setup, RefusesAnEmptyOrZeroUpdateInterval)
{
    for (const char *text : {"", " ", "0", "abc", "-5"}) {
        choices.WebUpdateMinutes = text;
        EXPECT_EQ(Found(), Fields{"txtWebTimeUpdate"}) << text;
    }
    EXPECT_EQ(Text(), "The current price update interval is invalid!\n"
                      "The application is not setup for streaming updates.");
}

TEST_F(Setup, RefusesANewPasswordThatIsNotVerified)
{
    choices.LoginID = "Ann";
    EXPECT_EQ(Found(), Fields());
    choices.LoginPassword = "secret";
    EXPECT_EQ(Found(), Fields{"txtPassword"});
    EXPECT_EQ(Text(), "Passwords do not match, please re-enter and verify");
    choices.VerifyPassword = "Secret";
    EXPECT_EQ(Found(), Fields{"txtPassword"});
    choices.VerifyPassword = "secret";
    EXPECT_EQ(Found(), Fields());
}

TEST_F(Setup, DoesNotAskToVerifyALoginThatStaysAsItIs)
{
    account.LoginPassword = choices.LoginPassword = "secret";
    choices.VerifyPassword = "other";
    EXPECT_EQ(Found(), Fields());
    choices.LoginID = "Ann";
    EXPECT_EQ(Found(), Fields{"txtPassword"});
}

TEST_F(Setup, RefusesALogoffOf4MinutesAndTakes5)
{
    choices.LogoffMinutes = "4";
    EXPECT_EQ(Found(), Fields());
    choices.LogoffEnabled = true;
    EXPECT_EQ(Found(), Fields{"txtLogoffMinutes"});
    EXPECT_EQ(Text(), "If you select logoff values less than 5 minutes, you may \n"
                      "not be able to Login again. Reconsider.");
    choices.LogoffMinutes = "5";
    EXPECT_EQ(Found(), Fields());
}

TEST_F(Setup, RefusesToProtectWithoutLoginOrPassword)
{
    choices.PasswordProtected = true;
    EXPECT_EQ(Found(), Fields{"txtLoginID"});
    EXPECT_EQ(Text(), "Please select a signon ID and password");
    choices.LoginID = "Ann";
    EXPECT_EQ(Found(), Fields{"txtPassword"});
    choices.LoginPassword = choices.VerifyPassword = "x";
    EXPECT_EQ(Found(), Fields());
}

TEST_F(Setup, StopsAtTheFirstOfSeveralErrors)
{
    choices.PasswordProtected = choices.LogoffEnabled = true;
    choices.LogoffMinutes = "1";
    choices.LoginPassword = "x";
    choices.WebUpdateMinutes = "0";
    EXPECT_EQ(Found(), Fields{"txtWebTimeUpdate"});
    choices.WebUpdateMinutes = "5";
    EXPECT_EQ(Found(), Fields{"txtPassword"});
    choices.VerifyPassword = "x";
    EXPECT_EQ(Found(), Fields{"txtLogoffMinutes"});
    choices.LogoffMinutes = "15";
    EXPECT_EQ(Found(), Fields{"txtLoginID"});
}

TEST_F(Setup, RefusesNumbersThatDoNotFit)
{
    choices.NotifyDays = "32768";
    EXPECT_EQ(Found(), Fields{"txtBackupDays"});
    EXPECT_EQ(Text(), "Please enter a whole number from 0 to 32767.");
    choices.NotifyDays = "";
    EXPECT_EQ(Found(), Fields{"txtBackupDays"});
    choices.NotifyDays = "0";
    choices.HistPriceMonths = "0";
    EXPECT_EQ(Found(), Fields());
    choices.KeepPortfolioData = "0";
    EXPECT_EQ(Found(), Fields{"txtKeepPortfolioData"});
}

TEST_F(Setup, RefusesZeroMonthsBetweenResetsOnlyWhenThereAreResets)
{
    choices.ResetMonths = "0";
    EXPECT_EQ(Found(), Fields());
    choices.NeverReset = false;
    EXPECT_EQ(Found(), Fields{"txtResetMonths"});
}

TEST_F(Setup, RefusesABalanceThatIsNoAmount)
{
    for (const char *text : {"", "abc", "1e30"}) {
        choices.AccountBalance = text;
        EXPECT_EQ(Found(), Fields{"txtBalance"}) << text;
    }
    choices.AccountBalance = "-1,000.25";
    EXPECT_EQ(Found(), Fields());
}

TEST_F(Setup, RefusesAPasswordThatCannotBeShifted)
{
    choices.LoginPassword = choices.VerifyPassword = QString(QChar(0xFE));
    EXPECT_EQ(Found(), Fields{"txtPassword"});
    EXPECT_NE(Text().find("Error number 5"), std::string::npos);
}

// --- checks of the styles ------------------------------------------------------------------------

TEST_F(Setup, AsksAboutAFigureAboveItsThresholdAndNotAtIt)
{
    const struct
    {
        int style;
        const char *cost, *costAbove, *perShare, *perShareAbove, *costText, *perShareText;
    } rows[] = {{1, "40", "40.01", "0.10", "0.11", "Transaction cost seems excessive, Is this Ok?",
                 "Cost per share seems too high! Is this Ok?"},
                {2, "20", "20.01", "0.05", "0.06", "Transaction cost seems excessive, Is this Ok?",
                 "Cost per share seems too high! Is this Ok?"},
                {3, "30", "30.01", "0.05", "0.0501",
                 "Transaction cost seems excessive, Is this Ok?",
                 "Cost per share seems too high! Is this Ok?"},
                {4, "30", "30.01", "0.05", "0.06", "Transaction cost seems excessive, Is this Ok?",
                 "Cost per share seems too high! Is this Ok?"},
                {5, "0.1", "0.101", "50", "50.01", "Percent amount seems too high! Is this Ok?",
                 "Flat rate seems too high! Is this Ok?"}};
    for (const auto &row : rows) {
        StyleChoice &style = Style(row.style);
        style.Cost = row.cost;
        style.PerShare = row.perShare;
        EXPECT_EQ(Found(), Fields()) << row.style;
        style.Cost = row.costAbove;
        style.PerShare = row.perShareAbove;
        const std::vector<SetupFinding> found = CheckSetup(choices, account, English);
        ASSERT_EQ(found.size(), 2u) << row.style;
        const std::string name = "txtStyle" + std::to_string(row.style);
        EXPECT_EQ(found[0].Field.toStdString(), name + "Cost");
        EXPECT_EQ(found[0].Text, row.costText);
        EXPECT_EQ(found[1].Field.toStdString(), name + (row.style == 5 ? "FlatCost" : "PerShare"));
        EXPECT_EQ(found[1].Text, row.perShareText);
        EXPECT_TRUE(found[0].IsQuestion && found[1].IsQuestion);
    }
}

TEST_F(Setup, DoesNotAskAgainAboutFiguresThatStayAsTheyAre)
{
    Style(2).Cost = "25";
    EXPECT_EQ(Found(), Fields{"?txtStyle2Cost"});
    TakeAccount(account, choices, English);
    EXPECT_EQ(Found(), Fields());
    Style(2).Shares = "500";
    EXPECT_EQ(Found(), Fields{"?txtStyle2Cost"});
}

TEST_F(Setup, NeedsAPercentForStyle5)
{
    for (const char *text : {"", "0", "0.000"}) {
        Style(5).Cost = text;
        EXPECT_EQ(Found(), Fields{"txtStyle5Cost"}) << text;
    }
    EXPECT_EQ(Text(), "A percent number must be entered to select this style.");
    Style(5).Cost = "0.002";
    EXPECT_EQ(Found(), Fields());
}

TEST_F(Setup, LetsStyle1PassWithoutAnyCommission)
{
    Style(1).Cost = "";
    Style(1).PerShare = "0";
    EXPECT_EQ(Found(), Fields());
}

TEST_F(Setup, RefusesFiguresOfAStyleThatAreNoNumbers)
{
    Style(3).Shares2 = "many";
    EXPECT_EQ(Found(), Fields{"txtStyle3Shares2"});
    Style(3).Cost = "-1";
    EXPECT_EQ(Found(), Fields{"txtStyle3Cost"});
}

TEST_F(Setup, ChecksNothingOfStylesThatAreNotInForce)
{
    choices.Styles[4].Cost = "abc";
    EXPECT_EQ(Found(), Fields());
}

// --- what is shown and stored --------------------------------------------------------------------

TEST_F(Setup, Shows1000SharesUntilAStyleIsSaved)
{
    EXPECT_EQ(choices.Styles[1].Shares, "1000");
    EXPECT_EQ(choices.Styles[3].Shares2, "1000");
    Style(2).Shares = "250";
    TakeAccount(account, choices, English);
    WriteControlRows(gConnAccount, account, services);
    Style(1);
    choices = ChoicesOf(settings, account, gConnAccount, English);
    EXPECT_EQ(choices.Styles[1].Shares, "250");
    EXPECT_EQ(choices.Styles[1].Shares2, "1000");
    EXPECT_EQ(choices.Styles[2].Shares, "1000");
}

TEST_F(Setup, ShowsThreeDecimalsOfAFactorAndKeepsTheFourth)
{
    Style(5).Cost = "0.0025";
    TakeAccount(account, choices, English);
    EXPECT_EQ(account.CommissionCost, Currency("0.0025"));
    choices = ChoicesOf(settings, account, gConnAccount, English);
    EXPECT_EQ(choices.Styles[4].Cost, "0.003");
    EXPECT_EQ(choices.Styles[4].PerShare, "0.00");
    TakeAccount(account, choices, English);
    EXPECT_EQ(account.CommissionCost, Currency("0.0025"));
}

TEST_F(Setup, WritesTheBalanceRowBeforeTheStyleThatItNames)
{
    account.AccountBalance = Currency("1000");
    Style(3).Cost = "14.95";
    TakeAccount(account, choices, English);
    WriteControlRows(gConnAccount, account, services);

    AccountState read;
    LoadDescriptiveTable(gConnAccount, read, QDate(2026, 3, 2));
    EXPECT_EQ(read.AccountBalance, Currency("1000"));
    EXPECT_EQ(read.CommissionStyle, "Style3");
    EXPECT_EQ(read.CommissionCost, Currency("14.95"));
    EXPECT_EQ(read.CommissionShares, Single::FromFloat(1000));
    EXPECT_EQ(read.CurrentWebSiteName, "Cobalt");
    EXPECT_EQ(read.WebUpdateMinutes.Value(), 5);
    EXPECT_EQ(read.LogoffMinutes, 15);
}

TEST_F(Setup, LeavesAnotherBalanceThanTheStoredOneToItsOwnField)
{
    InsertBalanceRow(gConnAccount, Currency("1000"), services);
    account.AccountBalance = Currency("1234"); // moved by the market since
    WriteControlRows(gConnAccount, account, services);
    EXPECT_EQ(Row("Balance", "Field01"), "10000000");
}

TEST_F(Setup, WritesNothingWhenThePasswordCannotBeStored)
{
    account.LoginPassword = QString(QChar(0xFE));
    EXPECT_THROW(WriteControlRows(gConnAccount, account, services), RuntimeError);
    EXPECT_EQ(Row("WebSite", "Field08"), "(none)");
}

TEST_F(Setup, KeepsTheSiteOfTheAccountWhenNoneIsChosen)
{
    choices.WebSiteName.clear();
    TakeAccount(account, choices, English);
    EXPECT_EQ(account.CurrentWebSiteName, "Cobalt");
}

TEST_F(Setup, SwitchesPricesOffForGoodOnlyWhenAskedTo)
{
    for (const PriceUpdateOption option :
         {PriceUpdateOption::Enabled, PriceUpdateOption::DisabledTemp,
          PriceUpdateOption::DisabledPerm}) {
        choices.PriceUpdate = option;
        TakeSettings(settings, choices);
        EXPECT_EQ(settings.WebPriceUpdate, option != PriceUpdateOption::DisabledPerm);
    }
}

// --- a new account -------------------------------------------------------------------------------

TEST_F(Setup, NamesWhatANewAccountLacksInItsOrder)
{
    const QDate today(2026, 3, 2);
    settings.NeverReset = 0;
    settings.ResetDate = today;
    const auto missing = [&](const char *site) {
        const auto finding = CheckNewAccount(site, settings, account, today);
        return finding ? finding->Field.toStdString() : "";
    };
    EXPECT_EQ(missing(""), "combCurrentWebSite");
    EXPECT_EQ(missing("Cobalt"), "txtBalance");
    account.AccountBalance = Currency("-0.0001");
    EXPECT_EQ(missing("Cobalt"), "dtpResetDate");
    settings.ResetDate = today.addDays(1);
    EXPECT_EQ(missing("Cobalt"), "chkStyle1");
    settings.ResetDate = today;
    settings.NeverReset = 1;
    EXPECT_EQ(missing("Cobalt"), "chkStyle1");
    account.CommissionStyle = "Style5";
    EXPECT_EQ(missing("Cobalt"), "");
}
