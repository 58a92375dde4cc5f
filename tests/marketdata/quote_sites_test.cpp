/// The quote site in use: found by its name, replaced when it is gone, picked anew.

#include "print_qt.h"
#include "test_app_folder.h"
#include "test_services.h"

#include "marketdata/quote_sites.h"
#include "store/control_rows.h"

#include <gtest/gtest.h>

namespace
{

/// Four sites, opened as at the start of a run; the account has chosen "Cobalt".
class SiteInUse : public testing::Test
{
protected:
    SiteInUse()
    {
        Sites(
            "INSERT INTO WebParameters (ID, WebSiteName, UpdateCount, DelayTime, SignUpURL) VALUES "
            "(7, 'Amber (first by name)', NULL, 3, 'http://amber.example/join'), "
            "(1, 'Basalt (delayed)', NULL, 4, ''), (4, 'Cobalt', NULL, 5, NULL), "
            "(5, 'Dolomite (paid)  ', 12, 6, 'http://dolomite.example/join')");
        m_account.CurrentWebSiteName = "Cobalt";
        m_account.WebUpdateMinutes = Integer::FromWide(5);
    }
    void Sites(const QString &sql) { m_folder.Execute(m_folder.File("WebSites.mdb"), sql); }
    QString Site(const QString &sql) { return m_folder.Value(m_folder.File("WebSites.mdb"), sql); }
    QString Stored(const char *field)
    {
        return m_folder.Value(m_folder.SampleAccount(),
                              QStringLiteral("SELECT %1 FROM DescriptiveTable WHERE TableName = "
                                             "'WebSite'")
                                  .arg(field));
    }

    void Open()
    {
        Settings settings;
        settings.CurrentFilePath = m_folder.SampleAccount();
        settings.AccountName = "Sample Portfolio";
        OpenDatabases(m_databases, settings, m_account, m_machine.services);
    }
    /// Opens the databases and selects; true when a login is needed.
    bool Select(const QString &name, const QString &loginId = {})
    {
        m_account.CurrentWebSiteName = name;
        if (!Rows().IsOpen())
            Open();
        return SelectSiteInUse(m_databases, m_account, loginId, m_machine.services);
    }
    Recordset &Rows() { return m_databases.gRsWebParameters; }
    QString Current() { return Rows().Text(QStringLiteral("WebSiteName")); }

    TestAppFolder m_folder;
    TestServices m_machine{m_folder.Path()};
    AccountState m_account;
    PriceUpdateState m_state;
    Databases m_databases;
};

using PickedSite = SiteInUse;
using SiteRow = SiteInUse;

} // namespace

TEST_F(SiteInUse, IsFoundByItsName)
{
    EXPECT_FALSE(Select("Cobalt"));
    EXPECT_EQ(Current(), "Cobalt");
    EXPECT_EQ(m_account.CurrentWebSiteId, 4);
    EXPECT_EQ(m_account.CurrentWebSiteName, "Cobalt");
    EXPECT_EQ(Stored("COUNT(*)"), "0"); // nothing to save
}

TEST_F(SiteInUse, IsFoundWhateverBlanksAreAtTheEndOfTheNames)
{
    Select("Cobalt   ");
    EXPECT_EQ(Current(), "Cobalt");
    Select("Dolomite (paid)");
    EXPECT_EQ(m_account.CurrentWebSiteId, 5);
    Select(" Cobalt"); // blanks before the name count
    EXPECT_EQ(m_account.CurrentWebSiteId, 1);
}

TEST_F(SiteInUse, IsNotFoundByAnotherCaseOrByTheNameWithoutItsRemark)
{
    Select("cobalt");
    EXPECT_EQ(Current(), "Basalt (delayed)");
    Select("Dolomite");
    EXPECT_EQ(Current(), "Basalt (delayed)");
}

TEST_F(SiteInUse, GetsFiveSymbolsARequestWhenItsCountIsEmpty)
{
    Select("Cobalt");
    EXPECT_EQ(CurrentSite(Rows()).UpdateCount, 5);
    EXPECT_EQ(Site("SELECT UpdateCount FROM WebParameters WHERE ID = 4"), "5");
    Select("Dolomite (paid)", "ann");
    EXPECT_EQ(Site("SELECT UpdateCount FROM WebParameters WHERE ID = 5"), "12");
}

TEST_F(SiteInUse, KeepsACountOfZero)
{
    Sites("UPDATE WebParameters SET UpdateCount = 0 WHERE ID = 4");
    Select("Cobalt");
    EXPECT_EQ(Site("SELECT UpdateCount FROM WebParameters WHERE ID = 4"), "0");
}

