#include "watchwindow.h"
#include "callplugin.h"
#include "gridtext.h"
#include "liveswitch.h"
#include "popupmenu.h"
#include "projecttreeitem.h"
#include "watchlistview.h"
#include "watchmembers.h"
#include <optional>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QRegularExpression>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype LongestValue = 10000; ///< in characters; a cell has no room for more
constexpr int IsRefused = Qt::UserRole;   ///< of the value: it was typed, and the environment has refused it
constexpr int PrepareTime = 20;           ///< in ms of a refresh, for expressions that are read for the first time

/// A value as one line, since rows have equal heights.
QString shownValue(const QString &value)
{
    QString line = value.left(LongestValue);
    return line.replace(u'\n', u' ').replace(u'\r', u' ');
}

/// A dropped text without what surrounds it. Blanks between the words may belong to a literal.
QString oneLine(const QString &text)
{
    static const QRegularExpression lineEnd(u"\\s*[\\r\\n\u2028\u2029]\\s*"_s);
    return text.trimmed().replace(lineEnd, u" "_s);
}
} // namespace

WatchWindow::WatchWindow(QWidget *parent)
    : DebugPane(parent)
    , m_list(new WatchListView(this))
    , m_menu(new PopupMenu(this))
    , m_live(new LiveSwitch(this))
    , m_members(new WatchMembers(m_list))
{
    setObjectName(u"watches"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(2);
    layout->addWidget(m_live, 0, Qt::AlignRight);
    layout->addWidget(m_list);
    setFocusProxy(m_list);
    keepReadable(*m_list);
    m_list->setAccessibleName(tr("Watches"));
    m_menu->setObjectName(u"watchMenu"_s);
    m_menu->insertItem(tr("Remove Watch"), 0, [this](int) { removeWatch(); });
    connect(m_menu, &QMenu::aboutToShow, this, &WatchWindow::updateMenu);
    connect(m_live, &LiveSwitch::refresh, this, &WatchWindow::readLive);
    connect(m_list, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item, int column) {
        clicked(static_cast<ListViewItem *>(item), QCursor::pos(), column);
    });
    connect(m_list, &WatchListView::editRequested, this,
            [this](ListViewItem *item, int column) { clicked(item, {}, column); });
    connect(m_list, &WatchListView::removeRequested, this, [this] {
        if (m_list->currentItem() && !m_list->currentItem()->parent())
            removeWatch();
    });
    connect(m_list, &WatchListView::drop, this, &WatchWindow::addItem);
    connect(m_list, &ListView::itemRenamed, this, &WatchWindow::itemRenamed);
    connect(m_members, &WatchMembers::refused, this, &WatchWindow::reportRefusal);
    connect(m_members, &WatchMembers::written, this, [this] {
        const QPointer<WatchWindow> self(this);
        update(); // NOLINT(clang-analyzer-core.CallAndMessage): this object exists
        if (self)
            reportWrite();
    });
    connect(m_list, &ListView::contextMenuRequested, this, &WatchWindow::contextMenuRequested);
    addPlaceholder();
}

WatchWindow::~WatchWindow()
{
    disconnect(m_list, nullptr, this, nullptr); // its end may end a rename
}

void WatchWindow::setEnvironment(IExecutionEnvironment *environment)
{
    clear();
    m_queries.cancel();
    m_environment = shareInterface(environment);
    m_requests = queryPlugin<IEvaluationRequests>(environment);
    m_members->setEnvironment(environment);
    m_live->setEnvironment(environment);
    m_prepared.clear();
}

void WatchWindow::setPaused(bool)
{
    m_live->follow();
}

QStringList WatchWindow::watches() const
{
    QStringList expressions;
    for (int i = 0; i < m_list->topLevelItemCount() - 1; ++i)
        expressions += m_list->topLevelItem(i)->text(0);
    return expressions;
}

void WatchWindow::setWatches(const QStringList &expressions)
{
    clear();
    for (const QString &expression : expressions) {
        auto *item = static_cast<ListViewItem *>(m_list->topLevelItem(m_list->topLevelItemCount() - 1));
        item->setText(0, expression);
        finishPlaceholder(item);
    }
    m_outdated = true;
    if (isVisible())
        update();
}

void WatchWindow::showEvent(QShowEvent *event)
{
    DebugPane::showEvent(event);
    if (m_outdated) // the dock may update it now
        QMetaObject::invokeMethod(this, &WatchWindow::updateIfOutdated, Qt::QueuedConnection);
}

void WatchWindow::updateIfOutdated()
{
    if (m_outdated)
        update();
}

QString WatchWindow::text() const
{
    return gridText(*m_list);
}

QString WatchWindow::changed() const
{
    return changedNames(*m_list);
}

// Rows ----------------------------------------------------------------------------------------------------------------

