#pragma once
#include "filesearcher.h"
#include <QObject>
class FindDialog;
class ReplaceDialog;
class View;
class WindowServices;

/// Find, replace and find in files: shows their dialogs and results.
class FindCommands : public QObject
{
    Q_OBJECT
public:
    /// @p window outlives this object.
    explicit FindCommands(WindowServices &window, QObject *parent = nullptr);

    void find();
    void replace();
    void findInFiles();
    /// Ends a search in files and waits for it.
    void stop();
    void viewActivated(View *view); ///< Sets the view for replacing; may be null.

    /// Searches in the current view. A large file and a disassembly are searched in the background and show the result
    /// themselves. With @p fromCursor it continues once at the start of the text, and the status bar
    /// shows this. Shows a message if the text was not found.
    void find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor);

private:
    void searchMatchFound(const QString &file, int line, const QString &text);
    void searchFinished();

    WindowServices &m_window;
    FindDialog *m_findDialog;
    ReplaceDialog *m_replaceDialog;
    FileSearcher m_fileSearcher;
    int m_matchCount = 0;
};
