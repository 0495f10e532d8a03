#pragma once
#include "parascrollview.h"
#include "paraselection.h"
#include "selectiondrag.h"
#include <functional>

/// Shows the paragraphs of a source, of which it asks for those on screen only. Read-only, with a cursor and a
/// selection.
class TextParaView : public ParaScrollView
{
    Q_OBJECT
    Q_PROPERTY(QString text READ visibleText)
    Q_PROPERTY(int lineHeight READ lineHeight)
    Q_PROPERTY(int charWidth READ charWidth)
public:
    using Place = ParaPlace;

    /// @p paraSource must outlive the view.
    explicit TextParaView(IParaSource *paraSource, QWidget *parent = nullptr);

    [[nodiscard]] Place cursorPlace() const { return m_cursor; }
    using QWidget::setCursor;
    /// Moves the cursor and brings it into sight. The selection stays.
    void setCursor(const Place &place);
    /// The same for a place that is not near: scrolls until its line is in the middle, unless the line is in sight.
    void showPlace(const Place &place);
    /// Puts the cursor on the last line of a paragraph and scrolls until it is in the middle, unless it is in sight.
    void showPara(int para);
    /// The colours behind the last lines of paragraphs; an invalid one for none.
    void setBands(const std::function<QColor(int para)> &bands);
    [[nodiscard]] bool isCursorVisible() const;
    /// The cursor goes with its paragraph, or to the nearest one. Nothing stays selected.
    void shiftParas(qint64 distance) override;

    void setSelection(const Place &a, const Place &b);
    /// Selects a match of a search. It is also painted while another widget, such as a search field, has the focus.
    void showMatch(const Place &a, const Place &b);
    [[nodiscard]] bool hasSelection() const { return !m_selection.isEmpty(); }
    /// The selected text without markup, as far as it has not more than @p limit characters.
    [[nodiscard]] QString selectedText(qsizetype limit = std::numeric_limits<qsizetype>::max())
    {
        return m_selection.text(m_rows, limit);
    }

    [[nodiscard]] Place placeAt(const QPoint &position) const;
    [[nodiscard]] QString lineAt(const Place &place) const; ///< as the source gave it; empty if it is not on screen

public Q_SLOTS:
    void copy();
    void selectAll();
    void blinkCursor();
    void selectTimeout();

Q_SIGNALS:
    void cursorPositionChanged(int para, int column);
    void selectionChanged();
    void clicked(const Place &place); ///< pressed and released without a selection

protected:
    void finish(const Pending &pending) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void placeCursor(const Place &place);
    void moveCursor(const Place &place, bool toMiddle);
    void moveCursorRows(int rows, int column);
    bool moveByKey(const QKeyEvent &event);
    void moveByPage(bool forward);
    [[nodiscard]] int cursorX() const;
    [[nodiscard]] QRect cursorRect() const;
    void extendSelection();
    [[nodiscard]] int linesAbove() const;
    [[nodiscard]] QColor bandOf(int row) const;

    std::function<QColor(int para)> m_bands;
    ParaSelection m_selection;
    SelectionDrag m_drag;
    Place m_cursor;
    bool m_cursorVisible = true;
    QTimer m_blinkTimer;
};
