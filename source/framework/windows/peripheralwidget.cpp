#include "peripheralwidget.h"
#include "callplugin.h"
#include "gridtext.h"
#include "hextext.h"
#include "peripheralfieldrows.h"
#include "peripheralwidgettooltip.h"
#include "popupmenu.h"
#include "propertyhexitem.h"
#include "propertylist.h"
#include "propertysubsectionitem.h"
#include "varnelassert.h"
#include <algorithm>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int DefaultWidth = 16; ///< of a register whose width is not known
constexpr int WidestRegister = 32;
constexpr int TreeStep = 10;
constexpr int SectionStep = 14; ///< registers below a heading stand further right by this
constexpr int RegisterIndent = 20;
constexpr int FieldIndent = 34;
constexpr int ReadingTime = 40; ///< milliseconds, between which the window handles events

bool sameRegister(const PeripheralRegisterInfo &left, const PeripheralRegisterInfo &right)
{
    return left.name == right.name && left.bits == right.bits && left.readOnly == right.readOnly;
}

bool sameInfo(const PeripheralInfo &left, const PeripheralInfo &right)
{
    return left.name == right.name
           && (left.registers.isSharedWith(right.registers)
               || std::ranges::equal(left.registers, right.registers, sameRegister));
}

int widthOf(const PeripheralRegisterInfo &info)
{
    return info.bits <= 0 ? DefaultWidth : std::min(info.bits, WidestRegister);
}
} // namespace

PeripheralWidget::PeripheralWidget(QWidget *parent)
    : DebugPane(parent), m_list(new PropertyList(tr("Peripheral Register"), tr("Value"), this))
{
    setObjectName(u"peripherals"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_list);
    setFocusProxy(m_list);
    keepReadable(*m_list);
    m_list->setObjectName(u"peripheralList"_s);
    m_list->setAccessibleName(tr("Peripherals"));
    m_list->setTreeStepSize(TreeStep);
    m_readTimer.setSingleShot(true);
    connect(&m_readTimer, &QTimer::timeout, this, [this] {
        if (m_paused)
            readVisible();
    });
    connect(m_list, &PropertyList::valueChanged, this, &PeripheralWidget::setRegister);
    connect(m_list, &ListView::contextMenuRequested, this, &PeripheralWidget::rightButtonClicked);
    connect(m_list, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem *item) { expanded(static_cast<ListViewItem *>(item)); });
    connect(m_list, &QTreeWidget::itemCollapsed, this, [this] { m_readTimer.start(0); });
    connect(m_list->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { m_readTimer.start(0); });
}

PeripheralWidget::~PeripheralWidget() = default;

QString PeripheralWidget::text() const
{
    return gridText(*m_list);
}

QString PeripheralWidget::changed() const
{
    return changedNames(*m_list);
}

void PeripheralWidget::showEvent(QShowEvent *event)
{
    DebugPane::showEvent(event);
    m_readTimer.start(0);
}

void PeripheralWidget::resizeEvent(QResizeEvent *event)
{
    DebugPane::resizeEvent(event);
    m_readTimer.start(0);
}

// The rows ------------------------------------------------------------------------------------------------------------

void PeripheralWidget::setPeripherals(IPeripherals *peripherals)
{
    const auto kept = shareInterface(peripherals);
    m_peripherals = shareInterface(peripherals);
    m_toolTip.reset();
    m_fieldsOf.reset();
    rebuild({});
    if (!peripherals)
        return;
    m_toolTip = std::make_unique<PeripheralWidgetToolTip>(m_list, peripherals);
    const QPointer<PeripheralWidget> self(this);
    auto fields = queryPlugin<IPeripheralFields>(kept.get());
    const auto infos = askPlugin<&IPeripherals::peripherals>(kept);
    if (!self || m_peripherals != kept)
        return;
    m_fieldsOf = std::move(fields);
    rebuild(infos);
}

