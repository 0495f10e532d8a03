#pragma once
#include "iexecutionenvironment.h"
#include "ilivememory.h"
#include "rateswitch.h"
#include <QDeadlineTimer>

/// The switch "Live" of a pane: while it is on and the program runs, it asks several times a second for a refresh. It
/// is enabled while the environment can read its target in this way.
class LiveSwitch : public RateSwitch
{
    Q_OBJECT
public:
    explicit LiveSwitch(QWidget *parent = nullptr);

    /// Null for none. The switch keeps references until the next call.
    void setEnvironment(IExecutionEnvironment *environment);
    [[nodiscard]] InterfacePtr<ILiveMemory> memory() const; ///< Null if the environment does not offer it.
    /// Whether the program runs and can be read meanwhile. Asks the plug-in, which may have this object deleted.
    [[nodiscard]] bool canReadNow();

public Q_SLOTS:
    void follow(); ///< A session may have begun or ended.

Q_SIGNALS:
    void refresh();

private:
    void askForRefresh();

    InterfacePtr<IExecutionEnvironment> m_environment;
    InterfacePtr<ILiveMemory> m_memory;
    QDeadlineTimer m_rest; ///< no refresh before its end
    bool m_asking = false; ///< a plug-in is being asked, which may call back
};
