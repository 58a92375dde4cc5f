-- starts from flat_account.sql
-- Amounts gathered up to yesterday.
UPDATE DailyTracker SET ProfitLossToDate = 1234500, TransCostToDate = -199000,
    InvestedToDate = 50000000, NumberTransToDate = 2 WHERE Symbol = 'ARLN';
