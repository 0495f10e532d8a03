#pragma once
#include "debugpane.h"
#include "debugqueries.h"
#include "iregisters.h"
#include <QHash>
#include <QPointer>
#include <QSet>
class PropertyItem;
class PropertySubsectionItem;
class PropertyTextItem;
class RegisterList;

/// The registers of one processor. A bold name marks a value that has changed since the last update, and one that the
/// user has changed.
///
/// The list of registers is read again at each update, since an environment may know it only when a session has begun;
/// the formats that the user has chosen stay.
class RegisterWidget : public DebugPane
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(QString changed READ changed)
public:
    explicit RegisterWidget(QWidget *parent = nullptr);
    ~RegisterWidget() override;

    void setRegisters(IRegisters *registers); ///< Null for none. Its values are read by the first update().
    void releaseEnvironment() override { setRegisters(nullptr); }
    [[nodiscard]] QString text() const;    ///< The rows on the screen: "name = value", a line each.
    [[nodiscard]] QString changed() const; ///< The names of the rows that are marked, a line each.

public Q_SLOTS:
    void update() override;
    void setRegister(PropertyItem *item); ///< Writes the value of a row to the processor.
    /// Shows the formats of a row, if there is a choice.
    void rightButtonClicked(PropertyItem *item, const QPoint &point);

private:
    void rebuild(const QList<RegisterInfo> &infos);
    PropertyItem *groupOf(const RegisterInfo &info, PropertyItem *&cursor);
    PropertyItem *addRow(const RegisterInfo &info, PropertyItem *group, PropertyItem *after);
    void reportRejected(const PropertyTextItem *row);
    void readRows(IRegisters *registers);
    void requestRows();
    void showValues(const QList<RegisterValue> &values);
    [[nodiscard]] const RegisterInfo *infoOf(const QString &name) const;

    RegisterList *const m_list;
    InterfacePtr<IRegisters> m_registers;       ///< null without an environment
    InterfacePtr<IRegisterRequests> m_requests; ///< null if values are read at once
    DebugQueries m_queries;
    QSet<QString> m_written;     ///< changed by the user since the last answer
    QList<RegisterInfo> m_infos; ///< of the rows
    QHash<QString, PropertySubsectionItem *> m_groups;
    QHash<QString, int> m_formats; ///< chosen by the user, by the name of the register
    bool m_reading = false;        ///< a plug-in is being asked, which may call back
    bool m_reporting = false;      ///< other panes are refreshed; this one has its values
};
