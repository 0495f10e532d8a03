#include "propertyflagsitem.h"
#include "flagsdialog.h"
#include "hextext.h"
#include "propertylist.h"

PropertyFlagsItem::PropertyFlagsItem(const QString &name, const QVariant &value, const QString &format,
                                     PropertyList *list, ListViewItem *after)
    : PropertyCustomItem(name, {}, list, after), m_format(format)
{
    PropertyFlagsItem::setValue(value, false);
}

PropertyFlagsItem::PropertyFlagsItem(const QString &name, const QVariant &value, const QString &format,
                                     PropertyItem *parent, ListViewItem *after)
    : PropertyCustomItem(name, {}, parent, after), m_format(format)
{
    PropertyFlagsItem::setValue(value, false);
}

PropertyFlagsItem::~PropertyFlagsItem()
{
    if (m_dialog)
        m_dialog->deleteLater();
    if (m_dialog)
        m_dialog->hide();
}

void PropertyFlagsItem::setValue(const QVariant &value, bool notify)
{
    const quint32 bits = value.toUInt() & flagMask(flagNames(m_format));
    if (m_dialog)
        m_dialog->setValue(bits);
    storeValue(bits, flagText(bits, m_format), notify);
}

void PropertyFlagsItem::editClicked()
{
    if (!m_dialog) {
        m_dialog = new FlagsDialog(name(), flagNames(m_format), propertyList());
        connect(m_dialog, &FlagsDialog::valueChanged, this, &PropertyFlagsItem::flagsDialogChanged);
    }
    m_dialog->setValue(value().toUInt());
    m_dialog->show();
    m_dialog->raise();
}

void PropertyFlagsItem::flagsDialogChanged(quint32 value)
{
    setValue(value, true);
}
