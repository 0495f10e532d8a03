#pragma once
#include "programplace.h"
#include <QList>
class IExecutionEnvironment;

// Documents that show a disassembly are named after an execution environment, which may be deleted before the name is
// read again. Therefore the name holds a number, which is never given to a second environment.

/// The number of @p environment, which must not be null. Never 0.
[[nodiscard]] uint environmentKey(IExecutionEnvironment *environment);
/// Null if the environment was deleted, or if there never was one.
[[nodiscard]] IExecutionEnvironment *environmentOfKey(uint key);
/// Removes all environments but @p alive. Call it when environments were added or removed.
void keepEnvironments(const QList<IExecutionEnvironment *> &alive);

/// The name of the document with the disassembly of @p environment.
[[nodiscard]] QString disassemblyName(IExecutionEnvironment *environment, const QString &processor);
