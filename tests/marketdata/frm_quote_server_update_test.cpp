/// The quote site editor in the whole program: cells, rows, what the price cycle sees of them, and
/// its file of rows.

#include "marketdata/frm_quote_server_update.h"

#include "quote_editor_run.h"

#include <QLabel>

namespace
{

/// Two sites; the first one is in use.
class QuoteEditor : public QuoteEditorRun
{
protected:
    QuoteEditor()
    {
        Site(1, "First site (US)");
        Site(2, "Second site");
        SiteInUse("First site (US)");
    }
    const QString Count = "Characters to Price";
    const QString DeleteQuestion = "Your are about to delete the selected row.  You will not \n"
                                   "be able to undo this action. Continue anyway?";
    /// As the cycle has the name of the site that gRsWebParameters stands on.
    QStringList SitesOfTheCycle()
    {
        Recordset &sites = State().databases.gRsWebParameters;
        QStringList names;
        for (sites.MoveFirst(); !sites.AtEnd(); sites.MoveNext())
            names << sites.Text("WebSiteName");
        return names;
    }
};

} // namespace

// --- coming and going ---------------------------------------------------------------------------

TEST_F(QuoteEditor, ShowsEverySiteUnderTheCaptionsOfItsQuery)
{
    OpenEditor();
    EXPECT_EQ(Sites().Captions(),
              QStringList({"ID", "website Name", "Begin Address", "End Address",
                           "Address Characters", "Symbol Begin Text", "Symbol End Text",
                           "Characters to Price", "Price Begin Text", "Price End Text",
                           "Delay Time", "Update Count", "Service Flag", "Sign Up URL",
                           "Option Prefix", "Option Suffix", "Similar WebSite"}));
    EXPECT_EQ(SiteNames(), QStringList({"First site (US)", "Second site"}));
    EXPECT_EQ(SiteCell("Second site", "Service Flag"), "False");
    EXPECT_EQ(SiteCell("Second site", "ID"), "2");
    EXPECT_EQ(Editor()->Caption(), "Quote Server Update");
    EXPECT_TRUE(run.Commands().Checked("mnuVWQuoteServerUpdate"));
    ASSERT_TRUE(CloseEditor());
    EXPECT_FALSE(run.Commands().Checked("mnuVWQuoteServerUpdate"));
    EXPECT_EQ(Status(), "");
}

TEST_F(QuoteEditor, ShowsAnEmptyTableAndTakesItsFirstSite)
{
    folder.Execute(WebSites(), "DELETE FROM WebParameters");
    OpenEditor();
    EXPECT_EQ(Sites().RowCount(), 0);
    GridActions::FillNewRow(Sites(), {"website Name=Only site"});
    EXPECT_EQ(SiteNames(), QStringList("Only site"));
    EXPECT_EQ(SitesOfTheCycle(), QStringList("Only site"));
}

TEST_F(QuoteEditor, OpensByAltQOnTheDailyTracker)
{
    Position("ACME", 100, "10", "12");
    Open();
    Select("ACME");
    Press("Alt+Q");
    EXPECT_NE(Editor(), nullptr);
}

TEST_F(QuoteEditor, TakesNineTenthsOfTheWidthAndEightOfTheHeight)
{
    Open();
    State().run.ScreenWidth = 1000;
    State().run.ScreenHeight = 700;
    frmQuoteServerUpdate screen(State());
    EXPECT_EQ(screen.sizeHint(), QSize(900, 560));
}

TEST_F(QuoteEditor, StopsThePriceCycleWhileItIsOpenAndStartsItAgain)
{
    Open();
    run.AddScreen("frmInternetTran", Placement::Hidden);
    run.App().Host().Load("frmInternetTran");
    State().priceUpdate.PriceUpdateActive = true;
    run.log.clear();
    run.Choose("mnuVWQuoteServerUpdate");
    EXPECT_EQ(run.log, QStringList("unload frmInternetTran"));
    EXPECT_EQ(Status(), "Current price update option temporarily disabled!");
    State().priceUpdate.PriceUpdateActive = false; // as its unload leaves it
    State().run.IdleMinutes = 7;
    ASSERT_TRUE(CloseEditor());
    EXPECT_EQ(run.log, QStringList({"unload frmInternetTran", "load frmInternetTran"}));
    EXPECT_EQ(Status(), "Enabling the current price update option");
    EXPECT_EQ(State().run.IdleMinutes, 0);
}

