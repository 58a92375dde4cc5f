-- starts from flat_account.sql
ALTER TABLE DailyTracker ADD COLUMN SecurityType TEXT;
UPDATE DailyTracker SET SecurityType = 'Mutual';
UPDATE DescriptiveTable SET Field06 = '41' WHERE TableName = 'Balance';
VACUUM INTO 'Old Broker.mdb';
