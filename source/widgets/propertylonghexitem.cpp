#include "propertylonghexitem.h"
#include "hextext.h"
#include "lineeditor.h"
#include "propertyhexitem.h"
#include <QLineEdit>

using namespace Qt::StringLiterals;

PropertyLongHexItem::PropertyLongHexItem(const QString &name, const QVariant &value, int bits, PropertyList *list,
                                         ListViewItem *after)
    : PropertyTextItem(name, {}, list, after), m_bits(bits)
{
    PropertyLongHexItem::setValue(value, false);
}

PropertyLongHexItem::PropertyLongHexItem(const QString &name, const QVariant &value, int bits, PropertyItem *parent,
                                         ListViewItem *after)
    : PropertyTextItem(name, {}, parent, after), m_bits(bits)
{
    PropertyLongHexItem::setValue(value, false);
}

void PropertyLongHexItem::setValue(const QVariant &value, bool notify)
{
    QByteArray bytes = value.toByteArray();
    bytes.resize(byteCount(m_bits), '\0');
    storeValue(bytes, longHexText(bytes, m_bits), notify);
}

QWidget *PropertyLongHexItem::createEditor()
{
    QWidget *editor = PropertyTextItem::createEditor();
    allowHexDigits(static_cast<LineEditor *>(editor)->edit());
    return editor;
}

void PropertyLongHexItem::transferEditor(bool toValue)
{
    if (toValue)
        setValue(longHexValue(lineEdit()->text(), m_bits), true);
    else
        lineEdit()->setText(text(1));
}
