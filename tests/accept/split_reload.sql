-- starts from flat_account.sql
-- A position whose daily prices reach back five months, from before a split.
UPDATE DailyTracker SET Shares = 100, AvrgPrice = 500000, CurrPrice = 500000 WHERE Symbol = 'ARLN';
INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES
    ('ARLN', 100, 500000, '2026-02-02', '10:00:00.000');
UPDATE DescriptiveTable SET Field05 = '2026-03-02' WHERE TableName = 'Balance';

ATTACH 'app/HistPrices.mdb' AS prices;
DELETE FROM prices.HistoricalPrices;
INSERT INTO prices.HistoricalPrices (Symbol, PriceDate, PriceClose) VALUES
    ('ARLN', '2025-10-01', 9990000), ('ARLN', '2026-02-27', 9990000);
