#include "entry_screen.h"

using Fields = EntryScreen;

namespace
{

const QString PriceMessage = QStringLiteral("Please provide a valid stock price!");

} // namespace

// --- opening ------------------------------------------------------------------------------------

TEST_F(EntryScreen, OpensForTheSelectedRowWithBuyAndToday)
{
    Open("ACME");
    EXPECT_EQ(Screen()->Caption(), "Transaction Update");
    EXPECT_EQ(Text("txtSymbol"), "ACME");
    EXPECT_EQ(Text("txtName"), "Acme Inc.");
    EXPECT_EQ(Chosen(), "Buy");
    EXPECT_EQ(Date()->date(), QDate(2026, 3, 2));
    EXPECT_EQ(Text("txtNumberOfShares") + Text("txtPurchasePrice") + Text("txtCommCost"), "");
    EXPECT_TRUE(Button("cmdOK")->isEnabled());
    EXPECT_FALSE(Button("cmdUndoLast")->isEnabled());
    EXPECT_TRUE(Screen()->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(Boxes(), QStringList());
}

TEST_F(EntryScreen, ListsTheTenActionsInTheirFixedOrder)
{
    Open("ACME");
    QStringList actions;
    for (int row = 0; row < List()->count(); ++row)
        actions << List()->item(row)->text();
    EXPECT_EQ(actions.join("|"), "Buy|Sell|Sell short|Buy to cover|Split|Deposit|Cash Withdrawal|"
                                 "Balance Adjustment|Dividend Received|Dividend Reinvestment");
    EXPECT_EQ(Caption("lblAction"), "Transaction type");
    EXPECT_EQ(List()->toolTip(), "Select action type");
    EXPECT_EQ(Edit("txtCommCost")->toolTip(), "Change if different from calculated amount");
    EXPECT_EQ(Date()->toolTip(), "Transaction date");
}

TEST_F(EntryScreen, StandsCentredAtASeventhOfTheMainWindow)
{
    QCoreApplication::processEvents(); // the main window takes its size
    Open("ACME");
    const QRect main = run.App().MainWindow().geometry();
    EXPECT_EQ(Screen()->y(), main.top() + main.height() / 7);
    EXPECT_NEAR(Screen()->geometry().center().x(), main.center().x(), 1);
}

TEST_F(EntryScreen, KeepsOKDisabledForASecurityWithoutAType)
{
    Select("BARE");
    run.App().Host().Load("frmTransactionUpdate");
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_EQ(run.boxes.boxes[0].text, "Security BARE does not have a valid type entry!\n\n"
                                       "The security update screen will now be displayed.\n"
                                       "When finished, try entering your transaction again.");
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_FALSE(Button("cmdOK")->isEnabled());
}

TEST_F(EntryScreen, GivesWayToTheSecurityScreenWhenTheNextRowHasNoType)
{
    Open("ACME");
    run.AddScreen("frmSecurityUpdate");
    bool entryWasGone = false;
    run.WhenModal("frmSecurityUpdate", [&] {
        entryWasGone = !Screen();
        run.App().Host().Unload("frmSecurityUpdate");
    });
    Select("BARE");
    run.App().Host().Show("frmTransactionUpdate");
    EXPECT_EQ(Boxes().size(), 1);
    EXPECT_TRUE(entryWasGone);
    EXPECT_EQ(run.log, QStringList({"load frmSecurityUpdate", "unload frmSecurityUpdate"}));
    EXPECT_FALSE(Screen());
}

TEST_F(EntryScreen, GoesOverToAnotherRowChosenWhileItIsOpen)
{
    Open("ACME");
    Choose("Sell");
    Type("txtPurchasePrice", "12");
    WidgetActions::PickDate(Date(), QDate(2026, 2, 1));
    Select("CREDIT");
    QApplication::setActiveWindow(&run.App().MainWindow());
    QApplication::setActiveWindow(Screen()); // as the user comes back to it
    EXPECT_EQ(Text("txtSymbol"), "CREDIT");
    EXPECT_EQ(Text("txtName"), QString::fromUtf8("Crédit Écureuil"));
    EXPECT_EQ(Chosen(), "Buy");
    EXPECT_EQ(Text("txtNumberOfShares") + Text("txtPurchasePrice"), "");
    EXPECT_EQ(Date()->date(), QDate(2026, 3, 2));
}

TEST_F(EntryScreen, LeavesTheEntryAloneWhenTheSameRowIsStillChosen)
{
    Open("ACME");
    Type("txtNumberOfShares", "7");
    Open("ACME");
    EXPECT_EQ(Text("txtNumberOfShares"), "7");
}

TEST_F(EntryScreen, SuspendsThePriceCycleWhileItIsOpen)
{
    run.AddScreen("frmInternetTran", Placement::Hidden);
    run.App().Host().Load("frmInternetTran");
    State().priceUpdate.PriceUpdateActive = true;
    run.log.clear();
    Select("ACME");
    run.App().Host().Load("frmTransactionUpdate");
    EXPECT_EQ(run.log, QStringList("unload frmInternetTran"));
    EXPECT_EQ(Status(), "Current price update option temporarily disabled!");
    run.App().Host().Unload("frmTransactionUpdate");
    EXPECT_EQ(run.log, QStringList({"unload frmInternetTran", "load frmInternetTran"}));
    EXPECT_EQ(Status(), "Enabling the current price update option");
}

TEST_F(EntryScreen, ClearsTheStatusWhenItGoesAndNoCycleWasSuspended)
{
    Open("ACME");
    Click("cmdClose");
    EXPECT_FALSE(Screen());
    EXPECT_EQ(Status(), "");
}

// --- fields by action ---------------------------------------------------------------------------

namespace
{

struct FieldCase
{
    const char *action;
    const char *shares;
    const char *price;
    bool securityOn;
    bool commissionOn;
    const char *sharesTip;
    const char *priceTip;
    const char *sharesStatus;
    const char *priceStatus;
};

const char *SharesWords = "Enter number of shares for this transaction";
const char *PriceWords = "Enter purchase or sales price...";
const FieldCase fieldCases[] = {
    {"Buy", "Shares", "Price", true, true, "Number of shares", "Enter price", SharesWords,
     PriceWords},
    {"Sell", "Shares", "Price", true, true, "Number of shares", "Enter price", SharesWords,
     PriceWords},
    {"Sell short", "Shares", "Price", true, true, "Number of shares", "Enter price", SharesWords,
     PriceWords},
    {"Buy to cover", "Shares", "Price", true, true, "Number of shares", "Enter price", SharesWords,
     PriceWords},
    {"Split", "New Shares", "Old Shares", true, false, "New share ratio", "Existing share ratio",
     "Enter split ratio of new to old shares", "Enter split ratio of old to new shares"},
    {"Deposit", "Deposit Amount", "", false, false, "Enter deposit amount", "",
     "Enter deposit amount", ""},
    {"Cash Withdrawal", "Amount", "", false, false, "Enter withdrawal amount", "",
     "Enter withdrawal amount", ""},
    {"Dividend Received", "Dividend Amount", "", false, false, "Enter dividend received", "",
     "Enter divendend received", ""},
    {"Balance Adjustment", "New balance", "", false, false, "Enter new portfolio balance amount",
     "", "Enter new portfolio balance, the adjustment is computed automatically.", ""},
};

} // namespace

TEST_F(Fields, AreNamedExplainedAndOffByAction)
{
    Open("ACME");
    for (const FieldCase &expected : fieldCases) {
        SCOPED_TRACE(expected.action);
        if (QString(expected.action) == "Balance Adjustment")
            Answer("Continue?", Answer::Yes);
        Choose(expected.action);
        EXPECT_EQ(Caption("lblShares"), expected.shares);
        EXPECT_EQ(Caption("lblPrice"), expected.price);
        EXPECT_EQ(Edit("txtNumberOfShares")->toolTip(), expected.sharesTip);
        EXPECT_EQ(Edit("txtPurchasePrice")->toolTip(), expected.priceTip);
        for (const char *field : {"txtSymbol", "txtName", "txtPurchasePrice"})
            EXPECT_EQ(Edit(field)->isEnabled(), expected.securityOn) << field;
        EXPECT_EQ(Edit("txtCommCost")->isEnabled(), expected.commissionOn);
        WidgetActions::Focus(List());
        EXPECT_EQ(Status(), "Select action for this transaction");
        WidgetActions::Focus(Edit("txtNumberOfShares"));
        EXPECT_EQ(Status(), expected.sharesStatus);
        if (expected.securityOn) {
            WidgetActions::Focus(Edit("txtPurchasePrice"));
            EXPECT_EQ(Status(), expected.priceStatus);
        }
        WidgetActions::Focus(Date());
        EXPECT_EQ(Status(), "Enter the transaction date...");
    }
}

TEST_F(Fields, OfAReinvestedDividendAreThoseOfATradeWithoutCommission)
{
    Open("FUND");
    EXPECT_FALSE(Edit("txtCommCost")->isEnabled()) << "a mutual fund pays none";
    Choose("Dividend Reinvestment");
    EXPECT_EQ(Caption("lblShares"), "Shares");
    EXPECT_EQ(Caption("lblPrice"), "Price");
    EXPECT_EQ(Edit("txtNumberOfShares")->toolTip(), "Number of shares");
    EXPECT_TRUE(Edit("txtPurchasePrice")->isEnabled());
    EXPECT_FALSE(Edit("txtCommCost")->isEnabled());
    WidgetActions::Focus(Edit("txtPurchasePrice"));
    EXPECT_EQ(Text("txtCommCost"), "0");
}

TEST_F(Fields, GetTheFocusForASplitAndForCash)
{
    Open("ACME");
    for (const char *action : {"Split", "Deposit", "Cash Withdrawal", "Dividend Received"}) {
        Choose(action);
        EXPECT_EQ(Focused(), "txtNumberOfShares") << action;
    }
    Choose("Buy");
    EXPECT_EQ(Focused(), "lstAction");
}

TEST_F(Fields, OfASellOfferTheWholePositionUntilAnotherActionIsChosen)
{
    Open("ACME");
    Choose("Sell");
    EXPECT_EQ(Text("txtNumberOfShares"), "100");
    Choose("Buy");
    EXPECT_EQ(Text("txtNumberOfShares"), "");
}

TEST_F(Fields, OfACoverOfferTheShortPositionAsAPositiveCount)
{
    Open("SHRT");
    Choose("Buy to cover");
    EXPECT_EQ(Text("txtNumberOfShares"), "100");
    Choose("Sell");
    EXPECT_EQ(Text("txtNumberOfShares"), "100");
}

TEST_F(Fields, OfASellOfferAFractionAndNothingOfAnEmptyPosition)
{
    Open("PART");
    Choose("Sell");
    EXPECT_EQ(Text("txtNumberOfShares"), "0.125");
    Open("CREDIT");
    Choose("Sell");
    EXPECT_EQ(Text("txtNumberOfShares"), "");
}

TEST_F(Fields, OfASplitOfferTwoForOne)
{
    Open("ACME");
    Choose("Split");
    EXPECT_EQ(Text("txtNumberOfShares"), "2");
    EXPECT_EQ(Text("txtPurchasePrice"), "1");
}

TEST_F(Fields, AreClearedByAClickOnTheActionThatIsChosenAlready)
{
    Open("ACME");
    Type("txtNumberOfShares", "7");
    Choose("Buy");
    EXPECT_EQ(Text("txtNumberOfShares"), "");
    EXPECT_EQ(Text("txtSymbol"), "ACME");
}

TEST_F(Fields, FollowTheArrowKeysAsTheMouse)
{
    Open("ACME");
    WidgetActions::Focus(List());
    Press("Down");
    EXPECT_EQ(Chosen(), "Sell");
    EXPECT_EQ(Text("txtNumberOfShares"), "100");
}

TEST_F(EntryScreen, GoesBackToBuyWhenABalanceAdjustmentIsNotWanted)
{
    Open("ACME");
    Answer("Continue?", Answer::No);
    Choose("Balance Adjustment");
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_EQ(run.boxes.boxes[0].text,
              "Balance adjustments should be done when the markets are closed \n"
              "and Quillon has updated all the securities with current prices.\n\n"
              "Continue?\n\nFor more information click on 'Help'.");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 4 + 48 + 256);
    EXPECT_EQ(Chosen(), "Buy");
    EXPECT_EQ(List()->selectedItems().size(), 1);
    EXPECT_TRUE(List()->item(0)->isSelected());
    EXPECT_EQ(Caption("lblShares"), "Shares");
    EXPECT_TRUE(Edit("txtPurchasePrice")->isEnabled());
}

