#pragma once
#include "pararows.h"
#include "paraselection.h"
#include "rowpainter.h"
#include "scrollview.h"
#include "selectiondrag.h"
#include <QTimer>
class IParaSource;
class ParaScrollBar;

/// Shows the paragraphs of a source, of which it asks for those on screen only. Read-only, with a cursor and a
/// selection.
///
/// It scrolls by lines, although only the number of paragraphs is known and not the number of all lines. Paragraphs
/// without lines take no row; only very many of them in succession are shown as one row with dots. Paragraphs are
/// fetched before they are painted, because a source may do anything when it is asked.
class TextParaView : public ScrollView
{
    Q_OBJECT
    Q_PROPERTY(QString text READ visibleText)
    Q_PROPERTY(int lineHeight READ lineHeight)
    Q_PROPERTY(int charWidth READ charWidth)
public:
    using Place = ParaPlace;
    static constexpr int Columns = 160; ///< of the contents
    static constexpr int LongestGap = ParaRows::LongestGap;

    /// @p paraSource must outlive the view.
    explicit TextParaView(IParaSource *paraSource, QWidget *parent = nullptr);

    [[nodiscard]] int lineHeight() const { return m_painter.lineHeight(); }
    [[nodiscard]] int charWidth() const { return m_painter.charWidth(); }
    [[nodiscard]] int topPara() const { return m_rows.top().para; }
    [[nodiscard]] int topLine() const { return m_rows.top().line; }

    [[nodiscard]] Place cursorPlace() const { return m_cursor; }
    using QWidget::setCursor;
    /// Moves the cursor and brings it into sight. The selection stays.
    void setCursor(const Place &place);
    /// Puts the cursor on the last line of a paragraph and scrolls to it, with some lines above, unless it is in sight.
    void showPara(int para);
    [[nodiscard]] bool isCursorVisible() const;

    void setSelection(const Place &a, const Place &b);
    /// Selects a match of a search. It is also painted while another widget, such as a search field, has the focus.
    void showMatch(const Place &a, const Place &b);
    [[nodiscard]] bool hasSelection() const { return !m_selection.isEmpty(); }
    /// The selected text without markup, as far as it has not more than @p limit characters.
    [[nodiscard]] QString selectedText(qsizetype limit = std::numeric_limits<qsizetype>::max())
    {
        return m_selection.text(m_rows, limit);
    }
    [[nodiscard]] QString visibleText() const { return m_rows.plainTexts(); } ///< the lines on screen

    /// The paragraph and line in a row of the screen; false below the last one.
    bool rowToPara(int row, int *para, int *line) const;
    [[nodiscard]] bool isLastLine(int row) const; ///< whether the row shows the last line of its paragraph
    /// The row of a paragraph's last line; -1 if it is not on screen.
    [[nodiscard]] int rowOf(int para) const { return m_rows.indexOfLast(para); }
    [[nodiscard]] bool hasText() const; ///< whether a paragraph on screen has lines
    [[nodiscard]] int rowCount() const { return int(m_rows.shown().size()); }
    [[nodiscard]] Place placeAt(const QPoint &position) const;
    [[nodiscard]] QString lineAt(const Place &place) const; ///< as the source gave it; empty if it is not on screen

    /// Fetches all paragraphs on screen from the source again.
    void reload();
    /// The source's lines of a paragraph, through a cache that reload() empties.
    [[nodiscard]] QStringList linesOf(int para) { return m_rows.linesOf(para); }

public Q_SLOTS:
    void nextLine();
    void prevLine();
    void nextPage();
    void prevPage();
    void gotoPara(int para); ///< Makes its first line the top one.
    void copy();
    void selectAll();
    void blinkCursor();
    void selectTimeout();

Q_SIGNALS:
    void cursorPositionChanged(int para, int column);
    void selectionChanged();
    void clicked(const Place &place); ///< pressed and released without a selection

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fontChanged();
    void updateBar();
    void loadRows();
    void moveTop(const ParaRows::Row &top);
    bool scrollLines(int lines);
    [[nodiscard]] int pageRows() const;
    [[nodiscard]] bool isWhole(int row) const;
    void moveCursorRows(int rows, int column);
    bool moveByKey(const QKeyEvent &event);
    void moveByPage(bool forward);
    [[nodiscard]] int cursorX() const;
    [[nodiscard]] QRect cursorRect() const;
    void extendSelection();

    ParaScrollBar *const m_bar;
    mutable RowPainter m_painter;
    ParaRows m_rows;
    ParaSelection m_selection;
    SelectionDrag m_drag;
    Place m_cursor;
    bool m_cursorVisible = true;
    QTimer m_blinkTimer;
    int m_wheel = 0; ///< part of a turn of the wheel that is not enough for a line
};
