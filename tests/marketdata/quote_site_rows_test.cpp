/// Quote sites in a text file: loaded, refused, saved.

#include "print_qt.h"
#include "test_app_folder.h"

#include "marketdata/quote_site_rows.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace
{

/// A table with two sites: 1 "Alpha" and 2 "Beta".
class SiteFile : public testing::Test
{
protected:
    SiteFile()
    {
        m_sites.Open(m_folder.File("WebSites.mdb"));
        m_sites.ExecuteScript("INSERT INTO WebParameters (ID, WebSiteName, BegWebAddress, "
                              "CharToPrice, DeselectFlagPerm) VALUES "
                              "(1, 'Alpha', 'http://a.example/', 100, 1), "
                              "(2, 'Beta', 'http://b.example/', 200, 0)");
    }
    QString Write(const QByteArray &json) { return m_folder.AddFile("rows.json", json); }
    LoadedRows Load(const QByteArray &json) { return LoadQuoteSiteRows(m_sites, Write(json)); }
    /// "ID|name|address|characters|disabled" by ID.
    QStringList Stored()
    {
        QStringList rows;
        Statement select = m_sites.Prepare(
            "SELECT ID, WebSiteName, ifnull(BegWebAddress, 'null'), ifnull(CharToPrice, 'null'), "
            "DeselectFlagPerm FROM WebParameters ORDER BY ID");
        while (select.Step()) {
            QStringList fields;
            for (int i = 0; i < select.ColumnCount(); ++i)
                fields << select.Text(i);
            rows << fields.join("|");
        }
        return rows;
    }
    /// The message of a load that must change nothing.
    QString Refused(const QByteArray &json)
    {
        const QStringList before = Stored();
        QString message = "(loaded)";
        try {
            Load(json);
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.Number(), RuntimeError::InvalidArgumentNumber);
            message = error.Description();
        }
        EXPECT_EQ(Stored(), before) << json.constData();
        EXPECT_FALSE(m_sites.InTransaction());
        return message;
    }

    TestAppFolder m_folder;
    Connection m_sites;
};

using LoadedSites = SiteFile;
using RefusedSites = SiteFile;
using SavedSites = SiteFile;

constexpr const char *Alpha = "1|Alpha|http://a.example/|100|1";
constexpr const char *Beta = "2|Beta|http://b.example/|200|0";

} // namespace

TEST_F(LoadedSites, ReplaceTheRowOfTheirId)
{
    const LoadedRows loaded = Load(R"({"rows": [{"row": {"ID": 2, "WebSiteName": "Gamma",
        "BegWebAddress": "http://g.example/", "CharToPrice": 7, "DeselectFlagPerm": true}}]})");
    EXPECT_EQ(Stored(), QStringList({Alpha, "2|Gamma|http://g.example/|7|1"}));
    EXPECT_EQ(loaded.replaced, 1);
    EXPECT_EQ(loaded.added, 0);
}

TEST_F(LoadedSites, ReplaceTheRowOfTheirNameWhichKeepsItsId)
{
    Load(R"([{"ID": 77, "WebSiteName": "ALPHA ", "CharToPrice": 5}])");
    EXPECT_EQ(Stored(), QStringList({"1|ALPHA |http://a.example/|5|1", Beta}));
}

TEST_F(LoadedSites, AreAddedWhenNeitherIsThere)
{
    const LoadedRows loaded = Load(R"([{"ID": 9, "WebSiteName": "Gamma"},
                                       {"WebSiteName": "Delta", "CharToPrice": 3}])");
    EXPECT_EQ(Stored(), QStringList({Alpha, Beta, "9|Gamma|null|null|0", "10|Delta|null|3|0"}));
    EXPECT_EQ(loaded.added, 2);
    EXPECT_EQ(loaded.replaced, 0);
}

TEST_F(LoadedSites, KeepWhatTheFileLeavesOutAndEmptyWhatIsNull)
{
    Load(R"([{"ID": 1, "WebSiteName": "Alpha", "BegWebAddress": null},
             {"ID": 2, "WebSiteName": "Beta", "CharToPrice": null}])");
    EXPECT_EQ(Stored(), QStringList({"1|Alpha|null|100|1", "2|Beta|http://b.example/|null|0"}));
}

TEST_F(LoadedSites, MayExchangeTheirNames)
{
    Load(R"([{"ID": 2, "WebSiteName": "Alpha"}, {"ID": 1, "WebSiteName": "Beta"}])");
    EXPECT_EQ(Stored(),
              QStringList({"1|Beta|http://a.example/|100|1", "2|Alpha|http://b.example/|200|0"}));
}