TEST_F(EntryScreen, DisablesOKForAnActionTheTypeCannotTakeUntilAnotherIsChosen)
{
    Open("ACME");
    Choose("Dividend Reinvestment");
    EXPECT_EQ(Boxes(), QStringList("Selected transaction type is invalid for this security type: "
                                   "Stock"));
    EXPECT_FALSE(Button("cmdOK")->isEnabled());
    Choose("Buy");
    EXPECT_TRUE(Button("cmdOK")->isEnabled());
}

TEST_F(EntryScreen, TakesNothingButCashForAnIndex)
{
    Open("IDX");
    for (const char *action :
         {"Sell", "Sell short", "Buy to cover", "Split", "Buy", "Dividend Reinvestment"}) {
        Choose(action);
        EXPECT_EQ(Boxes().size(), 1) << action;
        EXPECT_FALSE(Button("cmdOK")->isEnabled()) << action;
    }
    Choose("Deposit");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_TRUE(Button("cmdOK")->isEnabled());
}

// --- keys ---------------------------------------------------------------------------------------

TEST_F(Fields, DropOtherKeysWithABeep)
{
    Open("ACME");
    int beeps = 0;
    const auto typed = [&](const char *field, const QString &text) {
        Edit(field)->OnRefused = [&beeps] { ++beeps; };
        Type(field, text);
        return Text(field);
    };
    EXPECT_EQ(typed("txtNumberOfShares", "1a2-.,5"), "12.5");
    EXPECT_EQ(beeps, 3);
    EXPECT_EQ(typed("txtPurchasePrice", "x1,2 3/8.-"), "1,2 3/8.");
    EXPECT_EQ(beeps, 5);
    Type("txtPurchasePrice", "1");
    EXPECT_EQ(typed("txtCommCost", "9e,.5"), "9.5");
    EXPECT_EQ(beeps, 7);
}

