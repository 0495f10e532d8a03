#include "debugqueries.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "interfaceobject.h"
#include <QPointer>

namespace {
quint64 lastQuestion = 0; ///< of all windows: no two questions of a session have the same number
quint64 generation = 1;
} // namespace

/// Passes the answers to the window as long as it exists. An environment may answer while it is called, or in a thread.
class DebugQueries::Replies : public InterfaceObject<IDebugReplies>
{
public:
    explicit Replies(DebugQueries *queries) : m_queries(queries) {}

    void threads(const DebugRequest &request, const QList<ThreadInfo> &threads) override
    {
        pass(request, [threads](const Answer &answer) {
            if (answer.threads)
                answer.threads(threads);
        });
    }
    void frames(const DebugRequest &request, const QList<StackFrame> &frames, bool more) override
    {
        pass(request, [frames, more](const Answer &answer) {
            if (answer.frames)
                answer.frames(frames, more);
        });
    }
    void variables(const DebugRequest &request, const QList<VariableInfo> &variables, bool more) override
    {
        pass(request, [variables, more](const Answer &answer) {
            if (answer.variables)
                answer.variables(variables, more);
        });
    }
    void value(const DebugRequest &request, const VariableInfo &variable) override
    {
        pass(request, [variable](const Answer &answer) {
            if (answer.value)
                answer.value(variable);
        });
    }
    void failed(const DebugRequest &request, const QString &reason) override
    {
        pass(request, [reason](const Answer &answer) {
            if (answer.failed)
                answer.failed(reason);
        });
    }

private:
    void pass(const DebugRequest &request, const std::function<void(const Answer &answer)> &use)
    {
        if (!m_queries)
            return;
        afterPluginCall(m_queries, "debug answer " + QByteArray::number(request.number),
                        [queries = m_queries, request, use] { queries->receive(request, use); });
    }

    const QPointer<DebugQueries> m_queries;
};

DebugQueries::DebugQueries(QObject *parent) : QObject(parent), m_replies(new Replies(this)) {}

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

void DebugQueries::raiseGeneration()
{
    ++generation;
    forgetCurrentLocations();
}

void DebugQueries::receive(const DebugRequest &request, const std::function<void(const Answer &answer)> &use)
{
    const auto question = m_questions.constFind(request.number);
    if (question == m_questions.cend())
        return;
    const Answer answer = *question; // it may delete this object
    m_questions.erase(question);
    if (request.generation == generation)
        use(answer);
}
