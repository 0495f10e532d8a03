#pragma once
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>
class QAction;
class QKeyEvent;

/// Leads from commands and windows to their pages of the help.
///
/// F1 opens the page of the window that has the focus. Where there is none, it keeps its other meaning, and so it does
/// where keys are entered and while another command than "helpHome" has the key. The explanation
/// of a command (F1 in an open menu) has a link to the command's page, and F1 there follows it.
class ContextHelp : public QObject
{
    Q_OBJECT
public:
    /// Reads the table of pages; without the file there are none. Explanations are extended for actions of @p window
    /// that exist now.
    ContextHelp(const QString &tableFile, QWidget *window, QObject *parent = nullptr);

    /// The page of the nearest window around @p widget that has one; empty if there is none.
    [[nodiscard]] QString pageOf(const QObject *widget) const;
    /// The page of a command; empty if there is none.
    [[nodiscard]] QString pageOfAction(const QString &name) const { return m_actions.value(name); }

Q_SIGNALS:
    /// @p page is relative to the directory of the pages and may end in an anchor: "memory.html#write".
    void pageRequested(const QString &page);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void readTable(const QString &file);
    void extendExplanation(QAction *action) const;
    [[nodiscard]] QString pageForKey(QObject *watched, const QKeyEvent &event);
    [[nodiscard]] bool keyIsTaken() const;
    void leaveExplanation(const QString &page);

    const QPointer<QWidget> m_window;
    QHash<QString, QString> m_actions;
    QHash<QString, QString> m_windows;
    QString m_explained; ///< the page of the command that is explained
};
