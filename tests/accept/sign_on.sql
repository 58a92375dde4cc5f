-- The account asks for "jane" and "Secret7"; the password is kept shifted by three.
UPDATE DescriptiveTable SET Field08 = 'jane', Field09 = 'Vhfuhw:', Field10 = 1
    WHERE TableName = 'Security';
