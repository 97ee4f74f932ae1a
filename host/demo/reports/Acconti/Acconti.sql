-- The work database of the advances and of the refills (Report/Acconti.mdb):
-- the venues, the notes and their machine lines as the main database declares
-- them, and the heading row.
-- include Comuni/AnagraficaLocali.sql
CREATE INDEX AnagraficaLocali_CodLocale ON AnagraficaLocali (CodLocale);
-- include Comuni/NoteTeste.sql
-- include Comuni/NoteIncassi.sql
CREATE INDEX NoteIncassi_IdTesta ON NoteIncassi (IdTesta);
-- include Comuni/Parametri.sql
