-- The work database of the account card (Report/SchedaContab.mdb): as the
-- customer card's, with the collector of each line's note beside the line.
-- include Comuni/AnagraficaLocali.sql
-- include Comuni/AnagraficaPianoConti.sql
-- include Comuni/NoteRighe.sql
ALTER TABLE NoteRighe ADD COLUMN CodEsattore TEXT(20) COLLATE NOCASE;
-- include Comuni/NoteTeste.sql
-- include Comuni/Parametri.sql
-- include Comuni/Saldi.sql
