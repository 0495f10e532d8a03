#pragma once
#include <QDateTime>
#include <QHash>
class Document;
class WindowServices;

/// Tells the user of files that were changed behind the editor's back: once for each new time on disk. A refusal to
/// reload is remembered until the file changes again.
class FileChangeCheck
{
public:
    explicit FileChangeCheck(WindowServices &window) : m_window(window) {}

    /// Asks about every open document whose file is newer than it. Does nothing while it is asking already.
    void run();
    /// The user is being told about the file of @p document as it is now, in other words than those of run().
    void noteTold(Document *document);

private:
    [[nodiscard]] bool isNews(Document *document) const;

    WindowServices &m_window;
    QHash<QString, QDateTime> m_fileTimes; ///< the modification times that the user has been told about, by path
    bool m_running = false;
};
