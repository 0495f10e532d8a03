#include "registerwidget.h"
#include "callplugin.h"
#include "gridtext.h"
#include "hextext.h"
#include "numberformat.h"
#include "popupmenu.h"
#include "propertyflagsitem.h"
#include "propertylonghexitem.h"
#include "propertymultiformatitem.h"
#include "propertysubsectionitem.h"
#include "registerlist.h"
#include "varnelassert.h"
#include <algorithm>
#include <QDebug>
#include <QVBoxLayout>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr uint WordBits = 32;
constexpr uint WidestRegister = 65536; ///< in bits; a greater width cannot be meant

struct Format
{
    const char *text;
    uint bit;
    int number;
};

constexpr Format Formats[] = {
    {QT_TRANSLATE_NOOP("RegisterWidget", "Signed Decimal"), IRegisters::SignedDecimal, SignedFormat},
    {QT_TRANSLATE_NOOP("RegisterWidget", "Unsigned Decimal"), IRegisters::UnsignedDecimal, UnsignedFormat},
    {QT_TRANSLATE_NOOP("RegisterWidget", "Hexadecimal"), IRegisters::Hexadecimal, HexadecimalFormat},
    {QT_TRANSLATE_NOOP("RegisterWidget", "Binary"), IRegisters::Binary, BinaryFormat},
    {QT_TRANSLATE_NOOP("RegisterWidget", "Fractional"), IRegisters::Fractional, FractionalFormat},
};

int formatNumber(uint bit)
{
    const auto *found = std::ranges::find(Formats, bit, &Format::bit);
    return found == std::end(Formats) ? HexadecimalFormat : found->number;
}

bool sameInfo(const RegisterInfo &left, const RegisterInfo &right)
{
    return left.name == right.name && left.width == right.width && left.choices == right.choices
           && left.defaultFormat == right.defaultFormat && left.formats == right.formats && left.group == right.group
           && left.readOnly == right.readOnly;
}

bool sameInfos(const QList<RegisterInfo> &left, const QList<RegisterInfo> &right)
{
    return left.isSharedWith(right) || std::ranges::equal(left, right, sameInfo);
}

bool writeWord(IRegisters *registers, const QString &name, quint32 value, int word)
{
    return runPlugin<&IRegisters::setValue>(registers, name, value, word);
}

void writeLong(IRegisters *registers, const QString &name, const QByteArray &bytes)
{
    quint32 word = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        word |= quint32(uchar(bytes[i])) << i % 4 * 8;
        if (i % 4 < 3 && i + 1 < bytes.size())
            continue;
        if (!writeWord(registers, name, word, int(i / 4)))
            return;
        word = 0;
    }
}

/// The bytes of a register with these words, the lowest first.
QByteArray bytesOf(const QList<uint> &words, int bits)
{
    QByteArray bytes(byteCount(bits), '\0');
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = char(words.value(i / 4) >> i % 4 * 8);
    return bytes;
}

/// The bytes of a register, the lowest first; nothing after an exception.
std::optional<QByteArray> readLong(IRegisters *registers, const QString &name, int bits)
{
    QList<uint> words;
    for (int i = 0; i <= bits / int(WordBits); ++i) {
        quint32 word = 0;
        if (!readPlugin<&IRegisters::value>(word, registers, name, i))
            return {};
        words.append(word);
    }
    return bytesOf(words, bits);
}

/// The value for a row; invalid after an exception.
QVariant readValue(IRegisters *registers, const PropertyItem *row)
{
    const QString name = row->name();
    if (const auto *longRow = qobject_cast<const PropertyLongHexItem *>(row)) {
        const auto bytes = readLong(registers, name, longRow->bits());
        return bytes ? QVariant(*bytes) : QVariant();
    }
    quint32 value = 0;
    return readPlugin<&IRegisters::value>(value, registers, name, 0) ? QVariant(value) : QVariant();
}
} // namespace

RegisterWidget::RegisterWidget(QWidget *parent) : DebugPane(parent), m_list(new RegisterList(this))
{
    setObjectName(u"registers"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_list);
    m_list->setObjectName(u"registerList"_s);
    m_list->setAccessibleName(tr("Registers"));
    m_list->setTreeStepSize(0);
    setFocusProxy(m_list);
    keepReadable(*m_list);
    connect(m_list, &PropertyList::valueChanged, this, &RegisterWidget::setRegister);
    connect(m_list, &RegisterList::rightButtonClicked, this, &RegisterWidget::rightButtonClicked);
}

