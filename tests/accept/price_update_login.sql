-- starts from price_update_failing_site.sql
-- The site in use asks for a login; a spare one of its group does not.
UPDATE DescriptiveTable SET Field08 = 'Practice quotes (simulated by this program)'
 WHERE TableName = 'WebSite';
ATTACH 'app/WebSites.mdb' AS sites;
INSERT INTO sites.WebParameters (WebSiteName, BegWebAddress, EndWebAddress, AddressBuildCharacters,
    SymbolBegText, SymbolEndText, CharToPrice, PriceBegText, PriceEndText, DelayTime, UpdateCount,
    SignUpURL, OptionPrefix, OptionSuffix, SimilarSite)
SELECT 'Spare quotes', BegWebAddress, EndWebAddress, AddressBuildCharacters, SymbolBegText,
    SymbolEndText, CharToPrice, PriceBegText, PriceEndText, 30, UpdateCount, '', OptionPrefix,
    OptionSuffix, SimilarSite
  FROM sites.WebParameters WHERE WebSiteName LIKE 'Practice quotes%';
UPDATE sites.WebParameters SET SignUpURL = 'http://127.0.0.1/join'
 WHERE WebSiteName LIKE 'Practice quotes%';
