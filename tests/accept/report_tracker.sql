-- starts from flat_account.sql
UPDATE DailyTracker SET CurrPrice = 100000 WHERE Symbol = 'VSTA';
