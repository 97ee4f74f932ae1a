-- The work database of the takings on slips (Report/IntrodottoDistinta.mdb):
-- the venues and the slips' rows as the main database declares them, and the
-- heading row.
-- include Comuni/AnagraficaLocali.sql
CREATE INDEX AnagraficaLocali_CodLocale ON AnagraficaLocali (CodLocale);
-- include Comuni/QuietanzaRighe.sql
-- include Comuni/Parametri.sql
