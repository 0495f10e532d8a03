#include "scripttarget.h"
#include "project.h"
#include "scripttypes.h"

ScriptTarget::ScriptTarget(ObjectModel &model, Project *project) : ScriptObject(model), m_project(project) {}

Project *ScriptTarget::project() const
{
    return &requireAlive(m_project);
}

InterfacePtr<IExecutionEnvironment> ScriptTarget::environment() const
{
    InterfacePtr<IExecutionEnvironment> environment = shareInterface(project()->executionInterface());
    if (!environment)
        raiseDestroyed();
    return environment;
}

void ScriptTarget::requireActive() const
{
    if (!project()->isActive())
        raisePython(PyExc_RuntimeError, QObject::tr("Project associated with processor is not active"));
}

void ScriptTarget::raiseNoInterface()
{
    raiseDestroyed();
}

void raisePluginFailed(const char *operation)
{
    raisePython(PyExc_RuntimeError, QObject::tr("The plug-in has failed in %1").arg(QString::fromLatin1(operation)));
}
