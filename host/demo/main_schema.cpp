// The table definitions of the main database, the catalogue and the
// preferences, and the code that turns them into SQLite DDL.
#include "host/demo/main_schema.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <vector>

#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

enum class Kind { Counter, Key, Long, Short, Double, Money, Date, YesNo, Text, Memo };

struct Column {
    const char* name;
    Kind kind;
    int size = 0;  // characters, text columns only
};

struct Table {
    const char* name;
    std::vector<Column> columns;
};

struct Index {
    const char* name;
    const char* table;
    const char* columns;
    bool unique = false;
};

Column counter(const char* name) { return {name, Kind::Counter}; }
Column key(const char* name) { return {name, Kind::Key}; }
Column lng(const char* name) { return {name, Kind::Long}; }
Column shortInt(const char* name) { return {name, Kind::Short}; }
Column dbl(const char* name) { return {name, Kind::Double}; }
Column money(const char* name) { return {name, Kind::Money}; }
Column date(const char* name) { return {name, Kind::Date}; }
Column yesNo(const char* name) { return {name, Kind::YesNo}; }
Column text(const char* name, int size) { return {name, Kind::Text, size}; }
Column memo(const char* name) { return {name, Kind::Memo}; }

// Widths shared by many tables, so that a code copied from one table to
// another always fits.
constexpr int CodeWidth = 20;     // venue, operator, account, article, concessionaire codes
constexpr int ShortCode = 10;     // company, zone, causale, contract, store codes
constexpr int NameWidth = 50;     // names of persons and towns
constexpr int LongName = 100;     // company names, signs, addresses, e-mail
constexpr int PhoneWidth = 30;    // telephone numbers
constexpr int ProvinceWidth = 5;  // "MI", "BG"...
constexpr int CapWidth = 10;      // postal codes
constexpr int TaxCodeWidth = 20;  // VAT numbers and fiscal codes

QString declaration(const Column& column) {
    switch (column.kind) {
        case Kind::Counter:
            return u"INTEGER PRIMARY KEY AUTOINCREMENT"_s;
        case Kind::Key:
            return u"INTEGER PRIMARY KEY"_s;
        case Kind::Long:
            return u"INTEGER"_s;
        case Kind::Short:
            return u"SMALLINT"_s;
        case Kind::Double:
            return u"DOUBLE"_s;
        case Kind::Money:
            return u"CURRENCY"_s;
        case Kind::Date:
            return u"DATETIME"_s;
        case Kind::YesNo:
            return u"BOOLEAN"_s;
        case Kind::Text:
            return u"TEXT(%1) COLLATE NOCASE"_s.arg(column.size);
        case Kind::Memo:
            return u"MEMO COLLATE NOCASE"_s;
    }
    return {};
}

QString createTableSql(const Table& table) {
    QStringList columns;
    for (const Column& column : table.columns) {
        columns << QString::fromLatin1(column.name) + u' ' + declaration(column);
    }
    return u"CREATE TABLE %1 (\n  %2\n)"_s.arg(QString::fromLatin1(table.name),
                                                columns.join(u",\n  "_s));
}

QString createIndexSql(const Index& index) {
    return u"CREATE %1INDEX %2 ON %3 (%4)"_s.arg(index.unique ? u"UNIQUE "_s : QString(),
                                                  QString::fromLatin1(index.name),
                                                  QString::fromLatin1(index.table),
                                                  QString::fromLatin1(index.columns));
}

// --- Notes: heads, accounting lines, machine readings

Table noteTeste() {
    return {"NoteTeste",
            {counter("id"),
             date("DataRegistrazione"),
             text("CodLocale", CodeWidth),
             text("CodEsattore", CodeWidth),
             text("CodCausale", ShortCode),
             text("Descrizione", 255),
             memo("Annotazioni"),
             lng("idOnda"),
             yesNo("Import"),
             text("CodAgente", CodeWidth),
             dbl("PercAgente"),
             text("CodiceAzienda", ShortCode),
             text("ContoPercAgente", CodeWidth),
             text("CodSubAgente", CodeWidth),
             dbl("PercSubAgente"),
             text("ContoPercSubAgente", CodeWidth),
             yesNo("Chiuso"),
             yesNo("Fatturato"),
             lng("idFattura"),
             yesNo("Bloccato"),
             date("idData"),
             lng("IdOperatore"),
             shortInt("TipologiaIncasso"),
             shortInt("GestioneDenaro"),
             yesNo("IncassoGettoni"),
             yesNo("IncassoTasse"),
             money("UtileLocale"),
             money("UtileNoleggiatore"),
             money("VersatoALocale"),
             money("FurtoLocale"),
             money("FurtoNoleggiatore"),
             money("AmmancoLocale"),
             money("AmmancoNoleggiatore"),
             shortInt("StileIncasso"),
             money("TotIntrodotto"),
             money("TotUscite"),
             money("TotPreu"),
             money("TotAAMS"),
             money("TotRETE"),
             money("TotDaDividere"),
             money("VarDebito"),
             money("VarPrestito"),
             money("Riscosso"),
             money("Rimanenza"),
             money("Arrotondamenti"),
             money("Acconto"),
             money("AnticipoLocale"),
             yesNo("AttesaFatture"),
             text("NumeroTerminale", CodeWidth),
             money("VariazioneHopper"),
             money("DaRiscuotere"),
             money("DaRiscuotereTeorica"),
             money("QuotaNolTeorica"),
             money("RefillLocale"),
             money("RefillNoleggiatore"),
             money("TotTasse"),
             money("Variazioni"),
             money("Teorico")}};
}

