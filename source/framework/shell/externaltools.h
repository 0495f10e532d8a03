#pragma once
#include "externaltool.h"
#include <vector>
class QSettings;

/// The programs that the user has added to the Tools menu, in their order.
class ExternalTools : public QObject
{
    Q_OBJECT
public:
    explicit ExternalTools(QObject *parent = nullptr);
    ~ExternalTools() override;

    /// Reads the group "Tools". The list ends at the first number without a name.
    void load(const QSettings &settings);
    /// Writes the group "Tools" again, numbered from 0 without a gap.
    void save(QSettings &settings) const;

    ExternalTool *add(const QString &name, const QString &command, const QString &arguments, const QString &initialDir);
    [[nodiscard]] QList<ExternalTool *> tools() const;
    /// All tools whose process runs, in the order of the list; those that were removed from it come last.
    [[nodiscard]] QList<ExternalTool *> runningTools() const;

    void remove(int index);   ///< Other numbers, here and below, do nothing.
    void moveUp(int index);   ///< Does nothing for the first tool.
    void moveDown(int index); ///< Does nothing for the last tool.

    [[nodiscard]] QList<ToolEntry> entries() const;
    /// Replaces the list. Tools whose ids are in @p entries stay, with their process; a tool that is removed while its
    /// process runs stays in runningTools() until the process ends.
    void setEntries(const QList<ToolEntry> &entries);

    void stop(int id); ///< Stops the process of a tool, if it runs.

Q_SIGNALS:
    void output(const QString &text);
    void runningChanged(int id, bool running);

private:
    using Tools = std::vector<std::unique_ptr<ExternalTool>>;

    [[nodiscard]] std::unique_ptr<ExternalTool> createTool(ToolEntry entry);
    [[nodiscard]] std::unique_ptr<ExternalTool> take(int id);
    void toolEnded(const ExternalTool *tool);

    Tools m_tools;
    Tools m_removed; ///< until their processes end
    int m_lastId = 0;
};
