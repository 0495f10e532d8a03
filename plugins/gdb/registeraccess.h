#pragma once
#include "facet.h"
#include "registertable.h"
#include <functional>
#include <QHash>
class GdbSession;
struct MiRecord;

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
    /// Passes the words of registers to @p use, at once if they are known.
    void requestValues(const std::function<void(const QHash<QString, QList<uint>> &values)> &use);
    void setValue(const QString &name, uint value, int word) override;

private:
    void refresh();
    [[nodiscard]] QByteArray readCommand(QHash<int, QString> *names) const;
    void setValues(const MiRecord &answer, const QHash<int, QString> &names);
    [[nodiscard]] const TargetRegister *find(const QString &name) const;

    GdbSession *const m_session;
    QList<TargetRegister> m_registers;
    QHash<QString, QList<uint>> m_values;
    int m_generation = -1; ///< of the session when the values were fetched
};