TEST_F(QuoteEditor, LeavesAPriceUpdateThatIsOffAlone)
{
    Open();
    run.AddScreen("frmInternetTran", Placement::Hidden);
    State().services.status.Post("Something before");
    run.Choose("mnuVWQuoteServerUpdate");
    EXPECT_EQ(Status(), "");
    ASSERT_TRUE(CloseEditor());
    EXPECT_EQ(run.log, QStringList());
    EXPECT_EQ(Status(), "");
}

TEST_F(QuoteEditor, BlanksTheToolTipOfTheGridAfterAMouseUp)
{
    OpenEditor();
    EXPECT_FALSE(Sites().toolTip().isEmpty());
    GoTo("Second site");
    EXPECT_TRUE(Sites().toolTip().isEmpty());
}

// --- cells and rows -----------------------------------------------------------------------------

TEST_F(QuoteEditor, StoresAChangedRowWhenItIsLeftAndShowsItToTheCycleAtOnce)
{
    OpenEditor();
    GoTo("Second site");
    ASSERT_TRUE(Sites().EditCell(Place("website Name"), "Renamed"));
    EXPECT_EQ(InSites("SELECT WebSiteName FROM WebParameters WHERE ID = 2"), "Second site");
    Sites().SelectRow(0);
    EXPECT_EQ(InSites("SELECT WebSiteName FROM WebParameters WHERE ID = 2"), "Renamed");
    EXPECT_EQ(SitesOfTheCycle(), QStringList({"First site (US)", "Renamed"}));
}

TEST_F(QuoteEditor, GivesSitesThatFailedInThisRunAFreshChanceAfterAChange)
{
    OpenEditor();
    folder.Execute(WebSites(), "UPDATE WebParameters SET DeselectFlagTemp = 1, "
                               "DeselectFlagPerm = 1 WHERE ID = 1");
    GoTo("Second site");
    GridActions::EditCell(Sites(), "Delay Time", "7");
    EXPECT_EQ(InSites("SELECT DeselectFlagTemp FROM WebParameters WHERE ID = 1"), "0");
    EXPECT_EQ(InSites("SELECT DeselectFlagPerm FROM WebParameters WHERE ID = 1"), "1");
}

TEST_F(QuoteEditor, TakesEveryColumnButTheId)
{
    OpenEditor();
    GoTo("Second site");
    EXPECT_FALSE(Sites().EditCell(Place("ID"), "9"));
    const QStringList values = {"Name", "http://a/", "?b", "+",    "<c>",       "</c>", "77", "<d>",
                                "</d>", "3",         "20", "True", "http://e/", "@",    ".X", "8"};
    for (int i = 0; i < values.size(); ++i)
        ASSERT_TRUE(Sites().EditCell(i + 1, values[i])) << i;
    ASSERT_TRUE(Sites().CommitRow());
    EXPECT_EQ(InSites("SELECT WebSiteName || BegWebAddress || EndWebAddress || "
                      "AddressBuildCharacters || SymbolBegText || SymbolEndText || CharToPrice || "
                      "PriceBegText || PriceEndText || DelayTime || UpdateCount || ServiceFlag || "
                      "SignUpURL || OptionPrefix || OptionSuffix || SimilarSite "
                      "FROM WebParameters WHERE ID = 2"),
              "Namehttp://a/?b+<c></c>77<d></d>3201http://e/@.X8");
    for (int i = 0; i < values.size(); ++i)
        EXPECT_EQ(Sites().CellText(1, i + 1), values[i]);
}

