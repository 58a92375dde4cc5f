/// The security screen in the whole program: new and edit, its checks, and what it leaves behind.

#include "transactions/frm_security_update.h"

#include "driver/grid_actions.h"
#include "driver/widget_actions.h"
#include "platform/widgets/cell_drop_down.h"
#include "platform/widgets/field_edit.h"
#include "tracking/tracker_screen_run.h"
#include "transactions/entry_validation.h"
#include "transactions/securities.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTabWidget>

namespace
{

/// ACME and ZETA, held, and O'NEIL, which nothing is known of but its row.
class SecurityScreen : public TrackerScreenRun
{
protected:
    SecurityScreen()
    {
        TwoPositions();
        Row("O'NEIL", 0, "0", "0");
        folder.Execute(Control(), "INSERT INTO SecurityDetail VALUES "
                                  "('ACME', 'ACME Inc.', 'Stock'), ('ZETA', 'ZETA Inc.', 'Stock'), "
                                  "('OTHER', 'Of Another Account', 'Bond')");
        folder.Execute(Control(), "INSERT INTO SecurityAssetClass VALUES ('ACME', 'Energy', 1), "
                                  "('OTHER', 'Water', 1)");
        folder.Execute(Control(),
                       "INSERT INTO ApplicationTable (TableName, Field08) VALUES "
                       "('AssetClass', 'Energy'), ('AssetClass', 'Water'), ('AssetClass', 'Cash')");
        Execute("INSERT INTO History (Symbol, Name) VALUES ('ACME', 'ACME Inc.')");
        Execute("INSERT INTO DailyProfitLoss (Symbol, Name, TransDate) VALUES "
                "('ACME', 'ACME Inc.', '2026-02-27')");
        Open();
    }
    /// The shared file as it comes into being at the start of the program.
    QString Control() const { return folder.File("ApplControl.xxx"); }
    QString InControl(const QString &sql) const
    {
        return folder.Value(folder.File("ApplControl.mdb"), sql);
    }

    void OpenNew() { OpenFor("popDTNew"); }
    void OpenEdit(const QString &symbol)
    {
        Select(symbol);
        OpenFor("popDTEdit");
    }
    void OpenFor(const QString &entry)
    {
        run.Commands().SetChecked(entry, true);
        run.App().Host().Show("frmSecurityUpdate");
        QCoreApplication::processEvents();
    }

    // What the user does and sees.
    Form *Screen() { return run.App().Host().Find("frmSecurityUpdate"); }
    template <class Widget>
    Widget *Part(const char *name)
    {
        return Screen()->findChild<Widget *>(name);
    }
    void Type(const char *field, const QString &text)
    {
        WidgetActions::Type(Part<QWidget>(field), text);
    }
    void Tab() { WidgetActions::PressKey("Tab"); }
    void Press(const char *button) { WidgetActions::Click(Part<QWidget>(button)); }
    void Pick(const char *list, const QString &item)
    {
        WidgetActions::Choose(Part<QWidget>(list), item);
        QCoreApplication::processEvents(); // the list goes away
    }
    DataGrid &Classes() { return *Part<DataGrid>("DataGridAssetClass"); }
    void NewClass(const QStringList &cells) { GridActions::FillNewRow(Classes(), cells); }
    QString Text(const char *field) { return Part<QLineEdit>(field)->text(); }
    QString Chosen(const char *list) { return Part<QComboBox>(list)->currentText(); }
    QString Total() { return Text("txtPerCentAllocated"); }
    /// "Energy 50.00%; Water 50.00%"
    QString ClassRows()
    {
        QStringList texts;
        for (int row = 0; row < Classes().RowCount(); ++row)
            texts << Classes().CellText(row, 0) + QLatin1Char(' ') + Classes().CellText(row, 1);
        return texts.join(QStringLiteral("; "));
    }
    int CurrentTab() { return Part<QTabWidget>("SSTabAssetClass")->currentIndex(); }
    QString Focused()
    {
        const QWidget *focused = QApplication::focusWidget();
        return focused ? focused->objectName() : QString();
    }
    void Answer(const QString &part, ::Answer answer) { run.boxes.Prepare(part, answer); }
    QStringList Boxes()
    {
        const QStringList texts = run.boxes.Texts();
        run.boxes.boxes.clear();
        return texts;
    }
    QString TrackerRows()
    {
        return Value("SELECT group_concat(Symbol || '=' || Name, '; ') FROM (SELECT * FROM "
                     "DailyTracker ORDER BY Symbol)");
    }
    /// The five tables that repeat a symbol, each "symbol,symbol".
    QStringList Symbols()
    {
        const QString all = "SELECT group_concat(Symbol) FROM (SELECT Symbol FROM %1 ORDER BY 1)";
        return {Value(all.arg("History")), Value(all.arg("DailyProfitLoss")),
                Value(all.arg("PriceHistory")), InControl(all.arg("SecurityDetail")),
                InControl(all.arg("SecurityAssetClass"))};
    }
    const QString AllRows = "ACME=ACME Inc.; O'NEIL=O'NEIL Inc.; ZETA=ZETA Inc.";
    const QString Duplicate = "The symbol you're trying to add is already in your portfolio!";
    const QString NotWhole = "When selecting multiple Market Sectors, the total allocation must "
                             "equal 100 percent.";
    const QString EvenlyQuestion = "Would you like to evenly allocate all selected sectors?";
};

} // namespace

