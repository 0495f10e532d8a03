#pragma once
#include <atomic>
#include <deque>
#include <memory>
#include <QEvent>
#include <QMutex>
#include <QObject>
#include <QSet>
class QThread;
class SearchPattern;
struct TextPiece;

/// Looks for a text in the files of a folder, on a thread of its own.
///
/// The worker sends events to this object, one at a time: what it finds while one is under way waits, and goes together
/// with the next. So the window keeps up however much is found, and the worker never waits for it.
class FileSearcher : public QObject
{
    Q_OBJECT
public:
    static constexpr auto MatchEvent = QEvent::Type(1000);
    static constexpr auto FinishedEvent = QEvent::Type(1001);

    explicit FileSearcher(QObject *parent = nullptr);
    ~FileSearcher() override; ///< stops a search that runs

    /// Searches the files of @p folder whose names match @p mask, wildcards parted by ";" or else by blanks, and if
    /// @p recursive those of the folders below. With @p wholeWord the text is taken as a regular expression between two
    /// word boundaries. Hidden files and folders are left out, and a folder that links lead to is searched once.
    void start(const QString &text, const QString &mask, const QString &folder, bool caseSensitive, bool wholeWord,
               bool recursive, bool regExp);
    /// Ends the search and waits for its thread. What it has found by then is still told later, finished() included.
    void stop();
    [[nodiscard]] bool isRunning() const;

Q_SIGNALS:
    /// The first match of a line. Lines count from 1. @p text is the line, cut to 100 characters; one that ends a text
    /// file without a line end is told whole, up to 100,000.
    void matchFound(const QString &filename, int line, const QString &text);
    void finished();

protected:
    bool event(QEvent *event) override;

private:
    struct FoundLine
    {
        QString filename;
        int line;
        QString text;
    };
    class FoundEvent;

    void run();
    void searchFolder(const QString &path);
    void searchFile(const QString &path);
    void searchPiece(const QString &path, const TextPiece &piece, int firstLine);
    void postMatch(FoundLine line);
    void postFinished();
    void postNext();

    QString m_text;
    QString m_folder;
    QString m_mask;
    bool m_caseSensitive = false;
    bool m_recursive = false;
    bool m_regExp = false;
    std::atomic<bool> m_running = false;
    std::unique_ptr<QThread> m_thread;

    std::unique_ptr<SearchPattern> m_pattern; ///< this and the next belong to the worker
    QSet<QString> m_visited;                  ///< folders, by their canonical paths

    QMutex m_mutex; ///< guards what follows
    std::deque<std::unique_ptr<QEvent>> m_waiting;
    FoundEvent *m_open = nullptr; ///< the last that waits, if it takes more matches
    bool m_underWay = false;
};
