/// What OK and Undo Last do with the fields, and the commission field on its way there.

#include "entry_screen.h"

#include "marketdata/historical_rows.h"
#include "program/list_refresh.h"

#include <QClipboard>

using Commission = EntryScreen;

namespace
{

/// A flat cost, and a cost a share above 100 shares.
void FlatAndPerShare(AccountState &account)
{
    account.CommissionStyle = "Style3";
    account.CommissionCost = Currency("9.95");
    account.CommissionPerShare = Currency("0.01");
    account.CommissionShares = Single::FromDouble(100);
}

} // namespace

// --- commission ---------------------------------------------------------------------------------

TEST_F(Commission, IsProposedWhenThePriceIsEntered)
{
    FlatAndPerShare(State().account);
    Open("ACME");
    Type("txtNumberOfShares", "300");
    EXPECT_EQ(Text("txtCommCost"), "");
    WidgetActions::Focus(Edit("txtPurchasePrice"));
    EXPECT_EQ(Text("txtCommCost"), "11.95"); // 9.95 + 200 * 0.01
    EXPECT_EQ(Entry().Commission, Currency("11.95"));
}

TEST_F(Commission, OnTheAmountIsZeroUntilThereIsAPrice)
{
    AccountState &account = State().account;
    account.CommissionStyle = "Style5";
    account.CommissionCost = Currency("0.002");
    account.CommissionPerShare = Currency("5");
    Open("ACME");
    Type("txtNumberOfShares", "100");
    Type("txtPurchasePrice", "35");
    EXPECT_EQ(Text("txtCommCost"), "0.00");
    Press("Tab");
    EXPECT_EQ(Text("txtCommCost"), "12.00"); // 3500 * 0.002 + 5
    EXPECT_EQ(Edit("txtCommCost")->selectedText(), "12.00");
    EXPECT_EQ(Status(), "Commission amount may be changed if needed.");
}

TEST_F(Commission, OfASellCountsThePositiveShares)
{
    FlatAndPerShare(State().account);
    Open("ACME");
    Choose("Sell");
    WidgetActions::Focus(Edit("txtPurchasePrice"));
    EXPECT_EQ(Text("txtCommCost"), "9.95");
}

TEST_F(Commission, CanBeTypedWithoutAStyle)
{
    Open("ACME");
    Type("txtNumberOfShares", "10");
    Type("txtPurchasePrice", "12");
    Press("Tab");
    EXPECT_EQ(Text("txtCommCost"), "0.00");
    Type("txtCommCost", "7.5");
    EXPECT_EQ(Entry().Commission, Currency("7.5"));
    Press("Tab");
    EXPECT_EQ(Text("txtCommCost"), "7.50");
    Click("cmdOK");
    EXPECT_EQ(Stored("SELECT TransactionCost FROM History"), "-75000");
}

TEST_F(Commission, TypedLastStandsUntilItsFieldsAreEnteredAgain)
{
    FlatAndPerShare(State().account);
    Open("ACME");
    Type("txtNumberOfShares", "10");
    Type("txtPurchasePrice", "12");
    Type("txtCommCost", "3");
    WidgetActions::Focus(Date());
    EXPECT_EQ(Text("txtCommCost"), "3.00");
    WidgetActions::Focus(Edit("txtPurchasePrice"));
    EXPECT_EQ(Text("txtCommCost"), "9.95");
}

TEST_F(Commission, IsZeroForWhatIsNoNumber)
{
    Open("ACME");
    Type("txtCommCost", "5");
    QApplication::clipboard()->setText("abc");
    Press("Ctrl+A");
    Press("Ctrl+V");
    EXPECT_EQ(Entry().Commission, Currency());
    EXPECT_EQ(Text("txtCommCost"), "0");
    Press("Delete");
    EXPECT_EQ(Text("txtCommCost"), "0");
    QApplication::clipboard()->setText("99999999999999999999");
    Press("Ctrl+A");
    Press("Ctrl+V");
    EXPECT_EQ(Text("txtCommCost"), "0");
    Press("Tab");
    EXPECT_EQ(Text("txtCommCost"), "0.00");
    EXPECT_EQ(Boxes(), QStringList());
}

