#include "host/demo/demo_label_cases.h"

namespace lorvane::demo {

namespace {

struct LabelBoard {
    const char* article;
    const char* game;
    const char* internal;
    const char* aams;
    const char* barcode;  // SQL: a quoted text, '' or NULL
    int state;            // 0 in use, 1 obsolete, 2 sold, 3 dismissed
    bool mounted;         // in a finished product of the store
};

constexpr LabelBoard boards[] = {
    {"SCH01", "Scheda dell'Orso", "E00001", "AAMSE0001", "'8099000000017'", 0, true},
    {"SCH02", "Fiore d'Oro", "E00002", "AAMSE0002", "''", 0, true},
    {"SCH03", "Gioco senza codice", "E00003", "AAMSE0003", "NULL", 0, true},
    {"PFAWP", "Scheda fuori anagrafica", "E00004", "AAMSE0004", "'8099000000048'", 0, true},
    {"SCH01", "Scheda d'Archivio", "E00005", "AAMSE0005", "'8099000000055'", 0, false},
    {"SCH02", "Scheda Venduta", "E00006", "AAMSE0006", "'8099000000062'", 2, true},
};

struct LabelCabinet {
    const char* name;
    const char* internal;
    const char* barcode;
    int state;
};

constexpr LabelCabinet cabinets[] = {
    {"Mobile dell'Arte", "ME0001", "'8199000000016'", 0},
    {"Mobile senza codice", "ME0002", "NULL", 0},
    {"Mobile d'epoca dismesso", "ME0003", "'8199000000030'", 3},
    {"Mobile obsoleto", "ME0004", "'8199000000047'", 1},
    {"Mobile venduto", "ME0005", "'8199000000054'", 2},
};

QByteArray flags(int state) {
    return (state == 1 ? "-1, " : "0, ") + QByteArray(state == 2 ? "-1, " : "0, ") +
           (state == 3 ? "-1" : "0");
}

}  // namespace

void writeLabelCases(Database& db) {
    for (const LabelCabinet& cabinet : cabinets) {
        db.exec(
            "INSERT INTO MagMobili (CodArticolo, NomeMobile, CodiceInterno, CodiceABarre, "
            "codMagazzino, Obsoleto, Venduto, Dismesso, CodiceAzienda) VALUES ('MOBSLIM', '" +
            QByteArray(cabinet.name).replace('\'', "''") + "', '" + cabinet.internal + "', " +
            cabinet.barcode + ", 'MAG1', " + flags(cabinet.state) + ", 'AZ01')");
    }
    for (const LabelBoard& board : boards) {
        db.exec(
            "INSERT INTO MagSchede (CodArticolo, NomeGioco, CodiceInterno, CodiceAAMS, "
            "CodiceABarre, TipologiaIncasso, CodMagazzino, Obsoleto, Venduto, Dismesso, "
            "CodiceAzienda, Omologa) VALUES ('" +
            QByteArray(board.article) + "', '" + QByteArray(board.game).replace('\'', "''") +
            "', '" + board.internal + "', '" + board.aams + "', " + board.barcode +
            ", 0, 'MAG1', " + flags(board.state) + ", 'AZ01', 'OME')");
        if (!board.mounted) continue;
        db.exec(
            "INSERT INTO MagProdottoFinito (CodArticolo, Descrizione, Matricola, "
            "CodMagazzino, LinkMobile, CodiceAzienda) VALUES ('PFAWP', 'AWP in magazzino', "
            "'MT-" +
            QByteArray(board.internal) +
            "', 'MAG1', (SELECT MIN(id) FROM MagMobili WHERE CodiceInterno = 'ME0001'), "
            "'AZ01')");
        db.exec(
            "INSERT INTO MagProdottoDistinta (IdProdottoFinito, linkScheda, CodArticolo, "
            "Quantita) VALUES (last_insert_rowid(), (SELECT MAX(id) FROM MagSchede), '" +
            QByteArray(board.article) + "', 1)");
    }
}

}  // namespace lorvane::demo
