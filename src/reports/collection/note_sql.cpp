#include "reports/collection/note_sql.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::FrameCriteria;
using screens::SearchForms;
using screens::shownDate;
using screens::sqlDate;

namespace {

// The reference's search with the zone's empty form in small letters.
SearchForms withLowerZone(const SearchForms& forms) {
    SearchForms changed = forms;
    changed.zona.whenEmpty = " WHERE al.codzona='";
    return changed;
}

// The period of the PREU notes, as the notes, their lines and the search write it.
QString periodoPreu(const QDate& dalla, const QDate& alla) {
    return u" DataRegistrazione >= #"_s + sqlDate(dalla) + u"# "_s + u" AND "_s +
           u" DataRegistrazione <= #"_s + sqlDate(alla) + u"# "_s;
}

// Venues with a collection note ('INC6') in the period, of the company chosen.
QString collectedInPeriod(const FrameCriteria& c) {
    QString sql = u"al.CodLocale IN "_s + u" ("_s + u"SELECT CodLocale FROM NoteTeste WHERE "_s +
                  periodoPreu(c.dallaData, c.allaData) + u" AND "_s + u" CodCausale = 'INC6' "_s;
    if (!c.azienda.isEmpty()) sql += u" AND "_s + u" CodiceAzienda='"_s + c.azienda + u"'"_s;
    return sql + u")"_s;
}

bool sameCode(const QString& a, const char* b) {
    return a.compare(QLatin1String(b), Qt::CaseInsensitive) == 0;
}

}  // namespace

const SearchForms& distintaSearchForms() {
    static const SearchForms forms = withLowerZone(screens::referenceSearchForms());
    return forms;
}

QString sqlRigheDistinta(const NoteCriteri& c) {
    return u"SELECT qr.* FROM QuietanzaRighe qr, QuietanzaTesta qt "_s + u"WHERE "_s +
           u" qr.idTesta = qt.id "_s + u" AND "_s + u" qt.TipoDocumento = 1 "_s + u" AND "_s +
           u" qr.aData >= #"_s + sqlDate(c.dallaData) + u"#"_s + u" AND "_s + u" qr.aData <= #"_s +
           sqlDate(c.allaData) + u"#"_s + u" AND "_s +
           u" qt.CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "_s;
}

QString causaleNote(const QString& codiceStampa) {
    return sameCode(codiceStampa, "Acconti") ? u"ACC"_s : u"REF"_s;
}

QString sqlRicercaAcconti(const FrameCriteria& frame, const QString& causale, bool periodo) {
    // The filter always has text here, so every criterion takes its AND form.
    static const SearchForms andForms = [] {
        SearchForms forms = screens::referenceSearchForms();
        forms.head = "";
        forms.notSuspended = " AND al.sospeso = 0 ";
        for (SearchForms::Form* form : {&forms.nome, &forms.localita, &forms.agente,
                                        &forms.provincia, &forms.concessionario, &forms.zona})
            form->whenEmpty = form->whenText;
        forms.periodo = nullptr;
        return forms;
    }();
    QString sql =
        u"SELECT al.CodLocale, al.Insegna, al.Citta"_s +
        u" FROM AnagraficaLocali al LEFT JOIN NoteTeste nt ON nt.CodLocale=al.CodLocale"_s +
        u" WHERE nt.CodCausale = '"_s + causale + u"'"_s;
    if (periodo) {
        sql += u" AND nt.DataRegistrazione >= #"_s + sqlDate(frame.dallaData) + u"#"_s +
               u" AND nt.DataRegistrazione <= #"_s + sqlDate(frame.allaData) + u"#"_s;
    } else {
        sql += u" AND (Chiuso = 0 OR Chiuso IS NULL )"_s;
    }
    return sql + screens::sqlRicercaLocali(frame, andForms) +
           u" GROUP BY al.CodLocale, al.Insegna, al.Citta"_s;
}

QString sqlLocaliAcconti(const QString& causale, bool sospesi, const QString& azienda) {
    QString sql =
        u"SELECT * FROM AnagraficaLocali WHERE CodLocale IN (SELECT CodLocale FROM NoteTeste "
        u"WHERE CodCausale = '"_s +
        causale + u"') "_s;
    if (!sospesi) sql += u" AND Sospeso=0 "_s;
    if (!azienda.isEmpty()) sql += u" AND CodiceAzienda='"_s + azienda + u"'"_s;
    return sql;
}

