#include "qemumachine.h"
#include "backgroundtask.h"
#include "childprocess.h"
#include "lockeddirectory.h"
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>

using namespace Qt::StringLiterals;

namespace {
constexpr int AnswerLimit = 1000;
constexpr int LookInterval = 20; ///< interval in ms at which a start checks that the emulator still runs

std::unique_ptr<QLocalServer> listenAt(const QString &path, QString *error)
{
    auto server = std::make_unique<QLocalServer>();
    if (!server->listen(path))
        *error = QemuMachine::tr("Cannot make the socket '%1': %2").arg(path, server->errorString());
    return server;
}

/// The next pending connection; null if there is none.
QLocalSocket *accept(QLocalServer *server)
{
    server->waitForNewConnection(0);
    return server->nextPendingConnection();
}

/// The next complete line from a socket; empty if none arrives in time.
QByteArray nextLine(QLocalSocket *socket, const QElapsedTimer &timer)
{
    while (!socket->canReadLine()) {
        if (timer.hasExpired(AnswerLimit) || !socket->waitForReadyRead(int(AnswerLimit - timer.elapsed())))
            return {};
    }
    return socket->readLine();
}
} // namespace

QemuMachine::QemuMachine(const Setup &setup, QObject *parent) : QObject(parent), m_setup(setup) {}

QemuMachine::~QemuMachine()
{
    end();
}

bool QemuMachine::start(QString *error)
{
    m_complaints.clear();
    m_directory = std::make_unique<LockedDirectory>(u"varnel-qemu"_s);
    if (!m_directory->isValid()) {
        *error = m_directory->errorString();
        return false;
    }
    if (!listen(error))
        return false;
    m_process = std::make_unique<ChildProcess>();
    m_process->setStandardInputFile(QProcess::nullDevice());
    if (!m_process->launch(m_setup.program, commandLine(), error) || !waitUntilReady(error)) {
        end();
        return false;
    }
    takeSockets();
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &QemuMachine::readStreams);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &QemuMachine::readComplaints);
    connect(m_process.get(), &QProcess::finished, this, &QemuMachine::processEnded);
    readComplaints();
    return true;
}

QStringList QemuMachine::commandLine() const
{
    const QString path = m_directory->path();
    const auto channel = [&path](const QString &id) { return u"socket,id=%1,path=%2/%1"_s.arg(id, path); };
    QStringList line = {u"-M"_s, m_setup.machine, u"-display"_s, u"none"_s, u"-monitor"_s, u"none"_s, u"-S"_s};
    if (!m_setup.image.isEmpty())
        line += {u"-kernel"_s, m_setup.image};
    if (!m_setup.secondImage.isEmpty())
        line += {u"-device"_s, u"loader,file="_s + QString(m_setup.secondImage).replace(u',', u",,"_s)};
    line += {u"-chardev"_s, channel(u"gdb"_s) + u",server=on,wait=off"_s, u"-gdb"_s, u"chardev:gdb"_s};
    line += {u"-chardev"_s, channel(u"serial"_s)};
    for (int port = 0; port < m_setup.uart; ++port)
        line += {u"-serial"_s, u"null"_s};
    line += {u"-serial"_s, u"chardev:serial"_s};
    if (m_setup.semihosting)
        line += {u"-chardev"_s, channel(u"semihosting"_s), u"-semihosting-config"_s,
                 u"enable=on,target=native,chardev=semihosting"_s};
    line += {u"-qtest"_s, u"unix:"_s + path + u"/qtest"_s, u"-qtest-log"_s, u"none"_s};
    line += {u"-qmp"_s, u"unix:"_s + path + u"/qmp"_s};
    return line + m_setup.arguments;
}

