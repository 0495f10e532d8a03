#include "callstackpane.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "listview.h"
#include "popupmenu.h"
#include <algorithm>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
enum Column { FunctionColumn, PlaceColumn, LevelColumn, AddressColumn, ColumnCount };
enum Role { KindRole = Qt::UserRole, ThreadRole, LevelRole }; // of column 0
enum Kind { ThreadRow, FrameRow, MoreRow, FailureRow };

Kind kindOf(const QTreeWidgetItem *row)
{
    return Kind(row->data(0, KindRole).toInt());
}

StackPlace placeOf(const QTreeWidgetItem *row)
{
    return {row->data(0, ThreadRole).toLongLong(), row->data(0, LevelRole).toInt()};
}

void setPlace(QTreeWidgetItem *row, Kind kind, const StackPlace &place)
{
    row->setData(0, KindRole, kind);
    row->setData(0, ThreadRole, place.thread);
    row->setData(0, LevelRole, place.frame);
}

void setCells(QTreeWidgetItem *row, const QStringList &cells, bool bold, bool italic = false)
{
    QFont font = row->treeWidget()->font();
    font.setBold(bold);
    font.setItalic(italic);
    for (int column = 0; column < ColumnCount; ++column) {
        row->setText(column, cells.value(column));
        row->setFont(column, font);
    }
}

QString placeText(const StackFrame &frame)
{
    if (frame.file.isEmpty())
        return frame.module;
    const QString file = QFileInfo(frame.file).fileName();
    return frame.line > 0 ? file + u", "_s + QString::number(frame.line) : file;
}

QString threadName(const ThreadInfo &thread)
{
    const QString number = QString::number(thread.id);
    return thread.name.isEmpty() ? number : number + u' ' + thread.name.simplified();
}

QList<qint64> threadsOf(const QTreeWidget &list)
{
    QList<qint64> threads;
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        threads.append(placeOf(list.topLevelItem(i)).thread);
    return threads;
}

/// The row of a frame of a thread; null if it has none.
QTreeWidgetItem *frameRow(const QTreeWidgetItem *parent, int index)
{
    QTreeWidgetItem *row = parent->child(index);
    return row && kindOf(row) == FrameRow ? row : nullptr;
}

int frameCount(const QTreeWidgetItem *parent)
{
    const int rows = parent->childCount();
    return rows > 0 && !frameRow(parent, rows - 1) ? rows - 1 : rows;
}

void removeFrom(QTreeWidgetItem *parent, int index)
{
    while (parent->childCount() > index)
        delete parent->child(parent->childCount() - 1);
}
} // namespace

CallStackPane::CallStackPane(QWidget *parent) : QueryPane(new ListView, parent)
{
    setObjectName(u"callStackView"_s);
    list()->setObjectName(u"callStack"_s);
    list()->setAccessibleName(tr("Call stack"));
    list()->setHeaderLabels({tr("Function"), tr("Place"), tr("Level"), tr("Address")});
    list()->header()->setSectionResizeMode(QHeaderView::Interactive);
    const int digit = QFontMetrics(list()->font()).horizontalAdvance(u'0');
    list()->header()->resizeSection(FunctionColumn, digit * 20);
    list()->header()->resizeSection(PlaceColumn, digit * 18);
    list()->header()->resizeSection(LevelColumn, digit * 7);
    list()->setRootIsDecorated(false);
    auto *menu = new PopupMenu(this);
    menu->setObjectName(u"callStackMenu"_s);
    menu->insertItem(tr("Copy Call Stack"), 0, [this](int) { copy(); });
    connect(list(), &ListView::contextMenuRequested, this,
            [menu](ListViewItem *, const QPoint &point) { menu->popup(point); });
    connect(list(), &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem *row) { opened(static_cast<ListViewItem *>(row)); });
    connect(list(), &QTreeWidget::itemDoubleClicked, this, &CallStackPane::activate);
    connect(list(), &ListView::returnPressed, this, &CallStackPane::activate);
    setEnvironment(nullptr);
}

void CallStackPane::setEnvironment(IExecutionEnvironment *environment)
{
    m_environment = shareInterface(environment);
    m_callStack = queryPlugin<ICallStack>(environment);
    setOffered(m_callStack != nullptr, environment ? tr("The debugger of this project does not offer a call stack.")
                                                   : tr("There is no program to be debugged."));
}

