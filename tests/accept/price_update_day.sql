-- starts from flat_account.sql
-- A long position, a fund and a short one; the day before was updated. Daily prices begin anew.
UPDATE DailyTracker SET Shares = 100, AvrgPrice = 500000, CurrPrice = 500000 WHERE Symbol = 'ARLN';
UPDATE DailyTracker SET Shares = 200.5, AvrgPrice = 400000, CurrPrice = 400000
 WHERE Symbol = 'GRNVX';
UPDATE DailyTracker SET Shares = -50, AvrgPrice = 1500000, CurrPrice = 1500000
 WHERE Symbol = 'VSTA';
INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES
    ('ARLN', 100, 500000, '2026-02-02', '10:00:00.000'),
    ('GRNVX', 200.5, 400000, '2026-02-02', '10:00:00.000'),
    ('VSTA', -50, 1500000, '2026-02-02', '10:00:00.000');
UPDATE DescriptiveTable SET Field05 = '2026-02-27' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET Field06 = '5' WHERE TableName = 'WebSite';

ATTACH 'app/HistPrices.mdb' AS prices;
DELETE FROM prices.HistoricalPrices;

-- A second account on a site of its own, which takes the prices up to their decimal point.
ATTACH 'app/WebSites.mdb' AS sites;
INSERT INTO sites.WebParameters (WebSiteName, BegWebAddress, EndWebAddress, AddressBuildCharacters,
    SymbolBegText, SymbolEndText, CharToPrice, PriceBegText, PriceEndText, DelayTime, UpdateCount,
    SignUpURL, OptionPrefix, OptionSuffix, SimilarSite)
SELECT 'Whole quotes (of the practice server)', BegWebAddress, EndWebAddress,
    AddressBuildCharacters, SymbolBegText, SymbolEndText, CharToPrice, PriceBegText, '.', 30, 2,
    SignUpURL, OptionPrefix, OptionSuffix, 9
  FROM sites.WebParameters WHERE WebSiteName LIKE 'Practice quotes%';
VACUUM INTO 'Other.mdb';
ATTACH 'Other.mdb' AS other;
UPDATE other.DescriptiveTable SET Field06 = '2', Field08 = 'Whole quotes (of the practice server)'
 WHERE TableName = 'WebSite';
DELETE FROM other.DailyTracker WHERE Symbol = 'GRNVX';