// The lines carry no CodEsattore of their own: the account ledger card reads
// it from the head with "SELECT nr.*,nt.CodEsattore", and a column of the same
// name here would be the one its copy takes.
Table noteRighe() {
    return {"NoteRighe",
            {counter("id"), lng("IdTesta"), date("Data"), text("Descrizione", 255),
             money("Dare"), money("Avere"), text("CodConto", CodeWidth),
             text("codLocale", CodeWidth), date("idData"), lng("idOperatore"), lng("Riga")}};
}

Table noteIncassi() {
    return {"NoteIncassi",
            {counter("id"),
             lng("IdTesta"),
             text("CodArticolo", CodeWidth),
             lng("LinkApparecchio"),
             lng("LinkScheda"),
             text("CodLocale", CodeWidth),
             date("DataIncasso"),
             shortInt("TipoIncasso"),
             money("ParzialeIn"),
             money("ParzialeOut"),
             lng("ContatoreIN"),
             lng("ContatoreOut"),
             lng("ContatoreMec1"),
             lng("ContatoreMec2"),
             money("LivelloH1"),
             money("LivelloH2"),
             money("Livelloh3"),
             money("TipoH1"),
             money("TipoH2"),
             money("TipoH3"),
             dbl("PercPreu"),
             dbl("PercAAMS"),
             dbl("PercRete"),
             shortInt("TipoRete"),
             lng("Gettoni"),
             money("ValoreGettone"),
             text("Descrizione", 255),
             money("Preu"),
             money("AAms"),
             money("Rete"),
             money("IncassoNs"),
             money("IncassoVs"),
             money("RefillLocale"),
             money("RefillGestore"),
             yesNo("Forzato"),
             lng("IdOperatore"),
             date("idData"),
             yesNo("Fatturato"),
             lng("idFattura"),
             money("Ammanchi"),
             money("Acconti"),
             money("Furti"),
             money("Cassetto"),
             text("TipoCalcolo", CodeWidth),
             dbl("PercLocale"),
             dbl("PercNoleggiatore"),
             shortInt("NumGiorniIncasso"),
             lng("VecchioContatoreIN"),
             lng("VecchioContatoreOut"),
             date("DataVecchioContatore"),
             lng("Riga"),
             text("CatApparecchio", CodeWidth),
             yesNo("Import"),
             text("CodConcessionario", CodeWidth),
             money("VariazioneHopper"),
             money("ForfaitIN"),
             money("ForfaitOut"),
             shortInt("GiorniForfait"),
             money("VecchioForfaitIN"),
             money("VecchioForfaitOUT"),
             yesNo("UltimaLettura"),
             dbl("MoltiplicatoreIN"),
             dbl("MoltiplicatoreOUT"),
             yesNo("Chiuso"),
             lng("IdChiusura"),
             dbl("Perc2Gestore"),
             dbl("Perc3Gestore"),
             dbl("PercSubAgente"),
             money("scassettaSubAgente"),
             money("Scassetta3Gestore"),
             dbl("PercScassettoSub"),
             dbl("PercScassetto3Gest"),
             money("MonetaAggiunta"),
             money("MonetaRitirata"),
             money("BanconoteAggiunte"),
             money("BanconoteRitirate"),
             text("CodiceAzienda", ShortCode),
             text("Contratto", ShortCode),
             money("HopperOLD1"),
             money("HopperOLD2"),
             money("HopperOLD3"),
             lng("Progressivo"),
             money("TotaleTasse")}};
}

// --- Master data