void PeripheralWidget::rebuild(const QList<PeripheralInfo> &infos)
{
    m_list->clear();
    m_states.clear();
    m_fields.clear();
    m_infos = infos;
    const bool hasSections = infos.size() > 1;
    PropertyItem *section = nullptr;
    for (const PeripheralInfo &info : infos) {
        if (hasSections) {
            section = new PropertySubsectionItem(info.name, m_list, section);
            section->setValue(0u, false);
        }
        addRegisters(info, section);
    }
    m_list->fitNames();
    if (!hasSections)
        addFieldsBelow(nullptr);
}

void PeripheralWidget::addRegisters(const PeripheralInfo &info, PropertyItem *section)
{
    PropertyItem *last = nullptr;
    for (const PeripheralRegisterInfo &entry : info.registers) {
        last = section ? new PropertyHexItem(entry.name, 0u, widthOf(entry), section, last)
                       : new PropertyHexItem(entry.name, 0u, widthOf(entry), m_list, last);
        last->setReadOnly(entry.readOnly);
        if (m_fieldsOf)
            last->setIndent(RegisterIndent + (section ? SectionStep : 0));
    }
}

void PeripheralWidget::expanded(ListViewItem *item)
{
    addFieldsBelow(item);
    m_readTimer.start(0);
}

/// Adds the fields of the registers in a section, or at the top level for null. Ends at the first exception.
void PeripheralWidget::addFieldsBelow(ListViewItem *section)
{
    if (!m_fieldsOf || m_states.value(static_cast<PropertyItem *>(section)).isDetailed)
        return; // the row of a register
    QList<QPointer<PropertyItem>> rows;
    QTreeWidgetItem *above = section ? static_cast<QTreeWidgetItem *>(section) : m_list->invisibleRootItem();
    for (int i = 0; i < above->childCount(); ++i)
        rows += static_cast<PropertyItem *>(above->child(i));
    const QPointer<PeripheralWidget> self(this);
    for (const QPointer<PropertyItem> &row : std::as_const(rows)) {
        if (!self || !row || !addFields(row))
            return;
    }
    m_list->fitNames();
}

bool PeripheralWidget::addFields(PropertyItem *item)
{
    if (m_states.value(item).isDetailed)
        return true;
    const QPointer<PeripheralWidget> self(this);
    const QPointer<PropertyItem> row(item);
    const auto fieldsOf = shareInterface(m_fieldsOf.get());
    const QString peripheral = peripheralOf(item);
    const QString name = item->name();
    PeripheralRegisterDetails details;
    if (!readPlugin<&IPeripheralFields::details>(details, fieldsOf, peripheral, name) || !self || !row)
        return false;
    RowState &entry = m_states[row];
    entry.details = details;
    entry.isDetailed = true;
    for (const PeripheralFieldInfo &field : possibleFields(details.fields)) {
        PropertyItem *fieldRow = makeFieldRow(field, row);
        fieldRow->setIndent(row->textIndent() + FieldIndent - RegisterIndent);
        fieldRow->setDescription(field.description);
        PeripheralWidgetToolTip::setField(fieldRow);
        m_fields.insert(fieldRow, {row, field});
        entry.fields += fieldRow;
    }
    entry.isWriteOnly = isWriteOnly(details);
    if (entry.isWriteOnly)
        row->setUnknown(tr("write only"));
    else if (details.readingChanges)
        row->setUnknown(tr("not read"));
    showFields(row);
    return true;
}

QString PeripheralWidget::peripheralOf(const PropertyItem *row) const
{
    const auto *section = static_cast<const PropertyItem *>(row->parent());
    return section ? section->name() : QString();
}

// Values --------------------------------------------------------------------------------------------------------------

void PeripheralWidget::update()
{
    if (!m_peripherals || m_reading || m_reporting)
        return;
    const QPointer<PeripheralWidget> self(this);
    const auto peripherals = shareInterface(m_peripherals.get());
    ++m_update;
    m_reading = true;
    QList<PeripheralInfo> infos;
    const bool isListed = readPlugin<&IPeripherals::peripherals>(infos, peripherals);
    if (!self)
        return;
    m_reading = false;
    if (!isListed || m_peripherals != peripherals)
        return;
    if (!infos.isSharedWith(m_infos) && !std::ranges::equal(infos, m_infos, sameInfo))
        rebuild(infos);
    readVisible();
}

