#include "projecttemplate.h"
#include "producttext.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 LargestFile = 1'000'000; // bytes
constexpr qsizetype LongestName = 200;
constexpr qsizetype LongestDescription = 1000;
constexpr int DeepestFolder = 8;
constexpr int MostDirectories = 1000;

/// Builds the description from the tokens of the file. It does not recurse, so that the file can be nested deeply.
class TemplateReader
{
public:
    explicit TemplateReader(const QByteArray &xml) : m_reader(xml) {}

    ProjectTemplate read()
    {
        while (!m_reader.atEnd()) {
            m_reader.readNext();
            if (m_reader.isStartElement())
                start();
            else if (m_reader.isEndElement())
                end();
            else if (m_reader.isCharacters() && m_text)
                *m_text += m_reader.text();
        }
        if (m_reader.hasError())
            return {};
        m_result.displayName = productText("Templates", m_result.displayName.left(LongestName));
        m_result.description = productText("Templates", m_result.description.left(LongestDescription));
        return m_result;
    }

private:
    void start()
    {
        ++m_depth;
        const QXmlStreamAttributes attributes = m_reader.attributes();
        if (m_depth == 1) {
            if (attributes.hasAttribute("type"_L1))
                m_result.type = attributes.value("type"_L1).toString();
            return;
        }
        if (m_reader.qualifiedName() == "script"_L1 && !m_hasScript) {
            m_hasScript = true;
            if (attributes.hasAttribute("module"_L1))
                m_result.scriptModule = attributes.value("module"_L1).toString();
        }
        if (m_depth == 2)
            startChild(attributes);
    }

    void startChild(const QXmlStreamAttributes &attributes)
    {
        if (m_reader.qualifiedName() == "displayname"_L1)
            m_text = &m_result.displayName;
        else if (m_reader.qualifiedName() == "description"_L1)
            m_text = &m_result.description;
        if (m_text)
            *m_text = u""_s;
        if (m_reader.qualifiedName() == "icon"_L1) {
            m_result.icon = attributes.value("default"_L1).toString();
            m_result.openIcon = attributes.value("open"_L1).toString();
        }
    }

    void end()
    {
        if (m_depth-- == 2)
            m_text = nullptr;
    }

    QXmlStreamReader m_reader;
    ProjectTemplate m_result;
    QString *m_text = nullptr; ///< takes the text of the present child of the root
    int m_depth = 0;
    bool m_hasScript = false;
};

bool hasFiles(const QString &directory)
{
    return QDirIterator(directory, QDir::Files).hasNext();
}

/// @p directory as a folder with all those below it; nothing if it is a template.
std::optional<TemplateFolder> folderAt(const QString &directory, int depth, int *remaining)
{
    if (depth > DeepestFolder || (*remaining)-- <= 0 || !QFileInfo(directory).isDir())
        return std::nullopt;
    TemplateFolder folder{readTemplate(directory), {}};
    if (!folder.info.isFolder() && hasFiles(directory))
        return std::nullopt;
    for (const QString &each : subdirectories(directory)) {
        if (const std::optional<TemplateFolder> child = folderAt(each, depth + 1, remaining))
            folder.folders.append(*child);
    }
    return folder;
}
} // namespace

bool ProjectTemplate::isFolder() const
{
    return type == "folder"_L1;
}

bool ProjectTemplate::isScript() const
{
    return type == "script"_L1;
}

QString ProjectTemplate::name() const
{
    return displayName.isEmpty() ? QDir(directory).dirName() : displayName;
}

ProjectTemplate parseTemplate(const QByteArray &xml)
{
    return TemplateReader(xml).read();
}

ProjectTemplate readTemplate(const QString &directory)
{
    QFile file(QDir(directory).filePath(u"template.xml"_s));
    ProjectTemplate result;
    if (QFileInfo(file).isFile() && file.size() <= LargestFile && file.open(QIODevice::ReadOnly))
        result = parseTemplate(file.read(LargestFile));
    result.directory = directory;
    return result;
}

QList<ProjectTemplate> templatesIn(const QString &directory)
{
    QList<ProjectTemplate> templates;
    for (const QString &each : subdirectories(directory)) {
        if (const ProjectTemplate info = readTemplate(each); !info.isFolder())
            templates.append(info);
    }
    return templates;
}

QList<TemplateFolder> findTemplateFolders(const QStringList &directories)
{
    int remaining = MostDirectories;
    QList<TemplateFolder> folders;
    for (const QString &directory : directories) {
        if (const std::optional<TemplateFolder> folder = folderAt(directory, 1, &remaining))
            folders.append(*folder);
    }
    return folders;
}

QStringList subdirectories(const QString &directory)
{
    QStringList paths;
    for (const QString &name : QDir(directory).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        paths.append(QDir(directory).filePath(name));
    return paths;
}