// The venue columns, shared by AnagraficaLocali and AnagraficaLocali_Tmp.
std::vector<Column> venueColumns() {
    return {counter("id"),
            text("CodLocale", CodeWidth),
            text("CatLocale", CodeWidth),
            text("TipoLocale", NameWidth),
            text("Insegna", LongName),
            text("Soprannome", NameWidth),
            text("CAP", CapWidth),
            text("Indirizzo", LongName),
            text("Localita", NameWidth),
            text("Citta", NameWidth),
            text("Provincia", ProvinceWidth),
            text("NumCivico", ShortCode),
            text("Iva", TaxCodeWidth),
            text("CodFisc", TaxCodeWidth),
            text("tel", PhoneWidth),
            text("fax", PhoneWidth),
            text("cell", PhoneWidth),
            text("cell2", PhoneWidth),
            text("email", LongName),
            text("CodZona", ShortCode),
            shortInt("tipologiaIncasso"),
            yesNo("incassoGettoni"),
            yesNo("IncassoTasse"),
            shortInt("GestioneDenaro"),
            text("codTitolare", CodeWidth),
            text("codGestore", CodeWidth),
            text("codReferente", CodeWidth),
            text("codEsattore", CodeWidth),
            text("codAgente", CodeWidth),
            date("dataAcquisizione"),
            lng("IdOperatore"),
            date("idData"),
            yesNo("Sospeso"),
            date("DataSosp"),
            memo("Descr"),
            money("Rimanenza"),
            text("CodiceAzienda", ShortCode),
            text("esTipoDitta", CodeWidth),
            text("esCodEsercente", CodeWidth),
            text("Cittadinanza", NameWidth),
            text("esDitta", LongName),
            text("esPiva", TaxCodeWidth),
            text("esCodf", TaxCodeWidth),
            text("esSedeVia", LongName),
            text("esSedeNr", ShortCode),
            text("esSedeCap", CapWidth),
            text("esSedeComune", NameWidth),
            text("esSedeProvincia", ProvinceWidth),
            text("esCod86", CodeWidth),
            text("esCod88", CodeWidth),
            text("CodAttivita", CodeWidth),
            text("CodMonopolio", CodeWidth),
            text("CodCatastale", ShortCode),
            lng("esMq"),
            shortInt("esNumCamere"),
            text("CodiceConto", CodeWidth),
            date("DataSinc"),
            text("pwd", CodeWidth),
            text("CCIAA", CodeWidth),
            text("StatoDIA", CodeWidth),
            text("TipoGettoni", CodeWidth),
            text("TipoVia", CodeWidth)};
}

Table anagraficaLocali() { return {"AnagraficaLocali", venueColumns()}; }

// The venues of the current selection: one table for every user of the
// database, rebuilt by each report run.
Table anagraficaLocaliTmp() { return {"AnagraficaLocali_Tmp", venueColumns()}; }

Table anagraficaLocaliCaratteristiche() {
    return {"AnagraficaLocaliCaratteristiche",
            {counter("id"), text("CodLocale", CodeWidth), text("CodCogetech", CodeWidth),
             text("CodLottomatica", CodeWidth), text("CodGamenet", CodeWidth),
             text("CodAtlantis", CodeWidth), text("CodGMatica", CodeWidth)}};
}

Table anagraficaAziende() {
    return {"AnagraficaAziende",
            {counter("id"),
             text("CodiceAzienda", ShortCode),
             text("RagioneSociale", LongName),
             text("Ragione2", LongName),
             text("PIVA", TaxCodeWidth),
             text("CodFisc", TaxCodeWidth),
             text("Indirizzo", LongName),
             text("NumeroCivico", ShortCode),
             text("Cap", CapWidth),
             text("Citta", NameWidth),
             text("Prov", ProvinceWidth),
             text("Tel", PhoneWidth),
             text("Fax", PhoneWidth),
             text("cell1", PhoneWidth),
             text("cell2", PhoneWidth),
             text("SedeOperativaProvincia", ProvinceWidth),
             text("SedeOperativaIndirizzo", LongName),
             text("SedeOperativaNcivico", ShortCode),
             text("SedeOperativaCap", CapWidth),
             text("SedeOperativaLocalita", NameWidth),
             dbl("PercentualeDitta"),
             text("NomeLegale", NameWidth),
             text("CognomeLegale", NameWidth),
             date("DataNascitaLegale"),
             text("LuogoNascitaLegale", NameWidth),
             text("ProvNascitaLegale", ProvinceWidth),
             text("CodFiscLegale", TaxCodeWidth),
             text("IndirizzoLegale", LongName),
             text("NumCivicoLegale", ShortCode),
             text("ComuneLegale", NameWidth),
             text("ProvinciaLegale", ProvinceWidth),
             text("CapLegale", CapWidth),
             text("email", LongName),
             yesNo("Import"),
             text("CodGestore", CodeWidth)}};
}

Table anagraficaOperatori() {
    return {"AnagraficaOperatori",
            {counter("id"),
             text("codiceOperatore", CodeWidth),
             text("TXTPassword", NameWidth),
             text("Mansione", CodeWidth),
             text("nome", NameWidth),
             text("cognome", NameWidth),
             text("descrizione", LongName),
             text("Indirizzo", LongName),
             text("numeroCivico", ShortCode),
             text("Citta", NameWidth),
             text("Cap", CapWidth),
             text("Provincia", ProvinceWidth),
             text("Iva", TaxCodeWidth),
             text("CodFiscale", TaxCodeWidth),
             text("Tel", PhoneWidth),
             text("Cel", PhoneWidth),
             text("Fax", PhoneWidth),
             text("Email", LongName),
             yesNo("Terminale"),
             text("NumeroTerminale", CodeWidth),
             text("TipoTerminale", CodeWidth),
             shortInt("Livello"),
             dbl("Percentuale"),
             yesNo("AbilitazioneUtente"),
             yesNo("VistaCompleta"),
             text("CodiceAzienda", ShortCode),
             lng("idOperatore"),
             date("idData"),
             text("Sesso", 1),
             date("NatoIl"),
             text("ComuneN", NameWidth),
             text("ProvN", ProvinceWidth),
             text("CodiceAutomezzo", CodeWidth)}};
}

