#pragma once
#include "facet.h"
#include "ivariables.h"
#include <functional>
#include <memory>
#include <QHash>
#include <QStringList>
class DebugAnswer;
class GdbSession;
struct MiRecord;
class MiValue;

/// Variables of the stopped program and their members, read through gdb's variable objects. A thread of 0 stands for
/// the selected thread and frame.
///
/// The objects are kept until the program or its data change.
class Variables : public Facet<IVariables>
{
public:
    Variables(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session) {}

    void reset() { m_objects.clear(); } ///< There is a new gdb, or none.

    int formats() override { return SignedDecimal | Hexadecimal | Binary | Octal; }
    int scopes() override { return 1 << Locals | 1 << Arguments; }
    void requestScope(const DebugRequest &request, const StackPlace &place, int scope, int first, int count, int format,
                      IDebugReplies *replies) override;
    void requestChildren(const DebugRequest &request, const StackPlace &place, const QString &expression, int first,
                         int count, int format, IDebugReplies *replies) override;
    void requestValue(const DebugRequest &request, const StackPlace &place, const QString &expression, int format,
                      IDebugReplies *replies) override;
    void assign(const DebugRequest &request, const StackPlace &place, const QString &expression, const QString &value,
                int format, IDebugReplies *replies) override;

private:
    /// A variable object of gdb.
    struct Object
    {
        QString name;
        QString type;
        QString value;
        int children = 0;     ///< their number; of a dynamic one, those that gdb has read
        bool dynamic = false; ///< a pretty printer makes the children
        bool more = false;    ///< it has some that gdb has not read
    };
    /// A question that is being answered.
    struct Question
    {
        StackPlace place;
        int first = 0;
        int count = 0;
        int format = Natural;
        std::shared_ptr<DebugAnswer> answer;
    };
    struct Members;
    using Use = std::function<void(const Object &object)>;

    static Object objectOf(const MiValue &tuple);
    static VariableInfo infoOf(const QString &expression, const Object &object);
    void dropOldObjects();
    void withObject(const Question &question, const QString &expression, const Use &use);
    void withFormat(const Question &question, const Object &object, const Use &use);
    void listMembers(const Question &question, const Object &parent);
    void addPortion(const std::shared_ptr<Members> &members, const QList<MiValue> &children);
    void addAccessGroup(const std::shared_ptr<Members> &members, const QString &group);
    void addMembers(const std::shared_ptr<Members> &members, const QList<MiValue> &children);
    void completeMember(const std::shared_ptr<Members> &members, qsizetype index, const Object &member);
    void answerWhenComplete(const std::shared_ptr<Members> &members);

    GdbSession *const m_session;
    QHash<QString, Object> m_objects; ///< by thread, frame and expression
    int m_generation = -1;            ///< of the session, to which the objects belong
};

/// Whether evaluating an expression could change the program: it assigns, increments, or calls a function.
[[nodiscard]] bool mayChangeProgram(const QString &expression);
