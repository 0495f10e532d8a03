#include "propertyeditor.h"
#include "filteredit.h"
#include "projecttreeitem.h"
#include "propertydefinitions.h"
#include "propertyfiller.h"
#include "propertylist.h"
#include "smallicons.h"
#include "treenames.h"
#include "varnelassert.h"
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QSplitter>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

struct PropertyEditor::Entry
{
    PropertyRecord record;
    ProjectTreeItem *page;
};

struct PropertyEditor::Page
{
    QList<Entry *> entries; ///< in the order of the definitions
    int differing = 0;      ///< the number of values that are not the default ones
};

namespace {
enum TreeItem { GroupItem, PageItem };
constexpr int TreeWidth = 180;
constexpr int LargestTreeWidth = 300;
constexpr int HelpHeight = 200;
constexpr QSize MinimumListSize(260, 100);
} // namespace

PropertyEditor::PropertyEditor(QWidget *parent) : QWidget(parent)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_splitter = new QSplitter(this);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(makeLeftSide());
    m_splitter->addWidget(makeRightSide());
    m_splitter->setStretchFactor(0, 0); // keeps its size
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({TreeWidth, 200});
    layout->addWidget(m_splitter);
    updateHelpColors();
    connect(m_groupTree, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem *item) { propertyGroupChanged(static_cast<ListViewItem *>(item)); });
    connect(m_groupTree, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) {
        if (!m_filterEdit->text().isEmpty())
            propertyGroupChanged(static_cast<ListViewItem *>(item));
    });
    connect(m_filterEdit, &FilterEdit::listRequested, this, &PropertyEditor::enterList);
    connect(m_filterEdit, &QLineEdit::textChanged, this, &PropertyEditor::filterChanged);
    connect(m_list, &PropertyList::propertySelected, this, &PropertyEditor::propertySelected);
    connect(m_list, &PropertyList::valueChanged, this, &PropertyEditor::propertyValueChanged);
    connect(m_list, &ListView::contextMenuRequested, this, &PropertyEditor::showContextMenu);
    connect(m_list, &PropertyList::editorMenuRequested, this, &PropertyEditor::addResetAction);
}

PropertyEditor::~PropertyEditor()
{
    m_list->disconnect(this);
    m_groupTree->disconnect(this);
}

QWidget *PropertyEditor::makeLeftSide()
{
    auto *side = new QWidget(this);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    m_filterEdit = new FilterEdit(side);
    m_filterEdit->setObjectName(u"FilterEdit"_s);
    m_filterEdit->setPlaceholderText(tr("Filter"));
    m_filterEdit->setAccessibleName(tr("Filter"));
    m_filterEdit->setToolTip(tr("Shows the properties of all pages that contain this text"));
    layout->addWidget(m_filterEdit);
    m_groupTree = new ListView(side);
    m_groupTree->setObjectName(u"GroupTree"_s);
    m_groupTree->setAccessibleName(tr("Pages"));
    m_groupTree->setHeaderLabels({u"Column1"_s});
    m_groupTree->setHeaderHidden(true);
    m_groupTree->setIndentation(14);
    m_groupTree->setIconSize(QSize(12, 12));
    layout->addWidget(m_groupTree);
    return side;
}

QWidget *PropertyEditor::makeRightSide()
{
    auto *side = new QWidget(this);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    m_list = new PropertyList(tr("Property"), tr("Value"), side);
    m_list->setObjectName(u"PropertyList"_s);
    m_list->setAccessibleName(tr("Properties"));
    m_list->setMinimumSize(MinimumListSize);
    m_rows = new PropertyFiller(m_list, this);
    layout->addWidget(m_list);
    m_helpView = new QTextBrowser(side);
    m_helpView->setObjectName(u"HelpView"_s);
    m_helpView->setAccessibleName(tr("Description"));
    m_helpView->setFixedHeight(HelpHeight);
    layout->addWidget(m_helpView);
    return side;
}

void PropertyEditor::updateHelpColors()
{
    QPalette colors = palette();
    colors.setColor(QPalette::Base, colors.color(QPalette::Window));
    colors.setColor(QPalette::Text, colors.color(QPalette::WindowText));
    m_helpView->setPalette(colors);
    if (m_page)
        m_page->setPixmap(currentPageIcon(palette()));
}

