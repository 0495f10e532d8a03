#pragma once
#include "filesearcher.h"
#include "findinfilesdialog.h"
#include <QObject>
#include <QTimer>
class Activity;
class QAction;
class WindowServices;

/// Find in files: shows the dialog, and the results on their page of the output window.
class FileFindCommands : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    FileFindCommands(const Activity &activity, WindowServices &window, QObject *parent = nullptr);

    void findInFiles();
    /// Stops the search, if one runs, and shows that on the page.
    void stop();

private:
    [[nodiscard]] QString proposedText() const;
    [[nodiscard]] FileSearch searchOf(const FindInFilesDialog &dialog) const;
    [[nodiscard]] QStringList filesOf(FindInFilesDialog::Scope scope) const;
    void start(FileSearch search);
    void searchMatchFound(const QString &file, int line, const QString &text);
    void searchFinished();
    [[nodiscard]] QString countText() const;
    [[nodiscard]] QString skippedText() const;
    void showProgress();
    void endSearch();
    void print(const QString &text);

    const Activity &m_activity;
    WindowServices &m_window;
    QAction *m_stopAction; ///< null if the user interface file has none
    FileSearcher m_searcher;
    QTimer m_progressTimer; ///< runs during a search
    QString m_progress;     ///< the message that was shown last
    int m_matchCount = 0;
    qsizetype m_skipped = 0; ///< listed files that do not match the mask
};
