-- An account: positions, ledgers, lots, control rows and the daily balance series.
-- The second word of a type is what the program keeps in the column; the first is how the file stores it.
PRAGMA application_id = 1366649196;
PRAGMA user_version = 1;

CREATE TABLE DailyTracker (
    Symbol            TEXT NOT NULL UNIQUE,
    Name              TEXT COLLATE NOCASE,
    Shares            REAL SINGLE NOT NULL DEFAULT 0,
    CurrPrice         INTEGER CURRENCY NOT NULL DEFAULT 0,
    Basis             INTEGER CURRENCY NOT NULL DEFAULT 0,
    AvrgPrice         INTEGER CURRENCY NOT NULL DEFAULT 0,
    ProfitLossToday   INTEGER CURRENCY NOT NULL DEFAULT 0,
    ProfitLossToDate  INTEGER CURRENCY NOT NULL DEFAULT 0,
    ActualProfitLoss  INTEGER CURRENCY NOT NULL DEFAULT 0,
    TransCostToday    INTEGER CURRENCY NOT NULL DEFAULT 0,
    TransCostToDate   INTEGER CURRENCY NOT NULL DEFAULT 0,
    NumberTransToday  INTEGER COUNTER NOT NULL DEFAULT 0,
    NumberTransToDate INTEGER COUNTER NOT NULL DEFAULT 0,
    InvestedValue     INTEGER CURRENCY NOT NULL DEFAULT 0,
    InvestedToDate    INTEGER CURRENCY NOT NULL DEFAULT 0,
    TransDate         TEXT DATE,
    Time              TEXT TIME,
    PerCentGainToday  REAL SINGLE NOT NULL DEFAULT 0
);

CREATE TABLE DailyProfitLoss (
    ID         INTEGER PRIMARY KEY AUTOINCREMENT,
    Symbol     TEXT NOT NULL,
    Name       TEXT COLLATE NOCASE,
    ProfitLoss INTEGER CURRENCY NOT NULL DEFAULT 0,
    TransDate  TEXT DATE NOT NULL,
    Time       TEXT TIME
);
CREATE UNIQUE INDEX DailyProfitLossByDay ON DailyProfitLoss (Symbol, TransDate);
CREATE INDEX DailyProfitLossByDate ON DailyProfitLoss (TransDate);

CREATE TABLE PortfolioDailyBalance (
    DailyBalance INTEGER CURRENCY NOT NULL,
    TransDate    TEXT DATE NOT NULL,
    Time         TEXT TIME,
    TrackName    TEXT NOT NULL
);
CREATE UNIQUE INDEX PortfolioDailyBalanceByDay ON PortfolioDailyBalance (TransDate, TrackName);

-- Open purchase lots.
CREATE TABLE PriceHistory (
    ID            INTEGER PRIMARY KEY AUTOINCREMENT,
    Symbol        TEXT NOT NULL,
    Shares        REAL SINGLE NOT NULL DEFAULT 0,
    PurchasePrice INTEGER CURRENCY NOT NULL DEFAULT 0,
    TransDate     TEXT DATE,
    Time          TEXT TIME
);
CREATE INDEX PriceHistoryBySymbol ON PriceHistory (Symbol, TransDate, Time);
CREATE INDEX PriceHistoryEmpty ON PriceHistory (ID) WHERE Shares = 0;

-- Every transaction; a cash row has one blank as its symbol.
CREATE TABLE History (
    ID              INTEGER PRIMARY KEY AUTOINCREMENT,
    Symbol          TEXT NOT NULL,
    Name            TEXT COLLATE NOCASE,
    Description     TEXT,
    Shares          REAL SINGLE NOT NULL DEFAULT 0,
    TransactionCost INTEGER CURRENCY NOT NULL DEFAULT 0,
    Price           INTEGER CURRENCY NOT NULL DEFAULT 0,
    Amount          INTEGER CURRENCY NOT NULL DEFAULT 0,
    TransDate       TEXT DATE,
    Time            TEXT TIME
);
CREATE INDEX HistoryBySymbol ON History (Symbol, TransDate, Time);
CREATE INDEX HistoryByDate ON History (TransDate, Time);

-- Control rows: the kind in the first column says what the fields mean.
CREATE TABLE DescriptiveTable (
    TableName TEXT NOT NULL UNIQUE,
    Field01   INTEGER CURRENCY,
    Field02   INTEGER CURRENCY,
    Field03   INTEGER LONG,
    Field04   TEXT DATE,
    Field05   TEXT DATE,
    Field06   TEXT,
    Field07   REAL SINGLE,
    Field08   TEXT,
    Field09   TEXT,
    Field10   INTEGER YESNO,
    Field11   INTEGER YESNO,
    Field12   TEXT
);
