#pragma once
#include <QStringList>
#include <QtGlobal>

/// Keeps the last lines of the warning channel for reports of problems, and passes everything on. One exists from the
/// program's first step to its last.
class WarningLog
{
public:
    static constexpr int MostLines = 100;

    WarningLog();
    ~WarningLog();
    Q_DISABLE_COPY_MOVE(WarningLog)

    /// The oldest first, each with its time; any thread may have written them. Empty if there is no log. The user's
    /// home directory is written as "~".
    [[nodiscard]] static QStringList lines();
};