bool QemuMachine::listen(QString *error)
{
    const QString path = m_directory->path();
    m_serialServer = listenAt(path + u"/serial"_s, error);
    m_semihostingServer = listenAt(path + u"/semihosting"_s, error);
    m_qtestServer = listenAt(path + u"/qtest"_s, error);
    m_qmpServer = listenAt(path + u"/qmp"_s, error);
    return m_serialServer->isListening() && m_semihostingServer->isListening() && m_qtestServer->isListening()
           && m_qmpServer->isListening();
}

/// The emulator sends a greeting on its control channel when gdb can connect.
bool QemuMachine::waitUntilReady(QString *error)
{
    QElapsedTimer timer;
    timer.start();
    while (!m_qmp || m_qmp->bytesAvailable() == 0) {
        if (BackgroundTask::canPause()) {
            if (!BackgroundTask::pause(LookInterval))
                return false;
        } else if (m_qmp) {
            m_qmp->waitForReadyRead(LookInterval);
        } else {
            m_qmpServer->waitForNewConnection(LookInterval);
        }
        if (!m_qmp)
            m_qmp = m_qmpServer->nextPendingConnection();
        if (m_process->state() != QProcess::Running || m_process->waitForFinished(0)) {
            const QString reason = QString::fromLocal8Bit(m_process->readAllStandardError()).trimmed();
            *error = tr("'%1' ended at once: %2").arg(m_setup.program, reason);
            return false;
        }
        if (timer.hasExpired(m_setup.startLimit)) {
            *error = tr("'%1' did not bring up '%2' within %3 s.")
                         .arg(m_setup.program, m_setup.machine, QString::number(m_setup.startLimit / 1000));
            return false;
        }
    }
    return true;
}

void QemuMachine::takeSockets()
{
    askQmp(R"({"execute":"qmp_capabilities"})");
    connect(m_qmp, &QLocalSocket::readyRead, this, [this] { m_qmp->readAll(); }); // events, which are not used
    m_qtest = accept(m_qtestServer.get());
    m_serial = accept(m_serialServer.get());
    m_semihosting = accept(m_semihostingServer.get());
    for (QLocalSocket *socket : {m_serial, m_semihosting}) {
        if (!socket)
            continue;
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { Q_EMIT output(socket->readAll()); });
        if (const QByteArray early = socket->readAll(); !early.isEmpty())
            Q_EMIT output(early);
    }
}

void QemuMachine::end()
{
    if (m_process) {
        m_process->disconnect(this);
        m_process->end();
        m_process.release()->deleteLater(); // it may be in a call to this function
    }
    m_serial = m_semihosting = m_qtest = m_qmp = nullptr;
    for (auto *server : {&m_serialServer, &m_semihostingServer, &m_qtestServer, &m_qmpServer}) {
        if (!*server)
            continue;
        for (QLocalSocket *socket : (*server)->findChildren<QLocalSocket *>())
            socket->disconnect(this); // it is deleted later and may still receive data
        server->release()->deleteLater();
    }
    m_directory.reset();
}

bool QemuMachine::isRunning() const
{
    return m_process && m_process->state() == QProcess::Running;
}

qint64 QemuMachine::processId() const
{
    return m_process ? m_process->processId() : 0;
}

QString QemuMachine::gdbAddress() const
{
    return m_directory ? m_directory->path() + u"/gdb"_s : QString();
}

QByteArray QemuMachine::askQtest(const QByteArray &line)
{
    if (!m_qtest || !isRunning())
        return {};
    QElapsedTimer timer;
    timer.start();
    m_qtest->readAll(); // late answers to earlier commands
    m_qtest->write(line + '\n');
    m_qtest->flush();
    const QByteArray answer = nextLine(m_qtest, timer).trimmed();
    return answer.startsWith("OK") ? answer.mid(2).trimmed() : QByteArray();
}

QByteArray QemuMachine::read(quint64 address, int length)
{
    const QByteArray answer = askQtest("read 0x" + QByteArray::number(address, 16) + ' ' + QByteArray::number(length));
    const QByteArray bytes = QByteArray::fromHex(answer.startsWith("0x") ? answer.mid(2) : QByteArray());
    return bytes.size() == length ? bytes : QByteArray();
}

