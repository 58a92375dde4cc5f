#include "reports/portfolio_selection.h"

namespace
{

struct PortfolioColumns
{
    explicit PortfolioColumns(const Recordset &rows)
        : tableName(rows.Column(QStringLiteral("TableName"))),
          name(rows.Column(QStringLiteral("Field08"))),
          isSelected(rows.Column(QStringLiteral("Field10")))
    {}
    bool IsPortfolio(const Recordset &rows) const
    {
        return rows.Text(tableName) == QLatin1String("Portfolio");
    }

    int tableName;
    int name;
    int isSelected;
};

} // namespace

std::vector<Portfolio> ReadPortfolios(Recordset &gRsApplication)
{
    const PortfolioColumns at(gRsApplication);
    std::vector<Portfolio> portfolios;
    for (gRsApplication.MoveFirst(); !gRsApplication.AtEnd(); gRsApplication.MoveNext())
        if (at.IsPortfolio(gRsApplication))
            portfolios.push_back(
                {gRsApplication.Text(at.name), gRsApplication.Flag(at.isSelected)});
    return portfolios;
}

void SelectPortfolio(Recordset &gRsApplication, const QString &name, bool isSelected)
{
    const PortfolioColumns at(gRsApplication);
    for (gRsApplication.MoveFirst(); !gRsApplication.AtEnd(); gRsApplication.MoveNext()) {
        if (!at.IsPortfolio(gRsApplication) || gRsApplication.Text(at.name) != name)
            continue;
        gRsApplication.Set(at.isSelected, isSelected);
        try {
            gRsApplication.Update();
        } catch (const RuntimeError &) {
            gRsApplication.CancelUpdate();
            throw;
        }
        return;
    }
}
