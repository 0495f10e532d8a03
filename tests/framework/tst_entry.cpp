#include "activity.h"
#include "commandline.h"
#include "commandlinewindow.h"
#include "document.h"
#include "entry.h"
#include "ideapplication.h"
#include "installation.h"
#include "mainwindow.h"
#include "project.h"
#include "view.h"
#include "viewmanager.h"
#include <QAbstractButton>
#include <QMessageBox>
#include <QScreen>
#include <QSplashScreen>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace {

/// The results of a program that has ended.
struct Outcome
{
    int exitCode = -1;
    bool loopEntered = false; ///< the main event loop, not those of message boxes
    QMessageBox::Icon boxIcon = QMessageBox::NoIcon;
    QString boxTitle;
    QString boxText;
    qsizetype boxButtons = 0;
    bool boxHasParent = false;
    bool windowShownBehindBox = false;
    bool serverBehindBox = false;
};

MainWindow *mainWindow()
{
    return IDEApplication::instance()->mainWidget();
}

const QTcpServer *server()
{
    return mainWindow()->findChild<QTcpServer *>(u"runner server"_s);
}

void readBox(const QMessageBox &box, Outcome *outcome)
{
    outcome->boxIcon = box.icon();
    outcome->boxTitle = box.windowTitle();
    outcome->boxText = box.text();
    outcome->boxButtons = box.buttons().size();
    outcome->boxHasParent = box.parentWidget();
    outcome->windowShownBehindBox = mainWindow() && mainWindow()->isVisible();
    outcome->serverBehindBox = server();
}

/// Runs the main window in @p installation, and calls @p use, which ends the program, when events are handled.
Outcome run(
    const Installation &installation, const QList<QByteArray> &arguments,
    const std::function<void()> &use = [] { mainWindow()->close(); })
{
    Arguments texts(arguments);
    IDEApplication application(texts.count(), texts.values(), installation.paths());
    Outcome outcome;
    QObject::connect(&application, &QCoreApplication::aboutToQuit, [&outcome] { outcome.loopEntered = true; });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (QThread::currentThread()->loopLevel() == 0)
            return; // events are also handled before the main event loop
        timer.stop();
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return use();
        readBox(*box, &outcome);
        box->button(QMessageBox::Ok)->click();
    });
    timer.start(0);
    outcome.exitCode = runMainWindow(application);
    return outcome;
}

QSplashScreen *splashScreen()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (auto *splash = qobject_cast<QSplashScreen *>(widget))
            return splash;
    }
    return nullptr;
}

/// Calls a function when an action is added to a main window, so while the window is being constructed.
class WhenActionAdded : public QObject
{
public:
    explicit WhenActionAdded(std::function<void()> function) : m_function(std::move(function)) {}

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ActionAdded && qobject_cast<MainWindow *>(watched))
            m_function();
        return false;
    }

private:
    const std::function<void()> m_function;
};

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}
} // namespace

class EntryTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Installation> m_installation;

    void store(const QByteArray &settings) const
    {
        m_installation->write(u"settings/Ostrand Labs/Varnel/1.0.ini"_s, settings);
    }

