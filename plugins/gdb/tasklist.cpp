#include "tasklist.h"
#include "gdbsession.h"
#include <QCoreApplication>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
constexpr int MostTasks = 256; // more are the values of memory that the program has not set yet
enum Part { Count, Running, StackPointer, Name };

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(TaskList)
};

/// What a task is named by: the text, or the variable, that a pointer points to.
QString nameIn(const QString &value)
{
    static const QRegularExpression text(u"\"(.*)\""_s);
    static const QRegularExpression symbol(u"<([^>+]+)>\\z"_s);
    if (const auto match = text.match(value); match.hasMatch())
        return match.captured(1);
    return symbol.match(value).captured(1);
}

QString savedName(const QString &name)
{
    return u"$varnel_"_s + name;
}

/// The registers that functions need to find their callers.
QStringList registers()
{
    return {u"r4"_s, u"r5"_s, u"r6"_s, u"r7"_s, u"r8"_s, u"r9"_s, u"r10"_s, u"r11"_s, u"lr"_s, u"sp"_s, u"pc"_s};
}

/// Where a task that waits has its registers, from its stack pointer on.
constexpr quint64 SavedLink = 52;
constexpr quint64 SavedCounter = 56;
constexpr quint64 SavedState = 60;
constexpr quint64 SavedSize = 64;

QString wordAt(quint64 address)
{
    return u"*(unsigned int *)0x"_s + QString::number(address, 16);
}

/// The processor has left a word free if bit 9 of the saved state is set.
QString registersOf(quint64 stack)
{
    QStringList changes;
    for (int i = 0; i < 8; ++i)
        changes += u"$r%1 = %2"_s.arg(i + 4).arg(wordAt(stack + quint64(i) * 4));
    changes += u"$lr = "_s + wordAt(stack + SavedLink);
    changes +=
        u"$sp = 0x%1 + ((%2 >> 9 & 1) * 4)"_s.arg(QString::number(stack + SavedSize, 16), wordAt(stack + SavedState));
    changes += u"$pc = "_s + wordAt(stack + SavedCounter);
    return changes.join(u", "_s);
}

QString copies(bool back)
{
    QStringList changes;
    for (const QString &name : registers())
        changes += back ? u"$%1 = %2"_s.arg(name, savedName(name)) : u"%1 = $%2"_s.arg(savedName(name), name);
    return changes.join(u", "_s);
}
} // namespace

/// The tasks while gdb is asked about them.
struct TaskList::Request
{
    Tasks tasks;
    int open = 0; ///< questions without an answer
    ShowTasks show;

    void takeAnswer()
    {
        if (--open == 0)
            show(tasks);
    }
};

void TaskList::setExpressions(const QString &expressions)
{
    m_expressions = expressions.split(u';');
    for (QString &each : m_expressions)
        each = each.trimmed();
    if (expressions.trimmed().isEmpty())
        m_expressions.clear();
}

void TaskList::ask(const QString &expression, const std::function<void(const MiRecord &answer)> &take) const
{
    m_session->gdb()->send("-data-evaluate-expression " + miQuoted(expression), take);
}

void TaskList::request(const ShowTasks &show) const
{
    const auto request = std::make_shared<Request>();
    request->show = show;
    const auto count = std::make_shared<MiRecord>();
    ask(expression(Count), [count](const MiRecord &answer) { *count = answer; });
    ask(expression(Running), [this, request, count](const MiRecord &running) {
        bool valid = false;
        const int tasks = count->results.text(u"value").toInt(&valid);
        const MiRecord &wrong = count->isError() ? *count : running;
        if (wrong.isError())
            request->tasks.problem = wrong.errorText();
        else if (m_expressions.size() <= StackPointer || !valid || tasks < 0 || tasks > MostTasks)
            request->tasks.problem = Text::tr("it is not \"number of tasks; running task; stack pointer; name\"");
        if (tasks <= 0 || !request->tasks.problem.isEmpty())
            return request->show(request->tasks);
        requestEach(request, tasks, running.results.text(u"value").toInt());
    });
}

void TaskList::requestEach(const std::shared_ptr<Request> &request, int count, int running) const
{
    request->open = count;
    const QString name = expression(Name).isEmpty() ? u"0"_s : expression(Name);
    for (int task = 0; task < count; ++task) {
        ask(u"$task = %1"_s.arg(task), {});
        ask(name, [request, task, running](const MiRecord &answer) {
            const QString known = nameIn(answer.results.text(u"value"));
            ThreadInfo info;
            info.id = FirstTask + task;
            info.name = known.isEmpty() ? Text::tr("task %1").arg(task) : known;
            info.state = Text::tr("waits");
            if (task == running)
                request->tasks.running = info.name;
            else
                request->tasks.waiting.append(info);
            request->takeAnswer();
        });
    }
}

void TaskList::requestFrames(qint64 thread, qint64 first, qint64 last, const ShowFrames &show) const
{
    ask(u"$task = %1"_s.arg(thread - FirstTask), {});
    ask(u"(unsigned long)("_s + expression(StackPointer) + u')', [=, this](const MiRecord &answer) {
        if (answer.isError())
            return show(answer);
        listFrames(answer.results.text(u"value").toULongLong(), first, last, show);
    });
}

/// gdb finds callers from the registers only, so it gets those of the task for a moment. No other command of ours can
/// be between, and the program is stopped.
void TaskList::listFrames(quint64 stack, qint64 first, qint64 last, const ShowFrames &show) const
{
    MiConnection *gdb = m_session->gdb();
    gdb->send("-stack-select-frame 0"); // the others have registers of their own
    ask(copies(false), {});
    const auto changed = std::make_shared<MiRecord>();
    ask(registersOf(stack), [changed](const MiRecord &answer) { *changed = answer; });
    gdb->send("-stack-list-frames --no-frame-filters " + QByteArray::number(first) + ' ' + QByteArray::number(last),
              [show, changed](const MiRecord &answer) { show(changed->isError() ? *changed : answer); });
    ask(copies(true), {});
    gdb->send("-stack-select-frame " + QByteArray::number(m_session->selectedLevel()));
}
