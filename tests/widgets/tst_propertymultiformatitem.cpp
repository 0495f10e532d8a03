#include "numberformat.h"
#include "propertylist.h"
#include "propertymultiformatitem.h"
#include "propertysubsectionitem.h"
#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class PropertyMultiFormatItemTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PropertyList> m_list;
    PropertyMultiFormatItem *m_item = nullptr; ///< 16 bits wide

    QLineEdit *edit() const { return m_item->editor()->findChild<QLineEdit *>(); }

    /// Types a text into the row and presses Return.
    void enter(const QString &text)
    {
        m_list->setCurrentItem(m_item);
        m_item->showEditor();
        edit()->selectAll();
        QTest::keyClicks(edit(), text);
        QTest::keyClick(edit(), Qt::Key_Return);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_list = std::make_unique<PropertyList>(u"Name"_s, u"Value"_s);
        m_item = new PropertyMultiFormatItem(u"r0"_s, 0u, 16, m_list.get(), nullptr);
        m_list->resize(300, 200);
        m_list->show();
        m_list->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_list.get()));
    }

    void cleanup() { m_list.reset(); }

    void newRowIsHexadecimal()
    {
        QCOMPARE(m_item->format(), int(HexadecimalFormat));
        QCOMPARE(m_item->bits(), 16);
        QCOMPARE(m_item->text(1), u"0x0000"_s);
    }

    void rowBelowAHeadingReportsToTheList()
    {
        auto *section = new PropertySubsectionItem(u"s"_s, m_list.get(), nullptr);
        auto *item = new PropertyMultiFormatItem(u"r1"_s, 5u, 8, section, nullptr);
        QCOMPARE(item->text(1), u"0x05"_s);
        const QSignalSpy changed(m_list.get(), &PropertyList::valueChanged);
        item->setValue(6u, true);
        QCOMPARE(changed.size(), 1);
    }

    void anotherFormatShowsTheSameValue()
    {
        const QSignalSpy changed(m_list.get(), &PropertyList::valueChanged);
        m_item->setValue(0xffffu, false);
        m_item->setFormat(SignedFormat);
        QCOMPARE(m_item->text(1), u"-1"_s);
        m_item->setFormat(77);
        QCOMPARE(m_item->text(1), u"Unsupported format"_s);
        QCOMPARE(m_item->value(), QVariant(0xffffu));
        QCOMPARE(changed.size(), 0);
    }

    void bitsAboveTheWidthAreKeptButNotShown()
    {
        enter(u"-1"_s);
        QCOMPARE(m_item->value(), QVariant(0xffffffffu));
        QCOMPARE(m_item->text(1), u"0xFFFF"_s);
    }

    void enteredTextBecomesTheValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("a half") << u"0.5"_s << u"0x4000"_s;
        QTest::newRow("minus a half") << u"-0.5"_s << u"0xC000"_s;
        QTest::newRow("binary") << u"0b11"_s << u"0x0003"_s;
        QTest::newRow("no number") << u"FF"_s << u"0x0000"_s;
        QTest::newRow("other letters cannot be typed") << u"g1h2"_s << u"0x000C"_s;
    }

    void enteredTextBecomesTheValue()
    {
        QFETCH(QString, text);
        const QSignalSpy changed(m_list.get(), &PropertyList::valueChanged);
        m_item->setValue(1u, false);
        enter(text);
        QTEST(m_item->text(1), "shown");
        QCOMPARE(changed.size(), 1);
        QVERIFY(!m_item->isEditing());
    }

    void escapePutsTheTextBack()
    {
        m_list->setCurrentItem(m_item);
        m_item->showEditor();
        QTest::keyClicks(edit(), u"12"_s);
        QTest::keyClick(edit(), Qt::Key_Escape);
        QCOMPARE(m_item->value(), QVariant(0u));
        m_item->showEditor();
        QCOMPARE(edit()->text(), u"0x0000"_s);
    }

    void openEditorFollowsTheFormatUnlessTheUserHasTyped()
    {
        m_item->setValue(5u, false);
        m_list->setCurrentItem(m_item);
        m_item->showEditor();
        QCOMPARE(edit()->text(), u"0x0005"_s);
        m_item->setFormat(SignedFormat);
        QCOMPARE(edit()->text(), u"+5"_s);
        QTest::keyClicks(edit(), u"7"_s);
        m_item->setFormat(BinaryFormat);
        QCOMPARE(edit()->text(), u"+57"_s);
        QTest::keyClick(edit(), Qt::Key_Return);
        QCOMPARE(m_item->value(), QVariant(57u));
    }

    void contextMenuOfTheEditorIsThatOfTheList()
    {
        const QSignalSpy requested(m_list.get(), &ListView::contextMenuRequested);
        m_list->setCurrentItem(m_item);
        m_item->showEditor();
        const QPoint centre = edit()->rect().center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, centre, edit()->mapToGlobal(centre));
        QApplication::sendEvent(edit(), &event);
        QCOMPARE(requested.size(), 1);
        QVERIFY(!QApplication::activePopupWidget());
    }

    void firstColumnFitsTheNamesAndLeavesRoomForValues()
    {
        new PropertyMultiFormatItem(u"a register with a long name"_s, 0u, 16, m_list.get(), m_item);
        m_list->resize(900, 200);
        m_list->fitNames();
        const int wide = m_list->columnWidth(0);
        QFont bold = m_list->font();
        bold.setBold(true);
        QVERIFY(wide > QFontMetrics(bold).horizontalAdvance(u"a register with a long name"_s));
        QFont large = m_list->font();
        large.setPointSize(large.pointSize() * 2);
        m_list->setFont(large);
        QVERIFY(m_list->columnWidth(0) > wide);
        large.setPointSize(large.pointSize() / 2);
        m_list->setFont(large);
        QCOMPARE(m_list->columnWidth(0), wide);
        m_list->resize(150, 200);
        QCOMPARE(m_list->columnWidth(0), m_list->viewport()->width() * 3 / 5);
        m_list->resize(900, 200);
        QCOMPARE(m_list->columnWidth(0), wide);
        m_list->header()->resizeSection(0, 77); // by the user
        m_list->resize(800, 200);
        QCOMPARE(m_list->columnWidth(0), 77);
    }
};

QTEST_MAIN(PropertyMultiFormatItemTest)
#include "tst_propertymultiformatitem.moc"
