#include "automation.h"
#include "objectmodel.h"
#include "qtrunnerserver.h"
#include "scripthost.h"
#include "uiconfig.h"
#include <QWidget>

namespace {
/// The widgets and actions on which the server's object model operates.
class ActionHost : public QObject, public ScriptHost
{
public:
    ActionHost(const UiConfig &ui, QObject *parent) : QObject(parent), m_ui(ui) {}

    [[nodiscard]] QAction *action(const QString &name) override { return m_ui.action(name); }
    [[nodiscard]] ObjectModel *model() { return &m_model; }

private:
    const UiConfig &m_ui;
    ObjectModel m_model{*this};
};
} // namespace

void startAutomation(quint16 port, QWidget *window, const UiConfig &ui, const QSettings &settings)
{
    auto *host = new ActionHost(ui, window);
    new QtRunnerServer(port, automationAddress(settings), host->model(), window);
}
