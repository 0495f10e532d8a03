#pragma once
#include "propertyitem.h"
class QComboBox;

/// A row with a text for which there are proposals.
class PropertyComboItem : public PropertyItem
{
    Q_OBJECT
public:
    using PropertyItem::PropertyItem;
    void addOption(const QString &text) { m_options += text; }

    [[nodiscard]] QWidget *createEditor() override;
    void editorClicked(const QPoint &position) override;
    void transferEditor(bool toValue) override;

protected:
    [[nodiscard]] QComboBox *comboBox() const; ///< Null while there is no editor.

private:
    QStringList m_options;
};
