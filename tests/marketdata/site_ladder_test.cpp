/// What a failed page leads to: another try, a login, another site, or the update switched off.

#include "cycle_run.h"

using Page = LoopbackServer::Page;
using Texts = std::vector<std::string>;

namespace
{

const std::string StartProvider = "65|Please start your Internet Service Provider (ISP) \n"
                                  "to obtain current prices.  'OK' when ready.";
const std::string TurnOff =
    "36|Would you like to turn off this feature for now? \n\n"
    "This feature will automatically become available next time \n"
    "the application is re-started or you may click on the Connect / Disconnet \n"
    "icon to reset it. You may also disable it permanently in the \n"
    "Setup screen.";
const std::string NoSiteLeft =
    "16|Attention: The Websites where this application obtains current\n"
    "price information are no longer functioning properly. This may be \n"
    "corrected by downloading the latest version of the WebSites database.\n"
    "The current price download feature will be disabled for now. ";
const std::string OtherWebsite =
    "49|The application will automatically switch you now to another website.  ";

std::string SwitchNotice(const std::string &site)
{
    return "49|Please note: The following web page where this application \n"
           "obtains current price information have changed, is \n"
           "invalid for your country of origin or is currently unavailable:\n\n" +
           site +
           "\n\nThe application will automatically switch you now to a similar \n"
           "website if available.";
}

/// One position of ACME; "Quotes" and "Similar" are of one group.
void GiveTwoSites(CycleRun &run)
{
    run.Site("Quotes", "/q").Site("Similar", "/s").Position("ACME", 100, 10);
    run.server.On("/s", Quotes({{"ACME", "13.00"}}));
}

} // namespace

// --- empty answers --------------------------------------------------------------------------------

TEST(SiteLadder, AsksForTheProviderOnAnEmptyAnswerAndTriesAgain)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", {Page(), Quotes({{"ACME", "12.50"}})});
    run.boxes.Prepare("ISP", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), Texts{StartProvider});
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
}

TEST(SiteLadder, SwitchesAtTheThirdEmptyAnswerInARow)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Page());
    run.boxes.Prepare("ISP", Answer::Ok);
    run.boxes.Prepare("ISP", Answer::Ok);
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), (Texts{StartProvider, StartProvider, SwitchNotice("Quotes")}));
    EXPECT_EQ(run.server.Requests("/q"), 3);
    EXPECT_EQ(run.account.CurrentWebSiteName, "Similar");
    EXPECT_EQ(run.PriceOf("ACME"), "13.0000");
    EXPECT_EQ(run.SiteColumn("Quotes", "DeselectFlagTemp"), "1");
    EXPECT_EQ(run.folder.Value(run.folder.SampleAccount(),
                               "SELECT Field08 FROM DescriptiveTable WHERE TableName = 'WebSite'"),
              "Similar");
    const QStringList texts = run.TakeStatus();
    for (const char *text : {"No connection...", "Obtaining alternate website...",
                             "Switching to Similar", "Success..."})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text))) << text;
}

TEST(SiteLadder, EndsTheCycleQuietlyAfterCancelAndNoAndWaitsForTheNextInterval)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", {Page(), Quotes({{"ACME", "12.50"}})});
    run.boxes.Prepare("ISP", Answer::Cancel);
    run.boxes.Prepare("turn off", Answer::No);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), (Texts{StartProvider, TurnOff}));
    EXPECT_TRUE(run.IsOn());
    EXPECT_EQ(run.Status(), "");
    EXPECT_EQ(run.state.ConnectionState, 1);
    EXPECT_EQ(run.state.LastError, 1003);
    EXPECT_TRUE(run.commands.Enabled("New"));
    run.Advance(65 * 5 - 1);
    EXPECT_EQ(run.server.Requests("/q"), 1);
    run.Advance(1);
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
}

TEST(SiteLadder, GoesOffAfterCancelAndYesAndComesBackAtTheNextStart)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Page());
    run.boxes.Prepare("ISP", Answer::Cancel);
    run.boxes.Prepare("turn off", Answer::Yes);
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn());
    EXPECT_EQ(run.state.LastError, 1001);
    EXPECT_TRUE(run.settings.WebPriceUpdate);
}

