#include "cpphighlighter.h"
#include "highlightdriver.h"
#include "linelayout.h"
#include "longlineedit.h"
#include "painted.h"
#include <optional>
#include <QTest>
#include <QTextBlock>

using namespace Qt::StringLiterals;

namespace {
/// Eight lines in a pane.
struct Editor
{
    explicit Editor(bool isHighlighted = false)
    {
        text.setPlainText(u"\tone\n\ttwo\n\tthree\n\tfour\n\tfive\n\tsix\n\tseven\n\teight"_s);
        text.setDocumentLayout(new LineLayout(&text));
        if (isHighlighted) {
            driver.emplace(&text, &highlighter);
            driver->ensureFormatted({0, text.blockCount() - 1});
        }
        edit.setDocument(&text);
        edit.resize(400, 300);
        edit.setCursorWidth(0);
        edit.show();
        edit.grab();
    }

    /// Types a letter at the start of a line.
    void typeIn(int line)
    {
        edit.setTextCursor(QTextCursor(text.findBlockByNumber(line)));
        QTest::keyClick(&edit, Qt::Key_X);
        edit.grab();
    }

    /// The numbers of the lines whose glyphs are kept.
    [[nodiscard]] QList<int> kept() const
    {
        QList<int> lines;
        for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
            if (block.layout()->cacheEnabled())
                lines.append(block.blockNumber());
        }
        return lines;
    }

    QTextDocument text;
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter{&formats};
    std::optional<HighlightDriver> driver;
    LongLineEdit edit;
};

void setItalic(QTextDocument &text, int line)
{
    const QTextBlock block = text.findBlockByNumber(line);
    QTextCharFormat italic;
    italic.setFontItalic(true);
    italic.setForeground(Qt::red);
    block.layout()->setFormats({{0, block.length() - 1, italic}});
    text.markContentsDirty(block.position(), block.length());
}

void setLargeFont(QTextDocument &text)
{
    QFont font = text.defaultFont();
    font.setPointSize(font.pointSize() + 6);
    text.setDefaultFont(font);
}

void setWideTabs(QTextDocument &text)
{
    QTextOption option = text.defaultTextOption();
    option.setTabStopDistance(2 * option.tabStopDistance());
    text.setDefaultTextOption(option);
}
} // namespace

class LineLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void glyphsOfTheChangedLineAndItsNeighboursAreKept_data()
    {
        QTest::addColumn<bool>("isHighlighted");
        QTest::newRow("plain text") << false;
        QTest::newRow("highlighted text") << true;
    }

    void glyphsOfTheChangedLineAndItsNeighboursAreKept()
    {
        QFETCH(const bool, isHighlighted);
        Editor editor(isHighlighted);
        QCOMPARE(editor.kept(), QList<int>());
        editor.typeIn(3);
        QCOMPARE(editor.kept(), (QList{2, 3, 4}));
        editor.typeIn(3);
        QCOMPARE(editor.kept(), (QList{2, 3, 4}));
        editor.typeIn(4);
        QCOMPARE(editor.kept(), (QList{3, 4, 5}));
        editor.typeIn(7);
        QCOMPARE(editor.kept(), (QList{6, 7}));
        editor.typeIn(0);
        QCOMPARE(editor.kept(), (QList{0, 1, 2}));
    }

    void theirLinesMayMove()
    {
        Editor editor;
        editor.typeIn(5);
        QTextCursor(&editor.text).insertText(u"a\nb\n"_s);
        QCOMPARE(editor.kept(), (QList{6, 7, 8}));
        editor.typeIn(1);
        QCOMPARE(editor.kept(), (QList{0, 1, 2}));
        editor.typeIn(8);
        QTextCursor cursor(&editor.text);
        cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, 2);
        cursor.removeSelectedText();
        QCOMPARE(editor.kept(), (QList{5, 6, 7}));
        editor.typeIn(1);
        QCOMPARE(editor.kept(), (QList{0, 1, 2}));
    }

    void linesThatAreRemovedAreForgotten()
    {
        Editor editor;
        editor.typeIn(6);
        QTextCursor cursor(editor.text.findBlockByNumber(2));
        cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        editor.typeIn(0);
        QCOMPARE(editor.kept(), (QList{0, 1, 2}));
    }

    void changesOfWholeLinesKeepNothing()
    {
        Editor editor;
        editor.text.setPlainText(u"one\ntwo"_s);
        QCOMPARE(editor.kept(), QList<int>());
    }

    void keptGlyphsFollowOtherChanges_data()
    {
        QTest::addColumn<std::function<void(QTextDocument &)>>("change");
        const auto row = [](const char *name, const std::function<void(QTextDocument &)> &change) {
            QTest::newRow(name) << change;
        };
        row("format of the line", [](QTextDocument &text) { setItalic(text, 3); });
        row("format of a neighbour", [](QTextDocument &text) { setItalic(text, 4); });
        row("font", setLargeFont);
        row("tab stops", setWideTabs);
    }

    void keptGlyphsFollowOtherChanges()
    {
        QFETCH(const std::function<void(QTextDocument &)>, change);
        Editor editor;
        editor.typeIn(3);
        const QImage before = editor.edit.grab().toImage();
        change(editor.text);
        const QImage after = editor.edit.grab().toImage();
        Editor fresh;
        fresh.typeIn(3);
        for (QTextBlock block = fresh.text.begin(); block.isValid(); block = block.next())
            block.layout()->setCacheEnabled(false);
        change(fresh.text);
        QVERIFY(after != before);
        QCOMPARE(after, fresh.edit.grab().toImage());
    }
};

QTEST_MAIN(LineLayoutTest)
#include "tst_linelayout.moc"
