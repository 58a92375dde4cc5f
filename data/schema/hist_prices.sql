-- Daily prices of all securities, shared by all accounts.
PRAGMA application_id = 1366649196;
PRAGMA user_version = 1;

CREATE TABLE HistoricalPrices (
    Symbol    TEXT NOT NULL,
    PriceDate TEXT DATE NOT NULL,
    PriceOpen INTEGER CURRENCY,
    DayHigh   INTEGER CURRENCY,
    DayLow    INTEGER CURRENCY,
    PriceClose INTEGER CURRENCY,
    Volume    INTEGER LONG,
    AdjClose  INTEGER CURRENCY
);
CREATE UNIQUE INDEX HistoricalPricesByDay ON HistoricalPrices (Symbol, PriceDate);
CREATE INDEX HistoricalPricesByDate ON HistoricalPrices (PriceDate);
