#pragma once
#include <bitset>
#include <QByteArrayView>
#include <QStringView>
#include <vector>

/// A word of a query with wildcards: "*" stands for any characters, "?" for one, and "[...]" is a set of characters.
///
/// It matches at any place in a word, and case is ignored.
class WordPattern
{
public:
    explicit WordPattern(const QString &text);

    /// @p word is Latin-1.
    [[nodiscard]] bool matches(QByteArrayView word) const;

private:
    using Characters = std::bitset<256>;   ///< those of Latin-1 that are allowed at one place
    using Piece = std::vector<Characters>; ///< what stands between two "*"

    [[nodiscard]] static Characters allowedBy(QStringView element);
    [[nodiscard]] static bool fits(const Piece &piece, QByteArrayView bytes);

    std::vector<Piece> m_pieces;
};
