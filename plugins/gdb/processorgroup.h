#pragma once
#include "facet.h"
#include "imultiprocessorsync.h"
#include <functional>
#include <memory>
#include <QList>
#include <QString>
class GdbSession;

/// One processor as a member of a group: the sessions of all environments whose projects have the same group name. A
/// command is sent to all of them before the first answer is awaited.
class ProcessorGroup : public Facet<IMultiProcessorSync>
{
public:
    using Restart = std::function<void()>;

    /// The processors of all environments of the plug-in, in the order of their creation.
    using Registry = std::shared_ptr<QList<ProcessorGroup *>>;

    ProcessorGroup(const Registry &registry, GdbSession *session, Restart restart, QUnknownInterface *whole);
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

    const Registry m_registry;
    GdbSession *const m_session;
    const Restart m_restart;
    QString m_name;
};