TEST_F(LoadedSites, WithAnIdGoBeforeThoseThatAreGivenOne)
{
    Load(R"([{"WebSiteName": "New"}, {"ID": 3, "WebSiteName": "Gamma"}])");
    EXPECT_EQ(Stored(), QStringList({Alpha, Beta, "3|Gamma|null|null|0", "4|New|null|null|0"}));
}

TEST_F(LoadedSites, KeepTheirTextsAsTheyAre)
{
    Load(R"([{"ID": 1, "WebSiteName": "O'Neil's \"best\" site", "BegWebAddress": " \t\n<é☾> "}])");
    EXPECT_EQ(Stored()[0], QString::fromUtf8("1|O'Neil's \"best\" site| \t\n<é☾> |100|1"));
}

TEST_F(LoadedSites, ComeFromTheDeliveredRows)
{
    m_sites.ExecuteScript("DELETE FROM WebParameters");
    const LoadedRows loaded = LoadQuoteSiteRows(m_sites, QUILLON_DATA "/quote_sites.json");
    EXPECT_EQ(loaded.added, 10);
}

TEST_F(LoadedSites, MayBeNone)
{
    EXPECT_EQ(Load(R"({"rows": []})").added, 0);
    EXPECT_EQ(Load("[]").replaced, 0);
    EXPECT_EQ(Stored(), QStringList({Alpha, Beta}));
}

TEST_F(RefusedSites, NameTheRowAndTheColumn)
{
    const QByteArray sound =
        R"([{"ID": 1, "WebSiteName": "Changed"}, {"WebSiteName": "Our site", )";
    const struct
    {
        const char *rest, *reason;
    } rows[] = {
        {R"("CharToPrice": "900"}])", "CharToPrice must be a whole number from -32768 to 32767."},
        {R"("CharToPrice": 1.5}])", "CharToPrice must be a whole number from -32768 to 32767."},
        {R"("UpdateCount": 40000}])", "UpdateCount must be a whole number from -32768 to 32767."},
        {R"("SimilarSite": true}])", "SimilarSite must be a whole number from -32768 to 32767."},
        {R"("DelayTime": 1e300}])", "DelayTime must be a whole number from -32768 to 32767."},
        {R"("ID": 0}])", "ID must be a whole number from 1 to 2147483647."},
        {R"("ID": null}])", "ID must be a whole number from 1 to 2147483647."},
        {R"("ID": "2"}])", "ID must be a whole number from 1 to 2147483647."},
        {R"("ID": 2147483648}])", "ID must be a whole number from 1 to 2147483647."},
        {R"("ServiceFlag": 1}])", "ServiceFlag must be true or false."},
        {R"("DeselectFlagPerm": null}])", "DeselectFlagPerm must be true or false."},
        {R"("PriceBegText": 5}])", "PriceBegText must be a text."},
        {R"("SignUpURL": ["x"]}])", "SignUpURL must be a text."},
    };
    for (const auto &row : rows)
        EXPECT_EQ(Refused(sound + row.rest),
                  QStringLiteral("Row 2 (Our site): column ") + row.reason);
}

TEST_F(RefusedSites, HaveNoName)
{
    EXPECT_EQ(Refused(R"([{"ID": 1}])"), "Row 1: column WebSiteName must hold a name.");
    EXPECT_EQ(Refused(R"([{"WebSiteName": ""}])"), "Row 1: column WebSiteName must hold a name.");
    EXPECT_EQ(Refused(R"([{"WebSiteName": "  "}])"),
              "Row 1 (  ): column WebSiteName must hold a name.");
    EXPECT_EQ(Refused(R"([{"WebSiteName": null}])"), "Row 1: column WebSiteName must hold a name.");
    EXPECT_EQ(Refused(R"([{"WebSiteName": 7}])"), "Row 1: column WebSiteName must be a text.");
    EXPECT_EQ(Refused(R"([{}])"), "Row 1: column WebSiteName must hold a name.");
}

TEST_F(RefusedSites, HaveAColumnThatIsUnknown)
{
    EXPECT_EQ(Refused(R"([{"WebSiteName": "Gamma", "PriceBeginText": "x"}])"),
              "Row 1 (Gamma): there is no column PriceBeginText.");
    EXPECT_EQ(Refused(R"([{"WebSiteName": "Gamma", "id": 1}])"),
              "Row 1 (Gamma): there is no column id.");
}

TEST_F(RefusedSites, HaveAnIdTwice)
{
    EXPECT_EQ(Refused(R"([{"ID": 5, "WebSiteName": "G"}, {"ID": 5, "WebSiteName": "H"}])"),
              "Row 2 (H): the ID 5 stands in the file twice.");
}