TEST_F(Fields, LetTheSymbolAndNameBeReadOnly)
{
    Open("ACME");
    EXPECT_TRUE(Edit("txtSymbol")->isReadOnly());
    EXPECT_TRUE(Edit("txtName")->isReadOnly());
}

TEST_F(Fields, SelectTheirTextAndStandOutWhenTheyAreEntered)
{
    Open("ACME");
    Choose("Sell");
    const QColor plain = Edit("txtNumberOfShares")->palette().color(QPalette::Base);
    WidgetActions::Focus(Edit("txtNumberOfShares"));
    EXPECT_EQ(Edit("txtNumberOfShares")->selectedText(), "100");
    EXPECT_NE(Edit("txtNumberOfShares")->palette().color(QPalette::Base), plain);
    Press("Tab");
    EXPECT_EQ(Edit("txtNumberOfShares")->palette().color(QPalette::Base), plain);
}

TEST_F(Fields, AreReachedByTabInTheirOrder)
{
    Open("ACME");
    WidgetActions::Focus(List());
    QStringList order;
    for (int tab = 0; tab < 8; ++tab) {
        Press("Tab");
        order << Focused();
    }
    EXPECT_EQ(order.join(" ").toStdString(),
              "txtNumberOfShares txtPurchasePrice txtCommCost dtpTransDate cmdOK "
              "cmdClose cmdHelp cmdWizard"); // nothing can be undone
}

