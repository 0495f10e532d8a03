#pragma once
#include <map>
#include <memory>
#include <optional>
#include <QHash>
#include <QVariant>
#include <QWidget>
#include <vector>
class FilterEdit;
class ListView;
class ListViewItem;
class ProjectTreeItem;
class PropertyFiller;
class PropertyItem;
class PropertyList;
class QMenu;
class QSplitter;
class QTextBrowser;
struct PropertyNode;
struct PropertyRecord;

/// Edits options that are described by a text: a tree of pages at the left, the options of one page at the right, below
/// them the explanation of the current one. A filter shows the options of all pages that match it. In the tree, pages
/// with values other than the default ones are bold.
class PropertyEditor : public QWidget
{
    Q_OBJECT
public:
    explicit PropertyEditor(QWidget *parent = nullptr);
    ~PropertyEditor() override;

    /// Adds what @p text defines for @p selector, as readPropertyDefinitions() reads it. An option whose key is there
    /// already replaces the old one. False, and nothing is added, if the text is broken.
    bool setPropertyDefinitions(const QString &text, const QString &selector);
    [[nodiscard]] bool hasProperties() const { return !m_records.empty(); }

    void clearValues(); ///< All values become the default ones.
    /// Sets the value from which changes count. An invalid one stands for several values and shows nothing. False for
    /// an unknown key.
    bool setValue(const QString &key, const QVariant &value);
    [[nodiscard]] QVariant value(const QString &key, bool *changed = nullptr) const; ///< Invalid for an unknown key.
    [[nodiscard]] QStringList keys() const; ///< In the order of the definitions.

    /// Puts the widgets of the editor between these two in the order of the Tab key.
    void setTabOrderBetween(QWidget *before, QWidget *after);

    void endEdit();                                  ///< Stores what is being entered.
    void setBaseDirectory(const QString &directory); ///< Where file dialogs begin for a relative path.

    /// The key of the first option that was changed to a value that its definition forbids.
    [[nodiscard]] std::optional<QString> firstInvalidKey() const;
    [[nodiscard]] QString problem(const QString &key) const; ///< "Name: what is wrong".
    void showProperty(const QString &key);                   ///< Shows its page and begins to edit it.
    /// Shows the default value. If another one was set, the option counts as changed, with no value to be stored.
    void resetToDefault(const QString &key);
    [[nodiscard]] bool isReset(const QString &key) const; ///< It was reset and not changed since then.

public Q_SLOTS:
    void propertyGroupChanged(ListViewItem *item);
    void propertySelected(PropertyItem *item);
    void propertyValueChanged(PropertyItem *item);

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Entry;
    struct Page;

    QWidget *makeLeftSide();
    QWidget *makeRightSide();
    void fitTree();
    ProjectTreeItem *addNode(const PropertyNode &node, ProjectTreeItem *parent, ListViewItem *after);
    void addRecord(const PropertyRecord &record, ProjectTreeItem *page);
    [[nodiscard]] Entry *entry(const QString &key) const; ///< Null for an unknown key.
    void assign(Entry &entry, const QVariant &value);
    static void markInTree(ProjectTreeItem *item, bool isMarked);
    void fillPage();
    void fillMatches(const QString &text);
    void rowsMade(const QString &emptyText);
    [[nodiscard]] PropertyItem *firstProperty() const;
    void enterList(); ///< Gives the keyboard focus to the first property.
    void filterChanged(const QString &text);
    void setCurrentPage(ProjectTreeItem *page);
    void showContextMenu(ListViewItem *item, const QPoint &position);
    [[nodiscard]] Entry *entryOf(const ListViewItem *item) const; ///< Null for a heading, too.
    void addResetAction(PropertyItem *item, QMenu *menu);
    void showState(const Entry &entry, PropertyItem *row);
    void updateHelpColors();

    QSplitter *m_splitter = nullptr;
    ListView *m_groupTree = nullptr;
    FilterEdit *m_filterEdit = nullptr;
    PropertyList *m_list = nullptr;
    QTextBrowser *m_helpView = nullptr;
    ListViewItem *m_lastGroup = nullptr;           ///< the last one at the top level
    ProjectTreeItem *m_page = nullptr;             ///< whose options are shown
    std::vector<std::unique_ptr<Entry>> m_records; ///< in the order of the definitions
    QHash<QString, Entry *> m_entries;             ///< by key
    std::map<ListViewItem *, Page> m_pages;
    PropertyFiller *m_rows = nullptr; ///< of the list
};
