#include "../objectmodel/pythonscope.h"
#include "dockwindow.h"
#include "qtwrapper.h"
#include "timer.h"
#include "windowfixture.h"
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
using namespace Qt::StringLiterals;

namespace {
constexpr char Panel[] = R"(<ui version="4.0"><widget class="QWidget" name="panel">
<property name="windowTitle"><string>Panel</string></property>
<layout class="QVBoxLayout" name="layout">
<item><widget class="QLineEdit" name="edit"/></item>
<item><widget class="QPushButton" name="button"><property name="text"><string>Press</string></property></widget></item>
<item><widget class="QCheckBox" name="check"/></item>
<item><widget class="QComboBox" name="combo"><item><property name="text"><string>One</string></property></item>
<item><property name="text"><string>Two</string></property></item></widget></item>
<item><widget class="QLabel" name="label"/></item>
</layout></widget></ui>)";
} // namespace

/// Windows, widgets and timers of scripts, in the window of the program.
class ScriptWidgetsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WindowFixture> m_fixture;
    std::unique_ptr<PythonScope> m_python;

    QString run(const QByteArray &script) { return m_python->run(script); }
    QString value(const QByteArray &expression) { return m_python->value(expression); }
    QString error(const QByteArray &script) { return m_python->error(script); }

    [[nodiscard]] MainWindow &window() const { return *m_fixture->window; }
    [[nodiscard]] DockWindow *dock(const QString &name) const { return window().findChild<DockWindow *>(name); }
    /// The edge and the visibility of a dock window.
    [[nodiscard]] std::pair<Qt::DockWidgetArea, bool> place(const QString &name) const
    {
        return {window().dockWidgetArea(dock(name)), !dock(name)->isHidden()};
    }
    /// Starts the program, with @p startup as start-up script.
    void restart(const QByteArray &startup = {})
    {
        if (!startup.isEmpty())
            m_fixture->installation.write(u"python/startup.py"_s, startup);
        m_fixture->restart();
        offer();
    }
    void offer()
    {
        m_python = std::make_unique<PythonScope>();
        QCOMPARE(run("from varnel import app\ncalls = []"), QString());
    }
    static void processDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_fixture = std::make_unique<WindowFixture>();
        m_fixture->installation.write(u"python/panel.ui"_s, Panel);
        offer();
    }

    void cleanup()
    {
        m_python.reset();
        m_fixture.reset();
        QCOMPARE(QtWrapper::count(), 0);
    }

    // Loading and creating

    void windowIsLoadedFromThePythonDirectory()
    {
        QCOMPARE(run("w = app.loadUI('panel.ui')\nprint(w.windowTitle, w.visible, [c.objectName for c in w.children if "
                     "c.objectName])"),
                 u"Panel 0 ['layout', 'edit', 'button', 'check', 'combo', 'label']\n"_s);
        QCOMPARE(value("app.loadUI('sub/../panel.ui').windowTitle"), u"'Panel'"_s);
        const QByteArray path = m_fixture->write(u"other.ui"_s, QByteArray(Panel).replace("Panel", "Other")).toUtf8();
        QCOMPARE(value("app.loadUI('" + path + "').windowTitle"), u"'Other'"_s);
    }

    void loadedDialogBelongsToTheMainWindow()
    {
        const QString path = m_fixture->write(
            u"form.ui"_s, "<ui version=\"4.0\"><class>form</class><widget class=\"QDialog\" name=\"form\"/></ui>");
        run("w = app.loadUI('" + path.toUtf8() + "')\nw.open()");
        const auto *form = window().findChild<QDialog *>(u"form"_s);
        QVERIFY(form && form->isWindow() && form->isVisible());
    }

    void fileThatIsNotLoadedIsAnOSError()
    {
        const auto failure = u"OSError: Failed to load UI from file "_s;
        QCOMPARE(error("app.loadUI('missing.ui')"), failure + m_fixture->installation.path(u"python/missing.ui"_s));
        QCOMPARE(error("app.loadUI('../nothing/a.ui')"), failure + m_fixture->installation.path(u"nothing/a.ui"_s));
        QCOMPARE(error("app.loadUI('/dev/null/%1')"), failure + u"/dev/null/%1"_s);
        QVERIFY(error("app.loadUI(5)").startsWith(u"TypeError: "_s));
        QVERIFY(error("app.loadUI()").startsWith(u"TypeError: "_s));
        QCOMPARE(QtWrapper::count(), 0);
    }

    void widgetsAreCreatedByClass()
    {
        QCOMPARE(run("w = app.createUI('QPushButton', 'press')\nv = app.createUI('QLabel')\n"
                     "print(w.objectName, repr(v).split()[0], repr(v).split()[2], w.visible)"),
                 u"press <QLabel 'unnamed' 0\n"_s);
        run("w.text = 'Press'; w.onClicked = lambda sender: calls.append(sender.text); w.show()");
        const QWidgetList widgets = QApplication::topLevelWidgets();
        const auto button = std::ranges::find(widgets, u"press"_s, &QObject::objectName);
        QVERIFY(button != widgets.end());
        QTest::mouseClick(*button, Qt::LeftButton);
        QCOMPARE(value("calls"), u"['Press']"_s);
    }

    void unknownClassIsATypeError()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"NoSuchClass"_s));
        QCOMPARE(error("app.createUI('NoSuchClass', 'name')"), u"TypeError: Failed to create widget NoSuchClass"_s);
        QVERIFY(error("app.createUI()").startsWith(u"TypeError: "_s));
        QCOMPARE(QtWrapper::count(), 0);
    }

    void dialogRunsWithExecute()
    {
        QCOMPARE(run("d = app.createUI('QDialog', 'd')\n"
                     "t = app.createTimer()\n"
                     "t.interval = 0\n"
                     "t.onTimeout = lambda sender: d.accept()\n"
                     "t.start(1)\n"
                     "print(d.execute())"),
                 u"1\n"_s);
    }

    // Clicks

    void clicksReachTheHandlersOfAPanel()
    {
        run("w = app.loadUI('panel.ui')\n"
            "def pressed(sender):\n"
            "  w.label.text = w.edit.text.upper()\n"
            "  calls.append(sender is w.button)\n"
            "w.button.onClicked = pressed\n"
            "w.check.onToggled = lambda sender, on: calls.append(on)\n"
            "w.combo.onCurrentIndexChanged = lambda sender, index: calls.append(index)\n"
            "w.edit.onTextChanged = lambda sender, text: calls.append(text)\n"
            "app.dockUI(w)");
        QTest::keyClicks(dock(u"pythonPanel"_s)->findChild<QLineEdit *>(u"edit"_s), u"ab"_s);
        QTest::mouseClick(dock(u"pythonPanel"_s)->findChild<QPushButton *>(u"button"_s), Qt::LeftButton);
        QTest::keyClick(dock(u"pythonPanel"_s)->findChild<QComboBox *>(u"combo"_s), Qt::Key_Down);
        QTest::keyClick(dock(u"pythonPanel"_s)->findChild<QWidget *>(u"check"_s), Qt::Key_Space);
        QCOMPARE(value("calls"), u"['a', 'ab', True, 1, 1]"_s);
        QCOMPARE(dock(u"pythonPanel"_s)->findChild<QLabel *>(u"label"_s)->text(), u"AB"_s);
    }

    void errorInAClickIsPrintedAndThePanelGoesOn()
    {
        run("w = app.createUI('QPushButton', 'b')\nw.onClicked = lambda sender: sender.nosuch\napp.dockUI(w)");
        auto *button = dock(u"python"_s)->findChild<QPushButton *>();
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(m_python->shown().endsWith(u"AttributeError: Unknown property 'nosuch'\n"_s));
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(m_python->shown().endsWith(u"AttributeError: Unknown property 'nosuch'\n"_s));
    }

    void clickMayCloseTheProgram()
    {
        run("w = app.loadUI('panel.ui')\napp.dockUI(w)\n"
            "win = app.createUI('QPushButton', 'closer')\n"
            "def close(sender): end.close(); calls.append(repr(sender))\n"
            "win.onClicked = close\nwin.show()");
        m_python->set("end", QtWrapper::get(&window(), false)->pythonObject());
        const QWidgetList widgets = QApplication::topLevelWidgets();
        const QPointer<QWidget> button = *std::ranges::find(widgets, u"closer"_s, &QObject::objectName);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(value("calls"), u"['<Destroyed object>']"_s);
        QCOMPARE(QtWrapper::count(), 0);
        processDeletions(); // of the widgets
        processDeletions(); // of the dock window
        QVERIFY(!button);
        QVERIFY(!dock(u"pythonPanel"_s));
    }

    // Docks

    void positionIsAnEdge_data()
    {
        QTest::addColumn<QByteArray>("position");
        QTest::addColumn<int>("area");
        QTest::newRow("top") << QByteArray(", 0") << int(Qt::TopDockWidgetArea);
        QTest::newRow("right") << QByteArray(", 1") << int(Qt::RightDockWidgetArea);
        QTest::newRow("bottom") << QByteArray(", 2") << int(Qt::BottomDockWidgetArea);
        QTest::newRow("left") << QByteArray(", 3") << int(Qt::LeftDockWidgetArea);
        QTest::newRow("none") << QByteArray("") << int(Qt::RightDockWidgetArea);
        QTest::newRow("above") << QByteArray(", 4") << int(Qt::RightDockWidgetArea);
        QTest::newRow("below") << QByteArray(", -1") << int(Qt::RightDockWidgetArea);
        QTest::newRow("above 32 bits") << QByteArray(", 1 << 32") << int(Qt::RightDockWidgetArea);
    }

    void positionIsAnEdge()
    {
        QFETCH(QByteArray, position);
        QFETCH(int, area);
        QCOMPARE(run("app.dockUI(app.loadUI('panel.ui')" + position + ")"), QString());
        DockWindow *docked = dock(u"pythonPanel"_s);
        QVERIFY(docked);
        QCOMPARE(int(window().dockWidgetArea(docked)), area);
        QCOMPARE(docked->windowTitle(), u"Panel"_s);
        QVERIFY(docked->isVisible());
        QVERIFY(docked->widget()->isVisible());
        QVERIFY(docked->features() & QDockWidget::DockWidgetClosable);
        QCOMPARE(window().dockWindows().last(), docked); // so that its place is saved
    }

    void onlyWidgetsAreDocked()
    {
        QVERIFY(error("app.dockUI(5)").startsWith(u"TypeError: "_s));
        QVERIFY(error("app.dockUI(None)").startsWith(u"TypeError: "_s));
        QVERIFY(error("app.dockUI()").startsWith(u"TypeError: "_s));
        QCOMPARE(error("app.dockUI(app.createTimer())"), u"TypeError: Widget expected"_s);
        m_python->set("end", QtWrapper::get(&window(), false)->pythonObject());
        QCOMPARE(error("app.dockUI(end)"), u"TypeError: Widget expected"_s);
        run("w = app.createUI('QWidget')\nw.deleteLater()");
        processDeletions();
        QCOMPARE(error("app.dockUI(w)"), u"RuntimeError: Object has been destroyed"_s);
    }

    void dockIsDeletedWithItsWidget()
    {
        run("w = app.loadUI('panel.ui')\napp.dockUI(w)");
        const QPointer<DockWindow> docked = dock(u"pythonPanel"_s);
        run("w.deleteLater()");
        processDeletions(); // of the widget
        processDeletions();
        QVERIFY(!docked);
        QCOMPARE(window().dockWindows().contains(nullptr), false);
        QCOMPARE(value("w"), u"<Destroyed object>"_s);
    }

    void widgetThatIsDockedAgainIsMoved()
    {
        run("w = app.loadUI('panel.ui')\napp.dockUI(w, 1)\napp.dockUI(w, 3)");
        QCOMPARE(place(u"pythonPanel"_s), std::pair(Qt::LeftDockWidgetArea, true));
        dock(u"pythonPanel"_s)->close();
        run("app.dockUI(w, 2)");
        QCOMPARE(place(u"pythonPanel"_s), std::pair(Qt::BottomDockWidgetArea, true));
        QCOMPARE(window().findChildren<DockWindow *>(QRegularExpression(u"^python[^O]"_s)).size(), 1);
    }

    void docksOfTheSameCaptionHaveDifferentNames()
    {
        run("w = [app.loadUI('panel.ui') for i in range(3)]\nfor v in w: app.dockUI(v)");
        QVERIFY(dock(u"pythonPanel"_s));
        QVERIFY(dock(u"pythonPanel2"_s));
        QVERIFY(dock(u"pythonPanel3"_s));
    }

    /// A command of a test driver ends names at blanks, and a path of names is separated by dots.
    void namesOfDocksHaveNeitherBlanksNorDots()
    {
        run("w = app.loadUI('panel.ui')\nw.windowTitle = 'Pins of port 1.2'\napp.dockUI(w)");
        DockWindow *docked = dock(u"pythonPins-of-port-1-2"_s);
        QVERIFY(docked);
        QCOMPARE(docked->windowTitle(), u"Pins of port 1.2"_s);
    }

    void newDockKeepsThePlacesOfTheOthers()
    {
        window().addDockWidget(Qt::LeftDockWidgetArea, dock(u"outputDockWindow"_s));
        run("app.dockUI(app.loadUI('panel.ui'))");
        QCOMPARE(place(u"outputDockWindow"_s), std::pair(Qt::LeftDockWidgetArea, true));
    }

    void placeOfADockIsRestoredAtTheNextStart()
    {
        const QByteArray startup = "from varnel import app\nw = app.loadUI('panel.ui')\napp.dockUI(w)\n";
        restart(startup);
        QCOMPARE(place(u"pythonPanel"_s), std::pair(Qt::RightDockWidgetArea, true));
        window().addDockWidget(Qt::BottomDockWidgetArea, dock(u"pythonPanel"_s));
        restart();
        QCOMPARE(place(u"pythonPanel"_s), std::pair(Qt::BottomDockWidgetArea, true));
        dock(u"pythonPanel"_s)->close();
        restart();
        QCOMPARE(place(u"pythonPanel"_s), std::pair(Qt::BottomDockWidgetArea, false));
    }

    void layoutsOfEditingAndDebuggingHaveTheirOwnPlaces()
    {
        run("w = app.loadUI('panel.ui')\napp.dockUI(w, 1)");
        window().activity().setState(StateRunning);
        window().addDockWidget(Qt::BottomDockWidgetArea, dock(u"pythonPanel"_s));
        window().activity().setState(StateNoWorkspace);
        QCOMPARE(place(u"pythonPanel"_s), std::pair(Qt::RightDockWidgetArea, true));
        window().activity().setState(StateRunning);
        QCOMPARE(place(u"pythonPanel"_s), std::pair(Qt::BottomDockWidgetArea, true));
        window().activity().setState(StateNoWorkspace);
    }

    // Timers

    void timerCallsItsHandler()
    {
        QCOMPARE(value("app.createTimer('t').objectName"), u"'t'"_s);
        run("t = app.createTimer()\nprint(t.interval)\n"
            "t.interval = 0\n"
            "def tick(sender):\n"
            "  calls.append(sender is t)\n"
            "  if len(calls) == 3: t.stop()\n"
            "t.onTimeout = tick\nt.start(0)");
        QTRY_COMPARE(value("calls, t.active"), u"([True, True, True], 0)"_s);
        QCOMPARE(error("t.start()"), u"TypeError: start expects 1 arguments"_s);
    }

    void timerLivesWithoutTheScript()
    {
        run("t = app.createTimer('lonely')\nt.interval = 0\nt.onTimeout = lambda sender: calls.append(1)\n"
            "t.start(1)\ndel t");
        QTRY_COMPARE(value("calls"), u"[1]"_s);
        QVERIFY(QCoreApplication::instance()->findChild<Timer *>(u"lonely"_s));
    }

    // The example

    void panelOfTheProductBuildsAndCounts()
    {
        const QString scripts = QStringLiteral(PRODUCT_SCRIPTS) + u'/';
        m_fixture->installation.copy(scripts + u"buildpanel.ui"_s, u"python/buildpanel.ui"_s);
        m_fixture->installation.copy(scripts + u"buildpanel.py"_s, u"python/buildpanel.py"_s);
        m_fixture->installation.write(
            u"config/uiconfig.xml"_s,
            "<ui><actions><action name='buildBuild'><text>Build</text></action></actions></ui>");
        restart();
        QCOMPARE(run("import sys; sys.dont_write_bytecode = True; import buildpanel"), QString());
        const auto text = [this](const QString &name) {
            return dock(u"pythonBuilds"_s)->findChild<QLabel *>(name)->text();
        };
        auto *button = dock(u"pythonBuilds"_s)->findChild<QPushButton *>(u"buildButton"_s);
        QCOMPARE(text(u"projectLabel"_s), u"No project is open."_s);
        QVERIFY(!button->isEnabled());
        m_fixture->writeProject(u"p.vnp"_s);
        QVERIFY(window().openWorkspace(m_fixture->writeWorkspace(u"w.vnw"_s, {u"p.vnp"_s}), false));
        QTRY_COMPARE(text(u"projectLabel"_s), u"p"_s);
        window().activity().setState(StateBuilding);
        QTRY_COMPARE(text(u"countLabel"_s), u"Building..."_s);
        window().activity().setState(StateIdle);
        QTRY_COMPARE(text(u"countLabel"_s), u"Builds: 1"_s);
        m_fixture->answers->press(QMessageBox::Ok); // there is no build environment
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(text(u"countLabel"_s), u"Builds: 1"_s);
        QTest::mouseClick(dock(u"pythonBuilds"_s)->findChild<QPushButton *>(u"resetButton"_s), Qt::LeftButton);
        QCOMPARE(text(u"countLabel"_s), u"Builds: 0"_s);
        run("sys.modules.pop('buildpanel'); sys.dont_write_bytecode = False");
    }

    // The end

    void endOfTheWindowDeletesWrappersAndTheirWindows()
    {
        run("w = app.loadUI('panel.ui')\nv = app.createUI('QLabel', 'v')\nv.show()\napp.dockUI(w)\nt = "
            "app.createTimer()");
        const QWidgetList widgets = QApplication::topLevelWidgets();
        const QPointer<QWidget> label = *std::ranges::find(widgets, u"v"_s, &QObject::objectName);
        QVERIFY(window().close());
        QCOMPARE(QtWrapper::count(), 0);
        QVERIFY(!label);
        QCOMPARE(value("w, v, t"), u"(<Destroyed object>, <Destroyed object>, <Destroyed object>)"_s);
        QCOMPARE(error("w.show()"), u"RuntimeError: Object has been destroyed"_s);
    }

    void closeThatIsRefusedKeepsWrappers()
    {
        run("w = app.loadUI('panel.ui')");
        m_fixture->open(u"a.txt"_s);
        m_fixture->type(u"x"_s);
        m_fixture->answers->press(QMessageBox::Cancel);
        QVERIFY(!window().close());
        QCOMPARE(value("w.windowTitle"), u"'Panel'"_s);
    }

    // Growth and hostile use

    void thousandsOfWidgetsAndTimersLeaveNothing()
    {
        const qsizetype widgets = QApplication::allWidgets().size();
        run("def create():\n"
            "  for new in app.createUI('QWidget', 'w'), app.loadUI('panel.ui'), app.createTimer('t'):\n"
            "    try: new.objectName; new.deleteLater()\n"
            "    except RuntimeError: pass\n"); // a wrapper of an object that was at this address before
        for (int i = 0; i < 1000; ++i) {
            QCOMPARE(run("create()"), QString());
            processDeletions();
        }
        QCOMPARE(QApplication::allWidgets().size(), widgets);
        QVERIFY(QCoreApplication::instance()->findChildren<Timer *>().isEmpty());
    }

    void hundredDocksComeAndGo()
    {
        const qsizetype before = window().dockWindows().size();
        for (int i = 0; i < 100; ++i) {
            run("w = app.createUI('QLabel', 'w')\napp.dockUI(w, " + QByteArray::number(i) + " % 4)");
            if (value("w") != u"<Destroyed object>"_s)
                run("w.deleteLater()");
            processDeletions();
            processDeletions();
        }
        QCOMPARE(window().dockWindows().size(), before);
    }

    void hostileFileIsRefused()
    {
        const QByteArray deep = "<ui version='4.0'>" + QByteArray("<widget class='QWidget'>").repeated(50000);
        m_fixture->installation.write(u"python/deep.ui"_s, deep);
        QVERIFY(error("app.loadUI('deep.ui')").startsWith(u"OSError: "_s));
    }
};

int main(int argc, char **argv)
{
    ScriptWidgetsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptwidgets.moc"
