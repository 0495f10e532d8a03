#pragma once
#include "longlineedit.h"
#include "panebackground.h"
#include "textdocument.h"
#include <QTimer>
class QMenu;
class QRubberBand;
class TextMarkerWidget;
class TextPattern;
class TextView;
struct Indentation;

/// One pane of a text view: the editor with the margin on its left and the split handle above its scroll bar.
class TextViewEdit : public LongLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QString text READ wholeText) // for test drivers
public:
    TextViewEdit(TextView *view, TextDocument *document);
    ~TextViewEdit() override;

    /// Searches, selects the match and returns whether there is one. SearchOptions describes whole words. If @p
    /// fromCursor is false, the search starts at the beginning of the text, or at its end when searching backwards.
    virtual bool find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor);
    /// Replaces the first match from the start of the selection on, and returns whether there is another, which is then
    /// selected. With @p all replaces every match of the text and returns whether there was one.
    virtual bool replace(const QString &text, const QString &replacement, bool caseSensitive, bool wholeWord,
                         bool forward, bool fromCursor, bool all);
    /// Replaces every match that lies in the selection as a whole. The selection gets its former lines and columns
    /// back.
    virtual bool replaceInSelection(const QString &text, const QString &replacement, bool caseSensitive,
                                    bool wholeWord);

    // The same for a pattern, which may be an expression
    bool find(const TextPattern &pattern, bool forward, bool fromCursor);
    bool replace(const TextPattern &pattern, const QString &replacement, bool all);
    bool replaceInSelection(const TextPattern &pattern, const QString &replacement);
    /// How many matches the last call of a replacing function has replaced.
    [[nodiscard]] int replacedCount() const { return m_replacedCount; }
    [[nodiscard]] PaneBackground &background() { return m_background; }
    /// What the cursor or the selection covers of the screen.
    [[nodiscard]] QRect selectionOnScreen() const;

    [[nodiscard]] TextDocument *textDocument() const { return m_document; }
    [[nodiscard]] QString wholeText() const { return m_document->wholeText()->toPlainText(); }
    /// Shows changed markers; with @p full also changed formats.
    void refresh(bool full);
    /// The line at the height @p y of the viewport; invalid below the last line.
    [[nodiscard]] QTextBlock blockAt(int y) const;
    /// Scrolls so that @p block and some lines around it are visible. If it was not, it moves to the middle.
    void showBlock(const QTextBlock &block);
    void scrollByWheel(QWheelEvent *event);
    [[nodiscard]] Indentation indentation() const; ///< as the settings have it
    /// Indents the cursor's line by the rules of its language.
    void indent();
    [[nodiscard]] std::unique_ptr<QMenu> contextMenu(const QPoint &position);

public Q_SLOTS:
    virtual void toggleBreakpoint();

Q_SIGNALS:
    void toggleBreakpoint(int line); ///< counts from 1
    void splitRequested(int height);
    void becameSmall(); ///< too low to be usable

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// Gives the pane and its parts the names by which test drivers find them: that of the file without its suffix, and
    /// from the second pane on the number.
    void nameByFile();
    void pressTab();
    void pressReturn(QKeyEvent *event);
    void pressOther(QKeyEvent *event);
    void showBracketMatch();
    void select(qsizetype position, qsizetype length);
    bool replaceMatches(const TextPattern &pattern, const QString &replacement, qsizetype from, qsizetype end);
    void placeMargin();
    void dragSplitter(const QPoint &globalPosition);
    void dropSplitter(const QPoint &globalPosition);
    [[nodiscard]] int splitHeight(const QPoint &globalPosition) const;

    TextView *const m_view;
    TextDocument *const m_document;
    const int m_number;
    QTextDocument *const m_ownDocument; ///< set again before destruction, so that the shared document is not affected
    TextMarkerWidget *m_margin;
    PaneBackground m_background;
    QTimer m_bracketTimer; ///< active while the brackets beside the cursor are to be shown
    int m_replacedCount = 0;
    std::unique_ptr<QRubberBand> m_rubberBand; ///< null unless the splitter is dragged
};
