#include "projectfile.h"
#include "project.h"
#include "projectpath.h"
#include "projectxmlreader.h"
#include "projectxmlwriter.h"
#include "varnelassert.h"
using namespace Qt::StringLiterals;

ProjectFile::ProjectFile(const QString &name, const QString &path) : m_path(path)
{
    VARNEL_ASSERT(name == fileNameOf(path));
}

ProjectFile::~ProjectFile()
{
    if (m_listings > 0)
        Project::forget(this);
}

QString ProjectFile::name() const
{
    return fileNameOf(m_path);
}

void ProjectFile::setProject(Project *project)
{
    if (project)
        m_properties.setProject(project);
}

void ProjectFile::rebase(const QString &from, const Project &to, bool staysInOther)
{
    if (from == to.basePath())
        return;
    const QString absolute = absolutePath(QDir(from), m_path);
    m_path = staysInOther ? absolute : to.relativePath(absolute);
}

void ProjectFile::read(ProjectXmlReader &xml)
{
    m_path = xml.attribute("path"_L1);
    while (xml.readNextStartElement()) {
        if (xml.isAt("properties"_L1))
            m_properties.read(xml);
        else
            xml.skipForeignElement();
    }
}

void ProjectFile::write(ProjectXmlWriter &xml) const
{
    xml.startElement("file"_L1);
    xml.attribute("path"_L1, m_path);
    if (m_properties.hasConfigurations()) {
        xml.startElement("properties"_L1);
        m_properties.write(xml);
        xml.endElement();
    }
    xml.endElement();
}

bool ProjectFile::isChildOf(const ProjectFolder *folder, const Project *project) const
{
    return m_folder == folder && (folder || this->project() == project);
}
