#include "qtrunnersocket.h"
#include "runnerfixture.h"
#include <malloc.h>
#include <QDialog>
#include <QFrame>
#include <QPointer>
#include <QRandomGenerator>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTcpSocket>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {
constexpr auto NothingBack = "";
constexpr auto NoObject = "ERROR 4 No such object\r\n";
constexpr auto Ok = "OK\r\n";

/// Opens a dialog "dialog" below the window of @p fixture whenever the action "openDialog" is triggered.
void addDialogAction(RunnerFixture &fixture)
{
    auto *action = new QAction(&fixture.window);
    action->setObjectName(u"openDialog"_s);
    QObject::connect(action, &QAction::triggered, &fixture.window, [&fixture] {
        QDialog dialog(&fixture.window);
        dialog.setObjectName(u"dialog"_s);
        dialog.exec();
    });
}

void closeAllDialogs()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (auto *dialog = qobject_cast<QDialog *>(widget))
            dialog->reject();
    }
}
} // namespace

class QtRunnerServerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RunnerFixture> m_fixture;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_fixture = std::make_unique<RunnerFixture>();
        addDialogAction(*m_fixture);
    }

    void cleanup() { m_fixture.reset(); }

    // Replies, byte for byte --------------------------------------------------

    void repliesAreFixedToTheByte_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("reply");
        const auto row = [](const QByteArray &command, const QByteArray &reply) {
            QTest::newRow((command.trimmed() + " #").constData()) << command << reply;
        };
        // words
        row("HELLO\r\n", NothingBack);
        row("\r\n", NothingBack);
        row("\n\n \n", NothingBack);
        row("getclass edit\n", NothingBack);
        row("GETCLASS edit\n", "OK QLineEdit\r\n");
        row("GETCLASS edit\r\n", "OK QLineEdit\r\n");
        row("  GETCLASS \t edit  more words\r\n", "OK QLineEdit\r\n");
        row("GETCLASS \"edit\"\n", "OK QLineEdit\r\n");
        row("GETCLASS \"my button\"\n", "OK QPushButton\r\n");
        row("GETCLASS \"my button\n", "OK QPushButton\r\n");
        row("GETCLASS my button\n", NoObject);
        row("GETCLASS\n", NoObject);
        row("GETCLASS \"\"\n", NoObject);
        row("GETCLASS unnamed\n", NoObject);
        row("GETCLASS nobody\n", NoObject);
        row("GETCLASS window.edit\n", NoObject);
        row("GETCLASS members\n", "OK MemberProbe\r\n");
        row("GETCLASS doIt\n", "OK QAction\r\n");
        row("GETCLASS runner server\n", NoObject);
        row("GETCLASS \"runner server\"\n", "OK QtRunnerServer\r\n");
        // record
        row("RECORD OFF\n", Ok);
        row("RECORD MAYBE\r\n", "ERROR 3 Bad parameter\r\n");
        row("RECORD\n", "ERROR 3 Bad parameter\r\n");
        row("RECORD on\n", "ERROR 3 Bad parameter\r\n");
        // actions
        row("DOACTION doIt\n", Ok);
        row("DOACTION nothing\n", "ERROR\r\n");
        row("DOACTION\n", "ERROR\r\n");
        row("DOACTION edit\n", "ERROR\r\n");
        row("DOACTION \"doIt\"\n", "ERROR\r\n");
        // events
        row("EVENT events 24\n", Ok);
        row("EVENT events 2 1 2 3 4 1 0\n", Ok);
        row("EVENT window 24\n", "ERROR 2 No such object\r\n");
        row("EVENT nobody 24\n", "ERROR 2 No such object\r\n");
        row("EVENT window.events 24\n", "ERROR 2 No such object\r\n");
        row("EVENT nobody press\n", "ERROR 1 Bad command syntax\r\n");
        row("EVENT events 2 1 2 3 4\n", "ERROR 1 Bad command syntax\r\n");
        row("EVENT events\n", "ERROR 1 Bad command syntax\r\n");
        row("EVENT\n", "ERROR 1 Bad command syntax\r\n");
        row("EVENT \"my button\" 24\n", "ERROR 1 Bad command syntax\r\n");
        // properties
        row("GETPROPERTIES members\n", "OK objectName count ratio text flag policy sides url fixed\r\n");
        row("GETPROPERTIES nobody\n", NoObject);
        row("GETPROPERTY members count\n", "OK 16 3\r\n");
        row("GETPROPERTY members ratio\n", "OK 19 0.5\r\n");
        row("GETPROPERTY members text\n", "OK 3 abc\r\n");
        row("GETPROPERTY members flag\n", "OK 18 true\r\n");
        row("GETPROPERTY members policy\n", "OK 16 2\r\n");
        row("GETPROPERTY members sides\n", "OK 16 34\r\n");
        row("GETPROPERTY members url\n", "OK 0 http://x/\r\n");
        row("GETPROPERTY edit text\n", "OK 3 \r\n");
        row("GETPROPERTY \"my button\" text\n", "OK 3 Press me\r\n");
        row("GETPROPERTY edit nosuch\n", "ERROR No such property");
        row("GETPROPERTY edit nosuch\nGETPROPERTY edit nosuch\n", "ERROR No such propertyERROR No such property");
        row("GETPROPERTY edit\n", "ERROR No such property");
        row("GETPROPERTY nobody text\n", NoObject);
        row("SETPROPERTY nobody text x\n", NoObject);
        row("SETPROPERTY edit nosuch x\n", "ERROR No such property");
        row("SETPROPERTY members fixed 9\nGETPROPERTY members fixed\n", "OK\r\nOK 16 7\r\n");
        // members
        row("GETSLOTS members\n", "OK deleteLater() _q_reregisterTimers(void*) reset() setValue(int) secret()\r\n");
        row("GETSLOTS nobody\n", NoObject);
        row("GETSIGNALS members\n", "OK destroyed(QObject*) destroyed() objectNameChanged(QString) done() "
                                    "progress(int,QString)\r\n");
        row("GETSIGNALS nobody\n", NoObject);
        row("CALLSLOT nobody reset()\n", NoObject);
        row("CALLSLOT members reset()\n", NothingBack);
        row("CALLSLOT members nothing()\n", NothingBack);
        row("CALLSLOT members\n", NothingBack);
        row("EMITSIGNAL nobody done()\n", NoObject);
        row("EMITSIGNAL members done()\n", NothingBack);
        row("EMITSIGNAL members nothing()\n", NothingBack);
        // garbage
        row(QByteArray::fromHex("00ff80c3280a"), NothingBack);
        row("GETCLASS \xff\xfe\n", NoObject);
        row(QByteArray("GETCLASS ed\0it\n", 15), NoObject);
        row("GETPROPERTY edit %1%2\n", "ERROR No such property");
    }

    void repliesAreFixedToTheByte()
    {
        QFETCH(QByteArray, command);
        QTEST(Driver(*m_fixture).ask(command), "reply");
    }

    void setPropertyReadsTheRestOfTheLine_data()
    {
        QTest::addColumn<QByteArray>("arguments");
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("blanks") << QByteArray("edit text   two  blanks") << QByteArray("3   two  blanks");
        QTest::newRow("trailing blank") << QByteArray("edit text x ") << QByteArray("3 x ");
        QTest::newRow("empty") << QByteArray("edit text") << QByteArray("3 ");
        QTest::newRow("carriage return") << QByteArray("edit text x\r") << QByteArray("3 x");
        QTest::newRow("place markers") << QByteArray("edit text %1 %2") << QByteArray("3 %1 %2");
        QTest::newRow("beyond ASCII") << QByteArray("edit text ä€") << QByteArray("3 ä€");
        QTest::newRow("0") << QByteArray("box checked 0") << QByteArray("18 false");
        QTest::newRow("1") << QByteArray("box checked 1") << QByteArray("18 true");
        QTest::newRow("2") << QByteArray("box checked 2") << QByteArray("18 true");
        QTest::newRow("false") << QByteArray("box checked false") << QByteArray("18 false");
        QTest::newRow("true is no int, so it is false") << QByteArray("box checked true") << QByteArray("18 false");
        QTest::newRow("int") << QByteArray("edit maxLength 5") << QByteArray("16 5");
        QTest::newRow("double") << QByteArray("members ratio 0.25") << QByteArray("19 0.25");
        QTest::newRow("no int") << QByteArray("members count many") << QByteArray("16 0");
        QTest::newRow("enumeration") << QByteArray("members policy 11") << QByteArray("16 11");
        QTest::newRow("name of a value") << QByteArray("members policy StrongFocus") << QByteArray("16 0");
        QTest::newRow("flags") << QByteArray("members sides 33") << QByteArray("16 33");
        QTest::newRow("url") << QByteArray("members url http://y/") << QByteArray("0 http://y/");
    }

    void setPropertyReadsTheRestOfTheLine()
    {
        QFETCH(QByteArray, arguments);
        QFETCH(QByteArray, value);
        m_fixture->box->setChecked(value != "18 true");
        const QByteArray property = arguments.split(' ').mid(0, 2).join(' ');
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("SETPROPERTY " + arguments + "\nGETPROPERTY " + property + '\n'),
                 "OK\r\nOK " + value + "\r\n");
    }

    void valuesCanHaveSeveralLines()
    {
        m_fixture->button->setText(u"a\nb"_s);
        QCOMPARE(Driver(*m_fixture).ask("GETPROPERTY \"my button\" text\n"), "OK 3 a\nb\r\n");
    }

    void slotsAndSignalsAreLoggedAndRunWithoutAReply()
    {
        Driver driver(*m_fixture);
        QSignalSpy done(m_fixture->members, &MemberProbe::done);
        QTest::ignoreMessage(QtDebugMsg, "SLOT 2\n");
        QTest::ignoreMessage(QtDebugMsg, "SLOT 4\n");
        QTest::ignoreMessage(QtDebugMsg, "SIGNAL 3\n");
        QCOMPARE(driver.ask("CALLSLOT members reset()\nCALLSLOT members \"secret( )\"\nEMITSIGNAL members done()\n"),
                 "");
        QCOMPARE(m_fixture->members->resets, 1);
        QCOMPARE(m_fixture->members->secrets, 1);
        QCOMPARE(done.size(), 1);
    }

    void membersWithArgumentsAreFoundAndNotCalled()
    {
        Driver driver(*m_fixture);
        QSignalSpy progress(m_fixture->members, &MemberProbe::progress);
        QTest::ignoreMessage(QtDebugMsg, "SLOT 3\n");
        QTest::ignoreMessage(QtDebugMsg, "SIGNAL 4\n");
        QCOMPARE(driver.ask("CALLSLOT members setValue(int)\n"
                            "EMITSIGNAL members \"progress(int, const QString&)\"\n"),
                 "");
        QCOMPARE(m_fixture->members->values, 0);
        QCOMPARE(progress.size(), 0);
    }

    void missingMembersAreLogged()
    {
        Driver driver(*m_fixture);
        QTest::ignoreMessage(QtDebugMsg, "SLOT -1\n");
        QTest::ignoreMessage(QtDebugMsg, "SIGNAL -1\n");
        QCOMPARE(driver.ask("CALLSLOT members done()\nEMITSIGNAL members reset()\n"), "");
        QCOMPARE(m_fixture->members->resets, 0);
    }

    void doActionTriggersADisabledAction()
    {
        QSignalSpy triggered(m_fixture->action, &QAction::triggered);
        m_fixture->action->setEnabled(false);
        QCOMPARE(Driver(*m_fixture).ask("DOACTION doIt\n"), Ok);
        QCOMPARE(triggered.size(), 1);
    }

    void doActionKeepsTheCheckMarkAndLogsHowToChangeIt()
    {
        m_fixture->action->setCheckable(true);
        QTest::ignoreMessage(QtDebugMsg,
                             "QtRunnerSocket: DOACTION keeps the check mark, CALLSLOT doIt trigger() changes it");
        QCOMPARE(Driver(*m_fixture).ask("DOACTION doIt\n"), Ok);
        QVERIFY(!m_fixture->action->isChecked());
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"SLOT \\d+"_s));
        QCOMPARE(Driver(*m_fixture).ask("CALLSLOT doIt trigger()\nDOACTION none\n"), "ERROR\r\n");
        QVERIFY(m_fixture->action->isChecked());
    }

    void actionWithoutANameIsNotFound()
    {
        const QAction separator(&m_fixture->window);
        QCOMPARE(Driver(*m_fixture).ask("DOACTION\n"), "ERROR\r\n");
    }

    void unknownCommandIsLogged()
    {
        QTest::ignoreMessage(QtDebugMsg, "QtRunnerSocket: unknown command (HELLO)");
        QCOMPARE(Driver(*m_fixture).ask("HELLO you\nDOACTION doIt\n"), Ok);
    }

    void ordinaryCommandsAreNotLogged()
    {
        static QStringList logged;
        logged.clear();
        RunnerCommands commands(&m_fixture->window, &m_fixture->model);
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { logged.append(text); });
        (void)commands.execute(u"\n"_s);
        (void)commands.execute(u"DOACTION doIt\n"_s);
        qInstallMessageHandler(previous);
        QCOMPARE(logged, QStringList());
    }

    void firstObjectOfANameIsUsed()
    {
        auto *second = new QPushButton(&m_fixture->window);
        second->setObjectName(u"edit"_s);
        QCOMPARE(Driver(*m_fixture).ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
    }

    void descendantsOfAnEarlierChildPrecedeALaterChild()
    {
        auto *button = new QPushButton(new QWidget(new QWidget(&m_fixture->window)));
        button->setObjectName(u"twice"_s);
        (new QLineEdit(&m_fixture->window))->setObjectName(u"twice"_s);
        QCOMPARE(Driver(*m_fixture).ask("GETCLASS twice\n"), "OK QPushButton\r\n");
    }

    void visibleObjectOfANamePrecedesHiddenOnes()
    {
        auto *edit = m_fixture->window.findChild<QLineEdit *>(u"edit"_s);
        auto *second = new QPushButton(&m_fixture->window);
        second->setObjectName(u"edit"_s);
        m_fixture->window.show();
        second->show();
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
        edit->hide();
        QCOMPARE(driver.ask("GETCLASS edit\n"), "OK QPushButton\r\n");
        second->hide();
        QCOMPARE(driver.ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
    }

    void visibleObjectOfTheWindowInUsePrecedesOthers()
    {
        const auto makeDialog = [this](QWidget *field) {
            auto *dialog = new QDialog(&m_fixture->window);
            field->setParent(dialog);
            field->setObjectName(u"field"_s);
            return dialog;
        };
        QDialog *first = makeDialog(new QLineEdit);
        QDialog *second = makeDialog(new QPushButton);
        QDialog *modal = makeDialog(new QSpinBox);
        modal->setModal(true);
        m_fixture->window.show();
        Driver driver(*m_fixture);
        first->show();
        second->show();
        second->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(second));
        QCOMPARE(driver.ask("GETCLASS field\n"), "OK QPushButton\r\n");
        first->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(first));
        QCOMPARE(driver.ask("GETCLASS field\n"), "OK QLineEdit\r\n");
        modal->show();
        QCOMPARE(driver.ask("GETCLASS field\n"), "OK QSpinBox\r\n");
    }

    void objectsOfOtherWindowsAreFoundWhileTheirWindowIsVisible()
    {
        QFrame other; // such as a dialog of a plug-in, without a parent
        other.setObjectName(u"other"_s);
        (new QPushButton(&other))->setObjectName(u"inside"_s);
        (new QPushButton(&other))->setObjectName(u"edit"_s);
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("GETCLASS inside\n"), "ERROR 4 No such object\r\n");
        other.show();
        QCOMPARE(driver.ask("GETCLASS other\n"), "OK QFrame\r\n");
        QCOMPARE(driver.ask("GETCLASS inside\n"), "OK QPushButton\r\n");
        QCOMPARE(driver.ask("GETCLASS edit\n"), "OK QLineEdit\r\n"); // that of the main widget
        m_fixture->window.show();
        QCOMPARE(driver.ask("EVENT window 24\n"), "ERROR 2 No such object\r\n");
    }

    void windowWithoutANameIsNoObject()
    {
        QWidget window;
        RunnerCommands commands(&window, nullptr);
        QCOMPARE(commands.execute(u"GETCLASS\n"_s), QLatin1StringView(NoObject));
    }

    void actionIsFoundWithoutTheObjectModel()
    {
        RunnerCommands commands(&m_fixture->window, nullptr);
        QSignalSpy triggered(m_fixture->action, &QAction::triggered);
        QCOMPARE(commands.execute(u"DOACTION doIt\n"_s), QLatin1StringView(Ok));
        QVERIFY(triggered.isEmpty());
    }

    // Events ------------------------------------------------------------------

    void postedEventsArriveAsDescribed_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<QString>("event");
        QTest::newRow("press") << QByteArray("2 1 2 30 40 1 256") << u"2 1,2 30,40 1 1 2000000"_s;
        QTest::newRow("release") << QByteArray("3 1 2 30 40 1 1") << u"3 1,2 30,40 1 0 0"_s;
        QTest::newRow("double click") << QByteArray("4 1 2 30 40 2 0") << u"4 1,2 30,40 2 2 0"_s;
        QTest::newRow("move") << QByteArray("5 1 2 30 40 0 1") << u"5 1,2 30,40 0 1 0"_s;
        QTest::newRow("key") << QByteArray("6 65 97 0 0 1 1 a") << u"6 41 0 'a' 0 1"_s;
        QTest::newRow("key without text") << QByteArray("7 4112 0 512 1 2 0") << u"7 1000010 4000000 '' 1 2"_s;
        QTest::newRow("key with blanks") << QByteArray("6 0 0 0 0 1 1  x y ") << u"6 0 0 ' x y ' 0 1"_s;
        QTest::newRow("focus in") << QByteArray("8 6") << u"8 7"_s;
        QTest::newRow("focus out") << QByteArray("9 2") << u"9 2"_s;
        QTest::newRow("enter") << QByteArray("10") << u"10"_s;
        QTest::newRow("leave") << QByteArray("11 ") << u"11"_s;
        QTest::newRow("any other") << QByteArray("1999") << u"1999"_s;
    }

    void postedEventsArriveAsDescribed()
    {
        QFETCH(QByteArray, fields);
        QFETCH(QString, event);
        QCOMPARE(Driver(*m_fixture).ask("EVENT events " + fields + "\r\n"), Ok);
        QVERIFY2(m_fixture->events->seen.contains(event), qPrintable(m_fixture->events->seen.join(u'\n')));
    }

    void eventIsHandledBeforeTheNextCommand()
    {
        Driver driver(*m_fixture);
        m_fixture->edit->setText({});
        QCOMPARE(driver.ask("EVENT edit 6 65 97 0 0 1 1 a\n"), Ok);
        QCOMPARE(driver.ask("GETPROPERTY edit text\n"), "OK 3 a\r\n");
    }

    void eventsOfAllTypesAreHarmless()
    {
        static const QtMessageHandler quiet = [](QtMsgType, const QMessageLogContext &, const QString &) {};
        const QtMessageHandler previous = qInstallMessageHandler(quiet); // hides warnings
        const QByteArrayList names{"edit", "plain", "box", "frame", "members", "doIt"};
        Driver driver(*m_fixture);
        for (int type = 0; type < 1100; ++type) {
            for (const QByteArray &name : names)
                driver.write("EVENT " + name + ' ' + QByteArray::number(type) + '\n');
        }
        const QByteArray replies = driver.ask({});
        qInstallMessageHandler(previous);
        // Eight types have fields of their own.
        QCOMPARE(replies.count("OK\r\n"), (1100 - 8) * names.size());
        QCOMPARE(replies.count("ERROR 1 Bad command syntax\r\n"), 8 * names.size());
    }

    // Recording ---------------------------------------------------------------

    void eventsAreRecordedAsCommands()
    {
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("RECORD ON\n"), Ok);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_F5, Qt::ControlModifier);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, u"a"_s, true, 2);
        QMouseEvent click(QEvent::MouseButtonPress, QPointF(1, 2), QPointF(31, 42), Qt::LeftButton,
                          Qt::LeftButton | Qt::RightButton, Qt::ShiftModifier);
        QFocusEvent focus(QEvent::FocusIn, Qt::MenuBarFocusReason);
        QEvent leave(QEvent::Leave);
        QEvent polish(QEvent::PolishRequest);
        for (QEvent *event : std::initializer_list<QEvent *>{&press, &release, &click, &focus, &leave, &polish})
            QCoreApplication::sendEvent(m_fixture->events, event);
        QCOMPARE(driver.ask({}), "EVENT window.events 6 4148 0 512 0 1 0\r\n"
                                 "EVENT window.events 7 65 97 0 1 2 1 a\r\n"
                                 "EVENT window.events 2 1 2 31 42 1 258\r\n"
                                 "EVENT window.events 8 6\r\n"
                                 "EVENT window.events 11 \r\n");
    }

    void recordingEndsAndInvalidParametersChangeNothing()
    {
        Driver driver(*m_fixture);
        const auto leave = [this] {
            QEvent event(QEvent::Leave);
            QCoreApplication::sendEvent(m_fixture->events, &event);
        };
        driver.ask("RECORD MAYBE\n");
        leave();
        QCOMPARE(driver.ask({}), "");
        QCOMPARE(driver.ask("RECORD ON\nRECORD ON\nRECORD MAYBE\n"), "OK\r\nOK\r\nERROR 3 Bad parameter\r\n");
        leave();
        QCOMPARE(driver.ask({}), "EVENT window.events 11 \r\n"); // once, although it was switched on twice
        QCOMPARE(driver.ask("RECORD OFF\n"), Ok);
        leave();
        QCOMPARE(driver.ask({}), "");
    }

    void ownEventsOfADriverAreRecorded()
    {
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("RECORD ON\nEVENT events 8 0\n"), "OK\r\nOK\r\n");
        QCOMPARE(driver.ask({}), "EVENT window.events 8 0\r\n");
    }

    void onlyWidgetsAreRecorded()
    {
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("RECORD ON\nEVENT members 11\n"), "OK\r\nOK\r\n");
        QCOMPARE(driver.ask({}), "");
    }

    void driversHaveSeparateRecordFlags()
    {
        Driver recorder(*m_fixture);
        Driver other(*m_fixture);
        QCOMPARE(recorder.ask("RECORD ON\n"), Ok);
        QCOMPARE(other.ask("EVENT events 11\n"), Ok);
        QCOMPARE(recorder.ask({}), "EVENT window.events 11 \r\n");
        QCOMPARE(other.ask({}), "");
    }

    void filterDoesNotStopEvents()
    {
        Driver driver(*m_fixture);
        driver.ask("RECORD ON\n");
        m_fixture->events->seen.clear();
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(m_fixture->events, &leave);
        QCOMPARE(m_fixture->events->seen, QStringList(u"11"_s));
    }

    void replayedSessionHasTheSameResult()
    {
        m_fixture->window.show();
        Driver driver(*m_fixture);
        driver.ask("RECORD ON\n");
        QSignalSpy clicked(m_fixture->plain, &QPushButton::clicked);
        QTest::mouseClick(m_fixture->edit, Qt::LeftButton);
        QTest::keyClicks(m_fixture->edit, u"Hello  World"_s);
        QTest::keyClick(m_fixture->edit, Qt::Key_Home);
        QTest::keyClick(m_fixture->edit, Qt::Key_Delete);
        QTest::keyClick(m_fixture->edit, Qt::Key_End, Qt::ShiftModifier);
        QTest::keyClick(m_fixture->edit, Qt::Key_Left);
        QTest::keyClick(m_fixture->edit, Qt::Key_X, Qt::ShiftModifier);
        QTest::mouseClick(m_fixture->plain, Qt::LeftButton);
        QTest::mouseClick(m_fixture->box, Qt::LeftButton, {}, QPoint(8, m_fixture->box->height() / 2));
        const QString text = m_fixture->edit->text();
        const QByteArrayList recording = driver.ask("RECORD OFF\n").split('\n');
        QCOMPARE(text, u"ello  Worlxd"_s);
        QCOMPARE(clicked.size(), 1);
        QVERIFY(m_fixture->box->isChecked());

        m_fixture->edit->clear();
        m_fixture->box->setChecked(false);
        QByteArray replay;
        for (const QByteArray &command : recording) {
            if (!command.startsWith("EVENT "))
                continue;
            const qsizetype path = 6;
            const qsizetype end = command.indexOf(' ', path);
            replay += "EVENT " + command.mid(path, end - path).split('.').last() + command.mid(end) + '\n';
        }
        driver.ask(replay);
        QCOMPARE(m_fixture->edit->text(), text);
        QCOMPARE(clicked.size(), 2);
        QVERIFY(m_fixture->box->isChecked());
    }

    // Lines, connections ------------------------------------------------------

    void lineMayArriveByteByByte()
    {
        Driver driver(*m_fixture);
        driver.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        for (const char byte : QByteArray("GETCLASS edit\r\nGETCL")) {
            driver.putChar(byte);
            driver.flush();
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(driver.received, "OK QLineEdit\r\n");
        driver.received.clear();
        QCOMPARE(driver.ask("ASS box\n"), "OK QCheckBox\r\n");
    }

    void manyCommandsAtOnceAreAnsweredInOrder()
    {
        QByteArray commands;
        QByteArray replies;
        for (int i = 0; i < 20000; ++i) { // much more than is read at once
            commands += "SETPROPERTY edit text " + QByteArray::number(i) + "\nGETPROPERTY edit text\n";
            replies += "OK\r\nOK 3 " + QByteArray::number(i) + "\r\n";
        }
        QVERIFY(Driver(*m_fixture).ask(commands) == replies);
    }

    void longLineIsAccepted()
    {
        Driver driver(*m_fixture);
        const QByteArray command = "SETPROPERTY members text ";
        const QByteArray text(QtRunnerSocket::MaximumLine - command.size() - 1, 'x');
        QCOMPARE(driver.ask(command + text + '\n'), Ok);
        QVERIFY(m_fixture->members->text == QString::fromLatin1(text));
    }

    void tooLongLineClosesItsConnectionOnly_data()
    {
        QTest::addColumn<QByteArray>("end");
        QTest::newRow("that ends") << QByteArray("\n");
        QTest::newRow("that does not end") << QByteArray("x");
    }

    void tooLongLineClosesItsConnectionOnly()
    {
        QFETCH(QByteArray, end);
        Driver driver(*m_fixture);
        Driver other(*m_fixture);
        QCOMPARE(other.ask({}), "");
        QTest::ignoreMessage(QtWarningMsg, "QtRunnerSocket: A line is longer than 16 MiB; the connection is closed.");
        driver.write(QByteArray(QtRunnerSocket::MaximumLine, 'x') + end);
        QTRY_COMPARE(driver.state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(driver.received, "");
        QCOMPARE(other.ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
    }

    void driverThatDoesNotReadIsDisconnected()
    {
        Driver lazy(*m_fixture);
        Driver other(*m_fixture);
        lazy.setReadBufferSize(1); // and it reads nothing
        lazy.disconnect(&lazy);
        m_fixture->members->text = QString(8 * 1024 * 1024, u'x');
        QTest::ignoreMessage(QtWarningMsg,
                             "QtRunnerSocket: The peer does not read its replies; the connection is closed.");
        QTRY_COMPARE(lazy.state(), QAbstractSocket::ConnectedState);
        lazy.write(QByteArray("GETPROPERTY members text\n").repeated(20));
        QCOMPARE(other.ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
        QTRY_COMPARE(m_fixture->server->connections(), 1);
    }

    void invalidInputIsIgnored()
    {
        QRandomGenerator random(1);
        QByteArray garbage(4 * 1024 * 1024, Qt::Uninitialized);
        for (char &byte : garbage)
            byte = char(random.generate());
        garbage += '\n';
        Driver flood(*m_fixture);
        Driver other(*m_fixture);
        flood.write(garbage);
        QCOMPARE(other.ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
        QCOMPARE(flood.ask({}), "");
    }

    void commandsBeforeADisconnectAreExecuted()
    {
        {
            Driver driver(*m_fixture);
            driver.write("CALLSLOT members reset()\nCALLSLOT members reset()\nCALLSLOT mem");
            driver.disconnectFromHost();
            QTRY_COMPARE(driver.state(), QAbstractSocket::UnconnectedState);
        }
        QTRY_COMPARE(m_fixture->members->resets, 2);
    }

    void connectionIsLogged()
    {
        QTest::ignoreMessage(QtDebugMsg, "QtRunnerServer:: new connection");
        QTest::ignoreMessage(QtDebugMsg, "QtRunnerSocket:: connection closed");
        {
            Driver driver(*m_fixture);
            driver.ask({});
        }
        Driver next(*m_fixture);
        QCOMPARE(next.ask({}), "");
        QTRY_COMPARE(m_fixture->server->connections(), 1);
    }

    void tooManyConnectionsAreRefused()
    {
        std::vector<std::unique_ptr<Driver>> drivers;
        for (int i = 0; i < QtRunnerServer::MaximumConnections; ++i) {
            drivers.push_back(std::make_unique<Driver>(*m_fixture));
            QCOMPARE(drivers.back()->ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
        }
        QTest::ignoreMessage(QtWarningMsg, "QtRunnerServer: Too many connections; one is refused.");
        Driver refused(*m_fixture);
        QSignalSpy gone(&refused, &QAbstractSocket::disconnected);
        QTRY_COMPARE(gone.size(), 1);
        QCOMPARE(drivers.front()->ask("GETCLASS box\n"), "OK QCheckBox\r\n");
        drivers.clear();
        QTRY_COMPARE(m_fixture->server->connections(), 0);
        QCOMPARE(Driver(*m_fixture).ask("GETCLASS box\n"), "OK QCheckBox\r\n");
    }

    // Dialogs -----------------------------------------------------------------

    void dialogIsOperatedByLaterCommands()
    {
        bool dialogAnswered = false;
        bool actionAnswered = false;
        QVERIFY(DistantDriver(*m_fixture).run([&](DistantDriver &driver) {
            dialogAnswered = driver.ask("DOACTION openDialog\nGETCLASS dialog\n", "OK QDialog\r\n");
            actionAnswered = driver.ask("CALLSLOT dialog reject()\n", Ok);
        }));
        QVERIFY(dialogAnswered);
        QVERIFY(actionAnswered);
    }

    void driverMayDisconnectWhileItsDialogIsOpen()
    {
        bool opened = false;
        QTimer timer; // processes the input while the dialog is open
        connect(&timer, &QTimer::timeout, this, [&] {
            if (opened && m_fixture->server->connections() == 0)
                closeAllDialogs();
        });
        timer.start(0);
        QVERIFY(DistantDriver(*m_fixture).run([&](DistantDriver &driver) {
            opened = driver.ask("DOACTION openDialog\nGETCLASS dialog\n", "OK QDialog\r\n");
        }));
        QVERIFY(opened);
        QTRY_VERIFY(!m_fixture->window.findChild<QDialog *>());
        QCOMPARE(Driver(*m_fixture).ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
    }

    void windowMayBeDeletedWhileADriverIsConnected()
    {
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("RECORD ON\n"), Ok);
        m_fixture.reset();
        driver.write("GETCLASS edit\nEVENT edit 24\nDOACTION doIt\n");
        QTRY_COMPARE(driver.received, "ERROR 4 No such object\r\nERROR 2 No such object\r\nERROR\r\n");
    }

    void serverMayBeDeletedWhileADriverIsConnected()
    {
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("CALLSLOT \"runner server\" deleteLater()\n"), "");
        QCOMPARE(driver.ask("GETCLASS \"runner server\"\nGETCLASS edit\n"),
                 "ERROR 4 No such object\r\nOK QLineEdit\r\n");
    }

    void nestedDialogsAreLimited()
    {
        std::atomic<bool> thrownOut = false;
        bool othersAnswered = false;
        qsizetype dialogs = 0;
        QTest::ignoreMessage(QtWarningMsg,
                             "QtRunnerSocket: Too many commands wait for each other; the connection is closed.");
        QVERIFY(DistantDriver(*m_fixture).run([&](DistantDriver &driver) {
            thrownOut = driver.isThrownOut(QByteArray("DOACTION openDialog\n").repeated(10000));
            QTcpSocket other;
            other.connectToHost(QHostAddress::LocalHost, m_fixture->server->serverPort());
            other.write("GETCLASS dialog\n");
            other.waitForReadyRead();
            othersAnswered = other.readAll() == "OK QDialog\r\n";
            QMetaObject::invokeMethod(qApp, [&] {
                dialogs = m_fixture->window.findChildren<QDialog *>().size();
                closeAllDialogs();
            });
        }));
        QVERIFY(thrownOut);
        QVERIFY(othersAnswered);
        QTRY_VERIFY(!m_fixture->window.findChild<QDialog *>());
        QCOMPARE(dialogs, QtRunnerSocket::MaximumNesting);
    }

    // The server --------------------------------------------------------------

    void replyToTheLastCommandArrives()
    {
        connect(m_fixture->edit, &QLineEdit::textChanged, qApp, &QCoreApplication::quit);
        QTcpSocket peer;
        peer.connectToHost(QHostAddress::LocalHost, m_fixture->server->serverPort());
        QVERIFY(peer.waitForConnected());
        peer.write("SETPROPERTY edit text quit\n");
        QVERIFY(peer.waitForBytesWritten());
        QCoreApplication::exec();
        QByteArray reply;
        while (peer.waitForReadyRead())
            reply += peer.readAll();
        QCOMPARE(reply, Ok);
    }

    void eventsAfterTheEndOfTheProgramAreNotSent()
    {
        Driver driver(*m_fixture);
        QCOMPARE(driver.ask("RECORD ON\n"), Ok);
        QVERIFY(QMetaObject::invokeMethod(qApp, "aboutToQuit"));
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(m_fixture->edit, &event); // a warning of the closed socket would fail the test
    }

    void connectionThatEndsBeforeItsStartIsDeleted()
    {
        const QPointer<QObject> socket = new QtRunnerSocket(-1, &m_fixture->window, &m_fixture->model);
        QTRY_VERIFY(!socket);
    }

    void usedPortIsLogged()
    {
        const quint16 port = m_fixture->server->serverPort();
        QTest::ignoreMessage(QtDebugMsg, qPrintable(u"QtRunnerServer: Failed to bind to port %1"_s.arg(port)));
        const QtRunnerServer second(port, QHostAddress::LocalHost, &m_fixture->model, &m_fixture->window);
        QVERIFY(!second.isListening());
    }

    void serverIsAChildOfTheWindow()
    {
        QCOMPARE(m_fixture->server->objectName(), u"runner server"_s);
        QCOMPARE(m_fixture->server->parent(), &m_fixture->window);
    }

    void addressIsReadFromTheSettings_data()
    {
        QTest::addColumn<QVariant>("setting");
        QTest::addColumn<QHostAddress>("address");
        QTest::newRow("none") << QVariant() << QHostAddress(QHostAddress::Any);
        QTest::newRow("this machine") << QVariant(u"127.0.0.1"_s) << QHostAddress(QHostAddress::LocalHost);
        QTest::newRow("version 6") << QVariant(u"::1"_s) << QHostAddress(QHostAddress::LocalHostIPv6);
        QTest::newRow("no address") << QVariant(u"everywhere"_s) << QHostAddress();
        QTest::newRow("empty") << QVariant(u""_s) << QHostAddress();
    }

    void addressIsReadFromTheSettings()
    {
        QFETCH(QVariant, setting);
        const QTemporaryDir directory;
        QSettings settings(directory.filePath(u"s.ini"_s), QSettings::IniFormat);
        if (setting.isValid())
            settings.setValue(u"Startup/AutomationAddress"_s, setting);
        QTEST(automationAddress(settings), "address");
    }

    void onlyTheGivenAddressIsUsed()
    {
        // The machine accepts all of 127.0.0.0/8.
        const QHostAddress elsewhere(u"127.0.0.2"_s);
        Driver refused(m_fixture->server->serverPort(), elsewhere);
        QTRY_COMPARE(refused.error(), QAbstractSocket::ConnectionRefusedError);
        const QtRunnerServer everywhere(0, QHostAddress::Any, &m_fixture->model, &m_fixture->window);
        Driver welcome(everywhere.serverPort(), elsewhere);
        QCOMPARE(welcome.ask("GETCLASS edit\n"), "OK QLineEdit\r\n");
    }

    void nullAddressDoesNotListen()
    {
        QTest::ignoreMessage(QtDebugMsg, "QtRunnerServer: Failed to bind to port 4711");
        const QtRunnerServer server(4711, QHostAddress(), &m_fixture->model, &m_fixture->window);
        QVERIFY(!server.isListening());
    }

    void hundredThousandCommandsLeakNothing()
    {
        Driver driver(*m_fixture);
        const QByteArray commands =
            QByteArray("GETPROPERTY edit text\nSETPROPERTY edit text abc\nGETSLOTS members\nEVENT events 11\n"
                       "GETCLASS nobody\nHELLO\nDOACTION doIt\nCALLSLOT members reset()\nEVENT x y\nRECORD OFF\n")
                .repeated(1000);
        const QtMessageHandler previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        m_fixture->edit->setText(u"abc"_s);
        const QByteArray replies = driver.ask(commands);
        m_fixture->events->seen = {};
        const size_t before = mallinfo2().uordblks;
        bool same = true;
        for (int i = 0; i < 10; ++i) {
            same = same && driver.ask(commands) == replies;
            m_fixture->events->seen = {};
        }
        const size_t after = mallinfo2().uordblks;
        qInstallMessageHandler(previous);
        QVERIFY(same);
        QVERIFY2(after < before + 100000, qPrintable(u"%1 bytes more"_s.arg(after - before)));
    }
};

QTEST_MAIN(QtRunnerServerTest)
#include "tst_qtrunnerserver.moc"