TEST_F(SiteInUse, IsTakenAsItIsWhenItSortsFirst)
{
    m_account.CurrentWebSiteId = 99;
    EXPECT_FALSE(Select("Amber (first by name)  ")); // although it needs a login
    EXPECT_EQ(Current(), "Amber (first by name)");
    EXPECT_EQ(m_account.CurrentWebSiteId, 99);
    EXPECT_EQ(Site("SELECT COUNT(*) FROM WebParameters WHERE UpdateCount IS NULL AND ID = 7"), "1");
}

TEST_F(SiteInUse, NeedsALoginWhenItHasASignUpPageAndNoneIsKnown)
{
    EXPECT_TRUE(Select("Dolomite (paid)"));
    EXPECT_FALSE(Select("Dolomite (paid)", "ann"));
    EXPECT_FALSE(Select("Cobalt"));
}

TEST_F(SiteInUse, IsReplacedByTheOneWithIdOneWhenItsNameIsGone)
{
    EXPECT_FALSE(Select("Granite"));
    EXPECT_EQ(Current(), "Basalt (delayed)");
    EXPECT_EQ(m_account.CurrentWebSiteName, "Basalt (delayed)");
    EXPECT_EQ(m_account.CurrentWebSiteId, 1);
    EXPECT_EQ(CurrentSite(Rows()).UpdateCount, 5);
    EXPECT_EQ(Stored("Field08"), "Basalt (delayed)"); // the choice is saved, without a word
    EXPECT_EQ(Stored("Field06"), "5");                // the minutes stay
    EXPECT_TRUE(m_machine.dialogs.TakeBoxes().empty());
}

TEST_F(SiteInUse, IsReplacedForThisRunWhenTheChoiceCannotBeSaved)
{
    Open();
    m_folder.Execute(m_folder.SampleAccount(), "DROP TABLE DescriptiveTable");
    Select("Granite");
    EXPECT_EQ(Current(), "Basalt (delayed)");
    EXPECT_EQ(m_account.CurrentWebSiteName, "Basalt (delayed)");
    const std::vector<std::string> boxes = m_machine.dialogs.TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_NE(
        boxes[0].find("An error has been encountered while updating the WebSite.mdb \n"
                      "database. Please take note of this message and contact TechSupport.\n"),
        std::string::npos)
        << boxes[0];
}

TEST_F(SiteInUse, IsReplacedAlsoWhenTheReplacementSortsFirst)
{
    Sites("UPDATE WebParameters SET ID = 100 WHERE ID = 1");
    Sites("UPDATE WebParameters SET ID = 1 WHERE ID = 7");
    EXPECT_TRUE(Select("Granite")); // no shortcut here: the login is asked for
    EXPECT_EQ(Current(), "Amber (first by name)");
    EXPECT_EQ(Site("SELECT UpdateCount FROM WebParameters WHERE ID = 1"), "5");
}

TEST_F(SiteInUse, IsAnErrorWhenNoRowCanReplaceIt)
{
    Sites("DELETE FROM WebParameters WHERE ID = 1");
    try {
        Select("Granite");
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), RuntimeError::NoCurrentRecordNumber);
    }
    EXPECT_TRUE(Rows().AtEnd());
    EXPECT_EQ(m_account.CurrentWebSiteName, "Granite");
    EXPECT_EQ(Stored("COUNT(*)"), "0");
}

TEST_F(SiteInUse, IsAnErrorInAnEmptyTable)
{
    Sites("DELETE FROM WebParameters");
    EXPECT_THROW(Select("Cobalt"), RuntimeError);
    EXPECT_THROW(CurrentSite(Rows()), RuntimeError);
    EXPECT_FALSE(FindSite(Rows(), "Cobalt"));
}

TEST_F(SiteInUse, IsTheFirstOfTwoRowsOfItsName)
{
    Sites("INSERT INTO WebParameters (ID, WebSiteName, UpdateCount) VALUES (9, 'Cobalt', 1)");
    Open();
    ASSERT_TRUE(FindSite(Rows(), "Cobalt"));
    EXPECT_EQ(Rows().Position(), 2); // behind Amber and Basalt
    EXPECT_FALSE(FindSite(Rows(), "Granite"));
    EXPECT_TRUE(Rows().AtEnd());
}

TEST_F(SiteInUse, OfAnAccountWithoutAChoiceIsTheLastYahooFinanceByName)
{
    Sites("INSERT INTO WebParameters (ID, WebSiteName, UpdateCount, DelayTime) VALUES "
          "(20, 'Yahoo Finance Zeta', 1, 8), (21, 'Yahoo Finance Alpha', 1, 7), "
          "(22, 'zz Yahoo finance', 1, 9)");
    m_account.CurrentWebSiteName.clear();
    Open();
    EXPECT_FALSE(SelectSiteInUse(m_databases, m_account, {}, m_machine.services));
    EXPECT_EQ(Current(), "Yahoo Finance Zeta");
    EXPECT_EQ(m_account.CurrentWebSiteId, 20);
    EXPECT_EQ(m_account.WebUpdateMinutes.Value(), 8);
}

