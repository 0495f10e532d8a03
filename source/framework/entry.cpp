#include "entry.h"
#include "automation.h"
#include "commandline.h"
#include "ideapplication.h"
#include "mainwindow.h"
#include "messages.h"
#include "optionscommands.h"
#include "sessionkeeper.h"
#include "warninglog.h"
#include "windowgeometry.h"
#include <cstdio>
#include <QFile>
#include <QScreen>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
class WindowCommandLine : public CommandLineTarget
{
public:
    explicit WindowCommandLine(MainWindow &window) : m_window(window) {}
    void startServer(quint16 port) override
    {
        m_unattended = true;
        m_window.runScriptsUnasked();
        startAutomation(port, &m_window, m_window.objectModel(), *IDEApplication::instance()->settings());
    }
    void openProject(const QString &path) override
    {
        chooseSession();
        m_window.openProject(path, false);
    }
    void openWorkspace(const QString &path) override
    {
        chooseSession();
        m_window.openWorkspace(path, false);
    }
    void openNamed(const QString &path) override
    {
        m_window.sessions().skipLastRun();
        m_named.append(path);
    }
    [[nodiscard]] QStringList named() const { return m_named; }

private:
    /// A test driver gets the workspace and nothing else.
    void chooseSession() { m_unattended ? m_window.sessions().disable() : m_window.sessions().skipLastRun(); }

    MainWindow &m_window;
    QStringList m_named;
    bool m_unattended = false;
};

void showWhereItWasLeft(MainWindow &window, QSettings &settings)
{
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    const WindowPlacement placement = restoredPlacement(loadPlacement(settings, available), available);
    window.setGeometry(placement.x, placement.y, placement.width, placement.height);
    placement.maximised ? window.showMaximized() : window.show();
}
} // namespace

int runVarnel(int &argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    if (const QString answer = commandLineAnswer(arguments, IDEApplication::version()); !answer.isNull()) {
        std::fputs(qPrintable(answer), stdout); // before the application: it needs a display
        return 0;
    }
    const WarningLog log;
    IDEApplication application(argc, argv);
    return runMainWindow(application);
}

int runMainWindow(IDEApplication &application)
{
    MainWindow window;
    window.setObjectName(u"mainWindow"_s);
    application.setMainWidget(&window);
    showWhereItWasLeft(window, *application.settings());
    application.closeSplash();

    WindowCommandLine target(window);
    if (!walkCommandLine(QCoreApplication::arguments(), target)) {
        application.closeSplash();
        showWarning(nullptr, commandLineUsage());
        return 1;
    }
    if (readMoreOptions(*application.settings()).startPage)
        window.helpHome();
    QMetaObject::invokeMethod(
        &window, [&window, named = target.named()] { window.continueLastRun(named); }, Qt::QueuedConnection);
    return QApplication::exec();
}