void PropertyEditor::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_helpView)
        updateHelpColors();
}

bool PropertyEditor::setPropertyDefinitions(const QString &text, const QString &selector)
{
    const auto nodes = readPropertyDefinitions(text, selector);
    if (!nodes) {
        qWarning("PropertyEditor::setPropertyDefinitions: failed to parse property definitions.");
        return false;
    }
    for (const PropertyNode &node : *nodes)
        m_lastGroup = addNode(node, nullptr, m_lastGroup);
    fitTree();
    ListViewItem *first = m_groupTree->firstChild();
    if (first && m_groupTree->currentItem() != first)
        m_groupTree->setCurrentItem(first);
    else if (first)
        propertyGroupChanged(first); // a property of its page may have been replaced
    return true;
}

/// Makes the tree wider for long names of pages.
void PropertyEditor::fitTree()
{
    const int width = std::clamp(widthForAllNames(*m_groupTree), TreeWidth, LargestTreeWidth);
    m_splitter->setSizes({width, m_splitter->width() - width});
}

ProjectTreeItem *PropertyEditor::addNode(const PropertyNode &node, ProjectTreeItem *parent, ListViewItem *after)
{
    const int rtti = node.isPage ? PageItem : GroupItem;
    auto *item = parent ? new ProjectTreeItem(parent, after, node.name, nullptr, nullptr, rtti, false, noIcon())
                        : new ProjectTreeItem(m_groupTree, after, node.name, nullptr, nullptr, rtti, false, noIcon());
    if (!node.isPage)
        item->setPixmap({});
    if (node.isPage && parent)
        parent->setPaintBranches(false);
    if (node.isPage)
        m_pages[item];
    ListViewItem *last = nullptr;
    for (const PropertyNode &child : node.children)
        last = addNode(child, item, last);
    for (const PropertyRecord &record : node.records)
        addRecord(record, item);
    return item;
}

void PropertyEditor::addRecord(const PropertyRecord &record, ProjectTreeItem *page)
{
    if (Entry *old = entry(record.m_key)) {
        assign(*old, old->record.m_default); // the page does not count it any more
        m_pages[old->page].entries.removeOne(old);
        m_rows->remove(old->record);
        std::erase_if(m_records, [old](const auto &other) { return other.get() == old; });
    }
    m_records.push_back(std::make_unique<Entry>(Entry{record, page}));
    m_entries.insert(record.m_key, m_records.back().get());
    m_pages[page].entries += m_records.back().get();
}

PropertyEditor::Entry *PropertyEditor::entry(const QString &key) const
{
    return m_entries.value(key);
}

/// Gives a record a value and keeps the mark of its page up to date.
void PropertyEditor::assign(Entry &entry, const QVariant &value)
{
    const bool differed = entry.record.differsFromDefault();
    entry.record.m_value = value;
    Page &page = m_pages[entry.page];
    page.differing += int(entry.record.differsFromDefault()) - int(differed);
    markInTree(entry.page, page.differing > 0);
}

/// Marks a page and the groups that it is in, which may be closed.
void PropertyEditor::markInTree(ProjectTreeItem *item, bool isMarked)
{
    const auto isBold = [](const ListViewItem *child) { return static_cast<const ProjectTreeItem *>(child)->isBold(); };
    while (item && item->isBold() != isMarked) {
        item->setBold(isMarked);
        item->setToolTip(0, isMarked ? tr("Has values other than the default ones") : QString());
        item = static_cast<ProjectTreeItem *>(item->parent());
        isMarked = false;
        for (int i = 0; item && i < item->childCount(); ++i)
            isMarked = isMarked || isBold(static_cast<ListViewItem *>(item->child(i)));
    }
}

void PropertyEditor::clearValues()
{
    endEdit();
    for (const auto &entry : m_records) {
        assign(*entry, entry->record.m_default);
        entry->record.m_loaded = entry->record.m_default;
        entry->record.m_changed = entry->record.m_stored = entry->record.m_reset = false;
    }
    filterChanged(m_filterEdit->text());
}

