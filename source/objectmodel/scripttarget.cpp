#include "scripttarget.h"
#include "project.h"
#include "scripttypes.h"

using namespace Qt::StringLiterals;

ScriptTarget::ScriptTarget(ObjectModel &model, Project *project) : ScriptObject(model), m_project(project) {}

Project *ScriptTarget::project() const
{
    requireMainThread();
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
        raisePython(PyExc_RuntimeError, u"Project associated with processor is not active"_s);
}

void ScriptTarget::raiseNoInterface()
{
    raiseDestroyed();
}

void raisePluginFailed(const char *operation)
{
    raisePython(PyExc_RuntimeError, u"The plug-in has failed in %1"_s.arg(QString::fromLatin1(operation)));
}