TEST_F(QuoteEditor, KeepsApostrophesQuotesAccentsAndBlanksAsTheyStand)
{
    OpenEditor();
    const QString texts[] = {"O'Neil's \"Kurse\" für Zürich", "<td class=\"pr'ice\"> ", " ",
                             "%1 &amp;", "日本 ☂ \\n"};
    for (const QString &text : texts) {
        Sites().SelectRow(1);
        GridActions::EditCell(Sites(), "Price Begin Text", text);
        EXPECT_EQ(InSites("SELECT PriceBegText FROM WebParameters WHERE ID = 2"), text);
        EXPECT_EQ(Sites().CellText(1, Place("Price Begin Text")), text);
    }
}

TEST_F(QuoteEditor, GivesANewRowItsId)
{
    OpenEditor();
    GridActions::FillNewRow(Sites(), {"website Name=Third site", "Update Count=20"});
    EXPECT_EQ(SiteCell("Third site", "ID"), "3");
    EXPECT_EQ(SiteCell("Third site", "Update Count"), "20");
    EXPECT_EQ(SiteCell("Third site", "Service Flag"), "False");
    EXPECT_EQ(InSites("SELECT DeselectFlagTemp + DeselectFlagPerm FROM WebParameters WHERE ID = 3"),
              "0");
    EXPECT_TRUE(SitesOfTheCycle().contains("Third site"));
}

TEST_F(QuoteEditor, StoresAnEmptiedUpdateCountAsNothingUntilTheSiteIsUsed)
{
    OpenEditor();
    GoTo("Second site");
    GridActions::EditCell(Sites(), "Update Count", "");
    EXPECT_EQ(InSites("SELECT UpdateCount IS NULL FROM WebParameters WHERE ID = 2"), "1");
    EXPECT_EQ(SiteCell("Second site", "Update Count"), "");
    State().account.CurrentWebSiteName = "Second site";
    SelectSiteInUse(State().databases, State().account, QString(), State().services);
    EXPECT_EQ(InSites("SELECT UpdateCount FROM WebParameters WHERE ID = 2"), "5");
}

TEST_F(QuoteEditor, RefusesAValueThatItsColumnCannotTakeAndKeepsTheRowAsItWasTyped)
{
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"Delay Time", "soon", "whole number from -32,768 to 32,767 in the column \"Delay Time\""},
        {"Update Count", "40000", "in the column \"Update Count\""},
        {"Similar WebSite", "1 2 3 x", "\"1 2 3 x\" cannot be stored there"},
        {"Service Flag", "perhaps", "True or False in the column \"Service Flag\""},
    };
    OpenEditor();
    for (const auto &[column, value, message] : cases) {
        SCOPED_TRACE(column);
        Sites().SelectRow(1);
        Sites().EditCell(Place("website Name"), "Changed, too");
        Sites().EditCell(Place(column), value);
        Sites().SelectRow(0);
        ASSERT_EQ(run.boxes.boxes.size(), 1u);
        EXPECT_TRUE(run.boxes.boxes[0].text.contains(message)) << qPrintable(run.boxes.Texts()[0]);
        EXPECT_EQ(run.boxes.boxes[0].title, "Quote Server Update Editor");
        run.boxes.boxes.clear();
        EXPECT_EQ(Sites().CurrentRow(), 1);
        EXPECT_EQ(Sites().CellText(1, Place(column)), value);
        EXPECT_EQ(Sites().CellText(1, Place("website Name")), "Changed, too");
        EXPECT_EQ(InSites("SELECT WebSiteName FROM WebParameters WHERE ID = 2"), "Second site");
        Press("Escape");
        EXPECT_EQ(Sites().CellText(1, Place("website Name")), "Second site");
    }
}

