#include "statuslabels.h"
#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class LayoutCounter : public QObject
{
public:
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::LayoutRequest ? 1 : 0;
        return false;
    }
};
} // namespace

class StatusLabelsTest : public QObject
{
    Q_OBJECT

    QMainWindow m_window;
    std::unique_ptr<StatusLabels> m_labels;

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
        QCoreApplication::processEvents();
        LayoutCounter counter;
        m_window.statusBar()->installEventFilter(&counter);
        m_labels->setCursor(99, 11);
        m_labels->setCursor(9, 1);
        QCoreApplication::processEvents();
        QCOMPARE(counter.count, 0);
        QCOMPARE(cursor()->text(), u" Ln 10, Col 2"_s);
    }

    void longerPositionIsShownWhole()
    {
        m_labels->setCursor(0, 0);
        m_labels->setCursor(123'456'788, 123'456'788);
        QCoreApplication::processEvents();
        QCOMPARE(cursor()->text(), u" Ln 123456789, Col 123456789"_s);
        QVERIFY(cursor()->width() >= cursor()->sizeHint().width());
    }

    void sizeFollowsTheFont()
    {
        m_labels->setCursor(0, 0);
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
