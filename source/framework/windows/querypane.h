#pragma once
#include "debugpane.h"
#include "debugqueries.h"
#include <QTimer>
class ListView;
class QLabel;
class QStackedLayout;

/// A debug pane with a list that an environment fills some time after it was asked: only while the program is paused
/// and the pane is visible. Without a list, it shows the reason.
class QueryPane : public DebugPane
{
    Q_OBJECT
    Q_PROPERTY(QString note READ note)
    Q_PROPERTY(QString message READ message)
public:
    explicit QueryPane(ListView *list, QWidget *parent = nullptr);

    void setPaused(bool paused) override;
    [[nodiscard]] QString note() const;    ///< The line in place of the list; empty while the list is shown.
    [[nodiscard]] QString message() const; ///< The line below the list; may be empty.

public Q_SLOTS:
    void update() override;

protected:
    void showEvent(QShowEvent *event) override;
    virtual void read() = 0;  ///< Asks for everything again.
    virtual void clear() = 0; ///< Removes all rows.

    void setOffered(bool offered, const QString &missing); ///< Whether there is something to read; else the reason.
    void showNote(const QString &text);                    ///< Shows the list if it is empty.
    void showMessage(const QString &text);                 ///< A line below the list, until it is read again.
    [[nodiscard]] DebugQueries &queries() { return m_queries; }
    [[nodiscard]] bool isPaused() const { return m_paused; }
    [[nodiscard]] ListView *list() const { return m_list; }
    void addTopRow(QWidget *row); ///< Above the list.

private:
    void showNotPaused();

    ListView *const m_list;
    QLabel *const m_note;
    QLabel *const m_message;
    QStackedLayout *const m_stack;
    DebugQueries m_queries;
    QTimer m_clearTimer{this}; ///< active until the rows of a program that runs are removed
    bool m_offered = false;
    bool m_paused = false;
    bool m_outdated = true;     ///< to be read when the pane appears
    bool m_updateWaits = false; ///< for the pause
};
