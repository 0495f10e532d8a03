#pragma once
#include <QList>
#include <QString>
class QLabel;
class QStatusBar;

/// The labels at the right end of the status bar: the status of processors, and the position of the cursor.
class StatusLabels
{
public:
    explicit StatusLabels(QStatusBar *bar);

    /// Shows the status of a processor at @p position, 0 to 3, counted from the cursor label; others are ignored.
    void showInfo(const QString &text, int position) const;
    void hideInfo() const;
    void setCursor(int line, int column);             ///< Both count from 0.
    [[nodiscard]] int line() const { return m_line; } ///< Of the cursor, counted from 1.

private:
    QList<QLabel *> m_infoLabels; ///< hidden until there is a text to show
    QLabel *m_cursorLabel = nullptr;
    int m_line = 1;
};
