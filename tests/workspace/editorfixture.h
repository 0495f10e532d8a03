#pragma once
#include "boxanswers.h"
#include "cpphighlighter.h"
#include "cppindent.h"
#include "editorhost.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textview.h"
#include "textviewedit.h"
#include <QAction>
#include <QPainter>
#include <QTemporaryDir>

/// The formats of the test editors: dark text on "ivory", each kind of text in a different colour.
inline FormatTable testFormats()
{
    FormatTable formats;
    for (int id = FormatId::Background; id <= FormatId::Label; ++id) {
        QTextCharFormat format;
        format.setFontFamilies({QStringLiteral("DejaVu Sans Mono")});
        format.setFontPointSize(10);
        format.setForeground(QColor::fromHsv(id * 40 % 360, 255, 140));
        formats.insert(id, format);
    }
    formats[FormatId::Background].setForeground(QColor(QStringLiteral("ivory")));
    formats[FormatId::Standard].setForeground(QColor(Qt::black));
    return formats;
}

/// A host of test editors: its pictures are squares, each of a different colour.
class FakeHost : public EditorHost
{
public:
    QString markerToolTip(const QString &filename, int line) override
    {
        asked << QStringLiteral("%1:%2").arg(filename).arg(line);
        return toolTip;
    }
    QAction *sharedAction(const QString &name) override { return actions.value(name); }
    QPixmap picture(const QString &name) override
    {
        const QStringList names{QStringLiteral("markerenabledbreak.png"),  QStringLiteral("markerenabledbreak2.png"),
                                QStringLiteral("markerdisabledbreak.png"), QStringLiteral("markerdisabledbreak2.png"),
                                QStringLiteral("markermultiplebreak.png"), QStringLiteral("markermultiplebreak2.png"),
                                QStringLiteral("markercurrent.png"),       QStringLiteral("markerlookup.png"),
                                QStringLiteral("markercaller.png")};
        const int number = int(names.indexOf(name));
        QPixmap picture(12, 12);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        if (number < 6)
            painter.fillRect(picture.rect(), colour(number));
        else // painted over the others
            painter.fillRect(QRect(number == 6 ? 0 : 6, number == 7 ? 6 : 0, 6, 6), colour(number));
        return picture;
    }
    static QColor colour(int number) { return QColor::fromHsv(number * 40, 255, 200); }

    QString toolTip;
    QStringList asked;
    QHash<QString, QAction *> actions;
};

/// A template for C sources, a directory for files, and one document with a view in a window.
class EditorFixture
{
public:
    explicit EditorFixture(const QString &text = {}, std::unique_ptr<SyntaxHighlighter> highlighter = nullptr)
        : formats(testFormats())
        , docTemplate(QStringLiteral("C"), QStringLiteral("C source"), {}, {QStringLiteral("c"), QStringLiteral("h")},
                      highlighter ? std::move(highlighter) : std::make_unique<CppHighlighter>(),
                      std::make_unique<CppIndent>())
    {
        docTemplate.highlighter()->setFormats(&formats);
        docTemplate.indenter()->setIndentMode(TextIndent::NoIndent);
        docTemplate.setEditorHost(&host);
        document.reset(static_cast<TextDocument *>(docTemplate.createDocument()));
        document->text()->setPlainText(text);
        document->text()->setModified(false);
        view.reset(static_cast<TextView *>(docTemplate.createView(document.get())));
        view->resize(500, 400);
        view->show();
        view->activateWindow();
        view->setFocus();
        [[maybe_unused]] const bool shown = QTest::qWaitForWindowActive(view.get());
    }
    ~EditorFixture() { view.reset(); }

    [[nodiscard]] TextViewEdit *edit(int i = 0) const { return view->edits().at(i); }
    [[nodiscard]] QString text() const { return document->text()->toPlainText(); }
    [[nodiscard]] QString path(const QString &name) const { return directory.filePath(name); }
    void putCursor(int para, int index, int paraTo = -1, int indexTo = 0) const
    {
        QTextDocument *text = document->text();
        QTextCursor cursor(text);
        cursor.setPosition(text->findBlockByNumber(para).position() + index);
        if (paraTo >= 0)
            cursor.setPosition(text->findBlockByNumber(paraTo).position() + indexTo, QTextCursor::KeepAnchor);
        view->currentEdit()->setTextCursor(cursor);
    }
    /// "para,index" of the cursor, or "para,index-para,index" of a selection, of a pane.
    [[nodiscard]] QString selection(int i = 0) const
    {
        const QTextCursor cursor = edit(i)->textCursor();
        const auto place = [&](int position) {
            const QTextBlock block = document->text()->findBlock(position);
            return QStringLiteral("%1,%2").arg(block.blockNumber()).arg(position - block.position());
        };
        return cursor.hasSelection()
                   ? place(cursor.selectionStart()) + QChar::fromLatin1('-') + place(cursor.selectionEnd())
                   : place(cursor.position());
    }
    /// The lines with markers, as "line:bits".
    [[nodiscard]] QString markers() const
    {
        QStringList found;
        for (QTextBlock block = document->text()->begin(); block.isValid(); block = block.next()) {
            if (const quint32 bits = MarkedLines::markers(block))
                found << QStringLiteral("%1:%2").arg(block.blockNumber() + 1).arg(bits, 0, 16);
        }
        return found.join(QChar::fromLatin1(' '));
    }

    QTemporaryDir directory;
    FormatTable formats;
    FakeHost host;
    TextDocumentTemplate docTemplate;
    std::unique_ptr<TextDocument> document;
    std::unique_ptr<TextView> view;
};
