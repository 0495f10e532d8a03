#include "propertybooleanitem.h"
#include <QComboBox>

using namespace Qt::StringLiterals;

PropertyBooleanItem::PropertyBooleanItem(const QString &name, const QVariant &value, PropertyList *list,
                                         ListViewItem *after)
    : PropertyListItem(name, {}, list, after)
{
    PropertyBooleanItem::setValue(value, false);
}

PropertyBooleanItem::PropertyBooleanItem(const QString &name, const QVariant &value, PropertyItem *parent,
                                         ListViewItem *after)
    : PropertyListItem(name, {}, parent, after)
{
    PropertyBooleanItem::setValue(value, false);
}

void PropertyBooleanItem::setValue(const QVariant &value, bool notify)
{
    const bool isKnown = value.isValid();
    const QVariant number = isKnown ? QVariant(value.toString() == "true"_L1 ? 1 : value.toInt()) : QVariant();
    const QString text = !isKnown ? QString() : isYes(number) ? tr("Yes") : tr("No");
    storeValue(number, text, notify);
}

void PropertyBooleanItem::transferEditor(bool toValue)
{
    auto *editor = static_cast<QComboBox *>(this->editor());
    if (!toValue) {
        editor->clear();
        editor->addItems({tr("Yes"), tr("No")});
        editor->setCurrentIndex(!value().isValid() ? -1 : isYes(value()) ? 0 : 1);
    } else if (editor->currentIndex() >= 0) {
        setValue(editor->currentText() == tr("Yes") ? 1 : 0, true);
    }
}

bool isYes(const QVariant &value)
{
    return value.toString() == "true"_L1 || value.toInt() != 0;
}
