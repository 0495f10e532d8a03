#include "debugqueries.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "interfaceobject.h"
#include <QPointer>

namespace {
quint64 lastQuestion = 0; ///< of all windows: no two questions of a session have the same number
quint64 generation = 1;   ///< of all windows as well: what changes the program makes the answers of each one old
} // namespace

namespace {
/// Passes answers to the window as long as it exists. An environment may answer while it is called, or in a thread.
class AnswerPath
{
public:
    using Receive =
        std::function<void(const DebugRequest &, const std::function<void(const DebugQueries::Answer &)> &)>;

    AnswerPath(DebugQueries *queries, Receive receive) : m_queries(queries), m_receive(std::move(receive)) {}

    /// Calls one of the functions of an answer.
    template <typename Function, typename... Values>
    void pass(const DebugRequest &request, Function DebugQueries::Answer::*function, const Values &...values) const
    {
        if (!m_queries)
            return;
        afterPluginCall(m_queries, "debug answer " + QByteArray::number(request.number),
                        [receive = m_receive, request, function, values...] {
                            receive(request, [&](const DebugQueries::Answer &answer) {
                                if (answer.*function)
                                    (answer.*function)(values...);
                            });
                        });
    }

private:
    const QPointer<DebugQueries> m_queries;
    const Receive m_receive;
};
} // namespace

class DebugQueries::Replies : public InterfaceObject<IDebugReplies>
{
public:
    explicit Replies(DebugQueries *queries)
        : m_path(queries, [queries](const auto &request, const auto &use) { queries->receive(request, use); })
    {}

    void threads(const DebugRequest &request, const QList<ThreadInfo> &threads) override
    {
        m_path.pass(request, &Answer::threads, threads);
    }
    void frames(const DebugRequest &request, const QList<StackFrame> &frames, bool more) override
    {
        m_path.pass(request, &Answer::frames, frames, more);
    }
    void variables(const DebugRequest &request, const QList<VariableInfo> &variables, bool more) override
    {
        m_path.pass(request, &Answer::variables, variables, more);
    }
    void value(const DebugRequest &request, const VariableInfo &variable) override
    {
        m_path.pass(request, &Answer::value, variable);
    }
    void failed(const DebugRequest &request, const QString &reason) override
    {
        m_path.pass(request, &Answer::failed, reason);
    }

private:
    const AnswerPath m_path;
};

class DebugQueries::ValueReplies : public InterfaceObject<IValueReplies>
{
public:
    explicit ValueReplies(DebugQueries *queries)
        : m_path(queries, [queries](const auto &request, const auto &use) { queries->receive(request, use); })
    {}

    void memory(const DebugRequest &request, const MemoryBlock64 &cells) override
    {
        m_path.pass(request, &Answer::memory, cells);
    }
    void registers(const DebugRequest &request, const QList<RegisterValue> &values) override
    {
        m_path.pass(request, &Answer::registers, values);
    }
    void evaluated(const DebugRequest &request, const QString &value) override
    {
        m_path.pass(request, &Answer::evaluated, value);
    }
    void failed(const DebugRequest &request, const QString &reason) override
    {
        m_path.pass(request, &Answer::failed, reason);
    }

private:
    const AnswerPath m_path;
};

DebugQueries::DebugQueries(QObject *parent)
    : QObject(parent), m_replies(new Replies(this)), m_valueReplies(new ValueReplies(this))
{}

DebugQueries::~DebugQueries() = default;

DebugRequest DebugQueries::ask(const Answer &answer)
{
    const DebugRequest request{++lastQuestion, generation};
    m_questions.insert(request.number, answer);
    return request;
}

IDebugReplies *DebugQueries::replies() const
{
    return m_replies.get();
}

IValueReplies *DebugQueries::valueReplies() const
{
    return m_valueReplies.get();
}

void DebugQueries::raiseGeneration()
{
    ++generation;
    forgetCurrentLocations();
}

void DebugQueries::receive(const DebugRequest &request, const std::function<void(const Answer &answer)> &use)
{
    if (!m_questions.contains(request.number))
        return;
    const Answer answer = m_questions.take(request.number); // it may delete this object
    if (request.generation == generation)
        use(answer);
}