// --- coming and going ---------------------------------------------------------------------------

TEST_F(SecurityScreen, OpensForANewSecurityFromThePopup)
{
    Select("ACME");
    bool wasModal = false;
    run.WhenModal("frmSecurityUpdate", [&] {
        QCoreApplication::processEvents();
        EXPECT_EQ(Screen()->Caption(), "New Security Update");
        EXPECT_TRUE(run.Commands().Checked("popDTNew"));
        EXPECT_FALSE(run.Commands().Checked("popDTEdit"));
        EXPECT_EQ(Text("txtSymbol"), "");
        EXPECT_EQ(Chosen("combSecurityType"), "");
        EXPECT_FALSE(Part<QComboBox>("combSymbolList")->isEnabled());
        EXPECT_EQ(Status(), "Enter new symbol name");
        wasModal = Screen()->isModal();
        Press("cmdClose");
    });
    Choose("popDTNew");
    EXPECT_TRUE(wasModal);
    EXPECT_FALSE(run.Commands().Checked("popDTNew"));
    EXPECT_FALSE(Screen());
    EXPECT_EQ(Status(), "");
}

TEST_F(SecurityScreen, OpensForTheSelectedSecurityFromThePopup)
{
    Select("ACME");
    run.Commands().SetChecked("popDTNew", true); // left by whoever
    run.WhenModal("frmSecurityUpdate", [&] {
        QCoreApplication::processEvents();
        EXPECT_EQ(Screen()->Caption(), "Security Edit");
        EXPECT_TRUE(run.Commands().Checked("popDTEdit"));
        EXPECT_FALSE(run.Commands().Checked("popDTNew"));
        EXPECT_EQ(Text("txtSymbol"), "ACME");
        EXPECT_EQ(Text("txtName"), "ACME Inc.");
        EXPECT_EQ(Chosen("combSecurityType"), "Stock");
        EXPECT_EQ(ClassRows(), "Energy 100.00%");
        EXPECT_EQ(Total(), "100.00%");
        EXPECT_TRUE(Part<QComboBox>("combSymbolList")->isEnabled());
        EXPECT_EQ(Part<QComboBox>("combSymbolList")->count(), 3);
        EXPECT_EQ(Status(), "Change symbol name if necessary");
        WidgetActions::PressKey("Esc");
    });
    Choose("popDTEdit");
    EXPECT_FALSE(Screen());
    EXPECT_FALSE(run.Commands().Checked("popDTEdit"));
}

TEST_F(SecurityScreen, AsksForASelectionBeforeItEdits)
{
    State().selection = {};
    Choose("popDTEdit");
    EXPECT_EQ(Boxes(), QStringList("Please select the security you want to update!"));
    EXPECT_FALSE(Screen());
}

TEST_F(SecurityScreen, OffersTheSevenTypesInTheirOrder)
{
    OpenNew();
    QStringList types;
    for (int i = 0; i < Part<QComboBox>("combSecurityType")->count(); ++i)
        types << Part<QComboBox>("combSecurityType")->itemText(i);
    EXPECT_EQ(types, QStringList({"Bond", "Commodity", "Future", "Mutual Fund", "Option", "Stock",
                                  "Index"}));
}

TEST_F(SecurityScreen, TellsWhatEachFieldIsFor)
{
    OpenNew();
    Tab();
    EXPECT_EQ(Focused(), "txtName");
    EXPECT_EQ(Status(), "Enter security name for this new symbol");
    Press("cmdClose");
    OpenEdit("ACME");
    Tab();
    EXPECT_EQ(Status(), "Make changes to security name");
    QStringList order;
    for (int i = 0; i < 2; ++i) {
        Tab();
        order << Focused();
    }
    EXPECT_EQ(order, QStringList({"combSecurityType", "combSymbolList"}));
}

TEST_F(SecurityScreen, NamesAllItsControls)
{
    OpenNew();
    for (const char *name :
         {"SSTabAssetClass", "txtSymbol", "txtName", "combSecurityType", "combSymbolList",
          "DataGridAssetClass", "dtlAssetClass", "txtPerCentAllocated"})
        EXPECT_NE(Part<QWidget>(name)->accessibleName(), "") << name;
}