TEST_F(QuoteEditor, ReadsTheFlagInTheWordsThatPeopleUse)
{
    OpenEditor();
    const std::pair<const char *, const char *> words[] = {
        {"yes", "True"},    {"no", "False"}, {"-1", "True"}, {"0", "False"},
        {" true ", "True"}, {"", "False"},   {"1", "True"}};
    for (const auto &[typed, shown] : words) {
        SCOPED_TRACE(typed);
        Sites().SelectRow(1);
        GridActions::EditCell(Sites(), "Service Flag", typed);
        EXPECT_EQ(Sites().CellText(1, Place("Service Flag")), shown);
    }
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(QuoteEditor, KeepsTheRowAsItWasTypedWhenTheFileIsLocked)
{
    OpenEditor();
    Connection other;
    other.Open(WebSites());
    other.BeginTrans();
    GoTo("Second site");
    GridActions::EditCell(Sites(), "website Name", "Renamed");
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.Texts()[0], "The row could not be stored: database is locked.\n"
                                    "It stays as you typed it.");
    EXPECT_TRUE(Sites().IsRowEdited());
    other.RollbackTrans();
    EXPECT_TRUE(Sites().CommitRow());
    EXPECT_EQ(InSites("SELECT WebSiteName FROM WebParameters WHERE ID = 2"), "Renamed");
}

TEST_F(QuoteEditor, StoresTheRowInEditWhenTheScreenCloses)
{
    OpenEditor();
    GoTo("Second site", "website Name");
    TypeText("Renamed");
    ASSERT_TRUE(CloseEditor());
    EXPECT_EQ(InSites("SELECT WebSiteName FROM WebParameters WHERE ID = 2"), "Renamed");
}

TEST_F(QuoteEditor, AsksBeforeItClosesOverARowThatCannotBeStored)
{
    OpenEditor();
    GoTo("Second site");
    Sites().EditCell(Place("Delay Time"), "soon");
    run.boxes.Prepare("are not stored", Answer::No);
    EXPECT_FALSE(CloseEditor());
    EXPECT_EQ(Sites().CellText(1, Place("Delay Time")), "soon");
    run.boxes.Prepare("are not stored", Answer::Yes);
    EXPECT_TRUE(CloseEditor());
    EXPECT_EQ(InSites("SELECT DelayTime FROM WebParameters WHERE ID = 2"), "5");
}

// --- characters to price ------------------------------------------------------------------------

TEST_F(QuoteEditor, TurnsAPastedTextOf57CharactersInto67)
{
    OpenEditor();
    GoTo("Second site", Count);
    Paste(QString(50, 'x') + "\n12.50\n");
    Press("Tab"); // leaves the cell
    EXPECT_EQ(SiteCell("Second site", Count), "67");
    Sites().SelectRow(0);
    EXPECT_EQ(InSites("SELECT CharToPrice FROM WebParameters WHERE ID = 2"), "67");
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(QuoteEditor, LeavesAPastedTextOf3CharactersWhichIsThenAnInvalidNumber)
{
    OpenEditor();
    GoTo("Second site", Count);
    Paste("abc");
    Press("Tab");
    EXPECT_EQ(SiteCell("Second site", Count), "abc");
    Sites().SelectRow(0);
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_TRUE(run.boxes.Texts()[0].contains("Characters to Price"));
    EXPECT_EQ(Sites().CurrentRow(), 1);
    EXPECT_EQ(SiteCell("Second site", Count), "abc");
}

TEST_F(QuoteEditor, CountsAPastedTextOf4CharactersAs14)
{
    OpenEditor();
    GoTo("Second site", Count);
    Paste("abcd");
    Press("Tab");
    EXPECT_EQ(SiteCell("Second site", Count), "14");
}

TEST_F(QuoteEditor, TurnsATyped1000Into14AndLeaves999)
{
    OpenEditor();
    GoTo("Second site", Count);
    TypeText("1000");
    Press("Tab");
    EXPECT_EQ(SiteCell("Second site", Count), "14");
    GoTo("Second site", Count);
    TypeText("999");
    Press("Tab");
    EXPECT_EQ(SiteCell("Second site", Count), "999");
}

TEST_F(QuoteEditor, LeavesALongNumberAloneWhenItsCellIsOnlyPassed)
{
    folder.Execute(WebSites(), "UPDATE WebParameters SET CharToPrice = 1500 WHERE ID = 2");
    OpenEditor();
    GoTo("Second site", Count);
    OpenCell();
    Press("Tab");
    Sites().SelectRow(0);
    EXPECT_EQ(InSites("SELECT CharToPrice FROM WebParameters WHERE ID = 2"), "1500");
}

TEST_F(QuoteEditor, RefusesACountThatIsLargerThanThePageIsRead)
{
    OpenEditor();
    GoTo("Second site", Count);
    Paste(QString(32760, 'x'));
    Sites().SelectRow(0);
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_TRUE(run.boxes.Texts()[0].contains("\"32770\" cannot be stored"));
}

TEST_F(QuoteEditor, DropsAllKeysButDigitsInCharactersToPriceAndInNoOtherColumn)
{
    OpenEditor();
    GoTo("Second site", Count);
    TypeText("-1x2,.3 /");
    EXPECT_EQ(qobject_cast<QLineEdit *>(QApplication::focusWidget())->text(), "123");
    Press("Backspace");
    EXPECT_EQ(qobject_cast<QLineEdit *>(QApplication::focusWidget())->text(), "12");
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_X, Qt::ControlModifier, QString(QChar(24)));
    qobject_cast<QLineEdit *>(QApplication::focusWidget())->selectAll();
    QApplication::sendEvent(QApplication::focusWidget(), &copy); // no cut: 24 is not among them
    EXPECT_EQ(qobject_cast<QLineEdit *>(QApplication::focusWidget())->text(), "12");
    Press("Escape");
    Press("Escape");
    GoTo("Second site", "Symbol End Text");
    TypeText("-x,. /");
    EXPECT_EQ(qobject_cast<QLineEdit *>(QApplication::focusWidget())->text(), "-x,. /");
}

