#pragma once
#include "filesearcher.h"
#include <QObject>
class FindDialog;
class ReplaceDialog;
class View;
class WindowServices;

/// Find, replace and find in files: shows their dialogs and what they find.
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
    void viewActivated(View *view); ///< The one in which to replace; may be null.

    /// Searches in the current view; from the cursor on, it goes on at the start of the text once and shows that it
    /// did. A message says that a text was not found.
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
