#include "gridtext.h"
#include "projecttreeitem.h"
#include "propertyitem.h"
#include <QEvent>

using namespace Qt::StringLiterals;

namespace {
constexpr int ReadableCharacters = 30;
constexpr int ReadableLines = 4; ///< the header included
} // namespace

QString gridText(const ListView &list)
{
    QString text;
    for (const ListViewItem *row = list.firstChild(); row; row = row->itemBelow()) {
        for (const ListViewItem *above = row->parent(); above; above = above->parent())
            text += u"  "_s;
        text += u"%1 = %2\n"_s.arg(row->text(0), row->text(1));
    }
    return text;
}

namespace {
bool isMarked(const ListViewItem *row)
{
    if (const auto *property = dynamic_cast<const PropertyItem *>(row))
        return property->isChanged();
    const auto *watch = dynamic_cast<const ProjectTreeItem *>(row);
    return watch && watch->isBold();
}
} // namespace

QString changedNames(const ListView &list)
{
    QString names;
    for (const ListViewItem *row = list.firstChild(); row; row = row->itemBelow()) {
        if (isMarked(row))
            names += row->text(0) + u'\n';
    }
    return names;
}

namespace {
class ReadableKeeper : public QObject
{
public:
    explicit ReadableKeeper(ListView &list) : QObject(&list) { list.installEventFilter(this); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *list = static_cast<ListView *>(watched);
        if (event->type() == QEvent::FontChange)
            list->setMinimumSize(readableSize(*list));
        return false;
    }
};
} // namespace

void keepReadable(ListView &list)
{
    list.setMinimumSize(readableSize(list));
    new ReadableKeeper(list);
}

QSize readableSize(const ListView &list)
{
    const QFontMetrics metrics(list.font());
    return {metrics.horizontalAdvance(u'0') * ReadableCharacters,
            (metrics.height() + 2 * list.itemMargin()) * ReadableLines};
}