Table anagraficaConcessionari() {
    return {"AnagraficaConcessionari",
            {counter("id"),
             text("codiceConcessionario", CodeWidth),
             text("mail", LongName),
             text("descrizione", LongName),
             text("Telefono", PhoneWidth),
             text("Fax", PhoneWidth),
             text("Contatto", LongName),
             shortInt("TipoCostoRete"),
             money("Fissogg"),
             money("ImpiantoLocale"),
             money("Soglia"),
             money("ImpiantoMacchina"),
             dbl("Percentuale"),
             text("FormatoDocumenti", CodeWidth),
             text("Ncivico", ShortCode),
             text("Provincia", ProvinceWidth),
             text("CAP", CapWidth),
             text("Localita", NameWidth),
             text("Indirizzo", LongName),
             text("CodiceConto", CodeWidth),
             text("Piva", TaxCodeWidth),
             text("CodFiscale", TaxCodeWidth),
             lng("idOperatore"),
             date("idData"),
             yesNo("Sistema")}};
}

Table anagraficaZone() {
    return {"AnagraficaZone",
            {counter("id"), text("CodiceZona", ShortCode), text("Descrizione", NameWidth),
             date("idData"), lng("IdOperatore")}};
}

Table anagraficaCausali() {
    return {"AnagraficaCausali",
            {counter("id"), text("CodiceCausale", ShortCode), text("Descrizione", LongName),
             yesNo("Introdotto"), yesNo("Cassa"), yesNo("RegistroCorrispettivi"),
             date("idData"), lng("IdOperatore")}};
}

Table anagraficaPianoConti() {
    return {"AnagraficaPianoConti",
            {counter("id"), text("CodiceConto", CodeWidth), text("Descrizione", LongName),
             yesNo("Sistema"), shortInt("TipoConto"), shortInt("LivelloConto"), date("idData"),
             lng("idOperatore"), text("Mastro", ShortCode)}};
}

// --- Configuration tables

Table tabAssociazioneConti() {
    return {"TabAssociazioneConti",
            {text("CassaAcconti", CodeWidth), text("PrestitiALocale", CodeWidth),
             text("ContoCassa", CodeWidth), text("ContoBanca", CodeWidth),
             text("ContoPreu", CodeWidth), text("ContoAAMS", CodeWidth),
             text("ContoRete", CodeWidth), text("RicaviAWP", CodeWidth),
             text("RicaviComma7", CodeWidth), text("Arrotondamenti", CodeWidth),
             text("PerditeFurti", CodeWidth), text("SpeseGestione", CodeWidth)}};
}

Table tipoContratto() {
    return {"TipoContratto",
            {counter("id"), text("Contratto", ShortCode), text("Descrizione", NameWidth),
             dbl("PercentualeComodato"), date("idData"), lng("IdOperatore")}};
}

Table zPers() {
    return {"ZPers",
            {yesNo("RegistroCorrispettivi"), yesNo("GestioneComodato"),
             shortInt("CopieQuietanza")}};
}

// The suite's users, as the search grid reads them.
Table operatori() {
    return {"operatori",
            {counter("id"), text("Utente", NameWidth), text("Password", NameWidth),
             text("Nome", NameWidth), text("Cognome", NameWidth), shortInt("Livello"),
             yesNo("Amministratore"), yesNo("Attivo"), text("CodiceOperatore", CodeWidth),
             date("idData")}};
}

// --- Store: articles, boards, cabinets, finished products

Table magAnagArticoli() {
    return {"MagAnagArticoli",
            {counter("id"), text("CodArticolo", CodeWidth), text("Descrizione", LongName),
             shortInt("tipoArticolo"), text("CatApparecchio", CodeWidth),
             text("CatStatistica", CodeWidth), text("CatMarca", CodeWidth),
             text("UnMis", ProvinceWidth), money("PrezzoAcquisto"), date("idData"),
             lng("IdOperatore")}};
}

