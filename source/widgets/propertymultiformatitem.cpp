#include "propertymultiformatitem.h"
#include "lineeditor.h"
#include "numberformat.h"
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpressionValidator>

using namespace Qt::StringLiterals;

PropertyMultiFormatItem::PropertyMultiFormatItem(const QString &name, const QVariant &value, int bits,
                                                 PropertyList *list, ListViewItem *after)
    : PropertyTextItem(name, {}, list, after), m_bits(bits), m_format(HexadecimalFormat)
{
    PropertyMultiFormatItem::setValue(value, false);
}

PropertyMultiFormatItem::PropertyMultiFormatItem(const QString &name, const QVariant &value, int bits,
                                                 PropertyItem *parent, ListViewItem *after)
    : PropertyTextItem(name, {}, parent, after), m_bits(bits), m_format(HexadecimalFormat)
{
    PropertyMultiFormatItem::setValue(value, false);
}

void PropertyMultiFormatItem::setFormat(int format)
{
    if (format == m_format)
        return;
    m_format = format;
    setValue(value(), false);
    reloadEditor();
}

void PropertyMultiFormatItem::setValue(const QVariant &value, bool notify)
{
    const quint32 number = value.toUInt();
    storeValue(number, numberText(number, m_bits, m_format), notify);
}

QWidget *PropertyMultiFormatItem::createEditor()
{
    static const QRegularExpression digits(u"[0-9a-fA-FxX\\-+.]*"_s);
    QWidget *editor = PropertyTextItem::createEditor();
    QLineEdit *edit = static_cast<LineEditor *>(editor)->edit();
    edit->setValidator(new QRegularExpressionValidator(digits, edit));
    editor->setContextMenuPolicy(Qt::NoContextMenu); // that of the row
    return editor;
}

void PropertyMultiFormatItem::transferEditor(bool toValue)
{
    if (!toValue)
        return lineEdit()->setText(text(1));
    const QString input = lineEdit()->text();
    const quint32 number = numberValue(input, m_bits);
    const QPointer<PropertyMultiFormatItem> self(this); // receivers may remove the row
    setValue(number, true);
    if (self && !isNumberText(input))
        Q_EMIT unreadableInput(input);
    else if (self && !fitsWidth(number, m_bits))
        Q_EMIT wideInput(input);
}