TEST_F(SecurityScreen, OpensItsHelp)
{
    OpenNew();
    Press("cmdHelp");
    EXPECT_EQ(Status(), "The help topic DTSecurityUpdate.html was not found"); // a bare folder
}

TEST_F(SecurityScreen, MakesTheLastPostingFinal)
{
    Post(Action::Buy, "ACME", "10", "12");
    ASSERT_TRUE(UndoEnabled());
    ASSERT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "1");
    OpenNew();
    EXPECT_FALSE(UndoEnabled());
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "2");
}

TEST_F(SecurityScreen, TakesBackNoDepositEither)
{
    Post(Action::Deposit, "ACME", "100", "");
    OpenNew();
    EXPECT_FALSE(UndoEnabled());
}

TEST_F(SecurityScreen, SuspendsThePriceCycleWhileItIsOpen)
{
    run.AddScreen("frmInternetTran", Placement::Hidden);
    run.App().Host().Load("frmInternetTran");
    State().priceUpdate.PriceUpdateActive = true;
    run.log.clear();
    run.Commands().SetChecked("popDTNew", true);
    run.App().Host().Load("frmSecurityUpdate");
    EXPECT_EQ(run.log, QStringList("unload frmInternetTran"));
    EXPECT_EQ(Status(), "Current price update option temporarily disabled!");
    run.App().Host().Unload("frmSecurityUpdate");
    EXPECT_EQ(run.log, QStringList({"unload frmInternetTran", "load frmInternetTran"}));
    EXPECT_EQ(Status(), "Enabling the current price update option");
}

// --- a new security -----------------------------------------------------------------------------

TEST_F(SecurityScreen, GivesANewSecurityItsRowsAndClearsTheFields)
{
    OpenNew();
    Type("txtSymbol", "L'ÉTÉ");
    Type("txtName", "L'Été \"SA\"");
    Pick("combSecurityType", "Stock");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(Value("SELECT Name || '|' || Shares || '|' || TransDate FROM DailyTracker WHERE "
                    "Symbol = 'L''ÉTÉ'"),
              "L'Été \"SA\"|0.0|2026-03-02");
    EXPECT_EQ(InControl("SELECT Name || '|' || SecurityType FROM SecurityDetail WHERE "
                        "Symbol = 'L''ÉTÉ'"),
              "L'Été \"SA\"|Stock");
    EXPECT_EQ(Text("txtSymbol"), "");
    EXPECT_EQ(Text("txtName"), "");
    EXPECT_EQ(Chosen("combSecurityType"), "");
    EXPECT_EQ(Focused(), "txtSymbol");
    EXPECT_GE(Part<QComboBox>("combSymbolList")->findText("L'ÉTÉ - L'Été \"SA\""), 0);
    Press("cmdClose");
    EXPECT_EQ(MarkedSymbol(), "L'ÉTÉ");
    EXPECT_EQ(CurrentSymbol(), "L'ÉTÉ");
}

TEST_F(SecurityScreen, SavesNothingOfASymbolThatThePortfolioHas)
{
    OpenNew();
    Type("txtSymbol", "ACME");
    Tab();
    EXPECT_EQ(Text("txtName"), "ACME Inc."); // as the master list has it
    EXPECT_EQ(ClassRows(), "Energy 100.00%");
    Type("txtName", "Another");
    Pick("combSecurityType", "Bond");
    Press("cmdOK");
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_EQ(run.boxes.boxes[0].text, Duplicate);
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 48);
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_EQ(InControl("SELECT Name || SecurityType FROM SecurityDetail WHERE Symbol = 'ACME'"),
              "ACME Inc.Stock");
    EXPECT_EQ(TrackerRows(), AllRows);
    EXPECT_EQ(Text("txtSymbol"), "ACME");
}

TEST_F(SecurityScreen, AddsASecurityThatOnlyAnotherAccountHas)
{
    OpenNew();
    Type("txtSymbol", "OTHER");
    Tab();
    EXPECT_EQ(Text("txtName"), "Of Another Account");
    EXPECT_EQ(Chosen("combSecurityType"), "Bond");
    EXPECT_EQ(ClassRows(), "Water 100.00%");
    Pick("combSecurityType", "Stock");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(InControl("SELECT SecurityType FROM SecurityDetail WHERE Symbol = 'OTHER'"), "Stock");
    EXPECT_EQ(TrackerRows(), "ACME=ACME Inc.; O'NEIL=O'NEIL Inc.; OTHER=Of Another Account; "
                             "ZETA=ZETA Inc.");
}