TEST_F(QuoteEditor, OpensTheCellByTypingADigitAndTakesItsTextBackWithEscape)
{
    OpenEditor();
    GoTo("Second site", Count);
    Press("7");
    Press("5");
    Press("Escape");
    EXPECT_EQ(SiteCell("Second site", Count), "60");
    Press("7");
    Press("5");
    Press("Return");
    EXPECT_EQ(SiteCell("Second site", Count), "75");
}

// --- delete -------------------------------------------------------------------------------------

TEST_F(QuoteEditor, DeletesARowAfterTheQuestion)
{
    OpenEditor();
    GoTo("Second site");
    run.boxes.Prepare("delete the selected row", Answer::Yes);
    Press("Delete");
    EXPECT_EQ(TakeBoxes(), QStringList("Transaction History Editor|292|" + DeleteQuestion));
    EXPECT_EQ(SiteNames(), QStringList("First site (US)"));
    EXPECT_EQ(InSites("SELECT count(*) FROM WebParameters"), "1");
    EXPECT_EQ(SitesOfTheCycle(), QStringList("First site (US)"));
}

TEST_F(QuoteEditor, KeepsTheRowAndItsChangesWhenTheDeleteIsAnsweredNo)
{
    OpenEditor();
    GoTo("Second site");
    Sites().EditCell(Place("Delay Time"), "7");
    run.boxes.Prepare("delete the selected row", Answer::No);
    Press("Delete");
    EXPECT_EQ(SiteCell("Second site", "Delay Time"), "7");
    ASSERT_TRUE(Sites().CommitRow());
    EXPECT_EQ(InSites("SELECT DelayTime FROM WebParameters WHERE ID = 2"), "7");
}

TEST_F(QuoteEditor, DeletesNothingOnTheEmptyRow)
{
    OpenEditor();
    ASSERT_TRUE(Sites().GoToNewRow());
    Press("Delete");
    EXPECT_TRUE(run.boxes.boxes.empty());
    EXPECT_EQ(Sites().RowCount(), 2);
}

