#include "environmentkey.h"
#include <QHash>

using namespace Qt::StringLiterals;

namespace {
constexpr QLatin1StringView Prefix = "disassembler:"_L1;
constexpr QLatin1StringView KeyPrefix = "disassembler:0x"_L1;
constexpr int KeyDigits = 8;

/// One table for the whole program: documents, plug-ins and markers read names without a common owner, and a number must
/// stay unique as long as any document can be named after it.
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
    return KeyPrefix + u"%1:"_s.arg(environmentKey(environment), KeyDigits, 16, QChar(u'0')) + processor;
}

bool isDisassemblyName(const QString &file)
{
    return file.startsWith(Prefix);
}

uint keyOfDisassembly(const QString &file)
{
    if (!file.startsWith(KeyPrefix))
        return 0;
    return file.mid(KeyPrefix.size(), KeyDigits).toUInt(nullptr, 16);
}
