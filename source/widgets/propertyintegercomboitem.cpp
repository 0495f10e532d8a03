#include "propertyintegercomboitem.h"
#include <QComboBox>
#include <QIntValidator>
#include <QLineEdit>

QWidget *PropertyIntegerComboItem::createEditor()
{
    auto *editor = static_cast<QComboBox *>(PropertyComboItem::createEditor());
    editor->lineEdit()->setValidator(new QIntValidator(editor));
    return editor;
}
