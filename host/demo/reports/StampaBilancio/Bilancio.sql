-- The work database of the trial balance (Report/Bilancio.mdb): the chart of
-- accounts, the balances the screen computes, and the heading row.
-- include Comuni/AnagraficaPianoConti.sql
CREATE TABLE Saldi (id INTEGER, CodiceConto TEXT(20) COLLATE NOCASE, Descrizione TEXT(100) COLLATE NOCASE,
  dare CURRENCY, avere CURRENCY, saldo CURRENCY, Mastro TEXT(10) COLLATE NOCASE, TipoConto SMALLINT,
  CodiceLocale TEXT(20) COLLATE NOCASE, LivelloConto SMALLINT);
-- include Comuni/Parametri.sql