TEST_F(RefusedSites, AreNoRows)
{
    const QString noList = m_folder.File("rows.json") + ": the file has no list of rows.";
    EXPECT_EQ(Refused("{}"), noList);
    EXPECT_EQ(Refused(R"({"rows": {"row": {}}})"), noList);
    EXPECT_EQ(Refused(R"([5])"), "Row 1: it holds no columns.");
    EXPECT_EQ(Refused(R"([{"row": "Gamma"}])"), "Row 1: it holds no columns.");
    EXPECT_EQ(Refused(R"([null])"), "Row 1: it holds no columns.");
    EXPECT_EQ(Refused(R"([[]])"), "Row 1: it holds no columns.");
}

TEST_F(RefusedSites, AreNoJson)
{
    for (const QByteArray &json :
         {QByteArray(), QByteArray("{\"rows\": [{\"row\": {\"ID\": 1,"),
          QByteArray("<html></html>"), QByteArray(1000, '\0'), QByteArray(100000, '['),
          QByteArray("\xff\xfe[\0]\0", 6), QByteArray("[{\"WebSiteName\": \"\xC3\x28\"}]")}) {
        const QString message = Refused(json);
        EXPECT_TRUE(message.startsWith(m_folder.File("rows.json") + ": ")) << qPrintable(message);
        EXPECT_TRUE(message.contains(" at byte ")) << qPrintable(message);
    }
}

TEST_F(RefusedSites, ComeFromAFileThatIsTooLarge)
{
    const QString path = Write("[");
    ASSERT_TRUE(QFile::resize(path, 17 << 20));
    try {
        LoadQuoteSiteRows(m_sites, path);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Description(), path + ": the file is too large for quote sites.");
    }
}

TEST_F(RefusedSites, ComeFromNoFile)
{
    for (const QString &path : {m_folder.File("none.json"), m_folder.Path()}) {
        try {
            LoadQuoteSiteRows(m_sites, path);
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.Number(), RuntimeError::FileNotFoundNumber);
        }
    }
}

TEST_F(SavedSites, AreTheSameWhenTheyAreLoadedAgain)
{
    m_sites.ExecuteScript("DELETE FROM WebParameters");
    LoadQuoteSiteRows(m_sites, QUILLON_DATA "/quote_sites.json");
    m_sites.ExecuteScript("INSERT INTO WebParameters (ID, WebSiteName, PriceBegText) VALUES "
                          "(40, 'O''Neil \"quoted\" \\ (é)', ' <td>' || char(10) || char(9))");
    const auto all = [this] {
        QStringList fields;
        Statement select = m_sites.Prepare("SELECT * FROM WebParameters ORDER BY ID");
        while (select.Step())
            for (int i = 0; i < select.ColumnCount(); ++i)
                fields << (select.IsNull(i) ? QStringLiteral("null") : select.Text(i));
        return fields;
    };
    const QStringList before = all();
    const QString path = m_folder.File("saved.json");
    SaveQuoteSiteRows(m_sites, path);
    m_sites.ExecuteScript("DELETE FROM WebParameters");
    EXPECT_EQ(LoadQuoteSiteRows(m_sites, path).added, 11);
    EXPECT_EQ(all(), before);
    // Once more over the rows that are there.
    EXPECT_EQ(LoadQuoteSiteRows(m_sites, path).replaced, 11);
    EXPECT_EQ(all(), before);
}

TEST_F(SavedSites, StandInTheOrderOfIdAndColumns)
{
    const QString path = m_folder.File("saved.json");
    SaveQuoteSiteRows(m_sites, path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.startsWith("{\n \"rows\": [\n  {\n   \"row\": {\n    \"ID\": 1,\n"
                                "    \"WebSiteName\": \"Alpha\",\n"
                                "    \"BegWebAddress\": \"http://a.example/\",\n"
                                "    \"EndWebAddress\": null,\n"))
        << text.constData();
    EXPECT_TRUE(text.endsWith("    \"DeselectFlagPerm\": false\n   }\n  }\n ]\n}\n"))
        << text.constData();
}

TEST_F(SavedSites, MayBeNone)
{
    m_sites.ExecuteScript("DELETE FROM WebParameters");
    const QString path = m_folder.File("saved.json");
    SaveQuoteSiteRows(m_sites, path);
    EXPECT_EQ(LoadQuoteSiteRows(m_sites, path).added, 0);
}

TEST_F(SavedSites, ReplaceAFileWholeOrNotAtAll)
{
    const QString path = m_folder.AddFile("saved.json", "old");
    SaveQuoteSiteRows(m_sites, path);
    EXPECT_EQ(LoadQuoteSiteRows(m_sites, path).replaced, 2);
    // Into a folder that is not there, and over a folder.
    EXPECT_THROW(SaveQuoteSiteRows(m_sites, m_folder.File("none/saved.json")), RuntimeError);
    ASSERT_TRUE(QDir().mkpath(m_folder.File("folder.json")));
    EXPECT_THROW(SaveQuoteSiteRows(m_sites, m_folder.File("folder.json")), RuntimeError);
}
