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
using Question = std::pair<const IExecutionEnvironment *, bool>; ///< and whether the disassembly is meant
std::map<Question, Answer> answers;
quint64 generation = 0; ///< an answer that comes after a change belongs to the time before it
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

void forgetCurrentLocations()
{
    ++generation;
    answers.clear();
}