// --- price and amounts --------------------------------------------------------------------------

TEST_F(Fields, ShowAPriceInDecimalsWhenItIsLeft)
{
    const std::pair<const char *, const char *> prices[] = {{"12 1/2", "12.50000"},
                                                            {"3/8", "0.37500"},
                                                            {"1234.56", "1,234.56010"},
                                                            {"260.55", "260.55000"},
                                                            {"1,234.5", "1,234.50000"},
                                                            {"0", ""},
                                                            {"0.00", ""},
                                                            {"", ""},
                                                            {"7", "7.00000"}};
    Open("ACME");
    Type("txtNumberOfShares", "10");
    for (const auto &[typed, shown] : prices) {
        Type("txtPurchasePrice", typed);
        Press("Tab");
        EXPECT_EQ(Text("txtPurchasePrice"), shown) << typed;
        EXPECT_EQ(Focused(), "txtCommCost") << typed;
    }
    EXPECT_EQ(Boxes(), QStringList());
}

TEST_F(Fields, KeepTheFocusOnAPriceThatIsNone)
{
    Open("ACME");
    Type("txtNumberOfShares", "10");
    for (const char *wrong : {"12 3/0", "1.2.3", "/", "."}) {
        Type("txtPurchasePrice", wrong);
        Press("Tab");
        EXPECT_EQ(Boxes(), QStringList(PriceMessage)) << wrong;
        EXPECT_EQ(Focused(), "txtPurchasePrice");
        EXPECT_EQ(Edit("txtPurchasePrice")->selectedText(), wrong);
    }
    Type("txtPurchasePrice", "12 3/8");
    Press("Tab");
    EXPECT_EQ(Focused(), "txtCommCost");
}

