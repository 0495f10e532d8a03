#pragma once
#include "facet.h"
#include "registertable.h"
#include <QHash>
class GdbSession;

/// The processor's registers in the selected frame. The first query after a stop fetches all of them.
class RegisterAccess : public Facet<IRegisters>
{
public:
    RegisterAccess(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session) {}

    /// Sets the registers that are shown before the first session.
    void setExpected(const QList<TargetRegister> &registers);
    void load(); ///< Reads the list of registers from gdb.

    QList<RegisterInfo> registers() override;
    uint value(const QString &name, int word) override;
    void setValue(const QString &name, uint value, int word) override;

private:
    void refresh();
    [[nodiscard]] const TargetRegister *find(const QString &name) const;

    GdbSession *const m_session;
    QList<TargetRegister> m_registers;
    QHash<QString, QList<uint>> m_values;
    int m_generation = -1; ///< of the session when the values were fetched
};
