#pragma once
#include <QString>
class IExecutionEnvironment;

/// Where the program of @p environment, which may be null, is: IExecutionEnvironment::currentLocation(), with @p file
/// as there. All windows need it at each stop, so the environment is asked once for the source and once for the
/// disassembly until forgetCurrentLocations(). False if it is not known.
[[nodiscard]] bool currentLocation(IExecutionEnvironment *environment, QString &file, int &line);
/// To be called when a program may be elsewhere: it was started, stopped or restarted, another function was chosen, or
/// registers or memory were written.
void forgetCurrentLocations();
