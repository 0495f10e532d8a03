#pragma once
#include <functional>
#include <QObject>
class Document;
class FileChangeCheck;
class LastDirectories;
class RecentFileList;
class ViewManager;
class Workspace;

/// The commands on files: opening, saving, closing, reverting and printing, with their prompts.
class FileCommands : public QObject
{
    Q_OBJECT
public:
    /// What the commands work with; all of it outlives them.
    struct Context
    {
        QWidget *window;
        Workspace *workspace;
        ViewManager *viewManager;
        RecentFileList *recentFiles;
        FileChangeCheck *changeCheck;
        LastDirectories *directories;
        std::function<QString()> filter;           ///< for dialogs that open source files
        std::function<QString()> projectDirectory; ///< of the current project; empty if there is none
    };

    explicit FileCommands(Context context, QObject *parent = nullptr);

    /// Opens a file; a relative path belongs to the current project's directory. The user has been told why if it
    /// returns false.
    bool openFile(const QString &path, bool addToRecent);
    void open();
    void openRecent(int index);
    void close();
    void closeAll();
    void revert();
    void save();
    void saveAs();
    /// Asks whether to overwrite open files that are newer on disk, if there are any. False if the user refuses.
    [[nodiscard]] bool mayOverwriteNewer();
    void print();
    /// Puts the contents of a file at the cursor.
    void insertFile();

Q_SIGNALS:
    /// A document came to the front, so markers of the debugger may have to be shown in it.
    void fileOpened();

private:
    bool openAndRemember(const QString &path);
    [[nodiscard]] QList<Document *> newerDocuments() const;

    const Context m_context;
};
