#include "wordindex.h"
#include "wordpattern.h"
#include <algorithm>
#include <QDataStream>
#include <QDir>
#include <QHash>
#include <QIODevice>
#include <QtEndian>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
using Doc = WordIndex::Doc;

constexpr int RecordsInARow = 500;            // read without asking whether to go on
constexpr qsizetype LikelyRecordLength = 512; // bytes
constexpr qsizetype NumberLength = 4;         // of a number that is no posting, in bytes
constexpr qsizetype PostingLength = 4;        // bytes in the file
constexpr qsizetype NumbersInPosting = 2;     // of 16 bits each, which are converted together
static_assert(sizeof(Doc) == PostingLength && std::is_trivially_copyable_v<Doc>);
constexpr auto Version = QDataStream::Qt_3_3; // never change: it is the format of the file

/// The posting at @p bytes of an index file.
Doc postingAt(const char *bytes)
{
    return {qFromBigEndian<qint16>(bytes), qFromBigEndian<quint16>(bytes + PostingLength / NumbersInPosting)};
}

QHash<qint16, quint16> firstFrequencies(const QList<Doc> &docs)
{
    QHash<qint16, quint16> result;
    for (const Doc doc : docs) {
        if (!result.contains(doc.docNumber))
            result.insert(doc.docNumber, doc.frequency);
    }
    return result;
}

/// The documents of @p found that are in @p others too, with the occurrences of both.
QList<Doc> both(const QList<Doc> &found, const QList<Doc> &others)
{
    const QHash<qint16, quint16> frequencies = firstFrequencies(others);
    QList<Doc> result;
    for (const Doc doc : found) {
        if (const auto other = frequencies.constFind(doc.docNumber); other != frequencies.cend())
            result.append({doc.docNumber, quint16(doc.frequency + *other)});
    }
    return result;
}
} // namespace

WordIndex::WordIndex(QString docPath, QStringList docList)
    : m_docPath(std::move(docPath)), m_docList(std::move(docList))
{}

/// The entries of a bucket are not adjacent in memory, so each comparison costs a cache miss.
WordIndex::Words WordIndex::fewInABucket()
{
    Words words;
    words.max_load_factor(0.25F);
    return words;
}

QList<Doc> WordIndex::documents(const QByteArray &word) const
{
    const auto found = m_words.find(std::string_view(word.constData(), size_t(word.size())));
    return found == m_words.cend() ? QList<Doc>() : documents(found->second);
}

/// The ones that were inserted last first. Those of the index file are converted here and not when it is loaded,
/// because a session asks for few words.
QList<Doc> WordIndex::documents(const Entry &entry)
{
    QList<Doc> docs(entry.docs.crbegin(), entry.docs.crend());
    docs.reserve(docs.size() + entry.postings.size() / PostingLength);
    for (qsizetype at = 0; at < entry.postings.size(); at += PostingLength)
        docs.append(postingAt(entry.postings.data() + at));
    return docs;
}

/// The words that occurred last are found without the hash table, whose chains lie all over the memory.
WordIndex::Entry &WordIndex::entryOf(std::string_view word)
{
    if (m_recent.empty())
        m_recent.resize(RecentWords);
    Words::value_type *&recent = m_recent[Hash()(word) % RecentWords];
    if (recent && recent->first == word)
        return recent->second;
    auto found = m_words.find(word);
    if (found == m_words.end())
        found = m_words.emplace(word, Entry()).first;
    recent = &*found;
    return found->second;
}

void WordIndex::insert(QByteArrayView word)
{
    Entry &entry = entryOf(std::string_view(word.data(), size_t(word.size())));
    if (entry.count++ == 0)
        m_present.push_back(&entry);
}

/// The lists of the words lie all over the memory, so they are visited once for each document instead of once for each
/// occurrence.
void WordIndex::endDocument(qsizetype docNumber)
{
    const auto number = qint16(docNumber);
    for (Entry *entry : m_present) {
        const auto count = quint16(std::exchange(entry->count, 0));
        if (!entry->docs.empty() && entry->docs.back().docNumber == number)
            entry->docs.back().frequency += count;
        else
            entry->docs.push_back({number, count});
    }
    m_present.clear();
}

