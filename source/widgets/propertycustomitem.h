#pragma once
#include "propertyitem.h"
class LineEditor;

/// A row whose value is only edited by what its "..." button opens.
class PropertyCustomItem : public PropertyItem
{
    Q_OBJECT
public:
    using PropertyItem::PropertyItem;

    void editorClicked(const QPoint &position) override;
    [[nodiscard]] QWidget *createEditor() override;
    void transferEditor(bool toValue) override;

public Q_SLOTS:
    virtual void editClicked() = 0;
};
