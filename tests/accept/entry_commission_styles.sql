-- starts from flat_account.sql
-- An account for each way in which a broker charges: cost, cost a share, free shares.
UPDATE DescriptiveTable SET Field08 = 'Style2' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style2', Field01 = 149500, Field02 = 100, Field06 = '1000'
    WHERE TableName = 'Style1';
VACUUM INTO 'Retroactive.mdb';
UPDATE DescriptiveTable SET Field08 = 'Style3' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style3' WHERE TableName = 'Style2';
VACUUM INTO 'Additional.mdb';
UPDATE DescriptiveTable SET Field08 = 'Style4' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style4' WHERE TableName = 'Style3';
VACUUM INTO 'Greater.mdb';
UPDATE DescriptiveTable SET Field08 = 'Style5' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style5', Field01 = 20, Field02 = 50000, Field06 = '0'
    WHERE TableName = 'Style4';
VACUUM INTO 'Factor.mdb';
UPDATE DescriptiveTable SET Field08 = 'n/a' WHERE TableName = 'Balance';
VACUUM INTO 'None.mdb';
UPDATE DescriptiveTable SET Field08 = 'Style1' WHERE TableName = 'Balance';
UPDATE DescriptiveTable SET TableName = 'Style1', Field01 = 149500, Field02 = 200
    WHERE TableName = 'Style5';
