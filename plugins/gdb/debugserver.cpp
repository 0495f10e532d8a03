#include "debugserver.h"
#include "backgroundtask.h"
#include "childprocess.h"
#include "miconnection.h"
#include "nativeterminal.h"
#include <algorithm>
#include <csignal>
#include <optional>
#include <QApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QProgressDialog>
#include <QTcpServer>
#include <QThread>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr int RetryInterval = 100; // milliseconds, as the next ones
constexpr int PortLimit = 3000;    ///< for the server of the last session to end
constexpr int DialogDelay = 500;
constexpr int EndLimit = 100;
constexpr int EndInterval = 5;
constexpr int WaitInterval = 20;
constexpr qsizetype MostWords = 1000; // characters

/// The port of an address on this computer; 0 for any other address.
quint16 localPort(const QString &address)
{
    const qsizetype colon = address.lastIndexOf(u':');
    const QString host = address.left(colon);
    const bool local = host.isEmpty() || host == "127.0.0.1"_L1 || host == "localhost"_L1;
    return colon < 0 || !local ? 0 : address.mid(colon + 1).toUShort();
}

bool isTaken(quint16 port)
{
    QTcpServer probe;
    return port != 0 && !probe.listen(QHostAddress::LocalHost, port);
}
} // namespace

int freePort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost) ? probe.serverPort() : 0;
}

QByteArray withoutColours(const QByteArray &bytes, QByteArray *incomplete)
{
    const QByteArray all = std::exchange(*incomplete, {}) + bytes;
    QByteArray result;
    for (qsizetype i = 0; i < all.size(); ++i) {
        if (all[i] != '\x1b') {
            result += all[i];
            continue;
        }
        qsizetype end = i + 1;
        while (end < all.size() && (all[end] == '[' || all[end] == ';' || (all[end] >= '0' && all[end] <= '9')))
            ++end;
        if (end == all.size()) {
            *incomplete = all.mid(i);
            return result;
        }
        i = all[end] == 'm' ? end : i; // other sequences lose their first character only
    }
    return result;
}

namespace {
bool isNumbers(QStringView line)
{
    return line.startsWith("0x"_L1) && std::ranges::all_of(line, [](QChar letter) {
               return letter == u' ' || letter == u'\r' || letter == u'x' || (letter >= u'0' && letter <= u'9')
                      || (letter >= u'a' && letter <= u'f');
           });
}
} // namespace

QString withoutNumbers(const QString &text, OpenLine *line)
{
    const QString all = std::exchange(line->held, {}) + text;
    QString result;
    qsizetype start = 0;
    for (qsizetype end = all.indexOf(u'\n'); end >= 0; end = all.indexOf(u'\n', start)) {
        if (line->begun || !isNumbers(QStringView(all).sliced(start, end - start)))
            result += QStringView(all).sliced(start, end + 1 - start);
        line->begun = false;
        start = end + 1;
    }
    const QString rest = all.sliced(start);
    if (!line->begun && (rest == u'0' || isNumbers(rest))) {
        line->held = rest;
    } else {
        result += rest;
        line->begun = line->begun || !rest.isEmpty();
    }
    return result;
}

DebugServer::DebugServer(const Setup &setup, QObject *parent) : QObject(parent), m_setup(setup) {}

DebugServer::~DebugServer()
{
    end();
}

QString DebugServer::name() const
{
    return m_setup.command.value(0);
}

bool DebugServer::isRunning() const
{
    return m_process && m_process->state() == QProcess::Running;
}

bool DebugServer::start(QString *error)
{
    m_ended = m_connected = m_stopped = false;
    m_words.clear();
    m_outputSequence.clear();
    m_complaintSequence.clear();
    m_outputLine = m_complaintLine = {};
    if (!waitForFreePort(error))
        return false;
    m_terminal = std::make_unique<NativeTerminal>();
    m_process = std::make_unique<ChildProcess>();
    m_process->setWorkingDirectory(m_setup.directory);
    m_process->setStandardInputFile(QProcess::nullDevice());
    if (!m_terminal->name().isEmpty())
        m_process->setStandardOutputFile(m_terminal->name());
    connect(m_terminal.get(), &NativeTerminal::output, this, &DebugServer::takeOutput);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &DebugServer::takeComplaint);
    connect(m_process.get(), &QProcess::finished, this, &DebugServer::processEnded);
    if (!m_process->launch(name(), m_setup.command.mid(1), error)) {
        m_process.reset();
        return false;
    }
    m_group = m_process->processId();
    return true;
}

/// The server of the last session may still be ending.
bool DebugServer::waitForFreePort(QString *error)
{
    const quint16 port = localPort(m_setup.address);
    if (isTaken(port))
        waitUntil([&] { return m_ended || !isTaken(port); }, QDeadlineTimer(PortLimit));
    if (m_ended)
        return false;
    *error = tr("'%1' cannot be started: another program uses its address '%2' already.").arg(name(), m_setup.address);
    return !isTaken(port);
}

