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

/// Searches the files of a folder for a text, in a thread of its own.
///
/// The worker posts events to this object, one at a time: matches that it finds while one is pending are added to the
/// next event. Therefore many matches do not block the window, and the worker never waits for it.
class FileSearcher : public QObject
{
    Q_OBJECT
public:
    static constexpr auto MatchEvent = QEvent::Type(1000);
    static constexpr auto FinishedEvent = QEvent::Type(1001);

    explicit FileSearcher(QObject *parent = nullptr);
    ~FileSearcher() override; ///< stops a running search

    /// Searches the files of @p folder whose names match @p mask (wildcards separated by ";" or else by blanks) and, if
    /// @p recursive, those of the folders below. With @p wholeWord the text is a regular expression between two word
    /// boundaries. Hidden files and folders are skipped, and a folder that is reached through several links is searched
    /// once.
    void start(const QString &text, const QString &mask, const QString &folder, bool caseSensitive, bool wholeWord,
               bool recursive, bool regExp);
    /// Ends the search and waits for its thread. The matches found until then are still reported later, with
    /// finished().
    void stop();
    [[nodiscard]] bool isRunning() const;

Q_SIGNALS:
    /// The first match of a line. Lines count from 1. @p text is the line, cut to 100 characters; the last line of a
    /// text file, if it has no line end, has up to 100,000.
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

    std::unique_ptr<SearchPattern> m_pattern; ///< this and the next are used by the worker only
    QSet<QString> m_visited;                  ///< folders, by their canonical paths

    QMutex m_mutex; ///< protects the members below
    std::deque<std::unique_ptr<QEvent>> m_waiting;
    FoundEvent *m_open = nullptr; ///< the last pending event, if it can take more matches
    bool m_underWay = false;
};