RegisterWidget::~RegisterWidget() = default;

QString RegisterWidget::text() const
{
    return gridText(*m_list);
}

QString RegisterWidget::changed() const
{
    return changedNames(*m_list);
}

// The rows ------------------------------------------------------------------------------------------------------------

void RegisterWidget::setRegisters(IRegisters *registers)
{
    rebuild({});
    m_queries.cancel();
    m_written.clear();
    m_requests.reset();
    m_registers = shareInterface(registers);
    if (!registers)
        return;
    const QPointer<RegisterWidget> self(this);
    const auto kept = shareInterface(registers);
    auto requests = queryPlugin<IRegisterRequests>(kept);
    const auto infos = askPlugin<&IRegisters::registers>(kept);
    if (!self || m_registers != kept)
        return;
    m_requests = std::move(requests);
    rebuild(infos);
}

void RegisterWidget::rebuild(const QList<RegisterInfo> &infos)
{
    m_list->clear();
    m_groups.clear();
    m_infos = infos;
    PropertyItem *cursor = nullptr;
    for (const RegisterInfo &info : infos) {
        PropertyItem *group = groupOf(info, cursor);
        cursor = addRow(info, group, cursor);
        cursor->setReadOnly(info.readOnly);
    }
    for (PropertySubsectionItem *group : std::as_const(m_groups))
        group->setOpen(true);
    m_list->fitNames();
}

/// The row of the register's group, null for none. Moves @p cursor to the row behind which the register stands.
PropertyItem *RegisterWidget::groupOf(const RegisterInfo &info, PropertyItem *&cursor)
{
    PropertySubsectionItem *group = info.group.isEmpty() ? nullptr : m_groups.value(info.group);
    if (group) {
        cursor = static_cast<PropertyItem *>(group->child(group->childCount() - 1));
        return group;
    }
    if (cursor && cursor->parent())
        cursor = static_cast<PropertyItem *>(cursor->parent());
    if (info.group.isEmpty())
        return nullptr;
    group = new PropertySubsectionItem(info.group, m_list, cursor);
    group->setValue(0u, false);
    m_groups.insert(info.group, group);
    cursor = group;
    return group;
}

PropertyItem *RegisterWidget::addRow(const RegisterInfo &info, PropertyItem *group, PropertyItem *after)
{
    const int bits = int(std::min(info.width, WidestRegister));
    const auto make = [&](auto *parent) -> PropertyItem * {
        if (!info.choices.isEmpty())
            return new PropertyFlagsItem(info.name, 0u, info.choices, parent, after);
        if (info.width > WordBits)
            return new PropertyLongHexItem(info.name, QByteArray(byteCount(bits), '\0'), bits, parent, after);
        auto *row = new PropertyMultiFormatItem(info.name, 0u, bits, parent, after);
        row->setFormat(m_formats.value(info.name, formatNumber(info.defaultFormat)));
        connect(row, &PropertyMultiFormatItem::unreadableInput, this, [this, name = info.name](const QString &text) {
            Q_EMIT message(tr("'%1' is not a number: %2 was set to 0.").arg(text, name));
        });
        connect(row, &PropertyMultiFormatItem::wideInput, this, [this, name = info.name, bits](const QString &text) {
            Q_EMIT message(tr("'%1' is wider than the %2 bits of %3.").arg(text, QString::number(bits), name));
        });
        return row;
    };
    PropertyItem *row = group ? make(group) : make(static_cast<PropertyList *>(m_list));
    if (const auto *edited = qobject_cast<PropertyTextItem *>(row))
        reportRejected(edited);
    return row;
}

/// Without the message, a key that does nothing has no visible reason.
void RegisterWidget::reportRejected(const PropertyTextItem *row)
{
    const QString text = qobject_cast<const PropertyLongHexItem *>(row)
                             ? tr("%1 takes a hexadecimal number like 0x1A.")
                             : tr("%1 takes a number like 26, -26, 0x1A, 0b11010 or 0.5.");
    connect(row, &PropertyTextItem::inputRejected, this,
            [this, text = text.arg(row->name())] { Q_EMIT message(text); });
}

const RegisterInfo *RegisterWidget::infoOf(const QString &name) const
{
    const auto found = std::ranges::find(m_infos, name, &RegisterInfo::name);
    return found == m_infos.end() ? nullptr : &*found;
}

// Values --------------------------------------------------------------------------------------------------------------

