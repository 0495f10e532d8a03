#pragma once
#include <QElapsedTimer>
#include <QPointer>
#include <QString>
class QProgressDialog;
class QWidget;

/// Keeps the window responsive during work in the GUI thread. After half a second a dialog shows the progress, with a
/// button to cancel. It is not shown above a dialog of the work itself.
class WorkProgress
{
public:
    WorkProgress(QWidget *parent, const QString &text);
    ~WorkProgress();

    /// Processes events, if the last call was some time ago. A negative @p percent means that the end is not known.
    /// False if the user has cancelled, or if the parent was deleted.
    bool update(int percent = -1);
    void end(); ///< Hides the dialog.

private:
    void refresh(int percent);
    void show();
    [[nodiscard]] bool isCovered() const;
    [[nodiscard]] bool parentIsGone() const { return m_hasParent && !m_parent; }
    Q_DISABLE_COPY_MOVE(WorkProgress)

    const QPointer<QWidget> m_parent;
    const bool m_hasParent;
    const QString m_text;
    QPointer<QProgressDialog> m_dialog; ///< null until it is shown
    QElapsedTimer m_start;
    QElapsedTimer m_last;
};
