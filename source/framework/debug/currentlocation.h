#pragma once
#include "icallstack.h"
#include <optional>
#include <QString>
class IExecutionEnvironment;

/// Where the program of @p environment, which may be null, is: IExecutionEnvironment::currentLocation(), with @p file
/// as there. All windows need it at each stop, so the environment is asked once for the source and once for the
/// disassembly until forgetCurrentLocations(). False if it is not known.
[[nodiscard]] bool currentLocation(IExecutionEnvironment *environment, QString &file, int &line);
/// The thread and function that are chosen in @p environment, which may be null: ICallStack::currentPlace(), asked once
/// as well. Nothing if it is not known or not offered.
[[nodiscard]] std::optional<StackPlace> currentStackPlace(IExecutionEnvironment *environment);
/// To be called when a program may be elsewhere: it was started, stopped or restarted, another function was chosen, or
/// registers or memory were written.
void forgetCurrentLocations();
