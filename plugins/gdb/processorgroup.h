#pragma once
#include "facet.h"
#include "imultiprocessorsync.h"
#include <functional>
#include <QList>
#include <QString>
class GdbSession;

/// The processors of one group: the sessions of all environments whose projects name the same one. A command reaches
/// all of them before the answer of the first is awaited.
class ProcessorGroup : public Facet<IMultiProcessorSync>
{
public:
    using Restart = std::function<void()>;

    ProcessorGroup(GdbSession *session, Restart restart, QUnknownInterface *whole);
    ~ProcessorGroup() override;

    void setName(const QString &name) { m_name = name; }

    QString groupId() override { return m_name; }
    int supportedOperations(const QString &groupId) override;
    void syncRun() override;
    void syncPause() override;
    void syncRestart() override;
    void syncWakeup() override;

private:
    [[nodiscard]] QList<ProcessorGroup *> members() const;
    [[nodiscard]] QList<GdbSession *> sessions() const;

    GdbSession *const m_session;
    const Restart m_restart;
    QString m_name;
};