TEST_F(Commission, CanBeginWithItsDecimalPoint)
{
    Open("ACME");
    Type("txtCommCost", ".50");
    EXPECT_EQ(Text("txtCommCost"), ".50");
    EXPECT_EQ(Entry().Commission, Currency("0.5"));
    Type("txtCommCost", ".");
    EXPECT_EQ(Entry().Commission, Currency());
    Press("Tab");
    EXPECT_EQ(Text("txtCommCost"), "0");
}

TEST_F(Commission, IsThePrintedZeroWhenTheEmptyFieldIsLeft)
{
    Open("ACME");
    Entry().Commission = Currency("5");
    WidgetActions::Focus(Edit("txtCommCost"));
    WidgetActions::Focus(Date());
    EXPECT_EQ(Text("txtCommCost"), "0");
    EXPECT_EQ(Entry().Commission, Currency());
}

TEST_F(Commission, OfTheLastEntryIsChargedWhenItsFieldsWereNotEntered)
{
    Open("ACME");
    Entry().Commission = Currency("4");
    Choose("Buy");
    Type("txtNumberOfShares", "10");
    Edit("txtPurchasePrice")->setText("10");
    Click("cmdOK");
    EXPECT_EQ(Stored("SELECT TransactionCost FROM History"), "-40000");
    EXPECT_EQ(Entry().Commission, Currency("4"));
}

TEST_F(Commission, OfAMutualFundIsNone)
{
    FlatAndPerShare(State().account);
    Entry().Commission = Currency("4");
    Open("FUND");
    Post("Buy", "10", "21");
    EXPECT_EQ(Stored("SELECT TransactionCost FROM History"), "0");
    EXPECT_EQ(Boxes(), QStringList());
}

TEST_F(Commission, IsNotProposedForACountThatIsNoNumber)
{
    FlatAndPerShare(State().account);
    Open("ACME");
    Edit("txtNumberOfShares")->setText("abc"); // pasted
    WidgetActions::Focus(Edit("txtPurchasePrice"));
    EXPECT_EQ(Text("txtCommCost"), "");
    EXPECT_EQ(Boxes(), QStringList());
}

// --- OK -----------------------------------------------------------------------------------------

TEST_F(EntryScreen, PostsABuyAndIsReadyForTheNextEntry)
{
    Open("ACME");
    Post("Buy", "50", "12 1/2");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(Row("ACME").Shares, Single::FromDouble(150));
    EXPECT_EQ(Stored("SELECT Description || '|' || Shares || '|' || Price FROM History"),
              "Bought|50.0|125000");
    EXPECT_EQ(Text("txtNumberOfShares") + Text("txtPurchasePrice") + Text("txtCommCost"), "");
    EXPECT_EQ(Text("txtSymbol"), "ACME");
    EXPECT_EQ(Chosen(), "Buy");
    EXPECT_TRUE(Button("cmdUndoLast")->isEnabled());
    EXPECT_TRUE(State().services.commands.Enabled("UndoLast"));
    EXPECT_TRUE(State().services.commands.Enabled("popDTUndoLast"));
    EXPECT_FALSE(Entry().PostingInProgress);
    EXPECT_FALSE(QGuiApplication::overrideCursor());

    Type("txtNumberOfShares", "1");
    Type("txtPurchasePrice", "12");
    Click("cmdOK");
    EXPECT_EQ(HistoryRows(), 2);
}

TEST_F(EntryScreen, PostsOnEnterAndByItsKeyWithThePriceChecked)
{
    Open("ACME");
    for (const char *key : {"Return", "Enter", "Alt+O"}) {
        Type("txtNumberOfShares", "1");
        Type("txtPurchasePrice", "1234.56");
        Answer("greater than 500", Answer::Yes);
        Answer("over 50% greater", Answer::Yes);
        Press(key);
        EXPECT_EQ(Stored("SELECT Price FROM History ORDER BY ID DESC LIMIT 1"), "12345601") << key;
    }
    EXPECT_EQ(HistoryRows(), 3);
}