bool QemuMachine::write(quint64 address, const QByteArray &bytes)
{
    return !askQtest("write 0x" + QByteArray::number(address, 16) + ' ' + QByteArray::number(bytes.size()) + " 0x"
                     + bytes.toHex())
                .isNull();
}

namespace {
char widthLetter(int width)
{
    return width == 1 ? 'b' : width == 2 ? 'w' : 'l';
}
} // namespace

bool QemuMachine::readWord(quint64 address, int width, uint *value)
{
    bool valid = false;
    const QByteArray answer =
        askQtest(QByteArray("read") + widthLetter(width) + " 0x" + QByteArray::number(address, 16));
    *value = uint(answer.toULongLong(&valid, 0));
    return valid;
}

bool QemuMachine::writeWord(quint64 address, int width, uint value)
{
    return !askQtest(QByteArray("write") + widthLetter(width) + " 0x" + QByteArray::number(address, 16) + " 0x"
                     + QByteArray::number(value, 16))
                .isNull();
}

QByteArray QemuMachine::askQmp(const QByteArray &line)
{
    if (!m_qmp || !isRunning())
        return {};
    const QSignalBlocker quiet(m_qmp);
    QElapsedTimer timer;
    timer.start();
    m_qmp->write(line + '\n');
    m_qmp->flush();
    for (QByteArray answer = nextLine(m_qmp, timer); !answer.isEmpty(); answer = nextLine(m_qmp, timer)) {
        if (answer.contains("\"return\"") || answer.contains("\"error\""))
            return answer;
    }
    return {};
}

QString QemuMachine::monitor(const QString &command)
{
    const QJsonObject arguments{{u"command-line"_s, command}};
    const QJsonObject request{{u"execute"_s, u"human-monitor-command"_s}, {u"arguments"_s, arguments}};
    const QByteArray answer = askQmp(QJsonDocument(request).toJson(QJsonDocument::Compact));
    return QJsonDocument::fromJson(answer).object().value(u"return"_s).toString();
}

void QemuMachine::writeSerial(const QByteArray &bytes)
{
    if (!m_serial)
        return;
    m_serial->write(bytes);
    m_serial->flush();
}

bool QemuMachine::readOutput()
{
    bool found = false;
    for (QLocalSocket *socket : {m_serial, m_semihosting})
        found = (socket && socket->waitForReadyRead(0)) || found;
    if (isRunning())
        found = m_process->waitForReadyRead(0) || found;
    return found;
}

/// What C libraries write to their streams by semihosting goes to the emulator's output, not to its channel.
void QemuMachine::readStreams()
{
    if (const QByteArray bytes = m_process->readAllStandardOutput(); !bytes.isEmpty())
        Q_EMIT output(bytes);
}

void QemuMachine::readComplaints()
{
    m_complaints += QString::fromLocal8Bit(m_process->readAllStandardError());
    const qsizetype end = m_complaints.lastIndexOf(u'\n') + 1;
    if (end > 0)
        Q_EMIT complaint(m_complaints.left(end));
    m_complaints.remove(0, end);
}

/// The last output of the program may not have been read when its end is reported.
void QemuMachine::readLastOutput()
{
    for (QLocalSocket *socket : {m_serial, m_semihosting}) {
        while (socket && socket->waitForReadyRead(0)) {
        }
    }
}

void QemuMachine::processEnded()
{
    readComplaints();
    readStreams();
    readLastOutput();
    const bool crashed = m_process->exitStatus() == QProcess::CrashExit;
    const QString reason =
        crashed ? tr("'%1' was ended by a signal.").arg(m_setup.program)
                : tr("'%1' ended with code %2.").arg(m_setup.program, QString::number(m_process->exitCode()));
    end();
    Q_EMIT died(reason);
}
