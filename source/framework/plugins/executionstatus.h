#pragma once
#include "iexecutionenvironment.h"
class QDataStream;

// The statuses of an execution environment as arguments of signals and slots. The toolkit believes that it can stream
// any enumeration, and fails to, as it cannot stream the type below these; nobody streams them.
QDataStream &operator<<(QDataStream &, IExecutionEnvironment::ProcessorStatus) = delete;
QDataStream &operator>>(QDataStream &, IExecutionEnvironment::ProcessorStatus &) = delete;
QDataStream &operator<<(QDataStream &, IExecutionEnvironment::ProgramStatus) = delete;
QDataStream &operator>>(QDataStream &, IExecutionEnvironment::ProgramStatus &) = delete;
