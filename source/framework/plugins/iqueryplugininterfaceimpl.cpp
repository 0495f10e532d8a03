#include "iqueryplugininterfaceimpl.h"
#include "activity.h"
#include "callplugin.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "project.h"
#include "varnelassert.h"

IQueryPluginInterfaceImpl::IQueryPluginInterfaceImpl(const Activity *activity, Project *selfProject, IHost *host)
    : InterfaceObject(0), m_activity(activity), m_selfProject(selfProject), m_host(shareInterface(host))
{
    VARNEL_ASSERT(selfProject);
}

IQueryPluginInterfaceImpl::~IQueryPluginInterfaceImpl() = default;

QRESULT IQueryPluginInterfaceImpl::queryInterface(const QUuid &id, QUnknownInterface **out)
{
    if (id != IHost::Iid || !m_host)
        return InterfaceObject::queryInterface(id, out);
    *out = shareInterface(m_host.get()).release();
    return QS_OK;
}

QRESULT IQueryPluginInterfaceImpl::queryInterface(const QUuid &id, QUnknownInterface **out, int index)
{
    if (!out)
        return QE_NOINTERFACE;
    *out = nullptr;
    const QList<QUnknownInterface *> hits = offers(id);
    for (QUnknownInterface *hit : hits) {
        if (--index > 0)
            (void)askPlugin<&QUnknownInterface::release>(hit);
        else
            *out = hit; // plug-ins expect the last hit; an earlier one is overwritten, not released
    }
    return QS_OK;
}

int IQueryPluginInterfaceImpl::interfaceCount(const QUuid &id)
{
    const QList<QUnknownInterface *> hits = offers(id);
    for (QUnknownInterface *hit : hits)
        (void)askPlugin<&QUnknownInterface::release>(hit);
    return int(hits.size());
}

/// The interfaces @p id of the environments of the other projects, in order, each with a reference for the caller. A
/// plug-in that is asked may run an event loop, in which the user removes projects.
QList<QUnknownInterface *> IQueryPluginInterfaceImpl::offers(const QUuid &id) const
{
    std::vector<InterfacePtr<QUnknownInterface>> environments;
    const QList<QPointer<Project>> projects =
        m_activity && m_selfProject ? m_activity->projects() : decltype(projects)();
    for (const QPointer<Project> &project : projects) {
        if (project && project != m_selfProject) {
            environments.push_back(shareInterface<QUnknownInterface>(project->buildInterface()));
            environments.push_back(shareInterface<QUnknownInterface>(project->executionInterface()));
        }
    }
    QList<QUnknownInterface *> hits;
    for (const auto &environment : environments) {
        QUnknownInterface *hit = nullptr;
        if (askPlugin<&QUnknownInterface::queryInterface>(environment, id, &hit) == QS_OK && hit && environment)
            hits.append(hit);
    }
    return hits;
}
