#include "variables.h"
#include "debuganswer.h"
#include "gdbsession.h"
#include "tasklist.h"
#include <QCoreApplication>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

/// The members of a variable while gdb is asked about each of them.
struct Variables::Members
{
    Question question;
    QList<VariableInfo> list;
    int skips = 0;   ///< members that are still to be left out before the first that was requested
    int pending = 0; ///< commands without an answer
    bool dynamic = false;
    bool array = false;
    bool more = false;
};

namespace {
constexpr int MostGroups = 64; ///< children of a class: its base classes and a group for each access specifier

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Variables)
};

QByteArray placeOptions(const StackPlace &place)
{
    if (place.thread <= 0)
        return {};
    return "--thread " + QByteArray::number(place.thread) + " --frame " + QByteArray::number(place.frame) + ' ';
}

QByteArray formatName(int format)
{
    switch (format) {
    case IVariables::SignedDecimal:
        return "decimal";
    case IVariables::Hexadecimal:
        return "hexadecimal";
    case IVariables::Binary:
        return "binary";
    case IVariables::Octal:
        return "octal";
    default:
        return "natural";
    }
}

/// gdb has a child for each access specifier of a class, which contains the members.
bool isAccessGroup(const MiValue &child)
{
    static const QStringList groups{u"public"_s, u"protected"_s, u"private"_s};
    return !child.contains(u"type") && groups.contains(child.text(u"exp"));
}

bool isAvailable(const QString &value)
{
    return value != "<optimized out>"_L1 && !value.startsWith("<error"_L1) && !value.startsWith("<not "_L1);
}
QString waitingTask()
{
    return Text::tr("Variables are shown for the task that runs.");
}
} // namespace

bool mayChangeProgram(const QString &expression)
{
    static const QRegularExpression literals(u"\"(\\\\.|[^\"\\\\])*\"|'(\\\\.|[^'\\\\])*'"_s);
    static const QRegularExpression comparisons(u"[=!]=|(?<!<)<=|(?<!>)>="_s);
    static const QRegularExpression effects(u"=|\\+\\+|--"_s);
    static const QRegularExpression calls(u"([A-Za-z_$][\\w$:]*|[)\\]])\\s*(?:<[\\w\\s:,*&]*>\\s*)?\\("_s);
    static const QStringList operators{u"sizeof"_s,   u"alignof"_s,     u"_Alignof"_s,        u"typeof"_s,
                                       u"decltype"_s, u"static_cast"_s, u"reinterpret_cast"_s};
    QString text = expression;
    text.replace(literals, u"0"_s).replace(comparisons, u" "_s);
    if (text.contains(effects))
        return true;
    for (auto match = calls.globalMatch(text); match.hasNext();) {
        const QString called = match.next().captured(1);
        const bool isCast = called == ")"_L1; // "(int)(a + b)"; a call through a pointer looks alike
        if (!isCast && !operators.contains(called))
            return true;
    }
    return false;
}

Variables::Object Variables::objectOf(const MiValue &tuple)
{
    const bool dynamic = tuple.text(u"dynamic") == "1"_L1;
    return {tuple.text(u"name"),
            tuple.text(u"type"),
            tuple.text(u"value"),
            tuple.number(u"numchild"),
            dynamic,
            tuple.text(u"has_more") == "1"_L1};
}

VariableInfo Variables::infoOf(const QString &expression, const Object &object)
{
    VariableInfo info;
    info.expression = expression;
    info.type = object.type;
    info.value = object.value;
    info.available = isAvailable(object.value);
    const bool hasMembers = object.children > 0 || (object.dynamic && object.more);
    const bool isArray = object.type.endsWith(u']') && !object.dynamic;
    info.children = isArray ? object.children : hasMembers ? -1 : 0; // those of a class are groups of members
    const bool isPointer = object.type.endsWith(u'*');
    info.writable = info.available && !object.dynamic && (info.children == 0 || isPointer);
    return info;
}

/// Objects of an older stop may belong to frames that are gone.
void Variables::dropOldObjects()
{
    if (m_generation == m_session->generation())
        return;
    m_generation = m_session->generation();
    for (const Object &object : std::exchange(m_objects, {})) {
        if (!object.name.contains(u'.')) // members go with their variable
            m_session->gdb()->send("-var-delete " + miQuoted(object.name));
    }
}

