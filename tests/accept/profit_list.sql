-- starts from flat_account.sql
INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) VALUES
    ('ARLN', 'Aurelian Robotics', 10005000, '2026-02-26', '10:00:00.000'),
    ('O''NEIL', 'O''Neil & Sons', -2500, '2026-02-26', '10:00:00.000'),
    ('ARLN', 'Aurelian Robotics', 100000, '2026-02-27', '10:00:00.000'),
    ('VSTA', 'Vestara Airlines', 70000, '2024-02-29', '10:00:00.000');