void CallStackPane::releaseEnvironment()
{
    queries().cancel();
    m_callStack.reset();
    m_environment.reset();
    setOffered(false, {});
}

void CallStackPane::setPaused(bool paused)
{
    m_selectsCurrent = m_selectsCurrent || paused;
    QueryPane::setPaused(paused);
}

QString CallStackPane::text() const
{
    QString text;
    for (QTreeWidgetItem *row = list()->topLevelItem(0); row; row = list()->itemBelow(row)) {
        if (row->parent())
            text += u"  "_s;
        if (kindOf(row) == FrameRow)
            text += u"%1 %2 %3\n"_s.arg(row->text(LevelColumn), row->text(FunctionColumn), row->text(PlaceColumn));
        else if (row->text(PlaceColumn).isEmpty())
            text += row->text(FunctionColumn) + u'\n';
        else
            text += u"%1 (%2)\n"_s.arg(row->text(FunctionColumn), row->text(PlaceColumn));
    }
    return text;
}

void CallStackPane::copy() const
{
    QGuiApplication::clipboard()->setText(text());
}

void CallStackPane::clear()
{
    list()->clear();
}

// Threads -------------------------------------------------------------------------------------------------------------

void CallStackPane::read()
{
    const QPointer<CallStackPane> self(this);
    const auto callStack = shareInterface(m_callStack.get());
    const auto environment = shareInterface(m_environment.get());
    const auto place = currentStackPlace(environment.get());
    if (!self || !m_callStack)
        return;
    m_current = place;
    const DebugRequest request = queries().ask({.threads = [this](const auto &threads) { showThreads(threads); },
                                                .failed =
                                                    [this](const QString &reason) {
                                                        clear();
                                                        showNote(reason);
                                                    }});
    runPlugin<&ICallStack::requestThreads>(callStack, request, queries().replies());
}

void CallStackPane::showThreads(const QList<ThreadInfo> &threads)
{
    showNote(threads.isEmpty() ? tr("The program has no threads.") : QString());
    const bool several = threads.size() > 1;
    if (several != m_severalThreads || threads.isEmpty())
        list()->clear();
    m_severalThreads = several;
    list()->setRootIsDecorated(several);
    if (several)
        return showThreadRows(threads);
    if (!threads.isEmpty())
        requestFrames(threads.first().id, 0, std::max(Portion, frameCount(list()->invisibleRootItem())));
}

void CallStackPane::showThreadRows(const QList<ThreadInfo> &threads)
{
    QList<qint64> open;
    if (m_current)
        open.append(m_current->thread);
    const bool changed = !std::ranges::equal(threads, threadsOf(*list()), {}, &ThreadInfo::id);
    for (int i = 0; changed && i < list()->topLevelItemCount(); ++i) {
        if (list()->topLevelItem(i)->isExpanded())
            open.append(placeOf(list()->topLevelItem(i)).thread);
    }
    if (changed)
        list()->clear();
    const QPointer<CallStackPane> self(this);
    for (int i = 0; i < threads.size(); ++i) {
        showThread(i, threads[i], open.contains(threads[i].id));
        if (!self || list()->topLevelItemCount() <= i)
            return; // the environment has answered at once
    }
}

void CallStackPane::showThread(int index, const ThreadInfo &thread, bool opens)
{
    auto *row = static_cast<ListViewItem *>(list()->topLevelItem(index));
    if (!row)
        row = new ListViewItem(list(), static_cast<ListViewItem *>(list()->topLevelItem(index - 1)));
    setPlace(row, ThreadRow, {thread.id, 0});
    setCells(row, {threadName(thread), thread.state.simplified()}, m_current && m_current->thread == thread.id);
    row->setChildIndicatorPolicy(thread.running ? QTreeWidgetItem::DontShowIndicator : QTreeWidgetItem::ShowIndicator);
    if (thread.running)
        return removeFrom(row, 0);
    if (!row->isExpanded())
        removeFrom(row, 0); // they are read when the row is opened
    if (row->isExpanded())
        requestFrames(thread.id, 0, std::max(Portion, frameCount(row)));
    else if (opens)
        row->setExpanded(true);
}

void CallStackPane::opened(ListViewItem *row)
{
    if (isPaused() && kindOf(row) == ThreadRow && row->childCount() == 0)
        requestFrames(placeOf(row).thread, 0, Portion);
}

// Functions -----------------------------------------------------------------------------------------------------------