TEST_F(QuoteEditor, FallsBackOnTheSiteWithId1WhenTheRowOfTheSiteInUseIsDeleted)
{
    LoopbackServer server;
    server.On("/q", LoopbackServer::Page("[ACME]$12.50;"));
    folder.Execute(WebSites(),
                   "UPDATE WebParameters SET BegWebAddress = '" + server.Address("/q?s=") + "'");
    Execute("UPDATE DescriptiveTable SET Field08 = 'Second site' WHERE TableName = 'WebSite'");
    Execute("UPDATE DescriptiveTable SET Field05 = '2026-03-02' WHERE TableName = 'Balance'");
    Position("ACME", 100, "10", "11");
    run.SetOption("AccessType", "3").SetOption("ShowReminderScreen", "0");
    OpenEditor();
    GoTo("Second site");
    run.boxes.Prepare("delete the selected row", Answer::Yes);
    Press("Delete");
    ASSERT_TRUE(CloseEditor());
    run.Choose("Connect");
    run.clock.Advance(std::chrono::seconds(5));
    EXPECT_EQ(State().account.CurrentWebSiteName, "First site (US)");
    EXPECT_EQ(Value("SELECT Field08 FROM DescriptiveTable WHERE TableName = 'WebSite'"),
              "First site (US)");
    EXPECT_EQ(Cell("ACME", "Price"), "12.5000");
}

TEST_F(QuoteEditor, NamesTheSiteOfTheCurrentRowBelowTheGrid)
{
    OpenEditor();
    const auto named = [this] {
        return run.Control<QLabel>("frmQuoteServerUpdate", "lblSite")->text();
    };
    EXPECT_EQ(named(), "First site (US)");
    GoTo("Second site", "Similar WebSite");
    EXPECT_EQ(named(), "Second site");
    GridActions::EditCell(Sites(), "website Name", "Renamed");
    EXPECT_EQ(named(), "Renamed");
    run.boxes.Prepare("delete the selected row", Answer::Yes);
    Press("Delete");
    EXPECT_EQ(named(), "First site (US)");
    ASSERT_TRUE(Sites().GoToNewRow());
    EXPECT_EQ(named(), "");
}

TEST_F(QuoteEditor, StartsACycleFiveSecondsAfterItIsLeftWithTheUpdateOn)
{
    LoopbackServer server;
    server.On("/q", LoopbackServer::Page("[ACME]$12.50;"));
    Execute("UPDATE DescriptiveTable SET Field05 = '2026-03-02' WHERE TableName = 'Balance'");
    Position("ACME", 100, "10", "11");
    run.SetOption("AccessType", "3").SetOption("ShowReminderScreen", "0");
    Open();
    run.Choose("Connect");
    ASSERT_TRUE(State().priceUpdate.PriceUpdateActive);
    run.Choose("mnuVWQuoteServerUpdate");
    EXPECT_FALSE(State().priceUpdate.PriceUpdateActive);
    GoTo("First site (US)");
    GridActions::EditCell(Sites(), "Begin Address", server.Address("/q?s="));
    run.clock.Advance(std::chrono::minutes(30));
    EXPECT_EQ(server.Requests().size(), 0);
    ASSERT_TRUE(CloseEditor());
    EXPECT_TRUE(State().priceUpdate.PriceUpdateActive);
    run.clock.Advance(std::chrono::seconds(4));
    EXPECT_EQ(server.Requests().size(), 0);
    run.clock.Advance(std::chrono::seconds(1));
    EXPECT_EQ(Cell("ACME", "Price"), "12.5000");
    EXPECT_TRUE(run.boxes.boxes.empty());
}

// --- look ---------------------------------------------------------------------------------------

TEST_F(QuoteEditor, KeepsTheGridColourThatTheUserPicksFromItsPopup)
{
    OpenEditor();
    EXPECT_EQ(State().settings.QSDataGridColor, 0xFFFFFF);
    run.boxes.color = 0x204060;
    run.Choose("popQSQuoteGridColor");
    EXPECT_EQ(Sites().BackColor() & RGB_MASK, 0x204060u);
    EXPECT_EQ(State().settings.QSDataGridColor, 0x604020);
    run.boxes.color = std::nullopt;
    run.Choose("popQSQuoteGridColor");
    EXPECT_EQ(Sites().BackColor() & RGB_MASK, 0x204060u);
    ASSERT_TRUE(CloseEditor());
    run.Choose("mnuVWQuoteServerUpdate");
    EXPECT_EQ(Sites().BackColor() & RGB_MASK, 0x204060u);
}

