#include "propertyrows.h"
#include "propertybooleanitem.h"
#include "propertydefinitions.h"
#include "propertyfilelistitem.h"
#include "propertyintegercomboitem.h"
#include "propertyintegeritem.h"

using namespace Qt::StringLiterals;

namespace {
/// A list or a row, whichever the new row is to stand in.
template <typename Parent>
PropertyItem *makeRow(const PropertyRecord &record, Parent *parent, ListViewItem *after)
{
    const auto plain = [&]<typename Row>(std::type_identity<Row>) {
        return new Row(record.m_name, QVariant(), parent, after);
    };
    const auto withOptions = [&]<typename Row>(std::type_identity<Row> type) {
        Row *row = plain(type);
        for (const QString &label : record.m_labels)
            row->addOption(label);
        return row;
    };
    switch (record.m_type) {
    case TextProperty:
        return plain(std::type_identity<PropertyTextItem>());
    case IntegerProperty: {
        auto *row = plain(std::type_identity<PropertyIntegerItem>());
        row->setRange(record.m_minimum, record.m_maximum);
        return row;
    }
    case FileProperty:
        return new PropertyFileItem(record.m_name, QVariant(), PropertyFileItem::File, parent, after);
    case DirectoryProperty:
        return new PropertyFileItem(record.m_name, QVariant(), PropertyFileItem::Directory, parent, after);
    case ListProperty: {
        auto *row = plain(std::type_identity<PropertyListItem>());
        for (qsizetype i = 0; i < record.m_labels.size(); ++i)
            row->addOption(record.m_labels[i], record.m_keys[i]);
        return row;
    }
    case IntegerComboProperty:
        return withOptions(std::type_identity<PropertyIntegerComboItem>());
    case TextComboProperty:
        return withOptions(std::type_identity<PropertyComboItem>());
    case BooleanProperty:
        return plain(std::type_identity<PropertyBooleanItem>());
    case FileListProperty:
        return new PropertyFileListItem(record.m_name, QVariant(), PropertyFileItem::File, parent, after);
    case DirectoryListProperty:
        return new PropertyFileListItem(record.m_name, QVariant(), PropertyFileItem::Directory, parent, after);
    default:
        return nullptr;
    }
}

template <typename Parent>
PropertyItem *makeFilledRow(const PropertyRecord &record, Parent *parent, ListViewItem *after)
{
    PropertyItem *row = makeRow(record, parent, after);
    if (!row)
        return nullptr;
    row->setChanged(record.isMarkedAsChanged());
    row->setDescription(record.m_description);
    row->setKey(record.m_key.isNull() ? u""_s : record.m_key); // for a null key the row would use its name
    row->setWarning(record.problem());
    row->setValue(record.m_value, false); // not entered by the user
    return row;
}
} // namespace

PropertyItem *makePropertyRow(const PropertyRecord &record, PropertyList *list, ListViewItem *after)
{
    return makeFilledRow(record, list, after);
}

PropertyItem *makePropertyRow(const PropertyRecord &record, PropertyItem *parent, ListViewItem *after)
{
    return makeFilledRow(record, parent, after);
}
