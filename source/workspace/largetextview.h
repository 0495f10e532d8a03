#pragma once
#include "syntaxhighlighter.h"
#include "viewinterfaces.h"
class EditorHost;
class LargeTextBar;
class LargeTextDocument;
class LargeTextFindBar;
class MarkerWidget;
class TextLineView;
struct BytePattern;

/// A read-only view on a large file.
class LargeTextView : public View, public IViewWithMarkers, public ITextNavigation
{
    Q_OBJECT
public:
    static constexpr int FindTimeLimit = 5000;          ///< milliseconds
    static constexpr qsizetype LongestCopy = 5'000'000; ///< characters: in 0.1 s

    /// @p formats and @p host may be null.
    LargeTextView(LargeTextDocument *document, const FormatTable *formats, EditorHost *host, QWidget *parent = nullptr);

    void print() override {}
    bool queryInterface(const QString &name, void **out) override;
    void copy() override;
    void selectAll() override;
    using View::update;
    void update(View *source, bool full) override;

    void setMarker(int line, int mask, bool on, bool alternate) override;
    void clearMarkers(int mask) override;
    [[nodiscard]] bool hasMarker(int line, int mask) override;
    [[nodiscard]] bool hasMarkerAtCursor(int mask) override;

    /// Goes to the estimated place of a line that has no exact number yet, and to the line itself as soon as it has
    /// one.
    void gotoLine(int line) override;
    /// Puts the cursor behind the match going forward, before it going backward, and selects nothing. The option
    /// for whole words is ignored. A search that takes too long finds nothing; the find bar can then continue it.
    bool find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor) override;
    [[nodiscard]] QString selectedText() override;
    void getCursorPosition(int *para, int *index) override;

    [[nodiscard]] TextLineView *lineView() const { return m_lines; }
    [[nodiscard]] LargeTextFindBar *findBar() const { return m_findBar; }
    void setFindTimeLimit(int milliseconds) { m_findTimeLimit = milliseconds; }
    void openFindBar();
    /// Searches on a thread, for commands of the user: the find bar shows the result. An empty text ends the
    /// search.
    void startFind(const BytePattern &pattern, bool forward, bool fromCursor);
    void findAgain(bool forward); ///< what the find bar holds; opens it if that is nothing

Q_SIGNALS:
    void toggleBreakpoint(int line); ///< counts from 1

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layOut();
    void connectDocument();
    void connectFindBar();
    void slotSelectionChanged();
    void placeMargin();
    void holdLines();
    void restoreLines();
    void showEnd();
    void showMatch(qint64 offset, qint64 length);

    LargeTextDocument *const m_text;
    const FormatTable *const m_formats;
    TextLineView *m_lines;
    MarkerWidget *m_margin;
    LargeTextFindBar *m_findBar;
    LargeTextBar *m_bar;
    int m_findTimeLimit = FindTimeLimit;
    QList<qint64> m_heldOffsets; ///< of the lines that the view stands at, while they get other numbers
    int m_awaitedLine = 0;       ///< line to go to as soon as its number is exact; 0 for none
    qint64 m_matchStart = -1;    ///< offset of the match at which the cursor is, which can be in markup; -1 for none
    qint64 m_matchEnd = -1;
    bool m_atEnd = false; ///< whether the end of the file was on screen when the lines were held
};
