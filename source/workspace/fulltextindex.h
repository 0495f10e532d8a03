#pragma once
#include "wordindex.h"
#include <QElapsedTimer>
#include <QObject>

/// Finds pages of the help by their words.
///
/// Building and loading handle events at least every SliceTime milliseconds, so the caller must not start another of
/// these while one is under way. They return false if this object was deleted meanwhile.
class FullTextIndex : public QObject
{
    Q_OBJECT
public:
    static constexpr int SliceTime = 50;
    static constexpr int MostResults = 20; ///< on a results page

    explicit FullTextIndex(QObject *parent = nullptr);

    /// Indexes the files "*.html" of @p directory and of all directories below it.
    bool build(const QString &directory);
    /// False if the file cannot be read, or if documents were added or removed since it was written. A document that
    /// has changed is not noticed.
    bool load(const QString &filename);
    bool save(const QString &filename) const;
    [[nodiscard]] bool isLoaded() const { return !m_index.isEmpty(); } ///< Whether there is any word.
    [[nodiscard]] const QString &docPath() const { return m_index.docPath(); }
    /// For pages that will be moved to another directory after save().
    void setDocPath(const QString &directory) { m_index.setDocPath(directory); }

    /// The paths of the matching documents, best first; WordIndex has the rules.
    [[nodiscard]] QStringList search(const QString &query) const { return m_index.search(query); }
    /// The result of a search as an HTML page.
    [[nodiscard]] QString searchResultsPage(const QString &query) const;
    /// The title of a document, or else its path, and its description. Both pointers may be null.
    static void getDocumentInfo(const QString &path, QString *title, QString *description);

Q_SIGNALS:
    void indexing(int percent, const QString &file); ///< For the first document, and for each fifth percent.

private:
    bool letEventsRun();
    bool sliceEnded();
    bool listFiles(const QString &directory, QStringList *files);
    bool indexFile(const QString &path, qsizetype docNumber, WordIndex *index);

    WordIndex m_index;
    QElapsedTimer m_slice;
};