TEST(SiteLadder, SwitchesWithoutAPromptWhenTheThirdEmptyAnswerIsAnError)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", {Page(), Page(), Page().Status(503)});
    run.boxes.Prepare("ISP", Answer::Ok);
    run.boxes.Prepare("ISP", Answer::Ok);
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), (Texts{StartProvider, StartProvider, SwitchNotice("Quotes")}));
    EXPECT_EQ(run.PriceOf("ACME"), "13.0000");
}

TEST(SiteLadder, BeginsToCountEmptyAnswersAnewWhenTheUpdateIsSwitchedOnAgain)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Page().Status(503));
    for (int i = 0; i < 3; ++i) {
        run.FirstCycle();
        const Texts boxes = run.TakeBoxes();
        ASSERT_EQ(boxes.size(), 1u);
        EXPECT_EQ(boxes[0].substr(0, 69), "16|An Internet connection could not be established.\n"
                                          "ErrorCode: 503\nEr");
        EXPECT_FALSE(run.IsOn());
    }
    EXPECT_EQ(run.account.CurrentWebSiteName, "Quotes");
}

TEST(SiteLadder, CountsEmptyAnswersAcrossCyclesUntilAPageComes)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Page());
    for (int i = 0; i < 2; ++i) {
        run.boxes.Prepare("ISP", Answer::Cancel);
        run.boxes.Prepare("turn off", Answer::No);
    }
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    run.NextCycle();
    EXPECT_EQ(run.account.CurrentWebSiteName, "Quotes");
    run.NextCycle();
    EXPECT_EQ(run.account.CurrentWebSiteName, "Similar");
    EXPECT_EQ(run.PriceOf("ACME"), "13.0000");
}

// --- no connection --------------------------------------------------------------------------------

TEST(SiteLadder, ExplainsConnectionTypesWhenTheHostRefusesAndGoesOff)
{
    CycleRun run;
    GiveTwoSites(run);
    run.folder.Execute(run.folder.File("WebSites.mdb"),
                       QStringLiteral("UPDATE WebParameters SET BegWebAddress = '%1/q?s='")
                           .arg(LoopbackServer::RefusedOrigin()));
    run.FirstCycle();
    const Texts boxes = run.TakeBoxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0].substr(0, 55), "48|An error has occured obtaining current prices.\n12029");
    EXPECT_EQ(boxes[1], "64|A connection to the Internet could not be established.\n"
                        "Problems with connections can be attributed to the type of \n"
                        "internet connection you're using. Please go to the Setup \n"
                        "menu and check the appropriate connection type.  If you're behind a \n"
                        "a Firewall check 'Use Default Setting'. Check 'Proxy Server'\n"
                        "if you're using an ISP provider such as AOL or if you have direct\n"
                        "access to the Internet, check 'Direct access'.");
    EXPECT_FALSE(run.IsOn());
    EXPECT_TRUE(run.settings.WebPriceUpdate);
}

TEST(SiteLadder, AsksForTheProviderWhenTheNameDoesNotResolve)
{
    CycleRun run;
    GiveTwoSites(run);
    run.folder.Execute(
        run.folder.File("WebSites.mdb"),
        "UPDATE WebParameters SET BegWebAddress = 'http://no-such-host.invalid/?s='");
    run.account.LastPriceUpdate = run.clock.Today();
    run.boxes.Prepare("ISP", Answer::Cancel);
    run.boxes.Prepare("turn off", Answer::Yes);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), (Texts{StartProvider, TurnOff}));
}

TEST(SiteLadder, NamesCodeAndErrorOfAnyOtherFailureAndGoesOff)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Page::ResetsAtOnce());
    run.FirstCycle();
    const Texts boxes = run.TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u); // a reset connection posts no error of its own
    EXPECT_EQ(boxes[0].substr(0, 76), "16|An Internet connection could not be established.\n"
                                      "ErrorCode: 12031\nError: ");
    EXPECT_FALSE(run.IsOn());
}

