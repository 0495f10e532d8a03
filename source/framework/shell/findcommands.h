#pragma once
#include "matchcounter.h"
#include <QObject>
#include <QPointer>
class FindDialog;
class ReplaceDialog;
class TextView;
class View;
class WindowServices;

/// Find and replace in the current view: shows their dialogs, and marks and counts the matches while one is open.
class FindCommands : public QObject
{
    Q_OBJECT
public:
    /// @p window outlives this object.
    explicit FindCommands(WindowServices &window, QObject *parent = nullptr);

    void find();
    void replace();
    /// Finds the text of the last search again. Without one it opens the dialog.
    void findAgain(bool forward);
    void viewActivated(View *view); ///< Sets the view for replacing and for marks; may be null.

    /// Searches in the current view. A large file and a disassembly are searched in the background and show the result
    /// themselves. With @p fromCursor it continues once at the start of the text, and the status bar
    /// shows this. Shows a message if the text was not found.
    void find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor);

private:
    void connectDialogs();
    void connectAction(const QString &name, const std::function<void()> &work);
    void findFromDialog(bool forward);
    void showResult(bool found, const TextPattern &pattern, const std::function<bool()> &findFromStart);
    void refreshMarks();
    void refreshMarks(View *current, const QString &outcome = {});
    void tellMissingText(View *current);
    void showCount(const QString &text);
    void keepMatchVisible();

    WindowServices &m_window;
    FindDialog *m_findDialog;
    ReplaceDialog *m_replaceDialog;
    MatchCounter m_counter;
    QString m_outcome;           ///< of the last replacement, until something else is searched for
    QPointer<TextView> m_marked; ///< the view in which matches are marked; null if there is none
};
