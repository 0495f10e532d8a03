#pragma once
#include <QByteArrayList>
#include <QString>
struct ElfImage;
struct TargetOptions;

/// The gdb for a program: that of the options, or the one that knows the program's processor.
[[nodiscard]] QString gdbFor(const TargetOptions &options, const ElfImage &elf);

/// The commands that set up a new gdb.
[[nodiscard]] QByteArrayList gdbSettings(const TargetOptions &options, const ElfImage &elf);
