#include "propertytextitem.h"
#include "lineeditor.h"
#include "propertylist.h"
#include <QLineEdit>

using namespace Qt::StringLiterals;

LineEditor *PropertyTextItem::lineEditor() const
{
    return static_cast<LineEditor *>(editor());
}

QLineEdit *PropertyTextItem::lineEdit() const
{
    return lineEditor()->edit();
}

void PropertyTextItem::editorClicked(const QPoint &position)
{
    lineEditor()->clickAt(position);
}

QWidget *PropertyTextItem::createEditor()
{
    auto *editor = new LineEditor(LineEditor::NoButton, propertyList()->viewport());
    editor->setObjectName(u"propertyTextEditor"_s);
    connect(editor->edit(), &QLineEdit::textChanged, this, &PropertyTextItem::setEdited);
    connect(editor->edit(), &QLineEdit::inputRejected, this, &PropertyTextItem::inputRejected);
    return editor;
}

void PropertyTextItem::transferEditor(bool toValue)
{
    if (toValue)
        setValue(lineEdit()->text(), true);
    else
        lineEdit()->setText(value().toString());
}
