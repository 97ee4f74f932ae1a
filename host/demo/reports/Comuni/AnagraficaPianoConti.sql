CREATE TABLE AnagraficaPianoConti (id INTEGER, CodiceConto TEXT(20) COLLATE NOCASE,
  Descrizione TEXT(100) COLLATE NOCASE, Sistema BOOLEAN, TipoConto SMALLINT, LivelloConto SMALLINT,
  idData DATETIME, idOperatore INTEGER, Mastro TEXT(10) COLLATE NOCASE);
