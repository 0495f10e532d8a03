#include "automation.h"
#include "qtrunnerserver.h"
#include <QWidget>

void startAutomation(quint16 port, QWidget *window, ObjectModel &model, const QSettings &settings)
{
    new QtRunnerServer(port, automationAddress(settings), &model, window);
}
