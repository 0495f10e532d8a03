#include "propertyfilelistitem.h"
#include "filelistdialog.h"
#include "propertylist.h"

using namespace Qt::StringLiterals;

void PropertyFileListItem::browseClicked()
{
    choose([this](const QString &text) -> std::optional<QString> {
        const QPointer<FileListDialog> dialog(
            new FileListDialog(name(), text, mode() == Directory, propertyList(), u"fileListDialog"_s));
        dialog->setBaseDirectory(propertyList()->baseDirectory());
        const bool isAccepted = dialog->exec() == QDialog::Accepted;
        if (!dialog)
            return {};
        dialog->deleteLater();
        return isAccepted ? std::optional(dialog->text()) : std::nullopt;
    });
}
