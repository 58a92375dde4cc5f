/// The statements of the list reports.

#include "reports/report_query.h"

#include <gtest/gtest.h>

namespace
{

constexpr ReportQueryParts parts{"SELECT Symbol FROM History ",
                                 "TransDate >= ? AND TransDate <= ? ", "ORDER BY TransDate",
                                 "ORDER BY Symbol"};

ReportChoice Choice()
{
    ReportChoice choice;
    choice.symbol = "O'NEIL";
    choice.from = QDate(2026, 1, 1);
    choice.to = QDate(2026, 3, 2);
    return choice;
}

std::string StatementOf(const ReportChoice &choice)
{
    return BuildReportQuery(parts, choice).statement.toStdString();
}

} // namespace

TEST(AppendWhereClause, BeginsWithWhereAndGoesOnWithTheJoiner)
{
    const QString first = AppendWhereClause("SELECT A FROM B ", "C = ? ", " ");
    EXPECT_EQ(first.toStdString(), "SELECT A FROM B  WHERE C = ? ");
    EXPECT_EQ(AppendWhereClause(first, "D = ? ", "AND").toStdString(),
              "SELECT A FROM B  WHERE C = ?  AND D = ? ");
}

TEST(AppendWhereClause, TakesNoOtherSpellingForAWhere)
{
    EXPECT_EQ(AppendWhereClause("SELECT WHEREABOUTS FROM B", "C = 1", "AND").toStdString(),
              "SELECT WHEREABOUTS FROM B WHERE C = 1");
}

TEST(ReportQuery, IsHeadAndOrderWhenEverythingIsWanted)
{
    EXPECT_EQ(StatementOf(Choice()), "SELECT Symbol FROM History ORDER BY TransDate");
    EXPECT_TRUE(BuildReportQuery(parts, Choice()).values.empty());
}

TEST(ReportQuery, HasTheDatesBeforeTheSymbol)
{
    ReportChoice choice = Choice();
    choice.byDateRange = true;
    choice.rows = ReportRows::SelectedSecurity;
    choice.sort = ReportSort::BySymbol;
    EXPECT_EQ(StatementOf(choice), "SELECT Symbol FROM History  WHERE TransDate >= ? AND TransDate "
                                   "<= ?  AND Symbol = ? ORDER BY Symbol");
    const std::vector<FieldValue> values = BuildReportQuery(parts, choice).values;
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(std::get<QDate>(values[0]), QDate(2026, 1, 1));
    EXPECT_EQ(std::get<QDate>(values[1]), QDate(2026, 3, 2));
    EXPECT_EQ(std::get<QString>(values[2]), "O'NEIL");
}

TEST(ReportQuery, NeedsNoDatesForASymbol)
{
    ReportChoice choice = Choice();
    choice.rows = ReportRows::SelectedSecurity;
    EXPECT_EQ(StatementOf(choice),
              "SELECT Symbol FROM History  WHERE Symbol = ? ORDER BY TransDate");
}
