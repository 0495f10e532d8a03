#pragma once
#include "rowpainter.h"
#include "scrollview.h"
#include "selectiondrag.h"
#include <functional>
#include <QTimer>
class ILineSource;

/// Shows the lines of a source, of which it asks for those on screen only. Read-only, with a cursor and a selection.
class TextLineView : public ScrollView
{
    Q_OBJECT
    Q_PROPERTY(QString text READ visibleText)
    Q_PROPERTY(int lineHeight READ lineHeight)
    Q_PROPERTY(int charWidth READ charWidth)
public:
    /// Both count from 0.
    struct Place
    {
        int line = 0;
        int column = 0;

        auto operator<=>(const Place &other) const = default; // NOLINT(modernize-use-nullptr): a false finding
    };
    static constexpr int Columns = 160; ///< of the contents; longer lines widen them when they are shown

    /// @p lineSource must outlive the view.
    explicit TextLineView(ILineSource *lineSource, QWidget *parent = nullptr);

    [[nodiscard]] int lineHeight() const { return m_rows.lineHeight(); }
    [[nodiscard]] int charWidth() const { return m_rows.charWidth(); }

    [[nodiscard]] Place cursorPlace() const { return m_cursor; }
    using QWidget::setCursor;
    /// Moves the cursor and brings it into sight. The selection stays.
    void setCursor(int line, int column);
    /// The same for a place that is not near: scrolls until its line is in the middle, unless the line is in sight.
    void showPlace(const Place &place);
    /// Puts the cursor at the start of a line, which counts from 1. Ignores the last line, and lines outside the text.
    void gotoLine(int line);
    [[nodiscard]] bool isCursorVisible() const; ///< whether the cursor's line is wholly on screen

    /// The colours behind lines, which count from 0; an invalid one for none.
    void setBands(const std::function<QColor(int line)> &bands);

    /// Selects what is between two places, in any order.
    void setSelection(Place a, Place b);
    /// Selects a match of a search. It is also painted while another widget, such as a search field, has the focus.
    void showMatch(const Place &a, const Place &b);
    [[nodiscard]] bool hasSelection() const { return m_start != m_end; }
    [[nodiscard]] Place selectionStart() const { return m_start; }
    [[nodiscard]] Place selectionEnd() const { return m_end; }
    /// In block mode every selected line is selected between the same two columns.
    void setBlockMode(bool blockMode);
    /// The selected text without markup, as far as it has not more than @p limit characters.
    [[nodiscard]] QString selectedText(qsizetype limit = std::numeric_limits<qsizetype>::max()) const;
    [[nodiscard]] QString visibleText() const; ///< the lines on screen

    /// The source has more, fewer or other lines.
    void linesChanged();
    /// The line numbers that the view keeps: the top one first, then those of the cursor and of the selection. When the
    /// source numbers its lines in another way, pass their new numbers in the same order to setHeldLines().
    [[nodiscard]] QList<int> heldLines() const;
    void setHeldLines(const QList<int> &lines);

public Q_SLOTS:
    void copy();
    void selectAll();
    void blinkCursor();
    void selectTimeout();

Q_SIGNALS:
    void cursorPositionChanged(int line, int column);
    void selectionChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fontChanged();
    [[nodiscard]] bool isLineVisible(int line) const;
    [[nodiscard]] int endColumn(int line) const;
    [[nodiscard]] Place placeAt(const QPoint &position) const;
    [[nodiscard]] QRect cursorRect() const; ///< in the viewport
    [[nodiscard]] SelectedColumns selectedColumns(int line) const;
    [[nodiscard]] bool placeForKey(const QKeyEvent &event, Place &place) const;
    void paintLine(QPainter &painter, int line, const QRect &dirty);
    void widen(int width);
    void updateRow(int line);
    void extendSelection();

    ILineSource *const m_lineSource;
    std::function<QColor(int line)> m_bands;
    mutable RowPainter m_rows;
    Place m_cursor;
    Place m_start;
    Place m_end;
    Place m_anchor; ///< where a selection by mouse or keys has begun
    bool m_blockMode = false;
    bool m_isMatch = false; ///< whether the selection is the match of a search
    bool m_cursorVisible = true;
    int m_widest = 0;
    QTimer m_blinkTimer;
    SelectionDrag m_drag;
};