/// The rows of headings and registers, also of registers whose fields are on the screen.
QList<PropertyItem *> PeripheralWidget::rowsOnScreen() const
{
    QList<PropertyItem *> rows;
    const int bottom = m_list->viewport()->height();
    for (ListViewItem *item = m_list->itemAt(QPoint(1, 1)); item; item = item->itemBelow()) {
        if (m_list->visualItemRect(item).top() >= bottom)
            break;
        auto *row = static_cast<PropertyItem *>(item);
        const auto field = m_fields.constFind(row);
        if (field != m_fields.cend())
            row = field->owner;
        if (!rows.contains(row))
            rows += row;
    }
    return rows;
}

/// Reads the rows on the screen that were not read since the last update. Ends at the first exception. A pane in a tab
/// that is not in front does that when it appears. With a slow target, the window handles its events in between.
void PeripheralWidget::readVisible()
{
    if (!m_peripherals || m_reading || !isVisible())
        return;
    const QPointer<PeripheralWidget> self(this);
    QList<QPointer<PropertyItem>> rows;
    for (PropertyItem *row : rowsOnScreen())
        rows += row;
    QElapsedTimer reading;
    reading.start();
    for (const QPointer<PropertyItem> &row : std::as_const(rows)) {
        if (!row)
            return;
        if (m_states.value(row).update == m_update)
            continue;
        if (m_paused && reading.elapsed() > ReadingTime)
            return m_readTimer.start(0);
        if (!readRow(row) || !self)
            return;
    }
}

/// False if the rows behind it shall not be read.
bool PeripheralWidget::readRow(PropertyItem *row)
{
    RowState &state = m_states[row];
    state.update = m_update;
    if (state.details.readingChanges || state.isWriteOnly)
        return true;
    quint32 value = 0;
    if (!ask(row, &value))
        return false;
    showValue(row, value);
    return true;
}

/// False after an exception, and if the row was deleted meanwhile.
bool PeripheralWidget::ask(PropertyItem *item, uint *value)
{
    const QPointer<PeripheralWidget> self(this);
    const QPointer<PropertyItem> row(item);
    const auto peripherals = shareInterface(m_peripherals.get());
    const QString peripheral = peripheralOf(item);
    const QString name = item->name();
    m_reading = true;
    const bool isRead = readPlugin<&IPeripherals::value>(*value, peripherals, peripheral, name);
    if (self)
        m_reading = false;
    return isRead && self && row;
}

void PeripheralWidget::showValue(PropertyItem *row, uint value)
{
    const QVariant before = row->value();
    row->setValue(value, false);
    row->setChanged(row->value() != before);
    showFields(row);
}

void PeripheralWidget::showFields(PropertyItem *row)
{
    const quint32 value = row->value().toUInt();
    for (PropertyItem *fieldRow : m_states.value(row).fields) {
        const quint32 before = fieldRow->value().toUInt();
        const PeripheralFieldInfo &field = m_fields[fieldRow].info;
        if (!field.readable)
            fieldRow->setUnknown(tr("write only"));
        else if (row->isUnknown())
            fieldRow->setUnknown(row->text(1));
        else
            showFieldValue(fieldRow, field, valueIn(field, value));
        fieldRow->setReadOnly(isFieldReadOnly(row, field));
        fieldRow->setChanged(!fieldRow->isUnknown() && fieldRow->value().toUInt() != before);
    }
}

/// Also while the other bits of the register, which are written with it, would have to be read first.
bool PeripheralWidget::isFieldReadOnly(const PropertyItem *row, const PeripheralFieldInfo &field) const
{
    const RowState state = m_states.value(row);
    const bool others = !state.isWriteOnly && bitsBeside(row, field, ~0u) != 0;
    return row->isReadOnly() || !field.writable || (row->isUnknown() && others);
}

