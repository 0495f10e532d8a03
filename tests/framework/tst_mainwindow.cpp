#include "activity.h"
#include "commandnames.h"
#include "ideapplication.h"
#include "installation.h"
#include "mainwindow.h"
#include "popupmenu.h"
#include "searchbox.h"
#include "toolbar.h"
#include <QComboBox>
#include <QDialog>
#include <QDomDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// Records every availability signal of a main window, from the creation of the window's first action on.
class SignalRecorder : public QObject
{
    Q_OBJECT
public:
    SignalRecorder() { qApp->installEventFilter(this); }
    explicit SignalRecorder(MainWindow *window) { listen(window); }

    QStringList recorded; ///< names, those with the value true marked by "+"

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = qobject_cast<MainWindow *>(watched);
        if (window && event->type() == QEvent::ActionAdded) {
            qApp->removeEventFilter(this);
            listen(window);
        }
        return false;
    }

private Q_SLOTS:
    void record(bool available)
    {
        const QMetaMethod method = sender()->metaObject()->method(senderSignalIndex());
        recorded.append((available ? u"+"_s : QString()) + QString::fromLatin1(method.name()));
    }

private:
    void listen(MainWindow *window)
    {
        const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("record(bool)"));
        for (const QByteArray &name : availabilitySignals()) {
            const int index = window->metaObject()->indexOfSignal(name + "(bool)");
            connect(window, window->metaObject()->method(index), this, slot);
        }
    }
};

QString contents(const QMenu *menu)
{
    QStringList items;
    const QList<QAction *> actions = menu->actions();
    for (const QAction *action : actions) {
        QString text = action->isSeparator() ? u"-"_s : action->text();
        if (action->isCheckable())
            text.prepend(action->isChecked() ? u"[x]"_s : u"[ ]"_s);
        items.append(action->isEnabled() ? text : u'(' + text + u')');
    }
    return items.join(u' ');
}

/// Declares actions @p names with their names as texts.
QByteArray actions(const QByteArrayList &names)
{
    QByteArray result;
    for (const QByteArray &name : names) {
        const QByteArray toggle = toggleCommands().contains(name) ? " toggle=\"off\"" : "";
        result += "<action name=\"" + name + "\"" + toggle + "><text>" + name + "</text></action>";
    }
    return result;
}

/// Closes every dialog that opens, and collects the texts of message boxes.
class DialogCloser : public QObject
{
    Q_OBJECT
public:
    DialogCloser()
    {
        connect(&m_timer, &QTimer::timeout, this, &DialogCloser::closeDialog);
        m_timer.start(0);
    }

    QStringList texts;

private:
    void closeDialog()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (const auto *box = qobject_cast<QMessageBox *>(dialog))
            texts.append(box->text());
        if (dialog)
            dialog->reject();
    }

    QTimer m_timer;
};
} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

public:
    explicit MainWindowTest(const Installation &installation) : m_installation(installation) {}

private:
    const Installation &m_installation;
    std::unique_ptr<MainWindow> m_window;

    QSettings *settings() const { return IDEApplication::instance()->settings(); }

    void open(const QByteArray &content)
    {
        m_installation.write(u"config/uiconfig.xml"_s, content);
        m_window = std::make_unique<MainWindow>();
    }

    void open(const QByteArrayList &names, const QByteArray &rest)
    {
        open("<ui><actions>" + actions(names) + "</actions>" + rest + "</ui>");
    }

    QAction *action(const char *name) const { return m_window->findChild<QAction *>(QString::fromLatin1(name)); }
    PopupMenu *menu(const char *name) const { return m_window->findChild<PopupMenu *>(QString::fromLatin1(name)); }

    /// The items of the menu when it opens.
    QString opened(const char *name) const
    {
        Q_EMIT menu(name)->aboutToShow();
        return contents(menu(name));
    }

    QList<QComboBox *> boxes(const char *name) const
    {
        return m_window->findChildren<QComboBox *>(QString::fromLatin1(name));
    }

