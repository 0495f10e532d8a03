#pragma once
#include "branchtarget.h"
#include "marktable.h"
#include "parascan.h"
#include "syntaxhighlighter.h"
#include "textparaview.h"
#include "viewinterfaces.h"
class DisassemblerBar;
class DisassemblerDocument;
class EditorHost;
class ParaSearch;
class TextParaMarkerWidget;

/// Shows the instructions of a program that is debugged. A click or Return on a call or branch goes to its target,
/// Alt+Left back.
class DisassemblerView : public View, public IViewWithMarkers, public ITextNavigation
{
    Q_OBJECT
public:
    static constexpr int FindTimeLimit = 5000;          ///< milliseconds
    static constexpr qsizetype LongestCopy = 5'000'000; ///< characters: in 0.1 s

    /// @p document must be a DisassemblerDocument; @p formats and @p host may be null.
    DisassemblerView(Document *document, const FormatTable *formats, EditorHost *host, QWidget *parent = nullptr);

    void print() override {}
    bool queryInterface(const QString &name, void **out) override;
    void copy() override;
    void selectAll() override;
    void back() override;
    void forward() override;
    using View::update;
    void update(View *source, bool full) override;

    // A line is that of an address, see lineOfAddress(). Marks outside the document are shown when its region has
    // changed to theirs.
    void setMarker(int line, int mask, bool on, bool alternate) override;
    void clearMarkers(int mask) override;
    [[nodiscard]] bool hasMarker(int line, int mask) override;
    [[nodiscard]] bool hasMarkerAtCursor(int mask) override;

    void gotoLine(int line) override; ///< Shows a message if the line is outside the document.
    /// Searches what is shown, from paragraph to paragraph, and gives up after some seconds. Otherwise as in the views
    /// of large files.
    bool find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor) override;
    [[nodiscard]] QString selectedText() override;
    /// The line less 1, and the column.
    void getCursorPosition(int *para, int *index) override;

    /// The same for commands of the user, in slices of the event loop and continued at the other end. The row below the
    /// text shows progress and result. An empty text ends the search.
    void startFind(const QString &text, bool caseSensitive, bool forward, bool fromCursor);

    [[nodiscard]] TextParaView *paraView() const { return m_paras; }
    void setFindTimeLimit(int milliseconds) { m_findTimeLimit = milliseconds; }
    /// Goes to an address or symbol that the user has typed; shows a message if there is none.
    bool goTo(const QString &text);

Q_SIGNALS:
    void toggleBreakpoint(int line);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layOut();
    void connectParts();
    void slotSelectionChanged();
    void slotCursorMoved(int para, int column);
    void placeMargin();
    void showMarks();
    void slotRegionChanged(qint64 distance);
    void updateArrow();
    void slotLoaded();
    void showWhetherReadable();
    void follow(const std::optional<BranchTarget> &target);
    [[nodiscard]] std::optional<BranchTarget> branchAt(const TextParaView::Place &place) const;
    [[nodiscard]] std::optional<BranchTarget> linkAt(const TextParaView::Place &place) const;
    void showHand(const QPoint &position);
    [[nodiscard]] int instructionAt(int para) const;
    void jump(int para);
    void showFound(const TextParaView::Place &place, bool wrapped);
    [[nodiscard]] static ParaScan::Pattern pattern(const QString &text, bool caseSensitive, bool forward);
    [[nodiscard]] TextParaView::Place findStart(bool forward, bool fromCursor) const;
    void moveInHistory(int step);

    DisassemblerDocument *const m_disassembly;
    const FormatTable *const m_formats;
    TextParaView *m_paras;
    TextParaMarkerWidget *m_margin;
    DisassemblerBar *m_bar;
    ParaSearch *m_search;
    MarkTable m_marks; ///< by the lines of addresses
    QString m_wanted;  ///< the text that is searched for
    bool m_wantedForward = true;
    bool m_isReading = false;  ///< whether a message says that instructions are being read
    bool m_isOutside = false;  ///< whether a message says that a place is not shown here
    bool m_unreadable = false; ///< whether a message says that there are no instructions
    int m_findTimeLimit = FindTimeLimit;
    QList<int> m_history; ///< the paragraphs that jumps have left and reached
    int m_present = 0;    ///< where in the history the view is
};