private Q_SLOTS:
    void init()
    {
        // The offscreen platform prints a warning for every window.
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_installation = std::make_unique<Installation>();
        m_installation->writeWindowFiles();
        m_installation->write(u"config/uiconfig.xml"_s, R"(<ui><actions><action name="fileExit"/></actions></ui>)");
    }

    void withoutArgumentsTheEventLoopIsEntered()
    {
        const Outcome outcome = run(*m_installation, {"varnel"});
        QVERIFY(outcome.loopEntered);
        QCOMPARE(outcome.exitCode, 0);
    }

    void withoutArgumentsTheHelpHomePageIsShown()
    {
        m_installation->write(u"help/html/index.html"_s, "<html>home</html>");
        QStringList titles;
        QString text;
        const auto look = [&titles, &text] {
            for (const View *view : mainWindow()->viewManager()->arrangedViews()) {
                titles.append(view->title());
                if (const auto *browser = view->findChild<QTextBrowser *>())
                    text = browser->toPlainText();
            }
            mainWindow()->close();
        };
        run(*m_installation, {"varnel"}, look);
        QCOMPARE(titles, QStringList(u"Help"_s));
        QCOMPARE(text, u"home"_s);
        titles.clear();
        run(*m_installation, {"varnel", "main.c"}, look);
        QVERIFY(titles.contains(u"Help"_s));
    }

    void startPageCanBeSwitchedOff()
    {
        m_installation->write(u"help/html/index.html"_s, "<html>home</html>");
        store("[Startup]\nStartPage=0\n");
        qsizetype views = -1;
        run(*m_installation, {"varnel"}, [&views] {
            views = mainWindow()->viewManager()->arrangedViews().size();
            mainWindow()->close();
        });
        QCOMPARE(views, 0);
    }

    void exitCodeIsThatOfTheEventLoop()
    {
        QCOMPARE(run(*m_installation, {"varnel"}, [] { QCoreApplication::exit(7); }).exitCode, 7);
    }

    void windowIsTheMainWidgetOfTheApplication()
    {
        QString name;
        bool visible = false;
        run(*m_installation, {"varnel"}, [&] {
            name = mainWindow()->objectName();
            visible = mainWindow()->isVisible();
            QCoreApplication::exit();
        });
        QCOMPARE(name, u"mainWindow"_s);
        QVERIFY(visible);
    }

    void badOptionsEndTheProgramBeforeTheEventLoop_data()
    {
        QTest::addColumn<QList<QByteArray>>("arguments");
        QTest::newRow("project") << QList<QByteArray>{"varnel", "-p"};
        QTest::newRow("workspace") << QList<QByteArray>{"varnel", "/w"};
        QTest::newRow("server") << QList<QByteArray>{"varnel", "-r"};
        QTest::newRow("behind others") << QList<QByteArray>{"varnel", "main.c", "-p"};
    }

    void badOptionsEndTheProgramBeforeTheEventLoop()
    {
        QFETCH(QList<QByteArray>, arguments);
        const Outcome outcome = run(*m_installation, arguments);
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(!outcome.loopEntered);
        QCOMPARE(outcome.boxIcon, QMessageBox::Warning);
        QCOMPARE(outcome.boxTitle, u"Varnel"_s);
        QCOMPARE(outcome.boxText, u"Incorrect options were specified.\n\nUsage: varnel [option]\nOptions:\n"
                                  "-p <project file>\\Varnel opens the specified project\n"_s);
        QCOMPARE(outcome.boxButtons, 1);
        QVERIFY(!outcome.boxHasParent);
        QVERIFY(outcome.windowShownBehindBox);
    }

    void optionsBeforeABadOneAreExecuted()
    {
        store("[Startup]\nAutomationAddress=127.0.0.1\n");
        const Outcome outcome = run(*m_installation, {"varnel", "-r", "0", "-p"});
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(outcome.serverBehindBox);
    }

    void serverListensAtTheAddressOfTheSettings_data()
    {
        QTest::addColumn<QByteArray>("port");
        QTest::newRow("a free port") << QByteArray("0");
        QTest::newRow("no number") << QByteArray("port");
    }

    void serverListensAtTheAddressOfTheSettings()
    {
        QFETCH(QByteArray, port);
        store("[Startup]\nAutomationAddress=127.0.0.1\n");
        QHostAddress address;
        run(*m_installation, {"varnel", "-r", port}, [&] {
            if (server() && server()->isListening())
                address = server()->serverAddress();
            QCoreApplication::exit();
        });
        QCOMPARE(address, QHostAddress(QHostAddress::LocalHost));
    }

    void theServerRunsTheActionsOfTheWindow()
    {
        store("[Startup]\nAutomationAddress=127.0.0.1\n");
        QTcpSocket driver;
        const Outcome outcome = run(*m_installation, {"varnel", "-r", "0"}, [&driver] {
            driver.connectToHost(QHostAddress::LocalHost, server()->serverPort());
            driver.write("DOACTION fileExit\n");
        });
        QVERIFY(outcome.loopEntered);
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(driver.waitForReadyRead()); // sent before the end
        QCOMPARE(driver.readAll(), "OK\r\n");
    }

    void withoutTheOptionThereIsNoServer()
    {
        bool served = true;
        run(*m_installation, {"varnel"}, [&served] {
            served = server();
            QCoreApplication::exit();
        });
        QVERIFY(!served);
    }

    void argumentsWithoutAnOptionAreOpened_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::addColumn<QStringList>("views");
        QTest::addColumn<QStringList>("projects");
        QTest::newRow("file") << u"d/main.c"_s << QStringList(u"main.c"_s) << QStringList();
        QTest::newRow("directory") << u"d"_s << QStringList() << QStringList(u"one"_s);
        QTest::newRow("workspace") << u"d/one.vnw"_s << QStringList() << QStringList(u"one"_s);
        QTest::newRow("project") << u"p/one.vnp"_s << QStringList() << QStringList(u"one"_s);
        QTest::newRow("nothing of that name") << u"d/other.c"_s << QStringList() << QStringList();
    }
    void argumentsWithoutAnOptionAreOpened()
    {
        QFETCH(const QString, argument);
        m_installation->write(u"d/main.c"_s, "int main() { return 0; }");
        for (const QString &project : {u"d/one.vnp"_s, u"p/one.vnp"_s})
            m_installation->write(project, "<project><properties currentconfiguration='Default'>"
                                           "<configuration name='Default'/></properties></project>");
        m_installation->write(u"d/one.vnw"_s, "<workspace><project path='one.vnp'/></workspace>");
        store("[Startup]\nStartPage=0\n");
        QFETCH(const QStringList, views);
        QFETCH(const QStringList, projects);
        QStringList opened;
        QStringList loaded;
        QTimer poll;
        QElapsedTimer time;
        time.start();
        QObject::connect(&poll, &QTimer::timeout, [&] { // opening handles events
            opened.clear();
            for (const View *view : mainWindow()->viewManager()->arrangedViews())
                opened.append(QFileInfo(view->document()->filename()).fileName());
            loaded.clear();
            for (const Project *project : mainWindow()->activity().projects())
                loaded.append(project->name());
            if ((opened == views && loaded == projects) || time.hasExpired(10'000)) {
                poll.stop();
                mainWindow()->close();
            }
        });
        const Outcome outcome =
            run(*m_installation, {"varnel", m_installation->path(argument).toUtf8()}, [&poll] { poll.start(20); });
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(opened, views);
        QCOMPARE(loaded, projects);
        const QSettings settings(m_installation->settingsFile(), QSettings::IniFormat);
        QCOMPARE(settings.contains(u"RecentFiles/Workspace0"_s), !projects.isEmpty());
    }

    void failedOpenDoesNotCountAsABadOption_data()
    {
        QTest::addColumn<QList<QByteArray>>("arguments");
        QTest::newRow("project") << QList<QByteArray>{"varnel", "-p", "/nowhere/a.vnp"};
        QTest::newRow("workspace") << QList<QByteArray>{"varnel", "-w", "/nowhere/a.vnw"};
    }

    void failedOpenDoesNotCountAsABadOption()
    {
        QFETCH(QList<QByteArray>, arguments);
        const Outcome outcome = run(*m_installation, arguments);
        QVERIFY(outcome.loopEntered);
        QCOMPARE(outcome.exitCode, 0);
    }

    void endOfTheProgramEndsAScriptThatHandlesEvents_data()
    {
        QTest::addColumn<QString>("call");
        QTest::newRow("for some time") << u"app.processEvents(20)"_s;
        QTest::newRow("without waiting") << u"app.processEvents()"_s;
    }

    void endOfTheProgramEndsAScriptThatHandlesEvents()
    {
        QFETCH(const QString, call);
        bool ended = false;
        const Outcome outcome = run(*m_installation, {"varnel"}, [&] {
            auto *console = mainWindow()->findChild<CommandLineWindow *>();
            QTimer::singleShot(0, mainWindow(), [] { mainWindow()->close(); });
            Q_EMIT console->inputLine(u"from varnel import app"_s);
            Q_EMIT console->inputLine(u"while True: "_s + call);
            Q_EMIT console->inputLine(QString());
            ended = console->toPlainText().contains(u"KeyboardInterrupt"_s);
        });
        QVERIFY(ended);
        QVERIFY(outcome.loopEntered);
        QCOMPARE(outcome.exitCode, 0);
    }

    void theWindowIsDestroyedBeforeTheApplication()
    {
        bool gone = false;
        bool applicationWasThere = false;
        run(*m_installation, {"varnel"}, [&] {
            connect(mainWindow(), &QObject::destroyed, this, [&] {
                gone = true;
                applicationWasThere = IDEApplication::instance() && IDEApplication::instance()->settings();
            });
            mainWindow()->close();
        });
        QVERIFY(gone);
        QVERIFY(applicationWasThere);
        QVERIFY(!IDEApplication::instance());
    }

    void theWindowComesBackWhereItWasLeft_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QRect>("geometry");
        QTest::addColumn<bool>("maximised");
        Arguments arguments;
        const QApplication application(arguments.count(), arguments.values());
        const QRect area = available();
        QTest::newRow("first start") << QByteArray() << area.adjusted(50, 50, -50, -50) << false;
        QTest::newRow("stored") << QByteArray(
            "MainWindowX=30\nMainWindowY=40\nMainWindowWidth=500\nMainWindowHeight=300\n")
                                << QRect(30, 40, 500, 300) << false;
        QTest::newRow("off the screen") << "MainWindowX=" + QByteArray::number(area.width() + 1)
                                               + "\nMainWindowY=-9\nMainWindowWidth=500\nMainWindowHeight=300\n"
                                        << QRect(1, area.top(), 500, 300) << false;
        QTest::newRow("maximised") << QByteArray("MainWindowX=30\nMainWindowY=40\nMainWindowWidth=500\n"
                                                 "MainWindowHeight=300\nMainWindowMax=true\n")
                                   << QRect(30, 40, 500, 300) << true;
    }

    void theWindowComesBackWhereItWasLeft()
    {
        QFETCH(QByteArray, stored);
        store("[Geometry]\n" + stored);
        QRect geometry;
        bool maximised = false;
        run(*m_installation, {"varnel"}, [&] {
            geometry = mainWindow()->geometry(); // this platform maximises a window later or never
            maximised = mainWindow()->isMaximized();
            QCoreApplication::exit();
        });
        QTEST(geometry, "geometry");
        QTEST(maximised, "maximised");
    }

    void normalPlaceIsKeptThroughAMaximisedSession()
    {
        store("[Geometry]\nMainWindowX=30\nMainWindowY=40\nMainWindowWidth=500\nMainWindowHeight=300\nMainWindowMax="
              "true\n");
        for (int session = 0; session < 2; ++session) {
            run(*m_installation, {"varnel"}, [] {
                // Other platforms send these events to a window that starts maximised; this one does not.
                QResizeEvent resized(available().size(), mainWindow()->size());
                QMoveEvent moved(available().topLeft(), mainWindow()->geometry().topLeft());
                QCoreApplication::sendEvent(mainWindow(), &resized);
                QCoreApplication::sendEvent(mainWindow(), &moved);
                mainWindow()->close();
            });
            const QSettings settings(m_installation->settingsFile(), QSettings::IniFormat);
            QCOMPARE(settings.value(u"Geometry/MainWindowX"_s).toInt(), 30);
            QCOMPARE(settings.value(u"Geometry/MainWindowY"_s).toInt(), 40);
            QCOMPARE(settings.value(u"Geometry/MainWindowWidth"_s).toInt(), 500);
            QCOMPARE(settings.value(u"Geometry/MainWindowHeight"_s).toInt(), 300);
            QCOMPARE(settings.value(u"Geometry/MainWindowMax"_s).toBool(), true);
        }
    }

    void programStartsWithInvalidSettings_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::newRow("huge window") << QByteArray(
            "[Geometry]\nMainWindowWidth=2000000000\nMainWindowHeight=2000000000\n");
        QTest::newRow("wide window") << QByteArray("[Geometry]\nMainWindowWidth=2000000000\n");
        QTest::newRow("window without a size") << QByteArray("[Geometry]\nMainWindowWidth=-1\nMainWindowHeight=-1\n");
        QTest::newRow("extreme numbers") << QByteArray("[Geometry]\nMainWindowX=2147483647\nMainWindowY=-"
                                                       "2147483648\nMainWindowWidth=-2147483648\nMainWindowHeight=0\n");
        QTest::newRow("huge and maximised")
            << QByteArray("[Geometry]\nMainWindowWidth=2000000000\nMainWindowMax=true\n");
        QTest::newRow("other types") << QByteArray(
            "[Geometry]\nMainWindowX=@Point(1 2)\nMainWindowY=@Invalid()\nMainWindowWidth=a, b\nMainWindowMax=maybe\n"
            "[Startup]\nDisableSplashScreen=@ByteArray(x)\n");
        QTest::newRow("no settings file") << QByteArray::fromHex("00ff5b5b5b3d3d0a5d");
    }

    void programStartsWithInvalidSettings()
    {
        QFETCH(QByteArray, settings);
        store(settings);
        QVERIFY(run(*m_installation, {"varnel"}).loopEntered);
    }

    void splashScreenIsShownUntilTheWindowIsShown()
    {
        m_installation->copy(QStringLiteral(TESTBRANDING), u"bin/libbranding.so"_s);
        Arguments arguments;
        IDEApplication application(arguments.count(), arguments.values(), m_installation->paths());
        bool whileBuilding = false;
        bool inTheLoop = true;
        WhenActionAdded filter([&] { whileBuilding = splashScreen()->isVisible(); });
        application.installEventFilter(&filter);
        QTimer timer; // also times out while events are handled before the main event loop
        connect(&timer, &QTimer::timeout, this, [&] {
            if (QThread::currentThread()->loopLevel() == 0)
                return;
            inTheLoop = splashScreen()->isVisible();
            QCoreApplication::exit();
        });
        timer.start(0);
        runMainWindow(application);
        QVERIFY(whileBuilding);
        QVERIFY(!inTheLoop);
    }

    void aProgramWithAnEmptyInstallationStarts()
    {
        m_installation = std::make_unique<Installation>();
        const QString ui = m_installation->path(u"config/uiconfig.xml"_s);
        const auto expect = [&ui](const char *reader) {
            for (const char *problem : {"Cannot open", "Cannot parse"})
                QTest::ignoreMessage(QtWarningMsg, qPrintable(u"%1: %2 ui config file (%3)"_s.arg(
                                                       QLatin1StringView(reader), QLatin1StringView(problem), ui)));
        };
        expect("IDEApplication::getAppFeature");
        for (const char *picture : {"appicon", "headerfile", "csourcefile", "pythonsourcefile", "textfile", "textfile",
                                    "textfile", "textfile"})
            QTest::ignoreMessage(QtWarningMsg,
                                 qPrintable(u"IDEApplication::loadPixmap: cannot find pixmap (%1.png)"_s.arg(
                                     QLatin1StringView(picture))));
        QTest::ignoreMessage(QtWarningMsg, qPrintable(u"TextFormats::loadFromFile: Cannot open config file (%1)"_s.arg(
                                               m_installation->path(u"config/textformats.xml"_s))));
        for (int i = 0; i < 4; ++i)
            expect("MainWindow::getUIConfigDocument");
        QCOMPARE(run(*m_installation, {"varnel"}).exitCode, 0);
    }
};

int main(int argc, char **argv)
{
    EntryTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_entry.moc"
