#pragma once
#include "filesearcher.h"
#include <QObject>
class FindDialog;
class OutputWindow;
class QSettings;
class ReplaceDialog;
class View;
class ViewManager;

/// Find, replace and find in files: shows their dialogs and what they find.
class FindCommands : public QObject
{
    Q_OBJECT
public:
    /// Everything outlives this object but the dialogs, which belong to @p window.
    FindCommands(QWidget *window, ViewManager *viewManager, OutputWindow *outputWindow, QSettings *settings,
                 QObject *parent = nullptr);

    void find();
    void replace();
    void findInFiles();
    /// Ends a search in files and waits for it.
    void stop();
    void viewActivated(View *view); ///< The one in which to replace; may be null.

    [[nodiscard]] QWidget *findDialog() const;

Q_SIGNALS:
    void findRequested(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor);
    void searchStarted(); ///< Results are about to come to the output window.

private:
    void searchMatchFound(const QString &file, int line, const QString &text);
    void searchFinished();

    QWidget *const m_window;
    ViewManager *const m_viewManager;
    OutputWindow *const m_outputWindow;
    QSettings *const m_settings;
    FindDialog *m_findDialog;
    ReplaceDialog *m_replaceDialog;
    FileSearcher m_fileSearcher;
    int m_matchCount = 0;
};
