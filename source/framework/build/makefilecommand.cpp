#include "makefilecommand.h"
#include "activity.h"
#include "callplugin.h"
#include "ibuildenvironment.h"
#include "imakefilegenerator.h"
#include "messages.h"
#include "outputwindow.h"
#include "project.h"
#include "wholefile.h"
#include "windowservices.h"
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(MakefileCommand)
};

QByteArray firstLine(const QByteArray &text)
{
    return text.left(text.indexOf('\n'));
}

/// Whether nothing is lost if @p path gets the contents @p bytes, or the user agrees.
bool mayWrite(const QString &path, const QByteArray &bytes, QWidget *parent)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return true;
    const std::optional<QByteArray> old = readFile(path);
    if (old && firstLine(*old) == firstLine(bytes))
        return true;
    const QString question = Text::tr("The file %1 exists already, and was not generated from this project.\n\nDo you "
                                      "want to overwrite it?")
                                 .arg(QDir::toNativeSeparators(path));
    return showMessage(QMessageBox::Question, parent, question, {QMessageBox::Yes, QMessageBox::No}, messageCaption(),
                       QMessageBox::No)
           == QMessageBox::Yes;
}

/// Returns whether the file has the contents now. What is no regular file stays as it is, and so does every file if the
/// project is closed during the question.
bool writeGenerated(const GeneratedFile &file, const QPointer<const Project> &project, WindowServices &window)
{
    const QByteArray bytes = file.text.toUtf8();
    const QString shown = QDir::toNativeSeparators(file.path);
    if (!mayWrite(file.path, bytes, window.dialogParent()) || !project)
        return false;
    const QFileInfo info(file.path);
    if (readFile(file.path) == bytes) {
        window.outputWindow()->outputLine(OutputWindow::Build, Text::tr("%1 is up to date.\n").arg(shown));
        return true;
    }
    if ((info.exists() && !info.isFile()) || !writeFileSafely(file.path, bytes)) {
        showWarning(window.dialogParent(), Text::tr("The file %1 could not be written.").arg(shown));
        return false;
    }
    window.outputWindow()->outputLine(OutputWindow::Build, Text::tr("%1 was written.\n").arg(shown));
    return true;
}
} // namespace

bool generateMakefiles(const Activity &activity, WindowServices &window)
{
    const QPointer<const Project> project(activity.currentProject());
    if (!project)
        return false;
    const auto generator = queryPlugin<IMakefileGenerator>(project->buildInterface());
    if (!generator) {
        showInformation(
            window.dialogParent(),
            Text::tr("No Makefile can be generated.\n\nThe build environment of the project does not support it."));
        return true;
    }
    window.showOutputDock();
    window.outputWindow()->displayPage(OutputWindow::Build); // the environment reports there what it leaves out
    const QList<GeneratedFile> files = askPlugin<&IMakefileGenerator::makefiles>(generator);
    bool all = !files.isEmpty();
    for (const GeneratedFile &file : files)
        all = project && writeGenerated(file, project, window) && all;
    if (!project)
        return true; // the window may have been closed with it
    window.showMessage(all ? Text::tr("Makefile generated") : Text::tr("Not all Makefiles were generated"));
    window.checkFileChanges(); // one of the files may be open
    return true;
}
