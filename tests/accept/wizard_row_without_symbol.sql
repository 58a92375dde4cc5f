-- A deposit before anything else: its name becomes that of the row.
INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, Amount, TransDate, Time)
VALUES (' ', 'Account Deposit', 'Deposit', 0, 0, 0, 10000000, '2001-01-02', '10:00:00.000');
