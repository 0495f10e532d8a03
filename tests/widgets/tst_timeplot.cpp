#include "timeplot.h"
#include <cfloat>
#include <QAccessible>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

class TimePlotTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TimePlot> m_plot;
    std::shared_ptr<TimeSeries> m_ramp; ///< 0 to 100 in 100 seconds

    void turnWheel(int steps, const QPoint &position, Qt::KeyboardModifiers modifiers = {}) const
    {
        QWheelEvent event(position, m_plot->mapToGlobal(position), {}, {0, 120 * steps}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_plot.get(), &event);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(m_plot.get(), key, modifiers);
    }
    void drag(const QPoint &from, const QPoint &to) const
    {
        QTest::mousePress(m_plot.get(), Qt::LeftButton, {}, from);
        QTest::mouseMove(m_plot.get(), to);
        QTest::mouseRelease(m_plot.get(), Qt::LeftButton, {}, to);
    }
    /// The number of pixels in the hue of a curve.
    int pixelsOf(int style) const
    {
        const QImage image = m_plot->grab().toImage();
        const QColor colour = TimePlot::curvePen(style, m_plot->palette().color(QPalette::Base)).color();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                count += std::abs(pixel.hue() - colour.hue()) <= 6 && pixel.saturation() > 60;
            }
        }
        return count;
    }
    void pointAt(const QPoint &position) const
    {
        QMouseEvent event(QEvent::MouseMove, position, m_plot->mapToGlobal(position), Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(m_plot.get(), &event);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_ramp = std::make_shared<TimeSeries>();
        for (int i = 0; i <= 100; ++i)
            m_ramp->add(1000 * i, i);
        m_plot = std::make_unique<TimePlot>();
        m_plot->resize(600, 300);
        m_plot->setCurves({{u"ramp"_s, 0, m_ramp}});
        m_plot->setNow(100000);
        m_plot->setSpan(20000);
        m_plot->show();
    }
    void cleanup() { m_plot.reset(); }

    void emptyPlotHasAxes()
    {
        m_plot->setCurves({});
        QCOMPARE(m_plot->shownRange(), (ValueRange{-0.05, 1.05}));
        QVERIFY(!m_plot->grab().isNull());
        m_plot->resize(10, 10); // smaller than its scales
        QVERIFY(!m_plot->grab().isNull());
    }

    void followsThePresent()
    {
        QVERIFY(m_plot->isFollowing());
        QCOMPARE(m_plot->end(), 100000);
        m_ramp->add(110000, 50);
        m_plot->setNow(110000);
        QCOMPARE(m_plot->end(), 110000);
        QCOMPARE(m_plot->shownRange(), (ValueRange{47.5, 102.5}));
    }

    void linesOfTheTimesAreApartFromTheStart_data()
    {
        QTest::addColumn<int>("now");
        for (const int now : {300, 6000, 20000, 60000})
            QTest::newRow(qPrintable(QString::number(now))) << now;
    }

    void linesOfTheTimesAreApartFromTheStart()
    {
        QFETCH(const int, now);
        m_plot = std::make_unique<TimePlot>();
        m_plot->resize(600, 300);
        m_plot->setNow(now);
        m_plot->setSpan(60000);
        m_plot->show();
        const QImage image = m_plot->grab().toImage();
        const QColor paper = m_plot->palette().color(QPalette::Base);
        QList<int> columns;
        for (int x = 100; x < image.width(); ++x) {
            int drawn = 0;
            for (int y = 20; y < 200; ++y)
                drawn += image.pixelColor(x, y) != paper;
            if (drawn == 180)
                columns.append(x);
        }
        QVERIFY(columns.size() >= 2);
        while (columns.size() >= 2 && columns.last() == columns.at(columns.size() - 2) + 1)
            columns.removeLast(); // what is right of the frame
        columns.removeLast();     // the frame
        for (qsizetype i = 1; i < columns.size(); ++i)
            QVERIFY2(columns[i] - columns[i - 1] > 30, qPrintable(QString::number(columns[i])));
    }

    void curvesAreDrawnInTheirColours()
    {
        auto flat = std::make_shared<TimeSeries>();
        flat->add(0, 10);
        flat->add(100000, 10);
        m_plot->setCurves({{u"ramp"_s, 0, m_ramp}, {u"flat"_s, 1, flat}});
        QVERIFY(pixelsOf(0) > 100);
        QVERIFY(pixelsOf(1) > 100);
        QCOMPARE(pixelsOf(2), 0);
        m_plot->setCurves({{u"flat"_s, 1, flat}});
        QCOMPARE(pixelsOf(0), 0);
    }

    void gapIsNotDrawn()
    {
        auto broken = std::make_shared<TimeSeries>();
        broken->add(81000, 1);
        broken->addGap(82000);
        broken->add(99000, 1);
        m_plot->setCurves({{u"broken"_s, 2, broken}});
        const int dots = pixelsOf(2);
        QVERIFY(dots > 0 && dots < 60);
        broken = std::make_shared<TimeSeries>();
        broken->add(81000, 1);
        broken->add(99000, 1);
        m_plot->setCurves({{u"whole"_s, 2, broken}});
        QVERIFY(pixelsOf(2) > 300);
    }

    void lightAndDarkHaveTheirColours()
    {
        QPalette dark;
        dark.setColor(QPalette::Base, Qt::black);
        dark.setColor(QPalette::Text, Qt::white);
        QVERIFY(TimePlot::curvePen(0, Qt::black).color() != TimePlot::curvePen(0, Qt::white).color());
        for (int style = 0; style < 6; ++style) {
            QVERIFY(TimePlot::curvePen(style, Qt::black).color().lightnessF() > 0.5);
            QVERIFY(TimePlot::curvePen(style, Qt::white).color().lightnessF() < 0.55);
        }
        m_plot->setPalette(dark);
        QVERIFY(pixelsOf(0) > 100);
    }

    void stylesDiffer()
    {
        QList<std::pair<QRgb, Qt::PenStyle>> seen;
        for (int style = 0; style < 24; ++style) {
            const QPen pen = TimePlot::curvePen(style, Qt::white);
            QVERIFY(!seen.contains(std::pair(pen.color().rgb(), pen.style())));
            seen.append({pen.color().rgb(), pen.style()});
        }
        (void)TimePlot::curvePen(1000000, Qt::white);
        (void)TimePlot::curvePen(-1, Qt::white);
    }

    void wheelZoomsInTimeAndKeepsThePresent()
    {
        const QSignalSpy changes(m_plot.get(), &TimePlot::viewChanged);
        turnWheel(1, m_plot->rect().center());
        QCOMPARE(m_plot->span(), 16000);
        QVERIFY(m_plot->isFollowing());
        QCOMPARE(changes.size(), 1);
        for (int i = 0; i < 100; ++i)
            turnWheel(1, m_plot->rect().center());
        QCOMPARE(m_plot->span(), TimePlot::ShortestSpan);
        for (int i = 0; i < 200; ++i)
            turnWheel(-1, m_plot->rect().center());
        QCOMPARE(m_plot->span(), TimePlot::LongestSpan);
    }

    void wheelWithControlZoomsInTheValues()
    {
        const ValueRange before = m_plot->shownRange();
        turnWheel(1, m_plot->rect().center(), Qt::ControlModifier);
        QVERIFY(m_plot->fixedRange());
        QCOMPARE(m_plot->span(), 20000);
        QVERIFY(m_plot->shownRange().low > before.low && m_plot->shownRange().high < before.high);
    }

    void dragMovesInTimeAndPauses()
    {
        drag({300, 100}, {400, 100});
        QVERIFY(!m_plot->isFollowing());
        QVERIFY(m_plot->end() < 100000 && m_plot->end() > 90000);
        drag({400, 100}, {0, 100});
        QCOMPARE(m_plot->end(), 100000); // there is no future
        QVERIFY(!m_plot->fixedRange());
        m_plot->setFixedRange(ValueRange{0, 100});
        drag({300, 100}, {300, 150});
        QVERIFY(m_plot->fixedRange()->low > 5);
    }

    void doubleClickShowsThePresentWithAllValues()
    {
        drag({300, 100}, {400, 100});
        m_plot->setFixedRange(ValueRange{0, 1});
        QTest::mouseDClick(m_plot.get(), Qt::LeftButton);
        QVERIFY(m_plot->isFollowing());
        QVERIFY(!m_plot->fixedRange());
    }

    void keysMoveAndZoom()
    {
        press(Qt::Key_Left);
        QCOMPARE(m_plot->end(), 98000);
        QVERIFY(!m_plot->isFollowing());
        press(Qt::Key_PageUp);
        QCOMPARE(m_plot->end(), 78000);
        press(Qt::Key_PageDown);
        press(Qt::Key_Right);
        QCOMPARE(m_plot->end(), 100000);
        press(Qt::Key_Home);
        QCOMPARE(m_plot->end(), 20000);
        press(Qt::Key_PageUp);
        QCOMPARE(m_plot->end(), 20000); // nothing was recorded before
        press(Qt::Key_End);
        QVERIFY(m_plot->isFollowing());
        press(Qt::Key_Plus);
        QCOMPARE(m_plot->span(), 16000);
        press(Qt::Key_Minus);
        QCOMPARE(m_plot->span(), 20000);
    }

    void keysMoveAndZoomTheValues()
    {
        m_plot->setFixedRange(ValueRange{0, 100});
        press(Qt::Key_Up);
        QCOMPARE(*m_plot->fixedRange(), (ValueRange{10, 110}));
        press(Qt::Key_Down);
        QCOMPARE(*m_plot->fixedRange(), (ValueRange{0, 100}));
        press(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(*m_plot->fixedRange(), (ValueRange{10, 90}));
        press(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(*m_plot->fixedRange(), (ValueRange{0, 100}));
        press(Qt::Key_0);
        QVERIFY(!m_plot->fixedRange());
    }

    void spacePausesWhileRecordingGoesOn()
    {
        press(Qt::Key_Space);
        QVERIFY(!m_plot->isFollowing());
        m_ramp->add(105000, 1);
        m_plot->setNow(105000);
        QCOMPARE(m_plot->end(), 100000);
        press(Qt::Key_Space);
        QCOMPARE(m_plot->end(), 105000);
    }

    void otherKeysAreLeftToTheWindow()
    {
        QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, u"a"_s);
        QCoreApplication::sendEvent(m_plot.get(), &letter);
        QVERIFY(!letter.isAccepted());
        QKeyEvent zoom(QEvent::KeyPress, Qt::Key_Plus, Qt::ControlModifier, u"+"_s);
        QCoreApplication::sendEvent(m_plot.get(), &zoom);
        QVERIFY(!zoom.isAccepted());
        QCOMPARE(m_plot->span(), 20000);
    }

    void readingLineFollowsMouseAndKeys()
    {
        pointAt(m_plot->rect().center());
        QVERIFY(m_plot->readingTime());
        pointAt({1, 1}); // outside the axes
        QVERIFY(!m_plot->readingTime());
        pointAt(m_plot->rect().center());
        QVERIFY(!m_plot->grab().isNull());
        m_plot->setReadingTime(90000);
        QVERIFY2(m_plot->text().endsWith(u"\nramp = 90 at 1:30.000"_s), qPrintable(m_plot->text()));
        press(Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(*m_plot->readingTime(), 89800);
        press(Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(*m_plot->readingTime(), 90000);
        m_plot->setReadingTime({});
        press(Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(*m_plot->readingTime(), 99800);
    }

    void fixedRangeMustBeARange()
    {
        m_plot->setFixedRange(ValueRange{1, 2});
        m_plot->setFixedRange(ValueRange{3, 3});
        m_plot->setFixedRange(ValueRange{4, 3});
        m_plot->setFixedRange(ValueRange{0, HUGE_VAL});
        QCOMPARE(*m_plot->fixedRange(), (ValueRange{1, 2}));
    }

    void largestNumbersAreDrawn()
    {
        auto large = std::make_shared<TimeSeries>();
        large->add(90000, -DBL_MAX);
        large->add(95000, DBL_MAX);
        m_plot->setCurves({{u"large"_s, 0, large}});
        QVERIFY(pixelsOf(0) > 20);
        press(Qt::Key_Up, Qt::ShiftModifier); // ignored: the range is no number
        turnWheel(1, m_plot->rect().center(), Qt::ControlModifier);
        QVERIFY(!m_plot->grab().isNull());
    }

    void manySamplesInAColumnShowTheirExtremes()
    {
        auto dense = std::make_shared<TimeSeries>();
        for (int i = 0; i < 20000; ++i)
            dense->add(80000 + i, i == 10000 ? 500 : 0);
        m_plot->setCurves({{u"dense"_s, 0, dense}});
        const QImage image = m_plot->grab().toImage();
        const QColor colour = TimePlot::curvePen(0, m_plot->palette().color(QPalette::Base)).color();
        int tops = 0;
        for (int x = 0; x < image.width(); ++x)
            tops += std::abs(image.pixelColor(x, image.height() / 2).hue() - colour.hue()) <= 6;
        QVERIFY(tops > 0); // the peak of one sample crosses the middle
    }

    void showAllShowsEverySample()
    {
        m_plot->showAll();
        QCOMPARE(m_plot->span(), 100000);
        QCOMPARE(m_plot->end(), 100000);
    }

    void textAndAccessibleValueSayWhatIsShown()
    {
        const QString expected = u"1:20.000 to 1:40.000, values from 79 to 101\nramp = 100 at 1:40.000"_s;
        QCOMPARE(m_plot->text(), expected);
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(m_plot.get());
        QCOMPARE(accessible->role(), QAccessible::Chart);
        QCOMPARE(accessible->text(QAccessible::Name), u"Plot"_s);
        QCOMPARE(accessible->text(QAccessible::Value), expected);
        m_plot->setFollowing(false);
        QVERIFY(m_plot->text().contains(u", paused\n"_s));
    }
};

QTEST_MAIN(TimePlotTest)
#include "tst_timeplot.moc"
