-- The work database of the deeds of quittance (Report/AttoQuietanza.mdb): the
-- deeds of the period with the lines of every document of the period, the
-- venues with their concession codes and owners, and all companies.
-- include Comuni/AnagraficaAziende.sql
-- include Comuni/AnagraficaLocali.sql
-- include Comuni/AnagraficaLocaliCaratteristiche.sql
-- include Comuni/AnagraficaOperatori.sql
-- include Comuni/DocTeste.sql
-- include Comuni/DocRighe.sql
CREATE INDEX DocRighe_IdDoc ON DocRighe (IdDoc);
