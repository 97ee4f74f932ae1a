-- The work database of the trial balance (Report/Bilancio.mdb): the chart of
-- accounts, the balances the screen computes, and the heading row.
CREATE TABLE AnagraficaPianoConti (id INTEGER, CodiceConto TEXT(20) COLLATE NOCASE,
  Descrizione TEXT(100) COLLATE NOCASE, Sistema BOOLEAN, TipoConto SMALLINT, LivelloConto SMALLINT,
  idData DATETIME, idOperatore INTEGER, Mastro TEXT(10) COLLATE NOCASE);
CREATE TABLE Saldi (id INTEGER, CodiceConto TEXT(20) COLLATE NOCASE, Descrizione TEXT(100) COLLATE NOCASE,
  dare CURRENCY, avere CURRENCY, saldo CURRENCY, Mastro TEXT(10) COLLATE NOCASE, TipoConto SMALLINT,
  CodiceLocale TEXT(20) COLLATE NOCASE, LivelloConto SMALLINT);
CREATE TABLE Parametri (Parametri TEXT(255) COLLATE NOCASE, Descr1 TEXT(255) COLLATE NOCASE,
  Descr2 TEXT(255) COLLATE NOCASE, Descr3 TEXT(255) COLLATE NOCASE);
