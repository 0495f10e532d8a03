#include "propertycomboitem.h"
#include "propertycombobox.h"
#include "propertylist.h"
#include <QLineEdit>

using namespace Qt::StringLiterals;

QComboBox *PropertyComboItem::comboBox() const
{
    return static_cast<QComboBox *>(editor());
}

QWidget *PropertyComboItem::createEditor()
{
    auto *editor = new PropertyComboBox(propertyList()->viewport());
    editor->setObjectName(u"propertyComboEditor"_s);
    editor->setEditable(true);
    editor->setInsertPolicy(QComboBox::NoInsert);
    editor->setCompleter(nullptr); // what is typed stays as it is
    connect(editor, &QComboBox::editTextChanged, this, &PropertyComboItem::setEdited);
    connect(editor, &QComboBox::activated, this, &PropertyComboItem::setEdited);
    return editor;
}

void PropertyComboItem::editorClicked(const QPoint &position)
{
    QLineEdit *edit = comboBox()->lineEdit();
    comboBox()->setFocus();
    edit->setCursorPosition(edit->cursorPositionAt(edit->mapFrom(comboBox(), position)));
}

void PropertyComboItem::transferEditor(bool toValue)
{
    if (toValue)
        return setValue(comboBox()->lineEdit()->text(), true);
    comboBox()->clear();
    comboBox()->addItems(m_options);
    comboBox()->lineEdit()->setText(value().toString());
}