TEST_F(SecurityScreen, KeepsWhatWasTypedBeforeTheSymbol)
{
    OpenNew();
    Type("txtName", "New One");
    NewClass({"AssetClass=Energy", "PerCentAllocated=1"});
    Type("txtSymbol", "NEWW");
    Tab();
    Type("txtSymbol", "NEW"); // a slip, mended
    Tab();
    EXPECT_EQ(Text("txtName"), "New One");
    EXPECT_EQ(ClassRows(), "Energy 100.00%");
    Pick("combSecurityType", "Stock");
    Press("cmdOK");
    EXPECT_EQ(InControl("SELECT AssetClass FROM SecurityAssetClass WHERE Symbol = 'NEW'"),
              "Energy");
}

TEST_F(SecurityScreen, ForgetsTheSecurityThatWasOnlyLookedAt)
{
    OpenNew();
    Type("txtSymbol", "OTHER");
    Tab();
    Type("txtSymbol", "NEW");
    Tab();
    EXPECT_EQ(Text("txtName"), "");
    EXPECT_EQ(Chosen("combSecurityType"), "");
    EXPECT_EQ(ClassRows(), "");
}

TEST_F(SecurityScreen, SelectsTheRowOfBeforeWhenNothingWasSaved)
{
    Select("ZETA");
    OpenNew();
    Type("txtSymbol", "ACME");
    Tab();
    EXPECT_EQ(CurrentSymbol(), "ACME");
    Press("cmdClose");
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(State().selection.CurrentName, "ZETA Inc.");
    EXPECT_EQ(State().AdodcStockHistory.Current().Symbol, "ZETA");
}

// --- checks -------------------------------------------------------------------------------------

TEST_F(SecurityScreen, PutsTheUserIntoTheFieldThatIsMissing)
{
    OpenNew();
    Pick("SSTabAssetClass", "Asset Class");
    Press("cmdOK");
    EXPECT_EQ(CurrentTab(), 0);
    EXPECT_EQ(Focused(), "txtSymbol");
    Type("txtSymbol", "  ");
    Press("cmdOK");
    EXPECT_EQ(Focused(), "txtSymbol");
    Type("txtSymbol", "NEW");
    Press("cmdOK");
    EXPECT_EQ(Focused(), "txtName");
    Type("txtName", "New One");
    Press("cmdOK");
    EXPECT_EQ(Focused(), "combSecurityType");
    EXPECT_EQ(run.boxes.boxes.front().buttonsValue, 48);
    EXPECT_EQ(Boxes(), QStringList({"Please enter a valid symbol", "Please enter a valid symbol",
                                    "Enter a valid name for this security",
                                    "Please select the type of security for this symbol"}));
}

TEST_F(SecurityScreen, AsksBeforeItIsLeftWithErrors)
{
    OpenNew();
    Press("cmdOK");
    Boxes();
    Answer("really want to exit", Answer::No);
    Press("cmdClose");
    ASSERT_TRUE(Screen());
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_EQ(run.boxes.boxes[0].text,
              "You have not corrected all your errors!\n\nYou really want to exit?");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 4 + 32 + 256);
    Answer("really want to exit", Answer::Yes);
    Press("cmdClose");
    EXPECT_FALSE(Screen());
}

TEST_F(SecurityScreen, TakesOneClassLeftAtZeroAsTheWhole)
{
    OpenEdit("ZETA");
    NewClass({"AssetClass=Water"});
    EXPECT_EQ(Total(), "0.00%");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(InControl("SELECT AssetClass || PerCentAllocated FROM SecurityAssetClass WHERE "
                        "Symbol = 'ZETA'"),
              "Water1.0");
}

TEST_F(SecurityScreen, PassesTwoClassesThatMissOneHundredByHalfAPercent)
{
    OpenEdit("ZETA");
    NewClass({"AssetClass=Water", "PerCentAllocated=0.50"});
    NewClass({"AssetClass=Energy", "PerCentAllocated=0.495"});
    EXPECT_EQ(Total(), "99.50%");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(Text("txtSymbol"), "");
}

TEST_F(SecurityScreen, SpreadsTwoClassesThatReachNinetyPercentWhenToldTo)
{
    OpenEdit("ZETA");
    NewClass({"AssetClass=Water", "PerCentAllocated=0.5"});
    NewClass({"AssetClass=Energy", "PerCentAllocated=0.4"});
    EXPECT_EQ(Total(), "90.00%");
    Pick("SSTabAssetClass", "Security");
    Answer("evenly", Answer::Yes);
    Press("cmdOK");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 48);
    EXPECT_EQ(Boxes(), QStringList({NotWhole, EvenlyQuestion}));
    EXPECT_EQ(CurrentTab(), 1);
    EXPECT_EQ(Focused(), "txtPerCentAllocated");
    EXPECT_EQ(Part<QLineEdit>("txtPerCentAllocated")->selectedText(), Total());
    EXPECT_EQ(ClassRows(), "Water 50.00%; Energy 50.00%");
    EXPECT_EQ(Total(), "100.00%");
    EXPECT_EQ(Text("txtSymbol"), "ZETA"); // to be saved by the next OK
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(Text("txtSymbol"), "");
}

