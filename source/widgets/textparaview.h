#pragma once
#include "rowpainter.h"
#include "scrollview.h"
#include <QCache>
#include <QTimer>
class IParaSource;
class ParaScrollBar;

/// Shows the paragraphs of a source, of which it asks for those on screen only. Read-only, with a cursor and a
/// selection.
///
/// It scrolls by lines, and knows the source's paragraphs by their numbers alone: how many lines there are in all is
/// not known. Paragraphs without lines take no row; only where there are very many of them in succession does an empty
/// row stand for them. Paragraphs are fetched before they are painted: a source may do anything when it is asked.
class TextParaView : public ScrollView
{
    Q_OBJECT
    Q_PROPERTY(QString text READ visibleText)
    Q_PROPERTY(int lineHeight READ lineHeight)
    Q_PROPERTY(int charWidth READ charWidth)
public:
    /// All count from 0.
    struct Place
    {
        int para = 0;
        int line = 0;
        int column = 0;

        auto operator<=>(const Place &other) const = default; // NOLINT(modernize-use-nullptr): a false finding
    };
    static constexpr int Columns = 160;    ///< of the contents
    static constexpr int LongestGap = 256; ///< paragraphs without lines that are passed over

    /// @p paraSource must outlive the view.
    explicit TextParaView(IParaSource *paraSource, QWidget *parent = nullptr);

    [[nodiscard]] int lineHeight() const { return m_painter.lineHeight(); }
    [[nodiscard]] int charWidth() const { return m_painter.charWidth(); }
    [[nodiscard]] int topPara() const { return m_top.para; }
    [[nodiscard]] int topLine() const { return m_top.line; }

    [[nodiscard]] Place cursorPlace() const { return m_cursor; }
    using QWidget::setCursor;
    /// Moves the cursor and brings it into sight. The selection stays.
    void setCursor(const Place &place);
    /// Puts the cursor on the last line of a paragraph and scrolls to it, with some lines above, unless it is in sight.
    void showPara(int para);
    [[nodiscard]] bool isCursorVisible() const;

    void setSelection(Place a, Place b);
    /// Selects a match of a search, which is shown without the focus too: that may be where the text was entered.
    void showMatch(const Place &a, const Place &b);
    [[nodiscard]] bool hasSelection() const { return m_start != m_end; }
    /// The selected text without markup, as far as it has not more than @p limit characters.
    [[nodiscard]] QString selectedText(qsizetype limit = std::numeric_limits<qsizetype>::max());
    [[nodiscard]] QString visibleText() const; ///< the lines on screen

    /// The paragraph and line in a row of the screen; false below the last one.
    bool rowToPara(int row, int *para, int *line) const;
    [[nodiscard]] bool isLastLine(int row) const; ///< whether the row shows the last line of its paragraph
    [[nodiscard]] int rowOf(int para) const;      ///< of a paragraph's last line; -1 if it is not on screen
    [[nodiscard]] bool hasText() const;           ///< whether a paragraph on screen has lines
    [[nodiscard]] int rowCount() const { return int(m_rows.size()); }
    [[nodiscard]] Place placeAt(const QPoint &position) const;
    [[nodiscard]] QString lineAt(const Place &place) const; ///< as the source gave it; empty if it is not on screen

    /// Has the source asked again.
    void reload();
    /// The source's lines of a paragraph, through a cache that reload() empties.
    [[nodiscard]] QStringList linesOf(int para);

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
    /// A line of a paragraph. In a paragraph without lines it stands for a gap.
    struct Row
    {
        int para = 0;
        int line = 0;
        QString text;
        bool isLast = true;
        bool isGap = false;
    };

    void fontChanged();
    void updateBar();
    void loadRows();
    void moveTop(Row top);
    bool step(Row &row, bool forward);
    [[nodiscard]] Row rowAt(int para, int line);
    bool scrollLines(int lines);
    void moveCursorRows(int rows, int column);
    bool moveByKey(const QKeyEvent &event);
    [[nodiscard]] int rowOf(const Place &place) const;
    [[nodiscard]] QRect cursorRect() const;
    [[nodiscard]] SelectedColumns selectedColumns(const Row &row) const;
    void extendSelection();
    [[nodiscard]] int pageRows() const;

    IParaSource *const m_paraSource;
    ParaScrollBar *const m_bar;
    mutable RowPainter m_painter;
    QCache<int, QStringList> m_paras;
    Row m_top;
    QList<Row> m_rows; ///< on screen, the last one perhaps in part
    Place m_cursor;
    Place m_start;
    Place m_end;
    Place m_anchor;
    QPoint m_pressed;
    bool m_dragging = false;
    bool m_isMatch = false; ///< whether the selection is the match of a search
    bool m_cursorVisible = true;
    int m_columnStep = 0; ///< how far the mouse is beyond the edge during a drag
    int m_lineStep = 0;
    int m_wheel = 0; ///< what is left of a turn of the wheel
    QTimer m_blinkTimer;
    QTimer m_selectTimer;
};