// Search ------------------------------------------------------------------

QList<Doc> WordIndex::documentsOfTerm(const QString &term) const
{
    if (!term.contains(u'*') && !term.contains(u'?'))
        return documents(term.toLatin1());
    const WordPattern pattern(term);
    QList<Doc> result;
    for (const auto &[word, entry] : m_words) {
        if (pattern.matches(QByteArrayView(word.data(), qsizetype(word.size()))))
            result += documents(entry);
    }
    return result;
}

QList<Doc> WordIndex::find(const QString &query) const
{
    QStringList terms = query.toLower().split(u' ', Qt::SkipEmptyParts);
    if (terms.isEmpty())
        return {};
    QList<Doc> found = documentsOfTerm(terms.takeFirst());
    for (const QString &term : std::as_const(terms)) {
        if (found.isEmpty())
            break;
        found = both(found, documentsOfTerm(term));
    }
    std::stable_sort(found.begin(), found.end());
    return found;
}

QStringList WordIndex::search(const QString &query) const
{
    QStringList paths;
    for (const Doc doc : find(query))
        paths.append(path(doc));
    return paths;
}

// The index file ----------------------------------------------------------

void WordIndex::setDocPath(const QString &directory)
{
    const QDir before(m_docPath);
    const QDir after(directory);
    for (QString &path : m_docList)
        path = QDir::cleanPath(after.filePath(before.relativeFilePath(path)));
    m_docPath = directory;
}

QByteArray WordIndex::toBytes() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(Version);
    stream << m_docPath << m_docList;
    QByteArray postings;
    for (const auto &[word, entry] : m_words) {
        const QList<Doc> docs = documents(entry);
        postings.resize(docs.size() * PostingLength);
        qToBigEndian<quint16>(docs.constData(), docs.size() * NumbersInPosting, postings.data());
        stream << word.c_str() << qint32(docs.size());
        stream.writeRawData(postings.constData(), int(postings.size()));
    }
    return bytes;
}

std::optional<WordIndex> WordIndex::fromBytes(const QByteArray &bytes, const std::function<bool()> &goOn)
{
    WordIndex index;
    index.m_file = bytes;
    QDataStream stream(bytes);
    stream.setVersion(Version);
    if (!index.readDocuments(stream))
        return {};
    qsizetype position = stream.device()->pos();
    index.m_words.reserve(size_t((bytes.size() - position) / LikelyRecordLength));
    for (int records = 1; position < bytes.size(); ++records) {
        if (!index.readRecord(position) || (goOn && records % RecordsInARow == 0 && !goOn()))
            return {};
    }
    return index;
}

/// Reads the list path by path, because the toolkit would reserve room for any number of them at once.
bool WordIndex::readDocuments(QDataStream &stream)
{
    quint32 count = 0;
    stream >> m_docPath >> count;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        QString path;
        stream >> path;
        m_docList.append(path);
    }
    return stream.status() == QDataStream::Ok;
}

/// Reads the record at @p position, and sets it to the next one.
bool WordIndex::readRecord(qsizetype &position)
{
    const QByteArrayView bytes(m_file);
    const auto left = [&] { return bytes.size() - position; };
    const auto number = [&] {
        position += NumberLength;
        return qFromBigEndian<qint32>(bytes.data() + position - NumberLength);
    };
    if (left() < NumberLength)
        return false;
    const qint32 length = number(); // with the terminating zero
    if (length < 2 || length + NumberLength > left())
        return false;
    const std::string_view word(bytes.data() + position, size_t(length));
    position += length;
    const qint32 count = number();
    if (word.find('\0') != word.size() - 1 || count < 0 || count > left() / PostingLength)
        return false;
    const QByteArrayView postings = bytes.sliced(position, count * PostingLength);
    position += postings.size();
    m_words[std::string(word.substr(0, word.size() - 1))] = {{}, postings, 0};
    return haveDocuments(postings);
}

bool WordIndex::haveDocuments(QByteArrayView postings) const
{
    quint16 greatest = 0;
    for (qsizetype at = 0; at < postings.size(); at += PostingLength)
        greatest = std::max(greatest, quint16(postingAt(postings.data() + at).docNumber));
    return postings.isEmpty() || greatest < m_docList.size();
}
