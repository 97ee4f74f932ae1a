-- The work database of the quittance statements (Report/Quietanza.mdb): the
-- heads and lines of the period as the main program stored them, the venues,
-- companies and concessionaires, and the heading row.
-- include Comuni/AnagraficaAziende.sql
-- include Comuni/AnagraficaConcessionari.sql
-- include Comuni/AnagraficaLocali.sql
-- include Comuni/Parametri.sql
-- include Comuni/QuietanzaRighe.sql
CREATE INDEX QuietanzaRighe_idTesta ON QuietanzaRighe (idTesta);
-- include Comuni/QuietanzaTesta.sql
