#include "qtrunnerserver.h"
#include "objectmodel.h"
#include "qtrunnersocket.h"
#include <QSettings>
#include <QWidget>

using namespace Qt::StringLiterals;

QtRunnerServer::QtRunnerServer(quint16 port, const QHostAddress &address, ObjectModel *objectModel, QWidget *mainWidget)
    : QTcpServer(mainWidget), m_mainWidget(mainWidget), m_objectModel(objectModel)
{
    setObjectName(u"runner server"_s);
    setListenBacklogSize(1);
    if (address.isNull() || !listen(address, port))
        qDebug("QtRunnerServer: Failed to bind to port %d", port);
}

void QtRunnerServer::incomingConnection(qintptr descriptor)
{
    if (m_connections == MaximumConnections) {
        qWarning("QtRunnerServer: Too many connections; one is refused.");
        QTcpSocket().setSocketDescriptor(descriptor); // closes it
        return;
    }
    qDebug("QtRunnerServer:: new connection");
    const auto *socket = new QtRunnerSocket(descriptor, m_mainWidget, m_objectModel);
    ++m_connections;
    connect(socket, &QObject::destroyed, this, [this] { --m_connections; });
}

QHostAddress automationAddress(const QSettings &settings)
{
    const QVariant address = settings.value(u"Startup/AutomationAddress"_s);
    return address.isValid() ? QHostAddress(address.toString()) : QHostAddress(QHostAddress::Any);
}
