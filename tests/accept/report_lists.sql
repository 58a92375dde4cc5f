-- starts from profit_list.sql
INSERT INTO History (Symbol, Name, Description, Shares, Price, Amount, TransDate, Time) VALUES
    ('ARLN', 'Aurelian Robotics', 'Bought', 100, 100000, -10000000, '2026-02-26', '10:00:00.000'),
    (' ', 'Account Deposit', 'Deposit', 0, 0, 5000000, '2026-02-27', '10:00:00.000');
VACUUM INTO 'Empty.mdb';
ATTACH 'Empty.mdb' AS emptied;
DELETE FROM emptied.DailyTracker;
DELETE FROM emptied.History;
DETACH emptied;
