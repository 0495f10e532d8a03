#include "questions.h"
#include "messages.h"
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QInputDialog>
#include <QLabel>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
/// The toolkit takes "*.*" literally, but it means every file here.
void widenFilter(const QFileDialog &dialog)
{
    auto *files = dialog.findChild<QFileSystemModel *>();
    if (files)
        files->setNameFilters(files->nameFilters().replaceInStrings(u"*.*"_s, u"*"_s));
}

/// The toolkit would propose the last part of a path that does not exist as the name of a file.
QString existingStart(const QString &path)
{
    if (path.isEmpty())
        return path;
    QString start = path;
    while (!QFileInfo::exists(start) && QFileInfo(start).path() != start)
        start = QFileInfo(start).path();
    return start;
}

/// Always the toolkit's own dialog, so that automation finds it by its object name.
QStringList ask(QWidget *parent, const FileQuestion &question, QFileDialog::AcceptMode accept,
                QFileDialog::FileMode mode)
{
    // On the heap, since the parent may be deleted while the dialog is open, and the dialog with it.
    const QPointer<QFileDialog> dialog =
        new QFileDialog(parent, question.caption, existingStart(question.directory), question.filter);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setObjectName(question.objectName);
    dialog->setAcceptMode(accept);
    dialog->setFileMode(mode);
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog] { widenFilter(*dialog); });
    if (!question.selectedFilter.isEmpty())
        dialog->selectNameFilter(question.selectedFilter);
    if (!question.fileName.isEmpty())
        dialog->selectFile(question.fileName);
    widenFilter(*dialog);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    QStringList files = accepted ? dialog->selectedFiles() : QStringList();
    delete dialog;
    return files;
}

/// @p prepare sets what can be entered.
std::optional<QString> askForValue(QWidget *parent, const QString &label,
                                   const std::function<void(QInputDialog &)> &prepare)
{
    const QPointer<QInputDialog> dialog = new QInputDialog(parent);
    dialog->setObjectName(u"inputDialog"_s);
    dialog->setWindowTitle(messageCaption());
    prepare(*dialog);
    dialog->setLabelText(QString(label).replace(u'&', u"&&"_s)); // the label may contain names
    dialog->findChild<QLabel *>()->setTextFormat(Qt::PlainText);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    std::optional<QString> answer = accepted ? std::optional(dialog->textValue()) : std::nullopt;
    delete dialog;
    return answer;
}
} // namespace

std::optional<QString> askForText(QWidget *parent, const QString &label, const QString &text, const QString &caption)
{
    return askForValue(parent, label, [&](QInputDialog &dialog) {
        dialog.setTextValue(text);
        if (!caption.isNull())
            dialog.setWindowTitle(caption);
    });
}

std::optional<QString> askForItem(QWidget *parent, const QString &label, const QStringList &items)
{
    return askForValue(parent, label, [&](QInputDialog &dialog) {
        dialog.setOption(QInputDialog::UseListViewForComboBoxItems);
        dialog.setComboBoxItems(items);
        dialog.setTextValue(items.value(0));
    });
}

QStringList askForOpenFiles(QWidget *parent, const FileQuestion &question)
{
    return ask(parent, question, QFileDialog::AcceptOpen, QFileDialog::ExistingFiles);
}

QString askForOpenFile(QWidget *parent, const FileQuestion &question)
{
    return ask(parent, question, QFileDialog::AcceptOpen, QFileDialog::ExistingFile).value(0);
}

QString askForSaveFile(QWidget *parent, const FileQuestion &question)
{
    return ask(parent, question, QFileDialog::AcceptSave, QFileDialog::AnyFile).value(0);
}

QString askForDirectory(QWidget *parent, const FileQuestion &question)
{
    return ask(parent, question, QFileDialog::AcceptOpen, QFileDialog::Directory).value(0);
}
