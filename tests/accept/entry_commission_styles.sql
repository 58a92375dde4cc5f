-- An account of 10,000 with three securities and no trade so far.
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
-- An account for each way in which a broker charges: cost, cost a share, free shares.
UPDATE DescriptiveTable SET Field08 = 'Style2' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style2', Field01 = 149500, Field02 = 100, Field06 = '1000'
    WHERE TableName = 'Style1';
VACUUM INTO 'Retroactive.mdb';
UPDATE DescriptiveTable SET Field08 = 'Style3' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style3' WHERE TableName = 'Style2';
VACUUM INTO 'Additional.mdb';
UPDATE DescriptiveTable SET Field08 = 'Style4' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style4' WHERE TableName = 'Style3';
VACUUM INTO 'Greater.mdb';
UPDATE DescriptiveTable SET Field08 = 'Style5' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style5', Field01 = 20, Field02 = 50000, Field06 = '0'
    WHERE TableName = 'Style4';
VACUUM INTO 'Factor.mdb';
UPDATE DescriptiveTable SET Field08 = 'n/a' WHERE TableName = 'Balance';
VACUUM INTO 'None.mdb';
UPDATE DescriptiveTable SET Field08 = 'Style1' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style1', Field01 = 149500, Field02 = 200
    WHERE TableName = 'Style5';
