-- Control data shared by all accounts: the security master, its asset classes, generic control rows.
PRAGMA application_id = 1366649196;
PRAGMA user_version = 1;

CREATE TABLE ApplicationTable (
    TableName TEXT NOT NULL,
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
CREATE INDEX ApplicationTableByName ON ApplicationTable (TableName, Field08);

CREATE TABLE SecurityDetail (
    Symbol       TEXT NOT NULL UNIQUE,
    Name         TEXT COLLATE NOCASE,
    SecurityType TEXT
);

CREATE TABLE SecurityAssetClass (
    Symbol           TEXT NOT NULL,
    AssetClass       TEXT,
    PerCentAllocated REAL SINGLE NOT NULL DEFAULT 0
);
CREATE INDEX SecurityAssetClassBySymbol ON SecurityAssetClass (Symbol);
