#include "macromanager.h"
#include "popupmenu.h"
#include "pythonscope.h"
#include "toolbar.h"
#include <QMainWindow>
#include <QMenuBar>
#include <QTest>
#include <QToolButton>
using namespace Qt::StringLiterals;

class MacroManagerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PythonScope> m_python;
    std::unique_ptr<QMainWindow> m_window;
    PopupMenu *m_menu = nullptr;
    ToolBar *m_bar = nullptr;
    std::unique_ptr<MacroManager> m_macros;
    QStringList m_icons;

    void add(const char *function, const MacroDescription &description)
    {
        m_macros->addMacro(m_python->get(function).get(), description);
    }
    [[nodiscard]] QList<QToolButton *> buttons() const
    {
        QList<QToolButton *> buttons;
        for (const QAction *action : m_bar->actions())
            buttons.append(qobject_cast<QToolButton *>(m_bar->widgetForAction(const_cast<QAction *>(action))));
        return buttons;
    }
    [[nodiscard]] QString items() const
    {
        QStringList texts;
        for (const QAction *action : m_menu->actions())
            texts.append(action->text());
        return texts.join(u' ');
    }
    [[nodiscard]] QString buttonTexts() const
    {
        QStringList texts;
        for (const QToolButton *button : buttons())
            texts.append(button->text());
        return texts.join(u' ');
    }
    static void processDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_python = std::make_unique<PythonScope>();
        m_python->run("calls = []\n"
                      "def first(): calls.append('first')\n"
                      "def second(): calls.append('second')\n"
                      "def failing(): 1 / 0\n");
        m_window = std::make_unique<QMainWindow>();
        m_menu = new PopupMenu(m_window->menuBar());
        m_menu->addAction(u"Edit"_s);
        m_window->menuBar()->addMenu(m_menu);
        m_bar = new ToolBar(m_window.get());
        m_window->addToolBar(m_bar);
        m_icons.clear();
        m_macros = std::make_unique<MacroManager>(m_menu, m_bar, [this](const QString &name) {
            m_icons.append(name);
            QPixmap pixmap(8, 8);
            pixmap.fill(Qt::red);
            return name == u"red.png"_s ? QIcon(pixmap) : QIcon();
        });
    }

    void cleanup()
    {
        m_macros.reset();
        m_window.reset();
        m_python.reset();
    }

    void macroHasAnItemAtTheEndAndAButton()
    {
        add("first", {u"x"_s, u"What it does"_s, u"Ctrl+Alt+F9"_s});
        QCOMPARE(items(), u"Edit x"_s);
        const QAction *item = m_menu->actions().last();
        QCOMPARE(item->shortcut(), QKeySequence(u"Ctrl+Alt+F9"_s));
        QCOMPARE(item->whatsThis(), u"What it does"_s);
        const QToolButton *button = buttons().first();
        QCOMPARE(button->text(), u"x"_s);
        QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextOnly);
        QCOMPARE(button->whatsThis(), u"What it does"_s);
        QVERIFY(m_icons.isEmpty());
    }

    void macroIsACommandOfTheWindow()
    {
        const auto names = [this] {
            QStringList result;
            for (const QAction *action : m_window->actions())
                result.append(action->objectName());
            return result;
        };
        add("first", {u"Run all tests"_s});
        add("second", {u"x.y"_s});
        add("second", {u"x.y"_s});
        QCOMPARE(names(), (QStringList{u"macro_Run_all_tests"_s, u"macro_x_y"_s, u"macro_x_y_2"_s}));
        m_macros->clearMacro(u"x.y"_s);
        processDeletions();
        QCOMPARE(names(), QStringList(u"macro_Run_all_tests"_s));
    }

    void buttonWithAnIconShowsNoText()
    {
        add("first", {u"x"_s, {}, {}, u"red.png"_s});
        add("first", {u"y"_s, {}, {}, u"missing.png"_s});
        QCOMPARE(m_icons, QStringList({u"red.png"_s, u"missing.png"_s}));
        QCOMPARE(buttons().first()->toolButtonStyle(), Qt::ToolButtonIconOnly);
        QVERIFY(!buttons().first()->icon().isNull());
        QVERIFY(buttons().last()->icon().isNull());
        m_bar->setIconSize(QSize(40, 40));
        QCOMPARE(buttons().first()->iconSize(), QSize(40, 40));
    }

    void itemButtonAndKeysCallTheFunction()
    {
        add("first", {u"x"_s, {}, u"Ctrl+Alt+F9"_s});
        add("second", {u"y"_s});
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        m_window->activateWindow();
        QTest::mouseClick(buttons().last(), Qt::LeftButton);
        m_menu->popup(QPoint());
        QTest::mouseClick(m_menu, Qt::LeftButton, {}, m_menu->actionGeometry(m_menu->actions().last()).center());
        QTRY_VERIFY(m_window->isActiveWindow());
        QTest::keyClick(m_window.get(), Qt::Key_F9, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(m_python->value("calls"), u"['second', 'second', 'first']"_s);
    }

    void badShortcutIsNone()
    {
        add("first", {u"x"_s, {}, u"no such key"_s});
        QVERIFY(m_menu->actions().last()->shortcut().isEmpty());
    }

    void shortcutOfAnotherActionIsTaken()
    {
        m_menu->actions().first()->setShortcut(QKeySequence(u"Ctrl+E"_s));
        QVERIFY(m_macros->isTaken(u"Ctrl+E"_s));
        QVERIFY(!m_macros->isTaken(u"Ctrl+F"_s));
        QVERIFY(!m_macros->isTaken({}));
        add("first", {u"x"_s, {}, u"Ctrl+F"_s});
        QVERIFY(m_macros->isTaken(u"Ctrl+F"_s));
        m_macros->clearMacros();
        QVERIFY(!m_macros->isTaken(u"Ctrl+F"_s)); // at once, so that the macro can be added again
    }

    void macrosAreRemovedByName()
    {
        add("first", {u"x"_s});
        add("second", {u"y"_s});
        add("second", {u"x"_s});
        m_macros->clearMacro(u"unknown"_s);
        QCOMPARE(items(), u"Edit x y x"_s);
        m_macros->clearMacro(u"x"_s);
        QCOMPARE(items(), u"Edit y"_s);
        QCOMPARE(buttonTexts(), u"y"_s);
        processDeletions();
        QCOMPARE(m_bar->findChildren<QToolButton *>(u""_s, Qt::FindDirectChildrenOnly).size(), 1);
    }

    void macrosAreRemovedByFunction()
    {
        add("first", {u"x"_s});
        add("second", {u"y"_s});
        add("first", {u"z"_s});
        m_macros->clearMacro(m_python->get("first").get());
        QCOMPARE(items(), u"Edit y"_s);
        m_macros->clearMacro(m_python->get("failing").get());
        QCOMPARE(buttonTexts(), u"y"_s);
    }

    void itemsOfOthersStayWhenAllMacrosAreRemoved()
    {
        add("first", {u"x"_s});
        add("second", {u"y"_s});
        m_macros->clearMacros();
        m_macros->clearMacros();
        QCOMPARE(items(), u"Edit"_s);
        QCOMPARE(buttonTexts(), QString());
    }

    void numberOfARemovedMacroIsNotUsedAgain()
    {
        add("first", {u"x"_s});
        const int id = m_menu->idAt(1);
        m_macros->clearMacros();
        add("second", {u"y"_s});
        QCOMPARE(m_menu->idAt(1), id + 1);
        m_macros->callMacro(id);
        m_macros->callMacro(-1);
        QCOMPARE(m_python->value("calls"), u"[]"_s);
    }

    void referencesAreReleased()
    {
        const PythonReference function = m_python->get("first");
        const Py_ssize_t before = Py_REFCNT(function.get());
        add("first", {u"x"_s});
        add("first", {u"x"_s});
        QCOMPARE(Py_REFCNT(function.get()), before + 2);
        m_macros->callMacro(m_menu->idAt(1));
        m_macros->clearMacros();
        QCOMPARE(Py_REFCNT(function.get()), before);
    }

    void errorInAMacroIsPrinted()
    {
        add("failing", {u"x"_s});
        buttons().first()->click();
        QVERIFY(m_python->shown().endsWith(u"ZeroDivisionError: division by zero\n"_s));
        m_menu->actions().last()->trigger();
        QVERIFY(m_python->shown().endsWith(u"ZeroDivisionError: division by zero\n"_s));
        m_python->run("def needing(argument): pass");
        add("needing", {u"y"_s});
        m_menu->actions().last()->trigger();
        QVERIFY(m_python->shown().contains(u"TypeError"_s));
    }

    void macroMayRemoveItself()
    {
        connect(m_menu, &QMenu::triggered, this, [this] { m_macros->clearMacros(); });
        add("first", {u"x"_s});
        QPointer<QToolButton> button = buttons().first();
        connect(button, &QToolButton::clicked, this, [this] { m_macros->clearMacros(); });
        m_window->show();
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(items(), u"Edit"_s);
        processDeletions();
        QVERIFY(!button);
        add("second", {u"y"_s});
        m_menu->actions().last()->trigger();
        QCOMPARE(items(), u"Edit"_s);
        QCOMPARE(m_python->value("calls"), u"['first', 'second']"_s);
    }

    void menuAndToolBarMayBeMissing()
    {
        MacroManager macros(nullptr, nullptr, [](const QString &) { return QIcon(); });
        macros.addMacro(m_python->get("first").get(), {u"x"_s, {}, u"Ctrl+F"_s, u"red.png"_s});
        QVERIFY(!macros.isTaken(u"Ctrl+F"_s));
        macros.clearMacro(u"x"_s);
        macros.clearMacros();
    }

    void nullFunctionIsAsserted()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"function\" in "_s));
        m_macros->addMacro(nullptr, {u"x"_s});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"function\" in "_s));
        m_macros->clearMacro(static_cast<_object *>(nullptr));
        QCOMPARE(items(), u"Edit"_s);
    }

    void tenThousandMacrosLeaveNothing()
    {
        for (int i = 0; i < 10000; ++i) {
            add("first", {u"x"_s});
            m_macros->clearMacros();
            if (i % 100 == 0)
                processDeletions();
        }
        processDeletions();
        QCOMPARE(items(), u"Edit"_s);
        QVERIFY(m_bar->actions().isEmpty());
        QVERIFY(m_menu->findChildren<QAction *>().size() <= 2);
    }
};

QTEST_MAIN(MacroManagerTest)
#include "tst_macromanager.moc"
