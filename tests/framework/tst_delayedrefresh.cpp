#include "delayedrefresh.h"
#include <QPointer>
#include <QTest>
#include <QWidget>

/// When a widget is read again after changes.
class DelayedRefreshTest : public QObject
{
    Q_OBJECT
private:
    static constexpr int Delay = 10;

    /// Counts its readings.
    struct Reader : QWidget
    {
        int readings = 0;
        std::function<void()> act; ///< called during a reading
        DelayedRefresh refresh{this, Delay, [this] {
                                   ++readings;
                                   if (act)
                                       act();
                               }};
    };

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".?"))); }

    void manyChangesAreOneReading()
    {
        Reader reader;
        reader.show();
        QTRY_COMPARE(reader.readings, 1); // the first one
        for (int i = 0; i < 5; ++i)
            reader.refresh.schedule();
        QCOMPARE(reader.readings, 1);
        QTRY_COMPARE(reader.readings, 2);
        QTest::qWait(3 * Delay);
        QCOMPARE(reader.readings, 2);
    }

    void hiddenWidgetIsReadWhenItAppears()
    {
        Reader reader;
        reader.show();
        QTRY_COMPARE(reader.readings, 1);
        reader.hide();
        reader.refresh.schedule();
        QTest::qWait(3 * Delay);
        QCOMPARE(reader.readings, 1);
        reader.show();
        QTRY_COMPARE(reader.readings, 2);
        reader.hide();
        reader.show();
        QTest::qWait(3 * Delay);
        QCOMPARE(reader.readings, 2); // nothing has changed
    }

    void changeDuringTheReadingIsReadAfterIt()
    {
        Reader reader;
        reader.act = [&] {
            if (reader.readings > 1)
                return;
            reader.refresh.schedule();
            QTest::qWait(3 * Delay); // a plug-in that runs the event loop
            QCOMPARE(reader.readings, 1);
        };
        reader.show();
        QTRY_COMPARE(reader.readings, 2);
    }

    void readingMayDestroyTheWidget()
    {
        QPointer<Reader> reader = new Reader;
        reader->act = [&] { delete reader; };
        reader->show();
        QTRY_VERIFY(!reader);
    }
};

QTEST_MAIN(DelayedRefreshTest)
#include "tst_delayedrefresh.moc"
