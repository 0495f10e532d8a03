#include "fixedpitch.h"
#include <QFontMetrics>
#include <QHash>

namespace {
bool measure(const QString &family)
{
    const QFontMetrics metrics{QFont(family)};
    return metrics.horizontalAdvance(u'X') == metrics.horizontalAdvance(u'.');
}
} // namespace

bool isFixedPitch(const QString &family)
{
    static auto &known = *new QHash<QString, bool>; // never deleted, as the widgets may outlive static objects
    const auto it = known.constFind(family);
    return it != known.cend() ? *it : *known.insert(family, measure(family));
}
