#pragma once
#include "matchcounter.h"
#include <QObject>
#include <QPointer>
class FindDialog;
class QDialog;
class ReplaceDialog;
class TextView;
class TextViewEdit;
class View;
class WindowServices;

/// Find and replace in the current view: shows their dialogs, marks the matches of the one used last, and counts those
/// of each.
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

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void connectDialogs();
    template <typename Dialog>
    void connectDialog(Dialog *dialog, const MatchCounter &counter);
    void connectAction(const QString &name, const std::function<void()> &work);
    void findFromDialog(bool forward);
    void showResult(bool found, const TextPattern &pattern, const std::function<bool()> &findFromStart);
    void use(QDialog *dialog);
    void refreshSelection(View *current);
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] TextPattern patternToMark() const;
    void refreshMarks();
    void refreshMarks(View *current);
    void countMatches();
    template <typename Dialog>
    void countMatches(Dialog *dialog, MatchCounter &counter);
    void tellMissingText(View *current);
    void keepVisible(const TextViewEdit *pane);
    void keepMatchVisible();

    WindowServices &m_window;
    FindDialog *m_findDialog;
    ReplaceDialog *m_replaceDialog;
    MatchCounter m_findCounter;
    MatchCounter m_replaceCounter;
    QDialog *m_used;             ///< the dialog that was used last
    QString m_outcome;           ///< of the last replacement, until something else is searched for
    QPointer<TextView> m_marked; ///< the view in which matches are marked; null if there is none
    QMetaObject::Connection m_edited;
};
