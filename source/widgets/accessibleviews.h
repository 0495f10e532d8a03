#pragma once
#include <QAccessibleWidget>
#include <QMap>

// What assistive programs get of the views that this library paints itself. The constructors of those views install the
// factory; it makes the interfaces when they are asked for.

void installAccessibleViews();

/// A margin: its value names the lines with marks.
class AccessibleMargin : public QAccessibleWidget
{
public:
    using Marks = std::function<QMap<int, int>()>;
    /// @p marks are the bits of MarkerWidget by lines that count from 1.
    AccessibleMargin(QWidget *margin, Marks marks);

    [[nodiscard]] QString text(QAccessible::Text text) const override;

private:
    const Marks m_marks;
};

/// "Line 3: breakpoint; line 7: disabled breakpoint, current line".
[[nodiscard]] QString marksText(const QMap<int, int> &marks);

/// A view of lines: the text on screen with the cursor in it.
class AccessibleLines : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit AccessibleLines(QWidget *view);

    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QString text(QAccessible::Text text) const override;
    [[nodiscard]] void *interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] int characterCount() const override { return int(visibleText().size()); }
    [[nodiscard]] QString text(int start, int end) const override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;
    void selection(int index, int *start, int *end) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int, int) override {} // all of the text is on screen
    [[nodiscard]] QString attributes(int offset, int *start, int *end) const override;

protected:
    /// A place in the text on screen: a row of it, and a column.
    struct RowPlace
    {
        int row = 0;
        int column = 0;
    };
    [[nodiscard]] virtual QString visibleText() const = 0;
    [[nodiscard]] virtual RowPlace cursor() const = 0; ///< a negative row if it is not on screen
    virtual void moveCursor(const RowPlace &place) = 0;
    virtual void select(const RowPlace &start, const RowPlace &end) = 0;
    /// False if nothing is selected on screen.
    virtual bool selected(RowPlace *start, RowPlace *end) const = 0;
    [[nodiscard]] virtual QSize characterSize() const = 0;

private:
    [[nodiscard]] int offsetOf(const RowPlace &place) const; ///< -1 for a place above the text
    [[nodiscard]] RowPlace placeOf(int offset) const;
};
