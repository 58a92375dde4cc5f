-- starts from flat_account.sql
INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, Amount, TransDate,
                     Time) VALUES
    ('ARLN', 'Aurelian Robotics', 'Bought', 100, -99500, 100000, -10099500, '2025-02-26',
     '10:00:00.000'),
    ('ARLN', 'Aurelian Robotics', 'Sold', -60, -99500, 120000, 7100500, '2026-02-26',
     '10:00:00.000');
