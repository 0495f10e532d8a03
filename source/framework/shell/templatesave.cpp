#include "templatesave.h"
#include "project.h"
#include "projectfile.h"
#include "wholefile.h"
#include <QDir>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

namespace {
bool isElsewhere(const Project &project, const QString &storedPath)
{
    return QFileInfo(project.absolutePath(storedPath)).absolutePath() != QDir::cleanPath(project.basePath());
}

bool belongsToTemplate(const QFileInfo &file)
{
    const QString suffix = file.suffix();
    return suffix != "vnp"_L1 && suffix != "vnw"_L1 && !suffix.endsWith(u'~') && file.fileName() != "template.xml"_L1;
}

void copyElement(const QXmlStreamReader &reader, QXmlStreamWriter &writer, const Project &project)
{
    writer.writeStartElement(reader.qualifiedName().toString());
    for (const QXmlStreamAttribute &attribute : reader.attributes()) {
        QString value = attribute.value().toString();
        const bool isPath = reader.qualifiedName() == "file"_L1 && attribute.qualifiedName() == "path"_L1;
        if (isPath && isElsewhere(project, value))
            value = project.absolutePath(value);
        writer.writeAttribute(attribute.qualifiedName().toString(), value);
    }
}
} // namespace

QString templateProjectText(const Project &project)
{
    QString text;
    QXmlStreamReader reader(project.toXml());
    QXmlStreamWriter writer(&text);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement())
            copyElement(reader, writer, project);
        else if (!reader.isStartDocument() && !reader.isEndDocument())
            writer.writeCurrentToken(reader);
    }
    return text + u'\n';
}

QStringList filesElsewhere(const Project &project)
{
    QStringList paths;
    for (const ProjectFile *file : project.files({}, nullptr)) {
        if (isElsewhere(project, file->path()))
            paths.append(file->path());
    }
    return paths;
}

bool writeTemplateFile(const QString &directory, const QString &type, const QString &name, const QString &description)
{
    QByteArray text;
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
    writer.writeStartElement(u"template"_s);
    if (!type.isNull())
        writer.writeAttribute(u"type"_s, type);
    writer.writeTextElement(u"displayname"_s, name);
    if (!description.isNull())
        writer.writeTextElement(u"description"_s, description);
    writer.writeEndElement();
    return writeFileSafely(QDir(directory).filePath(u"template.xml"_s), text.trimmed() + '\n');
}

CopyOutcome saveTemplate(const Project &project, const SavedTemplate &saved, const CopyProgress &progress)
{
    const QDir target(saved.directory);
    if (!target.mkpath(u"."_s))
        return CopyOutcome::CannotWrite;
    QFileInfoList files = QDir(project.basePath()).entryInfoList(QDir::Files);
    files.removeIf([](const QFileInfo &file) { return !belongsToTemplate(file); });
    const QString text = templateProjectText(project); // before the copy, in which the project may be closed
    FileCopier copier(files, progress);
    for (const QFileInfo &file : files) {
        const CopyOutcome outcome = copier.copyFile(file.filePath(), target.filePath(file.fileName()));
        if (outcome != CopyOutcome::Done)
            return outcome;
    }
    const bool written = writeFileSafely(target.filePath(u"project.vnp"_s), text.toUtf8())
                         && writeTemplateFile(saved.directory, {}, saved.name, saved.description);
    return written ? CopyOutcome::Done : CopyOutcome::CannotWrite;
}

QString directoryNameOf(const QString &name)
{
    QString directory = name.simplified();
    directory.replace(u'/', u'_');
    if (directory.startsWith(u'.'))
        directory[0] = u'_';
    return directory;
}
