#pragma once
#include "propertyfileitem.h"

/// A row with paths of files or of directories, separated by ";".
class PropertyFileListItem : public PropertyFileItem
{
    Q_OBJECT
public:
    using PropertyFileItem::PropertyFileItem;

public Q_SLOTS:
    void browseClicked() override;
};
