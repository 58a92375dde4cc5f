-- The account logs off after 15 minutes without any action.
UPDATE DescriptiveTable SET Field06 = '15', Field11 = 1 WHERE TableName = 'Security';
