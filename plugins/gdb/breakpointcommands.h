#pragma once
#include "ibreakpointdetails.h"
#include <QByteArray>
#include <QStringList>

/// The text of a breakpoint that prints and continues, for gdb's command of that kind.
struct LogFormat
{
    QString format;          ///< of printf, with "%s" for each expression; ends with a line end
    QStringList expressions; ///< in their order

    bool operator==(const LogFormat &) const = default;
};

/// Begins the output of such a breakpoint, to distinguish it from other texts of gdb.
inline constexpr QLatin1String LogMark("breakpoint> ");

/// The format for a text in which "{expression}" stands for a value. A brace without its counterpart is text.
[[nodiscard]] LogFormat logFormat(const QString &text);

/// The command that inserts a breakpoint at @p location, which is in the form of the command's arguments.
[[nodiscard]] QByteArray insertCommand(const BreakpointDetails &details, bool enabled, const QByteArray &location);

/// The console command that inserts a data breakpoint.
[[nodiscard]] QString watchCommand(const DataBreakpoint &breakpoint);

/// The comparators of a Cortex-M processor, by its registers FP_CTRL and DWT_CTRL; unknown if there are none.
[[nodiscard]] BreakpointLimits cortexLimits(uint flashPatch, uint watch);

/// The numbers of the breakpoints that gdb could not insert when the program was to run, from what it has printed.
[[nodiscard]] QList<int> refusedBreakpoints(const QString &text);
