-- A position whose security is not in the master list.
INSERT INTO DailyTracker (Symbol, Name, TransDate, Time)
    VALUES ('NEWCO', 'Newcomb Tools', '2026-03-02', '09:00:00.000');