Table magSchede() {
    return {"MagSchede",
            {counter("id"),
             text("CodArticolo", CodeWidth),
             text("NomeGioco", LongName),
             text("CodiceInterno", CodeWidth),
             text("CodiceAAMS", CodeWidth),
             shortInt("StatoNullaosta"),
             date("DataNullaosta"),
             text("Nullaosta", PhoneWidth),
             text("NullaOstaProduttore", PhoneWidth),
             text("ProgrProduttore", CodeWidth),
             yesNo("AttSospensione"),
             text("CodCE", CodeWidth),
             text("CodiceABarre", PhoneWidth),
             text("CodFornitore", CodeWidth),
             shortInt("TipoMonetaGettoni"),
             money("ValoreGettone"),
             shortInt("NumeroGettoniPartita"),
             shortInt("TipologiaIncasso"),
             shortInt("TipoPremio"),
             money("ValorePremio"),
             shortInt("NumeroContatori"),
             shortInt("NumeroHopper"),
             text("CodiceModello", CodeWidth),
             text("CodiceProduttore", CodeWidth),
             text("CodiceSoftware", CodeWidth),
             text("SerialeScheda", PhoneWidth),
             shortInt("StatoApparecchio"),
             text("ProgressivoDistribuzione", CodeWidth),
             text("AttestatoConformita", PhoneWidth),
             text("CodiceIdentificativoTemporaneo", PhoneWidth),
             text("NullaOstaDistribuzione", PhoneWidth),
             date("DataNoDistribuzione"),
             yesNo("Obsoleto"),
             yesNo("Venduto"),
             yesNo("Dismesso"),
             date("DataDismissione"),
             shortInt("StatoDismissione"),
             yesNo("DismissioneAccettata"),
             date("DataAccettazione"),
             date("idData"),
             lng("IdOperatore"),
             text("CodLocale", CodeWidth),
             text("CodMagazzino", ShortCode),
             text("CodiceAzienda", ShortCode),
             dbl("MoltiplicatoreIN"),
             dbl("MoltiplicatoreOut"),
             text("CodConcessionario", CodeWidth),
             yesNo("DistintaBase"),
             text("Omologa", PhoneWidth),
             yesNo("import"),
             yesNo("IsiPagata"),
             date("DataNullaOstaProd"),
             date("UltimoIncasso"),
             lng("CnTotIN"),
             lng("CnTotOut"),
             money("AttualeH1"),
             money("AttualeH2"),
             money("AttualeH3"),
             money("Acconto"),
             text("Contratto", ShortCode),
             yesNo("AllarmeSoglia"),
             money("AllarmeSogliaVal"),
             memo("Annotazioni"),
             text("NoteLeasing", 255),
             yesNo("Leasing"),
             text("NumeroScheda", CodeWidth)}};
}

Table magMobili() {
    return {"MagMobili",
            {counter("id"),
             text("CodArticolo", CodeWidth),
             text("NomeMobile", LongName),
             text("CodiceInterno", CodeWidth),
             text("CodiceABarre", PhoneWidth),
             dbl("Peso"),
             dbl("DimensioniLung"),
             dbl("DimensioniAlt"),
             dbl("DimensioniProf"),
             text("NumeriSerrature", NameWidth),
             text("Plancia", NameWidth),
             text("TipoAlimentatore", NameWidth),
             text("TipoCablaggio", NameWidth),
             text("Gettoniera", NameWidth),
             shortInt("NumeroPostazioni"),
             text("TipoMonitor", NameWidth),
             date("idData"),
             lng("IdOperatore"),
             text("codLocale", CodeWidth),
             text("codMagazzino", ShortCode),
             memo("AltriDati"),
             shortInt("NumeroPulsanti"),
             text("TipoPulsanti", NameWidth),
             shortInt("NumeroHopper"),
             text("TipoHopper", NameWidth),
             money("MaxPremi"),
             text("Tecnologia", NameWidth),
             text("TipologiaGioco", NameWidth),
             memo("ElencoGiochi"),
             dbl("MisureVetroA"),
             dbl("MisureVetroB"),
             yesNo("Obsoleto"),
             yesNo("Venduto"),
             yesNo("Dismesso"),
             date("DataDismesso"),
             shortInt("StatoDismesso"),
             yesNo("DismissioneAccettata"),
             date("DataAccettazione"),
             text("RFID", PhoneWidth),
             yesNo("CE"),
             text("CodiceAzienda", ShortCode),
             yesNo("DistintaBase"),
             yesNo("import"),
             money("TipoH1"),
             money("TipoH2"),
             money("TipoH3"),
             shortInt("NumH1"),
             shortInt("NumH2"),
             shortInt("NumH3"),
             shortInt("ProprietaMoneta"),
             text("NumeroMobile", CodeWidth)}};
}

// The label search selects "MagProdottoFinito.*" beside named columns of the
// board, the venue and the article: none of those names may stand here, or
// the product's column would be the one the search reads.
Table magProdottoFinito() {
    return {"MagProdottoFinito",
            {counter("id"), text("CodArticolo", CodeWidth), text("Descrizione", LongName),
             text("Matricola", PhoneWidth), text("CodLocale", CodeWidth),
             text("CodMagazzino", ShortCode), lng("LinkMobile"), date("DataAssemblaggio"),
             text("CodiceAzienda", ShortCode), date("idData"), lng("IdOperatore")}};
}

