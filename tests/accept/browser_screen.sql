UPDATE DescriptiveTable SET Field06 = '3', Field08 = 'Yahoo Finance (world, a few minutes late)'
 WHERE TableName = 'WebSite';