bool PropertyEditor::setValue(const QString &key, const QVariant &value)
{
    Entry *entry = this->entry(key);
    if (!entry)
        return false;
    PropertyItem *row = m_rows->row(key);
    if (row && row == m_list->currentItem())
        row->acceptEditor();
    assign(*entry, value);
    entry->record.m_loaded = value;
    entry->record.m_changed = entry->record.m_reset = false;
    entry->record.m_stored = true;
    row = m_rows->row(key);
    if (!row)
        return true;
    row->setValue(value, false); // not entered by the user
    showState(*entry, row);
    return true;
}

QVariant PropertyEditor::value(const QString &key, bool *changed) const
{
    const Entry *entry = this->entry(key);
    if (changed)
        *changed = entry && entry->record.m_changed;
    return entry ? entry->record.m_value : QVariant();
}

QStringList PropertyEditor::keys() const
{
    QStringList keys;
    for (const auto &entry : m_records)
        keys += entry->record.m_key;
    return keys;
}

void PropertyEditor::setTabOrderBetween(QWidget *before, QWidget *after)
{
    for (QWidget *next : QList<QWidget *>{m_filterEdit, m_groupTree, m_list, m_helpView, after}) {
        setTabOrder(before, next);
        before = next;
    }
}

void PropertyEditor::endEdit()
{
    m_list->endEdit();
}

void PropertyEditor::setBaseDirectory(const QString &directory)
{
    m_list->setBaseDirectory(directory);
}

void PropertyEditor::propertyGroupChanged(ListViewItem *item)
{
    endEdit();
    while (item && item->rtti() != PageItem) {
        item->setOpen(true);
        item = item->firstChild();
    }
    setCurrentPage(static_cast<ProjectTreeItem *>(item));
    if (m_filterEdit->text().isEmpty())
        fillPage();
    else
        m_filterEdit->clear(); // which shows the page
}

void PropertyEditor::setCurrentPage(ProjectTreeItem *page)
{
    if (m_page)
        m_page->setPixmap(noIcon());
    m_page = page;
    if (m_page)
        m_page->setPixmap(currentPageIcon(palette()));
}

void PropertyEditor::fillPage()
{
    QList<PropertyFiller::Source> sources;
    for (const Entry *entry : m_page ? m_pages[m_page].entries : QList<Entry *>())
        sources.append(PropertyFiller::Source{&entry->record, {}});
    m_rows->fill(sources);
    rowsMade(hasProperties() ? QString() : tr("There are no properties to edit here."));
}

/// The rows of all pages with @p text in them, each page below a heading.
void PropertyEditor::fillMatches(const QString &text)
{
    QList<PropertyFiller::Source> sources;
    const ListViewItem *page = nullptr;
    QString heading;
    for (const auto &entry : m_records) {
        if (!entry->record.contains(text))
            continue;
        if (entry->page != page)
            heading = pathOfNames(entry->page);
        page = entry->page;
        sources.append(PropertyFiller::Source{&entry->record, heading});
    }
    m_rows->fill(sources);
    rowsMade(tr("No property contains this text."));
}

void PropertyEditor::rowsMade(const QString &emptyText)
{
    const int room = m_list->viewport()->width() * 3 / 5;
    const int wanted = static_cast<QAbstractItemView *>(m_list)->sizeHintForColumn(0) + m_list->treeStepSize();
    m_list->header()->resizeSection(0, std::clamp(wanted, 100, std::max(100, room)));
    if (PropertyItem *first = firstProperty())
        propertySelected(first);
    else
        m_helpView->setPlainText(emptyText);
}

/// The first row that is not a heading; null if there is none.
PropertyItem *PropertyEditor::firstProperty() const
{
    PropertyItem *first = m_list->firstChild();
    return first && first->childCount() > 0 ? static_cast<PropertyItem *>(first->ListViewItem::firstChild()) : first;
}

void PropertyEditor::enterList()
{
    PropertyItem *first = firstProperty();
    if (!first)
        return;
    m_list->setCurrentItem(first);
    m_list->setFocus(Qt::TabFocusReason);
}

void PropertyEditor::filterChanged(const QString &text)
{
    endEdit();
    if (text.isEmpty())
        fillPage();
    else
        fillMatches(text);
}

