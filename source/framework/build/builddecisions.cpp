#include "builddecisions.h"
#include "callplugin.h"
#include "ibuildenvironment.h"
#include "ipropertydefinitions.h"
#include "project.h"
#include "projectworkspace.h"
#include <QCoreApplication>
#include <QFileInfo>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

QString compileText(const QString &pattern, const QString &file)
{
    const QString name =
        file.isEmpty() ? QCoreApplication::translate("MainWindow", "file") : QFileInfo(file).fileName();
    return QString(pattern).replace("%1"_L1, QString(name).replace(u'&', u"&&"_s)); // a menu text
}

Project *compilingProject(const ProjectWorkspace *workspace, const QString &file)
{
    return workspace ? workspace->projectsContainingFile(file).value(0) : nullptr;
}

bool mayCompile(ActivityState state, const QString &file, const Project *project)
{
    return state != StateBuilding && !file.isEmpty() && project && project->buildInterface();
}

QString defaultOfProperty(const QString &definitions, const QString &key)
{
    QXmlStreamReader xml(definitions);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == "property"_L1
            && xml.attributes().value("key"_L1) == key)
            return xml.attributes().value("defaultvalue"_L1).toString();
    }
    return {};
}

QString buildMatch(const Project &project)
{
    QString pattern = project.properties()->property(u"buildMatch"_s, project.currentConfiguration(), false);
    const auto definitions = queryPlugin<IPropertyDefinitions>(pattern.isNull() ? project.buildInterface() : nullptr);
    if (definitions)
        pattern =
            defaultOfProperty(askPlugin<&IPropertyDefinitions::propertyDefinitions>(definitions), u"buildMatch"_s);
    return pattern;
}
