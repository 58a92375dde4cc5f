-- starts from flat_account.sql
INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) VALUES
    ('O''NEIL', 'O''Neil & Sons', -2500, '2026-02-26', '10:00:00.000'),
    ('O''NEIL', 'O''Neil & Sons', 12500, '2026-02-27', '10:00:00.000'),
    ('VSTA', 'Vestara Airlines', 70000, '2024-02-29', '10:00:00.000');
INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, Amount, TransDate, Time) VALUES
    ('ARLN', 'Aurelian Robotics', 'Bought', 100, -99500, 100000, -10099500, '2026-01-05', '10:00:00.000'),
    ('ARLN', 'Aurelian Robotics', 'Bought', 100, -99500, 100000, -10099500, '2026-01-06', '10:00:00.000'),
    ('ARLN', 'Aurelian Robotics', 'Sold', -150, -99500, 120000, 17900500, '2026-01-20', '10:00:00.000'),
    ('ARLN', 'Aurelian Robotics', 'Sold', -10, -99500, 120000, 1100500, '2026-02-20', '10:00:00.000');
