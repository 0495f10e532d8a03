#include "scriptprogram.h"
#include "activity.h"
#include "document.h"
#include "ideapplication.h"
#include "mainwindow.h"
#include "project.h"
#include "projectworkspace.h"
#include "scriptrun.h"
#include "sessionkeeper.h"
#include "viewmanager.h"
#include "workspace.h"
#include <csignal>
#include <cstdio>
#include <QAbstractButton>
#include <QFile>
#include <QMessageBox>
#include <QProgressDialog>

using namespace Qt::StringLiterals;

namespace {

volatile std::sig_atomic_t interrupted = 0;

/// The script is interrupted first, so that it can clean up; a second signal ends the process.
void interrupt(int number)
{
    interrupted = 1;
    std::signal(number, SIG_DFL);
}

QtMessageHandler defaultHandler = nullptr;

/// The platform without a screen reports with each window that it has no size hints, which no script can change.
void dropPlatformNotes(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message != "This plugin does not support propagateSizeHints()"_L1)
        defaultHandler(type, context, message);
}

void press(QMessageBox *box)
{
    for (const auto button : {QMessageBox::Cancel, QMessageBox::No, QMessageBox::Ok}) {
        if (QAbstractButton *found = box->button(button))
            return found->click();
    }
    if (!box->buttons().isEmpty())
        box->buttons().last()->click();
}

/// Without a user, a dialog would wait for ever: writes its text and cancels it.
class UnattendedDialogs : public QObject
{
public:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        auto *dialog = qobject_cast<QDialog *>(object);
        if (event->type() == QEvent::Show && dialog && dialog->isModal() && !qobject_cast<QProgressDialog *>(dialog))
            QMetaObject::invokeMethod(
                dialog, [dialog] { refuse(dialog); }, Qt::QueuedConnection);
        return false;
    }

private:
    static void refuse(QDialog *dialog)
    {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        std::fprintf(stderr, "%s\n", qPrintable(box ? box->text() : dialog->windowTitle()));
        box ? press(box) : dialog->reject();
    }
};

/// Ends sessions and builds. Unsaved changes are dropped, so that no question is asked.
void discardAll(MainWindow &window)
{
    if (window.activity().state() == StateBuilding)
        window.buildStopBuild();
    for (Document *document : window.workspace()->documents())
        document->setModified(false);
    for (const QPointer<Project> &project : window.activity().projects())
        project->setModified(false);
    if (ProjectWorkspace *workspace = window.projectWorkspace())
        workspace->setModified(false);
    window.viewManager()->closeAll();
    window.closeWorkspace();
}

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    return arguments;
}

constexpr auto Usage = "Usage: varnel-run SCRIPT [ARGUMENTS]\n       varnel-run -m MODULE [ARGUMENTS]\n";
constexpr auto Help =
    "Runs a Python script in the whole of Varnel, but without a window, and ends with its exit code.\n"
    "Texts of dialogs are written to the standard error stream, and the dialogs are cancelled.\n\n"
    "  -m MODULE   run a module, such as pytest, instead of a file\n"
    "  --help      print this text and end\n"
    "  --version   print the version and end\n";

/// Later arguments belong to the script. False if the first one is no question about this program.
bool printAnswer(const QString &argument)
{
    if (argument == "--help"_L1)
        std::printf("%s\n%s", Usage, Help);
    else if (argument == "--version"_L1)
        std::printf("Varnel %s\n", qPrintable(IDEApplication::version()));
    else
        return false;
    return true;
}

int runInWindow(IDEApplication &application, const QStringList &arguments)
{
    MainWindow window;
    window.setObjectName(u"mainWindow"_s);
    application.setMainWidget(&window);
    window.runScriptsUnasked();
    window.sessions().disable();
    window.show();
    application.closeSplash();
    QMetaObject::invokeMethod(
        &window,
        [&] {
            const int code = runScriptProgram(arguments, [] { return interrupted == 0; });
            discardAll(window);
            QCoreApplication::exit(code);
        },
        Qt::QueuedConnection);
    return QApplication::exec();
}

} // namespace

int runVarnelScript(int argc, char **argv)
{
    const QStringList arguments = argumentsOf(argc, argv);
    if (printAnswer(arguments.value(0)))
        return 0;
    if (arguments.isEmpty() || arguments == QStringList(u"-m"_s)) {
        std::fputs(Usage, stderr);
        return ScriptNotFound;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    defaultHandler = qInstallMessageHandler(dropPlatformNotes);
    int ownArguments = 1; // the others are those of the script
    char *ownValues[] = {argv[0], nullptr};
    IDEApplication application(ownArguments, ownValues);
    application.setQuitOnLastWindowClosed(false);
    UnattendedDialogs dialogs;
    application.installEventFilter(&dialogs);
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    return runInWindow(application, arguments);
}