void WatchWindow::clear()
{
    m_list->endRename(ListView::Reject);
    ++m_removals;
    m_list->clear();
    addPlaceholder();
}

void WatchWindow::addPlaceholder()
{
    auto *last = static_cast<ListViewItem *>(m_list->topLevelItem(m_list->topLevelItemCount() - 1));
    auto *item = new ProjectTreeItem(m_list, last, tr("Click to add new"), nullptr, nullptr, ListViewItem::Type, false);
    item->setGrid(true);
    item->setItalic(true);
    item->setBackground(true);
    item->setRenameEnabled(0, true);
}

bool WatchWindow::isPlaceholder(const ListViewItem *item) const
{
    return item == m_list->topLevelItem(m_list->topLevelItemCount() - 1);
}

bool WatchWindow::isBeingTyped(const ListViewItem *item) const
{
    return m_list->renameEdit() && m_list->currentItem() == item;
}

/// Removes an empty row; any other becomes a watch.
void WatchWindow::finishPlaceholder(ListViewItem *item)
{
    item->setRenameEnabled(1, true);
    if (item->text(0).isEmpty()) {
        ++m_removals;
        delete item;
    } else {
        static_cast<ProjectTreeItem *>(item)->setItalic(false);
    }
    addPlaceholder();
}

void WatchWindow::clicked(ListViewItem *item, const QPoint &, int column)
{
    if (!item)
        return;
    if (item->parent())
        return m_members->clicked(item, column);
    const bool isNew = isPlaceholder(item);
    item->startRename(isNew ? 0 : column);
    if (isNew && m_list->renameEdit())
        m_list->renameEdit()->clear(); // the row gets its text back if the user cancels
}

void WatchWindow::itemRenamed(ListViewItem *item, int column, const QString &)
{
    if (item->parent())
        return m_members->assign(item);
    const QPointer<WatchWindow> self(this);
    const int removals = m_removals;
    if (isPlaceholder(item)) {
        const bool isEmpty = item->text(0).isEmpty();
        finishPlaceholder(item);
        if (isEmpty)
            return;
    } else if (column == 1 && m_environment) {
        assign(item);
    }
    if (self && m_removals == removals)
        evaluate(item);
    if (self && m_removals == removals && column == 0)
        m_members->refresh(item);
    if (!self)
        return;
    Q_EMIT watchesChanged();
    if (column == 1)
        reportWrite();
}

void WatchWindow::addItem(const QString &text)
{
    m_list->endRename(ListView::Accept);
    auto *item = static_cast<ListViewItem *>(m_list->topLevelItem(m_list->topLevelItemCount() - 1));
    item->setText(0, oneLine(text));
    itemRenamed(item, 0, item->text(0));
}

void WatchWindow::removeWatch()
{
    ListViewItem *item = m_list->currentItem();
    while (item && item->parent())
        item = item->parent();
    if (!item || isPlaceholder(item))
        return;
    m_list->endRename(ListView::Reject);
    ++m_removals;
    delete item;
    Q_EMIT watchesChanged();
}

void WatchWindow::contextMenuRequested(ListViewItem *item, const QPoint &point, int column)
{
    if (!item || isPlaceholder(item))
        return;
    m_list->setCurrentItem(item, std::max(0, column));
    m_menu->popup(point);
}

void WatchWindow::updateMenu()
{
    m_menuFlag = !m_menuFlag;
}

// Values --------------------------------------------------------------------------------------------------------------

/// While the program runs and can be read, expressions that cannot be read keep their values.
void WatchWindow::update()
{
    if (m_reading || m_reporting)
        return;
    m_outdated = false;
    m_prepared.clear();
    const QPointer<WatchWindow> self(this);
    const bool isLive = m_live->canReadNow();
    if (!self)
        return;
    if (isLive)
        return readLive();
    evaluateAll();
    if (self && m_live->isChecked())
        prepareLive();
}

void WatchWindow::evaluateAll()
{
    const QPointer<WatchWindow> self(this);
    m_queries.cancel();
    const int removals = m_removals; // a plug-in may call back and have rows removed
    for (int i = 0; self && m_removals == removals && i < m_list->topLevelItemCount() - 1; ++i) {
        auto *row = static_cast<ListViewItem *>(m_list->topLevelItem(i));
        if (!isBeingTyped(row))
            evaluate(row);
    }
    if (self)
        m_members->refresh();
}

/// Calls the live memory with each row until this pane, its environment or its rows are gone.
template <typename Call>
void WatchWindow::forEachWatch(const Call &call)
{
    const InterfacePtr<ILiveMemory> live = m_live->memory();
    if (!live || m_reading)
        return;
    const QPointer<WatchWindow> self(this);
    const int removals = m_removals;
    for (int i = 0; i < m_list->topLevelItemCount() - 1; ++i) {
        auto *row = static_cast<ListViewItem *>(m_list->topLevelItem(i));
        if (isBeingTyped(row))
            continue;
        const QString expression = row->text(0);
        m_reading = true;
        const std::optional<QString> value = call(live, expression);
        if (!self)
            return;
        m_reading = false;
        if (m_removals != removals)
            return;
        if (value)
            showValue(row, *value);
    }
}