void Variables::withObject(const Question &question, const QString &expression, const Use &use)
{
    if (!m_session->isStopped())
        return question.answer->failed(Text::tr("The program is not paused."));
    if (TaskList::isTask(question.place.thread))
        return question.answer->failed(waitingTask());
    dropOldObjects();
    const QString key = u"%1 %2 %3"_s.arg(question.place.thread).arg(question.place.frame).arg(expression);
    if (const auto known = m_objects.constFind(key); known != m_objects.cend())
        return withFormat(question, *known, use);
    m_session->gdb()->send("-var-create " + placeOptions(question.place) + "- * " + miQuoted(expression),
                           [this, question, key, use, generation = m_generation](const MiRecord &answer) {
                               if (answer.isError())
                                   return question.answer->failed(answer.errorText());
                               const Object object = objectOf(answer.results);
                               if (generation == m_generation)
                                   m_objects.insert(key, object);
                               withFormat(question, object, use);
                           });
}

void Variables::withFormat(const Question &question, const Object &object, const Use &use)
{
    m_session->gdb()->send("-var-set-format " + miQuoted(object.name) + ' ' + formatName(question.format),
                           [question, object, use](const MiRecord &answer) {
                               Object formatted = object;
                               if (answer.results.contains(u"value"))
                                   formatted.value = answer.results.text(u"value");
                               use(formatted);
                           });
}

void Variables::requestValue(const DebugRequest &request, const StackPlace &place, const QString &expression,
                             int format, IDebugReplies *replies)
{
    const Question question{place, 0, 0, format, std::make_shared<DebugAnswer>(request, replies)};
    if (mayChangeProgram(expression))
        return question.answer->failed(Text::tr("The expression could change the program."));
    withObject(question, expression, [question, expression](const Object &object) {
        VariableInfo info = infoOf(expression, object);
        info.name = expression;
        question.answer->value(info);
    });
}

void Variables::assign(const DebugRequest &request, const StackPlace &place, const QString &expression,
                       const QString &value, int format, IDebugReplies *replies)
{
    const Question question{place, 0, 0, format, std::make_shared<DebugAnswer>(request, replies)};
    withObject(question, expression, [this, question, expression, value](const Object &object) {
        m_session->gdb()->send("-var-assign " + miQuoted(object.name) + ' ' + miQuoted(value),
                               [this, question, expression, object](const MiRecord &answer) {
                                   if (answer.isError())
                                       return question.answer->failed(answer.errorText());
                                   m_session->targetChanged();
                                   Object changed = object;
                                   changed.value = answer.results.text(u"value");
                                   VariableInfo info = infoOf(expression, changed);
                                   info.name = expression;
                                   question.answer->value(info);
                               });
    });
}

// Members -------------------------------------------------------------------------------------------------------------

void Variables::requestChildren(const DebugRequest &request, const StackPlace &place, const QString &expression,
                                int first, int count, int format, IDebugReplies *replies)
{
    const Question question{place, std::max(0, first), std::max(0, count), format,
                            std::make_shared<DebugAnswer>(request, replies)};
    if (mayChangeProgram(expression))
        return question.answer->failed(Text::tr("The expression could change the program."));
    withObject(question, expression, [this, question](const Object &object) { listMembers(question, object); });
}

void Variables::listMembers(const Question &question, const Object &parent)
{
    const auto members = std::make_shared<Members>();
    members->question = question;
    members->dynamic = parent.dynamic;
    members->array = parent.type.endsWith(u']');
    // The members of a class are in groups, so that those of a portion are chosen from all.
    const bool isStructure = !parent.dynamic && !members->array && parent.children <= MostGroups;
    members->skips = isStructure ? question.first : 0;
    QByteArray command = "-var-list-children --all-values " + miQuoted(parent.name);
    if (!isStructure)
        command += ' ' + QByteArray::number(question.first) + ' ' + QByteArray::number(question.first + question.count);
    m_session->gdb()->send(command, [this, members, total = isStructure ? 0 : parent.children](const MiRecord &answer) {
        if (answer.isError())
            return members->question.answer->failed(answer.errorText());
        ++members->pending;
        const QList<MiValue> children = answer.results[u"children"].items();
        addPortion(members, children);
        const qsizetype last = members->question.first + children.size();
        if (answer.results.text(u"has_more") == "1"_L1 || (!members->dynamic && last < total))
            members->more = true;
        --members->pending;
        answerWhenComplete(members);
    });
}