// --- a file of rows -----------------------------------------------------------------------------

TEST_F(QuoteEditor, SavesItsRowsAndLoadsThemAgain)
{
    const QString file = folder.File("rows.json");
    OpenEditor();
    run.boxes.files = {file, file};
    WidgetActions::Click(run.Control<QWidget>("frmQuoteServerUpdate", "cmdSaveRows"));
    EXPECT_TRUE(Status().startsWith("Quote sites saved to "));
    GoTo("First site (US)");
    GridActions::EditCell(Sites(), "Delay Time", "9");
    GoTo("Second site");
    run.boxes.Prepare("delete the selected row", Answer::Yes);
    Press("Delete");
    TakeBoxes();

    WidgetActions::Click(run.Control<QWidget>("frmQuoteServerUpdate", "cmdLoadRows"));
    EXPECT_EQ(TakeBoxes(), QStringList("Quote Server Update Editor|64|Quote sites replaced: 1\n"
                                       "Quote sites added: 1"));
    EXPECT_EQ(SiteNames(), QStringList({"First site (US)", "Second site"}));
    EXPECT_EQ(SiteCell("First site (US)", "Delay Time"), "5");
    EXPECT_EQ(SitesOfTheCycle(), QStringList({"First site (US)", "Second site"}));
}

TEST_F(QuoteEditor, ChangesNothingWhenTheFileOfRowsIsBad)
{
    OpenEditor();
    run.boxes.files = {folder.AddFile("bad.json", "[{\"ID\": 1, \"WebSiteName\": \"New\", "
                                                  "\"DelayTime\": \"soon\"}]"),
                       folder.File("missing.json"), std::nullopt};
    for (int file = 0; file < 3; ++file)
        WidgetActions::Click(run.Control<QWidget>("frmQuoteServerUpdate", "cmdLoadRows"));
    ASSERT_EQ(run.boxes.boxes.size(), 2u); // none for the cancelled dialog
    for (const QString &text : run.boxes.Texts())
        EXPECT_TRUE(text.startsWith("The rows could not be loaded. Nothing was changed.\n"));
    EXPECT_TRUE(run.boxes.Texts()[0].contains("DelayTime"));
    EXPECT_EQ(SiteNames(), QStringList({"First site (US)", "Second site"}));
}

TEST_F(QuoteEditor, AsksBeforeItReplacesAFileAndSaysWhenItCannotWrite)
{
    const QString file = folder.AddFile("rows.json", "mine");
    OpenEditor();
    run.boxes.files = {file, folder.File("no/such/folder/rows.json")};
    run.boxes.Prepare("Replace it?", Answer::No);
    for (int save = 0; save < 2; ++save)
        WidgetActions::Click(run.Control<QWidget>("frmQuoteServerUpdate", "cmdSaveRows"));
    QFile kept(file);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "mine");
    ASSERT_EQ(run.boxes.boxes.size(), 2u);
    EXPECT_TRUE(run.boxes.Texts()[1].startsWith("The rows could not be saved.\n"));
}

TEST_F(QuoteEditor, LeavesTheRowInEditBeforeItLoadsOrTests)
{
    OpenEditor();
    GoTo("Second site");
    Sites().EditCell(Place("Delay Time"), "soon");
    for (const char *button : {"cmdTestRow", "cmdLoadRows", "cmdSaveRows"}) {
        WidgetActions::Click(run.Control<QWidget>("frmQuoteServerUpdate", button));
        EXPECT_EQ(run.boxes.boxes.size(), 1u) << button; // why the row cannot be stored
        run.boxes.boxes.clear();
    }
    EXPECT_TRUE(run.boxes.fileRequests.empty());
    EXPECT_FALSE(run.App().Host().Loaded("frmQuoteSiteTrial"));
}
