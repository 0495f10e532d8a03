#include "fixedpitchfamilies.h"
#include <QFontDatabase>
#include <QFontMetrics>
#include <QHash>

namespace {
bool measure(const QString &family)
{
    const QFontMetrics metrics{QFont(family)};
    return metrics.horizontalAdvance(u'X') == metrics.horizontalAdvance(u'.');
}

/// Measuring loads the font's file, so each family is measured once.
bool isFixedPitch(const QString &family)
{
    static QHash<QString, bool> known;
    const auto it = known.constFind(family);
    return it != known.cend() ? *it : *known.insert(family, measure(family));
}
} // namespace

QStringList fixedPitchFamilies()
{
    QStringList families = QFontDatabase::families();
    families.removeIf([](const QString &family) { return !isFixedPitch(family); });
    return families;
}
