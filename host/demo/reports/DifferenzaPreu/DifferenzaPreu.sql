-- The work database of the PREU difference (Report/DifferenzaPreu.mdb): the
-- venues, the collection notes and their lines as the main database declares
-- them, and the heading row with the difference of the rates, an exact decimal.
-- include Comuni/AnagraficaLocali.sql
CREATE INDEX AnagraficaLocali_CodLocale ON AnagraficaLocali (CodLocale);
-- include Comuni/NoteTeste.sql
-- include Comuni/NoteIncassi.sql
-- include Comuni/Parametri.sql
ALTER TABLE Parametri ADD COLUMN Differenza DECIMAL;