TEST_F(SecurityScreen, SpreadsThreeClassesEvenly)
{
    OpenEdit("ZETA");
    for (const char *name : {"Water", "Energy", "Cash"})
        NewClass({QStringLiteral("AssetClass=") + name, "PerCentAllocated=20%"});
    Answer("evenly", Answer::Yes);
    Press("cmdOK");
    EXPECT_EQ(ClassRows(), "Water 33.33%; Energy 33.33%; Cash 33.33%");
    EXPECT_EQ(Total(), "100.00%");
    Boxes();
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
}

TEST_F(SecurityScreen, LeavesTheClassesAsTheyAreWhenToldNotToSpreadThem)
{
    OpenEdit("ZETA");
    NewClass({"AssetClass=Water", "PerCentAllocated=0.5"});
    Answer("evenly", Answer::No);
    Press("cmdOK");
    EXPECT_EQ(ClassRows(), "Water 50.00%");
    EXPECT_EQ(InControl("SELECT COUNT(*) FROM SecurityAssetClass WHERE Symbol = 'ZETA'"), "0");
}

TEST_F(SecurityScreen, CountsARowWhoseClassWasRemovedAsZero)
{
    OpenEdit("ACME");
    NewClass({"AssetClass=Water", "PerCentAllocated=0.5"});
    Classes().SetCurrentRow(1);
    GridActions::EditCell(Classes(), "AssetClass", "");
    EXPECT_EQ(Total(), "150.00%");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList()); // 100 and 0
}

TEST_F(SecurityScreen, SavesASecurityWithoutClasses)
{
    OpenEdit("ZETA");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(Text("txtSymbol"), "");
}

// --- class grid ---------------------------------------------------------------------------------

TEST_F(SecurityScreen, AsksWhetherANewClassIsToStayInTheList)
{
    OpenEdit("ZETA");
    Answer("Add this new Asset Class", Answer::No);
    NewClass({"AssetClass=Wine"});
    EXPECT_EQ(Boxes(),
              QStringList("Add this new Asset Class '\nWine\n' permanently to the selection list?\n"
                          "\nNOTE: This will make it possible to view and select this new \n"
                          "asset class from the drop down list for all future selections."));
    EXPECT_EQ(ClassRows(), "Wine 0.00%"); // its own all the same
    EXPECT_EQ(Part<QComboBox>("dtlAssetClass")->findText("Wine"), -1);

    Answer("Add this new Asset Class", Answer::Yes);
    GridActions::EditCell(Classes(), "AssetClass", "L'Or");
    EXPECT_GE(Part<QComboBox>("dtlAssetClass")->findText("L'Or"), 0);
    EXPECT_EQ(InControl("SELECT Field04 || Field05 FROM ApplicationTable WHERE "
                        "TableName = 'AssetClass' AND Field08 = 'L''Or'"),
              "2026-03-022026-03-02");
    GridActions::EditCell(Classes(), "PerCentAllocated", "100%"); // not asked for again
    EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(SecurityScreen, SaysWhyANewClassDoesNotComeIntoTheList)
{
    OpenEdit("ZETA");
    State().databases.gConnApplControl.ExecuteScript(
        "CREATE TRIGGER Refuse BEFORE INSERT ON ApplicationTable "
        "BEGIN SELECT RAISE(ABORT, 'no room'); END");
    Answer("Add this new Asset Class", Answer::Yes);
    NewClass({"AssetClass=Wine"});
    EXPECT_EQ(Boxes().last(), "The new asset class could not be saved: no room. Nothing was "
                              "changed.");
    EXPECT_EQ(Part<QComboBox>("dtlAssetClass")->findText("Wine"), -1);
    EXPECT_TRUE(Classes().IsRowEdited());
    State().databases.gConnApplControl.ExecuteScript("DROP TRIGGER Refuse");
    Answer("Add this new Asset Class", Answer::Yes);
    EXPECT_TRUE(Classes().CommitRow());
    EXPECT_GE(Part<QComboBox>("dtlAssetClass")->findText("Wine"), 0);
    EXPECT_EQ(InControl("SELECT count(*) FROM ApplicationTable WHERE TableName = 'AssetClass' AND "
                        "Field08 = 'Wine'"),
              "1");
}

TEST_F(SecurityScreen, TakesAKnownClassInAnySpellingOfItsLetters)
{
    OpenEdit("ZETA");
    NewClass({"AssetClass= water "});
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(ClassRows(), "Water 0.00%");
}

TEST_F(SecurityScreen, PicksAClassFromItsDropDownList)
{
    OpenEdit("ZETA");
    Pick("dtlAssetClass", "Cash"); // in the empty row
    EXPECT_EQ(ClassRows(), "Cash 0.00%");
    EXPECT_EQ(Boxes(), QStringList());
    Classes().SetCurrentRow(0);
    Pick("dtlAssetClass", "Energy");
    EXPECT_EQ(ClassRows(), "Energy 0.00%");
}

TEST_F(SecurityScreen, OpensTheDropDownListFromTheKeyboard)
{
    OpenEdit("ACME");
    Pick("SSTabAssetClass", "Asset Class");
    Classes().SelectRow(0);
    WidgetActions::PressKey("Alt+Down");
    auto *list = Part<QComboBox>("dtlAssetClass");
    ASSERT_TRUE(list->view()->isVisible());
    EXPECT_EQ(list->view()->currentIndex().data().toString(), "Energy"); // the cell's own
    list->hidePopup();
}

TEST_F(SecurityScreen, DeletesAClassWithTheDeleteKey)
{
    OpenEdit("ACME");
    NewClass({"AssetClass=Water", "PerCentAllocated=1"});
    EXPECT_EQ(Total(), "200.00%");
    Classes().SelectRow(0);
    WidgetActions::PressKey("Delete");
    EXPECT_EQ(ClassRows(), "Water 100.00%");
    EXPECT_EQ(Total(), "100.00%");
    EXPECT_EQ(InControl("SELECT AssetClass FROM SecurityAssetClass WHERE Symbol = 'ACME'"),
              "Energy"); // until OK
    Press("cmdOK");
    EXPECT_EQ(InControl("SELECT group_concat(AssetClass) FROM SecurityAssetClass WHERE "
                        "Symbol = 'ACME'"),
              "Water");
}

TEST_F(SecurityScreen, KeepsARowInEditWhosePercentageIsNoNumber)
{
    OpenEdit("ACME");
    Pick("SSTabAssetClass", "Asset Class");
    Classes().SetCurrentRow(0);
    GridActions::EditCell(Classes(), "PerCentAllocated", "half");
    EXPECT_EQ(Boxes(), QStringList("Please enter the percentage as a number, such as 25% or 0.25"));
    EXPECT_TRUE(Classes().IsRowEdited());
    Press("cmdOK");
    EXPECT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Text("txtSymbol"), "ACME"); // not saved
    Classes().CancelRow();
    EXPECT_EQ(ClassRows(), "Energy 100.00%");
}

