#include "reports/documents/etichette_sql.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;

namespace {

constexpr char schedeInUso[] =
    " WHERE ((MagSchede.Obsoleto)=0 or MagSchede.Obsoleto is null) AND ((MagSchede.Venduto)=0 "
    "or MagSchede.Venduto is null) AND ((MagSchede.Dismesso)=0 or MagSchede.Dismesso is null)";
constexpr char msInUso[] =
    " WHERE ((ms.Obsoleto)=0 or ms.Obsoleto is null) AND ((ms.Venduto)=0 or ms.Venduto is "
    "null) AND ((ms.Dismesso)=0 or ms.Dismesso is null)";

// The OR lets a stored empty text through: only a Null bar code is left out.
QString conCodice(bool senzaCodice) {
    return senzaCodice ? QString()
                       : u" AND"_s + u" (CodiceABarre<>'' OR NOT CodiceABarre IS NULL)"_s;
}

QString uguale(const char* column, const QString& value) {
    if (value.isEmpty()) return {};
    return u" AND"_s + u" ("_s + QLatin1String(column) + u"='"_s + apiciRaddoppiati(value) +
           u"')"_s;
}

QString categorie() {
    return u"SELECT"_s + u" ms.id AS idScheda,maa.CatApparecchio AS Categoria"_s + u" FROM"_s +
           u" MagSchede ms INNER JOIN MagAnagArticoli maa ON (maa.CodArticolo=ms.CodArticolo)"_s;
}

}  // namespace

QString apiciRaddoppiati(const QString& text) {
    QString doubled = text;
    return doubled.replace(u'\'', u"''"_s);
}

QString sqlElencoSchede(bool senzaCodice) {
    QString sql = u"SELECT"_s;
    for (const char* column : {" MagProdottoFinito.*,",
                               " MagSchede.id AS id_Scheda,",
                               " MagSchede.NomeGioco,",
                               " MagSchede.CodiceInterno,",
                               " MagSchede.CodiceAAMS,",
                               " MagSchede.Nullaosta,",
                               " MagSchede.ProgrProduttore,",
                               " MagSchede.CodiceABarre,",
                               " MagSchede.SerialeScheda,",
                               " MagSchede.Omologa,",
                               " AnagraficaLocali.Insegna,",
                               " AnagraficaLocali.Soprannome,",
                               " AnagraficaLocali.CAP,",
                               " AnagraficaLocali.Indirizzo,",
                               " AnagraficaLocali.Citta,",
                               " AnagraficaLocali.tel,",
                               " AnagraficaLocali.cell,",
                               " MagAnagArticoli.CatApparecchio,",
                               " MagAnagArticoli.CatStatistica,",
                               " MagAnagArticoli.CatMarca,",
                               " MagSchede.CodConcessionario,",
                               " MagSchede.Contratto,",
                               " MagSchede.UltimoIncasso,",
                               " MagSchede.Omologa,",
                               " MagSchede.isiPagata "})
        sql += QLatin1String(column);
    sql +=
        u" FROM (((MagProdottoFinito INNER JOIN MagProdottoDistinta ON MagProdottoFinito.id = "
        u"MagProdottoDistinta.IdProdottoFinito) INNER JOIN MagSchede ON "
        u"MagProdottoDistinta.linkScheda = MagSchede.id) LEFT JOIN AnagraficaLocali ON "
        u"MagProdottoFinito.CodLocale = AnagraficaLocali.CodLocale) left JOIN MagAnagArticoli ON "
        u"(MagProdottoFinito.CodArticolo = MagAnagArticoli.CodArticolo and "
        u"MagAnagArticoli.tipoArticolo=4 )"_s;
    return sql + QLatin1String(schedeInUso) + conCodice(senzaCodice);
}

QString sqlRicercaSchede(const EtichetteCriteri& criteri) {
    return sqlElencoSchede(criteri.senzaCodice) + uguale("MagSchede.CodiceAAMS", criteri.codice) +
           uguale("MagSchede.CodiceInterno", criteri.codiceInterno);
}

QString sqlTutteLeSchede(bool senzaCodice) {
    return u"SELECT"_s + u" ms.*"_s + u" FROM"_s + u" MagSchede ms"_s + QLatin1String(msInUso) +
           conCodice(senzaCodice);
}

QString sqlCategorieTutte() {
    return categorie() + QLatin1String(msInUso) + u" AND maa.tipoArticolo=1"_s;
}

QString sqlScheda(const QString& id) {
    return u"SELECT * FROM MagSchede WHERE id="_s + id + u" "_s;
}

QString sqlCategoriaScheda(const QString& id) {
    return categorie() + u" WHERE maa.tipoArticolo=1 AND ms.id="_s + id;
}

QString sqlElencoMobili(bool senzaCodice) {
    QString sql =
        u"SELECT MagMobili.*, AnagraficaLocali.Insegna, AnagraficaLocali.Soprannome, "
        u"AnagraficaLocali.CAP, AnagraficaLocali.Indirizzo, AnagraficaLocali.Citta, "
        u"AnagraficaLocali.Provincia, AnagraficaLocali.NumCivico, AnagraficaLocali.tel, "
        u"AnagraficaLocali.cell "_s +
        u" FROM MagMobili LEFT JOIN AnagraficaLocali ON MagMobili.CodLocale = "
        u"AnagraficaLocali.CodLocale WHERE 1=1"_s;
    if (!senzaCodice)
        sql += u" AND"_s + u" (MagMobili.CodiceABarre<>'' OR NOT CodiceABarre IS NULL)"_s;
    return sql;
}

QString sqlRicercaMobili(const EtichetteCriteri& criteri) {
    QString sql = sqlElencoMobili(criteri.senzaCodice);
    if (!criteri.codice.isEmpty())
        sql += u" AND"_s + u" (MagMobili.NomeMobile LIKE '%"_s + apiciRaddoppiati(criteri.codice) +
               u"%')"_s;
    return sql + uguale("MagMobili.CodiceInterno", criteri.codiceInterno);
}

QString sqlTuttiIMobili(bool senzaCodice) {
    return u"SELECT"_s + u" MagMobili.*"_s + u" FROM MagMobili"_s +
           u" WHERE ((MagMobili.Obsoleto)=0 OR MagMobili.Obsoleto IS NULL) AND "
           u"((MagMobili.Venduto)=0 OR MagMobili.Venduto IS NULL) AND ((MagMobili.Dismesso)=0 OR "
           u"MagMobili.Dismesso IS NULL)"_s +
           conCodice(senzaCodice);
}

QString sqlMobile(const QString& id) {
    return u"SELECT * FROM MagMobili WHERE id="_s + id + u" "_s;
}

QString colonnaNodo(const QString& text, int width) {
    return text.left(width).leftJustified(width, u' ');
}

QString testoNodoScheda(const QString& nome, const QString& aams, const QString& interno) {
    return colonnaNodo(nome, 25) + u" - "_s + colonnaNodo(aams, 12) + u" - "_s +
           colonnaNodo(interno, 10);
}

QString testoNodoMobile(const QString& nome, const QString& interno) {
    return colonnaNodo(nome, 25) + u" - "_s + colonnaNodo(interno, 10);
}

}  // namespace lorvane::reports
