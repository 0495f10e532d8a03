#include "propertyfileitem.h"
#include "lineeditor.h"
#include "propertylist.h"
#include "questions.h"
#include <QDir>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

PropertyFileItem::PropertyFileItem(const QString &name, const QVariant &value, Mode mode, PropertyList *list,
                                   ListViewItem *after)
    : PropertyTextItem(name, value, list, after), m_mode(mode)
{}

PropertyFileItem::PropertyFileItem(const QString &name, const QVariant &value, Mode mode, PropertyItem *parent,
                                   ListViewItem *after)
    : PropertyTextItem(name, value, parent, after), m_mode(mode)
{}

QWidget *PropertyFileItem::createEditor()
{
    auto *editor = new LineEditor(LineEditor::WithButton, propertyList()->viewport());
    editor->setObjectName(u"propertyFileEditor"_s);
    connect(editor->edit(), &QLineEdit::textChanged, this, &PropertyFileItem::setEdited);
    connect(editor->button(), &QToolButton::clicked, this, &PropertyFileItem::browseClicked);
    return editor;
}

void PropertyFileItem::choose(const std::function<std::optional<QString>(const QString &)> &ask)
{
    const QPointer<PropertyFileItem> self(this);
    setAcceptOnFocusOut(false);
    const std::optional<QString> chosen = ask(lineEdit()->text());
    if (!self)
        return;
    setAcceptOnFocusOut(true);
    if (chosen && editor())
        lineEdit()->setText(*chosen);
}

void PropertyFileItem::browseClicked()
{
    choose([this](const QString &text) -> std::optional<QString> {
        const QPointer<PropertyList> list = propertyList();
        QString start = list->baseDirectory();
        if (!text.isEmpty() || !start.isEmpty())
            start = QDir(start).absoluteFilePath(QDir::fromNativeSeparators(text));
        const QString path =
            m_mode == File
                ? askForOpenFile(list, {u"chooseFileDialog"_s, tr("Choose File"), start, tr("All Files (*.*)")})
                : askForDirectory(list, {u"chooseDirDialog"_s, tr("Choose Directory"), start, {}});
        return path.isEmpty() ? std::nullopt : std::optional(QDir::toNativeSeparators(path));
    });
}
