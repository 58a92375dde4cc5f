-- Quote sites: how to ask a page for prices and where they stand in its text.
PRAGMA application_id = 1366649196;
PRAGMA user_version = 1;

CREATE TABLE WebParameters (
    ID                     INTEGER PRIMARY KEY AUTOINCREMENT,
    WebSiteName            TEXT COLLATE NOCASE,
    BegWebAddress          TEXT,
    EndWebAddress          TEXT,
    AddressBuildCharacters TEXT,
    SymbolBegText          TEXT,
    SymbolEndText          TEXT,
    CharToPrice            INTEGER COUNTER,
    PriceBegText           TEXT,
    PriceEndText           TEXT,
    DelayTime              INTEGER COUNTER,
    UpdateCount            INTEGER COUNTER,
    ServiceFlag            INTEGER YESNO NOT NULL DEFAULT 0,
    SignUpURL              TEXT,
    OptionPrefix           TEXT,
    OptionSuffix           TEXT,
    SimilarSite            INTEGER COUNTER,
    DeselectFlagTemp       INTEGER YESNO NOT NULL DEFAULT 0,
    DeselectFlagPerm       INTEGER YESNO NOT NULL DEFAULT 0
);
