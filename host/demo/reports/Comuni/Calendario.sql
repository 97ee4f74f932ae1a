CREATE TABLE Calendario (giorno DATETIME);
