-- The work database of the change-machine situation (Report/SaldiCambiamonete.mdb): the
-- venues, the boards and their last notes as the main database declares them,
-- the heading row, and the index the layout looks each venue up by.
-- include Comuni/AnagraficaLocali.sql
CREATE INDEX AnagraficaLocali_CodLocale ON AnagraficaLocali (CodLocale);
-- include Comuni/MagSchede.sql
-- include Comuni/NoteIncassi.sql
-- include Comuni/Parametri.sql
