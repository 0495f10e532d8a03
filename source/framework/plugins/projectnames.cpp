#include "projectnames.h"
#include "activity.h"
#include "objectnames.h"
#include "project.h"
#include <functional>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {
/// The text of @p project, with a number if that of a project before it is the same.
QString distinctText(const Activity &activity, const Project *project,
                     const std::function<QString(const Project *)> &textOf, QChar separator)
{
    QStringList taken;
    const auto freeText = [&](const Project *each) {
        const QString text = textOf(each);
        QString free = text;
        for (int number = 2; taken.contains(free); ++number)
            free = text + separator + QString::number(number);
        return free;
    };
    const QList<QPointer<Project>> projects = activity.projects();
    for (const QPointer<Project> &each : projects) {
        if (each == project)
            break;
        if (each)
            taken += freeText(each);
    }
    return freeText(project);
}
} // namespace

QString objectNameOfProject(const Activity &activity, const Project *project)
{
    return distinctText(
        activity, project, [](const Project *each) { return partOfObjectName(each->name()); }, u'-');
}

QString shownNameOfProject(const Activity &activity, const Project *project)
{
    return distinctText(
        activity, project, [](const Project *each) { return each->displayName(); }, u' ');
}

void nameByProject(QWidget *window, const QString &project)
{
    const QList<QWidget *> parts = QList<QWidget *>{window} + window->findChildren<QWidget *>();
    for (QWidget *part : parts) {
        if (!part->objectName().isEmpty() && !part->objectName().startsWith("qt_"_L1))
            part->setObjectName(project + u'/' + part->objectName());
    }
}
