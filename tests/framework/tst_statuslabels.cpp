#include "statuslabels.h"
#include <algorithm>
#include <QDeadlineTimer>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class EventCounter : public QObject
{
public:
    explicit EventCounter(QEvent::Type type) : m_type(type) {}

    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == m_type ? 1 : 0;
        return false;
    }

private:
    const QEvent::Type m_type;
};
} // namespace

class StatusLabelsTest : public QObject
{
    Q_OBJECT

    QMainWindow m_window;
    std::unique_ptr<StatusLabels> m_labels;

    [[nodiscard]] bool isShown() const { return cursor()->text() == cursor()->property("text").toString(); }
    [[nodiscard]] QLabel *cursor() const { return m_window.findChild<QLabel *>(u"cursorLabel"_s); }

private Q_SLOTS:
    void initTestCase()
    {
        m_labels = std::make_unique<StatusLabels>(m_window.statusBar());
        m_window.resize(600, 300);
        m_window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_window));
    }

    /// With a new layout, all docks and tool bars of a window would be placed again at each key.
    void positionOfTheSameLengthNeedsNoLayout()
    {
        m_labels->setCursor(99, 10);
        QTRY_VERIFY(isShown());
        EventCounter counter(QEvent::LayoutRequest);
        m_window.statusBar()->installEventFilter(&counter);
        m_labels->setCursor(99, 11);
        m_labels->setCursor(9, 1);
        QTRY_VERIFY(isShown());
        QCOMPARE(counter.count, 0);
        QCOMPARE(cursor()->text(), u" Ln 10, Col 2"_s);
    }

    /// Test drivers read the text at once, but a key does not wait for it.
    void positionIsPaintedLater()
    {
        m_labels->setCursor(3, 4);
        QTRY_COMPARE(cursor()->text(), u" Ln 4, Col 5"_s);
        QCoreApplication::processEvents();
        EventCounter paints(QEvent::Paint);
        cursor()->installEventFilter(&paints);
        m_labels->setCursor(3, 5);
        QCOMPARE(cursor()->property("text"), u" Ln 4, Col 6"_s);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(cursor()->text(), u" Ln 4, Col 5"_s);
        QCOMPARE(paints.count, 0);
        QTRY_COMPARE(paints.count, 1);
        QCOMPARE(cursor()->text(), u" Ln 4, Col 6"_s);
        m_labels->clearCursor();
        QCOMPARE(cursor()->property("text"), QString());
        QTRY_COMPARE(paints.count, 2);
        QCOMPARE(cursor()->text(), QString());
    }

    void positionIsPaintedWhileAKeyRepeats()
    {
        const QDeadlineTimer end(5000);
        while (!cursor()->text().startsWith(u" Ln 6,"_s) && !end.hasExpired()) {
            m_labels->setCursor(5, 0);
            QCoreApplication::processEvents();
        }
        QCOMPARE(cursor()->text(), u" Ln 6, Col 1"_s);
    }

    void longerPositionIsShownWhole()
    {
        m_labels->setCursor(0, 0);
        m_labels->setCursor(123'456'788, 123'456'788);
        QTRY_COMPARE(cursor()->text(), u" Ln 123456789, Col 123456789"_s);
        QVERIFY(cursor()->width() >= cursor()->sizeHint().width());
    }

    void positionIsShownWholeInALargerFont()
    {
        m_labels->setCursor(99, 10);
        QTRY_VERIFY(isShown());
        QFont font = cursor()->font();
        font.setPointSize(font.pointSize() + 5);
        cursor()->setFont(font);
        QVERIFY(cursor()->width() >= cursor()->fontMetrics().horizontalAdvance(cursor()->text()));
    }

    void textOfAPluginIsNoMarkup()
    {
        m_labels->showInfo(u"a<br>b"_s, 0);
        const QList<QLabel *> labels = m_window.statusBar()->findChildren<QLabel *>();
        const auto label = std::ranges::find(labels, u"a<br>b"_s, &QLabel::text);
        QVERIFY(label != labels.end());
        QVERIFY((*label)->sizeHint().width() >= (*label)->fontMetrics().horizontalAdvance(u"a<br>b"_s));
        m_labels->hideInfo();
    }

    void noMenuOfFormatsOpensWithoutAText()
    {
        m_labels->showFormatMenu();
        QVERIFY(!m_window.findChild<QMenu *>(u"fileFormatMenu"_s)->isVisible());
    }

    void sizeFollowsTheFont()
    {
        m_labels->setCursor(0, 0);
        QTRY_VERIFY(isShown());
        QFont font = cursor()->font();
        font.setPointSize(font.pointSize() * 2);
        cursor()->setFont(font);
        QCoreApplication::processEvents();
        QVERIFY(cursor()->width() >= cursor()->sizeHint().width());
        QVERIFY(cursor()->height() >= cursor()->sizeHint().height());
        QTRY_VERIFY(m_window.statusBar()->rect().contains(cursor()->geometry()));
    }
};

QTEST_MAIN(StatusLabelsTest)
#include "tst_statuslabels.moc"