TEST(SiteLadder, TakesNoPriceFromAPageThatWasCutOff)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Quotes({{"ACME", "12.50"}}).CloseAfter(209)); // "[ACME]$12"
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "10.0000");
    EXPECT_EQ(run.TakeBoxes().size(), 1u);
}

TEST(SiteLadder, TakesAnErrorPageForAPage)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Quotes({{"ACME", "12.50"}}).Status(404));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
}

// --- other sites ----------------------------------------------------------------------------------

TEST(SiteLadder, LeavesAGoodSiteForOneBadSymbol)
{
    CycleRun run;
    run.Site("Quotes", "/q").Site("Similar", "/s").Position("BAD", 1, 7);
    run.server.On("/q", Quotes({{"ACME", "12.50"}}));
    run.server.On("/s", Quotes({{"BAD", "8.00"}}));
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.account.CurrentWebSiteName, "Similar");
    EXPECT_EQ(run.PriceOf("BAD"), "8.0000");
    EXPECT_EQ(run.SiteColumn("Quotes", "DeselectFlagTemp"), "1");
}

TEST(SiteLadder, KeepsTheSiteAndGoesOffWhenTheUserRefusesToSwitch)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Quotes({}));
    run.boxes.Prepare("Please note", Answer::Cancel);
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn());
    EXPECT_EQ(run.account.CurrentWebSiteName, "Quotes");
    EXPECT_EQ(run.SiteColumn("Quotes", "DeselectFlagTemp"), "0");
    EXPECT_TRUE(run.settings.WebPriceUpdate);
}

TEST(SiteLadder, DisablesTheUpdateForTheNextStartWhenNoSiteOfTheGroupIsLeft)
{
    CycleRun run;
    run.Site("Quotes", "/q").Site("Another group", "/s", "SimilarSite = 2").Position("ACME", 1, 10);
    run.server.On("/q", Quotes({}));
    run.server.On("/s", Quotes({{"ACME", "13.00"}}));
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), (Texts{SwitchNotice("Quotes"), NoSiteLeft}));
    EXPECT_FALSE(run.IsOn());
    EXPECT_FALSE(run.settings.WebPriceUpdate);
    EXPECT_EQ(run.server.Requests("/s"), 0);
}

TEST(SiteLadder, TakesTheFirstSiteOfTheGroupByNameThatHasNotFailed)
{
    CycleRun run;
    run.Site("Quotes", "/q").Site("C", "/s").Site("B", "/b", "DeselectFlagPerm = 1");
    run.Site("A", "/a", "SimilarSite = 2").Site("D", "/d2").Position("ACME", 1, 10);
    run.server.On("/q", Quotes({}));
    run.server.On("/s", Quotes({{"ACME", "13.00"}}));
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.account.CurrentWebSiteName, "C");
}

TEST(SiteLadder, AsksWhetherToDisableASiteForGoodThatFailsTwiceInARun)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Quotes({}));
    run.server.On("/s", {Quotes({{"ACME", "13.00"}}), Quotes({})});
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    run.TakeBoxes();
    run.account.CurrentWebSiteName = "Quotes"; // picked again
    run.boxes.Prepare("Please note", Answer::Ok);
    run.boxes.Prepare("problems", Answer::Yes);
    run.boxes.Prepare("Please note", Answer::Ok); // the other one fails now, too
    run.NextCycle();
    const Texts boxes = run.TakeBoxes();
    ASSERT_EQ(boxes.size(), 5u);
    EXPECT_EQ(boxes[1], "36|You've had problems with this WebSite before: \nQuotes\n"
                        "Would you like to disable it permanently?");
    EXPECT_EQ(boxes[2], "64|To enable again, go to Setup under the File menu and \n"
                        "just select the website.");
    EXPECT_EQ(boxes[4], NoSiteLeft);
    EXPECT_EQ(run.SiteColumn("Quotes", "DeselectFlagPerm"), "1");
}

TEST(SiteLadder, KeepsTheMinutesBetweenUpdatesWhenItSwitches)
{
    CycleRun run;
    run.Site("Quotes", "/q").Site("Similar", "/s", "DelayTime = 30").Position("ACME", 1, 10);
    run.server.On("/q", Quotes({}));
    run.server.On("/s", Quotes({{"ACME", "13.00"}}));
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.account.WebUpdateMinutes.Value(), 5);
}

