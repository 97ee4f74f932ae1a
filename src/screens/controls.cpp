#include "screens/controls.h"

#include <QApplication>
#include <QFont>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStyle>

#include "platform/runtime_error.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

namespace {

bool isDateCharacter(const QString& text) {
    return text.size() == 1 && (text[0].isDigit() || u"/-."_s.contains(text[0]));
}

}  // namespace

DatePicker::DatePicker(QWidget* parent) : QDateEdit(parent) {
    setDisplayFormat(u"dd/MM/yyyy"_s);
    setCalendarPopup(true);
    setLocale(QLocale(QLocale::Italian, QLocale::Italy));
    // A digit that does not fit the part being edited (day 31 in February).
    connect(lineEdit(), &QLineEdit::inputRejected, this, [this] { showInvalid(true); });
}

QDate DatePicker::parseTyped(const QString& text) {
    static const QRegularExpression separated(u"^(\\d{1,2})[/.-](\\d{1,2})[/.-](\\d{2}|\\d{4})$"_s);
    static const QRegularExpression digitsOnly(u"^(\\d{2})(\\d{2})(\\d{2}|\\d{4})$"_s);
    QRegularExpressionMatch match = separated.match(text.trimmed());
    if (!match.hasMatch()) match = digitsOnly.match(text.trimmed());
    if (!match.hasMatch()) return {};
    int year = match.captured(3).toInt();
    if (match.captured(3).size() == 2) year += year < 30 ? 2000 : 1900;
    return QDate(year, match.captured(2).toInt(), match.captured(1).toInt());
}

// While a whole date is typed the text is the user's alone: the base would
// correct it part by part.
QValidator::State DatePicker::validate(QString& input, int& pos) const {
    if (typing_) return QValidator::Intermediate;
    return QDateEdit::validate(input, pos);
}

void DatePicker::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    if (isDateCharacter(text) && !(event->modifiers() & Qt::ControlModifier) &&
        (typing_ ||
         (lineEdit()->hasSelectedText() && lineEdit()->selectedText() == lineEdit()->text()))) {
        if (!typing_) dateBeforeTyping_ = date();
        typing_ = true;
        showInvalid(false);
        typed_ += text;
        lineEdit()->setText(typed_);
        return;
    }
    if (typing_) {
        switch (event->key()) {
            case Qt::Key_Backspace:
                typed_.chop(1);
                lineEdit()->setText(typed_);
                return;
            case Qt::Key_Escape:
                typed_.clear();
                typing_ = false;
                lineEdit()->setText(textFromDateTime(dateBeforeTyping_.startOfDay()));
                return;
            case Qt::Key_Return:
            case Qt::Key_Enter:
                commitTyped();
                break;
            default:
                break;
        }
    } else if (!text.isEmpty() && text[0].isPrint()) {
        showInvalid(false);
    }
    QDateEdit::keyPressEvent(event);
}

void DatePicker::focusOutEvent(QFocusEvent* event) {
    if (typing_) commitTyped();
    QDateEdit::focusOutEvent(event);
}

void DatePicker::commitTyped() {
    const QDate typedDate = parseTyped(typed_);
    typing_ = false;
    typed_.clear();
    const QDate kept = typedDate.isValid() ? typedDate : dateBeforeTyping_;
    lineEdit()->setText(textFromDateTime(kept.startOfDay()));
    setDate(kept);
    showInvalid(!typedDate.isValid());
}

void DatePicker::showInvalid(bool invalid) {
    if (invalid == invalidShown_) return;
    invalidShown_ = invalid;
    QPalette colours = palette();
    colours.setColor(QPalette::Base,
                     invalid ? QColor(255, 205, 205) : QPalette().color(QPalette::Base));
    lineEdit()->setPalette(colours);
    setToolTip(invalid ? u"Data non valida: resta la data di prima."_s : QString());
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
    // The tree is never narrower than its top nodes ("Tutti i Locali"…).
    if (!parentNode) {
        setMinimumWidth(
            std::max(minimumWidth(), sizeHintForColumn(0) + 2 * frameWidth() +
                                         style()->pixelMetric(QStyle::PM_ScrollBarExtent)));
    }
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
