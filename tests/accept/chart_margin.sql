-- starts from chart_data.sql
UPDATE DescriptiveTable SET Field01 = 50000000 WHERE TableName = 'Balance';
