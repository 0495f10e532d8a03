#include "editorfixture.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString Words = u"int value_x = some(call, 12); "_s;
} // namespace

/// Dragging a selection in panes with long lines. It runs on the platform "minimal", which has the toolkit's drag loop;
/// the offscreen platform ends every drag at once.
class LongLineDragTest : public QObject
{
    Q_OBJECT

private:
    struct Place
    {
        int pane;
        int line;
        int index;
    };
    using Places = QList<Place>;

    std::unique_ptr<EditorFixture> m_editor;

    [[nodiscard]] QPoint pointOf(const Place &place) const
    {
        const TextViewEdit *pane = m_editor->edit(place.pane);
        QTextCursor cursor(pane->document()->findBlockByNumber(place.line));
        cursor.setPosition(cursor.position() + place.index);
        return pane->cursorRect(cursor).center() + QPoint(1, 0);
    }
    /// Drags the selection by the character at @p from.
    void drag(const Place &from, const Place &to, Qt::KeyboardModifiers modifiers = {})
    {
        QWidget *source = m_editor->edit(from.pane)->viewport();
        QWidget *target = m_editor->edit(to.pane)->viewport();
        QWindow *window = m_editor->view->windowHandle();
        QTimer::singleShot(0, this, [this, target, window, to, modifiers] {
            const QPoint point = target->mapTo(m_editor->view.get(), pointOf(to));
            QTest::mouseMove(window, point + QPoint(1, 0));
            QTest::mouseMove(window, point);
            QTest::mouseRelease(window, Qt::LeftButton, modifiers, point);
        });
        const QPoint start = pointOf(from);
        QTest::mousePress(source, Qt::LeftButton, {}, start);
        QTest::mouseMove(source, start + QPoint(1, 0));
        QTest::mouseMove(source, start + QPoint(QApplication::startDragDistance() + 5, 0));
    }

private Q_SLOTS:
    void cleanup() { m_editor.reset(); }

    void selectionIsMovedToWhereItIsDropped_data()
    {
        QTest::addColumn<Places>("places"); ///< the start of four selected characters, and of the drop
        QTest::newRow("behind in the line") << Places{{0, 0, 15'000}, {0, 0, 15'020}};
        QTest::newRow("before in the line") << Places{{0, 0, 15'020}, {0, 0, 15'001}};
        QTest::newRow("to a short line") << Places{{0, 0, 3}, {0, 1, 2}};
        QTest::newRow("from a short line") << Places{{0, 1, 0}, {0, 0, 9}};
        QTest::newRow("to another pane") << Places{{0, 0, 3}, {1, 0, 20}};
        QTest::newRow("to a short line of another pane") << Places{{0, 0, 3}, {1, 1, 2}};
        QTest::newRow("from a short line of another pane") << Places{{1, 1, 0}, {0, 0, 9}};
    }

    void selectionIsMovedToWhereItIsDropped()
    {
        QFETCH(const Places, places);
        const Place from = places.first();
        const Place to = places.last();
        m_editor = std::make_unique<EditorFixture>(Words.repeated(1000) + u"\nlast words\n"_s);
        m_editor->view->split();
        const QString before = m_editor->text();
        QTextDocument *document = m_editor->document->text();
        const int start = document->findBlockByNumber(from.line).position() + from.index;
        const int drop = document->findBlockByNumber(to.line).position() + to.index;
        for (const Place &place : places) {
            QTextCursor cursor(document);
            cursor.setPosition(document->findBlockByNumber(place.line).position() + place.index);
            m_editor->edit(place.pane)->setTextCursor(cursor); // shows the place
            if (place.pane != from.pane) {                     // what is selected there stays
                cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 5);
                cursor.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, 2);
                m_editor->edit(place.pane)->setTextCursor(cursor);
            }
        }
        QTextCursor selected(document);
        selected.setPosition(start);
        selected.setPosition(start + 4, QTextCursor::KeepAnchor);
        m_editor->edit(from.pane)->setFocus();
        m_editor->edit(from.pane)->setTextCursor(selected);
        const QString moved = selected.selectedText();
        drag({from.pane, from.line, from.index + 1}, to);
        QString expected = before;
        if (drop > start)
            expected.insert(drop, moved).remove(start, 4);
        else
            expected.remove(start, 4).insert(drop, moved);
        QTRY_VERIFY(m_editor->text() == expected);
    }

    void pressThatMovesLessThanADragPutsTheCursor()
    {
        m_editor = std::make_unique<EditorFixture>(Words.repeated(1000));
        m_editor->putCursor(0, 0, 0, 4);
        QWidget *viewport = m_editor->edit()->viewport();
        const QPoint place = pointOf({0, 0, 2});
        const QPoint released = viewport->mapTo(m_editor->view.get(), place + QPoint(1, 0));
        QTimer end; // of a drag
        connect(&end, &QTimer::timeout, this, [this, released] {
            QTest::mouseRelease(m_editor->view->windowHandle(), Qt::LeftButton, {}, released);
        });
        end.start(0);
        QTest::mousePress(viewport, Qt::LeftButton, {}, place);
        QTest::mouseMove(viewport, place + QPoint(1, 0));
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, place + QPoint(1, 0));
        QCOMPARE(m_editor->selection(), u"0,2"_s);
        QVERIFY(m_editor->text() == Words.repeated(1000));
    }

    void selectionIsCopiedWithTheControlKey()
    {
        m_editor = std::make_unique<EditorFixture>(Words.repeated(1000));
        m_editor->putCursor(0, 0, 0, 4);
        drag({0, 0, 1}, {0, 0, 20}, Qt::ControlModifier);
        QTRY_VERIFY(m_editor->text() == Words.repeated(1000).insert(20, u"int "_s));
    }

    void textThatIsReadOnlyIsCopied()
    {
        m_editor = std::make_unique<EditorFixture>(Words.repeated(1000));
        m_editor->view->split();
        m_editor->putCursor(0, 0, 0, 4);
        m_editor->edit(0)->setReadOnly(true);
        QTextCursor selected(m_editor->document->text());
        selected.setPosition(4, QTextCursor::KeepAnchor);
        m_editor->edit(0)->setTextCursor(selected);
        drag({0, 0, 1}, {1, 0, 20});
        QTRY_VERIFY(m_editor->text() == Words.repeated(1000).insert(20, u"int "_s));
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    QApplication application(argc, argv);
    LongLineDragTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_longlinedrag.moc"