/// Each expression once per stop, since that asks the debugger.
bool WatchWindow::prepare(const InterfacePtr<ILiveMemory> &live, const QString &expression)
{
    if (m_prepared.contains(expression))
        return false;
    m_prepared.insert(expression);
    return askPlugin<&ILiveMemory::prepareLive>(live, expression);
}

/// While the program is paused, so that names mean what they mean in the function that is shown.
void WatchWindow::prepareLive()
{
    forEachWatch([this](const auto &live, const QString &expression) {
        prepare(live, expression);
        return std::optional<QString>();
    });
}

/// Expressions that cannot be read keep their last values. Those that are new are prepared, some at each refresh.
void WatchWindow::readLive()
{
    QElapsedTimer time;
    time.start();
    const QPointer<WatchWindow> self(this);
    const auto read = [](const auto &live, const QString &expression) {
        QString value;
        const bool known = askPlugin<&ILiveMemory::evaluateLive>(live, expression, value);
        return known ? std::optional(value) : std::nullopt;
    };
    forEachWatch([&](const auto &live, const QString &expression) {
        const std::optional<QString> value = read(live, expression);
        const bool isNew = !value && self && !time.hasExpired(PrepareTime) && prepare(live, expression);
        return isNew ? read(live, expression) : value;
    });
}

/// False if this pane, its environment or its rows were deleted meanwhile.
bool WatchWindow::ask(const QString &expression, QString &value, bool *good)
{
    const QPointer<WatchWindow> self(this);
    const auto environment = shareInterface(m_environment.get());
    m_reading = true;
    const std::optional<int> code = tryPlugin<&IExecutionEnvironment::evaluate>(environment, expression, value);
    if (!self)
        return false;
    if (good)
        *good = code == 0;
    m_reading = false;
    return m_environment == environment;
}

void WatchWindow::evaluate(ListViewItem *item)
{
    if (m_reading)
        return;
    const int removals = m_removals;
    QString value;
    if (!m_environment)
        value = tr("????");
    else if (m_requests)
        return request(item);
    else if (!ask(item->text(0), value) || m_removals != removals)
        return;
    showValue(item, value);
}

/// Until the answer, the row shows what it has. An answer for an expression that was changed meanwhile is ignored.
void WatchWindow::request(ListViewItem *item)
{
    const QString expression = item->text(0);
    const auto show = [this, expression,
                       index = QPersistentModelIndex(m_list->indexFromItem(item))](const QString &value) {
        auto *row = index.isValid() ? static_cast<ListViewItem *>(m_list->itemFromIndex(index)) : nullptr;
        if (row && row->text(0) == expression && !isBeingTyped(row))
            showValue(row, value);
    };
    const DebugRequest question = m_queries.ask({.evaluated = show, .failed = show});
    const auto requests = shareInterface(m_requests.get());
    runPlugin<&IEvaluationRequests::requestEvaluation>(requests, question, expression, m_queries.valueReplies());
}

void WatchWindow::showValue(ListViewItem *item, const QString &value)
{
    const QString line = shownValue(value);
    auto *row = static_cast<ProjectTreeItem *>(item);
    const bool isOld = row->data(1, IsRefused).toBool(); // the text on screen was typed, and never a value
    row->setData(1, IsRefused, {});
    row->setBold(!isOld && line != row->text(1));
    row->setItalic(false);
    row->setText(1, line);
    row->listView()->viewport()->update();
}

void WatchWindow::assign(ListViewItem *item)
{
    const int removals = m_removals;
    bool good = false;
    QString answer;
    if (m_reading || !ask(assignedExpression(item->text(0)) + u'=' + item->text(1), answer, &good) || good)
        return;
    if (m_removals == removals)
        item->setData(1, IsRefused, true);
    reportRefusal(answer);
}

void WatchWindow::reportRefusal(const QString &reason)
{
    Q_EMIT message(tr("The value cannot be changed: %1").arg(reason));
}

void WatchWindow::reportWrite()
{
    const QPointer<WatchWindow> self(this);
    m_reporting = true;
    Q_EMIT doUpdate();
    if (!self)
        return;
    m_reporting = false;
    if (m_requests)
        evaluateAll(); // the first answers belong to the time before the change
}

QString assignedExpression(const QString &watch)
{
    static const QRegularExpression format(u"\\s*,\\s*[xduotcs]\\s*\\z"_s);
    return QString(watch).remove(format);
}
