#include "transactions/securities.h"

#include "store/create_database.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{

class GetSecurityTypeTest : public testing::Test
{
protected:
    GetSecurityTypeTest()
    {
        // Just the mark and the one table that is read.
        const QString path = m_folder.filePath("ApplControl.mdb");
        CreateDatabase(path, QStringLiteral("PRAGMA application_id = %1;"
                                            "CREATE TABLE SecurityDetail (Symbol TEXT, Name TEXT, "
                                            "SecurityType TEXT);")
                                 .arg(ApplicationMark));
        control.Open(path);
    }
    void Add(const QString &symbol, const QString &type)
    {
        control.Execute("INSERT INTO SecurityDetail (Symbol, SecurityType) VALUES (?, ?)", symbol,
                        type);
    }

    QTemporaryDir m_folder;
    Connection control;
};

} // namespace

TEST_F(GetSecurityTypeTest, GivesTheTypeOfTheSymbol)
{
    Add("ACME", "Stock");
    Add("FUND", "Mutual Fund");
    EXPECT_EQ(GetSecurityType(control, "FUND"), QStringLiteral("Mutual Fund"));
}

TEST_F(GetSecurityTypeTest, GivesNothingWithoutARowOrWithoutAType)
{
    Add("BARE", "");
    Add("BLANK", "  ");
    control.Execute("INSERT INTO SecurityDetail (Symbol) VALUES ('NULL')");
    for (const char *symbol : {"NONE", "BARE", "BLANK", "NULL", ""})
        EXPECT_EQ(GetSecurityType(control, symbol), std::nullopt) << symbol;
}

TEST_F(GetSecurityTypeTest, ReadsASymbolWithAnApostrophe)
{
    Add("O'NEIL", "Option");
    EXPECT_EQ(GetSecurityType(control, "O'NEIL"), QStringLiteral("Option"));
}

TEST(SecurityTypes, AreTheSevenInTheOrderOfTheList)
{
    const QStringList types = {"Bond",   "Commodity", "Future", "Mutual Fund",
                               "Option", "Stock",     "Index"};
    EXPECT_EQ(SecurityTypes(), types);
}
