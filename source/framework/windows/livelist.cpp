#include "livelist.h"
#include "gridtext.h"
#include "liverecorder.h"
#include "popupmenu.h"
#include "project.h"
#include "rowpainter.h"
#include "timeplot.h"
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {
constexpr int ExpressionCharacters = 20;
constexpr int ProcessorCharacters = 14;
constexpr QSize PictureSize{24, 12};

QString stateText(LiveVariable::State state)
{
    switch (state) {
    case LiveVariable::NotSupported:
        return LiveList::tr("not supported");
    case LiveVariable::NoSession:
        return LiveList::tr("not running");
    case LiveVariable::Unreadable:
        return LiveList::tr("cannot be read");
    case LiveVariable::Readable:
        break;
    }
    return {};
}

QString stateToolTip(LiveVariable::State state)
{
    switch (state) {
    case LiveVariable::NotSupported:
        return LiveList::tr("The debugger of this project cannot read the target while the program runs.");
    case LiveVariable::NoSession:
        return LiveList::tr("There is no debug session, or its target cannot be read while the program runs.");
    case LiveVariable::Unreadable:
        return LiveList::tr("Only global and static variables with a simple type can be read while the program runs. "
                            "One that was added while it runs may have to wait for the next pause.");
    case LiveVariable::Readable:
        break;
    }
    return {};
}
} // namespace

LiveList::LiveList(LiveRecorder &recorder, QWidget *parent) : ListView(parent), m_recorder(recorder)
{
    setObjectName(u"liveList"_s);
    setAccessibleName(tr("Live variables"));
    setHeaderLabels({tr("Variable"), tr("Processor"), tr("Value")});
    setRootIsDecorated(false);
    setAllColumnsShowFocus(true);
    setIconSize(PictureSize);
    const int character = fontMetrics().horizontalAdvance(u'0');
    header()->resizeSection(ExpressionColumn, character * ExpressionCharacters);
    header()->resizeSection(ProcessorColumn, character * ProcessorCharacters);
    header()->setStretchLastSection(true);
    keepReadable(*this);
    connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem *item, int column) {
        if (column == ExpressionColumn)
            m_recorder.setPlotted(indexOfTopLevelItem(item), item->checkState(column) == Qt::Checked);
    });
    connect(this, &ListView::contextMenuRequested, this,
            [this](ListViewItem *item, const QPoint &position) { showMenu(item, position); });
}

void LiveList::showVariables()
{
    const QSignalBlocker quiet(this);
    while (topLevelItemCount() > m_recorder.variables().size())
        delete topLevelItem(topLevelItemCount() - 1);
    for (int i = 0; i < m_recorder.variables().size(); ++i) {
        auto *item = static_cast<ListViewItem *>(topLevelItem(i));
        if (!item)
            item = new ListViewItem(this, static_cast<ListViewItem *>(topLevelItem(i - 1)));
        showVariable(item, m_recorder.variables()[i]);
    }
}

void LiveList::showVariable(ListViewItem *item, const LiveVariable &variable) const
{
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren);
    item->setText(ExpressionColumn, variable.expression);
    item->setCheckState(ExpressionColumn, variable.plotted ? Qt::Checked : Qt::Unchecked);
    item->setIcon(ExpressionColumn, variable.plotted ? curvePicture(variable.style) : QIcon());
    item->setText(ProcessorColumn, variable.project ? variable.project->name() : QString());
    showValue(item, variable);
}

void LiveList::showValues()
{
    const QSignalBlocker quiet(this);
    for (int i = 0; i < topLevelItemCount() && i < m_recorder.variables().size(); ++i)
        showValue(static_cast<ListViewItem *>(topLevelItem(i)), m_recorder.variables()[i]);
    viewport()->update();
}

/// A variable that cannot be read now keeps its last value, in grey.
void LiveList::showValue(ListViewItem *item, const LiveVariable &variable) const
{
    const bool isOld = variable.state != LiveVariable::Readable;
    const QString text = variable.text.isEmpty() ? stateText(variable.state) : variable.text;
    if (item->text(ValueColumn) != text)
        item->setText(ValueColumn, text);
    if (item->toolTip(ValueColumn) == stateToolTip(variable.state) && item->data(ValueColumn, Qt::UserRole) == isOld)
        return;
    item->setData(ValueColumn, Qt::UserRole, isOld);
    item->setToolTip(ValueColumn, stateToolTip(variable.state));
    item->setForeground(ValueColumn, isOld ? QBrush(fadedText(palette())) : QBrush());
}

QIcon LiveList::curvePicture(int style) const
{
    QPixmap picture(PictureSize * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QPen pen = TimePlot::curvePen(style, palette().color(QPalette::Base));
    pen.setWidthF(2 * pen.widthF());
    painter.setPen(pen);
    painter.drawLine(0, PictureSize.height() / 2, PictureSize.width(), PictureSize.height() / 2);
    return picture;
}

void LiveList::changeEvent(QEvent *event)
{
    ListView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showVariables();
}

void LiveList::removeCurrent()
{
    m_recorder.remove(indexOfTopLevelItem(currentItem()));
}

void LiveList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier)
        removeCurrent();
    else
        ListView::keyPressEvent(event);
}

void LiveList::showMenu(ListViewItem *item, const QPoint &position)
{
    if (!item)
        return;
    setCurrentItem(item);
    auto *menu = new PopupMenu(this);
    menu->setObjectName(u"liveMenu"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->insertItem(tr("Remove Variable"), 0, [this](int) { removeCurrent(); });
    menu->popup(position);
}

QString LiveList::text() const
{
    QString text;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        const QTreeWidgetItem *row = topLevelItem(i);
        text += u"%1|%2|%3\n"_s.arg(row->text(ExpressionColumn), row->text(ProcessorColumn), row->text(ValueColumn));
    }
    return text;
}
