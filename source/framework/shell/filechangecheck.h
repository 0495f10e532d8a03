#pragma once
#include <QDateTime>
#include <QHash>
class Document;
class WindowServices;

/// Asks the user whether to reload files that other programs have changed: once for each new modification time. After a
/// refusal it does not ask until the file changes again.
class FileChangeCheck
{
public:
    explicit FileChangeCheck(WindowServices &window) : m_window(window) {}

    /// Asks about every open document whose file is newer than it. Does nothing while a question is open.
    void run();
    /// To be called when another message informs the user about the file of @p document: run() does not ask about it
    /// then.
    void noteReported(Document *document);

private:
    [[nodiscard]] bool mayReload(const QString &path, bool modified) const;
    [[nodiscard]] bool isUnreported(Document *document) const;

    WindowServices &m_window;
    QHash<QString, QDateTime> m_fileTimes; ///< by path, the modification times that were reported to the user
    bool m_running = false;
};