Table magProdottoDistinta() {
    return {"MagProdottoDistinta",
            {counter("id"), lng("IdProdottoFinito"), lng("linkScheda"), lng("linkMobile"),
             text("CodArticolo", CodeWidth), dbl("Quantita"), date("idData"),
             lng("IdOperatore")}};
}

// --- Documents and quittances

Table docTeste() {
    std::vector<Column> columns{counter("id"),
                                date("DataDoc"),
                                shortInt("TipoDoc"),
                                lng("NumDoc"),
                                date("DataReg"),
                                date("DataCompetenzaIVA"),
                                shortInt("TipoIntestazione"),
                                text("CodIntestazione", CodeWidth),
                                shortInt("TipoSpettabile"),
                                text("CodSpettabile", CodeWidth),
                                lng("idCauMov"),
                                text("CodMagazzino", ShortCode),
                                text("Registro", ShortCode),
                                text("NostroRif", NameWidth),
                                text("VostroRif", NameWidth),
                                text("CodBanca", CodeWidth),
                                text("CodAgente", CodeWidth),
                                text("CodArea", ShortCode),
                                text("CodBoll", ShortCode),
                                text("CodVettore", CodeWidth),
                                text("CodPorto", ShortCode),
                                text("CodAcura", ShortCode),
                                text("CodCausale", ShortCode),
                                text("CodPagamento", ShortCode),
                                text("CodListino", ShortCode)};
    for (const char* total : {"TotMerce", "TotOmaggi", "TotImponibile", "TotNonImp", "TotImposta",
                              "TotDoc", "TotIncassoLordo", "TotPremi", "TotPREU", "TotDaRipartire",
                              "Totrete", "TotAAMS", "Acconto", "Contrassegno", "Abbuono",
                              "TotDaPagare"}) {
        columns.push_back(money(total));
    }
    for (const char* flag :
         {"Intra", "InSospensione", "Emesso", "Registrato", "Magazzino", "Stampato", "Effetti",
          "AddebitaBolli", "AddebitaSpese", "SegueFattura", "AccontoInCassa", "DocTemporaneo",
          "Chiuso", "ScadenzeInFattura"}) {
        columns.push_back(yesNo(flag));
    }
    columns.insert(columns.end(),
                   {date("DataEvasione"), text("NrPartita", CodeWidth), lng("IDPrimaNota"),
                    memo("Annotazioni"), text("CodiceAzienda", ShortCode), date("idData"),
                    lng("idOperatore"), yesNo("DestDiversa"), text("NomeDest", LongName),
                    text("Indirizzo", LongName), text("Citta", NameWidth), text("cap", CapWidth),
                    text("provincia", ProvinceWidth), text("Aspetto", NameWidth),
                    text("Sezionale", ShortCode)});
    return {"DocTeste", std::move(columns)};
}

Table docRighe() {
    return {"DocRighe",
            {counter("id"),
             lng("NumDoc"),
             lng("IdDoc"),
             lng("NrRiga"),
             shortInt("TipoRiga"),
             text("RifDoc", NameWidth),
             shortInt("TipoLinkDoc"),
             lng("TestaLinkDoc"),
             shortInt("TipoArticolo"),
             text("CodArt", CodeWidth),
             text("Descrizione", 255),
             text("UnMis", ProvinceWidth),
             dbl("Qta"),
             money("ValUnit"),
             dbl("Sconto1"),
             dbl("Sconto2"),
             money("ImpSconto"),
             text("CodIva", ShortCode),
             dbl("Provv"),
             money("ImpProvv"),
             text("CodConto", CodeWidth),
             money("Imponibile"),
             money("Imposta"),
             money("Totale"),
             date("DataConsegna"),
             dbl("QtaLink"),
             shortInt("NrColli"),
             dbl("PesoNetto"),
             dbl("PesoLordo"),
             yesNo("NonStampa"),
             date("DataPresConsegna"),
             dbl("Cubaggio"),
             text("Commessa", CodeWidth),
             text("CentroDiCosto", CodeWidth),
             text("VoceDiSpesa", CodeWidth),
             yesNo("InputProduzione"),
             yesNo("RigaChiusa"),
             money("Preu"),
             money("AAms"),
             money("Rete"),
             money("Introdotto"),
             money("Uscire"),
             shortInt("TipoRete"),
             dbl("percRete"),
             dbl("PercAAms"),
             dbl("PercPreu"),
             money("aggioLocale"),
             money("Noleggiatore"),
             dbl("PercLocale"),
             dbl("PercNoleggiatore"),
             dbl("PercAgente"),
             money("AggioAgente"),
             money("Rimanente"),
             lng("idOperatore"),
             date("idData"),
             dbl("SubAgentePerc"),
             money("SubAgenteValore"),
             money("SubAgenteSCassetto"),
             money("terzoGsCassetto"),
             text("CodiceAzienda", ShortCode),
             text("CodAAMS", CodeWidth),
             text("NomeApparecchio", LongName)}};
}

