-- starts from flat_account.sql
-- A position that counts, an option, and symbols that no market has; the day is updated already.
-- A second account has no rows, a third one more shares than a whole number of 16 bits holds.
UPDATE DescriptiveTable SET Field05 = '2026-03-02' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET Field06 = '1' WHERE TableName = 'WebSite';
VACUUM INTO 'Empty.mdb';
VACUUM INTO 'Large.mdb';
ATTACH 'Empty.mdb' AS empty;
DELETE FROM empty.DailyTracker;
ATTACH 'Large.mdb' AS large;
UPDATE large.DailyTracker SET Shares = 32768, AvrgPrice = 10000, CurrPrice = 10000
 WHERE Symbol = 'VSTA';
INSERT INTO large.PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time)
VALUES ('VSTA', 32768, 10000, '2026-02-02', '10:00:00.000');

INSERT INTO DailyTracker (Symbol, Name, TransDate, Time) VALUES
    ('ARLNC90', 'Aurelian Robotics Call 90', '2026-03-02', '09:00:00.000'),
    ('ZZBAD', 'No such company', '2026-03-02', '09:00:00.000'),
    ('É#1 ''50%', 'A symbol of odd characters', '2026-03-02', '09:00:00.000');
ATTACH 'app/ApplControl.mdb' AS control;
INSERT OR IGNORE INTO control.SecurityDetail VALUES ('ARLNC90', 'Aurelian Robotics Call', 'Option');
