#include "propertyintegeritem.h"
#include "propertylist.h"
#include "propertyspinbox.h"

using namespace Qt::StringLiterals;

void PropertyIntegerItem::setRange(int minimum, int maximum)
{
    m_minimum = minimum;
    m_maximum = maximum;
}

QWidget *PropertyIntegerItem::createEditor()
{
    auto *editor = new PropertySpinBox(propertyList()->viewport());
    editor->setObjectName(u"propertyIntegerEditor"_s);
    editor->setRange(m_minimum, m_maximum);
    editor->setSingleStep(1);
    connect(editor, &QSpinBox::textChanged, this, &PropertyIntegerItem::setEdited);
    return editor;
}

void PropertyIntegerItem::transferEditor(bool toValue)
{
    auto *editor = static_cast<QSpinBox *>(this->editor());
    if (!toValue)
        return editor->setValue(value().toInt());
    editor->interpretText();
    setValue(editor->value(), true);
}
