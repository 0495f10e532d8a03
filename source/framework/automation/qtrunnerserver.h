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
    static constexpr int MaximumConnections = 64; ///< at the same time

    /// Listens on @p port of @p address, or on a free port if it is 0. If it fails, it prints a warning and the server
    /// does nothing. @p mainWidget is the parent.
    QtRunnerServer(quint16 port, const QHostAddress &address, ObjectModel *objectModel, QWidget *mainWidget);

    [[nodiscard]] int connections() const { return m_connections; }

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    QWidget *const m_mainWidget;
    const QPointer<ObjectModel> m_objectModel;
    int m_connections = 0;
};

/// The address in the settings: all interfaces by default, the null address if the setting is not an address.
[[nodiscard]] QHostAddress automationAddress(const QSettings &settings);
