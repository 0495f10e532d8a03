#pragma once
#include <QLabel>
#include <QTimer>

/// The position of the cursor, in the status bar. It changes with each key, and a key must not wait for it: the text is
/// made and painted some time after the first of several changes, or when it is read as a property, as test drivers do.
/// The label keeps its size while that is large enough: otherwise the window would place its docks again.
class CursorLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QString text READ currentText)
public:
    explicit CursorLabel(QWidget *parent);

    void showPosition(uint line, int column); ///< Both count from 1.
    void showNothing();                       ///< There is no cursor.

protected:
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QString currentText() const;
    void changeSoon();
    void refresh();

    QTimer m_timer;
    uint m_line = 0; ///< 0 if there is no cursor
    int m_column = 0;
};