void DebugServer::waitUntil(const std::function<bool()> &condition, const QDeadlineTimer &deadline)
{
    while (BackgroundTask::canPause() && !condition() && !deadline.hasExpired()) {
        if (!BackgroundTask::pause(int(std::min<qint64>(WaitInterval, deadline.remainingTime()))))
            m_stopped = true;
    }
    QTimer tick; // ends the wait below
    tick.start(WaitInterval);
    while (!m_stopped && !condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

bool DebugServer::connectGdb(MiConnection *gdb, int limit, QString *error)
{
    const QPointer<QProgressDialog> dialog = BackgroundTask::canPause() ? nullptr : showDialog();
    const QDeadlineTimer deadline(limit);
    QString answer;
    bool connected = false;
    while (!connected && isRunning() && !m_stopped && !m_ended && !deadline.hasExpired())
        connected = tryToConnect(gdb, deadline, &answer);
    delete dialog;
    m_connected = connected;
    if (!connected && !m_ended)
        *error = failure(answer, limit);
    return connected;
}

/// The dialog that is shown while the wait blocks the window.
QProgressDialog *DebugServer::showDialog()
{
    auto *dialog =
        new QProgressDialog(tr("Waiting for '%1'...").arg(name()), tr("Stop"), 0, 0, QApplication::activeWindow());
    dialog->setObjectName(u"debugServerDialog"_s);
    dialog->setWindowModality(Qt::ApplicationModal);
    QTimer::singleShot(DialogDelay, dialog, &QWidget::show); // its own delay is not used as long as it has no value
    connect(dialog, &QProgressDialog::canceled, this, [this] { m_stopped = true; });
    return dialog;
}

/// Waits a moment after a failure.
bool DebugServer::tryToConnect(MiConnection *gdb, const QDeadlineTimer &deadline, QString *answer)
{
    const auto isOver = [this] { return !isRunning() || m_stopped || m_ended; };
    const auto record = std::make_shared<std::optional<MiRecord>>(); // the answer may come after this function
    gdb->send("-target-select remote " + m_setup.address.toUtf8(), [record](const MiRecord &each) { *record = each; });
    waitUntil([&] { return record->has_value() || isOver(); }, deadline);
    if (!record->has_value() || isOver())
        return false;
    if (!(*record)->isError())
        return true;
    *answer = (*record)->errorText();
    waitUntil(isOver, std::min(deadline, QDeadlineTimer(RetryInterval)));
    return false;
}

QString DebugServer::failure(const QString &answer, int limit) const
{
    if (m_stopped)
        return tr("The wait for '%1' was stopped.").arg(name());
    if (!isRunning())
        return tr("'%1' ended before gdb was connected: %2").arg(name(), lastWords());
    return tr("'%1' does not accept gdb at '%2' within %3 s: %4")
        .arg(name(), m_setup.address, QString::number(limit / 1000), answer);
}

void DebugServer::end()
{
    m_ended = true;
    if (!m_process)
        return;
    m_process->disconnect(this);
    endGroup();
    m_process.release()->deleteLater(); // it may be in a call to this function
}

/// The server may have ended already, when gdb disconnected, and its children not.
void DebugServer::endGroup()
{
    const auto group = pid_t(std::exchange(m_group, 0));
    if (group <= 0)
        return;
    const QDeadlineTimer deadline(EndLimit);
    ::kill(-group, SIGTERM);
    if (isRunning())
        m_process->waitForFinished(EndLimit);
    while (::kill(-group, 0) == 0 && !deadline.hasExpired())
        QThread::msleep(EndInterval);
    ::kill(-group, SIGKILL);
    m_process->end();
}

bool DebugServer::readOutput()
{
    const bool written = m_terminal && m_terminal->readAvailable();
    return (isRunning() && m_process->waitForReadyRead(0)) || written;
}

void DebugServer::takeOutput(const QByteArray &bytes)
{
    QByteArray text = withoutColours(bytes, &m_outputSequence);
    if (m_setup.repeatsAnswers)
        text = withoutNumbers(QString::fromLatin1(text), &m_outputLine).toLatin1();
    remember(QString::fromUtf8(text));
    if (!text.isEmpty())
        Q_EMIT output(text);
}

void DebugServer::takeComplaint()
{
    QString text = QString::fromUtf8(withoutColours(m_process->readAllStandardError(), &m_complaintSequence));
    if (m_setup.repeatsAnswers)
        text = withoutNumbers(text, &m_complaintLine);
    remember(text);
    if (!text.isEmpty())
        Q_EMIT complaint(text);
}

void DebugServer::remember(const QString &text)
{
    m_words = (m_words + text).right(MostWords);
}

/// The last line that the server has written.
QString DebugServer::lastWords() const
{
    return m_words.trimmed().section(u'\n', -1);
}

void DebugServer::processEnded()
{
    takeComplaint();
    m_terminal->readAvailable();
    endGroup();
    const bool connected = std::exchange(m_connected, false);
    const QString words = lastWords();
    if (connected)
        Q_EMIT died(words.isEmpty() ? tr("'%1' has ended.").arg(name()) : tr("'%1' has ended: %2").arg(name(), words));
}
