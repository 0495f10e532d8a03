#pragma once
#include "debugpane.h"
#include "iperipheralfields.h"
#include "iperipherals.h"
#include <memory>
#include <QHash>
#include <QTimer>
class ListViewItem;
class PeripheralWidgetToolTip;
class PropertyItem;
class PropertyList;

/// The registers of the devices around one processor, below a heading for each device, and their fields if the
/// environment knows them. A bold name marks a value that has changed since it was read last.
///
/// Only rows on the screen are read: at an update, and later when they come into view while the program is paused. A
/// register that changes when it is read is read only when the user asks for it.
class PeripheralWidget : public DebugPane
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(QString changed READ changed)
public:
    explicit PeripheralWidget(QWidget *parent = nullptr);
    ~PeripheralWidget() override;

    void setPeripherals(IPeripherals *peripherals); ///< Null for none.
    void releaseEnvironment() override { setPeripherals(nullptr); }
    void setPaused(bool paused) override { m_paused = paused; }
    [[nodiscard]] QString text() const;    ///< The rows that are not closed away: "name = value", a line each.
    [[nodiscard]] QString changed() const; ///< The names of the rows that are marked, a line each.

public Q_SLOTS:
    void update() override;
    void setRegister(PropertyItem *item); ///< Writes the value of a row to the device.
    void rightButtonClicked(ListViewItem *item, const QPoint &point);
    void readNow(PropertyItem *item); ///< Reads a register even if that has an effect.

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// Of the rows of registers and headings.
    struct RowState
    {
        PeripheralRegisterDetails details;
        bool isDetailed = false;  ///< its fields have been asked for
        bool isWriteOnly = false; ///< it, or each of its fields, cannot be read
        int update = 0;           ///< the number of the update it was read for
        QList<PropertyItem *> fields;
    };
    struct Field
    {
        PropertyItem *owner; ///< the row of its register
        PeripheralFieldInfo info;
    };

    void rebuild(const QList<PeripheralInfo> &infos);
    void addRegisters(const PeripheralInfo &info, PropertyItem *section);
    bool addFields(PropertyItem *item);
    void addFieldsBelow(ListViewItem *section);
    void showFields(PropertyItem *row);
    void expanded(ListViewItem *item);
    [[nodiscard]] QList<PropertyItem *> rowsOnScreen() const;
    void readVisible();
    bool readRow(PropertyItem *row);
    bool ask(PropertyItem *item, uint *value);
    void showValue(PropertyItem *row, uint value);
    [[nodiscard]] bool isFieldReadOnly(const PropertyItem *row, const PeripheralFieldInfo &field) const;
    void write(PropertyItem *row, uint value);
    bool writeField(PropertyItem *item, const Field &field);
    void takeBack(PropertyItem *row);
    [[nodiscard]] uint bitsBeside(const PropertyItem *row, const PeripheralFieldInfo &field, uint value) const;
    void reportWrite();
    [[nodiscard]] QString peripheralOf(const PropertyItem *row) const;

    PropertyList *const m_list;
    InterfacePtr<IPeripherals> m_peripherals;           ///< null without an environment
    InterfacePtr<IPeripheralFields> m_fieldsOf;         ///< null if fields are not known
    std::unique_ptr<PeripheralWidgetToolTip> m_toolTip; ///< null without an environment
    QList<PeripheralInfo> m_infos;                      ///< of the rows
    QHash<const PropertyItem *, RowState> m_states;
    QHash<const PropertyItem *, Field> m_fields;
    QTimer m_readTimer{this}; ///< active while rows that came into view are to be read
    int m_update = 0;         ///< number of the last update
    bool m_paused = false;
    bool m_reading = false;   ///< a plug-in is being asked, which may call back
    bool m_reporting = false; ///< other panes are refreshed; this one has its values
};
