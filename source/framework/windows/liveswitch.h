#pragma once
#include "iexecutionenvironment.h"
#include "ilivememory.h"
#include <QTimer>
#include <QToolButton>

/// The switch "Live" of a pane, off at first: while it is on and the program runs, it asks several times a second for a
/// refresh. It is enabled while the environment can read its target in this way.
class LiveSwitch : public QToolButton
{
    Q_OBJECT
public:
    explicit LiveSwitch(QWidget *parent = nullptr);

    /// Null for none. The switch keeps references until the next call.
    void setEnvironment(IExecutionEnvironment *environment);
    [[nodiscard]] InterfacePtr<ILiveMemory> memory() const; ///< Null if the environment does not offer it.

    [[nodiscard]] int rate() const { return m_rate; } ///< Refreshes a second.
    void setRate(int rate);

public Q_SLOTS:
    void follow(); ///< A session may have begun or ended.

Q_SIGNALS:
    void refresh();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void addRates();
    void startOrStop();
    void tick();

    InterfacePtr<IExecutionEnvironment> m_environment;
    InterfacePtr<ILiveMemory> m_memory;
    QTimer m_timer;
    int m_rate = 5;
    bool m_asking = false; ///< a plug-in is being asked, which may call back
};
