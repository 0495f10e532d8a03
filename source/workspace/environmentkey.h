#pragma once
#include <QList>
#include <QString>
class IExecutionEnvironment;

// Documents that show the disassembly are named after an execution environment, which may be gone when the name is read
// again. So names hold a number that stands for the environment, and that stands for no other one ever after.

/// The number for @p environment, which must not be null. Never 0.
[[nodiscard]] uint environmentKey(IExecutionEnvironment *environment);
/// Null if the environment is gone, or if there never was one.
[[nodiscard]] IExecutionEnvironment *environmentOfKey(uint key);
/// To be called when environments have come or gone: only @p alive are found by their numbers from now on.
void keepEnvironments(const QList<IExecutionEnvironment *> &alive);

/// The name of the document with the disassembly of @p environment: "disassembler:0x00000001:" and @p processor.
[[nodiscard]] QString disassemblyName(IExecutionEnvironment *environment, const QString &processor);
/// Whether @p file names a disassembly, be it of one environment, be it "disassembler:" alone.
[[nodiscard]] bool isDisassemblyName(const QString &file);
/// The number in a name that disassemblyName() has made; 0 if @p file is no such name.
[[nodiscard]] uint keyOfDisassembly(const QString &file);
