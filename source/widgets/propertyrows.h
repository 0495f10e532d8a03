#pragma once
class ListViewItem;
class PropertyItem;
class PropertyList;
struct PropertyRecord;

/// Makes the row in which @p record is edited, behind @p after, and gives it the record's value. Null for a record of
/// an unknown type.
PropertyItem *makePropertyRow(const PropertyRecord &record, PropertyList *list, ListViewItem *after);
PropertyItem *makePropertyRow(const PropertyRecord &record, PropertyItem *parent, ListViewItem *after);