Table quietanzaTesta() {
    return {"QuietanzaTesta",
            {counter("id"),
             money("aams"),
             money("Aggio"),
             yesNo("Bollo"),
             text("Codice", CodeWidth),
             text("CodiceAzienda", ShortCode),
             text("CodLocale", CodeWidth),
             text("CodConcessionario", CodeWidth),
             date("DaData"),
             date("Data"),
             yesNo("email"),
             yesNo("GeneratoRid"),
             lng("idContab"),
             date("idData"),
             lng("IdOperatore"),
             money("ImportoBollo"),
             lng("NumeroDoc"),
             dbl("PercRecuperoDepositoCauzionale"),
             dbl("PercRecuperoFondoCassa"),
             text("Periodo", NameWidth),
             money("preu"),
             money("RecuperoDepositoCauzionale"),
             money("RecuperoFondoCassa"),
             money("rete"),
             money("Saldo"),
             money("SommaIN"),
             money("SommaOUT"),
             money("spese"),
             shortInt("Stato"),
             text("TipoCalcolo", CodeWidth),
             shortInt("TipoDocumento"),
             money("TotaleDocumento")}};
}

Table quietanzaRighe() {
    return {"QuietanzaRighe",
            {counter("id"),
             money("AAMS"),
             date("aData"),
             money("Aggio2Gestore"),
             money("Aggio3Gestore"),
             text("AWP", CodeWidth),
             text("Codice2Gestore", CodeWidth),
             text("Codice3Gestore", CodeWidth),
             text("CodiceAzienda", ShortCode),
             text("CodiceSubAgente", CodeWidth),
             text("CodLocale", CodeWidth),
             lng("ContatoreIN"),
             lng("ContatoreOUT"),
             date("DaData"),
             date("DataInst"),
             date("DataRitiro"),
             money("ForfIN"),
             money("ForfOUT"),
             shortInt("gg"),
             shortInt("GiorniForfe"),
             date("IdData"),
             lng("IdOperatore"),
             lng("idTesta"),
             yesNo("Intervento"),
             date("LetturaPrecedente"),
             lng("LinkScheda"),
             text("NomeAwp", LongName),
             lng("OldIN"),
             lng("OldOut"),
             money("ParteLocale"),
             dbl("Percentuale"),
             dbl("Percentuale2gestore"),
             dbl("Percentuale3Gestore"),
             dbl("PercScassetto2gestore"),
             dbl("PercScassetto3Gestore"),
             dbl("PercScassettoSub"),
             money("Preu"),
             money("RETE"),
             lng("Riga"),
             money("Scassetto2gestore"),
             money("Scassetto3Gestore"),
             money("ScassettoSub"),
             text("TipoCalcolo", CodeWidth),
             date("UltimaLettura"),
             money("VecchioForfeIN"),
             money("VecchioForfeOUT")}};
}

std::vector<Table> mainTables() {
    return {noteTeste(),
            noteRighe(),
            noteIncassi(),
            anagraficaLocali(),
            anagraficaLocaliTmp(),
            anagraficaLocaliCaratteristiche(),
            anagraficaAziende(),
            anagraficaOperatori(),
            anagraficaConcessionari(),
            anagraficaZone(),
            anagraficaCausali(),
            anagraficaPianoConti(),
            tabAssociazioneConti(),
            tipoContratto(),
            zPers(),
            operatori(),
            magAnagArticoli(),
            magSchede(),
            magMobili(),
            magProdottoFinito(),
            magProdottoDistinta(),
            docTeste(),
            docRighe(),
            quietanzaTesta(),
            quietanzaRighe()};
}

