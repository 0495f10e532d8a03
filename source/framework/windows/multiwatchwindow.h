#pragma once
#include "multiwidget.h"
#include <QHash>
#include <QJsonObject>

/// A watch window for each project. It keeps the watches of each project while panes are made again, and gives them to
/// the session of the workspace.
class MultiWatchWindow : public MultiWidget
{
    Q_OBJECT
public:
    using MultiWidget::MultiWidget;

    /// The watches of the open projects: a list of expressions by the file of the project.
    [[nodiscard]] QJsonObject watches() const;
    void setWatches(const QJsonObject &watches); ///< Replaces those of all projects.

protected:
    DebugPane *createWidget(QWidget *parent, IExecutionEnvironment *environment, bool force) override;

private:
    QHash<QString, QStringList> m_watches; ///< by the file of the project
};