TEST(SiteLadder, AsksForAllSymbolsAgainOnTheNewSite)
{
    CycleRun run;
    run.Site("Quotes", "/q", "UpdateCount = 1").Site("Similar", "/s");
    run.Position("ACME", 1, 10).Position("BOND", 1, 10);
    run.server.On("/q", {Quotes({{"ACME", "12.50"}}), Page(), Page(), Page()});
    run.server.On("/s", Quotes({{"ACME", "13.00"}}));
    run.boxes.Prepare("ISP", Answer::Ok);
    run.boxes.Prepare("ISP", Answer::Ok);
    run.boxes.Prepare("Please note", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "13.0000");
    EXPECT_EQ(run.PriceOf("BOND"), "10.0000");
    EXPECT_EQ(run.server.LastRequest().Query("s"), "ACME,BOND");
}

// --- options --------------------------------------------------------------------------------------

TEST(SiteLadder, SwitchesWithoutNamingTheSiteWhenItCannotQuoteOptions)
{
    CycleRun run;
    run.Site("Quotes", "/q", "OptionPrefix = '', OptionSuffix = ''").Site("Similar", "/s");
    run.Position("ACME", 1, 10).Position("OPT", 1, 2, "Option");
    run.server.On("/s", Quotes({{"ACME", "13.00"}, {"OPT", "2.50"}}));
    run.boxes.Prepare("another website", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), (Texts{"48|The current selected website does not support\n"
                                      "option quotes!",
                                      OtherWebsite}));
    EXPECT_EQ(run.PriceOf("OPT"), "2.5000");
    EXPECT_EQ(run.server.Requests("/q"), 0);
}

TEST(SiteLadder, RunsOutOfSitesWhenTheFirstOfTheGroupCannotQuoteOptionsEither)
{
    CycleRun run;
    run.Site("Quotes", "/q", "OptionPrefix = ''").Site("A", "/a", "OptionPrefix = ''");
    run.Site("B", "/b").Position("OPT", 1, 2, "Option");
    run.boxes.Prepare("another website", Answer::Ok);
    run.FirstCycle();
    const Texts boxes = run.TakeBoxes();
    EXPECT_EQ(boxes.back(), NoSiteLeft);
    EXPECT_EQ(run.server.Requests("/b"), 0);
}

TEST(SiteLadder, TriesASiteOfWhichOneOptionFieldIsNullAndTheOtherEmpty)
{
    CycleRun run;
    run.Site("Quotes", "/q", "OptionPrefix = ''");
    run.Site("A", "/a", "OptionPrefix = NULL, OptionSuffix = ''");
    run.Site("B", "/b").Position("OPT", 1, 2, "Option");
    run.server.On("/b", Quotes({{"OPT", "2.50"}}));
    run.boxes.Prepare("another website", Answer::Ok);
    run.boxes.Prepare("another website", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.account.CurrentWebSiteName, "B");
    EXPECT_EQ(run.PriceOf("OPT"), "2.5000");
}

TEST(SiteLadder, TakesTheFormOfAnOptionOffAgain)
{
    CycleRun run;
    run.Site("Quotes", "/q", "OptionPrefix = '.', OptionSuffix = ''");
    run.Position("ACME", 1, 10).Position("OPT", 1, 2, "Option");
    run.server.On("/q", Quotes({{"ACME", "13.00"}, {".OPT", "2.50"}}));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("OPT"), "2.5000");
    EXPECT_EQ(run.server.LastRequest().Query("s"), "ACME,.OPT");
}

TEST(SiteLadder, LosesTheRowOfAnOptionWhoseFormIsCutAtTenCharacters)
{
    CycleRun run;
    run.Site("Quotes", "/q", "OptionPrefix = 'LONG.'");
    run.Position("ACME", 1, 10).Position("OPTION9", 1, 2, "Option").Position("ZED", 1, 3);
    run.server.On("/q", Quotes({{"ACME", "13.00"}, {"LONG.OPTIO", "2.50"}, {"ZED", "4.00"}}));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "13.0000");
    EXPECT_EQ(run.PriceOf("OPTION9"), "2.0000");
    EXPECT_EQ(run.PriceOf("ZED"), "3.0000"); // behind it no row matches
}

