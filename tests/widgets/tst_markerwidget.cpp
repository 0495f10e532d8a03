#include "markerwidget.h"
#include "scrollview.h"
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
const QStringList Pictures{u"markerenabledbreak.png"_s,  u"markerdisabledbreak.png"_s,  u"markermultiplebreak.png"_s,
                           u"markerenabledbreak2.png"_s, u"markerdisabledbreak2.png"_s, u"markermultiplebreak2.png"_s,
                           u"markercurrent.png"_s,       u"markerlookup.png"_s,         u"markercaller.png"_s};

QColor colourOf(const QString &name)
{
    return QColor::fromHsv(int(Pictures.indexOf(name)) * 40, 255, 200);
}

/// A margin of 100 pixels with rows of 20, whose pictures are 10 pixels high.
struct Fixture
{
    Fixture() : margin(&view)
    {
        margin.setPictures([this](const QString &name) {
            asked << name;
            QPixmap picture(10, 10);
            picture.fill(colourOf(name));
            return picture;
        });
        margin.setLineHeight(20);
        margin.resize(MarkerWidget::Width, 100);
    }

    /// The pictures of the rows from the top, by their names; "-" for none.
    [[nodiscard]] QStringList shown()
    {
        const QImage image = margin.grab().toImage();
        QStringList found;
        for (int y = 10; y < 100; y += 20) {
            QString name = u"-"_s;
            for (const QString &picture : Pictures) {
                if (image.pixelColor(5, y).rgb() == colourOf(picture).rgb())
                    name = picture.section(u'.', 0, 0).mid(6);
            }
            found << name;
        }
        return found;
    }

    ScrollView view;
    MarkerWidget margin;
    QStringList asked;
};
} // namespace

class MarkerWidgetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support )"_s)); }

    void startsWithRowsOfTenAtTheTop()
    {
        ScrollView view;
        const MarkerWidget margin(&view);
        QCOMPARE(margin.lineHeight(), 10);
        QCOMPARE(margin.offset(), 0);
    }

    void keepsBitsByLine()
    {
        Fixture f;
        f.margin.setMarker(3, 0x01, true, false);
        QCOMPARE(f.margin.markers(), (QMap<int, int>{{3, 0x01}}));
        f.margin.setMarker(3, 0x08, true, true); // the current line has no second picture
        QCOMPARE(f.margin.markers(), (QMap<int, int>{{3, 0x09}}));
        f.margin.setMarker(3, 0x10, true, true);
        QCOMPARE(f.margin.markers(), (QMap<int, int>{{3, 0x19}}));
        f.margin.setMarker(3, 0x02, true, true);
        QCOMPARE(f.margin.markers(), (QMap<int, int>{{3, 0x801b}}));
        f.margin.setMarker(3, 0x02, true, false);
        QCOMPARE(f.margin.markers(), (QMap<int, int>{{3, 0x1b}}));
        f.margin.setMarker(3, 0x1b, false, true);
        QVERIFY(f.margin.markers().isEmpty());
    }

    void lineWithTheAlternateBitAloneIsRemoved()
    {
        Fixture f;
        f.margin.setMarker(5, 0x01, true, true);
        f.margin.setMarker(5, 0x01, false, false);
        QVERIFY(f.margin.markers().isEmpty());
        f.margin.setMarker(5, 0x01, true, true);
        f.margin.setMarker(6, 0x08, true, false);
        f.margin.clearMarkers(0x07);
        QCOMPARE(f.margin.markers(), (QMap<int, int>{{6, 0x08}}));
    }

    void knowsItsMarkers()
    {
        Fixture f;
        f.margin.setMarker(5, 0x03, true, false);
        QVERIFY(f.margin.hasMarker(5, 0x06));
        QVERIFY(!f.margin.hasMarker(5, 0x08));
        QVERIFY(!f.margin.hasMarker(4, 0xff));
    }

    void drawsTheMarksOfTheLinesOnScreen()
    {
        Fixture f;
        f.margin.setMarker(1, 0x01, true, false);
        f.margin.setMarker(2, 0x02, true, true);
        f.margin.setMarker(3, 0x04, true, false);
        f.margin.setMarker(4, 0x09, true, false);
        f.margin.setMarker(5, 0x19, true, false); // drawn one above the other
        f.margin.setMarker(70, 0x01, true, false);
        QCOMPARE(f.shown(),
                 (QStringList{u"enabledbreak"_s, u"disabledbreak2"_s, u"multiplebreak"_s, u"current"_s, u"lookup"_s}));
        f.margin.setPosition(0, 20);
        QCOMPARE(f.shown().first(), u"disabledbreak2"_s);
        f.margin.setPosition(0, 66 * 20);
        QCOMPARE(f.shown(), (QStringList{u"-"_s, u"-"_s, u"-"_s, u"enabledbreak"_s, u"-"_s}));
    }

    void callerHasAPictureOfItsOwn()
    {
        Fixture f;
        f.margin.setMarker(1, 0x20, true, false);
        f.margin.setMarker(2, 0x29, true, false); // drawn above those
        f.margin.setMarker(3, 0x30, true, false); // drawn below that
        QCOMPARE(f.shown(), (QStringList{u"caller"_s, u"caller"_s, u"lookup"_s, u"-"_s, u"-"_s}));
    }

    void clickTogglesTheBreakpointOfItsLine()
    {
        Fixture f;
        QSignalSpy toggled(&f.margin, &MarkerWidget::toggleBreakpoint);
        QTest::mouseClick(&f.margin, Qt::LeftButton, {}, {9, 39});
        QCOMPARE(toggled.takeFirst(), QVariantList{2});
        f.margin.setPosition(0, 15);
        QTest::mouseClick(&f.margin, Qt::LeftButton, {}, {9, 5});
        QCOMPARE(toggled.takeFirst(), QVariantList{2});
        QTest::mouseClick(&f.margin, Qt::RightButton, {}, {9, 5});
        QVERIFY(toggled.isEmpty());
    }

    void linesFarDownAreMarked()
    {
        Fixture f;
        const int line = 299'999'999;
        f.margin.setMarker(line, 0x01, true, false);
        f.margin.setPosition(0, qint64(line - 2) * 20);
        QCOMPARE(f.shown().at(1), u"enabledbreak"_s);
        QSignalSpy toggled(&f.margin, &MarkerWidget::toggleBreakpoint);
        QTest::mouseClick(&f.margin, Qt::LeftButton, {}, {9, 25});
        QCOMPARE(toggled.takeFirst(), QVariantList{line});
    }

    void picturesAreLoadedOnceForEachPalette()
    {
        Fixture f;
        f.margin.setMarker(1, 0x01, true, false);
        QVERIFY(!f.shown().isEmpty());
        QVERIFY(!f.shown().isEmpty());
        QCOMPARE(f.asked.size(), 1);
        f.margin.setPalette(QPalette(Qt::black));
        QVERIFY(!f.shown().isEmpty());
        QCOMPARE(f.asked.size(), 2);
    }

    void wheelScrollsTheView()
    {
        Fixture f;
        f.view.resize(100, 100);
        f.view.setSteps(8, 20);
        f.view.resizeContents(10, 2000);
        QWheelEvent wheel({5, 5}, f.margin.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&f.margin, &wheel);
        QCOMPARE(f.view.contentsY(), 60);
    }

    void breakpointsHaveToolTips()
    {
        Fixture f;
        QList<int> asked;
        f.margin.setToolTips([&](int line) {
            asked << line;
            return u"<b>fw</b>"_s;
        });
        f.margin.setMarker(2, 0x02, true, false);
        f.margin.setMarker(3, 0x08, true, false);
        f.margin.show();
        for (const int y : {5, 25, 45}) {
            QHelpEvent event(QEvent::ToolTip, {5, y}, f.margin.mapToGlobal(QPoint(5, y)));
            QApplication::sendEvent(&f.margin, &event);
            if (y == 25)
                QCOMPARE(QToolTip::text(), u"<b>fw</b>"_s);
        }
        QCOMPARE(asked, QList<int>{2});
    }
};

QTEST_MAIN(MarkerWidgetTest)
#include "tst_markerwidget.moc"
