/// The test of a row of the quote site editor, with pages from a server on this machine.

#include "marketdata/frm_quote_site_trial.h"

#include "quote_editor_run.h"

#include <QPlainTextEdit>
#include <QTimer>

namespace
{

using Page = LoopbackServer::Page;

class QuoteSiteTrial : public QuoteEditorRun
{
protected:
    QuoteSiteTrial()
    {
        Position("ACME", 100, "10", "12");
        run.SetOption("AccessType", "3");
    }
    /// Opens the editor, presses "Test this row…" on the site and does the rest in the dialog,
    /// which is closed then.
    void InTrialOf(const QString &site, const std::function<void()> &act)
    {
        OpenEditor();
        Select("ACME");
        run.Choose("mnuVWQuoteServerUpdate");
        GoTo(site);
        bool done = false;
        run.WhenModal("frmQuoteSiteTrial", [&] {
            act();
            done = true;
            if (run.App().Host().Loaded("frmQuoteSiteTrial"))
                Click("cmdClose");
        });
        WidgetActions::Click(run.Control<QWidget>("frmQuoteServerUpdate", "cmdTestRow"));
        EXPECT_TRUE(done);
        EXPECT_FALSE(run.App().Host().Loaded("frmQuoteSiteTrial"));
    }
    template <class Widget>
    Widget *Part(const char *name)
    {
        return run.Control<Widget>("frmQuoteSiteTrial", name);
    }
    void Click(const char *button) { WidgetActions::Click(Part<QWidget>(button)); }
    QString Text(const char *name) { return Part<QPlainTextEdit>(name)->toPlainText(); }
    QString Field(const char *name) { return Part<QLineEdit>(name)->text(); }
    /// The texts that are marked, in their order.
    QStringList Marked()
    {
        QStringList texts;
        for (const QTextEdit::ExtraSelection &mark :
             Part<QPlainTextEdit>("txtReply")->extraSelections())
            texts << mark.cursor.selectedText();
        return texts;
    }

    LoopbackServer server;
};

} // namespace

TEST_F(QuoteSiteTrial, ShowsAddressReplyPlacesAndPriceOfTheSelectedSymbol)
{
    Site(1, "Quotes", server.Address("/q?s="));
    server.On("/q?s=ACME", Page("<p>\r\n[ACME] $12.50; \x01 USD</p>"));
    InTrialOf("Quotes", [this] {
        EXPECT_EQ(Field("txtSymbol"), "ACME");
        Click("cmdTest");
        EXPECT_EQ(Text("txtAddress"), server.Address("/q?s=ACME"));
        EXPECT_EQ(Field("txtPrice"), "12.5");
        EXPECT_TRUE(Text("txtFindings")
                        .startsWith("A reply of 29 characters came. HTTP status 200.\n"
                                    "Symbol: “[ACME]” stands at character 6."))
            << qPrintable(Text("txtFindings"));
        EXPECT_EQ(Text("txtReply"), "<p> \n[ACME] $12.50; \uFFFD USD</p>");
        EXPECT_EQ(Marked(), QStringList({"ACME", "$", "12.50", ";"}));
    });
    EXPECT_TRUE(run.boxes.boxes.empty());
    EXPECT_EQ(Cell("ACME", "Price"), "12.0000"); // nothing is stored
}

TEST_F(QuoteSiteTrial, TestsTheRowAsItWasJustTyped)
{
    Site(1, "Quotes");
    server.On("/q", Page("[ACME] $12.50;"));
    OpenEditor();
    GoTo("Quotes");
    Sites().EditCell(Place("Begin Address"), server.Address("/q?s="));
    run.WhenModal("frmQuoteSiteTrial", [this] {
        WidgetActions::Type(Part<QWidget>("txtSymbol"), "acme");
        Press("Return");
        EXPECT_EQ(Field("txtPrice"), "12.5");
        Press("Escape");
    });
    Press("Alt+T");
    EXPECT_EQ(server.Requests("/q"), 1);
    EXPECT_FALSE(run.App().Host().Loaded("frmQuoteSiteTrial"));
}

TEST_F(QuoteSiteTrial, ServesThePracticeSiteAndShowsThePortThatItsRowFollowedTo)
{
    Site(1, "Practice", "http://127.0.0.1:8917/quotes?s=");
    folder.Execute(WebSites(), "UPDATE WebParameters SET SymbolBegText = '<td class=\"sym\">', "
                               "SymbolEndText = '</td>', PriceBegText = '<td class=\"last\">', "
                               "PriceEndText = '</td>', CharToPrice = 120");
    InTrialOf("Practice", [this] {
        Click("cmdTest");
        EXPECT_GT(Field("txtPrice").toDouble(), 0);
    });
    const QString address = InSites("SELECT BegWebAddress FROM WebParameters");
    EXPECT_EQ(address, State().practiceServer.Origin() + "/quotes?s=");
    EXPECT_EQ(SiteCell("Practice", "Begin Address"), address);
}

