// The hand-made controls of the filter screens, where Qt has none of the
// legacy kind: a date picker that shows dd/MM/yyyy, a list with a check box on
// each row, and a tree of keyed nodes with check boxes.
#pragma once

#include <QDateEdit>
#include <QHash>
#include <QListWidget>
#include <QString>
#include <QTreeWidget>

namespace lorvane::screens {

// A date picker with a calendar drop-down that shows its date the Italian way.
// Besides editing a part of the date, the user may select all and type a
// whole date as office staff do: "01/01/2025", "1/1/25", "01012025" (also
// with "-" or "."); it is taken on Enter or when the focus leaves. A date
// that does not exist (31 February) is refused: the picker keeps its date
// and shows itself invalid until the next edit.
class DatePicker : public QDateEdit {
  public:
    explicit DatePicker(QWidget* parent = nullptr);

    // The date a whole typed text stands for; invalid when it is none. Years
    // of two digits are 2000-2029 up to 29, 1930-1999 from 30.
    static QDate parseTyped(const QString& text);

    // True while the picker shows that it refused what was typed.
    bool showsInvalidDate() const { return invalidShown_; }

    QValidator::State validate(QString& input, int& pos) const override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void commitTyped();
    void showInvalid(bool invalid);

    QString typed_;  // the whole date being typed; empty when none
    bool typing_ = false;
    QDate dateBeforeTyping_;
    bool invalidShown_ = false;
};

// A list whose rows each carry a check box.
class CheckList : public QListWidget {
  public:
    explicit CheckList(QWidget* parent = nullptr);

    // Adds a row with the given tick.
    void addRow(const QString& text, bool ticked);
    bool isTicked(int row) const;
    void setTicked(int row, bool ticked);
    // The number of rows ticked.
    int tickedCount() const;
};

// A tree of nodes with a check box each, found by a unique key, as the legacy
// tree control keeps them. Ticks made by the user on the root ("A") pass to
// every node (Tree_NodeCheck); ticks set from code pass to nobody.
class KeyedTree : public QTreeWidget {
  public:
    static constexpr char RootKey[] = "A";
    enum Image { RootImage = 1, NodeImage = 2 };

    explicit KeyedTree(QWidget* parent = nullptr);

    // Adds a node under `parentKey` ("" for a top-level node), unticked.
    // Throws RuntimeError when the key is already in the tree, or the parent
    // is not.
    QTreeWidgetItem* addNode(const QString& parentKey, const QString& key, const QString& text,
                             Image image);
    // Removes every node and every key.
    void clearNodes();

    QTreeWidgetItem* node(const QString& key) const { return nodes_.value(key); }
    static QString keyOf(const QTreeWidgetItem* item);
    // Every node, in the order of the tree (parents before their children).
    QList<QTreeWidgetItem*> allNodes() const;
    int nodeCount() const { return int(nodes_.size()); }

    // Ticks from code: they raise no Tree_NodeCheck.
    static bool isTicked(const QTreeWidgetItem* item);
    void setTicked(QTreeWidgetItem* item, bool ticked);

    // Hides the tree, expands every node, shows it and gives it the focus.
    // Nothing in it can fail.
    void EspandiAlbero();

  private:
    void Tree_NodeCheck(QTreeWidgetItem* item);

    QHash<QString, QTreeWidgetItem*> nodes_;
    bool tickingFromCode_ = false;
};

}  // namespace lorvane::screens
