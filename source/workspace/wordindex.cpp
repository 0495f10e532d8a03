#include "wordindex.h"
#include <QDataStream>
#include <QIODevice>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
using Doc = WordIndex::Doc;

constexpr int RecordsInARow = 500;            // read without asking whether to go on
constexpr qsizetype PostingLength = 4;        // bytes in the file
constexpr auto Version = QDataStream::Qt_3_3; // never change: it is the format of the file

/// "*" stands for any characters and "?" for one; "[...]" is a set of characters.
QString regularExpressionOf(const QString &wildcard)
{
    QString result;
    for (qsizetype i = 0; i < wildcard.size(); ++i) {
        const QChar c = wildcard[i];
        const qsizetype setEnd = c == u'[' ? wildcard.indexOf(u']', i + 2) : -1;
        if (setEnd > 0) {
            result += wildcard.mid(i, setEnd - i + 1).replace(u'\\', u"\\\\"_s);
            i = setEnd;
        } else if (c == u'*') {
            if (!result.endsWith(u".*"))
                result += u".*"_s;
        } else if (c == u'?') {
            result += u'.';
        } else {
            result += QRegularExpression::escape(c);
        }
    }
    return result;
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

void WordIndex::insert(const QByteArray &word, qsizetype docNumber)
{
    QList<Doc> &docs = m_dict[word];
    if (!docs.isEmpty() && docs.first().docNumber == qint16(docNumber))
        ++docs.first().frequency;
    else
        docs.prepend({qint16(docNumber), 1});
}

// Search ------------------------------------------------------------------

QList<Doc> WordIndex::documentsOfTerm(const QString &term) const
{
    if (!term.contains(u'*') && !term.contains(u'?'))
        return m_dict.value(term.toLatin1());
    const QRegularExpression pattern(regularExpressionOf(term), QRegularExpression::CaseInsensitiveOption);
    QList<Doc> result;
    for (auto it = m_dict.cbegin(); it != m_dict.cend() && pattern.isValid(); ++it) {
        if (pattern.match(QString::fromLatin1(it.key())).hasMatch())
            result += it.value();
    }
    return result;
}

QStringList WordIndex::search(const QString &query) const
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
    QStringList paths;
    for (const Doc doc : std::as_const(found)) {
        if (isKnown(doc))
            paths.append(m_docList[quint16(doc.docNumber)]);
    }
    return paths;
}

// The index file ----------------------------------------------------------

QByteArray WordIndex::toBytes() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(Version);
    stream << m_docPath << m_docList;
    for (auto it = m_dict.cbegin(); it != m_dict.cend(); ++it) {
        stream << it.key().constData() << qint32(it.value().size());
        for (const Doc doc : it.value())
            stream << doc.docNumber << doc.frequency;
    }
    return bytes;
}

std::optional<WordIndex> WordIndex::fromBytes(const QByteArray &bytes, const std::function<bool()> &goOn)
{
    WordIndex index;
    QDataStream stream(bytes);
    stream.setVersion(Version);
    stream >> index.m_docPath >> index.m_docList;
    for (int records = 1; stream.status() == QDataStream::Ok && !stream.atEnd(); ++records) {
        if (!index.readRecord(stream) || (goOn && records % RecordsInARow == 0 && !goOn()))
            return {};
    }
    return stream.status() == QDataStream::Ok ? std::optional(index) : std::nullopt;
}

bool WordIndex::readRecord(QDataStream &stream)
{
    QByteArray word; // in the file as a byte array that includes the terminating zero
    qint32 count = 0;
    stream >> word >> count;
    const bool isWord = word.size() > 1 && word.indexOf('\0') == word.size() - 1;
    if (stream.status() != QDataStream::Ok || !isWord || count < 0
        || count > stream.device()->bytesAvailable() / PostingLength)
        return false;
    word.chop(1);
    QList<Doc> docs(count);
    for (Doc &doc : docs) {
        stream >> doc.docNumber >> doc.frequency;
        if (!isKnown(doc))
            return false;
    }
    m_dict.insert(word, docs);
    return true;
}
