-- starts from flat_account.sql
VACUUM INTO 'Empty.mdb';
