#include "wordpattern.h"
#include <algorithm>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

WordPattern::WordPattern(const QString &text)
{
    Piece piece;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype setEnd = text[i] == u'[' ? text.indexOf(u']', i + 2) : -1;
        const qsizetype length = setEnd > 0 ? setEnd - i + 1 : 1;
        if (text[i] != u'*')
            piece.push_back(allowedBy(QStringView(text).mid(i, length)));
        else if (!piece.empty())
            m_pieces.push_back(std::exchange(piece, {}));
        i += length - 1;
    }
    if (!piece.empty())
        m_pieces.push_back(piece);
}

/// The characters of a "?", a set or a plain character. None for a set that is not valid.
WordPattern::Characters WordPattern::allowedBy(QStringView element)
{
    Characters result;
    if (element == u'?')
        return result.set();
    const QString set = element.toString().replace(u'\\', u"\\\\"_s);
    const QRegularExpression expression(set, QRegularExpression::CaseInsensitiveOption);
    const bool isSet = element.size() > 1;
    for (size_t i = 0; i < result.size() && (!isSet || expression.isValid()); ++i) {
        const QChar character{ushort(i)};
        result[i] = isSet ? expression.match(QString(character)).hasMatch()
                          : character.toCaseFolded() == element.front().toCaseFolded();
    }
    return result;
}

bool WordPattern::fits(const Piece &piece, QByteArrayView bytes)
{
    return std::equal(piece.cbegin(), piece.cend(), bytes.cbegin(), bytes.cend(),
                      [](const Characters &allowed, char byte) { return allowed[uchar(byte)]; });
}

/// Each piece is taken where it fits first: later ones then have the most room.
bool WordPattern::matches(QByteArrayView word) const
{
    qsizetype from = 0;
    for (const Piece &piece : m_pieces) {
        const auto length = qsizetype(piece.size());
        while (from + length <= word.size() && !fits(piece, word.sliced(from, length)))
            ++from;
        if (from + length > word.size())
            return false;
        from += length;
    }
    return true;
}
