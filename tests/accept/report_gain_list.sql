-- starts from flat_account.sql
INSERT INTO PortfolioDailyBalance VALUES
    (1000000, '2026-02-26', '16:00:00.000', 'ARLN'),
    (-250000, '2026-02-26', '16:00:00.000', 'VSTA'),
    (100000000, '2026-02-26', '16:00:00.000', 'Portfolio');
VACUUM INTO 'Empty.mdb';
ATTACH 'Empty.mdb' AS emptied;
DELETE FROM emptied.DailyTracker;
DETACH emptied;
