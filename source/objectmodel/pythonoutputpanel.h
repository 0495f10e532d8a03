#pragma once
#include <QHash>
#include <QWidget>
class PropertyItem;
class PropertyList;

/// The panel in which scripts show names with values. The user cannot edit it.
class PythonOutputPanel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text) // for test drivers
public:
    explicit PythonOutputPanel(QWidget *parent = nullptr);

    void setValue(const QString &name, const QString &value); ///< A new name is appended.
    [[nodiscard]] QString value(const QString &name) const;   ///< Null for an unknown name.
    void remove(const QString &name);
    void clear();
    [[nodiscard]] QString text() const; ///< The rows: "name = value", a line each.

    void setFont(const QFont &font);

private:
    PropertyList *m_list;
    QHash<QString, PropertyItem *> m_items;
};
