#pragma once
#include <QHash>
#include <QObject>
#include <QTimer>
class PropertyItem;
class PropertyList;
class PropertySubsectionItem;
struct PropertyRecord;

/// Makes the rows of a list for records. With many of them the rest follows in slices when the events have been
/// handled, so that the window stays responsive.
class PropertyFiller : public QObject
{
    Q_OBJECT
public:
    struct Source
    {
        const PropertyRecord *record;
        QString heading; ///< A new one begins a section. Null: the row stands at the top level.
    };

    explicit PropertyFiller(PropertyList *list, QObject *parent = nullptr);

    void fill(const QList<Source> &sources);   ///< Replaces all rows. Records of an unknown type get none.
    void finish();                             ///< Makes the rows that are still missing.
    void remove(const PropertyRecord &record); ///< It is about to be deleted. A row that it has stays until fill().
    [[nodiscard]] PropertyItem *row(const QString &key) const; ///< Null if there is none, or none yet.

private:
    void addRows(int milliseconds); ///< Negative: without a limit.
    void addRow(const Source &source);

    PropertyList *const m_list;
    QHash<QString, PropertyItem *> m_rows; ///< by key
    QList<Source> m_waiting;               ///< whose rows are still to be made
    QTimer m_slices;
    PropertySubsectionItem *m_heading = nullptr; ///< the last one
    PropertyItem *m_last = nullptr;              ///< the last row below it, or at the top level
};
