#include "multiwatchwindow.h"
#include "activity.h"
#include "project.h"
#include "watchwindow.h"
#include <QJsonArray>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype MostWatches = 1000; ///< of a project; a file with more was not written by this program

QStringList expressionsIn(const QJsonArray &array)
{
    QStringList expressions;
    for (const auto &value : array) {
        if (const QString text = value.toString(); !text.isEmpty() && expressions.size() < MostWatches)
            expressions += text;
    }
    return expressions;
}

/// The file of the project that owns @p environment; empty for none.
QString projectFile(const Activity &activity, const IExecutionEnvironment *environment)
{
    for (const QPointer<Project> &project : activity.projects()) {
        if (project && environment && project->executionInterface() == environment)
            return project->fileName();
    }
    return {};
}
} // namespace

DebugPane *MultiWatchWindow::createWidget(QWidget *parent, IExecutionEnvironment *environment, bool)
{
    const QString key = projectFile(activity(), environment);
    auto *pane = new WatchWindow(parent);
    pane->setProperty("project", key);
    pane->setEnvironment(environment);
    pane->setWatches(m_watches.value(key));
    connect(pane, &WatchWindow::watchesChanged, this, [this, key, pane] { m_watches.insert(key, pane->watches()); });
    return pane;
}

QJsonObject MultiWatchWindow::watches() const
{
    QJsonObject object;
    for (const QPointer<Project> &project : activity().projects()) {
        const QStringList expressions = project ? m_watches.value(project->fileName()) : QStringList();
        if (!expressions.isEmpty())
            object.insert(project->fileName(), QJsonArray::fromStringList(expressions));
    }
    return object;
}

void MultiWatchWindow::setWatches(const QJsonObject &watches)
{
    m_watches.clear();
    for (auto it = watches.begin(); it != watches.end(); ++it)
        m_watches.insert(it.key(), expressionsIn(it.value().toArray()));
    for (DebugPane *pane : widgets())
        static_cast<WatchWindow *>(pane)->setWatches(m_watches.value(pane->property("project").toString()));
}
