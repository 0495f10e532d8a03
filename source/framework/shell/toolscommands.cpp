#include "toolscommands.h"
#include "activity.h"
#include "document.h"
#include "dynamicmenus.h"
#include "project.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <QAction>
#include <QFileInfo>

using namespace Qt::StringLiterals;

ToolsCommands::ToolsCommands(const Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window)
{
    m_tools.load(window.settings());
    connect(&m_tools, &ExternalTools::output, this, &ToolsCommands::output);
}

void ToolsCommands::updateMenu(PopupMenu *menu)
{
    if (!menu)
        return;
    QStringList names;
    const QList<ExternalTool *> tools = m_tools.tools();
    for (const ExternalTool *tool : tools)
        names.append(tool->name());
    DynamicMenus::fillToolsMenu(menu, names, [this](int i) { execute(i); });
    for (int i = 0; i < tools.size(); ++i)
        menu->item(i)->setEnabled(!tools[i]->isRunning());

    int position = int(tools.size());
    for (const ExternalTool *tool : m_tools.runningTools()) {
        const QString text = tr("Stop %1").arg(QString(tool->name()).replace(u'&', u"&&"_s));
        menu->insertItem(
            text, position, [this, id = tool->entry().id](int) { m_tools.stop(id); }, position);
        ++position;
    }
    if (tools.isEmpty() && position > 0)
        menu->insertSeparatorAt(position);
}

void ToolsCommands::execute(int index)
{
    ExternalTool *tool = m_tools.tools().value(index);
    if (!tool)
        return;
    Document *document = m_window.viewManager()->currentDocument();
    tool->execute(toolMacros(m_activity.currentProject(), document ? document->filename() : QString()));
}

ExternalTool::Macros toolMacros(const Project *project, const QString &documentPath)
{
    const QFileInfo file(documentPath);
    ExternalTool::Macros macros{{u"ProjectDir"_s, {}},
                                {u"ProjectName"_s, {}},
                                {u"FilePath"_s, documentPath},
                                {u"FileDir"_s, file.absolutePath()},
                                {u"FileName"_s, file.completeBaseName()},
                                {u"FileExt"_s, file.completeSuffix()}};
    if (project) {
        macros[u"ProjectDir"_s] = project->directory().absolutePath();
        macros[u"ProjectName"_s] = project->name();
    }
    return macros;
}
