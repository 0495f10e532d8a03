#pragma once
#include "propertycustomitem.h"
class FlagsDialog;

/// A row with bits that have names: those of the set ones are shown. They are set and cleared in a dialog that stays
/// open while the user works in other windows.
class PropertyFlagsItem : public PropertyCustomItem
{
    Q_OBJECT
public:
    /// @p format has the names of the bits, as flagNames() reads them.
    PropertyFlagsItem(const QString &name, const QVariant &value, const QString &format, PropertyList *list,
                      ListViewItem *after);
    PropertyFlagsItem(const QString &name, const QVariant &value, const QString &format, PropertyItem *parent,
                      ListViewItem *after);
    ~PropertyFlagsItem() override;

    void setValue(const QVariant &value, bool notify) override;

public Q_SLOTS:
    void editClicked() override;
    void flagsDialogChanged(quint32 value);

private:
    const QString m_format;
    QPointer<FlagsDialog> m_dialog;
};