QString sqlNoteAcconti(const NoteCriteri& c) {
    QString sql = u" SELECT *"_s + u" FROM"_s + u" NoteTeste"_s + u" WHERE"_s +
                  u" CodCausale = '"_s + c.causale + u"'"_s + u" AND"_s +
                  u" CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp)"_s;
    if (c.periodo) {
        return sql + u" AND"_s + u" DataRegistrazione>=#"_s + sqlDate(c.dallaData) + u"#"_s +
               u" AND"_s + u" DataRegistrazione<=#"_s + sqlDate(c.allaData) + u"#"_s;
    }
    return sql + u" AND"_s + u" (Chiuso=0 OR Chiuso IS NULL)"_s;
}

QString sqlIncassiAcconti(const NoteCriteri& c) {
    QString sql = u" SELECT "_s + u" * "_s + u" FROM "_s + u" NoteIncassi "_s + u" WHERE "_s +
                  u" IdTesta IN (SELECT id FROM ("_s + sqlNoteAcconti(c) + u" )AS tmpTable) "_s;
    if (!c.periodo) sql += u" AND "_s + u" (Chiuso = 0 OR Chiuso IS NULL ) "_s;
    return sql;
}

QString sqlNoteSenzaRighe() {
    return u"SELECT nt.*"_s + u" FROM NoteTeste nt LEFT JOIN NoteIncassi ni ON ni.idTesta=nt.id"_s +
           u" WHERE ni.idTesta IS NULL"_s;
}

QString sqlSommaCassaAcconti(const QString& id) {
    return u"SELECT nt.id,SUM(nr.Avere) AS Avere,SUM(nr.Dare) AS Dare"_s +
           u" FROM (NoteTeste nt INNER JOIN NoteRighe nr ON nr.idTesta=nt.id)"_s +
           u" INNER JOIN TabAssociazioneConti tac ON tac.CassaAcconti=nr.CodConto"_s +
           u" WHERE nt.id="_s + id + u" GROUP BY nt.id"_s;
}

QString sqlAggiornaAcconto(const QString& importo, const QString& id) {
    return u"UPDATE NoteTeste"_s + u" SET Acconto="_s + importo + u" WHERE id="_s + id;
}

QString parametriAcconti(const NoteCriteri& c, const QString& codiceStampa, bool filtroLocali) {
    QString text = u"Parametri di ricerca: "_s;
    if (c.periodo) {
        text +=
            u"dalla data "_s + shownDate(c.dallaData) + u" alla data "_s + shownDate(c.allaData);
    } else {
        text +=
            sameCode(codiceStampa, "Acconti") ? u"solo acconti aperti"_s : u"solo refill aperti"_s;
    }
    if (!c.azienda.isEmpty()) text += u", azienda: "_s + c.azienda;
    if (filtroLocali) text += u", filtro su locali"_s;
    return text;
}

const SearchForms& preuSearchForms() {
    static const SearchForms forms = [] {
        SearchForms changed = withLowerZone(screens::referenceSearchForms());
        changed.periodo = collectedInPeriod;
        return changed;
    }();
    return forms;
}

QString sqlNotePreu(const NoteCriteri& c) {
    QString sql = u"SELECT * FROM NoteTeste WHERE "_s + periodoPreu(c.dallaData, c.allaData) +
                  u" AND "_s + u" CodCausale = 'INC6' "_s + u" AND "_s +
                  u" CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "_s;
    if (!c.azienda.isEmpty()) sql += u" AND "_s + u" CodiceAzienda='"_s + c.azienda + u"' "_s;
    return sql;
}

// The inner query leaves the causale out: the lines of any note of the period count.
QString sqlIncassiPreu(const NoteCriteri& c) {
    QString sql = u"SELECT * FROM NoteIncassi "_s + u"WHERE "_s + u" IdTesta IN "_s + u" ( "_s +
                  u"SELECT id FROM NoteTeste WHERE "_s + periodoPreu(c.dallaData, c.allaData) +
                  u" AND "_s + u" CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "_s;
    if (!c.azienda.isEmpty()) sql += u" AND "_s + u" CodiceAzienda='"_s + c.azienda + u"' "_s;
    return sql + u" ) "_s + u" AND "_s +
           u" (TipoCalcolo = 'Utile' OR (TipoCalcolo<>'Utile' AND PercLocale>=25)) "_s;
}

bool preuValido(const QString& testo) { return db::Variant(testo).isNumeric(); }

db::Decimal differenzaPreu(const QString& richiesto, const QString& nuovo) {
    const auto decimal = [](const QString& text) {
        return db::Variant(QString(text).replace(u'.', u',')).toDecimal();
    };
    return decimal(richiesto) - decimal(nuovo);
}

}  // namespace lorvane::reports
