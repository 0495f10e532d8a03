#pragma once
#include "viewinterfaces.h"
class LoadingPanes;
class QSplitter;
class TextDocument;
class TextPattern;
class TextViewEdit;

/// A view of a text file: one or more panes, one above the other.
class TextView : public View, public IViewWithMarkers, public ITextNavigation, public ISourceView
{
    Q_OBJECT
public:
    /// Cursor movements. Scripts use these numbers.
    enum CursorAction : int {
        MoveBackward,
        MoveForward,
        MoveWordBackward,
        MoveWordForward,
        MoveUp,
        MoveDown,
        MoveLineStart,
        MoveLineEnd,
        MoveHome,
        MoveEnd
    };

    explicit TextView(TextDocument *document, QWidget *parent = nullptr);
    ~TextView() override;

    void print() override;
    bool queryInterface(const QString &name, void **out) override;
    void split() override;
    void undo() override;
    void redo() override;
    void cut() override;
    void copy() override;
    void paste() override;
    void remove() override;
    void selectAll() override;
    using View::update;
    void update(View *source, bool full) override;

    /// As in TextViewEdit, on the first pane; replaceInSelection() on the current one.
    virtual bool replace(const QString &text, const QString &replacement, bool caseSensitive, bool wholeWord,
                         bool forward, bool fromCursor, bool all);
    virtual bool replaceInSelection(const QString &text, const QString &replacement, bool caseSensitive,
                                    bool wholeWord);
    // The same for a pattern, which may be an expression
    bool find(const TextPattern &pattern, bool forward, bool fromCursor);
    bool replace(const TextPattern &pattern, const QString &replacement, bool all);
    bool replaceInSelection(const TextPattern &pattern, const QString &replacement);
    [[nodiscard]] int replacedCount() const { return m_replacedCount; } ///< by the last call of a replacing function
    [[nodiscard]] QRect selectionOnScreen() const;                      ///< in the pane that is searched
    /// Marks every match in all panes; see TextViewEdit.
    void markMatches(const std::shared_ptr<const TextPattern> &pattern);
    virtual void insert(const QString &text);
    /// Moves the cursor of the current pane; @p select extends the selection. Other numbers do nothing.
    virtual void moveCursor(CursorAction action, bool select);

    void setMarker(int line, int mask, bool on, bool alternate) override;
    void clearMarkers(int mask) override;
    [[nodiscard]] bool hasMarker(int line, int mask) override;
    [[nodiscard]] bool hasMarkerAtCursor(int mask) override;

    void gotoLine(int line) override;
    /// Moves the cursor in its line to @p column, counted as in LookupPlace.
    void gotoColumn(int column);
    bool find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor) override;
    [[nodiscard]] QString selectedText() override;
    void getCursorPosition(int *para, int *index) override;

    // These act on the lines of the selection in the current pane; see lineedits.h. False if nothing can be done.
    bool commentSelection();
    bool uncommentSelection();
    bool unindentSelection();

    void indentSelection() override;
    void insertText(const QString &text) override;

    [[nodiscard]] TextDocument *textDocument() const { return m_textDocument; }
    /// Every pane, including collapsed ones; find and replace act on the first.
    [[nodiscard]] const QList<TextViewEdit *> &edits() const { return m_edits; }
    [[nodiscard]] TextViewEdit *currentEdit() const { return m_current; } ///< the pane that had the focus last
    void setCurrentEdit(TextViewEdit *pane);                              ///< it gets the focus when the view gets it
    /// Splits @p pane at the height @p y.
    void splitAt(TextViewEdit *pane, int y);
    void closePane(); ///< The current pane. The last one stays.
    /// The heights in pixels of the panes that are not collapsed, from top to bottom.
    [[nodiscard]] QList<int> paneHeights() const;
    /// Creates one pane for each of @p heights; they share the height of the view in that proportion.
    void setPaneHeights(const QList<int> &heights);
    [[nodiscard]] QList<TextViewEdit *> shownEdits() const; ///< the panes that are not collapsed, from top to bottom

Q_SIGNALS:
    void toggleBreakpoint(int line); ///< counts from 1

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    TextViewEdit *addPane();
    void paneFocused(TextViewEdit *pane);
    void paneBecameSmall(TextViewEdit *pane);
    void cursorMoved(TextViewEdit *pane);
    void emitUndoAvailable();
    void emitPasteAvailable();
    void emitCutAvailable(bool hasSelection);
    void loadingChanged();
    [[nodiscard]] TextViewEdit *loadedEdit() const;

    TextDocument *const m_textDocument;
    QSplitter *m_splitter;
    LoadingPanes *m_loadingPanes = nullptr;
    QList<TextViewEdit *> m_edits;
    std::shared_ptr<const TextPattern> m_marked; ///< for new panes
    TextViewEdit *m_current = nullptr;
    int m_replacedCount = 0;
};