void CallStackPane::requestFrames(qint64 thread, int first, int count)
{
    const auto callStack = shareInterface(m_callStack.get());
    const DebugRequest request = queries().ask(
        {.frames = [this, thread, first](const auto &frames, bool more) { showFrames(thread, first, frames, more); },
         .failed = [this, thread, first](const QString &reason) { showFailure(thread, first, reason); }});
    runPlugin<&ICallStack::requestFrames>(callStack, request, thread, first, count, queries().replies());
}

QTreeWidgetItem *CallStackPane::parentOf(qint64 thread) const
{
    if (!m_severalThreads)
        return list()->invisibleRootItem();
    for (int i = 0; i < list()->topLevelItemCount(); ++i) {
        if (placeOf(list()->topLevelItem(i)).thread == thread)
            return list()->topLevelItem(i);
    }
    return nullptr;
}

void CallStackPane::showFrames(qint64 thread, int first, const QList<StackFrame> &frames, bool more)
{
    QTreeWidgetItem *parent = parentOf(thread);
    if (!parent || frameCount(parent) < first)
        return;
    for (int i = 0; i < frames.size(); ++i)
        showFrame(parent, thread, first + i, frames[i]);
    const int end = first + int(frames.size());
    removeFrom(parent, end);
    if (more && end > 0)
        addRow(parent, MoreRow, {thread, end}, tr("Show more"));
    m_selectsCurrent = m_selectsCurrent && !(m_current && m_current->thread == thread);
}

void CallStackPane::showFrame(QTreeWidgetItem *parent, qint64 thread, int index, const StackFrame &frame)
{
    QTreeWidgetItem *row = frameRow(parent, index);
    if (!row) {
        removeFrom(parent, index);
        row = addRow(parent, FrameRow, {}, {});
    }
    setPlace(row, FrameRow, {thread, frame.level});
    const bool isCurrent = m_current && m_current->thread == thread && m_current->frame == frame.level;
    const QString address = u"0x%1"_s.arg(frame.address, 8, 16, QLatin1Char('0'));
    setCells(
        row,
        {frame.function.isEmpty() ? address : frame.function, placeText(frame), QString::number(frame.level), address},
        isCurrent);
    if (isCurrent && m_selectsCurrent)
        list()->setCurrentItem(static_cast<ListViewItem *>(row));
}

void CallStackPane::showFailure(qint64 thread, int first, const QString &reason)
{
    QTreeWidgetItem *parent = parentOf(thread);
    if (!parent)
        return;
    removeFrom(parent, std::min(first, frameCount(parent)));
    addRow(parent, FailureRow, {thread, first}, reason.simplified());
}

/// Adds a row behind the others of a thread.
QTreeWidgetItem *CallStackPane::addRow(QTreeWidgetItem *parent, int kind, const StackPlace &place, const QString &text)
{
    auto *last = static_cast<ListViewItem *>(parent->child(parent->childCount() - 1));
    auto *row =
        m_severalThreads ? new ListViewItem(static_cast<ListViewItem *>(parent), last) : new ListViewItem(list(), last);
    setPlace(row, Kind(kind), place);
    setCells(row, {text}, false, kind != FrameRow);
    return row;
}

// Choice --------------------------------------------------------------------------------------------------------------

void CallStackPane::activate(const QTreeWidgetItem *row)
{
    if (!isPaused() || kindOf(row) == FailureRow)
        return;
    const StackPlace place = placeOf(row);
    const bool isMore = kindOf(row) == MoreRow;
    // The rows may change meanwhile, and the sender of this signal still uses this one.
    QMetaObject::invokeMethod(
        this, [this, place, isMore] { isMore ? requestFrames(place.thread, place.frame, Portion) : choose(place); },
        Qt::QueuedConnection);
}

void CallStackPane::choose(const StackPlace &place)
{
    const QPointer<CallStackPane> self(this);
    const auto environment = shareInterface(m_environment.get());
    const auto callStack = shareInterface(m_callStack.get());
    const bool hadFocus = list()->hasFocus();
    const bool chosen = isPaused() && askPlugin<&ICallStack::setCurrentPlace>(callStack, place);
    if (!self || !isPaused())
        return;
    if (!chosen)
        return update(); // the rows are outdated
    m_selectsCurrent = true;
    DebugQueries::raiseGeneration();
    Q_EMIT placeChosen(environment.get());
    if (self && hadFocus)
        list()->setFocus(); // so that the next function can be chosen by keys; a source may have taken it
}
