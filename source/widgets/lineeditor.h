#pragma once
#include <QWidget>
class QLineEdit;
class QToolButton;

/// A line edit that fills a cell of a list, with a "..." button at its right end if asked for.
class LineEditor : public QWidget
{
    Q_OBJECT
public:
    enum Button { NoButton, WithButton };
    LineEditor(Button button, QWidget *parent);

    [[nodiscard]] QLineEdit *edit() const { return m_edit; }
    [[nodiscard]] QToolButton *button() const { return m_button; } ///< Null if there is none.
    /// Gives the line edit the focus and puts the cursor at @p position.
    void clickAt(const QPoint &position);

private:
    QLineEdit *const m_edit;
    QToolButton *m_button = nullptr;
};
