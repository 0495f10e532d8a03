#pragma once
#include <functional>
#include <optional>
#include <QByteArray>
#include <QStringList>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Which words occur in which documents, and how often. A document is named by its number.
class WordIndex
{
public:
    /// The occurrences of a word in one document.
    struct Doc
    {
        qint16 docNumber = -1; ///< the lower half of the document's number
        quint16 frequency = 0;

        bool operator==(const Doc &) const = default;
        /// Better documents first.
        bool operator<(const Doc &other) const { return frequency > other.frequency; }
    };

    WordIndex() = default;
    WordIndex(QString docPath, QStringList docList);
    WordIndex(WordIndex &&) = default;
    WordIndex &operator=(WordIndex &&) = default;
    Q_DISABLE_COPY(WordIndex)

    /// The directory that was indexed.
    [[nodiscard]] const QString &docPath() const { return m_docPath; }
    void setDocPath(const QString &directory); ///< Names all documents as if they were there.
    /// The paths of the documents; a document's number is its position here.
    [[nodiscard]] const QStringList &docList() const { return m_docList; }
    [[nodiscard]] bool isEmpty() const { return m_words.empty(); }
    /// The documents of a word, the one that was inserted last first.
    [[nodiscard]] QList<Doc> documents(const QByteArray &word) const;

    /// Counts an occurrence of a word in the document that is read now.
    void insert(QByteArrayView word);
    /// Ends the document that is read now; it has the number @p docNumber.
    void endDocument(qsizetype docNumber);

    /// The documents that have all words of @p query, which are separated by blanks; those with most occurrences first.
    /// Case is ignored. A word with "*" or "?" is a pattern that matches at any place in a word of the documents; a
    /// document that has several such words is found once for each.
    [[nodiscard]] QList<Doc> find(const QString &query) const;
    /// The paths of the documents that find() returns.
    [[nodiscard]] QStringList search(const QString &query) const;
    /// The path of a document that find() has returned.
    [[nodiscard]] const QString &path(Doc doc) const { return m_docList[quint16(doc.docNumber)]; }

    /// The content of the index file.
    [[nodiscard]] QByteArray toBytes() const;
    /// Reads the content of an index file; nothing if it is damaged. Also nothing if @p goOn, which is called from time
    /// to time, returns false.
    [[nodiscard]] static std::optional<WordIndex> fromBytes(const QByteArray &bytes,
                                                            const std::function<bool()> &goOn = {});

private:
    struct Entry
    {
        std::vector<Doc> docs;   ///< in the order of endDocument()
        QByteArrayView postings; ///< of the index file, in m_file; they follow those of @c docs in reverse order
        quint32 count = 0;       ///< occurrences in the document that is read now
    };
    struct Hash
    {
        using is_transparent = void; ///< words are looked up without a copy
        size_t operator()(std::string_view word) const noexcept { return std::hash<std::string_view>()(word); }
    };

    using Words = std::unordered_map<std::string, Entry, Hash, std::equal_to<>>;
    static constexpr size_t RecentWords = 16384; ///< a power of two

    [[nodiscard]] static Words fewInABucket();
    [[nodiscard]] static QList<Doc> documents(const Entry &entry);
    [[nodiscard]] Entry &entryOf(std::string_view word);
    [[nodiscard]] QList<Doc> documentsOfTerm(const QString &term) const;
    bool readDocuments(QDataStream &stream);
    bool readRecord(qsizetype &position);
    [[nodiscard]] bool haveDocuments(QByteArrayView postings) const;

    QString m_docPath;
    QStringList m_docList;
    QByteArray m_file; ///< the content of the index file that was read
    Words m_words = fewInABucket();
    std::vector<Words::value_type *> m_recent; ///< RecentWords words at their hash values, if a document is read
    std::vector<Entry *> m_present;            ///< the words of the document that is read now
};
