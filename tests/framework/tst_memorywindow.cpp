#include "fakememory.h"
#include "imemory64.h"
#include "memoryedit.h"
#include "memorywindow.h"
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {
/// 4 KB of memory above 32 bits, whose bytes are the low ones of their addresses.
class FakeWideMemory : public InterfaceObject<IMemory64>
{
public:
    static constexpr quint64 Low = 0x7FFFFFFDE000;

    QList<MemoryRegion64> regions() override { return {{u"stack"_s, 5, Low, Low + 0xFFF, false, IMemory::Byte}}; }
    int read(int, int, quint64, quint64 *) override { return IMemory::BadPointer; }
    int write(int region, int, quint64 address, quint64 value, bool) override
    {
        calls += u"write(%1, 0x%2, %3)"_s.arg(region).arg(address, 0, 16).arg(value);
        written.insert(address, value);
        return IMemory::Success;
    }
    void readBlock(int region, int, quint64 address, int count, MemoryBlock64 &result) override
    {
        calls += u"readBlock(%1, 0x%2)"_s.arg(region).arg(address, 0, 16);
        result.clear();
        for (quint64 at = address; at < address + quint64(count); ++at)
            result.append({written.value(at, at & 0xFF), IMemory::Success});
    }
    void writeBlock(int, int, quint64, int, MemoryBlock64 &, bool) override {}

    QStringList calls;
    QMap<quint64, quint64> written;
};
} // namespace

class MemoryWindowTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MemoryWindow> m_window;
    InterfacePtr<FakeMemory> m_memory;

    template <typename Widget>
    Widget *control(const char *name) const
    {
        return m_window->findChild<Widget *>(QString::fromLatin1(name));
    }
    MemoryEdit *edit() const { return control<MemoryEdit>("memoryEdit"); }
    QComboBox *addressBox() const { return control<QComboBox>("memoryAddress"); }
    QComboBox *regionBox() const { return control<QComboBox>("memoryRegion"); }
    QPushButton *writeButton() const { return control<QPushButton>("memoryWrite"); }
    QPushButton *readButton() const { return control<QPushButton>("memoryRead"); }
    QScrollBar *scrollBar() const { return control<QScrollBar>("memoryScrollBar"); }

    static MemoryRegion region(const QString &name, int id, uint low, uint high, uint modes = IMemory::Byte,
                               bool readOnly = false)
    {
        return {name, id, 0, 0, low, high, readOnly, modes};
    }

    /// Shows the memory in a window in which lines have room for @p columns cells of @p digits digits and 8 digits of
    /// address, and which is @p lines high.
    void show(int columns = 4, int lines = 4, int digits = 2)
    {
        m_window->show();
        resizeTo(columns, lines, digits);
        m_window->setInterface(m_memory.get());
        m_window->setAutoRead(true);
        m_window->update();
    }
    void resizeTo(int columns, int lines, int digits = 2) const
    {
        const int characters = 3 + 8 + columns * (digits == 2 ? 4 : digits + 1);
        const QFontMetricsF metrics(edit()->font(), edit());
        const QSize wanted(int(std::ceil(characters * metrics.horizontalAdvance(u"X"_s))) + 1,
                           int(std::ceil(metrics.height())) * lines + 1);
        for (int i = 0; i < 3 && edit()->viewport()->size() != wanted; ++i) // the layout has a say in it
            m_window->resize(m_window->size() + wanted - edit()->viewport()->size());
    }
    void setWindow()
    {
        m_window = std::make_unique<MemoryWindow>();
        m_window->setMinimumSize(1, 1);
        m_window->layout()->setSizeConstraint(QLayout::SetNoConstraint);
    }

    QStringList lines() const { return edit()->toPlainText().split(u'\n'); }
    QString address() const { return addressBox()->currentText(); }
    /// The address of the first line.
    QString top() const { return lines().constFirst().section(u' ', 0, 0); }
    void enterAddress(const QString &text) const
    {
        addressBox()->lineEdit()->selectAll();
        QTest::keyClicks(addressBox(), text);
        QTest::keyClick(addressBox(), Qt::Key_Return);
    }
    void choose(const QString &name) const
    {
        const int index = regionBox()->findText(name);
        regionBox()->setCurrentIndex(index);
        Q_EMIT regionBox()->activated(index);
    }
    void typeAt(int para, int index, const QString &keys) const
    {
        edit()->setCursorPosition(para, index);
        QTest::keyClicks(edit(), keys);
    }
    QString calls() const { return m_memory->takeCalls().join(u' '); }
    bool isMarked(int para, int index) const
    {
        QTextCursor cursor(edit()->document()->findBlockByNumber(para));
        cursor.setPosition(cursor.position() + index + 1);
        return cursor.charFormat().foreground().color().hslHue() == 0 && cursor.charFormat().fontUnderline();
    }
    QMenu *popup() const
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5}, edit()->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(edit(), &event);
        return m_window->findChild<QMenu *>(u"memoryMenu"_s);
    }
    static QString textOf(const QMenu *menu)
    {
        QStringList texts;
        for (const QAction *action : menu->actions())
            texts += (action->isChecked() ? u"*"_s : QString()) + action->text();
        return texts.join(u'|');
    }
    static void expect(const char *message, int count = 1)
    {
        for (int i = 0; i < count; ++i)
            QTest::ignoreMessage(QtWarningMsg, message);
    }
    void selectRam(uint low = 0x20000000, uint high = 0x2000FFFF, uint modes = IMemory::Byte)
    {
        m_memory->list = {region(u"RAM"_s, 7, low, high, modes)};
        m_memory->fill(low, 0x200);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_memory.reset(new FakeMemory);
        setWindow();
    }

    void cleanup()
    {
        m_window.reset();
        m_memory.reset();
    }

    // Without anything to show

    void withoutMemoryItShowsNothingAndDoesNothing()
    {
        m_window->show();
        m_window->update();
        m_window->selectRegion();
        m_window->addressChanged();
        m_window->userRefreshDisplay();
        m_window->userUpdateMemory();
        m_window->scrollValueChanged(3);
        m_window->scrollPage(1);
        m_window->selectWord32View();
        m_window->hexChanged(0, 0, 5);
        QCOMPARE(edit()->toPlainText(), QString());
        for (const QWidget *widget : {static_cast<QWidget *>(addressBox()), static_cast<QWidget *>(regionBox()),
                                      static_cast<QWidget *>(writeButton()), static_cast<QWidget *>(readButton())})
            QVERIFY(!widget->isEnabled());
        QVERIFY(edit()->isReadOnly());
        QVERIFY(!popup());
    }

    void noRegionsShowNothing()
    {
        show();
        QCOMPARE(calls(), u"regions() regions()"_s);
        QCOMPARE(edit()->toPlainText(), QString());
        QVERIFY(!readButton()->isEnabled());
        m_window->userRefreshDisplay();
        m_window->resize(600, 400);
        QCOMPARE(calls(), QString());
    }

    void vanishedRegionsLeaveNothingOnTheScreen()
    {
        selectRam();
        show();
        QCOMPARE(lines().size(), 4);
        m_memory->list.clear();
        m_window->update();
        QCOMPARE(edit()->toPlainText(), QString());
        QCOMPARE(address(), QString());
        QVERIFY(!writeButton()->isEnabled());
        typeAt(0, 9, u"5"_s);
        m_window->hexChanged(0, 9, 5);
        m_window->userUpdateMemory();
        selectRam();
        m_window->update();
        QCOMPARE(lines().size(), 4);
        QVERIFY(writeButton()->isEnabled());
    }

    void anotherMemoryReplacesTheFirst()
    {
        selectRam();
        show();
        InterfacePtr<FakeMemory> other(new FakeMemory);
        other->list = {region(u"Other"_s, 1, 0, 0xFF)};
        m_window->setInterface(other.get());
        QCOMPARE(regionBox()->currentText(), u"Other"_s);
        QCOMPARE(m_memory->release(), 0UL); // its last reference
        (void)m_memory.release();
        m_window->setInterface(nullptr);
        QCOMPARE(edit()->toPlainText(), QString());
        QCOMPARE(regionBox()->count(), 0);
    }

    void releasedMemoryIsNotAskedAgain()
    {
        selectRam();
        show();
        m_window->releaseEnvironment();
        QCOMPARE(m_memory->addRef(), 1UL);
        m_memory->release();
        calls();
        m_window->update();
        m_window->userRefreshDisplay();
        m_window->userUpdateMemory();
        scrollBar()->setValue(2);
        QCOMPARE(calls(), QString());
    }

    // What is shown

    void aScreenIsReadInOneBlock()
    {
        selectRam();
        show(4, 3);
        calls();
        m_window->update();
        QCOMPARE(calls(), u"regions() readBlock(7, 1, 0x20000000, 12)"_s);
        QCOMPARE(lines(), (QStringList{u"20000000 00 01 02 03 ...."_s, u"20000004 04 05 06 07 ...."_s,
                                       u"20000008 08 09 0A 0B ...."_s}));
        QCOMPARE(address(), u"0x20000000"_s);
        QCOMPARE(regionBox()->currentText(), u"RAM"_s);
    }

    void bytesHaveTheirCharacters()
    {
        selectRam();
        m_memory->fill(0x20000000, 4, 0x7D);
        show(4, 1);
        QCOMPARE(lines(), QStringList{u"20000000 7D 7E 7F 80 }~\x7F"
                                      "."_s});
    }

    void charactersOfFailedCellsAreThoseOfTheirValues()
    {
        selectRam();
        m_memory->fill(0x20000000, 8, 0x41);
        m_memory->statuses = {{0x20000001, IMemory::NoMemory},
                              {0x20000002, IMemory::Uninitialised},
                              {0x20000003, IMemory::BadPointer},
                              {0x20000004, IMemory::WriteToRom}};
        show(8, 1);
        QCOMPARE(lines(), QStringList{u"20000000 41 ?? 43 ?? ?? 46 47 48 ABCDEFGH"_s});
    }

    void failedCellsAreQuestionMarks()
    {
        selectRam();
        m_memory->statuses = {{0x20000001, IMemory::NoMemory},
                              {0x20000002, IMemory::Uninitialised},
                              {0x20000003, IMemory::BadPointer},
                              {0x20000004, IMemory::WriteToRom}};
        show(8, 1);
        QCOMPARE(lines(), QStringList{u"20000000 00 ?? 02 ?? ?? 05 06 07 ........"_s});
        QVERIFY(!QApplication::activeModalWidget());
    }

    void regionOfOneByteShowsOneLine()
    {
        m_memory->list = {region(u"Port"_s, 3, 0x40, 0x40)};
        m_memory->fill(0x40, 16, 0x41);
        show(4, 5);
        QCOMPARE(lines().size(), 1);
        QVERIFY(lines().constFirst().startsWith(u"40 41"_s));
        QCOMPARE(scrollBar()->maximum(), 0);
    }

    void narrowWindowsHaveFewerColumns()
    {
        selectRam();
        show(16, 2);
        QCOMPARE(lines().constFirst().count(u' '), 17);
        resizeTo(15, 2);
        QCOMPARE(lines().constFirst().count(u' '), 9);
        QCOMPARE(lines().constLast().left(11), u"20000008 08"_s);
        resizeTo(3, 2);
        QCOMPARE(lines().constFirst().count(u' '), 3);
        resizeTo(0, 2);
        QCOMPARE(lines().constFirst().count(u' '), 2);
    }

    void scrollBarStandsForTheWholeRegion()
    {
        selectRam();
        show(4, 4);
        QCOMPARE(scrollBar()->minimum(), 0);
        QCOMPARE(scrollBar()->maximum(), 0xFFFF / 4);
        QCOMPARE(scrollBar()->pageStep(), 4);
        scrollBar()->setValue(2);
        QCOMPARE(top(), u"20000008"_s);
        QCOMPARE(address(), u"0x20000008"_s);
        m_window->scrollPage(1);
        QCOMPARE(top(), u"20000018"_s);
        m_window->scrollPage(-1);
        QCOMPARE(top(), u"20000008"_s);
        m_window->scrollPage(-1);
        QCOMPARE(top(), u"20000000"_s);
        scrollBar()->setValue(scrollBar()->maximum());
        QCOMPARE(lines(), QStringList{u"2000FFFC ?? ?? ?? ?? ...."_s});
        m_window->scrollPage(1);
        QCOMPARE(lines().size(), 1);
    }

    void scrollBarFollowsTheColumns()
    {
        selectRam();
        show(4, 4);
        scrollBar()->setValue(8);
        resizeTo(8, 4);
        QCOMPARE(top(), u"20000020"_s);
        QCOMPARE(scrollBar()->value(), 4);
        QTest::keyClick(edit(), Qt::Key_PageDown);
        QCOMPARE(top(), u"20000040"_s);
    }

    void pageKeysAndTheWheelScroll()
    {
        selectRam();
        show(4, 4);
        QTest::keyClick(edit(), Qt::Key_PageDown);
        QCOMPARE(top(), u"20000010"_s);
        QTest::keyClick(edit(), Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(top(), u"20000014"_s);
        QTest::keyClick(edit(), Qt::Key_Up, Qt::ControlModifier);
        QTest::keyClick(edit(), Qt::Key_PageUp);
        QCOMPARE(top(), u"20000000"_s);
        const QPointF middle = edit()->viewport()->rect().center();
        QWheelEvent wheel(middle, edit()->viewport()->mapToGlobal(middle), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(edit()->viewport(), &wheel);
        QVERIFY(scrollBar()->value() > 0);
        QVERIFY(top() != u"20000000"_s);
    }

    void aPageCostsOneRead()
    {
        selectRam();
        show(4, 4);
        calls();
        QTest::keyClick(edit(), Qt::Key_PageDown);
        QCOMPARE(calls(), u"readBlock(7, 1, 0x20000010, 16)"_s);
    }

    // Auto read and cache

    void runningProgramIsNotRead()
    {
        selectRam();
        show(4, 4);
        m_window->setPaused(false);
        calls();
        m_memory->bytes[0x20000004] = 0xEE;
        m_window->update();
        QCOMPARE(calls(), u"regions()"_s);
        QCOMPARE(lines()[1], u"20000004 04 05 06 07 ...."_s);
        scrollBar()->setValue(2);
        QCOMPARE(lines(), (QStringList{u"20000008 08 09 0A 0B ...."_s, u"2000000C 0C 0D 0E 0F ...."_s,
                                       u"20000010 ?? ?? ?? ?? ...."_s, u"20000014 ?? ?? ?? ?? ...."_s}));
        resizeTo(4, 5);
        QCOMPARE(calls(), QString());
        QTest::mouseClick(readButton(), Qt::LeftButton);
        QCOMPARE(calls(), u"readBlock(7, 1, 0x20000008, 20)"_s);
        QCOMPARE(lines()[2], u"20000010 10 11 12 13 ...."_s);
        m_window->setPaused(true);
        m_window->update();
        QCOMPARE(calls(), u"regions() readBlock(7, 1, 0x20000008, 20)"_s);
    }

    void hiddenWindowIsReadWhenItIsShown()
    {
        selectRam();
        show(4, 4);
        m_window->hide();
        calls();
        m_window->update();
        m_window->resize(m_window->size() + QSize(0, 100));
        scrollBar()->setValue(4);
        QCOMPARE(calls(), QString());
        m_window->show();
        QCoreApplication::processEvents();
        const QString shown = calls();
        QVERIFY2(shown.startsWith(u"regions() readBlock(7, 1, 0x20000010, "_s), qPrintable(shown));
        QCOMPARE(shown.count(u"readBlock"_s), 1);
        QCOMPARE(top(), u"20000010"_s);
        m_window->hide();
        m_window->show(); // nothing has changed
        QCoreApplication::processEvents();
        QCOMPARE(calls(), QString());
    }

    void cacheIsNotUsedForAnotherModeOrRegion()
    {
        m_memory->list = {region(u"A"_s, 1, 0, 0xFF, IMemory::Byte | IMemory::Word16), region(u"B"_s, 2, 0, 0xFF)};
        m_memory->fill(0, 64);
        show(4, 1);
        m_window->setAutoRead(false);
        m_window->selectByteView();
        QVERIFY(lines().constFirst().contains(u"??"_s));
        m_window->userRefreshDisplay();
        QVERIFY(!lines().constFirst().contains(u"??"_s));
        choose(u"B"_s);
        QVERIFY(lines().constFirst().contains(u"??"_s));
        choose(u"A"_s);
        QVERIFY(!lines().constFirst().contains(u"??"_s));
    }

    // Regions

    void regionsComeBackWhereTheyWereLeft()
    {
        m_memory->list = {region(u"Flash"_s, 1, 0, 0xFFFF, 15, true), region(u"RAM"_s, 2, 0x20000000, 0x2000FFFF, 15)};
        show(4, 4);
        QCOMPARE(regionBox()->count(), 2);
        QCOMPARE(top(), u"0000"_s);
        QVERIFY(!writeButton()->isEnabled());
        QVERIFY(edit()->isReadOnly());
        enterAddress(u"0x1234"_s);
        m_window->selectWord16View();
        choose(u"RAM"_s);
        QCOMPARE(top(), u"20000000"_s);
        QVERIFY(writeButton()->isEnabled());
        QVERIFY(!edit()->isReadOnly());
        enterAddress(u"0x20000100"_s);
        choose(u"Flash"_s);
        QCOMPARE(top(), u"1234"_s);
        QCOMPARE(textOf(popup()), u"&Byte View|*16-bit Word View|24-bit Word View|32-bit Word View"_s);
        m_window->update(); // the box keeps its region
        QCOMPARE(regionBox()->currentText(), u"Flash"_s);
        QCOMPARE(top(), u"1234"_s);
        m_memory->list.swapItemsAt(0, 1);
        m_window->update();
        QCOMPARE(regionBox()->currentText(), u"Flash"_s);
        QCOMPARE(top(), u"1234"_s);
        m_memory->list = {region(u"RAM"_s, 2, 0x20000000, 0x2000FFFF, 15)};
        m_window->update();
        QCOMPARE(top(), u"20000100"_s);
    }

    void movedRegionStartsAtItsLowAddress()
    {
        selectRam(0x20000000, 0x2000FFFF, IMemory::Byte | IMemory::Word16);
        show(4, 4);
        enterAddress(u"0x20000100"_s);
        m_window->selectByteView();
        selectRam(0x20001000, 0x2000FFFF, IMemory::Byte | IMemory::Word16); // the address lies below it
        m_window->update();
        QCOMPARE(top(), u"20001000"_s);
        QVERIFY(lines().constFirst().startsWith(u"20001000 00 01"_s)); // still bytes
        enterAddress(u"0x20002000"_s);
        selectRam(0x20001000, 0x20001FFF, IMemory::Byte | IMemory::Word16); // above it
        m_window->update();
        QCOMPARE(top(), u"20001000"_s);
    }

    void widestWidthIsShownAtFirst()
    {
        for (const auto &[modes, digits] : {std::pair(15U, 8), {11U, 6}, {3U, 4}, {1U, 2}}) {
            setWindow();
            selectRam(0x20000000, 0x2000FFFF, modes);
            show(2, 1, digits);
            QCOMPARE(lines().constFirst().section(u' ', 1, 1), u"03020100"_s.right(digits));
        }
    }

    void lostWidthIsReplacedByTheWidest()
    {
        selectRam(0x20000000, 0x2000FFFF, 15);
        show(4, 1);
        m_window->selectWord16View();
        selectRam(0x20000000, 0x2000FFFF, 9);
        m_window->update();
        QCOMPARE(lines().constFirst().section(u' ', 1, 1), u"020100"_s);
    }

    void regionWithoutModesIsShownInBytes()
    {
        selectRam(0x20000000, 0x2000FFFF, 0);
        expect("Unsupported memory mode", 3); // for its view, for its selection and for the step
        m_window->show();
        m_window->setInterface(m_memory.get());
        QCOMPARE(top(), u"20000000"_s);
        calls();
        m_window->userRefreshDisplay(); // no further message
        QVERIFY(calls().startsWith(u"readBlock(7, 1, 0x20000000"_s));
        QVERIFY(lines().constFirst().startsWith(u"20000000 00 01"_s));
        QVERIFY(!popup()); // it would be empty
    }

    void regionsOfOneNameAreKeptApart()
    {
        m_memory->list = {region(u"RAM"_s, 1, 0, 0xFFF), region(u"RAM"_s, 2, 0x4000, 0x4FFF)};
        show(4, 4);
        regionBox()->setCurrentIndex(1);
        Q_EMIT regionBox()->activated(1);
        enterAddress(u"0x4100"_s);
        m_window->update();
        QCOMPARE(regionBox()->currentIndex(), 1);
        QCOMPARE(top(), u"4100"_s);
        calls();
        m_window->userRefreshDisplay();
        QVERIFY(calls().startsWith(u"readBlock(2, 1, 0x4100"_s));
    }

    void regionThatEndsBeforeItStartsIsEmpty()
    {
        m_memory->list = {region(u"Odd"_s, 1, 0x100, 0x10)};
        show(4, 4);
        m_window->userRefreshDisplay();
        enterAddress(u"0x80"_s);
        m_window->scrollPage(1);
        QCOMPARE(edit()->toPlainText(), QString());
        QCOMPARE(scrollBar()->maximum(), 0);
        QVERIFY(!calls().contains(u"readBlock"_s));
    }

    void allAddressesAreReached()
    {
        m_memory->list = {region(u"All"_s, 1, 0, 0xFFFFFFFF)};
        m_memory->fill(0xFFFFFFF0, 16);
        show(1, 2);
        QCOMPARE(lines().constFirst().count(u' '), 2); // more lines than the bar has values
        QVERIFY(scrollBar()->maximum() > 0x40000000);
        scrollBar()->setValue(scrollBar()->maximum());
        QVERIFY2(top() >= u"FFFFFFFD"_s, qPrintable(top()));
        m_window->scrollPage(1);
        m_window->scrollPage(-1);
        QCOMPARE(top().left(7), u"FFFFFFF"_s);
        resizeTo(4, 4);
        calls();
        enterAddress(u"0xFFFFFFFF"_s);
        QVERIFY2(calls().startsWith(u"readBlock(1, 1, 0xffffffff, 1)"_s), "no address above 32 bits");
        QCOMPARE(lines(), QStringList{u"FFFFFFFF 0F ?? ?? ?? ...."_s});
        enterAddress(u"0xFFFFFFF8"_s);
        QCOMPARE(lines(), (QStringList{u"FFFFFFF8 08 09 0A 0B ...."_s, u"FFFFFFFC 0C 0D 0E 0F ...."_s}));
    }

    void wordsCanBeTheSmallestUnits()
    {
        m_memory->list = {region(u"Words"_s, 1, 0x10, 0xFF, IMemory::Word16 | IMemory::Word32)};
        show(2, 2, 8);
        m_window->selectWord16View();
        calls();
        m_window->selectWord32View();
        QVERIFY(calls().startsWith(u"readBlock(1, 4, 0x10"_s));
        QCOMPARE(lines()[1].section(u' ', 0, 0), u"14"_s); // two cells of two units each
    }

    // Addresses

    void typedAddressScrollsTheWindow_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("top");
        QTest::addColumn<QString>("shown");
        QTest::newRow("hexadecimal") << u"0x100"_s << u"00000100"_s << u"0x00000100"_s;
        QTest::newRow("octal") << u"0100"_s << u"00000040"_s << u"0x00000040"_s;
        QTest::newRow("decimal") << u"100"_s << u"00000064"_s << u"0x00000064"_s;
        QTest::newRow("digits without a base") << u"ff"_s << u"00000010"_s << u"0x00000010"_s;
        QTest::newRow("zero") << u"0"_s << u"00000010"_s << u"0x00000010"_s;
        QTest::newRow("above") << u"0xF0000000"_s << u"1FFFFFFF"_s << u"0x1FFFFFFF"_s;
        QTest::newRow("far above") << u"0xFFFFFFFFFF"_s << u"1FFFFFFF"_s << u"0x1FFFFFFF"_s;
        QTest::newRow("in the first line") << u"0x13"_s << u"00000010"_s << u"0x00000010"_s;
        QTest::newRow("in the second line") << u"0x15"_s << u"00000015"_s << u"0x00000015"_s;
    }
    void typedAddressScrollsTheWindow()
    {
        QFETCH(QString, text);
        QFETCH(QString, top);
        QFETCH(QString, shown);
        m_memory->list = {region(u"RAM"_s, 7, 0x10, 0x1FFFFFFF)};
        show(4, 4);
        scrollBar()->setValue(77);
        calls();
        enterAddress(text);
        QCOMPARE(this->top(), top);
        QCOMPARE(address(), shown);
        QCOMPARE(calls().count(u"readBlock"_s), 1);
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        addressBox()->setFocus();
        edit()->setFocus(); // does not activate the address once more
        QCOMPARE(calls(), QString());
    }

    void addressOfAnotherRegionSelectsIt()
    {
        m_memory->list = {region(u"Flash"_s, 1, 0, 0xFFFF), region(u"RAM"_s, 2, 0x20000000, 0x2000FFFF)};
        show(4, 4);
        enterAddress(u"0x20000100"_s);
        QCOMPARE(regionBox()->currentText(), u"RAM"_s);
        QCOMPARE(top(), u"20000100"_s);
        enterAddress(u"ff"_s); // no number
        QCOMPARE(regionBox()->currentText(), u"RAM"_s);
        QCOMPARE(top(), u"20000000"_s);
        enterAddress(u"0x30000000"_s); // in no region
        QCOMPARE(regionBox()->currentText(), u"RAM"_s);
        QCOMPARE(top(), u"2000FFFF"_s);
        enterAddress(u"0"_s);
        QCOMPARE(regionBox()->currentText(), u"Flash"_s);
        QCOMPARE(top(), u"0000"_s);
    }

    void returnReadsTheShownAddressAgain()
    {
        selectRam();
        show(4, 4);
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        addressBox()->setFocus();
        calls();
        enterAddress(address());
        QCOMPARE(calls().count(u"readBlock"_s), 1);
    }

    void addressAtTheEndShowsOneLine()
    {
        selectRam();
        show(4, 4);
        enterAddress(u"0xFFFFFFFF"_s);
        QCOMPARE(lines().size(), 1);
        QCOMPARE(top(), u"2000FFFF"_s);
        QCOMPARE(scrollBar()->value(), 0xFFFF / 4);
    }

    void scrollBarFollowsTheAddress()
    {
        selectRam();
        show(4, 4);
        enterAddress(u"0x20000102"_s);
        QCOMPARE(scrollBar()->value(), 0x40);
        QTest::keyClick(edit(), Qt::Key_PageDown);
        QCOMPARE(top(), u"20000110"_s); // on the lines of the bar again
    }

    void addressesAreAlignedToTheStep()
    {
        selectRam(0x20000000, 0x2000FFFF, IMemory::Byte | IMemory::Word24 | IMemory::Word32);
        show(4, 4, 8);
        enterAddress(u"0x20000107"_s);
        QCOMPARE(address(), u"0x20000107"_s);
        QCOMPARE(top(), u"20000104"_s);
        m_window->selectWord24View();
        enterAddress(u"0x20000107"_s);
        QCOMPARE(top(), u"20000105"_s); // a mask of 3 - 1, which is no alignment
    }

    void onlyNumbersCanBeTyped()
    {
        selectRam();
        show(4, 4);
        addressBox()->lineEdit()->clear();
        QTest::keyClicks(addressBox()->lineEdit(), u"main 0x1g-2z"_s);
        QCOMPARE(address(), u"a0x12"_s);
    }

    void refusedAddressIsReported_data()
    {
        const QString keys = u"An address is a number like 0x1000. Watch &name for that of a name."_s;
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QStringList>("messages");
        QTest::newRow("number") << u"0x20000100"_s << u"0x20000100"_s << QStringList();
        QTest::newRow("zero") << u"0"_s << u"0x20000000"_s << QStringList();
        QTest::newRow("name") << u"&buf"_s << u"0x20000000"_s
                              << QStringList{keys, keys,
                                             u"'bf' is not an address: the start of the region is shown."_s};
        QTest::newRow("digits of another base")
            << u"089"_s << u"0x20000000"_s
            << QStringList{u"'089' is not an address: the start of the region is shown."_s};
    }

    void refusedAddressIsReported()
    {
        QFETCH(QString, typed);
        selectRam();
        show(4, 4);
        const QSignalSpy messages(m_window.get(), &DebugPane::message);
        enterAddress(typed);
        QTEST(address(), "shown");
        QStringList texts;
        for (const QVariantList &message : messages)
            texts += message.first().toString();
        QTEST(texts, "messages");
    }

    void typedAddressesAreKeptOnceEach()
    {
        selectRam();
        show(4, 4);
        for (const QString &text : {u"0x20000100"_s, u"0x20000200"_s, u"536871168"_s}) // the last is the first
            enterAddress(text);
        QCOMPARE(addressBox()->count(), 2);
        QCOMPARE(address(), u"0x20000100"_s);
        enterAddress(u"0x2000010"_s); // not completed to an old one
        QCOMPARE(top(), u"20000000"_s);
        const int index = addressBox()->findText(u"0x20000200"_s);
        QVERIFY(index >= 0);
        addressBox()->setCurrentIndex(index);
        Q_EMIT addressBox()->activated(index);
        QCOMPARE(top(), u"20000200"_s);
    }

    void wideAddressesAreShownTypedAndWritten()
    {
        const InterfacePtr<FakeWideMemory> wide(new FakeWideMemory);
        show(8, 4);
        m_window->setInterfaces(m_memory.get(), wide.get());
        wide->calls.clear();
        calls();
        QCOMPARE(regionBox()->currentText(), u"stack"_s);
        QCOMPARE(address(), u"0x7FFFFFFDE000"_s);
        enterAddress(u"0x7ffffffDE840"_s);
        QCOMPARE(wide->calls, QStringList(u"readBlock(5, 0x7ffffffde840)"_s));
        QVERIFY2(lines().constFirst().startsWith(u"7FFFFFFDE840 40 41 42"_s), qPrintable(lines().constFirst()));
        wide->calls.clear();
        typeAt(0, 16, u"99"_s);
        QTest::mouseClick(writeButton(), Qt::LeftButton);
        QCOMPARE(wide->calls.value(0), u"write(5, 0x7ffffffde841, 153)"_s);
        QVERIFY2(lines().constFirst().startsWith(u"7FFFFFFDE840 40 99 42"_s), qPrintable(lines().constFirst()));
        enterAddress(u"0x7FFFFFFDF000"_s);
        QCOMPARE(address(), u"0x7FFFFFFDEFFF"_s);
        QCOMPARE(calls(), QString()); // the memory with short addresses is not asked
    }

    void wideMemoryIsReleasedWithTheOther()
    {
        const InterfacePtr<FakeWideMemory> wide(new FakeWideMemory);
        show(8, 4);
        m_window->setInterfaces(m_memory.get(), wide.get());
        m_window->setInterface(m_memory.get());
        wide->calls.clear();
        m_window->userRefreshDisplay();
        QCOMPARE(wide->calls, QStringList());
        m_window->setInterfaces(m_memory.get(), wide.get());
        m_window->releaseEnvironment();
        m_window->update();
        QCOMPARE(wide->addRef(), 1ul); // only the reference of this test was left
        wide->release();
    }

    void theLastTwentyAddressesAreKept()
    {
        selectRam();
        show(4, 4);
        for (int i = 1; i <= 25; ++i)
            enterAddress(u"0x20000%1"_s.arg(i * 16, 3, 16, QLatin1Char('0')));
        QCOMPARE(addressBox()->count(), 20);
        QCOMPARE(address(), u"0x20000190"_s);
        QVERIFY(addressBox()->findText(u"0x20000060"_s) >= 0);
        QVERIFY(addressBox()->findText(u"0x20000050"_s) < 0);
    }

    // Widths

    void menuListsTheSupportedWidths()
    {
        selectRam(0x20000000, 0x2000FFFF, IMemory::Byte | IMemory::Word24 | IMemory::Word32);
        show(4, 2);
        QMenu *menu = popup();
        QVERIFY(menu);
        QCOMPARE(textOf(menu), u"&Byte View|24-bit Word View|*32-bit Word View"_s);
        for (const QAction *action : menu->actions())
            QVERIFY(action->isCheckable());
        menu->actions().at(1)->trigger();
        QCOMPARE(lines().constFirst(), u"20000000 020100 050403"_s);
        menu->actions().constFirst()->trigger();
        QCOMPARE(lines().constFirst().left(14), u"20000000 00 01"_s);
        menu->close();
    }

    void unsupportedWidthIsLoggedAndCountsInOnes()
    {
        selectRam();
        show(4, 2);
        expect("Unsupported memory mode");
        m_window->selectWord32View(); // by a script
        QCOMPARE(lines()[1].section(u' ', 0, 0).size(), 8);
        m_window->userRefreshDisplay();
        m_window->selectByteView();
        QCOMPARE(lines()[1], u"20000004 04 05 06 07 ...."_s);
    }

    // Changes

    void typedDigitsAreMarkedAndWritten()
    {
        selectRam();
        show(4, 2);
        QSignalSpy spy(m_window.get(), &DebugPane::doUpdate);
        typeAt(0, 13, u"A"_s); // the second digit of the second byte
        QCOMPARE(lines().constFirst(), u"20000000 00 0A 02 03 ...."_s);
        QVERIFY(isMarked(0, 12));
        QVERIFY(isMarked(0, 13));
        QVERIFY(!isMarked(0, 10));
        QVERIFY(!isMarked(0, 15));
        QCOMPARE(edit()->cursorIndex(), 14);
        QTest::keyClick(edit(), Qt::Key_Space);
        QCOMPARE(edit()->cursorIndex(), 15);
        typeAt(1, 18, u"F0"_s);
        calls();
        QTest::mouseClick(writeButton(), Qt::LeftButton);
        QCOMPARE(calls(), u"write(7, 1, 0x20000001, 0xa, 0) write(7, 1, 0x20000007, 0xf0, 0) "
                          "readBlock(7, 1, 0x20000000, 8)"_s);
        QCOMPARE(lines(), (QStringList{u"20000000 00 0A 02 03 ...."_s, u"20000004 04 05 06 F0 ...."_s}));
        QVERIFY(!isMarked(0, 13));
        QCOMPARE(edit()->cursorPara(), 1);
        QCOMPARE(edit()->cursorIndex(), 20);
        QCOMPARE(spy.size(), 1);
    }

    void everyNibbleOfAWordCanBeTyped_data()
    {
        QTest::addColumn<int>("width");
        for (int width = 1; width <= 4; ++width)
            QTest::newRow(qPrintable(QString::number(width))) << width;
    }
    void everyNibbleOfAWordCanBeTyped()
    {
        QFETCH(int, width);
        const std::array<uint, 4> modes{IMemory::Byte, IMemory::Word16, IMemory::Word24, IMemory::Word32};
        selectRam(0x20000000, 0x2000FFFF, IMemory::Byte | modes[size_t(width - 1)]);
        show(2, 1, 2 * width);
        if (width == 1)
            m_window->selectByteView();
        const QString digits = u"89ABCDEF"_s.left(2 * width);
        typeAt(0, 9 + 2 * width + 1, digits); // the second word
        QCOMPARE(lines().constFirst().section(u' ', 2, 2), digits);
        calls();
        QTest::keyClick(edit(), Qt::Key_Return);
        QCOMPARE(m_memory->calls.constFirst(), u"write(7, %1, 0x%2, 0x%3, 0)"_s.arg(modes[size_t(width - 1)])
                                                   .arg(0x20000000U + uint(width), 0, 16)
                                                   .arg(digits.toLower()));
        QCOMPARE(lines().constFirst().section(u' ', 2, 2), digits);
    }

    void changesCountAddressesInTheUnitsOfTheRegion()
    {
        m_memory->list = {region(u"Words"_s, 1, 0x10000000, 0x100000FF, IMemory::Word16)};
        m_memory->fill(0x10000000, 0x200);
        show(4, 2, 4);
        typeAt(1, 9 + 5, u"5"_s);
        calls();
        m_window->userUpdateMemory();
        QVERIFY(calls().startsWith(u"write(1, 2, 0x10000005, "_s));
    }

    void refusedWriteShowsTheValueOfTheTarget()
    {
        selectRam();
        m_memory->ignoresWrites = true;
        show(4, 1);
        typeAt(0, 9, u"FF"_s);
        QCOMPARE(lines().constFirst().left(11), u"20000000 FF"_s);
        m_window->userUpdateMemory();
        QCOMPARE(lines().constFirst().left(11), u"20000000 00"_s);
    }

    void writesAlsoReadWhileTheProgramRuns()
    {
        selectRam();
        show(4, 1);
        m_window->setAutoRead(false);
        typeAt(0, 9, u"F"_s);
        calls();
        m_window->userUpdateMemory();
        QCOMPARE(calls(), u"write(7, 1, 0x20000000, 0xf0, 0) readBlock(7, 1, 0x20000000, 4)"_s);
    }

    void changesThatWereNotWrittenVanish()
    {
        selectRam();
        show(4, 2);
        const auto change = [&] {
            typeAt(0, 9, u"F"_s);
            QVERIFY(lines().constFirst().startsWith(u"20000000 F0"_s));
        };
        change();
        m_window->update();
        QVERIFY(lines().constFirst().startsWith(u"20000000 00"_s));
        change();
        m_window->setAutoRead(false);
        resizeTo(4, 3);
        QVERIFY(lines().constFirst().startsWith(u"20000000 00"_s));
        calls();
        QSignalSpy spy(m_window.get(), &DebugPane::doUpdate);
        m_window->userUpdateMemory();
        QCOMPARE(calls(), u"readBlock(7, 1, 0x20000000, 12)"_s);
        QCOMPARE(spy.size(), 0);
    }

    void readOnlyRegionIsNotChanged()
    {
        m_memory->list = {region(u"ROM"_s, 1, 0x20000000, 0x200000FF, IMemory::Byte, true)};
        m_memory->fill(0x20000000, 0x100);
        show(4, 2);
        QVERIFY(!writeButton()->isEnabled());
        QVERIFY(readButton()->isEnabled());
        calls();
        typeAt(0, 9, u"F"_s);
        QTest::keyClick(edit(), Qt::Key_Return);
        QCOMPARE(lines().constFirst(), u"20000000 00 01 02 03 ...."_s);
        QCOMPARE(calls(), QString());
    }

    void reportsOfPlacesWithoutAWordAreIgnored()
    {
        selectRam();
        show(4, 2);
        const QStringList before = lines();
        for (const int para : {-1, 0, 2, 1000}) {
            for (const int index : {-1000, -1, 0, 8, 11, 21, 1000})
                m_window->hexChanged(para, index, 5);
        }
        calls();
        m_window->userUpdateMemory();
        QVERIFY(!calls().contains(u"write"_s));
        QCOMPARE(lines(), before);
    }

    // Plug-ins that misbehave

    void exceptionsLeaveQuestionMarksOrNothing()
    {
        selectRam();
        show(4, 1);
        m_memory->onCall = [](const QString &) { throw std::runtime_error("boom"); };
        expect("IMemory::readBlock: an exception has left the plug-in (boom)");
        m_window->userRefreshDisplay();
        QCOMPARE(lines().constFirst(), u"20000000 ?? ?? ?? ?? ...."_s);
        m_memory->onCall = {};
        m_window->userRefreshDisplay();
        typeAt(0, 9, u"F"_s);
        m_memory->onCall = [](const QString &) { throw std::runtime_error("boom"); };
        expect("IMemory::write: an exception has left the plug-in (boom)");
        expect("IMemory::readBlock: an exception has left the plug-in (boom)");
        m_window->userUpdateMemory();
        expect("IMemory::regions: an exception has left the plug-in (boom)");
        m_window->update();
        QCOMPARE(edit()->toPlainText(), QString());
        m_memory->onCall = {};
        m_window->update();
        QCOMPARE(lines().constFirst(), u"20000000 00 01 02 03 ...."_s);
    }

    void blocksOfAnotherSizeAreNoDanger()
    {
        selectRam();
        m_memory->mostCells = 2;
        show(4, 2);
        QCOMPARE(lines(), (QStringList{u"20000000 00 01 ?? ?? ...."_s, u"20000004 ?? ?? ?? ?? ...."_s}));
    }

    void plugInMayCallBackWhileItReads()
    {
        selectRam();
        show(4, 2);
        m_memory->onCall = [&](const QString &) {
            m_window->update();
            m_window->userUpdateMemory();
            scrollBar()->setValue(scrollBar()->value() + 1);
        };
        calls();
        m_window->userRefreshDisplay();
        QCOMPARE(calls(), u"readBlock(7, 1, 0x20000000, 8) readBlock(7, 1, 0x20000004, 8)"_s);
        m_memory->onCall = {};
        m_window->update();
        QCOMPARE(top(), u"20000008"_s);
    }

    void windowMayVanishDuringACall()
    {
        for (const QString &name : {u"regions"_s, u"readBlock"_s, u"write"_s}) {
            setWindow();
            selectRam();
            show(4, 2);
            typeAt(0, 9, u"F"_s);
            const QPointer<MemoryWindow> window = m_window.get();
            m_memory->onCall = [&](const QString &call) {
                if (call.startsWith(name))
                    m_window.reset();
            };
            if (name == u"regions"_s)
                window->update();
            else
                window->userUpdateMemory();
            QVERIFY2(!window, qPrintable(name));
            m_memory->onCall = {};
        }
    }

    void memoryMayBeReleasedDuringACall()
    {
        selectRam();
        show(4, 2);
        m_memory->onCall = [&](const QString &) { m_window->releaseEnvironment(); };
        calls();
        m_window->update();
        QCOMPARE(calls(), u"regions()"_s);
        m_window->update();
        QCOMPARE(calls(), QString());
    }

    void memoryThatIsReplacedDuringACallIsShownLater()
    {
        selectRam();
        show(4, 2);
        InterfacePtr<FakeMemory> other(new FakeMemory);
        other->list = {region(u"Other"_s, 1, 0, 0xFF)};
        m_memory->onCall = [&](const QString &) { m_window->setInterface(other.get()); };
        m_window->userRefreshDisplay();
        m_memory->onCall = {};
        QCOMPARE(other->takeCalls(), QStringList());
        QCoreApplication::processEvents();
        QCOMPARE(regionBox()->currentText(), u"Other"_s);
        QCOMPARE(top(), u"00"_s);
        m_window->setInterface(nullptr);
    }

    void windowMayVanishWhenItReportsItsWrites()
    {
        selectRam();
        show(4, 2);
        typeAt(0, 9, u"F"_s);
        connect(m_window.get(), &DebugPane::doUpdate, this, [&] { m_window.reset(); });
        m_window->userUpdateMemory();
        QVERIFY(!m_window);
    }

    void ownReportRefreshesOnlyTheOthers()
    {
        selectRam();
        show(4, 2);
        connect(m_window.get(), &DebugPane::doUpdate, m_window.get(), &DebugPane::update);
        typeAt(0, 9, u"F"_s);
        calls();
        m_window->userUpdateMemory();
        QCOMPARE(calls().count(u"readBlock"_s), 1);
        m_window->update();
        QCOMPARE(calls().count(u"readBlock"_s), 1);
    }

    // Appearance

    void fontAndColoursReachTheText()
    {
        selectRam();
        show(4, 2);
        QFont font = edit()->font();
        font.setPointSize(20);
        m_window->setFont(font);
        QCOMPARE(edit()->font().pointSize(), 20);
        QVERIFY(lines().constFirst().count(u' ') < 5); // less fits
        QVERIFY(regionBox()->font().pointSize() != 20);
        m_window->setAppearance({edit()->font(), u"#dcdcdc"_s, u"#1e1f22"_s});
        QCOMPARE(edit()->palette().color(QPalette::Text).name(), u"#dcdcdc"_s);
        QCOMPARE(edit()->palette().color(QPalette::Base).name(), u"#1e1f22"_s);
        QTextCursor cursor(edit()->document()->firstBlock());
        cursor.movePosition(QTextCursor::NextCharacter);
        QVERIFY(cursor.charFormat().foreground().color().lightness() > 150);
        m_window->setColours(Qt::black, Qt::white);
        cursor.setPosition(1);
        QCOMPARE(cursor.charFormat().foreground().color().name(), u"#0000ff"_s);
    }

    /// The bars of the edit are not shown, so no part of the text may lie beyond its edges.
    void textOfAnotherFontFitsTheWindow()
    {
        selectRam();
        show(8, 6);
        const QString before = lines().constFirst();
        QFont font = edit()->font();
        for (const int size : {14, 20, 30, 8, 5, font.pointSize()}) {
            m_window->setFont(QFont(font.family(), size));
            QVERIFY(edit()->document()->size().width() <= edit()->viewport()->width());
            QCOMPARE(edit()->horizontalScrollBar()->maximum(), 0);
            QCOMPARE(edit()->verticalScrollBar()->maximum(), 0);
        }
        QCOMPARE(lines().constFirst(), before);
    }

    void controlsHaveNamesAndTheKeyboardReachesThem()
    {
        selectRam();
        show(4, 2);
        QStringList texts;
        for (const QLabel *label : m_window->findChildren<QLabel *>())
            texts += label->text();
        QCOMPARE(texts, (QStringList{u"Address:"_s, u"Region:"_s}));
        QCOMPARE(writeButton()->text(), u"Write Changes"_s);
        QCOMPARE(readButton()->text(), u"Read Memory"_s);
        for (const QWidget *widget : {static_cast<QWidget *>(addressBox()), static_cast<QWidget *>(regionBox()),
                                      static_cast<QWidget *>(edit()), static_cast<QWidget *>(scrollBar())})
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        addressBox()->setFocus();
        QStringList order;
        for (int i = 0; i < 5; ++i) {
            order += QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order, (QStringList{u"memoryAddress"_s, u"memoryRegion"_s, u"memoryWrite"_s, u"memoryRead"_s,
                                     u"memoryEdit"_s}));
    }
};

QTEST_MAIN(MemoryWindowTest)
#include "tst_memorywindow.moc"
