-- The work database of the sums delivered to the venue
-- (Report/SommeConsegnate.mdb): the collection notes of the period, the
-- venues, their owners, agents and companies, each venue's sum in words and
-- the heading row.
-- include Comuni/AnagraficaAziende.sql
-- include Comuni/AnagraficaLocali.sql
CREATE INDEX AnagraficaLocali_CodLocale ON AnagraficaLocali (CodLocale);
-- include Comuni/AnagraficaOperatori.sql
CREATE TABLE ImportoLettere (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  CodLocale TEXT(20) COLLATE NOCASE,
  Descrizione TEXT(255) COLLATE NOCASE
);
-- include Comuni/NoteTeste.sql
-- include Comuni/Parametri.sql
