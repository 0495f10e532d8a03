#include "environmentkey.h"
#include <QHash>

namespace {
/// One table for the whole program: documents, plug-ins and markers read names without a common owner, and a number
/// must stay unique as long as any document can be named after it.
QHash<IExecutionEnvironment *, uint> &keys()
{
    static QHash<IExecutionEnvironment *, uint> keys;
    return keys;
}
} // namespace

uint environmentKey(IExecutionEnvironment *environment)
{
    static uint lastKey = 0;
    auto found = keys().find(environment);
    if (found == keys().end())
        found = keys().insert(environment, ++lastKey);
    return *found;
}

IExecutionEnvironment *environmentOfKey(uint key)
{
    return keys().key(key);
}

void keepEnvironments(const QList<IExecutionEnvironment *> &alive)
{
    keys().removeIf([&](const auto &entry) { return !alive.contains(entry.key()); });
}

QString disassemblyName(IExecutionEnvironment *environment, const QString &processor)
{
    return disassemblyName(environmentKey(environment), processor);
}
