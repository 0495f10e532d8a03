#include "recovery.h"
#include "messages.h"
#include "newerfile.h"
#include "swapfile.h"
#include "textdocument.h"
#include "workspace.h"
#include <QCoreApplication>
#include <QDir>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {
struct Recovery
{
    Q_DECLARE_TR_FUNCTIONS(Recovery)
};

constexpr qsizetype MostNamed = 10; ///< most files listed in the question

QString question(const QList<RecoverableText> &texts)
{
    QStringList names;
    for (const RecoverableText &text : texts.first(std::min(texts.size(), MostNamed)))
        names += (text.isNewerOnDisk() ? Recovery::tr("%1 (%2; the file on disk is newer)") : Recovery::tr("%1 (%2)"))
                     .arg(QDir::toNativeSeparators(text.filename), QLocale().toString(text.time, QLocale::ShortFormat));
    if (texts.size() > MostNamed)
        names += Recovery::tr("and %n more", nullptr, int(texts.size() - MostNamed));
    return Recovery::tr("The program ended before changes to these files were saved:\n\n%1\n\n"
                        "Do you want to recover the changes?")
        .arg(names.join(u'\n'));
}

/// Deletes the copy when the document has a copy of its own.
bool recover(Workspace &workspace, const RecoverableText &text)
{
    const std::optional<QString> content = recoverText(text);
    auto *document = content ? qobject_cast<TextDocument *>(workspace.openOrCreate(text.filename)) : nullptr;
    if (!document)
        return false;
    document->recover(*content, text.fileTime);
    noteReported(document); // the question named a newer file
    if (SwapFile *swap = document->swapFile())
        swap->flush();
    discardRecoverableText(text);
    return true;
}
} // namespace

int offerRecovery(Workspace &workspace, const QString &directory, QWidget *parent)
{
    const QList<RecoverableText> texts = recoverableTexts(directory);
    if (texts.isEmpty())
        return 0;
    const auto answer =
        showInformation(parent, question(texts), {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
    int recovered = 0;
    for (const RecoverableText &text : texts) {
        if (answer == QMessageBox::No)
            discardRecoverableText(text);
        else if (answer == QMessageBox::Yes && recover(workspace, text))
            ++recovered;
        else if (answer == QMessageBox::Yes)
            showWarning(parent,
                        Recovery::tr("The changes to the following file could not be recovered:\n%1\n\n"
                                     "They are kept in the file\n%2")
                            .arg(QDir::toNativeSeparators(text.filename), QDir::toNativeSeparators(text.swapFile)));
    }
    return recovered;
}
