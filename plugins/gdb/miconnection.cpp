#include "miconnection.h"
#include "backgroundtask.h"
#include "childprocess.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int PromptLimit = 10000;
constexpr int EndLimit = 1500;
constexpr int IdleWait = 20; // until the output of the program is looked at again

MiRecord failure(const QString &text)
{
    MiRecord record;
    record.kind = MiRecord::Kind::Result;
    record.className = u"error"_s;
    record.results = {MiValue::Kind::Tuple, {{u"msg"_s, MiValue(text)}}};
    return record;
}
} // namespace

MiConnection::MiConnection(QObject *parent) : QObject(parent) {}

MiConnection::~MiConnection()
{
    close();
}

bool MiConnection::open(const QString &program, QString *error)
{
    m_buffer.clear();
    m_prompted = m_stuck = false;
    m_process = std::make_unique<ChildProcess>();
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &MiConnection::readLines);
    connect(m_process.get(), &QProcess::finished, this, &MiConnection::processEnded);
    const bool started = m_process->launch(program, {u"--nx"_s, u"--quiet"_s, u"--interpreter=mi3"_s}, error);
    if (!started) {
        m_process.reset();
        return false;
    }
    if (waitUntil([this] { return m_prompted; }, PromptLimit))
        return true;
    *error = tr("'%1' does not answer like gdb.").arg(program);
    close();
    return false;
}

void MiConnection::close()
{
    if (!m_process)
        return;
    m_process->disconnect(this);
    m_pending.clear();
    m_running.clear();
    if (m_process->state() == QProcess::Running) {
        m_process->write("-gdb-exit\n");
        m_process->closeWriteChannel();
        m_process->end(m_stuck ? 0 : EndLimit);
    }
    m_process.release()->deleteLater(); // it may be in a call to this function
}

bool MiConnection::isOpen() const
{
    return m_process && m_process->state() == QProcess::Running;
}

qint64 MiConnection::processId() const
{
    return m_process ? m_process->processId() : 0;
}

void MiConnection::send(const QByteArray &command, const Handler &handler)
{
    if (!isOpen()) {
        if (handler)
            handler(failure(tr("gdb is not running.")));
        return;
    }
    const int token = ++m_lastToken;
    m_pending.insert(token, handler);
    const QByteArray line = QByteArray::number(token) + command;
    Q_EMIT dialogue(QString::fromUtf8(line), true);
    m_process->write(line + '\n');
}

MiRecord MiConnection::ask(const QByteArray &command, int limit, Limit kind)
{
    if (m_stuck && !waitUntil([this] { return !m_stuck; }, 0))
        return failure(tr("gdb does not answer."));
    // Shared with the handler, because the answer may arrive after the time limit.
    const auto answer = std::make_shared<MiRecord>();
    const auto answered = std::make_shared<bool>(false);
    send(command, [this, answer, answered](const MiRecord &record) {
        m_stuck = false;
        *answer = record;
        *answered = true;
    });
    if (waitUntil([answered] { return *answered; }, limit, kind))
        return *answer;
    if (!isOpen())
        return failure(tr("gdb ended before it answered '%1'.").arg(QString::fromUtf8(command)));
    m_stuck = true;
    return failure(tr("gdb did not answer '%1' within %2 ms.").arg(QString::fromUtf8(command), QString::number(limit)));
}

bool MiConnection::waitUntil(const std::function<bool()> &condition, int limit, Limit kind)
{
    QElapsedTimer timer;
    timer.start();
    m_silence.start();
    readLines();
    while (!condition()) {
        const qint64 left = limit - (kind == Limit::Silence ? m_silence : timer).elapsed();
        if (left <= 0 || !m_process || m_process->state() != QProcess::Running)
            return false;
        if (BackgroundTask::canPause()) {
            if (!BackgroundTask::pause(IdleWait))
                return false;
            continue;
        }
        m_process->waitForBytesWritten(0);
        const bool busy = m_workWhileWaiting && m_workWhileWaiting();
        m_process->waitForReadyRead(busy ? 0 : int(std::min<qint64>(left, IdleWait)));
        readLines();
    }
    return true;
}

MiRecord MiConnection::askConsole(const QString &command, QString *output, int limit)
{
    const auto collect =
        connect(this, &MiConnection::console, this, [output](const QString &text) { *output += text; });
    MiRecord record = ask("-interpreter-exec console " + miQuoted(command), limit);
    disconnect(collect);
    return record;
}

void MiConnection::readLines()
{
    if (!m_process)
        return;
    m_buffer += m_process->readAllStandardOutput();
    for (qsizetype end = m_buffer.indexOf('\n'); end >= 0; end = m_buffer.indexOf('\n')) {
        const QByteArray line = m_buffer.first(end);
        m_silence.start();
        m_buffer.remove(0, end + 1); // before emitting: a receiver may call ask(), which calls this function again
        Q_EMIT dialogue(QString::fromUtf8(line), false);
        dispatch(parseMiRecord(line));
    }
}

void MiConnection::dispatch(const MiRecord &record)
{
    switch (record.kind) {
    case MiRecord::Kind::Prompt:
        m_prompted = true;
        break;
    case MiRecord::Kind::Result:
        answer(record);
        break;
    case MiRecord::Kind::Exec:
        if (record.className == u"stopped")
            m_running.clear();
        Q_EMIT asyncRecord(record);
        break;
    case MiRecord::Kind::Status:
    case MiRecord::Kind::Notify:
        Q_EMIT asyncRecord(record);
        break;
    case MiRecord::Kind::Console:
        Q_EMIT console(record.text);
        break;
    case MiRecord::Kind::Target:
        Q_EMIT targetText(record.text);
        break;
    case MiRecord::Kind::Log:
        Q_EMIT logText(record.text);
        break;
    case MiRecord::Kind::Other:
        Q_EMIT strayText(record.text + u'\n');
        break;
    }
}

void MiConnection::answer(const MiRecord &record)
{
    Handler handler = m_pending.take(record.token);
    if (handler && record.className == u"running")
        m_running.insert(record.token, handler);
    else if (!handler && record.isError())
        handler = m_running.take(record.token);
    if (handler)
        handler(record);
    if (record.isError()) // also a second answer to a command, or one without a command
        Q_EMIT failed(record.errorText());
}

void MiConnection::processEnded()
{
    readLines();
    const QHash<int, Handler> pending = std::exchange(m_pending, {});
    m_running.clear();
    for (const Handler &handler : pending) {
        if (handler)
            handler(failure(tr("gdb ended.")));
    }
    Q_EMIT closed();
}
