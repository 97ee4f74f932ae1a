-- The work database of the board labels (Report/Etichette.mdb): the boards as
-- the main database declares them, and each board's machine category.
-- include Comuni/MagSchede.sql
CREATE TABLE SchedaCateg (idScheda INTEGER, Categoria TEXT(20) COLLATE NOCASE);
CREATE INDEX SchedaCateg_idScheda ON SchedaCateg (idScheda);
