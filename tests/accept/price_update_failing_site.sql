-- starts from flat_account.sql
-- The daily prices of the day are loaded already; the site in use has yet to be written.
UPDATE DailyTracker SET Shares = 100, AvrgPrice = 500000, CurrPrice = 500000;
INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time)
SELECT Symbol, Shares, AvrgPrice, '2026-02-02', '10:00:00.000' FROM DailyTracker;
UPDATE DescriptiveTable SET Field05 = '2026-03-02' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET Field06 = '2', Field08 = 'Old quotes (of last year)'
 WHERE TableName = 'WebSite';