void RegisterWidget::update()
{
    if (!m_registers || m_reading || m_reporting)
        return;
    const QPointer<RegisterWidget> self(this);
    // The plug-in may call back, and this pane may lose its reference.
    const auto registers = shareInterface(m_registers.get());
    m_reading = true;
    QList<RegisterInfo> infos;
    const bool isListed = readPlugin<&IRegisters::registers>(infos, registers);
    if (isListed && self && m_registers == registers) {
        if (!sameInfos(infos, m_infos))
            rebuild(infos);
        if (m_requests)
            requestRows();
        else
            readRows(registers.get());
    }
    if (self)
        m_reading = false;
}

/// Also the rows of groups, with their names. Ends at the first exception, so that there are not hundreds of messages.
void RegisterWidget::readRows(IRegisters *registers)
{
    QList<QPointer<PropertyItem>> rows;
    for (QTreeWidgetItemIterator it(m_list); *it; ++it)
        rows += static_cast<PropertyItem *>(*it);
    for (const QPointer<PropertyItem> &row : std::as_const(rows)) {
        if (!row)
            return;
        const QVariant value = readValue(registers, row);
        if (!row || !value.isValid())
            return;
        const QVariant before = row->value();
        row->setValue(value, false);
        if (row)
            row->setChanged(row->value() != before);
    }
}

/// Until the answer, the window shows what it has.
void RegisterWidget::requestRows()
{
    QStringList names;
    for (const RegisterInfo &info : std::as_const(m_infos))
        names.append(info.name);
    m_queries.cancel();
    const DebugRequest question =
        m_queries.ask({.registers = [this](const QList<RegisterValue> &values) { showValues(values); }});
    const auto requests = shareInterface(m_requests.get());
    runPlugin<&IRegisterRequests::requestRegisters>(requests, question, names, m_queries.valueReplies());
}

void RegisterWidget::showValues(const QList<RegisterValue> &values)
{
    QHash<QString, QList<uint>> words;
    for (const RegisterValue &value : values)
        words.insert(value.name, value.words);
    const QSet<QString> written = std::exchange(m_written, {});
    for (QTreeWidgetItemIterator it(m_list); *it; ++it) {
        auto *row = static_cast<PropertyItem *>(*it);
        const QList<uint> value = words.value(row->name());
        if (value.isEmpty())
            continue;
        const QVariant before = row->value();
        const auto *longRow = qobject_cast<PropertyLongHexItem *>(row);
        row->setValue(longRow ? QVariant(bytesOf(value, longRow->bits())) : QVariant(value.first()), false);
        row->setChanged(row->value() != before || written.contains(row->name()));
    }
}

void RegisterWidget::setRegister(PropertyItem *item)
{
    VARNEL_ASSERT_TEXT(item && m_registers, "item && m_registers");
    if (!item || !m_registers)
        return;
    const QPointer<RegisterWidget> self(this);
    const QPointer<PropertyItem> row(item);
    const auto registers = shareInterface(m_registers.get());
    if (qobject_cast<PropertyLongHexItem *>(item))
        writeLong(registers.get(), item->name(), item->value().toByteArray());
    else
        writeWord(registers.get(), item->name(), item->value().toUInt(), 0);
    if (self && m_requests && row)
        m_written.insert(row->name());
    if (self)
        update();
    if (row)
        row->setChanged(true);
    if (!self)
        return;
    m_reporting = true;
    Q_EMIT doUpdate();
    if (!self)
        return;
    m_reporting = false;
    if (m_requests)
        update(); // the first answer belongs to the time before the change
}

// Formats -------------------------------------------------------------------------------------------------------------

void RegisterWidget::rightButtonClicked(PropertyItem *item, const QPoint &point)
{
    qDebug("%s", qPrintable(item->name()));
    const RegisterInfo *info = infoOf(item->name());
    const QPointer row = qobject_cast<PropertyMultiFormatItem *>(item);
    if (!info || !row)
        return;
    auto *menu = new PopupMenu(m_list);
    menu->setObjectName(u"formatMenu"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Format &format : Formats) {
        if (!(info->formats & format.bit))
            continue;
        QAction *action = menu->insertItem(tr(format.text), format.number, [this, row](int number) {
            if (!row)
                return;
            row->setFormat(number);
            m_formats.insert(row->name(), number);
            m_list->repaintItem(row);
        });
        action->setCheckable(true);
        action->setChecked(format.number == row->format());
    }
    if (menu->actions().size() > 1)
        menu->popup(point);
    else
        delete menu;
}
