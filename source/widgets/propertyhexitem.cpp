#include "propertyhexitem.h"
#include "hextext.h"
#include "lineeditor.h"
#include <QLineEdit>
#include <QRegularExpressionValidator>

using namespace Qt::StringLiterals;

PropertyHexItem::PropertyHexItem(const QString &name, const QVariant &value, int bits, PropertyList *list,
                                 ListViewItem *after)
    : PropertyTextItem(name, {}, list, after), m_bits(bits)
{
    PropertyHexItem::setValue(value, false);
}

PropertyHexItem::PropertyHexItem(const QString &name, const QVariant &value, int bits, PropertyItem *parent,
                                 ListViewItem *after)
    : PropertyTextItem(name, {}, parent, after), m_bits(bits)
{
    PropertyHexItem::setValue(value, false);
}

void PropertyHexItem::setValue(const QVariant &value, bool notify)
{
    const quint32 number = maskedToWidth(value.toUInt(), m_bits);
    storeValue(number, hexText(number, m_bits), notify);
}

QWidget *PropertyHexItem::createEditor()
{
    QWidget *editor = PropertyTextItem::createEditor();
    allowHexDigits(static_cast<LineEditor *>(editor)->edit());
    return editor;
}

void PropertyHexItem::transferEditor(bool toValue)
{
    if (!toValue)
        return lineEdit()->setText(isUnknown() ? QString() : text(1));
    if (!isUnknown() || !lineEdit()->text().isEmpty())
        setValue(hexValue(lineEdit()->text()), true);
}

void allowHexDigits(QLineEdit *edit)
{
    static const QRegularExpression digits(u"[0-9a-fA-FxX]*"_s);
    edit->setValidator(new QRegularExpressionValidator(digits, edit));
}