TEST_F(EntryScreen, ShowsAWrongPriceOnceHoweverOKIsPressed)
{
    Open("ACME");
    Type("txtNumberOfShares", "10");
    for (const char *way : {"Return", "Alt+O", "mouse", "Return"}) {
        Type("txtPurchasePrice", "12 3/0");
        if (QString(way) == "mouse")
            Click("cmdOK");
        else
            Press(way);
        EXPECT_EQ(Boxes(), QStringList("Please provide a valid stock price!")) << way;
        EXPECT_EQ(Focused(), "txtPurchasePrice") << way;
    }
    EXPECT_EQ(HistoryRows(), 0);
}

TEST_F(EntryScreen, KeepsARejectedEntryAndGoesToTheFieldToCorrect)
{
    Open("ACME");
    Choose("Buy");
    Click("cmdOK");
    EXPECT_EQ(Boxes(), QStringList("Please enter number of shares purchased or sold"));
    EXPECT_EQ(Focused(), "txtNumberOfShares");
    EXPECT_EQ(Status(), "Correct errors found!");

    Type("txtNumberOfShares", "10");
    Click("cmdOK");
    EXPECT_EQ(Boxes(), QStringList("Price not entered!"));
    EXPECT_EQ(Focused(), "txtPurchasePrice");
    EXPECT_EQ(Text("txtNumberOfShares"), "10");
    EXPECT_FALSE(QGuiApplication::overrideCursor());
    EXPECT_EQ(HistoryRows(), 0);
}

TEST_F(EntryScreen, GoesBackToAPriceThatWasNotMeant)
{
    Open("O'NEIL");
    Type("txtNumberOfShares", "10");
    Type("txtPurchasePrice", "500");
    Answer("Purchase price is greater than 500! Is this OK?", Answer::No);
    Click("cmdOK");
    EXPECT_EQ(Focused(), "txtPurchasePrice");
    EXPECT_EQ(Text("txtPurchasePrice"), "500.00000");
    EXPECT_EQ(HistoryRows(), 0);
}

TEST_F(EntryScreen, GoesToTheDateThatLiesAhead)
{
    Open("ACME");
    Type("txtNumberOfShares", "10");
    Type("txtPurchasePrice", "10");
    WidgetActions::PickDate(Date(), QDate(2026, 3, 3));
    Click("cmdOK");
    EXPECT_EQ(Boxes(), QStringList("Transaction date can not be greater than today's date!"));
    EXPECT_EQ(Focused(), "dtpTransDate");
}

TEST_F(EntryScreen, PostsASaleOfAnEmptyPositionAsAShortSaleWhenItIsMeant)
{
    Open("CREDIT");
    Answer("Do you mean Short?", Answer::Yes);
    Post("Sell", "10", "20");
    EXPECT_EQ(Chosen(), "Sell short");
    EXPECT_EQ(Row("CREDIT").Shares, Single::FromDouble(-10));
    EXPECT_EQ(Stored("SELECT Name FROM History"), QString::fromUtf8("Crédit Écureuil"));
}

TEST_F(EntryScreen, TurnsASaleOfAnEmptyPositionToBuyWhenItIsNotMeant)
{
    Open("CREDIT");
    Answer("Do you mean Short?", Answer::No);
    Post("Sell", "10", "20");
    EXPECT_EQ(Chosen(), "Buy");
    EXPECT_EQ(Text("txtNumberOfShares"), "10");
    EXPECT_EQ(Text("txtPurchasePrice"), "20.00000");
    EXPECT_EQ(Status(), "Correct errors found!");
    EXPECT_EQ(HistoryRows(), 0);

    Click("cmdOK"); // and may be posted so
    EXPECT_EQ(Row("CREDIT").Shares, Single::FromDouble(10));
}