TEST_F(SecurityScreen, KeepsAllDigitsOfAShareThatWasNotTouched)
{
    OpenEdit("ZETA");
    NewClass({"AssetClass=Water", "PerCentAllocated=0.333333"});
    NewClass({"AssetClass=Energy", "PerCentAllocated=0.666667"});
    Classes().SetCurrentRow(0);
    GridActions::EditCell(Classes(), "AssetClass", "Cash");
    Press("cmdOK");
    EXPECT_EQ(InControl("SELECT round(PerCentAllocated, 6) FROM SecurityAssetClass WHERE "
                        "Symbol = 'ZETA'"),
              "0.333333");
}

// --- symbol and name of an edited security ------------------------------------------------------

TEST_F(SecurityScreen, RenamesASymbolInAllTablesAtOnce)
{
    OpenEdit("ACME");
    Type("txtSymbol", "A'CMÉ");
    EXPECT_EQ(Symbols()[0], "ACME"); // while it is being typed
    Tab();
    EXPECT_EQ(Symbols(),
              QStringList({"A'CMÉ", "A'CMÉ", "A'CMÉ,ZETA", "A'CMÉ,OTHER,ZETA", "A'CMÉ,OTHER"}));
    EXPECT_EQ(CurrentSymbol(), "A'CMÉ");
    EXPECT_EQ(TrackerRows(), "A'CMÉ=ACME Inc.; O'NEIL=O'NEIL Inc.; ZETA=ZETA Inc.");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(TrackerRows(), "A'CMÉ=ACME Inc.; O'NEIL=O'NEIL Inc.; ZETA=ZETA Inc.");
    EXPECT_EQ(State().gRsLots.SharesOf("A'CMÉ"), Single::FromFloat(100));
    Press("cmdClose");
    EXPECT_EQ(MarkedSymbol(), "A'CMÉ");
}

TEST_F(SecurityScreen, RenamesTheLotsOfThePostingThatWasStillOpen)
{
    Post(Action::Buy, "ACME", "10", "12");
    OpenEdit("ACME");
    Type("txtSymbol", "NEW");
    Press("cmdOK");
    EXPECT_EQ(Value("SELECT group_concat(Symbol || Shares) FROM PriceHistory WHERE "
                    "Symbol <> 'ZETA'"),
              "NEW100.0,NEW10.0");
    EXPECT_EQ(State().gRsLots.SharesOf("NEW"), Single::FromFloat(110));
    Press("cmdClose");
    State().selection = {"NEW", "ACME Inc."};
    Post(Action::Sell, "NEW", "110", "13");
    EXPECT_EQ(State().gRsLots.SharesOf("NEW"), Single());
    EXPECT_EQ(Cell("NEW", "Shares"), "0.0000");
}

