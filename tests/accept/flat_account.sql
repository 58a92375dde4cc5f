-- An account of 10,000 with three securities and no trade so far; a trade costs 9.95.
DELETE FROM DailyTracker;
DELETE FROM PriceHistory;
DELETE FROM History;
DELETE FROM DailyProfitLoss;
DELETE FROM PortfolioDailyBalance;
INSERT INTO DailyTracker (Symbol, Name, TransDate, Time) VALUES
    ('ARLN', 'Aurelian Robotics', '2026-03-02', '09:00:00.000'),
    ('GRNVX', 'Greenvale Balanced Fund', '2026-03-02', '09:00:00.000'),
    ('VSTA', 'Vestara Airlines', '2026-03-02', '09:00:00.000');
UPDATE DescriptiveTable SET Field01 = 100000000, Field04 = '2026-03-02' WHERE TableName = 'Balance';
