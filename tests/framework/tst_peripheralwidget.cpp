#include "interfaceobject.h"
#include "peripheralwidget.h"
#include "peripheralwidgettooltip.h"
#include "popupmenu.h"
#include "propertyhexitem.h"
#include "propertylist.h"
#include "propertylistitem.h"
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDeadlineTimer>
#include <QHash>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
/// Registers of devices in memory; with fields only if it offers them.
class FakePeripherals : public InterfaceObject<IPeripherals, IPeripheralFields>
{
public:
    explicit FakePeripherals(int *alive) : m_alive(alive) { ++*alive; }
    ~FakePeripherals() override { --*m_alive; }

    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        if (id == IPeripheralFields::Iid && !offersFields) {
            *out = nullptr;
            return QE_NOINTERFACE;
        }
        return InterfaceObject::queryInterface(id, out);
    }
    QList<PeripheralInfo> peripherals() override { return infos; }
    uint value(const QString &peripheral, const QString &registerName) override
    {
        calls += u"read %1/%2"_s.arg(peripheral, registerName);
        if (onCall)
            onCall();
        return values.value(registerName);
    }
    void setValue(const QString &peripheral, const QString &registerName, uint value) override
    {
        calls += u"write %1/%2=%3"_s.arg(peripheral, registerName, QString::number(value, 16));
        if (onCall)
            onCall();
        values[registerName] = onesClear(registerName) ? values.value(registerName) & ~value : value;
    }
    QString description(const QString &peripheral, const QString &registerName) override
    {
        calls += u"describe %1/%2"_s.arg(peripheral, registerName);
        return descriptions.value(peripheral + u'/' + registerName);
    }
    PeripheralRegisterDetails details(const QString &, const QString &registerName) override
    {
        if (onDetails)
            onDetails();
        return detailsOf.value(registerName);
    }
    uint readNow(const QString &peripheral, const QString &registerName) override
    {
        calls += u"read now %1/%2"_s.arg(peripheral, registerName);
        return values.value(registerName);
    }
    QStringList takeCalls() { return std::exchange(calls, {}); }

    bool offersFields = false;
    QList<PeripheralInfo> infos;
    QHash<QString, uint> values; ///< by the name of the register
    QHash<QString, QString> descriptions;
    QHash<QString, PeripheralRegisterDetails> detailsOf;
    QStringList calls;
    std::function<void()> onCall;
    std::function<void()> onDetails;

private:
    [[nodiscard]] bool onesClear(const QString &name) const { return detailsOf.value(name).onesClear; }

    int *m_alive;
};

const PeripheralInfo Timer{u"TIMER"_s, {{u"LOAD"_s, 32, false}, {u"STATE"_s, 8, true}}};
const PeripheralInfo Uart{u"UART"_s, {{u"DATA"_s, 0, false}, {u"BAUD"_s, 12, false}}};
const PeripheralRegisterDetails LoadFields{
    {{u"ENABLE"_s, 0, 1, true, true, {{0, u"Off"_s}, {1, u"On"_s}}, u"Starts it"_s},
     {u"MODE"_s, 4, 2, true, true, {{0, u"Single"_s}, {1, u"Periodic"_s}}, {}},
     {u"COUNT"_s, 16, 16, true, true, {}, {}},
     {u"BUSY"_s, 8, 1, true, false, {}, {}}},
    false,
    false};
} // namespace

class PeripheralWidgetTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PeripheralWidget> m_widget;
    PropertyList *m_list = nullptr;
    InterfacePtr<FakePeripherals> m_plugin;
    int m_alive = 0; ///< fake plug-ins

    /// Lets the target of the plug-in answer slowly.
    static void answerAfter(int milliseconds)
    {
        const QDeadlineTimer answer(milliseconds);
        while (!answer.hasExpired()) {
        }
    }

    void show(const QList<PeripheralInfo> &infos)
    {
        m_plugin->infos = infos;
        m_widget->setPeripherals(m_plugin.get());
    }
    void showFields(const PeripheralRegisterDetails &details)
    {
        m_plugin->offersFields = true;
        m_plugin->detailsOf.insert(u"LOAD"_s, details);
        show({Timer});
    }

    PropertyItem *row(const QString &name) const
    {
        for (QTreeWidgetItemIterator it(m_list); *it; ++it) {
            if (auto *item = static_cast<PropertyItem *>(*it); item->name() == name)
                return item;
        }
        return nullptr;
    }
    QString changed() const
    {
        QStringList names;
        for (QTreeWidgetItemIterator it(m_list); *it; ++it) {
            if (auto *item = static_cast<PropertyItem *>(*it); item->isChanged())
                names += item->name();
        }
        return names.join(u' ');
    }
    void open(const QString &name) { row(name)->setOpen(true); }

    void click(const QString &name)
    {
        const QRect cell = m_list->visualItemRect(row(name));
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {},
                          QPoint(m_list->columnViewportPosition(1) + 5, cell.center().y()));
    }
    void enter(const QString &name, const QString &text)
    {
        click(name);
        auto *edit = row(name)->editor()->findChild<QLineEdit *>();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    void choose(const QString &name, int index)
    {
        click(name);
        auto *combo = qobject_cast<QComboBox *>(row(name)->editor());
        combo->setCurrentIndex(index);
        QTest::keyClick(combo, Qt::Key_Return);
    }

    /// What the tool tip of a row shows; "none" without one.
    QString tip(const QString &name)
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->inherits("QTipLabel"))
                window->hide(); // hideText() takes its time
        }
        const QPoint point = m_list->visualItemRect(row(name)).center();
        QHelpEvent event(QEvent::ToolTip, point, m_list->viewport()->mapToGlobal(point));
        QApplication::sendEvent(m_list->viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : u"none"_s;
    }
    PopupMenu *rightClick(const QString &name)
    {
        const QPoint point = m_list->visualItemRect(row(name)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, m_list->viewport()->mapToGlobal(point));
        QApplication::sendEvent(m_list->viewport(), &event);
        return qobject_cast<PopupMenu *>(QApplication::activePopupWidget());
    }

    static void throwError() { throw std::runtime_error("boom"); }
    static void expectException(const char *operation)
    {
        const QByteArray text = operation + QByteArray(": an exception has left the plug-in (boom)");
        QTest::ignoreMessage(QtWarningMsg, text.constData());
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_plugin.reset(new FakePeripherals(&m_alive));
        m_widget = std::make_unique<PeripheralWidget>();
        m_list = m_widget->findChild<PropertyList *>(u"peripheralList"_s);
        m_widget->resize(500, 400);
        m_widget->show();
        m_widget->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_widget.get()));
    }

    void cleanup()
    {
        m_widget.reset();
        m_plugin.reset();
        QCOMPARE(m_alive, 0);
    }

    void listHasItsTitlesAndName()
    {
        QCOMPARE(m_list->headerItem()->text(0), u"Peripheral Register"_s);
        QCOMPARE(m_list->headerItem()->text(1), u"Value"_s);
        QCOMPARE(m_list->treeStepSize(), 10);
        QCOMPARE(m_list->accessibleName(), u"Peripherals"_s);
    }

    void registersOfOnePeripheralStandAtTheTopLevel()
    {
        show({Timer});
        QCOMPARE(m_widget->text(), u"LOAD = 0x00000000\nSTATE = 0x00\n"_s);
    }

    void severalPeripheralsHaveSectionsInTheirOrder()
    {
        show({Uart, Timer});
        QCOMPARE(m_widget->text(), u"UART = \nTIMER = \n"_s);
        open(u"UART"_s);
        open(u"TIMER"_s);
        QCOMPARE(m_widget->text(),
                 u"UART = \n  DATA = 0x0000\n  BAUD = 0x000\nTIMER = \n  LOAD = 0x00000000\n  STATE = 0x00\n"_s);
    }

    void withoutPeripheralsTheListIsEmpty()
    {
        show({});
        m_widget->update();
        QCOMPARE(m_widget->text(), QString());
        QCOMPARE(m_plugin->calls, QStringList());
    }

    void readOnlyRegisterHasNoEditor()
    {
        show({Timer});
        click(u"STATE"_s);
        QVERIFY(!row(u"STATE"_s)->isEditing());
        click(u"LOAD"_s);
        QVERIFY(row(u"LOAD"_s)->isEditing());
    }

    void slowTargetIsReadInPortions()
    {
        show({Timer});
        m_widget->setPaused(true);
        QCoreApplication::processEvents();
        m_plugin->takeCalls();
        m_plugin->values = {{u"LOAD"_s, 1}, {u"STATE"_s, 2}};
        m_plugin->onCall = [] { answerAfter(50); };
        m_widget->update();
        QCOMPARE(m_plugin->takeCalls(), QStringList{u"read /LOAD"_s});
        QTRY_COMPARE(m_widget->text(), u"LOAD = 0x00000001\nSTATE = 0x02\n"_s);
        QCOMPARE(m_plugin->takeCalls(), QStringList{u"read /STATE"_s});
        QCOMPARE(changed(), u"LOAD STATE"_s);
    }

    void registersAndSectionsAreReadWithTheToldNames()
    {
        show({Uart, Timer});
        open(u"TIMER"_s);
        m_widget->update();
        QCOMPARE(m_plugin->takeCalls(),
                 (QStringList{u"read /UART"_s, u"read /TIMER"_s, u"read TIMER/LOAD"_s, u"read TIMER/STATE"_s}));
        show({Timer});
        m_widget->update();
        QCOMPARE(m_plugin->takeCalls(), (QStringList{u"read /LOAD"_s, u"read /STATE"_s}));
    }

    void changeIsMarkedUntilTheNextUpdate()
    {
        show({Timer, Uart});
        open(u"TIMER"_s);
        m_plugin->values = {{u"LOAD"_s, 5}, {u"TIMER"_s, 1}};
        m_widget->update();
        QCOMPARE(changed(), u"TIMER LOAD"_s);
        QCOMPARE(m_widget->property("changed"), u"TIMER\nLOAD\n"_s); // for test drivers
        m_widget->update();
        QCOMPARE(changed(), QString());
    }

    void onlyRowsOnTheScreenAreRead()
    {
        PeripheralInfo many{u"MANY"_s, {}};
        for (int i = 0; i < 1000; ++i)
            many.registers += {u"R%1"_s.arg(i), 8, false};
        show({many, Uart});
        m_widget->setPaused(true);
        open(u"MANY"_s);
        m_widget->update();
        const QStringList first = m_plugin->takeCalls();
        QVERIFY(first.size() > 5 && first.size() < 60);
        QCOMPARE(first[1], u"read MANY/R0"_s);
        m_list->verticalScrollBar()->setValue(m_list->verticalScrollBar()->maximum() / 2);
        QTRY_VERIFY(m_plugin->calls.size() > 5);
        const QStringList second = m_plugin->takeCalls();
        QVERIFY(second.size() < 60 && !second.contains(u"read MANY/R0"_s));
        m_list->verticalScrollBar()->setValue(0);
        QCoreApplication::processEvents();
        QCOMPARE(m_plugin->takeCalls(), QStringList()); // they have been read since the last stop
    }

    void openedSectionIsReadOnlyWhilePaused()
    {
        show({Timer, Uart});
        m_widget->update();
        m_plugin->takeCalls();
        m_widget->setPaused(false);
        open(u"TIMER"_s);
        QCoreApplication::processEvents();
        QCOMPARE(m_plugin->takeCalls(), QStringList());
        m_widget->setPaused(true);
        open(u"UART"_s);
        QTRY_COMPARE(m_plugin->calls.size(), 4);
    }

    void writePassesTheNameOfTheRegisterAsPeripheral()
    {
        show({Timer, Uart});
        open(u"TIMER"_s);
        const QSignalSpy written(m_widget.get(), &DebugPane::doUpdate);
        enter(u"LOAD"_s, u"0x1234"_s);
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"write LOAD/LOAD=1234"_s)); // and no read
        QCOMPARE(changed(), u"LOAD"_s);
        QCOMPARE(written.size(), 1);
    }

    void widthIsThatOfTheRegisterAnd16WithoutOne_data()
    {
        QTest::addColumn<int>("bits");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0 << u"0xCDEF"_s;
        QTest::newRow("negative") << -5 << u"0xCDEF"_s;
        QTest::newRow("8") << 8 << u"0xEF"_s;
        QTest::newRow("32") << 32 << u"0x89ABCDEF"_s;
        QTest::newRow("64") << 64 << u"0x89ABCDEF"_s;
    }

    void widthIsThatOfTheRegisterAnd16WithoutOne()
    {
        QFETCH(int, bits);
        show({{u"P"_s, {{u"R"_s, bits, false}}}});
        m_plugin->values[u"R"_s] = 0x89abcdef;
        m_widget->update();
        QTEST(row(u"R"_s)->text(1), "text");
    }

    void toolTipIsTheDescription()
    {
        show({Timer, Uart});
        open(u"TIMER"_s);
        m_plugin->descriptions = {{u"TIMER/"_s, u"A timer"_s}, {u"TIMER/LOAD"_s, u"Its start"_s}};
        QCOMPARE(tip(u"TIMER"_s), u"A timer"_s);
        QCOMPARE(tip(u"LOAD"_s), u"Its start"_s);
        QCOMPARE(tip(u"STATE"_s), u"none"_s);
        QCOMPARE(m_plugin->takeCalls(),
                 (QStringList{u"describe TIMER/"_s, u"describe TIMER/LOAD"_s, u"describe TIMER/STATE"_s}));
    }

    void topLevelRegisterIsDescribedAsPeripheral()
    {
        show({Timer});
        m_plugin->descriptions = {{u"LOAD/"_s, u"Its start"_s}};
        QCOMPARE(tip(u"LOAD"_s), u"Its start"_s);
    }

    void toolTipGoesWithItsInterface()
    {
        show({Timer});
        m_widget->setPeripherals(nullptr);
        QCOMPARE(m_widget->text(), QString());
        m_plugin.reset();
        QCOMPARE(m_alive, 0);
    }

    void writeWithoutInterfaceIsReported()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"item && m_peripherals\""_s));
        m_widget->setRegister(nullptr);
    }

    // Fields

    void fieldsStandBelowTheirRegister()
    {
        showFields(LoadFields);
        m_plugin->values[u"LOAD"_s] = 0x00070111;
        m_widget->update();
        open(u"LOAD"_s);
        QCOMPARE(m_widget->text(), u"LOAD = 0x00070111\n"
                                   "  ENABLE [0] = On (1)\n  MODE [5:4] = Periodic (1)\n"
                                   "  COUNT [31:16] = 0x0007\n  BUSY [8] = 0x1\n"
                                   "STATE = 0x00\n"_s);
        QCOMPARE(changed(), u"LOAD ENABLE [0] MODE [5:4] COUNT [31:16] BUSY [8]"_s);
        m_plugin->values[u"LOAD"_s] = 0x00080111;
        m_widget->update();
        QCOMPARE(changed(), u"LOAD COUNT [31:16]"_s);
    }

    void valueWithoutNameIsShownAsNumber()
    {
        showFields(LoadFields);
        m_plugin->values[u"LOAD"_s] = 0x30;
        m_widget->update();
        QCOMPARE(row(u"MODE [5:4]"_s)->text(1), u"0x3"_s);
        m_plugin->values[u"LOAD"_s] = 0x10;
        m_widget->update();
        QCOMPARE(row(u"MODE [5:4]"_s)->text(1), u"Periodic (1)"_s);
    }

    void fieldIsWrittenIntoTheValueOfItsRegister()
    {
        showFields(LoadFields);
        m_widget->update();
        open(u"LOAD"_s);
        m_plugin->values[u"LOAD"_s] = 0xffff0001; // changed by the device
        m_plugin->takeCalls();
        choose(u"MODE [5:4]"_s, 1);
        QCOMPARE(m_plugin->takeCalls(), (QStringList{u"read /LOAD"_s, u"write LOAD/LOAD=ffff0011"_s, u"read /LOAD"_s}));
        enter(u"COUNT [31:16]"_s, u"0x12"_s);
        QCOMPARE(m_plugin->values.value(u"LOAD"_s), 0x00120011u);
        QCOMPARE(row(u"LOAD"_s)->text(1), u"0x00120011"_s);
        QVERIFY(row(u"COUNT [31:16]"_s)->isChanged());
    }

    void readOnlyFieldHasNoEditor()
    {
        showFields(LoadFields);
        open(u"LOAD"_s);
        click(u"BUSY [8]"_s);
        QVERIFY(!row(u"BUSY [8]"_s)->isEditing());
    }

    void writtenRegisterShowsItsFields()
    {
        showFields(LoadFields);
        enter(u"LOAD"_s, u"0x50001"_s);
        QCOMPARE(row(u"COUNT [31:16]"_s)->text(1), u"0x0005"_s);
    }

    void otherBitsAreZerosWhereOnesClear()
    {
        PeripheralRegisterDetails details = LoadFields;
        details.onesClear = true;
        showFields(details);
        m_plugin->values[u"LOAD"_s] = 0x131;
        m_widget->update();
        open(u"LOAD"_s);
        m_plugin->takeCalls();
        choose(u"ENABLE [0]"_s, 0);
        choose(u"MODE [5:4]"_s, 1);
        QCOMPARE(m_plugin->takeCalls().filter(u"write"_s),
                 (QStringList{u"write LOAD/LOAD=0"_s, u"write LOAD/LOAD=10"_s}));
        QCOMPARE(row(u"LOAD"_s)->text(1), u"0x00000121"_s);
    }

    void registerThatChangesWhenReadIsReadOnRequestOnly()
    {
        PeripheralRegisterDetails details = LoadFields;
        details.readingChanges = true;
        showFields(details);
        m_plugin->values[u"LOAD"_s] = 0x11;
        m_widget->update();
        open(u"LOAD"_s);
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"read /STATE"_s));
        QCOMPARE(row(u"LOAD"_s)->text(1), u"not read"_s);
        QCOMPARE(row(u"ENABLE [0]"_s)->text(1), u"not read"_s);
        PopupMenu *menu = rightClick(u"ENABLE [0]"_s);
        QVERIFY(menu);
        QCOMPARE(menu->actions().constFirst()->text(), u"Read now"_s);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"read now /LOAD"_s));
        QCOMPARE(row(u"LOAD"_s)->text(1), u"0x00000011"_s);
        QCOMPARE(row(u"ENABLE [0]"_s)->text(1), u"On (1)"_s);
        choose(u"ENABLE [0]"_s, 0);
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"write LOAD/LOAD=10"_s));
        QVERIFY(!rightClick(u"STATE"_s));
    }

    void unreadRegisterIsWrittenAsTyped_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("call");
        QTest::newRow("a letter") << u"0x41"_s << u"write LOAD/LOAD=41"_s;
        QTest::newRow("zero") << u"0"_s << u"write LOAD/LOAD=0"_s;
    }

    void unreadRegisterIsWrittenAsTyped()
    {
        QFETCH(QString, typed);
        PeripheralRegisterDetails details = LoadFields;
        details.readingChanges = true;
        showFields(details);
        m_widget->update();
        m_plugin->takeCalls();
        click(u"LOAD"_s);
        QTest::keyClicks(row(u"LOAD"_s)->editor()->findChild<QLineEdit *>(), typed); // and nothing is selected before
        QTest::keyClick(row(u"LOAD"_s)->editor()->findChild<QLineEdit *>(), Qt::Key_Return);
        QTEST(m_plugin->takeCalls().value(0), "call");
        QCOMPARE(row(u"COUNT [31:16]"_s)->text(1), u"0x0000"_s);
    }

    void fieldBesideUnreadBitsCannotBeWritten()
    {
        PeripheralRegisterDetails details = LoadFields;
        details.readingChanges = true;
        showFields(details);
        m_widget->update();
        open(u"LOAD"_s);
        click(u"COUNT [31:16]"_s);
        QVERIFY(!row(u"COUNT [31:16]"_s)->isEditing());
        m_plugin->values[u"LOAD"_s] = 0x11;
        m_widget->readNow(row(u"LOAD"_s));
        m_plugin->takeCalls();
        enter(u"COUNT [31:16]"_s, u"0x2"_s);
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"write LOAD/LOAD=20011"_s));
    }

    void fieldOfAnUnreadRegisterIsWrittenWhereNoOtherBitsMatter()
    {
        PeripheralRegisterDetails details = LoadFields;
        details.readingChanges = true;
        details.onesClear = true;
        showFields(details);
        m_widget->update();
        open(u"LOAD"_s);
        m_plugin->takeCalls();
        choose(u"ENABLE [0]"_s, 0); // the value that the row would have without a read
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"write LOAD/LOAD=0"_s));
        showFields({{{u"ALL"_s, 0, 32, true, true, {}, {}}}, true, false});
        m_widget->update();
        open(u"LOAD"_s);
        m_plugin->takeCalls();
        enter(u"ALL [31:0]"_s, u"0"_s);
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"write LOAD/LOAD=0"_s));
    }

    void fieldThatCannotBeReadHasNoValue()
    {
        PeripheralRegisterDetails details = LoadFields;
        details.fields[1].readable = false; // MODE
        showFields(details);
        m_plugin->values[u"LOAD"_s] = 0x31;
        m_widget->update();
        open(u"LOAD"_s);
        QCOMPARE(row(u"MODE [5:4]"_s)->text(1), u"write only"_s);
        m_plugin->takeCalls();
        enter(u"COUNT [31:16]"_s, u"0x2"_s);
        QCOMPARE(m_plugin->takeCalls().filter(u"write"_s), QStringList(u"write LOAD/LOAD=20001"_s)); // MODE gets zeros
        choose(u"MODE [5:4]"_s, 0);
        QCOMPARE(m_plugin->takeCalls().filter(u"write"_s), QStringList(u"write LOAD/LOAD=20001"_s));
        QCOMPARE(row(u"MODE [5:4]"_s)->text(1), u"write only"_s);
    }

    void registerWithoutReadableFieldsIsNotRead()
    {
        showFields({{{u"KEY"_s, 0, 16, false, true, {}, {}}, {u"GO"_s, 16, 1, false, true, {}, {}}}, false, false});
        m_widget->update();
        open(u"LOAD"_s);
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"read /STATE"_s));
        QCOMPARE(row(u"LOAD"_s)->text(1), u"write only"_s);
        enter(u"KEY [15:0]"_s, u"0x55aa"_s);
        enter(u"GO [16]"_s, u"1"_s);
        QCOMPARE(m_plugin->takeCalls(), (QStringList{u"write LOAD/LOAD=55aa"_s, u"write LOAD/LOAD=155aa"_s}));
        QCOMPARE(row(u"LOAD"_s)->text(1), u"0x000155AA"_s); // what was written
    }

    void registerThatCannotBeReadIsWrittenOnly_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("a number") << u"0x41"_s << u"0x00000041"_s;
        QTest::newRow("zero") << u"0"_s << u"0x00000000"_s;
    }

    void registerThatCannotBeReadIsWrittenOnly()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        showFields({{}, true, false, false}); // its being sensitive does not matter
        m_plugin->values[u"LOAD"_s] = 0x99;
        m_widget->update();
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"read /STATE"_s));
        QCOMPARE(row(u"LOAD"_s)->text(1), u"write only"_s);
        QVERIFY(!rightClick(u"LOAD"_s));
        enter(u"LOAD"_s, typed);
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"write LOAD/LOAD="_s + typed.section(u'x', -1)));
        QCOMPARE(row(u"LOAD"_s)->text(1), shown); // what was written
        m_widget->update();
        QCOMPARE(m_plugin->takeCalls(), QStringList(u"read /STATE"_s));
    }

    void fieldsOfARegisterThatCannotBeReadAreNotRead()
    {
        PeripheralRegisterDetails details = LoadFields;
        details.readable = false;
        showFields(details);
        m_plugin->values[u"LOAD"_s] = 0x99;
        m_widget->update();
        open(u"LOAD"_s);
        QCOMPARE(row(u"COUNT [31:16]"_s)->text(1), u"write only"_s);
        m_plugin->takeCalls();
        enter(u"COUNT [31:16]"_s, u"0x2"_s);
        choose(u"ENABLE [0]"_s, 1);
        QCOMPARE(m_plugin->takeCalls(), (QStringList{u"write LOAD/LOAD=20000"_s, u"write LOAD/LOAD=20001"_s}));
    }

    void fieldIsTakenBackIfItsRegisterCannotBeRead()
    {
        showFields(LoadFields);
        m_plugin->values[u"LOAD"_s] = 0x50001;
        m_widget->update();
        m_widget->update();
        open(u"LOAD"_s);
        const QSignalSpy written(m_widget.get(), &DebugPane::doUpdate);
        m_plugin->onCall = throwError;
        expectException("IPeripherals::value");
        enter(u"COUNT [31:16]"_s, u"0x7"_s);
        QCOMPARE(row(u"COUNT [31:16]"_s)->text(1), u"0x0005"_s);
        QCOMPARE(changed(), QString());
        QCOMPARE(written.size(), 0);
    }

    void fieldHasItsOwnToolTip()
    {
        showFields(LoadFields);
        open(u"LOAD"_s);
        QVERIFY(tip(u"ENABLE [0]"_s).contains(u"Starts it"_s));
        QCOMPARE(m_plugin->takeCalls(), QStringList());
    }

    void fieldsBelowSectionsAppearWhenTheSectionIsOpened()
    {
        m_plugin->offersFields = true;
        m_plugin->detailsOf.insert(u"LOAD"_s, LoadFields);
        show({Timer, Uart});
        QVERIFY(!row(u"ENABLE [0]"_s));
        m_widget->update();
        open(u"TIMER"_s);
        QVERIFY(row(u"ENABLE [0]"_s));
        row(u"TIMER"_s)->setOpen(false);
        open(u"TIMER"_s);
        QCOMPARE(row(u"LOAD"_s)->childCount(), 4);
    }

    void sectionOpensByKeyAndMouse()
    {
        m_plugin->offersFields = true;
        m_plugin->detailsOf.insert(u"LOAD"_s, LoadFields);
        show({Timer, Uart});
        m_list->setFocus();
        m_list->setCurrentItem(row(u"TIMER"_s));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QVERIFY(row(u"TIMER"_s)->isOpen());
        const PropertyItem *load = row(u"LOAD"_s);
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, load->openBox(m_list->visualItemRect(load)).center());
        QVERIFY(load->isOpen());
    }

    void sectionMayOpenWhileARowIsEdited()
    {
        m_plugin->offersFields = true;
        m_plugin->detailsOf.insert(u"LOAD"_s, LoadFields);
        show({Uart, Timer});
        open(u"UART"_s);
        click(u"DATA"_s);
        QVERIFY(row(u"DATA"_s)->isEditing());
        open(u"TIMER"_s);
        QVERIFY(row(u"ENABLE [0]"_s));
        QVERIFY(row(u"DATA"_s)->isEditing());
    }

    // Plug-ins that misbehave

    void oddFieldsAreShown()
    {
        showFields({{{u"low"_s, -1, 4, true, true, {}, {}},
                     {u"high"_s, 32, 4, true, true, {}, {}},
                     {u"wide"_s, 4, 99, true, true, {}, {}},
                     {u"none"_s, 0, 0, true, true, {{7, u"same"_s}, {7, u"same"_s}}, {}}},
                    false,
                    false});
        m_plugin->values[u"LOAD"_s] = 0xf0000001;
        m_widget->update();
        open(u"LOAD"_s);
        QCOMPARE(m_widget->text(), u"LOAD = 0xF0000001\n  wide [31:4] = 0xF000000\n  none [0] = 0x1\nSTATE = 0x00\n"_s);
    }

    void sameNamesAndManyRegistersAreShown()
    {
        PeripheralInfo many{u"P"_s, {}};
        for (int i = 0; i < 4096; ++i)
            many.registers += {u"R"_s, i, false};
        show({many, many});
        open(u"P"_s);
        m_widget->update();
        QCOMPARE(m_list->topLevelItemCount(), 2);
    }

    void exceptionEndsTheUpdate()
    {
        show({Timer});
        m_plugin->onCall = throwError;
        expectException("IPeripherals::value");
        m_widget->update();
        QCOMPARE(m_plugin->takeCalls().size(), 1);
    }

    void exceptionInDetailsEndsTheSearchForFields()
    {
        m_plugin->onDetails = throwError;
        expectException("IPeripheralFields::details");
        showFields(LoadFields);
        QCOMPARE(m_widget->text(), u"LOAD = 0x00000000\nSTATE = 0x00\n"_s);
    }

    void pluginMayCallBack_data()
    {
        QTest::addColumn<int>("call");
        QTest::newRow("update") << 0;
        QTest::newRow("release") << 1;
        QTest::newRow("other peripherals") << 2;
        QTest::newRow("delete the pane") << 3;
    }

    void pluginMayCallBack()
    {
        QFETCH(int, call);
        showFields(LoadFields);
        bool isCalled = false;
        m_plugin->onCall = [this, call, &isCalled] {
            if (std::exchange(isCalled, true))
                return;
            if (call == 0)
                m_widget->update();
            else if (call == 1)
                m_widget->releaseEnvironment();
            else if (call == 2)
                m_widget->setPeripherals(m_plugin.get());
            else
                m_widget.reset();
        };
        m_widget->update();
        QVERIFY(isCalled);
        if (!m_widget)
            return;
        m_widget->setPeripherals(m_plugin.get());
        isCalled = false;
        open(u"LOAD"_s);
        m_widget->setRegister(row(u"COUNT [31:16]"_s));
        QVERIFY(isCalled);
        m_plugin->onCall = nullptr;
    }

    void pluginMayDeleteThePaneWhileItIsAskedForFields()
    {
        m_plugin->onDetails = [this] { m_widget.reset(); };
        showFields(LoadFields);
        QVERIFY(!m_widget);
    }

    void listThatBecomesKnownLaterIsShown()
    {
        show({});
        m_plugin->infos = {Timer};
        m_widget->update();
        QCOMPARE(m_widget->text(), u"LOAD = 0x00000000\nSTATE = 0x00\n"_s);
    }
};

QTEST_MAIN(PeripheralWidgetTest)
#include "tst_peripheralwidget.moc"
