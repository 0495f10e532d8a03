#pragma once
#include "propertytextitem.h"

/// A row with the path of a file or of a directory, which can be typed or chosen.
class PropertyFileItem : public PropertyTextItem
{
    Q_OBJECT
public:
    enum Mode { File, Directory };
    PropertyFileItem(const QString &name, const QVariant &value, Mode mode, PropertyList *list, ListViewItem *after);
    PropertyFileItem(const QString &name, const QVariant &value, Mode mode, PropertyItem *parent, ListViewItem *after);

    [[nodiscard]] QWidget *createEditor() override;

public Q_SLOTS:
    virtual void browseClicked();

protected:
    [[nodiscard]] Mode mode() const { return m_mode; }
    /// Calls @p ask, which shows a dialog, with the text of the line edit. A text that it returns replaces that text.
    /// The row may be deleted by then.
    void choose(const std::function<std::optional<QString>(const QString &text)> &ask);

private:
    const Mode m_mode;
};
