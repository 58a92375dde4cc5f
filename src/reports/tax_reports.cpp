#include "reports/tax_reports.h"

#include "transactions/matching.h"

#include <optional>

namespace
{

constexpr QStringView quantityFormat = u"###,##0.0000";

/// The figures of the line under way, beside what the matching fills in.
struct TaxLine : MatchResult
{
    std::optional<int> Symbol; ///< its number in the matching; nothing while no security is open
    QString Name;
    Currency GainLoss;

    void Take(const GainMatching &sales, const MatchSale &sale)
    {
        Symbol = sale.symbol;
        Name = sales.NameOf(sale);
    }
};

bool Counts(const ReportChoice &choice, const MatchSale &sale)
{
    return choice.rows != ReportRows::DateRange || choice.InRange(sale.TransDate);
}

// --- a line for each security -----------------------------------------------------------------------

class SummaryReport
{
public:
    SummaryReport(Report &report, const ReportChoice &choice) : m_report(report), m_choice(choice)
    {}

    void Write(const Connection &gConnAccount);

private:
    void WriteSummaryRow();

    Report &m_report;
    const ReportChoice &m_choice;
    TaxLine m_line;
    Currency TotalSales;
    Currency TotalCost;
    Currency TotalGain;
    bool RowPending = false; ///< the line holds matched sales that are not printed yet
};

void SummaryReport::Write(const Connection &gConnAccount)
{
    GainMatching sales;
    sales.OpenMatchingRecordsets(gConnAccount);
    for (int row = 0; row < sales.SaleCount(); ++row) {
        const MatchSale &sale = sales.Sale(row);
        if (RowPending && sale.symbol != m_line.Symbol)
            WriteSummaryRow();
        if (!RowPending) {
            m_line = TaxLine();
            m_line.Take(sales, sale);
        }
        // A sale outside the range uses up its lots too, but leaves nothing else in the line.
        const TaxLine before = m_line;
        sales.MatchCurrentSale(row, m_line);
        if (Counts(m_choice, sale))
            RowPending = true;
        else
            m_line = before;
    }
    if (RowPending)
        WriteSummaryRow();

    m_report.NextRow(2);
    m_report.SetRaw(1, "G R A N D   T O T A L");
    m_report.SetMoney(4, TotalSales);
    m_report.SetMoney(5, TotalCost);
    m_report.SetMoney(6, TotalGain);
}

void SummaryReport::WriteSummaryRow()
{
    m_report.NextRow();
    m_line.GainLoss = m_line.Gain();
    TotalSales += m_line.ProceedsSide;
    TotalCost += m_line.CostSide;
    TotalGain += m_line.GainLoss;
    m_report.SetRaw(1, m_line.Name);
    m_report.SetDate(2, m_line.DateAcquired);
    m_report.SetDate(3, m_line.DateSold);
    m_report.SetMoney(4, m_line.ProceedsSide);
    m_report.SetMoney(5, m_line.CostSide);
    m_report.SetMoney(6, m_line.GainLoss);
    RowPending = false;
}

// --- a line for each sale ---------------------------------------------------------------------------

class CostBasisReport
{
public:
    CostBasisReport(Report &report, const ReportChoice &choice) : m_report(report), m_choice(choice)
    {}

    void Write(const Connection &gConnAccount);

private:
    void WriteCostBasisRow();
    void WriteNetTotal();
    void WriteTotals(const char *caption, Currency quantity, Currency sales, Currency cost,
                     Currency gain);

    Report &m_report;
    const ReportChoice &m_choice;
    TaxLine m_line;
    Currency NetQuantity; ///< of the security, as the three below
    Currency NetSales;
    Currency NetCost;
    Currency NetGain;
    Currency TotalQuantity;
    Currency TotalSales;
    Currency TotalCost;
    Currency TotalGain;
};

void CostBasisReport::Write(const Connection &gConnAccount)
{
    GainMatching sales;
    sales.OpenMatchingRecordsets(gConnAccount);
    for (int row = 0; row < sales.SaleCount(); ++row) {
        const MatchSale &sale = sales.Sale(row);
        if (sale.symbol != m_line.Symbol) {
            WriteNetTotal();
            m_line.Take(sales, sale);
        }
        sales.MatchCurrentSale(row, m_line);
        if (Counts(m_choice, sale))
            WriteCostBasisRow();
        static_cast<MatchResult &>(m_line) = MatchResult(); // printed, or out of the range
    }
    WriteNetTotal();

    m_report.NextRow(2);
    WriteTotals("G R A N D   T O T A L", TotalQuantity, TotalSales, TotalCost, TotalGain);
}

void CostBasisReport::WriteCostBasisRow()
{
    m_report.NextRow();
    if (m_line.SoldShares.IsNegative()) {
        m_line.SoldShares = -m_line.SoldShares;
        m_report.SetRaw(5, "Short");
    }
    m_line.GainLoss = m_line.Gain();
    NetQuantity = Currency::FromDouble(NetQuantity.ToDouble() + m_line.SoldShares.ToDouble());
    NetSales += m_line.ProceedsSide;
    NetCost += m_line.CostSide;
    NetGain += m_line.GainLoss;
    m_report.SetRaw(1, m_line.Name);
    m_report.SetDate(2, m_line.DateAcquired);
    m_report.SetDate(3, m_line.DateSold);
    m_report.SetRaw(4, m_line.SalePrice);
    m_report.SetFormatted(6, m_line.SoldShares, quantityFormat);
    m_report.SetMoney(7, m_line.ProceedsSide);
    m_report.SetMoney(8, m_line.CostSide);
    m_report.SetMoney(9, m_line.GainLoss);
}

void CostBasisReport::WriteNetTotal()
{
    if (NetQuantity.IsZero())
        return; // the money of a sale of no shares stays, for the next security's total
    m_report.NextRow(2);
    TotalQuantity += NetQuantity;
    TotalSales += NetSales;
    TotalCost += NetCost;
    TotalGain += NetGain;
    WriteTotals("N E T   T O T A L", NetQuantity, NetSales, NetCost, NetGain);
    m_report.NextRow();
    NetQuantity = NetSales = NetCost = NetGain = Currency();
}

void CostBasisReport::WriteTotals(const char *caption, Currency quantity, Currency sales,
                                  Currency cost, Currency gain)
{
    m_report.SetRaw(1, caption);
    m_report.SetFormatted(6, quantity, quantityFormat);
    m_report.SetMoney(7, sales);
    m_report.SetMoney(8, cost);
    m_report.SetMoney(9, gain);
}

} // namespace

void WriteSummary(Report &report, const Connection &gConnAccount, const ReportChoice &choice)
{
    report.WriteHeader({{"", "DATE", "DATE", "SALES"},
                        {"SECURITY", "ACQUIRED", "SOLD", "PRICE", "COST", "GAIN/LOSS"}});
    SummaryReport(report, choice).Write(gConnAccount);
}

void WriteCostBasis(Report &report, const Connection &gConnAccount, const ReportChoice &choice)
{
    report.WriteHeader({{"", "DATE", "DATE", "SALES PRICE", "", "", "SALES"},
                        {"SECURITY", "ACQUIRED", "OF SALE", "PER UNIT", "", "QUANTITY", "PRICE",
                         "COST", "GAIN/LOSS"}});
    CostBasisReport(report, choice).Write(gConnAccount);
}