// --- logins ---------------------------------------------------------------------------------------

TEST(SiteLadder, AsksForTheLoginOfASiteThatNeedsOne)
{
    CycleRun run;
    // By name not the first: the site that sorts first is taken as it is.
    run.Site("Quotes", "/q", "SignUpURL = 'http://127.0.0.1/join'").Site("A", "/a");
    run.Position("ACME", 1, 10);
    run.server.On("/q", Quotes({{"ACME", "12.50"}}).AskLogin("me", "secret"));
    run.screens->OnLogin = [&] {
        run.state.LoginCancelled = false;
        run.state.WebLoginId = "me";
        run.state.WebPassword = "secret";
    };
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
    EXPECT_EQ(run.screens->log.count("login"), 1);
    run.NextCycle();
    EXPECT_EQ(run.screens->log.count("login"), 1); // known for this run
}

TEST(SiteLadder, AsksAgainWhenThePageRefusesTheLogin)
{
    CycleRun run;
    run.Site("Quotes (paid)", "/q", "SignUpURL = 'http://127.0.0.1/join'").Site("A", "/a");
    run.account.CurrentWebSiteName = "Quotes (paid)";
    run.Position("ACME", 1, 10);
    run.server.On("/q", Quotes({{"ACME", "12.50"}}).AskLogin("me", "secret"));
    int times = 0;
    run.screens->OnLogin = [&] {
        run.state.LoginCancelled = false;
        run.state.WebLoginId = "me";
        run.state.WebPassword = ++times == 1 ? "wrong" : "secret";
    };
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(),
              Texts{"48|Login authorization failed!\n"
                    "Please enter the proper Login ID and password for\nwebsite: Quotes "});
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
}

TEST(SiteLadder, TakesTheWordAuthorizationOnAnOpenSiteForARefusedLogin)
{
    CycleRun run;
    GiveTwoSites(run);
    run.server.On("/q", Page("[ACME]$12.50; Authorization is not needed here"));
    run.boxes.Prepare("another website", Answer::Ok);
    run.FirstCycle(); // the login is cancelled
    EXPECT_EQ(run.TakeBoxes()[1], OtherWebsite);
    EXPECT_EQ(run.account.CurrentWebSiteName, "Similar");
    EXPECT_EQ(run.PriceOf("ACME"), "13.0000");
}

TEST(SiteLadder, SwitchesWhenTheFirstLoginIsDeclined)
{
    CycleRun run;
    run.Site("Quotes", "/q", "SignUpURL = 'http://127.0.0.1/join'").Site("A", "/s");
    run.Position("ACME", 1, 10);
    run.server.On("/s", Quotes({{"ACME", "13.00"}}));
    run.state.WebPassword = "old";
    run.boxes.Prepare("another website", Answer::Ok);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), Texts{OtherWebsite});
    EXPECT_EQ(run.PriceOf("ACME"), "13.0000");
    EXPECT_EQ(run.state.WebPassword, "");
    EXPECT_EQ(run.server.Requests("/q"), 0);
}

// --- time-out -------------------------------------------------------------------------------------

TEST(SiteLadder, ExplainsATimeOutAndGoesOff)
{
    CycleRun run;
    GiveTwoSites(run);
    run.requestTimeout = std::chrono::milliseconds(100);
    run.server.On("/q", Page::NeverAnswers());
    run.FirstCycle();
    const Texts boxes = run.TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].substr(0, 38), "48|Error number 35761\nDescription: Req");
    EXPECT_NE(boxes[0].find("\nA time out may be due to the type of connection specified \n"
                            "in the User Setup options or the website is not responding. \n"
                            "Change the connection type if this is the first time executing the \n"
                            "application or change the website in User Setup."),
              std::string::npos);
    EXPECT_FALSE(run.IsOn());
    EXPECT_EQ(run.state.LastError, 35761);
}
