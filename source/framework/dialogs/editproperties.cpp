#include "editproperties.h"
#include "project.h"
#include "projectfile.h"
#include "propertyeditordialog.h"
#include "varnelassert.h"

using namespace Qt::StringLiterals;

namespace {
void edit(Project *project, ProjectFile *file, QWidget *parent)
{
    const QPointer<PropertyEditorDialog> dialog(new PropertyEditorDialog(
        project, file, project->buildInterface(), project->executionInterface(), parent, u"propertyEditorDialog"_s));
    dialog->exec();
    if (dialog) // it was deleted if the window was closed
        dialog->deleteLater();
}
} // namespace

void editProjectProperties(Project *project, QWidget *parent)
{
    VARNEL_ASSERT(project);
    if (project)
        edit(project, nullptr, parent);
}

void editFileProperties(ProjectFile *file, QWidget *parent)
{
    VARNEL_ASSERT(file);
    if (!file)
        return;
    Project *project = file->project();
    VARNEL_ASSERT(project);
    if (project)
        edit(project, file, parent);
}
