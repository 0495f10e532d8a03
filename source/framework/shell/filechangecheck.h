#pragma once
#include <QString>
class WindowServices;

/// Asks the user whether to reload files that other programs have changed: once for each new modification time. After a
/// refusal it does not ask until the file changes again.
class FileChangeCheck
{
public:
    explicit FileChangeCheck(WindowServices &window) : m_window(window) {}

    /// Asks about every open document whose file is newer than it; names those whose file was deleted in the status
    /// bar, and they count as modified. Does nothing while a question is open.
    void run();

private:
    void noticeLostFiles();
    [[nodiscard]] bool mayReload(const QString &path, bool modified) const;

    WindowServices &m_window;
    bool m_running = false;
};