TEST_F(SiteRow, IsReadWithAllItsColumns)
{
    Sites(
        "INSERT INTO WebParameters VALUES (30, 'Echo (all)', 'http://e.example/?s=', '&f=1 ', '+', "
        "' <s>', '</s> ', 120, '<p>', '</p>', 15, 20, 1, 'http://e.example/join', 'None', '.O', 3, "
        "1, 1)");
    Open();
    ASSERT_TRUE(FindSite(Rows(), "Echo (all)"));
    // A failed site gets a fresh chance at the start, a disabled one stays so.
    const QuoteSite site = CurrentSite(Rows());
    EXPECT_FALSE(site.DeselectFlagTemp);
    EXPECT_TRUE(site.DeselectFlagPerm);
    EXPECT_EQ(site.ID, 30);
    EXPECT_EQ(site.WebSiteName, "Echo (all)");
    EXPECT_EQ(site.BegWebAddress, "http://e.example/?s=");
    EXPECT_EQ(site.EndWebAddress, "&f=1 ");
    EXPECT_EQ(site.AddressBuildCharacters, "+");
    EXPECT_EQ(site.SymbolBegText, " <s>");
    EXPECT_EQ(site.SymbolEndText, "</s> ");
    EXPECT_EQ(site.CharToPrice, 120);
    EXPECT_EQ(site.PriceBegText, "<p>");
    EXPECT_EQ(site.PriceEndText, "</p>");
    EXPECT_EQ(site.DelayTime, 15);
    EXPECT_EQ(site.UpdateCount, 20);
    EXPECT_TRUE(site.ServiceFlag);
    EXPECT_EQ(site.SignUpURL, "http://e.example/join");
    EXPECT_EQ(site.OptionPrefix, "None");
    EXPECT_EQ(site.OptionSuffix, ".O");
    EXPECT_EQ(site.SimilarSite, 3);
}

TEST_F(SiteRow, ReadsNullsAsEmptyTextsAndZeros)
{
    Open();
    ASSERT_TRUE(FindSite(Rows(), "Cobalt"));
    const QuoteSite site = CurrentSite(Rows());
    EXPECT_EQ(site.BegWebAddress, "");
    EXPECT_EQ(site.UpdateCount, 0);
    EXPECT_EQ(site.CharToPrice, 0);
    EXPECT_FALSE(site.ServiceFlag);
}

TEST_F(PickedSite, IsNoLongerDisabledAndReportsMissingSymbolsAnew)
{
    Sites("UPDATE WebParameters SET DeselectFlagPerm = 1");
    m_state.NotFoundList = ", ACME, BOLT, ";
    Open();
    const std::optional<QuoteSite> site = PickSite(Rows(), "Dolomite (paid)", m_state);
    ASSERT_TRUE(site);
    EXPECT_EQ(site->DelayTime, 6);
    EXPECT_FALSE(site->DeselectFlagPerm);
    EXPECT_EQ(site->SignUpURL, "http://dolomite.example/join");
    EXPECT_EQ(m_state.NotFoundList, "");
    EXPECT_EQ(Site("SELECT group_concat(ID) FROM WebParameters WHERE DeselectFlagPerm = 0"), "5");
    EXPECT_EQ(m_account.CurrentWebSiteName, "Cobalt"); // until the settings are accepted
}

TEST_F(PickedSite, ChangesNothingWhenTheNameIsGone)
{
    Sites("UPDATE WebParameters SET DeselectFlagPerm = 1");
    m_state.NotFoundList = ", ACME, ";
    Open();
    EXPECT_FALSE(PickSite(Rows(), "Granite", m_state));
    EXPECT_EQ(m_state.NotFoundList, ", ACME, ");
    EXPECT_EQ(Site("SELECT COUNT(*) FROM WebParameters WHERE DeselectFlagPerm = 0"), "0");
}

TEST(ShortSiteName, EndsBeforeTheFirstParenthesis)
{
    EXPECT_EQ(ShortSiteName("Practice quotes (simulated by this program)"), "Practice quotes ");
    EXPECT_EQ(ShortSiteName("Plain"), "Plain");
    EXPECT_EQ(ShortSiteName("A (b) (c)"), "A ");
    EXPECT_EQ(ShortSiteName("(remark)"), "");
    EXPECT_EQ(ShortSiteName(""), "");
}

TEST(WithoutBlanks, KeepsLineBreaksAndInnerBlanks)
{
    EXPECT_EQ(WithoutBlanks("  a b  "), "a b");
    EXPECT_EQ(WithoutBlanks(" \n<td>\t "), "\n<td>\t");
    EXPECT_EQ(WithoutBlanks("   "), "");
    EXPECT_EQ(WithoutBlanks(""), "");
}
