#include "interfaceobject.h"
#include "popupmenu.h"
#include "propertyflagsitem.h"
#include "propertylonghexitem.h"
#include "propertymultiformatitem.h"
#include "registerlist.h"
#include "registerwidget.h"
#include <QApplication>
#include <QContextMenuEvent>
#include <QHash>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
constexpr uint AllFormats = IRegisters::SignedDecimal | IRegisters::UnsignedDecimal | IRegisters::Hexadecimal
                            | IRegisters::Binary | IRegisters::Fractional;

class FakeRegisters : public InterfaceObject<IRegisters>
{
public:
    explicit FakeRegisters(int *alive) : m_alive(alive) { ++*alive; }
    ~FakeRegisters() override { --*m_alive; }

    QList<RegisterInfo> registers() override { return infos; }
    uint value(const QString &name, int word) override
    {
        ++reads;
        if (onRead)
            onRead();
        return words.value(name).value(word);
    }
    void setValue(const QString &name, uint value, int word) override
    {
        if (onWrite)
            onWrite();
        writes += u"%1[%2]=%3"_s.arg(name).arg(word).arg(QString::number(value, 16));
        words[name][word] = value;
    }

    QList<RegisterInfo> infos;
    QHash<QString, QMap<int, uint>> words; ///< values by the number of the word
    QStringList writes;
    int reads = 0;
    std::function<void()> onRead;
    std::function<void()> onWrite;

private:
    int *m_alive;
};

RegisterInfo number(const QString &name, uint width, const QString &group = {}, uint formats = AllFormats)
{
    return {name, width, {}, IRegisters::Hexadecimal, formats, group, false};
}
} // namespace

class RegisterWidgetTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RegisterWidget> m_widget;
    RegisterList *m_list = nullptr;
    InterfacePtr<FakeRegisters> m_plugin;
    int m_alive = 0; ///< fake plug-ins

    void show(const QList<RegisterInfo> &infos)
    {
        m_plugin->infos = infos;
        m_widget->setRegisters(m_plugin.get());
    }

    template <typename Row = PropertyItem>
    Row *row(const QString &name) const
    {
        for (QTreeWidgetItemIterator it(m_list); *it; ++it) {
            auto *item = static_cast<PropertyItem *>(*it);
            if (item->name() == name)
                return qobject_cast<Row *>(item);
        }
        return nullptr;
    }
    QStringList changed() const
    {
        QStringList names;
        for (QTreeWidgetItemIterator it(m_list); *it; ++it) {
            if (auto *item = static_cast<PropertyItem *>(*it); item->isChanged())
                names += item->name();
        }
        return names;
    }

    void enter(const QString &name, const QString &text)
    {
        PropertyItem *item = row(name);
        const QRect cell = m_list->visualItemRect(item);
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {},
                          QPoint(m_list->columnViewportPosition(1) + 5, cell.center().y()));
        auto *edit = item->editor()->findChild<QLineEdit *>();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }

    /// Presses the right button on a row. The menu, null if none was opened.
    PopupMenu *rightClick(const QString &name)
    {
        QTest::ignoreMessage(QtDebugMsg, qPrintable(name));
        const QPoint point = m_list->visualItemRect(row(name)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, m_list->viewport()->mapToGlobal(point));
        QApplication::sendEvent(m_list->viewport(), &event);
        return qobject_cast<PopupMenu *>(QApplication::activePopupWidget());
    }
    static QString texts(const QMenu &menu)
    {
        QStringList texts;
        for (const QAction *action : menu.actions())
            texts += action->text() + (action->isChecked() ? u"*"_s : QString());
        return texts.join(u", "_s);
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
        m_plugin.reset(new FakeRegisters(&m_alive));
        m_widget = std::make_unique<RegisterWidget>();
        m_list = m_widget->findChild<RegisterList *>();
        m_widget->resize(400, 400);
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
        QCOMPARE(m_list->headerItem()->text(0), u"Register"_s);
        QCOMPARE(m_list->headerItem()->text(1), u"Value"_s);
        QCOMPARE(m_list->treeStepSize(), 0);
        QCOMPARE(m_list->accessibleName(), u"Registers"_s);
        QCOMPARE(m_widget->text(), QString());
    }

    void rowsStandInTheOrderOfTheRegistersBelowTheirGroups()
    {
        show({number(u"pc"_s, 32), number(u"r0"_s, 32, u"General"_s), number(u"r1"_s, 32, u"General"_s),
              number(u"sp"_s, 16), number(u"s0"_s, 8, u"Float"_s), number(u"r2"_s, 8, u"General"_s),
              number(u"end"_s, 12)});
        QCOMPARE(m_widget->text(), u"pc = 0x00000000\n"
                                   "General = \n  r0 = 0x00000000\n  r1 = 0x00000000\n  r2 = 0x00\n"
                                   "end = 0x000\n"
                                   "sp = 0x0000\n"
                                   "Float = \n  s0 = 0x00\n"_s);
    }

    void registersHaveRowsOfTheirKind()
    {
        show({number(u"narrow"_s, 32), number(u"wide"_s, 33), {u"flags"_s, 4, u"ZNCV"_s, 4, 4, {}, false}});
        QVERIFY(row<PropertyMultiFormatItem>(u"narrow"_s));
        QVERIFY(row<PropertyLongHexItem>(u"wide"_s));
        QVERIFY(row<PropertyFlagsItem>(u"flags"_s));
        m_plugin->words[u"flags"_s][0] = 10;
        m_plugin->words[u"wide"_s] = {{0, 0x89abcdef}, {1, 1}};
        m_widget->update();
        QCOMPARE(m_widget->text(), u"narrow = 0x00000000\nwide = 0x189ABCDEF\nflags = Z-C-\n"_s);
    }

    void defaultFormatIsShown_data()
    {
        QTest::addColumn<uint>("bit");
        QTest::addColumn<int>("format");
        QTest::newRow("signed") << 1u << 0;
        QTest::newRow("unsigned") << 2u << 1;
        QTest::newRow("hexadecimal") << 4u << 3;
        QTest::newRow("binary") << 8u << 4;
        QTest::newRow("fractional") << 16u << 2;
        QTest::newRow("none") << 0u << 3;
        QTest::newRow("two") << 3u << 3;
        QTest::newRow("unknown") << 32u << 3;
    }

    void defaultFormatIsShown()
    {
        QFETCH(uint, bit);
        show({{u"r"_s, 8, {}, bit, AllFormats, {}, false}});
        QTEST(row<PropertyMultiFormatItem>(u"r"_s)->format(), "format");
    }

    void changeIsMarkedUntilTheNextUpdate()
    {
        show({number(u"r0"_s, 32), number(u"r1"_s, 64), number(u"r2"_s, 8)});
        m_plugin->words[u"r0"_s][0] = 5;
        m_plugin->words[u"r1"_s][1] = 5;
        m_widget->update();
        QCOMPARE(changed(), (QStringList{u"r0"_s, u"r1"_s}));
        m_widget->update();
        QCOMPARE(changed(), QStringList());
        m_plugin->words[u"r2"_s][0] = 1;
        m_widget->update();
        QCOMPARE(changed(), QStringList(u"r2"_s));
    }

    void groupRowsAreReadByTheirNames()
    {
        show({number(u"r0"_s, 32, u"General"_s)});
        m_widget->update();
        QCOMPARE(m_plugin->reads, 2);
        QCOMPARE(changed(), QStringList());
        m_plugin->words[u"General"_s][0] = 7;
        m_widget->update();
        QCOMPARE(changed(), QStringList(u"General"_s));
    }

    void longRegisterReadsAWordMoreThanItHas()
    {
        show({number(u"q0"_s, 128)});
        m_plugin->words[u"q0"_s] = {{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}};
        m_widget->update();
        QCOMPARE(m_plugin->reads, 5);
        QCOMPARE(row(u"q0"_s)->text(1), u"0x00000004000000030000000200000001"_s);
    }

    void enteredValueIsWrittenAndStaysMarked()
    {
        show({number(u"r0"_s, 16), number(u"r1"_s, 16)});
        const QSignalSpy written(m_widget.get(), &DebugPane::doUpdate);
        enter(u"r0"_s, u"-1"_s);
        QCOMPARE(m_plugin->writes, QStringList(u"r0[0]=ffffffff"_s));
        QCOMPARE(m_widget->text(), u"r0 = 0xFFFF\nr1 = 0x0000\n"_s);
        QCOMPARE(changed(), QStringList(u"r0"_s));
        QCOMPARE(written.size(), 1);
    }

    void doubtfulEntryIsReported_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("message");
        QTest::newRow("number") << u"0x44"_s << u"r[0]=44"_s << QString();
        QTest::newRow("negative") << u"-1"_s << u"r[0]=ffffffff"_s << QString();
        QTest::newRow("behind the old text")
            << u"0x00000x44"_s << u"r[0]=0"_s << u"'0x00000x44' is not a number: r was set to 0."_s;
        QTest::newRow("too wide") << u"0x12345"_s << u"r[0]=12345"_s << u"'0x12345' is wider than the 16 bits of r."_s;
    }

    void doubtfulEntryIsReported()
    {
        QFETCH(QString, entry);
        QFETCH(QString, message);
        m_plugin->words[u"r"_s][0] = 1;
        show({number(u"r"_s, 16)});
        m_widget->update();
        const QSignalSpy messages(m_widget.get(), &DebugPane::message);
        enter(u"r"_s, entry);
        QTEST(m_plugin->writes.join(u' '), "written");
        QCOMPARE(messages.isEmpty() ? QString() : messages.first().first().toString(), message);
    }

    void keysThatNoValueContainsAreReportedAndChangeNothing_data()
    {
        QTest::addColumn<uint>("width");
        QTest::addColumn<QString>("message");
        QTest::newRow("narrow") << 16u << u"r takes a number like 26, -26, 0x1A, 0b11010 or 0.5."_s;
        QTest::newRow("wide") << 64u << u"r takes a hexadecimal number like 0x1A."_s;
    }

    void keysThatNoValueContainsAreReportedAndChangeNothing()
    {
        QFETCH(uint, width);
        QFETCH(QString, message);
        m_plugin->words[u"r"_s][0] = 1;
        show({number(u"r"_s, width)});
        m_widget->update();
        m_widget->update(); // nothing has changed since the last one
        const QString before = m_widget->text();
        const QSignalSpy messages(m_widget.get(), &DebugPane::message);
        PropertyItem *item = row(u"r"_s);
        m_list->setCurrentItem(item);
        item->showEditor();
        QTest::keyClicks(item->editor()->findChild<QLineEdit *>(), u"zzz"_s);
        QCOMPARE(messages.size(), 3);
        QCOMPARE(messages.first().first().toString(), message);
        item->acceptEditor();
        QCOMPARE(m_plugin->writes, QStringList());
        QCOMPARE(m_widget->text(), before);
        QCOMPARE(changed(), QStringList());
    }

    void valueIsReadBackAfterAWrite()
    {
        show({number(u"r0"_s, 16), number(u"r1"_s, 16)});
        m_plugin->onWrite = [this] { m_plugin->words[u"r1"_s][0] = 3; };
        enter(u"r0"_s, u"0x10"_s);
        QCOMPARE(m_widget->text(), u"r0 = 0x0010\nr1 = 0x0003\n"_s);
        QCOMPARE(changed(), (QStringList{u"r0"_s, u"r1"_s}));
    }

    void paneDoesNotReadAgainWhenItReportsItsOwnWrite()
    {
        show({number(u"r0"_s, 16), number(u"r1"_s, 16)});
        connect(m_widget.get(), &DebugPane::doUpdate, m_widget.get(), &DebugPane::update); // as its holder does
        m_plugin->onWrite = [this] { m_plugin->words[u"r1"_s][0] = 3; };
        enter(u"r0"_s, u"1"_s);
        QCOMPARE(changed(), (QStringList{u"r0"_s, u"r1"_s}));
        QCOMPARE(m_plugin->reads, 2);
    }

    void longRegisterIsWrittenWordByWord_data()
    {
        QTest::addColumn<uint>("width");
        QTest::addColumn<QString>("writes");
        QTest::newRow("33 bits") << 33u << u"q[0]=23456789 q[1]=1"_s;
        QTest::newRow("40 bits") << 40u << u"q[0]=23456789 q[1]=1"_s;
        QTest::newRow("64 bits") << 64u << u"q[0]=23456789 q[1]=1"_s;
        QTest::newRow("72 bits") << 72u << u"q[0]=23456789 q[1]=1 q[2]=0"_s;
    }

    void longRegisterIsWrittenWordByWord()
    {
        QFETCH(uint, width);
        show({number(u"q"_s, width)});
        enter(u"q"_s, u"0x123456789"_s);
        QTEST(m_plugin->writes.join(u' '), "writes");
        QCOMPARE(changed(), QStringList(u"q"_s));
    }

    void flagsAreWrittenAsTheyAreSet()
    {
        show({{u"flags"_s, 4, u"ZNCV"_s, 4, 4, {}, false}});
        static_cast<PropertyFlagsItem *>(row(u"flags"_s))->flagsDialogChanged(5);
        QCOMPARE(m_plugin->writes, QStringList(u"flags[0]=5"_s));
        QCOMPARE(m_widget->text(), u"flags = -N-V\n"_s);
    }

    void bitsWithoutNameDoNotMarkFlagsAtEachUpdate()
    {
        show({{u"flags"_s, 4, u"ZNCV"_s, 4, 4, {}, false}});
        m_plugin->words[u"flags"_s][0] = 0xf0;
        m_widget->update();
        QCOMPARE(changed(), QStringList());
    }

    void readOnlyRegisterHasNoEditor()
    {
        show({{u"r0"_s, 8, {}, 4, AllFormats, {}, true}});
        m_list->setCurrentItem(row(u"r0"_s));
        row(u"r0"_s)->showEditor();
        QVERIFY(!row(u"r0"_s)->isEditing());
    }

    void menuHasTheAvailableFormatsInOrder()
    {
        show({number(u"all"_s, 8), number(u"two"_s, 8, {}, IRegisters::Fractional | IRegisters::UnsignedDecimal)});
        PopupMenu *menu = rightClick(u"all"_s);
        QVERIFY(menu);
        QCOMPARE(texts(*menu), u"Signed Decimal, Unsigned Decimal, Hexadecimal*, Binary, Fractional"_s);
        QList<int> ids;
        for (int i = 0; i < 5; ++i)
            ids += menu->idAt(i);
        QCOMPARE(ids, (QList<int>{0, 1, 3, 4, 2}));
        menu->close();
        menu = rightClick(u"two"_s);
        QVERIFY(menu);
        QCOMPARE(texts(*menu), u"Unsigned Decimal, Fractional"_s);
        menu->close();
    }

    void chosenFormatIsShownAndKept()
    {
        show({number(u"r0"_s, 8)});
        m_plugin->words[u"r0"_s][0] = 0xff;
        m_widget->update();
        PopupMenu *menu = rightClick(u"r0"_s);
        QVERIFY(menu);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(m_widget->text(), u"r0 = -1\n"_s);
        m_plugin->infos += number(u"r1"_s, 8);
        m_widget->update();
        QCOMPARE(m_widget->text(), u"r0 = -1\nr1 = 0x00\n"_s);
    }

    void menuKeyOpensTheMenuOfTheCurrentRow()
    {
        show({number(u"r0"_s, 8)});
        m_list->setFocus();
        m_list->setCurrentItem(row(u"r0"_s));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTest::ignoreMessage(QtDebugMsg, "r0");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F10, Qt::ShiftModifier);
        auto *menu = qobject_cast<PopupMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        menu->close();
    }

    void rowWithoutAChoiceHasNoMenu_data()
    {
        QTest::addColumn<RegisterInfo>("info");
        QTest::newRow("one format") << number(u"r"_s, 8, {}, IRegisters::Binary);
        QTest::newRow("no format") << number(u"r"_s, 8, {}, 0);
        QTest::newRow("long") << number(u"r"_s, 64);
        QTest::newRow("flags") << RegisterInfo{u"r"_s, 4, u"ZNCV"_s, 4, AllFormats, {}, false};
    }

    void rowWithoutAChoiceHasNoMenu()
    {
        QFETCH(RegisterInfo, info);
        show({info});
        QVERIFY(!rightClick(u"r"_s));
    }

    void rightButtonBelowTheRowsDoesNothing()
    {
        show({number(u"r0"_s, 8)});
        const QPoint point(10, m_list->viewport()->height() - 5);
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, m_list->viewport()->mapToGlobal(point));
        QApplication::sendEvent(m_list->viewport(), &event);
        QVERIFY(!QApplication::activePopupWidget());
    }

    void menuOfARowThatIsGoneDoesNothing()
    {
        show({number(u"r0"_s, 8)});
        PopupMenu *menu = rightClick(u"r0"_s);
        QVERIFY(menu);
        m_widget->releaseEnvironment();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(m_widget->text(), QString());
    }

    void anotherInterfaceReplacesTheRows()
    {
        show({number(u"r0"_s, 8, u"G"_s)});
        const InterfacePtr<FakeRegisters> other(new FakeRegisters(&m_alive));
        other->infos = {number(u"a"_s, 8, u"G"_s)};
        m_widget->setRegisters(other.get());
        QCOMPARE(m_widget->text(), u"G = \n  a = 0x00\n"_s);
        m_widget->setRegisters(nullptr);
        QCOMPARE(m_widget->text(), QString());
        m_widget->update();
        QCOMPARE(other->reads, 0);
    }

    void releasedPaneKeepsNoReference()
    {
        show({number(u"r0"_s, 8)});
        m_plugin.reset();
        QCOMPARE(m_alive, 1);
        m_widget->releaseEnvironment();
        QCOMPARE(m_alive, 0);
    }

    void writeWithoutInterfaceIsReported()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"item && m_registers\""_s));
        m_widget->setRegister(nullptr);
    }

    // Plug-ins that misbehave

    void oddRegistersAreShown()
    {
        show({number(u"same"_s, 8),
              number(u"same"_s, 16),
              number({}, 0),
              number(u"huge"_s, 0xffffffff),
              {u"bits"_s, 4, QString(100, u'x'), 77, 0xffffffff, {}, false}});
        m_plugin->words[u"same"_s][0] = 0x1234;
        m_widget->update();
        QCOMPARE(m_widget->text().section(u'\n', 0, 2), u"same = 0x34\nsame = 0x1234\n = 0x0"_s);
        QVERIFY(row(u"huge"_s)->text(1).startsWith("0x0"_L1));
    }

    void fourThousandRegistersAreShown()
    {
        QList<RegisterInfo> infos;
        for (int i = 0; i < 4096; ++i)
            infos += number(u"r%1"_s.arg(i), 32, u"g%1"_s.arg(i % 7));
        show(infos);
        m_widget->update();
        QCOMPARE(m_plugin->reads, 4096 + 7);
        QCOMPARE(m_list->topLevelItemCount(), 7);
    }

    void exceptionEndsTheUpdate()
    {
        show({number(u"r0"_s, 8), number(u"r1"_s, 8)});
        m_plugin->onRead = throwError;
        expectException("IRegisters::value");
        m_widget->update();
        QCOMPARE(m_plugin->reads, 1);
        m_plugin->onRead = nullptr;
        m_widget->update();
        QCOMPARE(m_plugin->reads, 3);
    }

    void exceptionInAWriteEndsIt()
    {
        show({number(u"q"_s, 128)});
        m_plugin->onWrite = throwError;
        expectException("IRegisters::setValue");
        enter(u"q"_s, u"0x1"_s);
        QCOMPARE(m_plugin->writes, QStringList());
    }

    void pluginMayCallBackWhileItIsRead_data()
    {
        QTest::addColumn<int>("call");
        QTest::newRow("update") << 0;
        QTest::newRow("release") << 1;
        QTest::newRow("other registers") << 2;
        QTest::newRow("delete the pane") << 3;
    }

    void pluginMayCallBackWhileItIsRead()
    {
        QFETCH(int, call);
        show({number(u"r0"_s, 8), number(u"q"_s, 64), number(u"r1"_s, 8)});
        m_plugin->onRead = [this, call] {
            if (call == 0)
                m_widget->update();
            else if (call == 1)
                m_widget->releaseEnvironment();
            else if (call == 2)
                m_widget->setRegisters(m_plugin.get());
            else
                m_widget.reset();
        };
        m_widget->update();
        QCOMPARE(m_plugin->reads, call == 0 ? 5 : 1);
        m_plugin->onRead = nullptr;
        if (!m_widget)
            return;
        m_widget->setRegisters(m_plugin.get());
        m_widget->update();
        QCOMPARE(m_widget->text(), u"r0 = 0x00\nq = 0x0000000000000000\nr1 = 0x00\n"_s);
    }

    void pluginMayDeleteThePaneWhileItIsWritten()
    {
        show({number(u"r0"_s, 8)});
        m_plugin->onWrite = [this] { m_widget.reset(); };
        m_widget->setRegister(row(u"r0"_s));
        QCOMPARE(m_plugin->writes, QStringList(u"r0[0]=0"_s));
    }

    void listThatBecomesKnownLaterIsShown()
    {
        show({});
        m_plugin->infos = {number(u"r0"_s, 8)};
        m_plugin->words[u"r0"_s][0] = 1;
        m_widget->update();
        QCOMPARE(m_widget->text(), u"r0 = 0x01\n"_s);
    }
};

QTEST_MAIN(RegisterWidgetTest)
#include "tst_registerwidget.moc"
