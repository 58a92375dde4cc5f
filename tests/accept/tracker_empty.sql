-- starts from flat_account.sql
DELETE FROM DailyTracker;
