#include "extensioncommands.h"
#include "activity.h"
#include "callplugin.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "iextensioncommands.h"
#include "project.h"
#include "varnelassert.h"
#include <algorithm>
#include <QPointer>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
QList<ExtensionCommand> commandsOf(IExtensionCommands *interface)
{
    return askPlugin<&IExtensionCommands::commands>(interface);
}

MenuEntry entryOf(const ExtensionCommand &command, const QString &text)
{
    const std::optional<bool> checked = command.checked ? std::optional(true) : std::nullopt; // most are not checkable
    return {.text = text, .checked = checked, .enabled = command.enabled, .whatsThis = command.whatsThis};
}

void execute(IExtensionCommands *interface, const ExtensionCommand &command)
{
    if (command.enabled)
        runPlugin<&IExtensionCommands::execute>(interface, command.id);
}

QString nameOf(const ExtensionCommand &command)
{
    return DynamicMenus::objectName(u"plugin_"_s, command.id);
}

struct Offering
{
    InterfacePtr<IExtensionCommands> interface;
    bool isBuild = false;
};

/// What offers commands, in the order in which they are looked for.
std::vector<Offering> offerings(const Activity &activity)
{
    std::vector<Offering> result;
    const auto add = [&result](auto *environment, bool isBuild) {
        if (auto interface = queryPlugin<IExtensionCommands>(environment))
            result.push_back({std::move(interface), isBuild});
    };
    const QPointer<Project> current = activity.currentProject();
    if (current)
        add(current->executionInterface(), false);
    if (current)
        add(current->buildInterface(), true);
    for (const QPointer<Project> &project : activity.projects()) {
        if (project && project != current)
            add(project->executionInterface(), false);
    }
    return result;
}
} // namespace

QList<MenuEntry> buildExtensionEntries(const Project *project)
{
    const auto interface = queryPlugin<IExtensionCommands>(project ? project->buildInterface() : nullptr);
    if (!interface)
        return {};
    QList<MenuEntry> entries;
    const QList<ExtensionCommand> commands = commandsOf(interface.get());
    for (const ExtensionCommand &command : commands)
        entries.append(entryOf(command, command.text));
    return entries;
}

QList<QList<MenuEntry>> debugExtensionEntries(const Activity &activity)
{
    QList<QList<MenuEntry>> groups;
    const QList<QPointer<Project>> projects = activity.projects();
    for (const QPointer<Project> &project : projects) {
        const auto interface = queryPlugin<IExtensionCommands>(project ? project->executionInterface() : nullptr);
        if (!interface)
            continue;
        const QString name = project->name();
        QList<MenuEntry> group;
        const QList<ExtensionCommand> commands = commandsOf(interface.get());
        for (const ExtensionCommand &command : commands)
            group.append(entryOf(command, DynamicMenus::commandText(command.text, name, int(projects.size()))));
        groups.append(group);
    }
    return groups;
}

void executeBuildExtension(const Project *project, int index)
{
    const auto interface = queryPlugin<IExtensionCommands>(project ? project->buildInterface() : nullptr);
    VARNEL_ASSERT_TEXT(interface, "commandsIFace");
    if (!interface)
        return;
    const QList<ExtensionCommand> commands = commandsOf(interface.get());
    if (index >= 0 && index < commands.size())
        execute(interface.get(), commands[index]);
}

void executeDebugExtension(const Activity &activity, int index)
{
    if (index < 0)
        return;
    for (const QPointer<Project> &project : activity.projects()) { // a command may close the workspace
        const auto interface = queryPlugin<IExtensionCommands>(project ? project->executionInterface() : nullptr);
        if (!interface)
            continue;
        const QList<ExtensionCommand> commands = commandsOf(interface.get());
        if (index < commands.size())
            execute(interface.get(), commands[index]);
        else
            index -= int(commands.size());
    }
}

QList<OfferedCommand> offeredCommands(const Activity &activity)
{
    QList<OfferedCommand> result;
    for (const Offering &offering : offerings(activity)) {
        const QList<ExtensionCommand> commands = commandsOf(offering.interface.get());
        for (const ExtensionCommand &command : commands) {
            const QString name = nameOf(command);
            if (std::ranges::find(result, name, &OfferedCommand::name) == result.end())
                result.append({name, command.text, offering.isBuild});
        }
    }
    return result;
}

void executeOffered(const Activity &activity, const QString &name)
{
    for (const Offering &offering : offerings(activity)) {
        const QList<ExtensionCommand> commands = commandsOf(offering.interface.get());
        for (const ExtensionCommand &command : commands) {
            if (command.enabled && nameOf(command) == name)
                return execute(offering.interface.get(), command);
        }
    }
}