TEST_F(SecurityScreen, ChangesTheNameEverywhere)
{
    OpenEdit("ACME");
    Type("txtName", "L'Acmé");
    Tab();
    EXPECT_EQ(Value("SELECT Name FROM History"), "L'Acmé");
    EXPECT_EQ(Value("SELECT Name FROM DailyProfitLoss"), "L'Acmé");
    EXPECT_EQ(InControl("SELECT Name FROM SecurityDetail WHERE Symbol = 'ACME'"), "L'Acmé");
    EXPECT_EQ(State().selection.CurrentName, "L'Acmé");
    Press("cmdOK");
    EXPECT_EQ(TrackerRows(), "ACME=L'Acmé; O'NEIL=O'NEIL Inc.; ZETA=ZETA Inc.");
}

TEST_F(SecurityScreen, FinishesARenameWhenItIsLeftWithoutOK)
{
    OpenEdit("ACME");
    Type("txtSymbol", "NEW");
    Tab();
    Press("cmdClose");
    EXPECT_EQ(TrackerRows(), "NEW=ACME Inc.; O'NEIL=O'NEIL Inc.; ZETA=ZETA Inc.");
    EXPECT_EQ(CurrentSymbol(), "NEW");
    EXPECT_EQ(Cell("NEW", "Shares"), "100.0000");
}

TEST_F(SecurityScreen, ThatCannotRenameSaysSoAndKeepsTheOldSymbol)
{
    OpenEdit("ACME");
    State().databases.gConnAccount.ExecuteScript("CREATE TRIGGER Refuse BEFORE UPDATE ON History "
                                                 "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    Type("txtSymbol", "NEW");
    Press("cmdOK"); // leaves the field first, and saves nothing then
    EXPECT_EQ(Boxes(), QStringList("The new symbol could not be saved: refused. Nothing was "
                                   "changed."));
    EXPECT_EQ(Symbols()[0], "ACME");
    EXPECT_EQ(TrackerRows(), AllRows);
    EXPECT_TRUE(Screen());
    EXPECT_EQ(CurrentSymbol(), "ACME");
}

TEST_F(SecurityScreen, GivesUpASymbolThatIsStillBeingTyped)
{
    OpenEdit("ACME");
    Type("txtSymbol", "NEW");
    Press("cmdClose");
    EXPECT_EQ(Symbols()[0], "ACME");
    EXPECT_EQ(TrackerRows(), AllRows);
    OpenEdit("ACME");
    Type("txtSymbol", "NEW");
    WidgetActions::PressKey("Esc");
    EXPECT_FALSE(Screen());
    EXPECT_EQ(Symbols()[0], "ACME");
}

TEST_F(SecurityScreen, MixesNoTwoSecuritiesOfThePortfolio)
{
    OpenEdit("ACME");
    Type("txtSymbol", "zeta");
    Tab();
    EXPECT_EQ(Symbols()[2], "ACME,ZETA");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList(Duplicate));
    EXPECT_EQ(TrackerRows(), AllRows);
    EXPECT_EQ(InControl("SELECT COUNT(*) FROM SecurityDetail"), "3");
    Type("txtSymbol", "ACM");
    Press("cmdOK");
    EXPECT_EQ(TrackerRows(), "ACM=ACME Inc.; O'NEIL=O'NEIL Inc.; ZETA=ZETA Inc.");
}

TEST_F(SecurityScreen, RenamesToACapitalLetter)
{
    OpenEdit("ACME");
    Type("txtSymbol", "Acme");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(TrackerRows(), "Acme=ACME Inc.; O'NEIL=O'NEIL Inc.; ZETA=ZETA Inc.");
}

TEST_F(SecurityScreen, SavesWithTheEnterKey)
{
    OpenEdit("ACME");
    Type("txtSymbol", "NEW");
    WidgetActions::PressKey("Return");
    EXPECT_EQ(TrackerRows(), "NEW=ACME Inc.; O'NEIL=O'NEIL Inc.; ZETA=ZETA Inc.");
    EXPECT_EQ(Text("txtSymbol"), "");
}

// --- from one to the next -----------------------------------------------------------------------

TEST_F(SecurityScreen, GoesOverToTheSecurityThatTheListOffers)
{
    OpenEdit("ACME");
    Pick("combSymbolList", "ZETA - ZETA Inc.");
    EXPECT_EQ(Text("txtSymbol"), "ZETA");
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(ClassRows(), "");
    Type("txtName", "Zeta & Co.");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(Text("txtSymbol"), "");
    EXPECT_EQ(TrackerRows(), "ACME=ACME Inc.; O'NEIL=O'NEIL Inc.; ZETA=Zeta & Co.");
}

