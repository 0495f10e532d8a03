#include "propertylistitem.h"
#include "propertycombobox.h"
#include "propertylist.h"

using namespace Qt::StringLiterals;

void PropertyListItem::addOption(const QString &label, const QString &key)
{
    m_labels += label;
    m_keys += key;
    setText(1, m_labels.value(value().toInt()));
}

/// Negative for an invalid value.
int PropertyListItem::indexOf(const QVariant &value) const
{
    return value.isValid() ? std::max(0, int(m_keys.indexOf(value.toString()))) : -1;
}

void PropertyListItem::setValue(const QVariant &value, bool notify)
{
    storeValue(value, m_labels.value(indexOf(value)), notify);
}

QWidget *PropertyListItem::createEditor()
{
    auto *editor = new PropertyComboBox(propertyList()->viewport());
    editor->setObjectName(u"propertyListEditor"_s);
    connect(editor, &QComboBox::currentIndexChanged, this, &PropertyListItem::setEdited);
    connect(editor, &QComboBox::activated, this, &PropertyListItem::setEdited);
    return editor;
}

void PropertyListItem::transferEditor(bool toValue)
{
    auto *editor = static_cast<QComboBox *>(this->editor());
    if (!toValue) {
        editor->clear();
        editor->addItems(m_labels);
        editor->setCurrentIndex(isUnknown() ? -1 : indexOf(value()));
    } else if (editor->currentIndex() >= 0) {
        setValue(m_keys.value(editor->currentIndex()), true);
    }
}
