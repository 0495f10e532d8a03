#include "qt3numbers.h"
#include <QBitArray>
#include <QBitmap>
#include <QBrush>
#include <QCursor>
#include <QIcon>
#include <QKeySequence>
#include <QPalette>
#include <QPen>
#include <QRegion>
#include <QSizePolicy>
#include <QTest>

using namespace Qt::StringLiterals;

class Qt3NumbersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void keysAreConvertedInBothDirections_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("number");
        QTest::newRow("Escape") << int(Qt::Key_Escape) << 0x1000;
        QTest::newRow("Backtab") << int(Qt::Key_Backtab) << 0x1002;
        QTest::newRow("Return") << int(Qt::Key_Return) << 0x1004;
        QTest::newRow("Page Down") << int(Qt::Key_PageDown) << 0x1017;
        QTest::newRow("Shift") << int(Qt::Key_Shift) << 0x1020;
        QTest::newRow("Scroll Lock") << int(Qt::Key_ScrollLock) << 0x1026;
        QTest::newRow("F1") << int(Qt::Key_F1) << 0x1030;
        QTest::newRow("F35") << int(Qt::Key_F35) << 0x1052;
        QTest::newRow("Direction R") << int(Qt::Key_Direction_R) << 0x1060;
        QTest::newRow("unknown") << int(Qt::Key_unknown) << 0xffff;
        QTest::newRow("A") << int(Qt::Key_A) << 0x41;
        QTest::newRow("y with diaeresis") << int(Qt::Key_ydiaeresis) << 0xff;
        QTest::newRow("one of the current toolkit only") << int(Qt::Key_AltGr) << int(Qt::Key_AltGr);
    }

    void keysAreConvertedInBothDirections()
    {
        QFETCH(int, key);
        QFETCH(int, number);
        QCOMPARE(Qt3Numbers::fromKey(key), number);
        QCOMPARE(Qt3Numbers::toKey(number), key);
        QCOMPARE(Qt3Numbers::toKey(key), key); // current numbers are accepted
    }

    void statesContainButtonsAndModifiers_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<Qt::MouseButtons>("buttons");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("nothing") << 0 << Qt::MouseButtons() << Qt::KeyboardModifiers();
        QTest::newRow("left") << 1 << Qt::MouseButtons(Qt::LeftButton) << Qt::KeyboardModifiers();
        QTest::newRow("right and middle") << 6 << (Qt::RightButton | Qt::MiddleButton) << Qt::KeyboardModifiers();
        QTest::newRow("Shift") << 0x100 << Qt::MouseButtons() << Qt::KeyboardModifiers(Qt::ShiftModifier);
        QTest::newRow("Control") << 0x200 << Qt::MouseButtons() << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("Alt") << 0x400 << Qt::MouseButtons() << Qt::KeyboardModifiers(Qt::AltModifier);
        QTest::newRow("Meta") << 0x800 << Qt::MouseButtons() << Qt::KeyboardModifiers(Qt::MetaModifier);
        QTest::newRow("Keypad") << 0x4000 << Qt::MouseButtons() << Qt::KeyboardModifiers(Qt::KeypadModifier);
        QTest::newRow("several") << 0x301 << Qt::MouseButtons(Qt::LeftButton)
                                 << (Qt::ShiftModifier | Qt::ControlModifier);
    }

    void statesContainButtonsAndModifiers()
    {
        QFETCH(int, state);
        QFETCH(Qt::MouseButtons, buttons);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QCOMPARE(Qt3Numbers::fromState(buttons, modifiers), state);
        QCOMPARE(Qt3Numbers::toButtons(state), buttons);
        QCOMPARE(Qt3Numbers::toModifiers(state), modifiers);
        QCOMPARE(Qt3Numbers::toModifiers(modifiers.toInt()), modifiers); // current bits are accepted
    }

    void newButtonsAndModifiersHaveNoNumber()
    {
        QCOMPARE(Qt3Numbers::fromState(Qt::BackButton, Qt::GroupSwitchModifier), 0);
    }

    void focusReasonsHaveTheirNumbers_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::addColumn<int>("number");
        QTest::newRow("mouse") << Qt::MouseFocusReason << 0;
        QTest::newRow("tab") << Qt::TabFocusReason << 1;
        QTest::newRow("backtab") << Qt::BacktabFocusReason << 2;
        QTest::newRow("window") << Qt::ActiveWindowFocusReason << 3;
        QTest::newRow("popup") << Qt::PopupFocusReason << 4;
        QTest::newRow("shortcut") << Qt::ShortcutFocusReason << 5;
        QTest::newRow("other") << Qt::OtherFocusReason << 6;
    }

    void focusReasonsHaveTheirNumbers()
    {
        QFETCH(Qt::FocusReason, reason);
        QFETCH(int, number);
        QCOMPARE(Qt3Numbers::fromFocusReason(reason), number);
        QCOMPARE(Qt3Numbers::toFocusReason(number), reason);
    }

    void newFocusReasonsCountAsOther()
    {
        QCOMPARE(Qt3Numbers::fromFocusReason(Qt::MenuBarFocusReason), 6);
        QCOMPARE(Qt3Numbers::fromFocusReason(Qt::NoFocusReason), 6);
        QCOMPARE(Qt3Numbers::toFocusReason(-1), Qt::OtherFocusReason);
        QCOMPARE(Qt3Numbers::toFocusReason(100), Qt::OtherFocusReason);
    }

    void typesOfValuesHaveTheirNumbers()
    {
        const std::pair<QMetaType, int> kinds[] = {{QMetaType::fromType<QVariantMap>(), 1},
                                                   {QMetaType::fromType<QVariantList>(), 2},
                                                   {QMetaType::fromType<QString>(), 3},
                                                   {QMetaType::fromType<QStringList>(), 4},
                                                   {QMetaType::fromType<QFont>(), 5},
                                                   {QMetaType::fromType<QPixmap>(), 6},
                                                   {QMetaType::fromType<QBrush>(), 7},
                                                   {QMetaType::fromType<QRect>(), 8},
                                                   {QMetaType::fromType<QSize>(), 9},
                                                   {QMetaType::fromType<QColor>(), 10},
                                                   {QMetaType::fromType<QPalette>(), 11},
                                                   {QMetaType::fromType<QIcon>(), 13},
                                                   {QMetaType::fromType<QPoint>(), 14},
                                                   {QMetaType::fromType<QImage>(), 15},
                                                   {QMetaType::fromType<int>(), 16},
                                                   {QMetaType::fromType<Qt::FocusPolicy>(), 16},
                                                   {QMetaType::fromType<Qt::Alignment>(), 16},
                                                   {QMetaType::fromType<uint>(), 17},
                                                   {QMetaType::fromType<bool>(), 18},
                                                   {QMetaType::fromType<double>(), 19},
                                                   {QMetaType::fromType<float>(), 19},
                                                   {QMetaType::fromType<QPolygon>(), 21},
                                                   {QMetaType::fromType<QRegion>(), 22},
                                                   {QMetaType::fromType<QBitmap>(), 23},
                                                   {QMetaType::fromType<QCursor>(), 24},
                                                   {QMetaType::fromType<QSizePolicy>(), 25},
                                                   {QMetaType::fromType<QDate>(), 26},
                                                   {QMetaType::fromType<QTime>(), 27},
                                                   {QMetaType::fromType<QDateTime>(), 28},
                                                   {QMetaType::fromType<QByteArray>(), 29},
                                                   {QMetaType::fromType<QBitArray>(), 30},
                                                   {QMetaType::fromType<QKeySequence>(), 31},
                                                   {QMetaType::fromType<QPen>(), 32},
                                                   {QMetaType::fromType<qint64>(), 33},
                                                   {QMetaType::fromType<quint64>(), 34},
                                                   {QMetaType::fromType<QUrl>(), 0},
                                                   {QMetaType::fromType<QLocale>(), 0},
                                                   {QMetaType::fromType<QObject *>(), 0},
                                                   {QMetaType(), 0}};
        for (const auto &[type, number] : kinds)
            QVERIFY2(Qt3Numbers::fromMetaType(type) == number, type.name());
    }

    void objectWithoutANameIsUnnamed()
    {
        QObject object;
        QCOMPARE(Qt3Numbers::nameOf(&object), u"unnamed"_s);
        object.setObjectName(u"a b"_s);
        QCOMPARE(Qt3Numbers::nameOf(&object), u"a b"_s);
    }
};

QTEST_MAIN(Qt3NumbersTest)
#include "tst_qt3numbers.moc"
