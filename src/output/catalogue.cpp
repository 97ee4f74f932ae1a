#include "output/catalogue.h"

#include <QListWidget>
#include <QTabWidget>
#include <exception>

#include "db/recordset.h"
#include "entry/module_values.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"

namespace lorvane::output {

using namespace Qt::StringLiterals;

db::RecordsetPtr& StampeMenu() {
    static db::RecordsetPtr recordset;
    return recordset;
}

db::RecordsetPtr& StampePers() {
    static db::RecordsetPtr recordset;
    return recordset;
}

namespace {

// The tabs of Pers.
constexpr int TabStampeBase = 0;
constexpr int TabPersonalizzate = 1;

entry::HostApplication& host() { return impostato(entry::moduleValues().host); }

// Opens one catalogue through the host and adds its rows for the report code
// to `list`.
void caricaCatalogo(db::RecordsetPtr& catalogo, db::RecordsetPtr aperto, QListWidget* list) {
    QListWidget& lista = impostato(list);
    catalogo = std::move(aperto);
    db::Recordset& righe = impostato(catalogo);
    righe.SetFilter(u"codiceStampa='"_s + entry::moduleValues().codiceStampa + u'\'');
    if (righe.RecordCount() <= 0) return;
    for (; !righe.Eof(); righe.MoveNext()) {
        auto* voce = new QListWidgetItem(righe.Fields(u"Descrizione"_s).Value().toString());
        voce->setData(Qt::UserRole, righe.Fields(u"id"_s).Value().toLong());
        lista.addItem(voce);
    }
}

// The list's ListIndex: the row of its selected entry, -1 when none is.
int indiceSelezionato(const QListWidget& list) {
    const QListWidgetItem* current = list.currentItem();
    if (current && current->isSelected()) return list.row(current);
    const QList<QListWidgetItem*> selected = list.selectedItems();
    return selected.isEmpty() ? -1 : list.row(selected.first());
}

bool haSelezione(const QListWidget& list) { return indiceSelezionato(list) != -1; }

void selezionaPrimaVoce(QListWidget& list) {
    list.setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
}

QListWidgetItem* voceSelezionata(QListWidget& list) {
    const int indice = indiceSelezionato(list);
    return indice == -1 ? nullptr : list.item(indice);
}

// The list that the tab shows with its catalogue; List1 with no selection gets
// its first entry selected.
struct ListaScelta {
    QListWidget* list;
    db::RecordsetPtr* catalogo;
};

ListaScelta scegliLista(QListWidget* List1, QListWidget* List2, QTabWidget* Pers) {
    if (impostato(Pers).currentIndex() == TabStampeBase) {
        QListWidget& standard = impostato(List1);
        if (!haSelezione(standard) && standard.count() > 0) selezionaPrimaVoce(standard);
        return {&standard, &StampeMenu()};
    }
    return {&impostato(List2), &StampePers()};
}

// Percorso followed by `colonna` of the chosen layout's catalogue row, or "".
QString percorsoDaCatalogo(QListWidget* List1, QListWidget* List2, QTabWidget* Pers,
                           const QString& colonna) {
    const ListaScelta scelta = scegliLista(List1, List2, Pers);
    const QListWidgetItem* voce = voceSelezionata(*scelta.list);
    if (!voce) return {};
    db::Recordset& catalogo = impostato(*scelta.catalogo);
    catalogo.SetFilter(u"ID="_s + QString::number(voce->data(Qt::UserRole).toInt()));
    const QString percorso = host().Percorso();
    return percorso + catalogo.Fields(colonna).Value().text();
}

}  // namespace

void CaricaElencoStampe(QListWidget* List1, QListWidget* List2) {
    const QString sql = u"SELECT * FROM stampe ORDER BY Ordine"_s;
    caricaCatalogo(StampeMenu(), host().OpenRecordSetMenu(sql), List1);
    if (host().Personalizzazione()) {
        caricaCatalogo(StampePers(), host().OpenRecordSetPersonalizzazioni(sql), List2);
    }
}

bool VerificaSelezioneStampa(QListWidget* List1, QListWidget* List2, QTabWidget* Pers) {
    try {
        bool scelta = false;
        if (impostato(Pers).currentIndex() == TabPersonalizzate) {
            scelta = haSelezione(impostato(List2));
        } else {
            QListWidget& standard = impostato(List1);
            if (haSelezione(standard)) {
                scelta = true;
            } else if (standard.count() > 0) {
                selezionaPrimaVoce(standard);
                scelta = true;
            }
        }
        if (!scelta) {
            platform::MsgBox(u"Selezionare una stampa dall'elenco"_s,
                             platform::MsgBoxStyle::Information, u"Stampa non selezionata"_s);
        }
        return scelta;
    } catch (const std::exception&) {
        return false;
    }
}

QString PercorsoReport(QListWidget* List1, QListWidget* List2, QTabWidget* Pers) {
    return percorsoDaCatalogo(List1, List2, Pers, u"NomeReport"_s);
}

QString PercorsoTemporaneo(QListWidget* List1, QListWidget* List2, QTabWidget* Pers) {
    return percorsoDaCatalogo(List1, List2, Pers, u"nomeTemporaneo"_s);
}

QString ListaAttiva(QListWidget* List1, QListWidget* List2, QTabWidget* Pers) {
    const QListWidgetItem* voce = voceSelezionata(*scegliLista(List1, List2, Pers).list);
    return voce ? voce->text() : QString();
}

}  // namespace lorvane::output
