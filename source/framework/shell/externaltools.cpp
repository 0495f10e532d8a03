#include "externaltools.h"
#include <algorithm>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
const auto Group = u"Tools"_s;

QString keyOf(qsizetype number, const QString &field)
{
    return Group + u"/tool"_s + QString::number(number) + field;
}

/// A text with commas that was written by hand, without quotes, is read as a list.
QString textIn(const QSettings &settings, const QString &key)
{
    return settings.value(key).toStringList().join(u',');
}

/// The directory is stored as "initialdir"; "initialDir" is the spelling of stores that ignore the case of letters.
QString directoryIn(const QSettings &settings, qsizetype number)
{
    const QString key = keyOf(number, u"initialDir"_s);
    return textIn(settings, settings.contains(key) ? key : keyOf(number, u"initialdir"_s));
}
} // namespace

ExternalTools::ExternalTools(QObject *parent) : QObject(parent) {}

ExternalTools::~ExternalTools() = default;

void ExternalTools::load(const QSettings &settings)
{
    QList<ToolEntry> entries;
    while (settings.contains(keyOf(entries.size(), u"name"_s))) {
        const qsizetype number = entries.size();
        entries.append({.name = textIn(settings, keyOf(number, u"name"_s)),
                        .command = textIn(settings, keyOf(number, u"command"_s)),
                        .arguments = textIn(settings, keyOf(number, u"arguments"_s)),
                        .initialDir = directoryIn(settings, number)});
    }
    setEntries(entries);
}

void ExternalTools::save(QSettings &settings) const
{
    settings.remove(Group);
    for (qsizetype i = 0; i < qsizetype(m_tools.size()); ++i) {
        const ToolEntry &entry = m_tools[i]->entry();
        settings.setValue(keyOf(i, u"name"_s), entry.name);
        settings.setValue(keyOf(i, u"command"_s), entry.command);
        settings.setValue(keyOf(i, u"arguments"_s), entry.arguments);
        settings.setValue(keyOf(i, u"initialdir"_s), entry.initialDir);
    }
}

ExternalTool *ExternalTools::add(const QString &name, const QString &command, const QString &arguments,
                                 const QString &initialDir)
{
    m_tools.push_back(createTool({.name = name, .command = command, .arguments = arguments, .initialDir = initialDir}));
    return m_tools.back().get();
}

std::unique_ptr<ExternalTool> ExternalTools::createTool(ToolEntry entry)
{
    entry.id = ++m_lastId;
    auto tool = std::make_unique<ExternalTool>(entry);
    connect(tool.get(), &ExternalTool::output, this, &ExternalTools::output);
    connect(tool.get(), &ExternalTool::runningChanged, this, [this, tool = tool.get()](bool running) {
        Q_EMIT runningChanged(tool->entry().id, running);
        if (!running)
            toolEnded(tool);
    });
    return tool;
}

void ExternalTools::remove(int index)
{
    QList<ToolEntry> left = entries();
    if (index < 0 || index >= left.size())
        return;
    left.removeAt(index);
    setEntries(left);
}

void ExternalTools::moveUp(int index)
{
    if (index > 0 && index < int(m_tools.size()))
        std::swap(m_tools[index], m_tools[index - 1]);
}

void ExternalTools::moveDown(int index)
{
    moveUp(index + 1);
}

QList<ExternalTool *> ExternalTools::tools() const
{
    QList<ExternalTool *> tools;
    for (const auto &tool : m_tools)
        tools.append(tool.get());
    return tools;
}

QList<ExternalTool *> ExternalTools::runningTools() const
{
    QList<ExternalTool *> running;
    for (const Tools *list : {&m_tools, &m_removed}) {
        for (const auto &tool : *list) {
            if (tool->isRunning())
                running.append(tool.get());
        }
    }
    return running;
}

QList<ToolEntry> ExternalTools::entries() const
{
    QList<ToolEntry> entries;
    for (const auto &tool : m_tools)
        entries.append(tool->entry());
    return entries;
}

void ExternalTools::setEntries(const QList<ToolEntry> &entries)
{
    Tools tools;
    for (const ToolEntry &entry : entries) {
        std::unique_ptr<ExternalTool> tool = take(entry.id);
        if (tool)
            tool->setEntry(entry);
        else
            tool = createTool(entry);
        tools.push_back(std::move(tool));
    }
    m_tools.swap(tools);
    for (auto &tool : tools) {
        if (tool && tool->isRunning())
            m_removed.push_back(std::move(tool));
    }
}

std::unique_ptr<ExternalTool> ExternalTools::take(int id)
{
    for (auto &tool : m_tools) {
        if (tool && tool->entry().id == id)
            return std::move(tool);
    }
    return nullptr;
}

/// Deletes a removed tool after its process has ended. Not at once: this is called by a signal of the tool.
void ExternalTools::toolEnded(const ExternalTool *ended)
{
    const auto it = std::ranges::find(m_removed, ended, &std::unique_ptr<ExternalTool>::get);
    if (it == m_removed.end())
        return;
    it->release()->deleteLater();
    m_removed.erase(it);
}

void ExternalTools::stop(int id)
{
    for (ExternalTool *tool : runningTools()) {
        if (tool->entry().id == id)
            tool->stop();
    }
}
