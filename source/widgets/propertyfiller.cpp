#include "propertyfiller.h"
#include "propertydefinitions.h"
#include "propertylist.h"
#include "propertyrows.h"
#include "propertysubsectionitem.h"
#include <QElapsedTimer>

namespace {
constexpr int Slice = 10;        ///< milliseconds in which rows are made without a break
constexpr int RowsPerCheck = 50; ///< rows that are made without a look at the time
} // namespace

PropertyFiller::PropertyFiller(PropertyList *list, QObject *parent) : QObject(parent), m_list(list)
{
    connect(&m_slices, &QTimer::timeout, this, [this] { addRows(Slice); });
}

void PropertyFiller::fill(const QList<Source> &sources)
{
    m_list->clear();
    m_rows.clear();
    m_heading = nullptr;
    m_last = nullptr;
    m_waiting = sources;
    addRows(Slice);
}

void PropertyFiller::finish()
{
    addRows(-1);
}

void PropertyFiller::remove(const PropertyRecord &record)
{
    m_rows.remove(record.m_key);
    m_waiting.removeIf([&](const Source &source) { return source.record == &record; });
}

PropertyItem *PropertyFiller::row(const QString &key) const
{
    return m_rows.value(key);
}

void PropertyFiller::addRows(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    qsizetype made = 0;
    for (; made < m_waiting.size(); ++made) {
        if (made % RowsPerCheck == RowsPerCheck - 1 && milliseconds >= 0 && timer.hasExpired(milliseconds))
            break;
        addRow(m_waiting[made]);
    }
    m_waiting.remove(0, made);
    if (m_waiting.isEmpty())
        m_slices.stop();
    else
        m_slices.start(0);
}

void PropertyFiller::addRow(const Source &source)
{
    if (source.record->m_type == UnknownProperty)
        return;
    if (!source.heading.isNull() && (!m_heading || m_heading->name() != source.heading)) {
        m_heading = new PropertySubsectionItem(source.heading, m_list, m_heading);
        m_heading->setOpen(true);
        m_last = nullptr;
    }
    m_last = m_heading ? makePropertyRow(*source.record, m_heading, m_last)
                       : makePropertyRow(*source.record, m_list, m_last);
    m_rows.insert(source.record->m_key, m_last);
}