/// The bits of @p value that are written together with a field. Where a register has bits that cannot be read, zeros
/// are written to these.
uint PeripheralWidget::bitsBeside(const PropertyItem *row, const PeripheralFieldInfo &field, uint value) const
{
    const RowState state = m_states.value(row);
    if (state.details.onesClear)
        return 0;
    uint bits = maskedToWidth(value, static_cast<const PropertyHexItem *>(row)->bits()) & ~maskOf(field);
    for (const PropertyItem *other : state.fields) {
        const PeripheralFieldInfo info = m_fields.value(other).info;
        if (!info.readable && !state.isWriteOnly)
            bits &= ~maskOf(info);
    }
    return bits;
}

// Changes by the user -------------------------------------------------------------------------------------------------

void PeripheralWidget::setRegister(PropertyItem *item)
{
    VARNEL_ASSERT_TEXT(item && m_peripherals, "item && m_peripherals");
    if (!item || !m_peripherals)
        return;
    const QPointer<PeripheralWidget> self(this);
    const QPointer<PropertyItem> row(item);
    if (m_fields.contains(item)) {
        if (!writeField(item, m_fields.value(item)))
            return;
    } else {
        write(item, item->value().toUInt());
        if (self && row)
            showFields(row);
    }
    if (row)
        row->setChanged(true);
    if (self)
        reportWrite();
}

/// The environment gets the name of the register in place of the peripheral's, too.
void PeripheralWidget::write(PropertyItem *row, uint value)
{
    const auto peripherals = shareInterface(m_peripherals.get());
    const QString name = row->name();
    runPlugin<&IPeripherals::setValue>(peripherals, name, name, value);
}

/// False if the register could not be read, so that nothing was written.
bool PeripheralWidget::writeField(PropertyItem *item, const Field &field)
{
    const QPointer<PeripheralWidget> self(this);
    const QPointer<PropertyItem> owner(field.owner);
    const RowState state = m_states.value(owner);
    const bool isRead = !state.details.readingChanges && !state.isWriteOnly;
    const quint32 typed = item->value().toUInt() << field.info.lowBit & maskOf(field.info);
    quint32 value = owner->isUnknown() ? 0 : owner->value().toUInt();
    if (isRead && !ask(owner, &value)) {
        if (self && owner)
            takeBack(owner);
        return false;
    }
    value = bitsBeside(owner, field.info, value) | typed;
    write(owner, value);
    if (!self || !owner || (isRead && !ask(owner, &value)))
        return true;
    showValue(owner, value);
    owner->setChanged(true);
    return true;
}

/// Shows the fields of a register as they were before the user has changed one.
void PeripheralWidget::takeBack(PropertyItem *row)
{
    showFields(row);
    for (PropertyItem *fieldRow : m_states.value(row).fields)
        fieldRow->setChanged(false);
}

void PeripheralWidget::reportWrite()
{
    const QPointer<PeripheralWidget> self(this);
    m_reporting = true;
    Q_EMIT doUpdate();
    if (self)
        m_reporting = false;
}

// Registers that change when they are read ----------------------------------------------------------------------------

void PeripheralWidget::rightButtonClicked(ListViewItem *item, const QPoint &point)
{
    auto *clicked = static_cast<PropertyItem *>(item);
    const QPointer<PropertyItem> row(m_fields.contains(clicked) ? m_fields.value(clicked).owner : clicked);
    const RowState state = m_states.value(row);
    if (!row || !state.details.readingChanges || state.isWriteOnly)
        return;
    auto *menu = new PopupMenu(m_list);
    menu->setObjectName(u"peripheralMenu"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->insertItem(tr("Read now"), 0, [this, row](int) {
        if (row)
            readNow(row);
    });
    menu->popup(point);
}

void PeripheralWidget::readNow(PropertyItem *item)
{
    if (!m_fieldsOf || m_reading)
        return;
    const QPointer<PeripheralWidget> self(this);
    const QPointer<PropertyItem> row(item);
    const auto fieldsOf = shareInterface(m_fieldsOf.get());
    const QString peripheral = peripheralOf(item);
    const QString name = item->name();
    quint32 value = 0;
    m_reading = true;
    const bool isRead = readPlugin<&IPeripheralFields::readNow>(value, fieldsOf, peripheral, name);
    if (!self)
        return;
    m_reading = false;
    if (isRead && row) {
        showValue(row, value);
        reportWrite(); // it may have changed other registers
    }
}