TEST_F(Fields, LetAWrongPriceWaitForTheCount)
{
    Open("ACME");
    Type("txtPurchasePrice", "12 3/0");
    Press("Tab");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(Text("txtPurchasePrice"), "12 3/0");
    Type("txtNumberOfShares", "10");
    Click("cmdOK");
    EXPECT_EQ(Boxes(), QStringList(PriceMessage));
    EXPECT_EQ(Focused(), "txtPurchasePrice");
    EXPECT_EQ(Status(), "Correct errors found!");
    EXPECT_EQ(HistoryRows(), 0);
}

TEST_F(EntryScreen, CanBeLeftWithAWrongPrice)
{
    for (const char *way : {"mouse", "Escape", "Alt+C"}) {
        Open("ACME");
        Type("txtNumberOfShares", "10");
        Type("txtPurchasePrice", "12 3/0");
        if (QString(way) == "mouse")
            Click("cmdClose");
        else
            Press(way);
        EXPECT_FALSE(Screen()) << way;
        EXPECT_EQ(Boxes(), QStringList()) << way;
    }
}

TEST_F(EntryScreen, KeepsItsActionWhenAWrongPriceCannotBeLeft)
{
    Open("ACME");
    Type("txtNumberOfShares", "10");
    Type("txtPurchasePrice", "12 3/0");
    Choose("Split");
    EXPECT_EQ(Boxes(), QStringList(PriceMessage));
    EXPECT_EQ(Chosen(), "Buy");
    EXPECT_EQ(Text("txtPurchasePrice"), "12 3/0");
}

TEST_F(Fields, ShowCashWithTwoDecimalsWhenItIsLeftAndSharesAsTheyAre)
{
    Open("ACME");
    Choose("Deposit");
    Type("txtNumberOfShares", "1234.565");
    Press("Tab");
    EXPECT_EQ(Text("txtNumberOfShares"), "1,234.57");
    Choose("Buy");
    Type("txtNumberOfShares", "1234.565");
    Press("Tab");
    EXPECT_EQ(Text("txtNumberOfShares"), "1234.565");
}

// --- buttons ------------------------------------------------------------------------------------

TEST_F(EntryScreen, OpensItsHelpTopic)
{
    Open("ACME");
    Click("cmdHelp");
    EXPECT_EQ(Status(), "The help topic DTTransactionUpdate.html was not found");
}

TEST_F(EntryScreen, TurnsThreeButtonsOffAndOnForARebuild)
{
    Open("ACME");
    const auto state = [this] {
        QString text;
        for (const char *name : {"cmdOK", "cmdClose", "cmdWizard", "cmdHelp"})
            text += Button(name)->isEnabled() ? "1" : "0";
        return text;
    };
    Screen()->DisEnaCommandButtons();
    EXPECT_EQ(state(), "0001");
    Screen()->DisEnaCommandButtons();
    EXPECT_EQ(state(), "1111");
}

TEST_F(EntryScreen, DoesNotFollowTheListDuringARebuild)
{
    State().services.commands.SetEnabled("UndoLast", true);
    Entry().RebuildMode = true;
    Open("ACME");
    EXPECT_FALSE(Button("cmdUndoLast")->isEnabled());
    Choose("Split");
    EXPECT_EQ(Text("txtNumberOfShares"), "");
    EXPECT_EQ(Caption("lblShares"), "Shares");
    Entry().RebuildMode = false;
}

TEST_F(EntryScreen, LeavesThePriceCycleUnloadedWhenTheAccountIsClosed)
{
    run.AddScreen("frmInternetTran", Placement::Hidden);
    run.App().Host().Load("frmInternetTran");
    State().priceUpdate.PriceUpdateActive = true;
    Open("ACME");
    EXPECT_TRUE(run.App().Routines().CloseAllScreens());
    EXPECT_FALSE(Screen());
    EXPECT_FALSE(run.App().Host().Loaded("frmInternetTran"));
}
