#include "editorfixture.h"
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {
/// Lines and their markers, kept in the plainest way.
class Model
{
public:
    explicit Model(const QStringList &texts)
    {
        for (const QString &text : texts)
            m_lines.append({text, 0});
    }

    void insert(int line, int index, const QString &text)
    {
        const QStringList parts = text.split(u'\n');
        const Line old = m_lines[line];
        if (parts.size() == 1) {
            m_lines[line].text.insert(index, text);
            return;
        }
        // The marker stays with the part that keeps its start; with nothing before it, it goes with the text.
        const bool goes = index == 0;
        m_lines[line] = {old.text.left(index) + parts.first(), goes ? 0 : old.marker};
        for (int i = 1; i < parts.size() - 1; ++i)
            m_lines.insert(line + i, {parts[i], 0});
        m_lines.insert(line + parts.size() - 1, {parts.last() + old.text.mid(index), goes ? old.marker : 0});
    }

    void remove(int line, int index, int lineTo, int indexTo)
    {
        m_lines[line].text = m_lines[line].text.left(index) + m_lines[lineTo].text.mid(indexTo);
        if (index == 0 && lineTo > line) // nothing is left of it: it goes itself, and the last line keeps its marker
            m_lines[line].marker = m_lines[lineTo].marker;
        m_lines.remove(line + 1, lineTo - line);
    }

    void mark(int line) { m_lines[line].marker ^= 1; }

    [[nodiscard]] int lineCount() const { return int(m_lines.size()); }
    [[nodiscard]] int length(int line) const { return int(m_lines[line].text.size()); }
    [[nodiscard]] QString text() const
    {
        QStringList texts;
        for (const Line &line : m_lines)
            texts << line.text;
        return texts.join(u'\n');
    }
    [[nodiscard]] QString markers() const
    {
        QStringList found;
        for (int i = 0; i < m_lines.size(); ++i) {
            if (m_lines[i].marker)
                found << u"%1:1"_s.arg(i + 1);
        }
        return found.join(u' ');
    }

private:
    struct Line
    {
        QString text;
        int marker;
    };
    QList<Line> m_lines;
};
} // namespace

class TestTextEdits : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void thousandsOfEditsAgreeWithPlainStrings_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 4; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }
    void thousandsOfEditsAgreeWithPlainStrings()
    {
        QFETCH(const quint32, seed);
        QRandomGenerator random(seed);
        EditorFixture f;
        f.view->split();
        Model model({QString()});
        QTextDocument *text = f.document->text();
        const auto insertAt = [&](int line, int index, const QString &inserted) {
            f.putCursor(line, index);
            f.view->insertText(inserted);
            model.insert(line, index, inserted);
        };
        for (int step = 0; step < 2000; ++step) {
            const int line = random.bounded(model.lineCount());
            const int index = random.bounded(3) ? random.bounded(model.length(line) + 1) : 0;
            switch (random.bounded(8)) {
            case 0:
            case 1:
                insertAt(line, index, u"if (x) { /* \"y\" */ }"_s.mid(random.bounded(12)));
                break;
            case 2:
            case 3:
                insertAt(line, index, u"\n"_s);
                break;
            case 4:
                insertAt(line, index, u"a;\n}\n{ b\n"_s.mid(random.bounded(6)));
                break;
            case 5:
                if (step % 200 == 0)
                    insertAt(line, index, u"pasted(\"line\");\n"_s.repeated(3000));
                f.view->setMarker(line + 1, 0x01, !f.view->hasMarker(line + 1, 0x01), false);
                model.mark(line);
                break;
            default: {
                const int lineTo =
                    std::min(line + random.bounded(random.bounded(20) ? 3 : 4000), model.lineCount() - 1);
                const int indexTo = lineTo == line ? index + random.bounded(model.length(line) - index + 1)
                                                   : random.bounded(model.length(lineTo) + 1);
                f.putCursor(line, index, lineTo, indexTo);
                f.view->remove();
                model.remove(line, index, lineTo, indexTo);
            }
            }
            if (step % 50 == 0 || model.lineCount() < 100) {
                QCOMPARE(text->blockCount(), model.lineCount());
                QCOMPARE(f.markers(), model.markers());
                QCoreApplication::processEvents();
            }
        }
        QCOMPARE(f.text(), model.text());
        QCOMPARE(f.markers(), model.markers());
        while (text->isUndoAvailable())
            f.view->undo();
        QCOMPARE(f.text(), QString());
        while (text->isRedoAvailable())
            f.view->redo();
        QCOMPARE(f.text(), model.text());
        f.view->clearMarkers(0xFFFF);
        QCOMPARE(f.markers(), QString());
    }
};

QTEST_MAIN(TestTextEdits)
#include "tst_textedits.moc"