// What the reports' statements filter, join and group on, so that they stay
// quick on years of notes.
const Index mainIndexes[] = {
    {"NoteTeste_DataRegistrazione", "NoteTeste", "DataRegistrazione"},
    {"NoteTeste_CodLocale", "NoteTeste", "CodLocale, DataRegistrazione"},
    {"NoteTeste_CodCausale", "NoteTeste", "CodCausale, DataRegistrazione"},
    {"NoteIncassi_IdTesta", "NoteIncassi", "IdTesta"},
    {"NoteIncassi_LinkScheda", "NoteIncassi", "LinkScheda, DataIncasso"},
    {"NoteIncassi_DataIncasso", "NoteIncassi", "DataIncasso"},
    {"NoteIncassi_CodLocale", "NoteIncassi", "CodLocale"},
    {"NoteRighe_IdTesta", "NoteRighe", "IdTesta"},
    {"NoteRighe_CodConto", "NoteRighe", "CodConto, Data"},
    {"NoteRighe_codLocale", "NoteRighe", "codLocale, Data"},
    {"NoteRighe_Data", "NoteRighe", "Data"},
    {"AnagraficaLocali_CodLocale", "AnagraficaLocali", "CodLocale", true},
    {"AnagraficaLocali_Tmp_CodLocale", "AnagraficaLocali_Tmp", "CodLocale"},
    {"AnagraficaLocaliCaratteristiche_CodLocale", "AnagraficaLocaliCaratteristiche",
     "CodLocale"},
    {"AnagraficaAziende_CodiceAzienda", "AnagraficaAziende", "CodiceAzienda", true},
    {"AnagraficaOperatori_codiceOperatore", "AnagraficaOperatori", "codiceOperatore", true},
    {"AnagraficaConcessionari_codiceConcessionario", "AnagraficaConcessionari",
     "codiceConcessionario", true},
    {"AnagraficaZone_CodiceZona", "AnagraficaZone", "CodiceZona", true},
    {"AnagraficaCausali_CodiceCausale", "AnagraficaCausali", "CodiceCausale", true},
    {"AnagraficaPianoConti_CodiceConto", "AnagraficaPianoConti", "CodiceConto", true},
    {"TipoContratto_Contratto", "TipoContratto", "Contratto", true},
    {"MagAnagArticoli_CodArticolo", "MagAnagArticoli", "CodArticolo", true},
    {"MagSchede_CodLocale", "MagSchede", "CodLocale"},
    {"MagMobili_codLocale", "MagMobili", "codLocale"},
    {"MagProdottoFinito_CodLocale", "MagProdottoFinito", "CodLocale"},
    {"MagProdottoDistinta_IdProdottoFinito", "MagProdottoDistinta", "IdProdottoFinito"},
    {"MagProdottoDistinta_linkScheda", "MagProdottoDistinta", "linkScheda"},
    {"DocTeste_DataDoc", "DocTeste", "DataDoc"},
    {"DocTeste_CodIntestazione", "DocTeste", "CodIntestazione"},
    {"DocRighe_IdDoc", "DocRighe", "IdDoc"},
    {"QuietanzaTesta_Data", "QuietanzaTesta", "Data"},
    {"QuietanzaTesta_CodLocale", "QuietanzaTesta", "CodLocale"},
    {"QuietanzaRighe_idTesta", "QuietanzaRighe", "idTesta"},
};

Table stampe() {
    return {"stampe",
            {key("id"), text("codiceStampa", NameWidth), text("Descrizione", LongName),
             text("NomeReport", 255), text("nomeTemporaneo", 255), lng("Ordine")}};
}

Table viste() {
    return {"viste",
            {counter("id"), text("Utente", NameWidth), text("Modulo", NameWidth),
             text("Nome", LongName), memo("Colonne"), yesNo("Predefinita")}};
}

// Writes a new database with `tables` and `indexes` in one transaction; a
// file that exists is never touched, and a failed write leaves no file.
void createDatabase(const QString& path, const std::vector<Table>& tables,
                    const std::vector<Index>& indexes) {
    if (QFileInfo::exists(path)) {
        throw RuntimeError(
            u"Il database '%1' esiste già: non viene sovrascritto."_s.arg(path));
    }
    QStringList statements{u"BEGIN"_s};
    for (const Table& table : tables) statements << createTableSql(table);
    for (const Index& index : indexes) statements << createIndexSql(index);
    statements << u"COMMIT"_s;

    sqlite3* db = nullptr;
    int rc = sqlite3_open_v2(path.toUtf8().constData(), &db,
                             SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    QString failure;
    if (rc != SQLITE_OK) {
        failure = QString::fromUtf8(db ? sqlite3_errmsg(db) : sqlite3_errstr(rc));
    } else {
        char* error = nullptr;
        rc = sqlite3_exec(db, statements.join(u";\n"_s).toUtf8().constData(), nullptr, nullptr,
                          &error);
        if (rc != SQLITE_OK) {
            failure = QString::fromUtf8(error ? error : sqlite3_errstr(rc));
            sqlite3_free(error);
        }
    }
    sqlite3_close(db);
    if (!failure.isEmpty()) {
        QFile::remove(path);
        throw RuntimeError(u"Impossibile creare il database '%1': %2"_s.arg(path, failure));
    }
}

}  // namespace

void createMainDatabase(const QString& path) {
    createDatabase(path, mainTables(), std::vector<Index>(std::begin(mainIndexes),
                                                          std::end(mainIndexes)));
}

QByteArray mainTablesSql(const QStringList& tables) {
    const std::vector<Table> all = mainTables();
    QStringList statements;
    for (const QString& name : tables) {
        const auto table = std::find_if(all.begin(), all.end(), [&](const Table& t) {
            return QLatin1StringView(t.name) == name;
        });
        if (table == all.end()) {
            throw RuntimeError(u"La tabella '%1' non è del database principale."_s.arg(name));
        }
        statements << createTableSql(*table);
    }
    return (statements.join(u";\n"_s) + u";\n"_s).toUtf8();
}

void createCatalogueDatabase(const QString& path) {
    createDatabase(path, {stampe()}, {{"stampe_codiceStampa", "stampe", "codiceStampa, Ordine"}});
}

void createPreferencesDatabase(const QString& path) {
    createDatabase(path, {viste()}, {{"viste_Modulo", "viste", "Modulo, Utente"}});
}

}  // namespace lorvane::demo
