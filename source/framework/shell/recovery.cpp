#include "recovery.h"
#include "documenttemplate.h"
#include "messages.h"
#include "swapfile.h"
#include "textdocument.h"
#include "workspace.h"
#include <QDir>
#include <QFileInfo>

namespace {
DocumentTemplate *creatorOf(const QString &filename, const Workspace &workspace)
{
    for (DocumentTemplate *docTemplate : workspace.templates()) {
        if (docTemplate->canOpen(filename) && docTemplate->canCreate())
            return docTemplate;
    }
    return nullptr;
}

TextDocument *open(const QString &filename, Workspace &workspace)
{
    if (QFileInfo::exists(filename))
        workspace.openDocument(filename, true);
    else if (DocumentTemplate *creator = creatorOf(filename, workspace))
        workspace.newDocument(creator, filename);
    return qobject_cast<TextDocument *>(workspace.findDocument(filename));
}

/// The copy goes only when the document keeps one of its own. False if there is nothing to be had from it.
bool recover(const RecoverableText &copy, Workspace &workspace)
{
    const std::optional<QString> text = recoverText(copy);
    TextDocument *document = text ? open(copy.filename, workspace) : nullptr;
    if (!document)
        return false;
    document->recover(*text);
    if (SwapFile *swapFile = document->swapFile(); swapFile && swapFile->writeNow())
        discardRecoverableText(copy);
    return true;
}

/// Of several copies of a file the newest is taken; the others wait for the next start.
void recoverNewest(QList<RecoverableText> copies, Workspace &workspace)
{
    std::ranges::stable_sort(copies, std::greater(), &RecoverableText::time);
    QStringList recovered;
    for (const RecoverableText &copy : std::as_const(copies)) {
        if (!recovered.contains(copy.filename) && recover(copy, workspace))
            recovered.append(copy.filename);
    }
}
} // namespace

void offerRecovery(QWidget *window, Workspace &workspace, const QString &directory)
{
    const QList<RecoverableText> copies = recoverableTexts(directory);
    if (copies.isEmpty())
        return;
    QStringList names;
    for (const RecoverableText &copy : copies)
        names.append(QDir::toNativeSeparators(copy.filename));
    names.removeDuplicates();
    const QString question = QObject::tr("The program ended before changes to these files were saved:\n\n%1\n\n"
                                         "Do you want to recover the changes? No throws them away.");
    const auto answer = showMessage(QMessageBox::Question, window, question.arg(names.join(u'\n')),
                                    {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
    if (answer == QMessageBox::Yes)
        recoverNewest(copies, workspace);
    else if (answer == QMessageBox::No)
        std::ranges::for_each(copies, discardRecoverableText);
}
