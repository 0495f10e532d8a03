#pragma once
#include "filesearch.h"
#include <memory>
#include <QEvent>
#include <QObject>
class FileSearchJob;

/// Searches files for a text, in threads of its own.
class FileSearcher : public QObject
{
    Q_OBJECT
public:
    explicit FileSearcher(QObject *parent = nullptr);
    ~FileSearcher() override; ///< stops a running search

    /// Searches the files of @p folder whose names match @p mask (wildcards separated by ";" or else by blanks) and, if
    /// @p recursive, those of the folders below. With @p wholeWord the text is a regular expression between two word
    /// boundaries. Hidden files and folders are skipped, and a folder that is reached through several links is searched
    /// once.
    void start(const QString &text, const QString &mask, const QString &folder, bool caseSensitive, bool wholeWord,
               bool recursive, bool regExp);
    /// A search that runs is stopped.
    void start(const FileSearch &search);
    /// Ends the search at once, without finished(): a read that blocks is not waited for, and what comes of it is
    /// dropped.
    void stop();
    [[nodiscard]] bool isRunning() const; ///< Results that were found already may still be reported after it.
    [[nodiscard]] int filesSearched() const;
    /// The files of the folder that did not match the mask, after a search that has finished.
    [[nodiscard]] int filesSkipped() const;
    [[nodiscard]] int unreadable() const; ///< how many files and folders could not be opened

Q_SIGNALS:
    /// The first match of a line. Lines count from 1. @p text is the line, cut to 100 characters; the last line of a
    /// text file, if it has no line end, has up to 100,000. Binary files have one line that says so.
    void matchFound(const QString &filename, int line, const QString &text);
    void remark(const QString &text); ///< what kept the search from being complete
    void finished();

protected:
    bool event(QEvent *event) override;

private:
    std::shared_ptr<FileSearchJob> m_job; ///< null if no search runs or has results to report
};
