#include "editorfixture.h"
#include "textmarkerwidget.h"
#include <QPaintEvent>
#include <QSet>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QtMath>

using namespace Qt::StringLiterals;

namespace {
class PaintedWidgets : public QObject
{
public:
    QSet<QObject *> widgets;
    QRegion region;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            widgets.insert(object);
            region += static_cast<QPaintEvent *>(event)->region();
        }
        return false;
    }
};
} // namespace

/// Line numbers in the margin, and the band behind the line of the cursor.
class LineNumbersTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<EditorFixture> m_editor;

    void open(int lines, const QString &settings)
    {
        m_editor = std::make_unique<EditorFixture>(QString(lines - 1, u'\n'));
        set(settings);
    }

    /// Turns on the settings of these names, all others off.
    void set(const QString &names)
    {
        QSettings settings(m_editor->path(u"s.ini"_s), QSettings::IniFormat);
        for (const QString &key : {u"LineNumbers"_s, u"CurrentLine"_s})
            settings.setValue(u"Editor/"_s + key, int(names.contains(key)));
        m_editor->docTemplate.readSettings(settings);
        m_editor->edit()->refresh(true);
    }

    TextMarkerWidget *margin(int pane = 0) { return m_editor->edit(pane)->findChild<TextMarkerWidget *>(); }

    /// The lines on screen, counted from 1, beside which something is painted right of the markers.
    QList<int> numberedLines()
    {
        const QImage image = margin()->grab(QRect(18, 0, margin()->width() - 18, margin()->height())).toImage();
        QList<int> lines;
        for (const TextViewEdit::Line &line : m_editor->edit()->linesAt(0, margin()->height() - 1)) {
            const QRect rect = line.rect.toRect().intersected(QRect(0, 0, 100'000, margin()->height()));
            bool painted = false;
            for (int y = rect.top(); y < rect.bottom(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    painted = painted || image.pixel(x, y) != image.pixel(image.width() - 1, 0);
            }
            if (painted)
                lines << line.block.blockNumber() + 1;
        }
        return lines;
    }

    /// The lines on screen, counted from 1, whose right end is not of the colour of the paper.
    QList<int> bandedLines(const QImage &image)
    {
        QList<int> lines;
        for (const TextViewEdit::Line &line : m_editor->edit()->linesAt(0, image.height() - 2)) {
            const QColor colour = image.pixelColor(image.width() - 2, int(line.rect.center().y()));
            if (colour != m_editor->document->paperColour())
                lines << line.block.blockNumber() + 1;
        }
        return lines;
    }
    QImage onScreen()
    {
        QCoreApplication::processEvents();
        const QPoint corner = m_editor->edit()->viewport()->mapTo(m_editor->view.get(), QPoint(0, 0));
        const QSize size = m_editor->edit()->viewport()->size();
        return m_editor->view->screen()
            ->grabWindow(m_editor->view->winId(), corner.x(), corner.y(), size.width(), size.height())
            .toImage();
    }
    /// Whether all of the pane is paper from the height @p top on, and above the first line.
    bool isPaperFrom(const QImage &image, int top)
    {
        const int first = int(m_editor->edit()->linesAt(0, image.height()).first().rect.top());
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width() && (y < first || y >= top); ++x) {
                if (image.pixelColor(x, y) != m_editor->document->paperColour())
                    return false;
            }
        }
        return true;
    }
    QList<int> bandedLines() { return bandedLines(m_editor->edit()->viewport()->grab().toImage()); }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }
    void cleanup() { m_editor.reset(); }

    void withoutTheSettingTheMarginHoldsTheMarkersOnly()
    {
        open(10, {});
        QCOMPARE(margin()->width(), 18);
        QCOMPARE(m_editor->edit()->viewport()->x(), 18);
    }

    void everyLineHasItsNumber()
    {
        open(10, u"LineNumbers"_s);
        QVERIFY(margin()->width() > 18);
        QCOMPARE(m_editor->edit()->viewport()->x(), margin()->width());
        QCOMPARE(numberedLines(), (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
        set({});
        QCOMPARE(margin()->width(), 18);
        QCOMPARE(m_editor->edit()->viewport()->x(), 18);
    }

    void everyNumberHasItsColour()
    {
        open(3, u"LineNumbers"_s);
        QPalette colours = margin()->palette();
        colours.setColor(QPalette::WindowText, Qt::magenta);
        margin()->setPalette(colours);
        const QImage image = margin()->grab().toImage();
        for (const TextViewEdit::Line &line : m_editor->edit()->linesAt(0, 300)) {
            const QColor background = image.pixelColor(image.width() - 1, 0);
            bool painted = false;
            for (int y = int(line.rect.top()); y < line.rect.bottom(); ++y) {
                for (int x = 18; x < image.width(); ++x) {
                    const QColor colour = image.pixelColor(x, y);
                    QVERIFY(colour.red() - colour.green() < 30); // a shade of grey
                    painted = painted || colour != background;
                }
            }
            QVERIFY(painted);
        }
    }

    void aKeyPaintsItsLineOnly()
    {
        open(10, u"LineNumbers"_s);
        m_editor->putCursor(0, 0);
        QWidget *window = m_editor->edit()->window();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCoreApplication::processEvents();
        PaintedWidgets painted;
        window->installEventFilter(&painted);
        const QList<QWidget *> parts = window->findChildren<QWidget *>();
        for (QWidget *part : parts)
            part->installEventFilter(&painted);
        QTest::keyClick(m_editor->edit(), Qt::Key_X);
        QTRY_VERIFY(!painted.widgets.isEmpty());
        QCOMPARE(painted.widgets, QSet<QObject *>{m_editor->edit()->viewport()});
    }

    void theCursorPaintsTheLinesThatItLeavesAndReaches()
    {
        open(10, u"CurrentLine"_s);
        m_editor->putCursor(2, 0);
        QWidget *window = m_editor->edit()->window();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCoreApplication::processEvents();
        PaintedWidgets painted;
        m_editor->edit()->viewport()->installEventFilter(&painted);
        for (const auto &[from, to] : {std::pair(2, 5), std::pair(5, 2), std::pair(2, 3), std::pair(3, 2)}) {
            painted.region = {};
            m_editor->putCursor(to, 0);
            QCoreApplication::processEvents();
            for (const int line : {from, to}) {
                const QTextBlock block = m_editor->edit()->document()->findBlockByNumber(line);
                const QPoint middle = m_editor->edit()->cursorRect(QTextCursor(block)).center();
                QVERIFY(painted.region.contains(middle + QPoint(50, 0)));
            }
        }
    }

    void theMarginGrowsWithTheText()
    {
        open(99, u"LineNumbers"_s);
        const int width = margin()->width();
        m_editor->putCursor(0, 0);
        QTest::keyClick(m_editor->edit(), Qt::Key_Return);
        QCOMPARE(m_editor->edit()->blockCount(), 100);
        QVERIFY(margin()->width() > width);
        QCOMPARE(m_editor->edit()->viewport()->x(), margin()->width());
        QTest::keyClick(m_editor->edit(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(margin()->width(), width);
    }

    void everyPaneShowsNumbers()
    {
        open(10, u"LineNumbers"_s);
        m_editor->view->split();
        QCOMPARE(m_editor->view->edits().size(), 2);
        QTRY_VERIFY(margin(1)->width() > 18);
        QCOMPARE(margin(1)->width(), margin(0)->width());
    }

    void aClickOnANumberTogglesABreakpoint()
    {
        open(10, u"LineNumbers"_s);
        const QSignalSpy toggles(margin(), &TextMarkerWidget::toggleBreakpoint);
        const QRectF third = m_editor->edit()->linesAt(0, 300).at(2).rect;
        QTest::mouseClick(margin(), Qt::LeftButton, {}, QPoint(margin()->width() - 3, int(third.center().y())));
        QCOMPARE(toggles, (QList<QVariantList>{{3}}));
    }

    void theLineOfTheCursorHasABand()
    {
        open(10, {});
        QCOMPARE(bandedLines(), QList<int>());
        set(u"CurrentLine"_s);
        m_editor->putCursor(3, 0);
        QCOMPARE(bandedLines(), QList<int>{4});
        QTest::keyClick(m_editor->edit(), Qt::Key_Down);
        QCOMPARE(bandedLines(), QList<int>{5});
        set({});
        QCOMPARE(bandedLines(), QList<int>());
    }

    /// What is on the screen, not what a new painting would give.
    void theBandMovesOnTheScreen()
    {
        open(10, u"CurrentLine"_s);
        m_editor->putCursor(3, 0);
        QTRY_COMPARE(bandedLines(onScreen()), QList<int>{4});
        m_editor->putCursor(7, 0);
        QTRY_COMPARE(bandedLines(onScreen()), QList<int>{8});
        m_editor->putCursor(3, 0);
        QTRY_COMPARE(bandedLines(onScreen()), QList<int>{4});
    }

    /// Nothing clears the pane before it is painted.
    void deletedTextLeavesPaper()
    {
        open(3, u"CurrentLine"_s);
        m_editor->document->text()->setPlainText(u"MMMM\nMMMM\nMMMM"_s);
        m_editor->putCursor(2, 0);
        QTRY_COMPARE(bandedLines(onScreen()), QList<int>{3});
        m_editor->putCursor(0, 4, 2, 4);
        QTest::keyClick(m_editor->edit(), Qt::Key_Delete);
        const int end = qCeil(m_editor->edit()->linesAt(0, 10).first().rect.bottom());
        QTRY_VERIFY(isPaperFrom(onScreen(), end));
        QVERIFY(!isPaperFrom(onScreen(), end - 1));
        QCOMPARE(bandedLines(onScreen()), QList<int>{1});
    }

    void theBandLiesBelowASelection()
    {
        open(3, u"CurrentLine"_s);
        m_editor->document->text()->setPlainText(u"MMMM\n\n"_s);
        m_editor->putCursor(1, 0, 0, 0);
        const QImage image = m_editor->edit()->viewport()->grab().toImage();
        const QRectF first = m_editor->edit()->linesAt(0, 100).at(0).rect;
        const QColor selected = m_editor->edit()->palette().color(QPalette::Highlight);
        QCOMPARE(image.pixelColor(int(m_editor->document->text()->documentMargin()) + 1, int(first.top()) + 1),
                 selected);
        QCOMPARE(bandedLines(image), QList<int>{1});
    }
};

QTEST_MAIN(LineNumbersTest)
#include "tst_linenumbers.moc"
