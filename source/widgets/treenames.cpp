#include "treenames.h"
#include <QScrollBar>
#include <QStringList>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
constexpr int NameMargins = 12; ///< around the name and its icon
}

QString pathOfNames(const QTreeWidgetItem *item)
{
    QStringList names;
    for (; item; item = item->parent())
        names.prepend(item->text(0));
    return names.join(" / "_L1);
}

int widthForAllNames(const QTreeWidget &tree)
{
    QFont bold = tree.font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    int width = 0;
    for (QTreeWidgetItemIterator it(const_cast<QTreeWidget *>(&tree)); *it; ++it) {
        int indent = tree.iconSize().width();
        for (const QTreeWidgetItem *level = *it; level; level = level->parent())
            indent += tree.indentation();
        width = std::max(width, indent + metrics.horizontalAdvance((*it)->text(0)));
    }
    return width + NameMargins + 2 * tree.frameWidth() + tree.verticalScrollBar()->sizeHint().width();
}