TEST_F(SecurityScreen, LeavesThePortfolioAloneForASecurityOfAnotherAccount)
{
    OpenEdit("ACME");
    Pick("combSymbolList", "OTHER - Of Another Account");
    Pick("combSecurityType", "Future");
    Press("cmdOK");
    EXPECT_EQ(InControl("SELECT SecurityType FROM SecurityDetail WHERE Symbol = 'OTHER'"),
              "Future");
    EXPECT_EQ(TrackerRows(), AllRows);
    Press("cmdClose");
    EXPECT_EQ(CurrentSymbol(), "ACME");
}

TEST_F(SecurityScreen, RenamesNothingOnceTheFieldsAreClear)
{
    OpenEdit("ACME");
    Press("cmdOK");
    Type("txtSymbol", "NEW");
    Tab();
    EXPECT_EQ(Symbols()[0], "ACME");
    Type("txtName", "New");
    Pick("combSecurityType", "Stock");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList("Please enter a valid symbol"));
    Type("txtSymbol", "ZETA"); // a symbol that is known is gone over to
    Tab();
    EXPECT_EQ(Text("txtName"), "ZETA Inc.");
    Press("cmdOK");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(TrackerRows(), AllRows);
}

// --- on the way to a transaction ----------------------------------------------------------------

TEST_F(SecurityScreen, CompletesASecurityWithoutTypeOnTheWayToItsTransaction)
{
    run.WhenModal("frmSecurityUpdate", [&] {
        QCoreApplication::processEvents();
        EXPECT_EQ(Screen()->Caption(), "Security Edit");
        EXPECT_EQ(Text("txtSymbol"), "O'NEIL");
        Pick("combSecurityType", "Stock");
        Press("cmdOK");
        Press("cmdClose");
    });
    Grid().DoubleClickRow(Grid().RowCount() - 1);
    EXPECT_EQ(Boxes().size(), 1);
    EXPECT_FALSE(Screen());
    EXPECT_EQ(InControl("SELECT Name || SecurityType FROM SecurityDetail WHERE Symbol = 'O''NEIL'"),
              "O'NEIL Inc.Stock");
    Grid().DoubleClickRow(Grid().RowCount() - 1);
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_TRUE(run.App().Host().Loaded("frmTransactionUpdate"));
}

TEST_F(SecurityScreen, GivesARowWithoutTypeItsType)
{
    State().databases.gConnApplControl.Execute(
        "UPDATE SecurityDetail SET SecurityType = '' WHERE Symbol = 'ACME'");
    OpenEdit("ACME");
    EXPECT_EQ(Chosen("combSecurityType"), "");
    Pick("combSecurityType", "Option");
    Press("cmdOK");
    EXPECT_EQ(InControl("SELECT SecurityType FROM SecurityDetail WHERE Symbol = 'ACME'"), "Option");
}

TEST_F(SecurityScreen, LetsASecurityMadeAnIndexHoldNoBuy)
{
    OpenEdit("ZETA");
    Pick("combSecurityType", "Index");
    Press("cmdOK");
    const std::optional<QString> type = GetSecurityType(State().databases.gConnApplControl, "ZETA");
    ASSERT_TRUE(type);
    EXPECT_FALSE(ActionFitsType(Action::Buy, *type));
}

TEST_F(SecurityScreen, TellsTheEntryScreenOfNameAndType)
{
    Select("ACME");
    run.App().Host().Show("frmTransactionUpdate");
    OpenEdit("ACME");
    Type("txtName", "Acme & Co.");
    Pick("combSecurityType", "Index");
    Press("cmdOK");
    Press("cmdClose");
    run.App().Host().Show("frmTransactionUpdate");
    EXPECT_EQ(run.Control<QLineEdit>("frmTransactionUpdate", "txtName")->text(), "Acme & Co.");
    EXPECT_EQ(State().entry.CurrentSecurityType, "Index"); // which holds no Buy
}

// --- errors -------------------------------------------------------------------------------------

TEST_F(SecurityScreen, EndsTheProgramWhenTheSaveIsRefused)
{
    OpenNew();
    Type("txtSymbol", "NEW");
    Type("txtName", "New");
    Pick("combSecurityType", "Stock");
    State().databases.gConnApplControl.Execute(
        "CREATE TRIGGER Refuses BEFORE INSERT ON SecurityDetail "
        "BEGIN SELECT RAISE(ABORT, 'no room'); END");
    Press("cmdOK");
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_EQ(run.boxes.boxes[0].text, "Error number -2147467259\nDescription no room");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 16);
    EXPECT_FALSE(State().databases.gConnAccount.IsOpen());
    EXPECT_EQ(TrackerRows(), AllRows);
}