TEST_F(QuoteSiteTrial, SaysInWordsWhyNoReplyCame)
{
    Site(1, "Refused", LoopbackServer::RefusedOrigin() + "/q?s=");
    InTrialOf("Refused", [this] {
        Click("cmdTest");
        EXPECT_TRUE(Text("txtFindings").startsWith("No reply came. Code 12029: "))
            << qPrintable(Text("txtFindings"));
        EXPECT_EQ(Field("txtPrice"), "");
        EXPECT_EQ(Text("txtReply"), "");
    });
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(QuoteSiteTrial, ShowsTheBodyOfAnErrorReplyAndAnEmptyReply)
{
    Site(1, "Quotes", server.Address("/q?s="));
    server.On("/q?s=GONE", Page("no such symbol").Status(404));
    server.On("/q?s=NONE", Page());
    InTrialOf("Quotes", [this] {
        WidgetActions::Type(Part<QWidget>("txtSymbol"), "GONE");
        Click("cmdTest");
        EXPECT_EQ(Text("txtReply"), "no such symbol");
        EXPECT_TRUE(Text("txtFindings").contains("No price was taken"));
        EXPECT_TRUE(Text("txtFindings").contains("HTTP status 404."));
        WidgetActions::Type(Part<QWidget>("txtSymbol"), "NONE");
        Click("cmdTest");
        EXPECT_EQ(Text("txtFindings"), "The site sent an empty reply. HTTP status 200.");
        EXPECT_EQ(Text("txtReply"), "");
    });
}

TEST_F(QuoteSiteTrial, AsksForASecondSymbolWhereTheRowTakesSeveralAtOnce)
{
    Position("BOND", 5, "10", "12");
    Site(1, "Quotes", server.Address("/q?s="));
    folder.Execute(WebSites(), "UPDATE WebParameters SET UpdateCount = 20");
    server.On("/q?s=ACME,BOND", Page("[ACME] $12.50; [BOND] $99.00;"));
    server.On("/q?s=BOND,ZETA", Page("[BOND] $99.00;"));
    InTrialOf("Quotes", [this] {
        Click("cmdTest");
        EXPECT_EQ(Field("txtPrice"), "12.5");
        EXPECT_TRUE(Text("txtFindings").contains("Second symbol of the request, BOND:"));
        EXPECT_TRUE(Text("txtFindings").contains("Price: 99 was taken from “99.00”."));
        WidgetActions::Type(Part<QWidget>("txtSymbol"), "BOND, ZETA");
        Click("cmdTest");
        EXPECT_EQ(Field("txtPrice"), "99");
        EXPECT_TRUE(Text("txtFindings").contains("this price stands at the head of the reply"))
            << qPrintable(Text("txtFindings")); // ZETA would get the price of BOND
    });
}

TEST_F(QuoteSiteTrial, AsksForOneSymbolWhereTheRowTakesNoMore)
{
    Position("BOND", 5, "10", "12");
    Site(1, "Quotes", server.Address("/q?s="));
    folder.Execute(WebSites(), "UPDATE WebParameters SET UpdateCount = 1");
    server.On("/q?s=ACME", Page("[ACME] $12.50;"));
    InTrialOf("Quotes", [this] {
        Click("cmdTest");
        EXPECT_EQ(Field("txtPrice"), "12.5");
        EXPECT_FALSE(Text("txtFindings").contains("Second symbol"));
    });
}

TEST_F(QuoteSiteTrial, ForgetsThePriceOfTheSymbolBefore)
{
    Site(1, "Quotes", server.Address("/q?s="));
    server.On("/q?s=ACME", Page("[ACME] $12.50;"));
    server.On("/q?s=ZZZZ", Page("nothing here"));
    InTrialOf("Quotes", [this] {
        Click("cmdTest");
        EXPECT_EQ(Field("txtPrice"), "12.5");
        WidgetActions::Type(Part<QWidget>("txtSymbol"), "ZZZZ");
        Click("cmdTest");
        EXPECT_EQ(Field("txtPrice"), "");
        EXPECT_EQ(Marked(), QStringList());
    });
}

TEST_F(QuoteSiteTrial, ShowsTheFirst40000CharactersOfALongReply)
{
    Site(1, "Quotes", server.Address("/q?s="));
    server.On("/q", Page("[ACME] $12.50;" + QByteArray(50'000, 'x')));
    InTrialOf("Quotes", [this] {
        Click("cmdTest");
        EXPECT_EQ(Text("txtReply").size(), 40'000);
        EXPECT_EQ(Field("txtPrice"), "12.5");
        EXPECT_TRUE(
            Text("txtFindings").startsWith("A reply of 50,014 characters came. HTTP status 200."));
    });
}

TEST_F(QuoteSiteTrial, AsksForASymbolWhenThereIsNone)
{
    Site(1, "Quotes", server.Address("/q?s="));
    InTrialOf("Quotes", [this] {
        WidgetActions::Type(Part<QWidget>("txtSymbol"), "");
        Click("cmdTest");
    });
    EXPECT_EQ(run.boxes.Texts(), QStringList("Please enter the symbol to ask for."));
    EXPECT_EQ(server.Requests().size(), 0);
}

TEST_F(QuoteSiteTrial, SaysThatTheSiteCannotQuoteOptions)
{
    folder.Execute(folder.File("ApplControl.xxx"),
                   "INSERT INTO SecurityDetail VALUES ('ACME', 'ACME', 'Option')");
    Site(1, "Quotes", server.Address("/q?s="));
    folder.Execute(WebSites(), "UPDATE WebParameters SET OptionPrefix = ''");
    InTrialOf("Quotes", [this] {
        Click("cmdTest");
        EXPECT_TRUE(Text("txtFindings").contains("no way to quote an option"));
    });
    EXPECT_EQ(server.Requests().size(), 0);
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(QuoteSiteTrial, SendsTheLoginOfTheSiteInUseToNoOtherSite)
{
    Site(1, "Member site", server.Address("/m?s="));
    Site(2, "Other site", server.Address("/m?s="));
    SiteInUse("Member site");
    folder.Execute(WebSites(), "UPDATE WebParameters SET SignUpURL = 'http://sign.example/'");
    server.On("/m", Page("[ACME] $12.50;").AskLogin("me", "secret"));
    const auto test = [this] {
        State().priceUpdate.WebLoginId = "me";
        State().priceUpdate.WebPassword = "secret";
        Click("cmdTest");
    };
    InTrialOf("Member site", [&] {
        test();
        EXPECT_EQ(Field("txtPrice"), "12.5");
    });
    run.WhenModal("frmQuoteSiteTrial", [&] {
        test();
        EXPECT_EQ(Field("txtPrice"), "");
        EXPECT_TRUE(Text("txtFindings").contains("This site needs a login"));
        Click("cmdClose");
    });
    GoTo("Other site");
    WidgetActions::Click(run.Control<QWidget>("frmQuoteServerUpdate", "cmdTestRow"));
    EXPECT_EQ(server.LastRequest().Header("authorization"), "");
}

TEST_F(QuoteSiteTrial, EndsATransferThatIsUnderWayWhenItIsClosed)
{
    Site(1, "Slow", server.Address("/never?s="));
    server.On("/never", Page::NeverAnswers());
    server.OnRequest = [this](const LoopbackServer::Request &) {
        QTimer::singleShot(0, Part<QWidget>("cmdClose"), [this] { Click("cmdClose"); });
    };
    InTrialOf("Slow", [this] {
        Click("cmdTest");
        EXPECT_EQ(Part<QWidget>("cmdTest"), nullptr); // closed by now
    });
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(QuoteSiteTrial, NeedsTheRowOfASite)
{
    Site(1, "Quotes");
    OpenEditor();
    ASSERT_TRUE(Sites().GoToNewRow());
    WidgetActions::Click(run.Control<QWidget>("frmQuoteServerUpdate", "cmdTestRow"));
    EXPECT_EQ(run.boxes.Texts(), QStringList("Please select the row of a quote site first."));
    EXPECT_FALSE(run.App().Host().Loaded("frmQuoteSiteTrial"));
}

TEST_F(QuoteSiteTrial, NamesItsControlsForAScreenReader)
{
    Site(1, "Quotes");
    InTrialOf("Quotes", [this] {
        for (const char *name : {"txtSymbol", "txtPrice", "txtAddress", "txtFindings", "txtReply"})
            EXPECT_FALSE(Part<QWidget>(name)->accessibleName().isEmpty()) << name;
        QCoreApplication::processEvents(); // the window becomes the active one
        EXPECT_EQ(QApplication::focusWidget(), Part<QWidget>("txtSymbol"));
    });
}
