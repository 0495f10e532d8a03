#pragma once
#include "filechangecheck.h"
#include "recentfilelist.h"
#include <QObject>
class Activity;
class Document;
class View;
class WindowServices;

/// Whether a file, which may be named relative to the current project's directory, exists, or is open and not saved
/// yet.
[[nodiscard]] bool sourceExists(const Activity &activity, const WindowServices &window, const QString &path);

/// The commands on files: opening, saving, closing, reverting and printing, with their prompts.
class FileCommands : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    FileCommands(const Activity &activity, WindowServices &window, QObject *parent = nullptr);

    /// Opens a file; a relative path is relative to the current project's directory. Returns false after a message to
    /// the user if it cannot be opened.
    bool openFile(const QString &path, bool addToRecent);
    /// Opens a file as openFile() does, and moves the cursor to @p line and @p column, which count from 1. If the file
    /// does not exist, the status bar says so.
    void showSource(const QString &path, int line, int column);
    void open();
    void openRecent(int index);
    void close();
    void closeAll();
    void revert();
    void save();
    void saveAs();
    /// Asks whether to overwrite open files, and project files with changes, that are newer on disk, if there are any.
    /// False if the user refuses.
    [[nodiscard]] bool mayOverwriteNewer();
    void print();
    /// Disables the commands to print and to save under another name for views that cannot; null if no view is left.
    void viewActivated(View *view);
    /// Inserts the contents of a file at the cursor.
    void insertFile();
    /// Asks about open documents whose files other programs have changed.
    void checkFileChanges() { m_changeCheck.run(); }

    [[nodiscard]] const QStringList &recentFiles() const { return m_recentFiles.paths(); }
    void saveRecentFiles() const { m_recentFiles.save(); }

Q_SIGNALS:
    /// A document came to the front, so markers of the debugger may have to be shown in it.
    void fileOpened();

private:
    bool openAndRemember(const QString &path);
    [[nodiscard]] QList<QPointer<Document>> newerDocuments() const;
    [[nodiscard]] QStringList newerProjectFiles() const;
    [[nodiscard]] bool mayRevert(const QString &path, bool modified) const;
    [[nodiscard]] bool mayDiscard(const Document *other, const QString &path);
    void discard(Document *document);

    const Activity &m_activity;
    WindowServices &m_window;
    FileChangeCheck m_changeCheck;
    RecentFileList m_recentFiles;
};
