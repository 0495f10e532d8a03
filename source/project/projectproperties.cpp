#include "projectproperties.h"
#include "project.h"
#include "projectxmlreader.h"
#include "projectxmlwriter.h"
#include "varnelassert.h"
using namespace Qt::StringLiterals;

bool ProjectProperties::addConfiguration(const QString &name)
{
    if (m_configurations.contains(name))
        return false;
    m_configurations.insert(name, {});
    markProject();
    reportConfigurations();
    return true;
}

bool ProjectProperties::removeConfiguration(const QString &name)
{
    const bool removed = m_configurations.remove(name) > 0;
    markProject();
    if (removed)
        reportConfigurations();
    return true;
}

QStringList ProjectProperties::propertyKeys(const QString &configuration)
{
    VARNEL_ASSERT_TEXT(m_configurations.contains(configuration),
                       "m_configurations.find(configuration) != m_configurations.end()");
    return m_configurations[configuration].keys();
}

QString ProjectProperties::property(const QString &key, const QString &configuration, bool flag) const
{
    const auto values = m_configurations.constFind(configuration);
    if (values != m_configurations.constEnd()) {
        const auto value = values->constFind(key);
        if (value != values->constEnd())
            return *value;
    }
    if (isOfFile())
        return m_project->properties()->property(key, configuration, flag);
    return {};
}

void ProjectProperties::setProperty(const QString &key, const QString &value, const QString &configuration)
{
    const bool isNew = !m_configurations.contains(configuration);
    QMap<QString, QString> &values = m_configurations[configuration];
    const auto old = values.constFind(key);
    const bool differs = old == values.constEnd() || *old != value;
    values[key] = value;
    m_modified = true;
    markProject();
    if (isNew)
        reportConfigurations();
    if (differs && m_project) // a receiver may set the same value again
        Q_EMIT m_project->propertyChanged(key, configuration);
}

bool ProjectProperties::removeProperty(const QString &key, const QString &configuration)
{
    const auto values = m_configurations.find(configuration);
    if (values == m_configurations.end() || values->remove(key) == 0)
        return false;
    if (isOfFile() && values->isEmpty())
        m_configurations.erase(values);
    m_modified = true;
    markProject();
    if (m_project)
        Q_EMIT m_project->propertyChanged(key, configuration);
    return true;
}

void ProjectProperties::read(ProjectXmlReader &xml)
{
    while (xml.readNextStartElement()) {
        if (xml.isAt("configuration"_L1))
            readConfiguration(xml);
        else
            xml.skipForeignElement();
    }
    m_modified = false;
}

void ProjectProperties::readConfiguration(ProjectXmlReader &xml)
{
    QMap<QString, QString> &values = m_configurations[xml.sharedAttribute("name"_L1)];
    while (xml.readNextStartElement()) {
        const QString key = xml.sharedAttribute("key"_L1);
        values[key] = xml.elementText();
    }
}

void ProjectProperties::write(ProjectXmlWriter &xml) const
{
    for (auto configuration = m_configurations.begin(); configuration != m_configurations.end(); ++configuration) {
        xml.startElement("configuration"_L1);
        xml.attribute("name"_L1, configuration.key());
        for (auto property = configuration->begin(); property != configuration->end(); ++property) {
            xml.startElement("property"_L1);
            xml.attribute("key"_L1, property.key());
            xml.text(property.value());
            xml.endElement();
        }
        xml.endElement();
    }
}

bool ProjectProperties::isOfFile() const
{
    return m_project && m_project->properties() != this;
}

void ProjectProperties::markProject() const
{
    if (m_project)
        m_project->setModified(true);
}

/// Those of files have no meaning without those of their project.
void ProjectProperties::reportConfigurations() const
{
    if (m_project && !isOfFile())
        Q_EMIT m_project->configurationsChanged();
}
