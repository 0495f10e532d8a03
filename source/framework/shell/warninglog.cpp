#include "warninglog.h"
#include <QDateTime>
#include <QDir>
#include <QMutex>

using namespace Qt::StringLiterals;

namespace {
constexpr int MostCharacters = 500; // of a line

struct State
{
    QMutex mutex;
    QStringList lines;
    QtMessageHandler previous = nullptr;
};

/// Not deleted: other static objects may write messages while the program ends.
State &state()
{
    static auto *const state = new State;
    return *state;
}

const char *nameOf(QtMsgType type)
{
    return type == QtCriticalMsg ? "critical" : type == QtFatalMsg ? "fatal" : "warning";
}

void keep(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    State &log = state();
    if (type != QtDebugMsg && type != QtInfoMsg) {
        const QMutexLocker lock(&log.mutex);
        const QString time = QDateTime::currentDateTime().toString(u"HH:mm:ss"_s);
        log.lines.append(u"%1 %2: "_s.arg(time, QLatin1StringView(nameOf(type)))
                         + QString(text).replace(QDir::homePath() + u'/', u"~/"_s).left(MostCharacters));
        if (log.lines.size() > WarningLog::MostLines)
            log.lines.removeFirst();
    }
    if (log.previous)
        log.previous(type, context, text);
}
} // namespace

WarningLog::WarningLog()
{
    state().previous = qInstallMessageHandler(keep);
}

WarningLog::~WarningLog()
{
    qInstallMessageHandler(state().previous);
    const QMutexLocker lock(&state().mutex);
    state().lines.clear();
}

QStringList WarningLog::lines()
{
    const QMutexLocker lock(&state().mutex);
    return state().lines;
}
