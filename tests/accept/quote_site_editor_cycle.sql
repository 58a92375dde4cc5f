-- The daily prices of the day are loaded already.
UPDATE DescriptiveTable SET Field05 = '2099-03-02' WHERE TableName = 'Balance';