/// Adds those of some children that belong to the portion, and the members in groups.
void Variables::addPortion(const std::shared_ptr<Members> &members, const QList<MiValue> &children)
{
    QList<MiValue> wanted;
    for (const MiValue &child : children) {
        if (isAccessGroup(child))
            addAccessGroup(members, child.text(u"name"));
        else if (members->skips > 0)
            --members->skips;
        else if (members->list.size() + wanted.size() < members->question.count)
            wanted.append(child);
        else
            members->more = true;
    }
    addMembers(members, wanted);
}

void Variables::addAccessGroup(const std::shared_ptr<Members> &members, const QString &group)
{
    ++members->pending;
    m_session->gdb()->send("-var-list-children --all-values " + miQuoted(group),
                           [this, members](const MiRecord &answer) {
                               addPortion(members, answer.results[u"children"].items());
                               --members->pending;
                               answerWhenComplete(members);
                           });
}

void Variables::addMembers(const std::shared_ptr<Members> &members, const QList<MiValue> &children)
{
    for (const MiValue &child : children) {
        const Object member = objectOf(child);
        const QString name = child.text(u"exp");
        VariableInfo info = infoOf(member.name, member);
        info.name = members->array || (members->dynamic && name.front().isDigit()) ? u'[' + name + u']' : name;
        members->list.append(info);
        completeMember(members, members->list.size() - 1, member);
    }
}

/// Asks for the expression and, in a format other than the natural one, for the value of a member.
void Variables::completeMember(const std::shared_ptr<Members> &members, qsizetype index, const Object &member)
{
    const Question &question = members->question;
    const QString place = u"%1 %2 "_s.arg(question.place.thread).arg(question.place.frame);
    m_objects.insert(place + member.name, member); // of a pretty printer: it has no expression of its own
    if (!members->dynamic) {
        ++members->pending;
        m_session->gdb()->send("-var-info-path-expression " + miQuoted(member.name),
                               [this, members, index, place, member](const MiRecord &answer) {
                                   const QString path = answer.results.text(u"path_expr");
                                   if (answer.isDone() && !path.isEmpty()) {
                                       members->list[index].expression = path;
                                       m_objects.insert(place + path, member);
                                   }
                                   --members->pending;
                                   answerWhenComplete(members);
                               });
    }
    if (question.format == Natural || member.children > 0)
        return;
    ++members->pending;
    m_session->gdb()->send("-var-set-format " + miQuoted(member.name) + ' ' + formatName(question.format),
                           [this, members, index](const MiRecord &answer) {
                               if (answer.results.contains(u"value"))
                                   members->list[index].value = answer.results.text(u"value");
                               --members->pending;
                               answerWhenComplete(members);
                           });
}

void Variables::answerWhenComplete(const std::shared_ptr<Members> &members)
{
    if (members->pending == 0)
        members->question.answer->variables(members->list, members->more);
}

// Frames --------------------------------------------------------------------------------------------------------------

void Variables::requestScope(const DebugRequest &request, const StackPlace &place, int scope, int first, int count, int,
                             IDebugReplies *replies)
{
    const Question question{place, std::max(0, first), std::max(0, count), Natural,
                            std::make_shared<DebugAnswer>(request, replies)};
    if (!m_session->isStopped())
        return question.answer->failed(Text::tr("The program is not paused."));
    if (TaskList::isTask(place.thread))
        return question.answer->failed(waitingTask());
    if (scope != Locals && scope != Arguments)
        return question.answer->failed(Text::tr("These variables cannot be listed."));
    m_session->gdb()->send("-stack-list-variables " + placeOptions(place) + "--simple-values",
                           [question, scope](const MiRecord &answer) {
                               if (answer.isError())
                                   return question.answer->failed(answer.errorText());
                               QList<VariableInfo> all;
                               for (const MiValue &tuple : answer.results[u"variables"].items()) {
                                   if (scope == Arguments && tuple.text(u"arg") != "1"_L1)
                                       continue;
                                   const bool isSimple = tuple.contains(u"value");
                                   VariableInfo info;
                                   info.name = info.expression = tuple.text(u"name");
                                   info.type = tuple.text(u"type");
                                   info.value = isSimple ? tuple.text(u"value") : u"{...}"_s;
                                   info.writable = isSimple;
                                   info.available = isAvailable(info.value);
                                   const bool refers = info.type.endsWith(u'*') || info.type.endsWith(u'&');
                                   info.children = !isSimple || refers ? -1 : 0;
                                   all.append(info);
                               }
                               const auto portion = all.mid(question.first, question.count);
                               question.answer->variables(portion, question.first + portion.size() < all.size());
                           });
}
