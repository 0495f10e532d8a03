#pragma once
#include "ivaluerequests.h"
#include <functional>
#include <QHash>
#include <QObject>

/// The questions of one window to an environment about the stopped program. Each is answered later, once, by one of its
/// functions.
///
/// An answer is ignored if its question was cancelled, or if the program or what is chosen in it has changed since.
class DebugQueries : public QObject
{
    Q_OBJECT
public:
    /// What to do with an answer; functions that a question does not need are empty.
    struct Answer
    {
        std::function<void(const QList<ThreadInfo> &threads)> threads = {};
        std::function<void(const QList<StackFrame> &frames, bool more)> frames = {};
        std::function<void(const QList<VariableInfo> &variables, bool more)> variables = {};
        std::function<void(const VariableInfo &variable)> value = {};
        std::function<void(const MemoryBlock64 &cells)> memory = {};
        std::function<void(const QList<RegisterValue> &values)> registers = {};
        std::function<void(const QString &value)> evaluated = {};
        std::function<void(const QString &reason)> failed = {};
    };

    explicit DebugQueries(QObject *parent = nullptr);
    ~DebugQueries() override;

    /// Returns the request for a new question, which is passed to the environment together with replies() or
    /// valueReplies().
    [[nodiscard]] DebugRequest ask(const Answer &answer);
    [[nodiscard]] IDebugReplies *replies() const;
    [[nodiscard]] IValueReplies *valueReplies() const;
    void cancel() { m_questions.clear(); } ///< Ignores the answers to all questions.
    [[nodiscard]] bool isWaiting() const { return !m_questions.isEmpty(); }

    /// To be called when the program has run or was changed, or when another thread or frame was chosen: answers to
    /// the questions of all windows until then are ignored.
    static void raiseGeneration();

private:
    class Replies;
    class ValueReplies;
    void receive(const DebugRequest &request, const std::function<void(const Answer &answer)> &use);

    const InterfacePtr<Replies> m_replies;
    const InterfacePtr<ValueReplies> m_valueReplies;
    QHash<quint64, Answer> m_questions; ///< without an answer, by number
};
