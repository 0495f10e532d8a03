#pragma once
#include <QList>
#include <QPointer>
#include <QString>
class CursorLabel;
class FileFormatButton;
class LoadingLabel;
class QLabel;
class QStatusBar;
class TextDocument;

/// The labels at the right end of the status bar: the status of processors, how far the current file is loaded, its
/// format, and the position of the cursor.
class StatusLabels
{
public:
    explicit StatusLabels(QStatusBar *bar);

    /// Shows the status of a processor at @p position, 0 to 3, counted from the cursor label; others are ignored.
    void showInfo(const QString &text, int position) const;
    void hideInfo() const;
    void setCursor(int line, int column);             ///< Both count from 0.
    void clearCursor() const;                         ///< There is no view with a cursor.
    void setDocument(TextDocument *document);         ///< Null if the current view is not a text.
    void showFormatMenu() const;                      ///< As a click on the format of the file.
    [[nodiscard]] int line() const { return m_line; } ///< Of the cursor, counted from 1.

private:
    QList<QLabel *> m_infoLabels; ///< hidden until there is a text to show
    QStatusBar *const m_bar;
    QPointer<LoadingLabel> m_loadingLabel; ///< null unless the current file was not loaded when it came to the front
    FileFormatButton *m_formatButton = nullptr;
    CursorLabel *m_cursorLabel = nullptr;
    int m_line = 1;
};