private Q_SLOTS:
    void init()
    {
        // The offscreen platform prints a warning for every window. These cause any number of warnings.
        const QByteArrayList warning{"windowStartsWithADamagedUiFile", "windowStartsWithInvalidSettings",
                                     "everyCommandWithoutAWorkspaceReturnsWithoutAFailure"};
        if (!warning.contains(QByteArray(QTest::currentTestFunction())))
            QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        settings()->clear();
    }

    void cleanup() { m_window.reset(); }

    void everyCommandHasItsSlot()
    {
        QByteArrayList expected;
        for (const QByteArray &name : plainCommands())
            expected.append(name + "()");
        for (const QByteArray &name : toggleCommands())
            expected.append(name + "(bool)");
        QCOMPARE(expected.size(), 88);
        const QByteArrayList others{"openFile(QString)",
                                    "lookupSource(QString,int)",
                                    "lookupSource(QString,int,int)",
                                    "runPyFile(QString)",
                                    "openHelp(QString)",
                                    "fileSelected(QString)",
                                    "displayFileProperties(ProjectFile*)",
                                    "viewActivated(View*)",
                                    "cursorPositionChanged(int,int)",
                                    "find(QString,bool,bool,bool,bool)",
                                    "searchBoxFind(QString)",
                                    "searchBoxFindAgain(QString)"};
        QByteArrayList found;
        const QMetaObject &meta = MainWindow::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            if (method.methodType() == QMetaMethod::Slot && method.access() == QMetaMethod::Public
                && !others.contains(method.methodSignature()))
                found.append(method.methodSignature());
        }
        std::ranges::sort(expected);
        std::ranges::sort(found);
        QCOMPARE(found, expected);
    }

    void availabilitySignalsAreDeclaredInOrder()
    {
        QByteArrayList expected;
        for (const QByteArray &name : availabilitySignals())
            expected.append(name + "(bool)");
        QCOMPARE(expected.size(), 33);
        QByteArrayList found;
        const QMetaObject &meta = AvailabilityWindow::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Signal)
                found.append(meta.method(i).methodSignature());
        }
        QCOMPARE(found, expected);
    }

    void everyCommandIsBound()
    {
        open(plainCommands() + toggleCommands(), {});
        const QStringList others{u"viewZoomIn"_s,
                                 u"viewZoomOut"_s,
                                 u"viewZoomReset"_s,
                                 u"debugToggleProcessorWindow"_s,
                                 u"debugToggleCallStackWindow"_s,
                                 u"debugToggleVariablesWindow"_s,
                                 u"debugToggleBreakpointsWindow"_s,
                                 u"debugToggleLiveWindow"_s}; // not in the UI file
        int bound = 0;
        for (const QAction *action : m_window->actions())
            bound += others.contains(action->objectName()) ? 0 : 1;
        QCOMPARE(bound, 88);
    }

    void everyCommandWithoutAWorkspaceReturnsWithoutAFailure()
    {
        open(plainCommands() + toggleCommands(), {});
        DialogCloser closer;
        const QList<QAction *> all = m_window->actions();
        for (QAction *command : all) {
            command->setEnabled(true);
            command->trigger();
        }
        QVERIFY(closer.texts.contains(u"The project cannot be built.\n\nNo build environment is available."_s));
        QVERIFY(
            closer.texts.contains(u"Cannot edit breakpoints.\n\nOpen a project that supports breakpoints first."_s));
    }

    void commandsThatAreNotImplementedOnlyWarn_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char *name :
             {"editComment", "editUncomment", "editUnindent", "projectGenerateMakefile", "toolsMacroNew"})
            QTest::newRow(name) << QByteArray(name);
    }

    void commandsThatAreNotImplementedOnlyWarn()
    {
        QFETCH(QByteArray, name);
        open({name}, {});
        QTest::ignoreMessage(QtWarningMsg, "Slot not implemented: " + name);
        action(name)->trigger();
    }

#ifdef PRODUCT_UI_FILE
    void uiFileOfTheProductNamesOnlyExistingMembers()
    {
        QFile file(QStringLiteral(PRODUCT_UI_FILE));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QDomDocument document;
        QVERIFY(document.setContent(&file));
        const QDomNodeList elements =
            document.documentElement().namedItem(u"actions"_s).toElement().elementsByTagName(u"action"_s);
        QVERIFY(elements.size() > 0);
        for (int i = 0; i < elements.size(); ++i) {
            const QDomElement element = elements.at(i).toElement();
            const QByteArray slot =
                element.attribute(u"name"_s).toLatin1() + (element.hasAttribute(u"toggle"_s) ? "(bool)" : "()");
            const bool isConnectedElsewhere = element.attribute(u"slot"_s) == u"none"_s;
            QCOMPARE(isConnectedElsewhere, commandsWithoutSlot().contains(element.attribute(u"name"_s).toLatin1()));
            QVERIFY2(isConnectedElsewhere || MainWindow::staticMetaObject.indexOfSlot(slot) >= 0, slot);
            const QDomElement enable = element.firstChildElement(u"enable"_s);
            const QByteArray signal = enable.attribute(u"signal"_s).toLatin1() + "(bool)";
            QVERIFY2(enable.isNull() || MainWindow::staticMetaObject.indexOfSignal(signal) >= 0, signal);
        }
    }

    void theProductsFileBuildsWithoutAWarning()
    {
        QFile file(QStringLiteral(PRODUCT_UI_FILE));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll();
        QDomDocument document;
        QVERIFY(document.setContent(content));
        const QDomNodeList elements = document.elementsByTagName(u"action"_s);
        for (int i = 0; i < elements.size(); ++i)
            elements.at(i).toElement().removeAttribute(u"icon"_s); // this installation has no pictures
        open(document.toByteArray());
        m_window->show();
        QVERIFY(!m_window->menuBar()->actions().isEmpty());
        const QList<PopupMenu *> menus = m_window->findChildren<PopupMenu *>();
        for (PopupMenu *each : menus)
            Q_EMIT each->aboutToShow();
    }
