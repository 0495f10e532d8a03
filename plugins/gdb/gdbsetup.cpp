#include "gdbsetup.h"
#include "elfimage.h"
#include "mirecord.h"
#include "targetoptions.h"
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString gdbFor(const TargetOptions &options, const ElfImage &elf)
{
    if (!options.gdb.isEmpty())
        return options.gdb;
    if (elf.machine == ElfImage::Avr)
        return u"avr-gdb"_s;
    if (elf.isNative() && !QStandardPaths::findExecutable(u"gdb"_s).isEmpty())
        return u"gdb"_s;
    return u"gdb-multiarch"_s;
}

QByteArrayList gdbSettings(const TargetOptions &options, const ElfImage &elf)
{
    QByteArrayList commands;
    for (const char *setting :
         {"mi-async on", "confirm off", "pagination off", "width 0", "height 0", "breakpoint pending off",
          "print elements 200", "print sevenbit-strings off", "print asm-demangle on", "tcp connect-timeout 3",
          "tcp auto-retry off", "startup-with-shell on", "print repeats 10", "print entry-values no",
          "python print-stack none"})
        commands += QByteArray("-gdb-set ") + setting;
    commands += "-enable-pretty-printing"; // of variable objects
    if (!options.callFunctions)
        commands += "-gdb-set may-call-functions off";
    if (elf.machine == ElfImage::Avr) // its simulators accept hardware watchpoints, but never stop at them
        commands += "-gdb-set can-use-hw-watchpoints 0";
    for (const QString &directory : options.sourceDirectories.split(u';', Qt::SkipEmptyParts))
        commands += "-environment-directory " + miQuoted(directory);
    return commands;
}
