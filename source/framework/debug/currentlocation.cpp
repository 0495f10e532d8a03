#include "currentlocation.h"
#include "callplugin.h"
#include "iexecutionenvironment.h"
#include "programplace.h"
#include <map>

namespace {
struct Answer
{
    bool known = false;
    QString file;
    int line = 0;
};
// Of the whole program: an environment is asked by windows, commands and scripts, which have no owner in common.
using Question = std::pair<const IExecutionEnvironment *, bool>; ///< and whether the disassembly is meant
std::map<Question, Answer> answers;
std::map<const IExecutionEnvironment *, std::optional<StackPlace>> places;
quint64 generation = 0; ///< grows with each change; an answer to a question from before the last change is not kept
} // namespace

bool currentLocation(IExecutionEnvironment *environment, QString &file, int &line)
{
    const Question question{environment, isDisassemblyName(file)};
    auto found = answers.find(question);
    if (found == answers.end()) {
        const quint64 asked = generation;
        Answer answer{false, file, line};
        const auto kept = shareInterface(environment);
        answer.known = askPlugin<&IExecutionEnvironment::currentLocation>(kept, answer.file, answer.line);
        if (asked != generation) {
            file = answer.file;
            line = answer.line;
            return answer.known;
        }
        found = answers.insert_or_assign(question, answer).first;
    }
    file = found->second.file;
    line = found->second.line;
    return found->second.known;
}

std::optional<StackPlace> currentStackPlace(IExecutionEnvironment *environment)
{
    if (const auto found = places.find(environment); found != places.end())
        return found->second;
    const quint64 asked = generation;
    StackPlace place;
    const bool known = askPlugin<&ICallStack::currentPlace>(queryPlugin<ICallStack>(environment), place);
    const auto answer = known ? std::optional(place) : std::nullopt;
    if (asked == generation)
        places.insert_or_assign(environment, answer);
    return answer;
}

void forgetCurrentLocations()
{
    ++generation;
    answers.clear();
    places.clear();
}