#endif

    void availabilitySignalsAreEmittedInOrderAtTheStart()
    {
        SignalRecorder recorder;
        open({"fileNew"}, {});
        recorder.recorded.removeAll(u"compileAvailable"_s); // emitted for the action whose text is changed
        QCOMPARE(recorder.recorded.join(u' '),
                 u"viewHasFocus textViewHasFocus textNavigationAvailable undoAvailable redoAvailable cutAvailable "
                 "copyAvailable pasteAvailable selectAllAvailable backAvailable forwardAvailable previousAvailable "
                 "nextAvailable "
                 "saveAvailable closePaneAvailable setNextAvailable runToCursorAvailable +projectOpenAvailable "
                 "projectRepopulateAvailable "
                 "workspaceEditingAvailable projectEditingAvailable "
                 "buildAvailable projectBuilding runAvailable stopAvailable pauseAvailable startAvailable "
                 "restartAvailable wakeupAvailable showNextAvailable attachAvailable "
                 "batchBuildAvailable setNextAvailable runToCursorAvailable"_s);
        QCOMPARE(m_window->activity().state(), StateNoWorkspace);
    }

    void theSignalsReachTheActions()
    {
        QByteArray elements;
        const QByteArrayList names = availabilitySignals();
        for (int i = 0; i < names.size(); ++i)
            elements += "<action name=\"" + plainCommands().at(i) + "\"><enable signal=\"" + names[i] + "\"/></action>";
        open("<ui><actions>" + elements + "</actions></ui>");
        for (int i = 0; i < names.size(); ++i)
            QCOMPARE(action(plainCommands().at(i))->isEnabled(), names[i] == "projectOpenAvailable");
    }

    void changedStateEmitsTheSignalsInOrder()
    {
        open({}, {});
        SignalRecorder recorder(m_window.get());
        m_window->activity().setState(StateIdle);
        QCOMPARE(recorder.recorded.join(u' '),
                 u"+projectOpenAvailable projectRepopulateAvailable workspaceEditingAvailable projectEditingAvailable "
                 "buildAvailable projectBuilding runAvailable stopAvailable pauseAvailable startAvailable "
                 "restartAvailable wakeupAvailable showNextAvailable attachAvailable "
                 "batchBuildAvailable setNextAvailable runToCursorAvailable compileAvailable"_s);
        recorder.recorded.clear();
        m_window->activity().setState(StateBuilding);
        QCOMPARE(recorder.recorded.first(), u"projectOpenAvailable"_s);
    }

    void sameStateAgainEmitsCompileAvailableOnly()
    {
        open({}, {});
        m_window->activity().setState(StatePaused);
        SignalRecorder recorder(m_window.get());
        m_window->activity().setState(StatePaused);
        QCOMPARE(recorder.recorded, QStringList{u"compileAvailable"_s});
    }

    void theCaptionIsTheTitleAndTheState_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("caption");
        QTest::newRow("no workspace") << 0 << u"Board Studio"_s;
        QTest::newRow("idle") << 1 << u"Board Studio"_s;
        QTest::newRow("building") << 2 << u"Board Studio"_s;
        QTest::newRow("initialising") << 3 << u"Board Studio"_s;
        QTest::newRow("running") << 4 << u"Board Studio [running]"_s;
        QTest::newRow("paused") << 5 << u"Board Studio [paused]"_s;
        QTest::newRow("finished") << 6 << u"Board Studio [finished]"_s;
        QTest::newRow("unknown") << 7 << u"Board Studio [unknown]"_s;
    }

    void theCaptionIsTheTitleAndTheState()
    {
        QFETCH(int, state);
        open("<ui title=\"Board Studio\"/>");
        QCOMPARE(m_window->windowTitle(), u"Board Studio"_s);
        m_window->activity().setState(ActivityState(state));
        QTEST(m_window->windowTitle(), "caption");
        QCOMPARE(int(m_window->activity().state()), state);
        m_window->activity().setState(StateNoWorkspace);
        QCOMPARE(m_window->windowTitle(), u"Board Studio"_s);
    }

    void withoutATitleTheCaptionIsVarnel()
    {
        open("<ui/>");
        QCOMPARE(m_window->windowTitle(), u"Varnel"_s);
    }

    void theWindowHasItsIcon()
    {
        open("<ui/>");
        QCOMPARE(m_window->windowIcon().pixmap(QSize(8, 8), 1.0).toImage().pixelColor(4, 4), QColor(Qt::blue));
    }

    void theStatusBarHoldsFourHiddenLabelsThenThatOfTheCursor()
    {
        open("<ui/>");
        m_window->show();
        const QList<QLabel *> labels = m_window->statusBar()->findChildren<QLabel *>();
        QCOMPARE(labels.size(), 5);
        for (int i = 0; i < 4; ++i)
            QVERIFY(labels[i]->isHidden());
        QVERIFY(labels[4]->isVisible());
    }

    void statusLabelsAreHiddenAtTheEndOfTheSession()
    {
        open("<ui/>");
        m_window->show();
        QLabel *label = m_window->statusBar()->findChildren<QLabel *>().first();
        m_window->activity().setState(StateRunning);
        label->show();
        m_window->activity().setState(StatePaused);
        QVERIFY(!label->isHidden());
        m_window->activity().setState(StateIdle);
        QVERIFY(label->isHidden());
        label->show();
        m_window->activity().setState(StateIdle);
        QVERIFY(!label->isHidden());
        m_window->activity().setState(StateBuilding);
        QVERIFY(label->isHidden());
    }

    void theSearchBoxFollowsEditFind()
    {
        open({"editFind", "fileNew"},
             R"(<toolbars><toolbar name="a"><action name="editFind"/><action name="fileNew"/></toolbar></toolbars>)");
        const QList<QComboBox *> found = boxes("searchBox");
        QCOMPARE(found.size(), 1);
        QComboBox *box = found.first();
        const auto *bar = qobject_cast<const ToolBar *>(box->parentWidget());
        QVERIFY(bar);
        QCOMPARE(bar->widgetForAction(bar->actions().at(1)), box);
        QVERIFY(box->isEditable());
        QVERIFY(!box->duplicatesEnabled());
        QCOMPARE(box->maxCount(), 10);
        QCOMPARE(box->minimumWidth(), 150);
        QVERIFY(!box->isEnabled());
        Q_EMIT m_window->textNavigationAvailable(true);
        QVERIFY(box->isEnabled());
        auto *search = qobject_cast<SearchBox *>(box);
        QVERIFY(disconnect(search, &SearchBox::find, m_window.get(), &MainWindow::searchBoxFind));
        QVERIFY(disconnect(search, &SearchBox::findAgain, m_window.get(), &MainWindow::searchBoxFindAgain));
    }

    void theSearchBoxFindsAndKeepsTheLastTenTexts()
    {
        open({"editFind"}, R"(<toolbars><toolbar name="a"><action name="editFind"/></toolbar></toolbars>)");
        QComboBox *box = boxes("searchBox").first();
        m_window->show();
        Q_EMIT m_window->textNavigationAvailable(true);
        QSignalSpy found(qobject_cast<SearchBox *>(box), &SearchBox::findAgain);
        for (int i = 0; i < 12; ++i) {
            box->setEditText(u"text%1"_s.arg(i));
            QTest::keyClick(box, Qt::Key_Return);
            QCOMPARE(found.size(), i + 1);
            QCOMPARE(found.last().first().toString(), u"text%1"_s.arg(i));
            QCOMPARE(box->currentText(), u"text%1"_s.arg(i));
        }
        QCOMPARE(box->count(), 10);
        QCOMPARE(box->itemText(0), u"text2"_s);
        box->setEditText({});
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(found.size(), 12);
        QCOMPARE(box->itemText(0), u"text2"_s);
        QCOMPARE(box->lineEdit()->placeholderText(), u"Find"_s);
        const QSignalSpy typed(qobject_cast<SearchBox *>(box), &SearchBox::find);
        QTest::keyClicks(box, u"te"_s);
        QCOMPARE(typed.size(), 2);
        QCOMPARE(typed.last().first().toString(), u"te"_s);
        QCOMPARE(box->currentText(), u"te"_s);
        QCOMPARE(box->itemText(0), u"text2"_s);
        QTest::keyClick(box, Qt::Key_Backspace);
        QTest::keyClick(box, Qt::Key_Backspace);
        QCOMPARE(box->currentText(), u""_s);
        QCOMPARE(typed.size(), 3); // nothing is searched for after the last one
        QCOMPARE(typed.last().first().toString(), u"t"_s);
    }

    void upKeyInTheSearchBoxShowsThePreviousText()
    {
        open({"editFind"}, R"(<toolbars><toolbar name="a"><action name="editFind"/></toolbar></toolbars>)");
        QComboBox *box = boxes("searchBox").first();
        m_window->show();
        Q_EMIT m_window->textNavigationAvailable(true);
        for (const QString &text : {u"one"_s, u"two"_s, u"three"_s, u"one"_s}) {
            box->setEditText(text);
            QTest::keyClick(box, Qt::Key_Return);
        }
        const QSignalSpy found(qobject_cast<SearchBox *>(box), &SearchBox::findAgain);
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(box->currentText(), u"three"_s);
        QCOMPARE(found.value(0).value(0).toString(), u"three"_s);
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(box->currentText(), u"two"_s);
    }

    void returnInTheSearchBoxFindsAKnownTextEachTime_data()
    {
        QTest::addColumn<int>("kept");
        QTest::addColumn<QString>("text");
        QTest::newRow("few texts, the last one") << 3 << u"text2"_s;
        QTest::newRow("few texts, an older one") << 3 << u"text0"_s;
        QTest::newRow("full box, the last one") << 10 << u"text9"_s;
        QTest::newRow("full box, an older one") << 10 << u"text4"_s;
        QTest::newRow("full box, other case") << 10 << u"TEXT4"_s;
    }

    void returnInTheSearchBoxFindsAKnownTextEachTime()
    {
        QFETCH(const int, kept);
        QFETCH(const QString, text);
        open({"editFind"}, R"(<toolbars><toolbar name="a"><action name="editFind"/></toolbar></toolbars>)");
        QComboBox *box = boxes("searchBox").first();
        m_window->show();
        Q_EMIT m_window->textNavigationAvailable(true);
        for (int i = 0; i < kept; ++i) {
            box->setEditText(u"text%1"_s.arg(i));
            QTest::keyClick(box, Qt::Key_Return);
        }
        box->setEditText(text);
        const QSignalSpy changed(qobject_cast<SearchBox *>(box), &SearchBox::find);
        const QSignalSpy found(qobject_cast<SearchBox *>(box), &SearchBox::findAgain);
        for (int presses = 1; presses <= 3; ++presses) {
            QTest::keyClick(box, Qt::Key_Return);
            QCOMPARE(found.size(), presses);
            QCOMPARE(found.last().first().toString(), text);
            QCOMPARE(box->currentText(), text);
        }
        QCOMPARE(changed.size(), 0); // that would begin at the start of the file again
        QCOMPARE(box->count(), kept);
        QCOMPARE(box->itemText(kept - 1), text); // the newest
    }

    void leavingTheSearchBoxFindsNothing()
    {
        open({"editFind"}, R"(<toolbars><toolbar name="a"><action name="editFind"/></toolbar></toolbars>)");
        QComboBox *box = boxes("searchBox").first();
        m_window->show();
        Q_EMIT m_window->textNavigationAvailable(true);
        for (const QString &text : {u"one"_s, u"two"_s}) {
            box->setEditText(text);
            QTest::keyClick(box, Qt::Key_Return);
        }
        const QSignalSpy found(qobject_cast<SearchBox *>(box), &SearchBox::findAgain);
        box->setEditText(u"one"_s);
        QFocusEvent out(QEvent::FocusOut);
        QCoreApplication::sendEvent(box, &out);
        QCOMPARE(found.size(), 0);
    }

    void theProjectDropdownFollowsDebugStepInto()
    {
        open({"debugStepInto"}, R"(<toolbars><toolbar name="a"><action name="debugStepInto"/></toolbar></toolbars>)");
        m_window->show();
        const QList<QComboBox *> found = boxes("projectDropdown");
        QCOMPARE(found.size(), 1);
        QComboBox *box = found.first();
        QVERIFY(!box->isEditable());
        QCOMPARE(box->minimumWidth(), 100);
        QCOMPARE(box->toolTip(), u"Current project"_s);
        QVERIFY(box->isHidden());
    }

    void theConfigurationDropdownFollowsBuildStopBuild()
    {
        open({"buildStopBuild"}, R"(<toolbars><toolbar name="a"><action name="buildStopBuild"/></toolbar></toolbars>)");
        m_window->show();
        const QList<QComboBox *> found = boxes("configurationDropdown");
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first()->toolTip(), u"Current configuration"_s);
        QVERIFY(found.first()->isHidden()); // no workspace is open
    }

    void eachActionInAToolBarHasItsWidget_data()
    {
        QTest::addColumn<QByteArray>("toolBars");
        QTest::addColumn<int>("searchBoxes");
        QTest::addColumn<int>("dropdowns");
        QTest::newRow("never") << QByteArray(R"(<toolbar name="a"><action name="fileNew"/></toolbar>)") << 0 << 0;
        QTest::newRow("twice in one") << QByteArray(
            R"(<toolbar name="a"><action name="editFind"/><action name="editFind"/></toolbar>)")
                                      << 2 << 0;
        QTest::newRow("in two") << QByteArray(
            R"(<toolbar name="a"><action name="editFind"/><action name="debugStepInto"/></toolbar>
            <toolbar name="b"><action name="debugStepInto"/><action name="editFind"/></toolbar>)")
                                << 2 << 2;
        QTest::newRow("only in a menu") << QByteArray() << 0 << 0;
    }

    void eachActionInAToolBarHasItsWidget()
    {
        QFETCH(QByteArray, toolBars);
        open({"editFind", "debugStepInto", "fileNew"},
             "<toolbars>" + toolBars + R"(</toolbars><menus><menu name="m" displayname="Menu"><action name="editFind"/>
             <action name="debugStepInto"/></menu></menus>)");
        QTEST(int(boxes("searchBox").size()), "searchBoxes");
        QTEST(int(boxes("projectDropdown").size()), "dropdowns");
    }

    void commandsThatNeedAPluginAreInvisibleAtFirst()
    {
        open({"debugTogglePeripheralWindow", "projectRepopulate", "debugToggleMemoryWindow"}, {});
        QVERIFY(!action("debugTogglePeripheralWindow")->isVisible());
        QVERIFY(!action("projectRepopulate")->isVisible());
        QVERIFY(action("debugToggleMemoryWindow")->isVisible());
    }

    void theCompileCommandNamesItsFile_data()
    {
        QTest::addColumn<QByteArray>("menuText");
        QTest::addColumn<QString>("expected");
        QTest::newRow("with a place for it") << QByteArray("Com&amp;pile %1") << u"Com&pile file"_s;
        QTest::newRow("without") << QByteArray("Compile") << u"Compile"_s;
        QTest::newRow("with two") << QByteArray("%1 to %1") << u"file to file"_s;
        QTest::newRow("with another") << QByteArray("Compile %2") << u"Compile %2"_s;
    }

    void theCompileCommandNamesItsFile()
    {
        QFETCH(QByteArray, menuText);
        open(R"(<ui><actions><action name="buildCompileFile"><text>Compile</text><menutext>)" + menuText
             + R"(</menutext><enable signal="compileAvailable"/></action></actions></ui>)");
        QTEST(action("buildCompileFile")->text(), "expected");
        QVERIFY(!action("buildCompileFile")->isEnabled());
        m_window->activity().setState(StateIdle);
        QTEST(action("buildCompileFile")->text(), "expected");
    }

    void windowsCannotBeArrangedWhileThereAreNone()
    {
        open({"windowCascade", "windowTile", "windowNew"},
             R"(<menus><menu name="windowMenu" displayname="W"/></menus>)");
        QVERIFY(!action("windowCascade")->isEnabled());
        QVERIFY(!action("windowTile")->isEnabled());
        QVERIFY(action("windowNew")->isEnabled());
    }

    void dockWindowsBeginWithTheToolBarsOfTheFile()
    {
        open({}, R"(<toolbars><toolbar name="b" displayname="B"/><toolbar name="a" displayname="A"/></toolbars>)");
        const QList<QWidget *> windows = m_window->dockWindows();
        QVERIFY(windows.size() >= 2);
        QCOMPARE(windows[0]->objectName(), u"b"_s);
        QCOMPARE(windows[1]->objectName(), u"a"_s);
    }

    void theToolBarsMenuShowsAndHidesThem()
    {
        open({}, R"(<menus><menu name="viewToolbarsMenu" displayname="Bars"/></menus>
            <toolbars><toolbar name="a" displayname="File"/><toolbar name="b" displayname="Build"/></toolbars>)");
        m_window->show();
        QCOMPARE(contents(menu("viewToolbarsMenu")), u"[ ]File [ ]Build"_s);
        QCOMPARE(opened("viewToolbarsMenu"), u"[x]File [x]Build"_s);
        menu("viewToolbarsMenu")->item(1)->trigger();
        QVERIFY(!m_window->dockWindows()[1]->isVisible());
        QCOMPARE(opened("viewToolbarsMenu"), u"[x]File [ ]Build"_s);
        menu("viewToolbarsMenu")->item(1)->trigger();
        QCOMPARE(opened("viewToolbarsMenu"), u"[x]File [x]Build"_s);
    }

    void menusAreRefreshedOnlyWhenTheyOpen()
    {
        settings()->setValue(u"RecentFiles/File0"_s, u"/a/b.c"_s);
        settings()->setValue(u"RecentFiles/Workspace0"_s, u"/a/b.vnw"_s);
        open({}, R"(<menus><menu name="fileRecentFilesMenu"/><menu name="projectRecentWorkspacesMenu"/>
            <menu name="viewToolbarsMenu"/></menus><toolbars><toolbar name="a" displayname="File"/></toolbars>)");
        m_window->show();
        QCOMPARE(contents(menu("fileRecentFilesMenu")), QString());
        QCOMPARE(opened("fileRecentFilesMenu"), u"&1 /a/b.c"_s);
        QCOMPARE(opened("projectRecentWorkspacesMenu"), u"&1 /a/b.vnw"_s);
        m_window->activity().setState(StateRunning);
        QCOMPARE(contents(menu("projectRecentWorkspacesMenu")), u"&1 /a/b.vnw"_s);
        QCOMPARE(opened("projectRecentWorkspacesMenu"), u"(&1 /a/b.vnw)"_s);
        QCOMPARE(opened("viewToolbarsMenu"), u"[x]File"_s);
        m_window->dockWindows().first()->hide();
        QCOMPARE(contents(menu("viewToolbarsMenu")), u"[x]File"_s);
    }

    void recentWorkspacesAreEnabledInSomeStates_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("possible");
        for (int state = 0; state <= 7; ++state)
            QTest::addRow("%d", state) << state << (state <= 1);
    }

    void recentWorkspacesAreEnabledInSomeStates()
    {
        QFETCH(int, state);
        QFETCH(bool, possible);
        settings()->setValue(u"RecentFiles/Workspace0"_s, u"/a.vnw"_s);
        settings()->setValue(u"RecentFiles/File0"_s, u"/a.c"_s);
        open({}, R"(<menus><menu name="projectRecentWorkspacesMenu"/><menu name="fileRecentFilesMenu"/></menus>)");
        m_window->activity().setState(ActivityState(state));
        QCOMPARE(opened("projectRecentWorkspacesMenu"), possible ? u"&1 /a.vnw"_s : u"(&1 /a.vnw)"_s);
        QCOMPARE(opened("fileRecentFilesMenu"), u"&1 /a.c"_s);
    }

    void menusWithoutAdditionsHaveTheItemsOfTheFile_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char *name : {"windowMenu", "toolsMenu", "buildMenu", "buildConfigurationsMenu", "toolMacroMenu"})
            QTest::newRow(name) << QByteArray(name);
    }

    void menusWithoutAdditionsHaveTheItemsOfTheFile()
    {
        QFETCH(QByteArray, name);
        open({"fileOpen"},
             "<menus><menu name='" + name + "'><separator/><action name='fileOpen'/><separator/></menu></menus>");
        for (int i = 0; i < 2; ++i)
            QCOMPARE(opened(name), u"- fileOpen -"_s);
    }

    void theMenuOfDebugWindowsEndsWithThoseOfTheHost()
    {
        open({"fileOpen"}, R"(<menus><menu name="debugWindowsMenu"><action name="fileOpen"/></menu></menus>)");
        for (int i = 0; i < 2; ++i)
            QCOMPARE(opened("debugWindowsMenu"),
                     u"fileOpen [ ]&Call Stack [ ]&Variables [ ]&Breakpoints [ ]&Processors [ ]&Live"_s);
    }

    void theDebugMenuLosesItsTrailingSeparators()
    {
        open({"debugRun", "debugViewDisassembly"},
             R"(<menus><menu name="debugMenu"><separator/><action name="debugRun"/><action name="debugViewDisassembly"/>
             <separator/><separator/></menu></menus>)");
        QCOMPARE(contents(menu("debugMenu")), u"- debugRun debugViewDisassembly - -"_s);
        QCOMPARE(opened("debugMenu"), u"- debugRun (debugViewDisassembly)"_s);
    }

    void menuWithoutANameIsNotFilled()
    {
        settings()->setValue(u"RecentFiles/File0"_s, u"/a.c"_s);
        open({}, R"(<menus><menu displayname="Recent"/></menus>)");
        auto *unnamed = m_window->findChild<PopupMenu *>();
        Q_EMIT unnamed->aboutToShow();
        QVERIFY(unnamed->isEmpty());
    }

    void aboutBoxComesFromTheBrandingLibrary()
    {
        open({"helpAbout"}, {});
        action("helpAbout")->trigger(); // no branding library yet
        m_installation.copy(QStringLiteral(TESTBRANDING), u"bin/libbranding.so"_s);
        QString caption;
        QTimer::singleShot(0, this, [&caption] {
            auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(box);
            caption = box->windowTitle();
            box->reject();
        });
        action("helpAbout")->trigger();
        QCOMPARE(caption, u"|2.9 (Multi-processor support enabled)"_s);
        QVERIFY(!QApplication::activeModalWidget());
    }

    void closingSavesThePlace()
    {
        open("<ui/>");
        m_window->setGeometry(40, 50, 600, 400);
        m_window->show();
        QVERIFY(m_window->close());
        QCOMPARE(settings()->value(u"Geometry/MainWindowX"_s), QVariant(40));
        QCOMPARE(settings()->value(u"Geometry/MainWindowY"_s), QVariant(50));
        QCOMPARE(settings()->value(u"Geometry/MainWindowWidth"_s), QVariant(600));
        QCOMPARE(settings()->value(u"Geometry/MainWindowHeight"_s), QVariant(400));
        QCOMPARE(settings()->value(u"Geometry/MainWindowMax"_s), QVariant(false));
    }

    void closingMaximisedSavesTheNormalPlace()
    {
        open({"fileExit"}, {});
        m_window->setGeometry(40, 50, 600, 400);
        m_window->show();
        m_window->showMaximized();
        QTRY_VERIFY(m_window->width() > 600);
        action("fileExit")->trigger();
        QVERIFY(!m_window->isVisible());
        QCOMPARE(settings()->value(u"Geometry/MainWindowX"_s), QVariant(40));
        QCOMPARE(settings()->value(u"Geometry/MainWindowY"_s), QVariant(50));
        QCOMPARE(settings()->value(u"Geometry/MainWindowWidth"_s), QVariant(600));
        QCOMPARE(settings()->value(u"Geometry/MainWindowHeight"_s), QVariant(400));
        QCOMPARE(settings()->value(u"Geometry/MainWindowMax"_s), QVariant(true));
    }

    void closingSavesTheRecentLists()
    {
        settings()->setValue(u"RecentFiles/File0"_s, u"/a.c"_s);
        settings()->setValue(u"RecentFiles/File1"_s, u"/b.c"_s);
        settings()->setValue(u"RecentFiles/Workspace0"_s, u"/a.vnw"_s);
        open("<ui/>");
        settings()->remove(u"RecentFiles"_s);
        m_window->close();
        QCOMPARE(settings()->value(u"RecentFiles/File0"_s), QVariant(u"/a.c"_s));
        QCOMPARE(settings()->value(u"RecentFiles/File1"_s), QVariant(u"/b.c"_s));
        QCOMPARE(settings()->value(u"RecentFiles/Workspace0"_s), QVariant(u"/a.vnw"_s));
    }

    void theFileIsReadFourTimes()
    {
        QFile::remove(m_installation.path(u"config/uiconfig.xml"_s));
        const QString path = m_installation.path(u"config/uiconfig.xml"_s);
        for (int i = 0; i < 4; ++i) {
            QTest::ignoreMessage(
                QtWarningMsg,
                qPrintable(u"MainWindow::getUIConfigDocument: Cannot open ui config file (%1)"_s.arg(path)));
            QTest::ignoreMessage(
                QtWarningMsg,
                qPrintable(u"MainWindow::getUIConfigDocument: Cannot parse ui config file (%1)"_s.arg(path)));
        }
        m_window = std::make_unique<MainWindow>();
        QCOMPARE(m_window->windowTitle(), u"Varnel"_s);
        QVERIFY(m_window->menuBar()->actions().isEmpty());
    }

    void windowStartsWithADamagedUiFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray all = "<actions>" + actions(plainCommands() + toggleCommands()) + "</actions>";
        QByteArray menus;
        for (const char *name :
             {"viewMenu", "viewToolbarsMenu", "windowMenu", "fileRecentFilesMenu", "projectRecentWorkspacesMenu",
              "buildConfigurationsMenu", "toolsMenu", "buildMenu", "debugMenu", "debugWindowsMenu", "toolMacroMenu"})
            menus += QByteArray("<menu name=\"") + name + "\"/>";
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut off") << "<ui>" + all.first(2000);
        QTest::newRow("binary") << QByteArray::fromHex("fffe00d8000000ff0a0d");
        QTest::newRow("a root only") << QByteArray("<ui/>");
        QTest::newRow("too deep") << QByteArray("<menu>").repeated(1'000'000);
        QTest::newRow("deep") << "<ui><menus>" + QByteArray("<menu>").repeated(150)
                                     + QByteArray("</menu>").repeated(150) + "</menus></ui>";
        QTest::newRow("ten megabytes") << "<ui>" + all + "<!--" + QByteArray(10'000'000, ' ') + "--></ui>";
        QTest::newRow("names of nothing") << QByteArray(
            "<ui><actions><action/><action name='()'/><action name='a(' accel='((' toggle=''><enable/></action>"
            "<action name='fileNew'><enable signal='destroyed'/></action></actions><toolbars><toolbar>"
            "<action name='x'/></toolbar></toolbars><menus><menu><action name='y'/></menu></menus></ui>");
        QTest::newRow("every menu, empty") << "<ui>" + all + "<menus>" + menus + "</menus></ui>";
        QTest::newRow("every menu twice, one inside the other")
            << "<ui>" + all + "<menus><menu name=\"debugMenu\">" + menus + "</menu>" + menus + "</menus></ui>";
        QTest::newRow("sections in the wrong place")
            << "<ui><menus><actions/><toolbars><toolbar name=\"editFind\"/></toolbars></menus>" + all + "</ui>";
        QTest::newRow("entities without end")
            << QByteArray(R"(<!DOCTYPE a [<!ENTITY a "aaaaaaaaaa"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">
            <!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;"><!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;">
            <!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;"><!ENTITY f "&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;">]>
            <ui title="&f;"><actions><action name="fileNew"><text>&f;&f;&f;&f;</text></action></actions></ui>)");
    }

    void windowStartsWithADamagedUiFile()
    {
        QFETCH(QByteArray, content);
        settings()->setValue(u"RecentFiles/File0"_s, u"/a.c"_s);
        open(content);
        m_window->show();
        const QList<PopupMenu *> menus = m_window->findChildren<PopupMenu *>();
        for (PopupMenu *each : menus)
            Q_EMIT each->aboutToShow();
        for (int state = StateUnknown; state >= StateNoWorkspace; --state)
            m_window->activity().setState(ActivityState(state));
        QVERIFY(m_window->close());
    }

    void windowStartsWithInvalidSettings()
    {
        for (int i = 0; i < 5000; ++i)
            settings()->setValue(u"RecentFiles/File%1"_s.arg(i), QString(1000, u'&'));
        settings()->setValue(u"RecentFiles/Workspace0"_s, QVariant::fromValue(QPoint(1, 2)));
        open({}, R"(<menus><menu name="fileRecentFilesMenu"/><menu name="projectRecentWorkspacesMenu"/></menus>)");
        m_window->show();
        QCOMPARE(menu("fileRecentFilesMenu")->actions().size(), 0);
        opened("fileRecentFilesMenu");
        QCOMPARE(menu("fileRecentFilesMenu")->actions().size(), 5000);
        QVERIFY(m_window->close());
    }
};

int main(int argc, char **argv)
{
    const Installation installation;
    installation.writeWindowFiles();
    IDEApplication application(argc, argv, installation.paths());
    application.setQuitOnLastWindowClosed(false);
    MainWindowTest test(installation);
    return QTest::qExec(&test, argc, argv);
}
#include "tst_mainwindow.moc"
