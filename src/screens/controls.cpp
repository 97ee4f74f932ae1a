#include "screens/controls.h"

#include <QApplication>
#include <QFont>
#include <QStyle>

#include "platform/runtime_error.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

DatePicker::DatePicker(QWidget* parent) : QDateEdit(parent) {
    setDisplayFormat(u"dd/MM/yyyy"_s);
    setCalendarPopup(true);
    setLocale(QLocale(QLocale::Italian, QLocale::Italy));
}

CheckList::CheckList(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::SingleSelection);
}

void CheckList::addRow(const QString& text, bool ticked) {
    auto* row = new QListWidgetItem(text, this);
    row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
    row->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
}

bool CheckList::isTicked(int row) const { return item(row)->checkState() == Qt::Checked; }

void CheckList::setTicked(int row, bool ticked) {
    item(row)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
}

int CheckList::tickedCount() const {
    int ticked = 0;
    for (int row = 0; row < count(); ++row)
        ticked += isTicked(row) ? 1 : 0;
    return ticked;
}

KeyedTree::KeyedTree(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setColumnCount(1);
    QFont fixedPitch(u"Courier New"_s);
    fixedPitch.setStyleHint(QFont::TypeWriter);
    setFont(fixedPitch);
    connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int column) {
        if (column == 0 && !tickingFromCode_) Tree_NodeCheck(item);
    });
}

QTreeWidgetItem* KeyedTree::addNode(const QString& parentKey, const QString& key,
                                    const QString& text, Image image) {
    if (nodes_.contains(key))
        throw RuntimeError(u"La chiave '%1' non è univoca nell'insieme."_s.arg(key));
    QTreeWidgetItem* parentNode = nullptr;
    if (!parentKey.isEmpty()) {
        parentNode = nodes_.value(parentKey);
        if (!parentNode) throw RuntimeError(u"Elemento '%1' non trovato."_s.arg(parentKey));
    }
    const bool wasTicking = std::exchange(tickingFromCode_, true);
    auto* item = parentNode ? new QTreeWidgetItem(parentNode) : new QTreeWidgetItem(this);
    item->setText(0, text);
    item->setData(0, Qt::UserRole, key);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(0, Qt::Unchecked);
    item->setIcon(
        0, style()->standardIcon(image == RootImage ? QStyle::SP_DirIcon : QStyle::SP_FileIcon));
    tickingFromCode_ = wasTicking;
    nodes_.insert(key, item);
    return item;
}

void KeyedTree::clearNodes() {
    nodes_.clear();
    clear();
}

QString KeyedTree::keyOf(const QTreeWidgetItem* item) {
    return item->data(0, Qt::UserRole).toString();
}

QList<QTreeWidgetItem*> KeyedTree::allNodes() const {
    QList<QTreeWidgetItem*> all;
    all.reserve(nodes_.size());
    for (QTreeWidgetItemIterator it(const_cast<KeyedTree*>(this)); *it; ++it)
        all << *it;
    return all;
}

bool KeyedTree::isTicked(const QTreeWidgetItem* item) { return item->checkState(0) == Qt::Checked; }

void KeyedTree::setTicked(QTreeWidgetItem* item, bool ticked) {
    const bool wasTicking = std::exchange(tickingFromCode_, true);
    item->setCheckState(0, ticked ? Qt::Checked : Qt::Unchecked);
    tickingFromCode_ = wasTicking;
}

// The root speaks for all: its tick goes to every node. A venue's tick
// stays its own.
void KeyedTree::Tree_NodeCheck(QTreeWidgetItem* item) {
    if (keyOf(item) != QLatin1String(RootKey)) return;
    const bool ticked = isTicked(item);
    for (QTreeWidgetItem* each : allNodes())
        setTicked(each, ticked);
}

void KeyedTree::EspandiAlbero() {
    setVisible(false);
    for (QTreeWidgetItem* each : allNodes())
        each->setExpanded(true);
    setVisible(true);
    setFocus();
}

}  // namespace lorvane::screens
