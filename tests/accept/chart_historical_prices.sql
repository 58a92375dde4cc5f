-- starts from chart_data.sql
ATTACH 'app/HistPrices.mdb' AS prices;
DELETE FROM prices.HistoricalPrices WHERE PriceDate = '2026-02-09';
