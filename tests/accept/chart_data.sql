-- starts from flat_account.sql
-- 6,000 of the 10,000 are invested; entries, balances and prices for every kind of chart.
ATTACH 'app/HistPrices.mdb' AS prices;
ATTACH 'app/ApplControl.mdb' AS control;
DELETE FROM DailyTracker;
INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, AvrgPrice, InvestedValue, TransDate, Time) VALUES
    ('ARLN', 'Aurelian Robotics', 200, 100000, 100000, 20000000, '2026-02-02', '09:00:00.000'),
    ('O''NEIL', 'O''Neil & Sons', 100, 300000, 300000, 30000000, '2026-02-02', '09:00:00.000'),
    ('VSTA', 'Vestara Airlines', 100, 100000, 100000, 10000000, '2026-02-02', '09:00:00.000');
INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES
    ('ARLN', 200, 100000, '2026-02-02', '09:00:00.000'),
    ('O''NEIL', 100, 300000, '2026-02-02', '09:00:00.000'),
    ('VSTA', 100, 100000, '2026-02-02', '09:00:00.000');
INSERT INTO History (Symbol, Name, Description, TransDate, Time) VALUES
    (' ', 'Account Deposit', 'Deposit', '2026-02-02', '09:00:00.000'),
    ('VSTA', 'Vestara Airlines', 'Bought', '2026-02-02', '09:00:00.000'),
    ('ARLN', 'Aurelian Robotics', 'Bought', '2026-02-02', '09:00:00.000'),
    ('O''NEIL', 'O''Neil & Sons', 'Bought', '2026-02-02', '09:00:00.000');
INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) VALUES
    ('ARLN', 'Aurelian Robotics', 10005000, '2026-02-26', '10:00:00.000'),
    ('O''NEIL', 'O''Neil & Sons', -2501, '2026-02-26', '15:30:00.000'),
    ('ARLN', 'Aurelian Robotics', 100000, '2026-02-27', '11:45:30.000'),
    ('VSTA', 'Vestara Airlines', 70000, '2024-02-29', '10:00:00.000');
INSERT INTO PortfolioDailyBalance (DailyBalance, TransDate, Time, TrackName) VALUES
    (1000000, '2026-02-25', '16:00:00.000', 'ARLN'),
    (1250000, '2026-02-26', '16:00:00.000', 'ARLN'),
    (-300000, '2026-02-26', '16:00:00.000', 'O''NEIL'),
    (900000, '2026-02-27', '16:00:00.000', 'ARLN'),
    (100000000, '2026-02-26', '16:00:00.000', 'Portfolio'),
    (100000000, '2026-02-28', '16:00:00.000', 'Portfolio');
-- A close on every weekday of ten months: 100 on Monday 2025-05-05, and a cent more each day.
DELETE FROM prices.HistoricalPrices;
INSERT INTO prices.HistoricalPrices (Symbol, PriceDate, PriceClose)
    WITH RECURSIVE weekday(day, number) AS (
        SELECT '2025-05-05', 0
        UNION ALL
        SELECT date(day, CASE strftime('%w', day) WHEN '5' THEN '+3 days' ELSE '+1 day' END), number + 1
        FROM weekday WHERE day < '2026-02-27')
    SELECT 'ARLN', day, 1000000 + 100 * number FROM weekday;
INSERT INTO prices.HistoricalPrices (Symbol, PriceDate, PriceClose) VALUES
    ('O''NEIL', '2026-02-26', 300000),
    ('O''NEIL', '2026-02-27', 310000);
DELETE FROM control.SecurityAssetClass;
INSERT INTO control.SecurityAssetClass VALUES
    ('ARLN', 'Technology', 0.75),
    ('ARLN', 'Industry', 0.25),
    ('O''NEIL', 'Industry', 1);
