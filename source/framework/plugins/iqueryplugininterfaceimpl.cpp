#include "iqueryplugininterfaceimpl.h"
#include "activity.h"
#include "callplugin.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "project.h"
#include "varnelassert.h"

IQueryPluginInterfaceImpl::IQueryPluginInterfaceImpl(const Activity *activity, Project *selfProject)
    : InterfaceObject(0), m_activity(activity), m_selfProject(selfProject)
{
    VARNEL_ASSERT(selfProject);
}

IQueryPluginInterfaceImpl::~IQueryPluginInterfaceImpl() = default;

QRESULT IQueryPluginInterfaceImpl::queryInterface(const QUuid &id, QUnknownInterface **out, int index)
{
    if (!out)
        return QE_NOINTERFACE;
    *out = nullptr;
    const QList<QUnknownInterface *> hits = offers(id);
    for (QUnknownInterface *hit : hits) {
        if (--index > 0)
            hit->release();
        else
            *out = hit; // plug-ins expect the last hit; an earlier one is overwritten, not released
    }
    return QS_OK;
}

int IQueryPluginInterfaceImpl::interfaceCount(const QUuid &id)
{
    const QList<QUnknownInterface *> hits = offers(id);
    for (QUnknownInterface *hit : hits)
        hit->release();
    return int(hits.size());
}

/// The interfaces @p id of the environments of the other projects, in order, each with a reference for the caller.
QList<QUnknownInterface *> IQueryPluginInterfaceImpl::offers(const QUuid &id) const
{
    QList<QUnknownInterface *> environments;
    const QList<QPointer<Project>> projects =
        m_activity && m_selfProject ? m_activity->projects() : decltype(projects)();
    for (const QPointer<Project> &project : projects) {
        if (project != m_selfProject)
            environments << project->buildInterface() << project->executionInterface();
    }
    QList<QUnknownInterface *> hits;
    for (QUnknownInterface *environment : std::as_const(environments)) {
        QUnknownInterface *hit = nullptr;
        if (!environment)
            continue;
        const auto query = [&] { return environment->queryInterface(id, &hit) == QS_OK; };
        if (askPlugin("IQueryPluginInterfaceImpl::queryInterface", query) && hit)
            hits.append(hit);
    }
    return hits;
}
