#pragma once
#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
class ObjectModel;
class QSettings;
class QWidget;

/// The server for test drivers: each connection to its port can inspect and operate the user interface.
///
/// There is no authentication.
class QtRunnerServer : public QTcpServer
{
    Q_OBJECT
public:
    static constexpr int MaximumConnections = 64; ///< at a time

    /// Listens on @p port of @p address, or on a free one if it is 0. A failure is told on the debug log and leaves a
    /// server that does nothing. @p mainWidget is the parent.
    QtRunnerServer(quint16 port, const QHostAddress &address, ObjectModel *objectModel, QWidget *mainWidget);

    [[nodiscard]] int connections() const { return m_connections; }

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    QWidget *const m_mainWidget;
    const QPointer<ObjectModel> m_objectModel;
    int m_connections = 0;
};

/// The address that the settings name; all interfaces if they name none, the null address if it is no address.
[[nodiscard]] QHostAddress automationAddress(const QSettings &settings);