void PropertyEditor::propertySelected(PropertyItem *item)
{
    VARNEL_ASSERT(item);
    if (!item)
        return;
    QString help = propertyHelp(item->name(), item->description());
    if (!item->warning().isEmpty())
        help += u"<p style=\"color:%1\">%2</p>"_s.arg(m_list->warningColor().name(), item->warning().toHtmlEscaped());
    m_helpView->setHtml(help);
}

void PropertyEditor::propertyValueChanged(PropertyItem *item)
{
    VARNEL_ASSERT(item);
    Entry *prop = item ? entry(item->key()) : nullptr;
    VARNEL_ASSERT(prop);
    if (!prop)
        return;
    const QVariant value = item->value();
    if (value.isValid()) {
        prop->record.m_changed = prop->record.m_changed || !sameValue(value, prop->record.m_loaded);
        prop->record.m_reset = false;
    }
    if (prop->record.m_changed && value.isValid())
        assign(*prop, value); // a value that the user has changed back is also written
    showState(*prop, item);
}

void PropertyEditor::showState(const Entry &entry, PropertyItem *row)
{
    row->setChanged(entry.record.isMarkedAsChanged());
    row->setWarning(entry.record.problem());
    m_list->repaintItem(row);
    if (row == m_list->currentItem())
        propertySelected(row);
}

std::optional<QString> PropertyEditor::firstInvalidKey() const
{
    const auto isWrong = [](const auto &entry) {
        return entry->record.m_changed && !entry->record.problem().isEmpty();
    };
    const auto wrong = std::ranges::find_if(m_records, isWrong);
    return wrong == m_records.end() ? std::nullopt : std::optional((*wrong)->record.m_key);
}

QString PropertyEditor::problem(const QString &key) const
{
    const Entry *entry = this->entry(key);
    return entry ? entry->record.m_name + ": "_L1 + entry->record.problem() : QString();
}

void PropertyEditor::showProperty(const QString &key)
{
    const Entry *entry = this->entry(key);
    if (!entry)
        return;
    if (!m_rows->row(key))
        m_groupTree->setCurrentItem(entry->page);
    if (!m_rows->row(key))
        propertyGroupChanged(entry->page); // the page is the current one already, but the filter hides its options
    if (!m_rows->row(key))
        m_rows->finish();
    PropertyItem *row = m_rows->row(key);
    if (!row)
        return;
    m_list->setFocus();
    m_list->setCurrentItem(row);
    if (!row->isEditing())
        row->showEditor();
}

void PropertyEditor::resetToDefault(const QString &key)
{
    Entry *entry = this->entry(key);
    if (!entry)
        return;
    PropertyRecord &record = entry->record;
    PropertyItem *row = m_rows->row(key);
    if (row)
        row->rejectEditor();
    assign(*entry, record.m_default);
    record.m_changed = record.m_reset = record.m_stored; // without a stored value there is nothing to remove
    if (!row)
        return;
    row->setValue(record.m_default, false);
    showState(*entry, row);
}

bool PropertyEditor::isReset(const QString &key) const
{
    const Entry *entry = this->entry(key);
    return entry && entry->record.m_reset;
}

PropertyEditor::Entry *PropertyEditor::entryOf(const ListViewItem *item) const
{
    Entry *found = item ? entry(static_cast<const PropertyItem *>(item)->key()) : nullptr;
    return found && m_rows->row(found->record.m_key) == item ? found : nullptr;
}

void PropertyEditor::showContextMenu(ListViewItem *item, const QPoint &position)
{
    endEdit(); // what has been typed can be reset
    if (!entryOf(item))
        return;
    auto *menu = new QMenu(this);
    menu->setObjectName(u"propertyMenu"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addResetAction(static_cast<PropertyItem *>(item), menu);
    menu->popup(position);
}

void PropertyEditor::addResetAction(PropertyItem *item, QMenu *menu)
{
    const Entry *entry = entryOf(item);
    if (!entry)
        return;
    const PropertyRecord &record = entry->record;
    if (!menu->isEmpty())
        menu->addSeparator();
    QAction *reset = menu->addAction(tr("&Reset to Default"));
    reset->setObjectName(u"resetToDefault"_s);
    reset->setEnabled(item->isEdited() || (!record.m_reset && (record.m_stored || record.m_changed)));
    connect(reset, &QAction::triggered, this, [this, key = record.m_key] { resetToDefault(key); });
}
