#include "fontshaping.h"
#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {
/// Pairs of letters that fonts join or kern, and all pairs of signs, which fonts for programs join.
QString sampleText()
{
    QString text =
        u"ff fi fl ffi ffl ft tt st ct Th AV AT To Te Wa LT Ty P, r. f' 0x00 1/2 www ABC abc :::: ---> <===> "_s;
    constexpr QStringView Signs = u"!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
    for (const QChar first : Signs) {
        for (const QChar second : Signs)
            text.append(first).append(second).append(u' ');
    }
    return text;
}

struct Placed
{
    QList<quint32> glyphs;
    QList<QPointF> positions;

    bool operator==(const Placed &) const = default;
};

Placed placed(const QString &text, QFont font, QFont::StyleStrategy strategy)
{
    font.setStyleStrategy(strategy);
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    Placed result;
    const QList<QGlyphRun> runs = layout.glyphRuns();
    for (const QGlyphRun &run : runs) {
        result.glyphs += run.glyphIndexes();
        result.positions += run.positions();
    }
    return result;
}
} // namespace

bool looksTheSameUnshaped(const QFont &font)
{
    static const QString text = sampleText();
    static QHash<QFont, bool> known;
    auto found = known.constFind(font);
    if (found == known.cend())
        found =
            known.insert(font, placed(text, font, QFont::PreferDefault) == placed(text, font, QFont::PreferNoShaping));
    return *found;
}

QFont withShaping(QFont font)
{
    font.setStyleStrategy(QFont::PreferDefault);
    return font;
}
