#pragma once
#include "activity.h"
#include "fakeservices.h"
#include "objectmodel.h"
#include "qtrunnerserver.h"
#include <QAction>
#include <QCheckBox>
#include <QFrame>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

/// Finds the actions of a window by name, like the program.
class WindowHost : public FakeServices
{
public:
    explicit WindowHost(QWidget *window) : m_window(window) {}
    [[nodiscard]] QAction *action(const QString &name) const override { return m_window->findChild<QAction *>(name); }

private:
    QWidget *const m_window;
};

/// Records the events that are posted to it: the type and the relevant fields.
class EventProbe : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;
    QStringList seen;

protected:
    bool event(QEvent *event) override
    {
        seen.append(describe(event));
        return true;
    }

private:
    static QString text(QPointF point) { return QStringLiteral("%1,%2").arg(point.x()).arg(point.y()); }
    static QString hex(int number) { return QString::number(uint(number), 16); }
    static QString describe(const QEvent *event)
    {
        QStringList words{QString::number(event->type())};
        if (const auto *mouse = dynamic_cast<const QMouseEvent *>(event))
            words << text(mouse->position()) << text(mouse->globalPosition()) << QString::number(mouse->button())
                  << QString::number(mouse->buttons()) << hex(mouse->modifiers());
        if (const auto *key = dynamic_cast<const QKeyEvent *>(event))
            words << hex(key->key()) << hex(key->QInputEvent::modifiers()) << u'\'' + key->text() + u'\''
                  << QString::number(key->isAutoRepeat()) << QString::number(key->count());
        if (const auto *focus = dynamic_cast<const QFocusEvent *>(event))
            words << QString::number(focus->reason());
        return words.join(u' ');
    }
};

/// Has members of the types that drivers request.
class MemberProbe : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int count MEMBER count)
    Q_PROPERTY(double ratio MEMBER ratio)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(bool flag MEMBER flag)
    Q_PROPERTY(Qt::FocusPolicy policy MEMBER policy)
    Q_PROPERTY(Qt::Alignment sides MEMBER sides)
    Q_PROPERTY(QUrl url MEMBER url)
    Q_PROPERTY(int fixed MEMBER fixed CONSTANT)
public:
    using QObject::QObject;
    int count = 3;
    double ratio = 0.5;
    QString text = QStringLiteral("abc");
    bool flag = true;
    Qt::FocusPolicy policy = Qt::ClickFocus;
    Qt::Alignment sides = Qt::AlignRight | Qt::AlignTop;
    QUrl url{QStringLiteral("http://x/")};
    int fixed = 7;
    int resets = 0;
    int secrets = 0;
    int values = 0;

public Q_SLOTS:
    int reset() { return ++resets; }
    void setValue(int) { ++values; }

Q_SIGNALS:
    void done();
    void progress(int percent, const QString &text);

private Q_SLOTS:
    void secret() { ++secrets; }
};

/// A window with widgets of several kinds, and a server for it.
class RunnerFixture
{
public:
    QWidget window;
    WindowHost host{&window};
    Activity activity;
    ObjectModel model{activity, host};
    QLineEdit *edit = add<QLineEdit>("edit");
    QPushButton *button = add<QPushButton>("my button");
    QPushButton *plain = add<QPushButton>("plain");
    QCheckBox *box = add<QCheckBox>("box");
    QFrame *frame = add<QFrame>("frame");
    EventProbe *events = add<EventProbe>("events");
    MemberProbe *members = new MemberProbe(&window);
    QAction *action = new QAction(&window);
    QtRunnerServer *server = nullptr;

    RunnerFixture()
    {
        window.setObjectName(QStringLiteral("window"));
        button->setText(QStringLiteral("Press me"));
        members->setObjectName(QStringLiteral("members"));
        action->setObjectName(QStringLiteral("doIt"));
        server = new QtRunnerServer(0, QHostAddress::LocalHost, &model, &window);
        events->seen.clear();
    }

private:
    template <typename Widget>
    Widget *add(const char *name)
    {
        if (!window.layout())
            new QVBoxLayout(&window);
        auto *widget = new Widget(&window);
        widget->setObjectName(QLatin1StringView(name));
        window.layout()->addWidget(widget);
        return widget;
    }
};

/// A driver that is connected to the server.
class Driver : public QTcpSocket
{
public:
    QByteArray received;

    explicit Driver(const RunnerFixture &fixture) : Driver(fixture.server->serverPort()) { waitForConnected(); }
    explicit Driver(quint16 port, const QHostAddress &address = QHostAddress::LocalHost)
    {
        connect(this, &QIODevice::readyRead, this, [this] { received += readAll(); });
        connectToHost(address, port);
    }

    /// Sends @p commands, and returns the replies when all have been executed.
    QByteArray ask(const QByteArray &commands)
    {
        write(commands);
        write("GETCLASS window\n");
        static const QByteArray fence = "OK QWidget\r\n"; // differs from all replies of the tests
        QEventLoop loop; // instead of polling, because the program has much to do in between
        connect(this, &QIODevice::readyRead, &loop, &QEventLoop::quit);
        connect(this, &QAbstractSocket::disconnected, &loop, &QEventLoop::quit);
        QTimer::singleShot(30000, &loop, &QEventLoop::quit);
        for (const QDeadlineTimer end(30000); !received.contains(fence) && state() != UnconnectedState;) {
            loop.exec();
            if (end.hasExpired())
                return "no answer; so far: " + received;
        }
        const qsizetype ended = received.indexOf(fence);
        const QByteArray replies = received.left(ended);
        received = ended < 0 ? QByteArray() : received.mid(ended + fence.size());
        return replies;
    }
};

/// A driver in another thread, which can wait while a dialog of the program is open.
class DistantDriver
{
public:
    explicit DistantDriver(const RunnerFixture &fixture) : m_port(fixture.server->serverPort()) {}

    /// Runs @p script with the driver connected, and processes the program's events meanwhile.
    bool run(const std::function<void(DistantDriver &)> &script)
    {
        const std::unique_ptr<QThread> thread(QThread::create([this, &script] {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, m_port);
            socket.waitForConnected();
            m_socket = &socket;
            script(*this);
        }));
        thread->start();
        const bool ended = QTest::qWaitFor([&thread] { return thread->isFinished(); }, 60000);
        thread->wait();
        return ended;
    }

    /// Sends @p commands and waits for as many bytes as @p replies has. Returns whether the bytes are equal.
    bool ask(const QByteArray &commands, const QByteArray &replies)
    {
        m_socket->write(commands);
        QByteArray received;
        while (received.size() < replies.size() && (m_socket->bytesAvailable() || m_socket->waitForReadyRead(30000)))
            received += m_socket->read(replies.size() - received.size());
        return received == replies;
    }

    /// Sends @p commands and waits until the program has closed the connection.
    bool isThrownOut(const QByteArray &commands)
    {
        m_socket->write(commands);
        while (m_socket->state() == QAbstractSocket::ConnectedState && m_socket->waitForReadyRead(30000)) {
        }
        return m_socket->state() == QAbstractSocket::UnconnectedState;
    }

private:
    const quint16 m_port;
    QTcpSocket *m_socket = nullptr;
};
