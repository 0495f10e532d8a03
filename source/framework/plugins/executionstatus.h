#pragma once
#include "iexecutionenvironment.h"
class QDataStream;

// The statuses of an execution environment as arguments of signals and slots. The toolkit would generate stream
// operators for these enumerations, which do not compile for their underlying type. The operators are never used.
QDataStream &operator<<(QDataStream &, IExecutionEnvironment::ProcessorStatus) = delete;
QDataStream &operator>>(QDataStream &, IExecutionEnvironment::ProcessorStatus &) = delete;
QDataStream &operator<<(QDataStream &, IExecutionEnvironment::ProgramStatus) = delete;
QDataStream &operator>>(QDataStream &, IExecutionEnvironment::ProgramStatus &) = delete;