TEST_F(EntryScreen, PostsACoverOfAnEmptyPositionAsABuyWhenItIsMeant)
{
    Open("O'NEIL");
    Answer("Do you mean Buy long?", Answer::Yes);
    Post("Buy to cover", "10", "20");
    EXPECT_EQ(Chosen(), "Buy");
    EXPECT_EQ(Row("O'NEIL").Shares, Single::FromDouble(10));
    EXPECT_EQ(Stored("SELECT Symbol || '|' || Description FROM History"), "O'NEIL|Bought");
}

TEST_F(EntryScreen, SplitsByTheRatioThatWasTypedAndOffersNoUndo)
{
    Open("ACME");
    Choose("Split");
    Type("txtNumberOfShares", "3");
    Type("txtPurchasePrice", "2");
    Click("cmdOK");
    EXPECT_EQ(Row("ACME").Shares, Single::FromDouble(150));
    EXPECT_EQ(Row("ACME").AvrgPrice, Currency("6.6667"));
    EXPECT_FALSE(Button("cmdUndoLast")->isEnabled());
    EXPECT_EQ(HistoryRows(), 0);
    EXPECT_EQ(Text("txtNumberOfShares"), "");
}

TEST_F(EntryScreen, SplitsTwoForOneAsOffered)
{
    Open("ACME");
    Choose("Split");
    Click("cmdOK");
    EXPECT_EQ(Row("ACME").Shares, Single::FromDouble(200));
}

TEST_F(EntryScreen, HasTheDailyPricesOfASplitSymbolLoadedAnew)
{
    Open("ACME");
    Choose("Split");
    Click("cmdOK");
    EXPECT_EQ(PricesToReload(State().databases.gConnHistPrices), QStringList("ACME"));
    EXPECT_TRUE(State().priceUpdate.HistoricalRetryNeeded);
}

TEST_F(EntryScreen, LeavesTheDailyPricesAtATrade)
{
    Open("ACME");
    Post("Buy", "10", "10");
    EXPECT_EQ(PricesToReload(State().databases.gConnHistPrices), QStringList());
    EXPECT_FALSE(State().priceUpdate.HistoricalRetryNeeded);
}

TEST_F(EntryScreen, PostsASplitThoughItsDailyPricesCannotBeMarked)
{
    Open("ACME");
    State().databases.gConnHistPrices.Execute("PRAGMA query_only = ON");
    Choose("Split");
    Click("cmdOK");
    EXPECT_EQ(Row("ACME").Shares, Single::FromDouble(200));
    EXPECT_EQ(Text("txtNumberOfShares"), "");
    EXPECT_TRUE(Boxes().join("|").contains("attempt to write a readonly database"));
    State().databases.gConnHistPrices.Execute("PRAGMA query_only = OFF");
}

TEST_F(EntryScreen, PostsADepositWithoutATransactionOnTheLots)
{
    Open("ACME");
    Post("Deposit", "250.126");
    EXPECT_EQ(State().account.AccountBalance, Currency("1250.13")); // as the field showed it
    EXPECT_FALSE(State().undo.PostingTransactionOpen);
    EXPECT_EQ(Stored("SELECT '[' || Symbol || ']' || Amount FROM History"), "[ ]2501300");
    EXPECT_TRUE(Button("cmdUndoLast")->isEnabled());
}

TEST_F(EntryScreen, AdjustsTheBalanceToTheAmountTyped)
{
    Open("ACME");
    Answer("Continue?", Answer::Yes);
    Answer("The current balance will be changed by 250.", Answer::Yes);
    Post("Balance Adjustment", "1250");
    EXPECT_EQ(State().account.AccountBalance, Currency("1250"));
    EXPECT_EQ(Chosen(), "Balance Adjustment");
}

TEST_F(EntryScreen, OpensTheDailyTrackerAgainWhenItWasClosed)
{
    Open("ACME");
    run.App().Host().Unload("frmDailyTracker");
    Post("Buy", "50", "11");
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_EQ(Row("ACME").Shares, Single::FromDouble(150));
}

// --- lists --------------------------------------------------------------------------------------

