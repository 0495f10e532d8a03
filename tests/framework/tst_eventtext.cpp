#include "commandwords.h"
#include "eventtext.h"
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
std::unique_ptr<QEvent> read(const QString &fields)
{
    CommandWords words(fields);
    return readEvent(words);
}

QString recorded(const QEvent &event)
{
    QObject object;
    object.setObjectName(u"o"_s);
    return recordedCommand(&object, &event);
}
} // namespace

class EventTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void readEventIsRecordedUnchanged_data()
    {
        QTest::addColumn<QString>("fields");
        const QStringList rows{u"2 3 -4 103 204 1 0"_s,
                               u"2 3 4 103 204 2 257"_s,
                               u"3 3 4 103 204 1 1"_s,
                               u"3 3 4 103 204 4 517"_s,
                               u"4 3 4 103 204 1 0"_s,
                               u"5 3 4 103 204 0 1"_s,
                               u"6 65 97 0 0 1 1 a"_s,
                               u"6 65 65 256 0 1 1 A"_s,
                               u"6 4112 0 0 1 3 0"_s,
                               u"7 4100 13 0 0 1 1 \r"_s,
                               u"6 32 32 0 0 1 1  "_s,
                               u"6 4128 0 0 0 1 0"_s,   // Shift down: not among the modifiers yet
                               u"7 4128 0 256 0 1 0"_s, // and up: still
                               u"6 65535 0 0 0 1 0"_s,
                               u"6 67 3 512 0 1 1 \u0003"_s,
                               u"6 0 97 0 0 2 1 a b  c"_s,
                               u"6 0 228 0 0 1 1 ä"_s,
                               u"6 0 0 0 0 1 1 €"_s,
                               u"8 0"_s,
                               u"8 6"_s,
                               u"9 3"_s,
                               u"10 "_s,
                               u"11 "_s};
        for (const QString &row : rows)
            QTest::newRow(qPrintable(row)) << row;
    }

    void readEventIsRecordedUnchanged()
    {
        QFETCH(QString, fields);
        const std::unique_ptr<QEvent> event = read(fields + u"\r\n"_s);
        QVERIFY(event);
        QVERIFY(isRecorded(event->type()));
        QCOMPARE(recorded(*event), u"EVENT o "_s + fields);
    }

    void pressHasItsButtonAndReleaseHasNot()
    {
        const auto buttons = [](const QString &fields) {
            const std::unique_ptr<QEvent> event = read(fields);
            return static_cast<const QMouseEvent *>(event.get())->buttons();
        };
        QCOMPARE(buttons(u"2 0 0 0 0 1 2"_s), Qt::LeftButton | Qt::RightButton);
        QCOMPARE(buttons(u"4 0 0 0 0 1 0"_s), Qt::LeftButton);
        QCOMPARE(buttons(u"3 0 0 0 0 1 3"_s), Qt::RightButton);
        QCOMPARE(buttons(u"5 0 0 0 0 0 3"_s), Qt::LeftButton | Qt::RightButton);
    }

    void currentNumbersAreReadAsWell()
    {
        const std::unique_ptr<QEvent> event = read(u"6 16777220 0 33554432 0 1 0"_s);
        const auto *key = static_cast<const QKeyEvent *>(event.get());
        QCOMPARE(key->key(), int(Qt::Key_Return));
        QCOMPARE(key->modifiers(), Qt::ShiftModifier);
    }

    void onlyTheNumberOneIsTrue()
    {
        const auto repeats = [](int number) {
            const std::unique_ptr<QEvent> event = read(u"6 65 97 0 %1 1 1 a"_s.arg(number));
            return static_cast<const QKeyEvent *>(event.get())->isAutoRepeat();
        };
        QVERIFY(repeats(1));
        QVERIFY(!repeats(2));
        QVERIFY(!repeats(-1));
        const std::unique_ptr<QEvent> event = read(u"6 65 97 0 0 1 2 a"_s);
        QVERIFY(static_cast<const QKeyEvent *>(event.get())->text().isEmpty());
    }

    void textCodeIsIgnored()
    {
        const std::unique_ptr<QEvent> event = read(u"6 65 98 0 0 1 1 xyz"_s);
        QCOMPARE(static_cast<const QKeyEvent *>(event.get())->text(), u"xyz"_s);
        QVERIFY(static_cast<const QKeyEvent *>(read(u"6 65 98 0 0 1 0"_s).get())->text().isNull());
    }

    void invalidFieldsGiveNoEvent_data()
    {
        QTest::addColumn<QString>("fields");
        const QStringList rows{u""_s,
                               u"press"_s,
                               u"2"_s,
                               u"2 1 2 3 4 1"_s,
                               u"2 1 2 3 4 left 0"_s,
                               u"6 65 97"_s,
                               u"6 65 97 0 0 1"_s,
                               u"6 a a 0 0 1 0"_s,
                               u"8"_s,
                               u"9 mouse"_s,
                               u"-1"_s,
                               u"65536"_s,
                               u"4294967298"_s,
                               u"0x2"_s,
                               u"2,1,2,3,4,1,0"_s};
        for (const QString &row : rows)
            QTest::newRow(qPrintable(row)) << row;
    }

    void invalidFieldsGiveNoEvent()
    {
        QFETCH(QString, fields);
        QVERIFY(!read(fields));
    }

    void otherTypesGiveAPlainEvent()
    {
        for (const int type : {0, 24, 77, 99, 999, 1005, 65535})
            QCOMPARE(int(read(QString::number(type))->type()), type);
    }

    void typesOfOtherClassesGiveAnEventOfThatClassOrNone()
    {
        QVERIFY(dynamic_cast<QCloseEvent *>(read(u"19"_s).get()));
        QVERIFY(dynamic_cast<QShowEvent *>(read(u"17"_s).get()));
        QVERIFY(dynamic_cast<QHideEvent *>(read(u"18"_s).get()));
        QVERIFY(dynamic_cast<QEnterEvent *>(read(u"10"_s).get()));
        for (const int type :
             {int(QEvent::Timer), int(QEvent::Paint), int(QEvent::DeferredDelete), 1000, 1001, 52343}) {
            QTest::ignoreMessage(
                QtWarningMsg,
                qPrintable(
                    u"QtRunnerSocket: An event of type %1 needs more than its type, so nothing is sent."_s.arg(type)));
            QCOMPARE(read(QString::number(type))->type(), QEvent::None);
        }
    }

    void onlyInputAndFocusEventsAreRecorded()
    {
        QVERIFY(!isRecorded(QEvent::Timer));
        QVERIFY(isRecorded(QEvent::MouseButtonPress));
        QVERIFY(isRecorded(QEvent::Leave));
        QVERIFY(!isRecorded(QEvent::Paint));
    }

    void pathStopsAtAParentWithoutAName()
    {
        QObject top;
        auto *nameless = new QObject(&top);
        auto *bar = new QObject(nameless);
        auto *edit = new QObject(bar);
        top.setObjectName(u"top"_s);
        bar->setObjectName(u"bar"_s);
        edit->setObjectName(u"edit"_s);
        QCOMPARE(objectPath(edit), u"bar.edit"_s);
        QCOMPARE(objectPath(nameless), u"top.unnamed"_s);
        QCOMPARE(objectPath(nullptr), QString());
        nameless->setObjectName(u"middle"_s);
        QCOMPARE(objectPath(edit), u"top.middle.bar.edit"_s);
        nameless->setObjectName(u"unnamed"_s);
        QCOMPARE(objectPath(edit), u"bar.edit"_s);
    }
};

QTEST_MAIN(EventTextTest)
#include "tst_eventtext.moc"
