#pragma once
#include "propertyitem.h"
class LineEditor;
class QLineEdit;

/// A row with a text.
class PropertyTextItem : public PropertyItem
{
    Q_OBJECT
public:
    using PropertyItem::PropertyItem;

    void editorClicked(const QPoint &position) override;
    [[nodiscard]] QWidget *createEditor() override;
    void transferEditor(bool toValue) override;

Q_SIGNALS:
    void inputRejected(); ///< The user has typed a character that the value cannot contain.

protected:
    [[nodiscard]] LineEditor *lineEditor() const; ///< Null while there is no editor.
    [[nodiscard]] QLineEdit *lineEdit() const;    ///< Only while there is an editor.
};
