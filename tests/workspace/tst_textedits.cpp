#include "editorfixture.h"
#include "painted.h"
#include <QClipboard>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {
/// A simple model of lines and their markers.
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
        // The marker stays with the part at the start of the line; if that part is empty, it moves with the text.
        const bool goes = index == 0;
        QList<Line> lines = m_lines.first(line);
        lines.append({old.text.left(index) + parts.first(), goes ? 0 : old.marker});
        for (int i = 1; i < parts.size() - 1; ++i)
            lines.append({parts[i], 0});
        lines.append({parts.last() + old.text.mid(index), goes ? old.marker : 0});
        m_lines = lines + m_lines.sliced(line + 1);
    }

    void remove(int line, int index, int lineTo, int indexTo)
    {
        m_lines[line].text = m_lines[line].text.left(index) + m_lines[lineTo].text.mid(indexTo);
        if (index == 0 && lineTo > line) // the line is removed completely, and the last line keeps its marker
            m_lines[line].marker = m_lines[lineTo].marker;
        m_lines.remove(line + 1, lineTo - line);
    }

    /// Replaces @p removed characters by @p text, like undo and redo: a line whose start does not move keeps its
    /// marker, also when other text is joined with it.
    void replace(int position, int removed, const QString &text)
    {
        const auto [line, index] = place(position);
        const auto [lineTo, indexTo] = place(position + removed);
        const int marker = m_lines[line].marker;
        if (removed > 0)
            remove(line, index, lineTo, indexTo);
        m_lines[line].marker |= marker;
        if (!text.isEmpty())
            insert(line, index, text);
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

    [[nodiscard]] std::pair<int, int> place(int position) const
    {
        int line = 0;
        while (line + 1 < lineCount() && position > length(line))
            position -= length(line++) + 1;
        return {line, std::min(position, length(line))};
    }

    QList<Line> m_lines;
};

/// Makes random edits in a view with two panes, and the same edits in the model.
class Editing
{
public:
    /// One of the edits pastes @p pastedLines lines.
    Editing(quint32 seed, int pastedLines) : m_pastedLines(pastedLines), m_random(seed)
    {
        f.docTemplate.highlighter()->setFormats(&m_formats);
        f.view->split();
        QObject::connect(f.document->text(), &QTextDocument::contentsChange, f.view.get(),
                         [this](int from, int removed, int added) {
                             m_change = {from, removed, added};
                         });
    }

    void edit(int step)
    {
        const int line = m_random.bounded(model.lineCount());
        const int index = m_random.bounded(3) ? m_random.bounded(model.length(line) + 1) : 0;
        if (step == 1000) {
            paste(line, index, u"pasted(\"line\"); /* */\n"_s.repeated(m_pastedLines));
            return;
        }
        switch (m_random.bounded(10)) {
        case 0:
        case 1:
            insert(line, index, u"if (x) { /* \"y\" */ }"_s.mid(m_random.bounded(12)));
            break;
        case 2:
        case 3:
            insert(line, index, u"\n"_s);
            break;
        case 4:
            insert(line, index, u"a;\n}\n{ b\n"_s.mid(m_random.bounded(6)));
            break;
        case 5:
            f.view->setMarker(line + 1, 0x01, !f.view->hasMarker(line + 1, 0x01), false);
            model.mark(line);
            break;
        case 6:
            follow([this] { f.view->undo(); });
            break;
        case 7:
            follow([this] { f.view->redo(); });
            break;
        default:
            remove(line, index);
        }
    }

    QString highlighted()
    {
        f.document->ensureProcessed(f.document->text()->lastBlock()); // without the delay after a key
        f.document->ensureFormatted(0, f.document->text()->blockCount() - 1);
        return painted(*f.document->text());
    }
    QString highlightedFromScratch()
    {
        const std::unique_ptr<QTextDocument> document = plainDocument(model.text());
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
            f.docTemplate.highlighter()->process(document.get(), block, 0);
        return painted(*document);
    }

    EditorFixture f;
    Model model{{QString()}};

private:
    void insert(int line, int index, const QString &text)
    {
        f.putCursor(line, index);
        f.view->insertText(text);
        model.insert(line, index, text);
    }
    void paste(int line, int index, const QString &text)
    {
        f.putCursor(line, index);
        QGuiApplication::clipboard()->setText(text);
        f.view->paste();
        model.insert(line, index, text);
    }
    void remove(int line, int index)
    {
        const int last = model.lineCount() - 1;
        const int lineTo = std::min(line + m_random.bounded(m_random.bounded(10) ? 3 : 60'000), last);
        const int indexTo = lineTo == line ? index + m_random.bounded(model.length(line) - index + 1)
                                           : m_random.bounded(model.length(lineTo) + 1);
        f.putCursor(line, index, lineTo, indexTo);
        f.view->remove();
        model.remove(line, index, lineTo, indexTo);
    }
    /// Applies a change of the document to the model; the texts are compared later.
    template <typename Change>
    void follow(Change change)
    {
        m_change = {};
        change();
        QTextCursor added(f.document->text());
        added.setPosition(m_change.from);
        added.setPosition(std::min(m_change.from + m_change.added, f.document->text()->characterCount() - 1),
                          QTextCursor::KeepAnchor);
        model.replace(m_change.from, m_change.removed, added.selectedText().replace(QChar::ParagraphSeparator, u'\n'));
    }

    struct ContentsChange
    {
        int from = 0;
        int removed = 0;
        int added = 0;
    };

    const int m_pastedLines;
    QRandomGenerator m_random;
    const FormatTable m_formats = readableFormats();
    ContentsChange m_change;
};
} // namespace

class TestTextEdits : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void thousandsOfEditsGiveTheSameAsTheModel_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<int>("pastedLines");
        QTest::addRow("1 MB pasted") << 1u << 45'000;
        for (quint32 seed = 2; seed <= 4; ++seed)
            QTest::addRow("seed %u", seed) << seed << 1000;
    }
    void thousandsOfEditsGiveTheSameAsTheModel()
    {
        QFETCH(const quint32, seed);
        QFETCH(const int, pastedLines);
        Editing editing(seed, pastedLines);
        for (int step = 0; step < 1200; ++step) {
            editing.edit(step);
            if (step % 50 == 0 || editing.model.lineCount() < 100) {
                QCOMPARE(editing.f.document->text()->blockCount(), editing.model.lineCount());
                QCOMPARE(editing.f.markers(), editing.model.markers());
                QCoreApplication::processEvents();
            }
            if (step % 400 == 399)
                QCOMPARE(editing.highlighted(), editing.highlightedFromScratch());
        }
        const EditorFixture &f = editing.f;
        QTextDocument *text = f.document->text();
        QCOMPARE(f.text(), editing.model.text());
        QCOMPARE(f.markers(), editing.model.markers());
        QCOMPARE(editing.highlighted(), editing.highlightedFromScratch());
        int undone = 0; // the last of the edits may have been an undo, so that more can be redone
        for (; text->isUndoAvailable(); ++undone)
            f.view->undo();
        QCOMPARE(f.text(), QString());
        for (; undone > 0; --undone)
            f.view->redo();
        f.view->clearMarkers(0xFFFF);
        QCOMPARE(f.markers(), QString());
        QCOMPARE(editing.highlighted(), editing.highlightedFromScratch());
    }
};

QTEST_MAIN(TestTextEdits)
#include "tst_textedits.moc"
