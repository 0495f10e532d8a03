#include "propertycustomitem.h"
#include "lineeditor.h"
#include "propertylist.h"
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

void PropertyCustomItem::editorClicked(const QPoint &position)
{
    static_cast<LineEditor *>(editor())->clickAt(position);
}

QWidget *PropertyCustomItem::createEditor()
{
    auto *editor = new LineEditor(LineEditor::WithButton, propertyList()->viewport());
    editor->setObjectName(u"propertyCustomEditor"_s);
    editor->edit()->setReadOnly(true);
    connect(editor->button(), &QToolButton::clicked, this, &PropertyCustomItem::editClicked);
    return editor;
}

void PropertyCustomItem::transferEditor(bool toValue)
{
    if (!toValue)
        static_cast<LineEditor *>(editor())->edit()->setText(text(1));
}