namespace
{

class PlainList : public Form, public ListScreen
{
public:
    PlainList(Program &program, int &refreshed)
        : Form(program, "frmHistoryList", "History", Placement::Child), m_refreshed(refreshed)
    {}
    void RefreshList() override { ++m_refreshed; }

private:
    int &m_refreshed;
};

} // namespace

TEST_F(EntryScreen, RefreshesAnOpenListTwoAndAHalfSecondsAfterAPosting)
{
    int refreshed = 0;
    run.App().Host().Register("frmHistoryList", [&](Program &program) {
        return std::make_unique<PlainList>(program, refreshed);
    });
    Open("ACME");
    const QDateTime start = run.clock.Now();
    Post("Deposit", "1");
    EXPECT_EQ(run.clock.Now(), start) << "no list is open";
    run.App().Host().Show("frmHistoryList");
    Post("Deposit", "1");
    EXPECT_EQ(start.msecsTo(run.clock.Now()), 2500);
    EXPECT_EQ(refreshed, 1);
}

TEST_F(EntryScreen, MayBeClosedWhileTheListsAreWaitedFor)
{
    int refreshed = 0;
    run.App().Host().Register("frmHistoryList", [&](Program &program) {
        return std::make_unique<PlainList>(program, refreshed);
    });
    run.App().Host().Show("frmHistoryList");
    Open("ACME");
    std::unique_ptr<ClockTimer> timer;
    timer = run.clock.CreateTimer([&] {
        timer->SetEnabled(false);
        Click("cmdOK"); // is not taken for a second posting
        Click("cmdClose");
    });
    timer->SetInterval(std::chrono::seconds(1));
    timer->SetEnabled(true);
    Post("Buy", "50", "11");
    EXPECT_FALSE(Screen());
    EXPECT_EQ(refreshed, 1);
    EXPECT_EQ(HistoryRows(), 1);
    EXPECT_FALSE(Entry().PostingInProgress);
    EXPECT_TRUE(State().services.commands.Enabled("UndoLast"));
    EXPECT_FALSE(QGuiApplication::overrideCursor());
}

// --- undo ---------------------------------------------------------------------------------------

TEST_F(EntryScreen, TakesTheLastPostingBackAndClearsTheFields)
{
    Open("ACME");
    Post("Sell", "40", "12");
    EXPECT_EQ(Row("ACME").Shares, Single::FromDouble(60));
    Type("txtNumberOfShares", "7");
    Answer("You are about to undo your last transaction. Is this OK?", Answer::Yes);
    Click("cmdUndoLast");
    EXPECT_EQ(Row("ACME").Shares, Single::FromDouble(100));
    EXPECT_EQ(HistoryRows(), 0);
    EXPECT_EQ(Text("txtNumberOfShares"), "");
    EXPECT_FALSE(Button("cmdUndoLast")->isEnabled());
    EXPECT_FALSE(State().services.commands.Enabled("UndoLast"));
}

TEST_F(EntryScreen, LeavesThePostingWhenUndoIsAnsweredNo)
{
    Open("ACME");
    Post("Sell", "40", "12");
    Answer("Is this OK?", Answer::No);
    Click("cmdUndoLast");
    EXPECT_EQ(Row("ACME").Shares, Single::FromDouble(60));
    EXPECT_FALSE(Button("cmdUndoLast")->isEnabled());
    EXPECT_TRUE(State().services.commands.Enabled("UndoLast"));
}

TEST_F(EntryScreen, DoesNotUndoWhatTheToolbarHasUndone)
{
    Open("ACME");
    Post("Sell", "40", "12");
    Answer("Is this OK?", Answer::Yes);
    run.Choose("UndoLast");
    EXPECT_EQ(HistoryRows(), 0);
    Click("cmdUndoLast"); // asks nothing
    EXPECT_FALSE(Button("cmdUndoLast")->isEnabled());
    EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(EntryScreen, OffersUndoWhenItOpensAfterAPosting)
{
    Open("ACME");
    Post("Buy", "50", "11");
    Click("cmdClose");
    Open("FUND");
    EXPECT_TRUE(Button("cmdUndoLast")->isEnabled());
}
