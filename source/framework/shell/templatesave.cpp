#include "templatesave.h"
#include "project.h"
#include "projectfile.h"
#include "templatecopy.h"
#include "wholefile.h"
#include <filesystem>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

namespace {
bool belongsToTemplate(const QFileInfo &file)
{
    const QString suffix = file.suffix();
    return suffix != "vnp"_L1 && suffix != "vnw"_L1 && !suffix.endsWith(u'~') && isCopiedFromTemplate(file);
}

bool isElsewhere(const Project &project, const QString &storedPath)
{
    const QFileInfo file(project.absolutePath(storedPath));
    return file.absolutePath() != QDir::cleanPath(project.basePath()) || !belongsToTemplate(file);
}

QFileInfoList filesIn(const QString &directory)
{
    return QDir(directory).entryInfoList(QDir::Files | QDir::Hidden);
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

CopyOutcome writeTemplate(const Project &project, const SavedTemplate &saved, const QString &directory,
                          const CopyProgress &progress)
{
    const QDir target(directory);
    QFileInfoList files = filesIn(project.basePath());
    files.removeIf([](const QFileInfo &file) { return !belongsToTemplate(file); });
    const QString text = templateProjectText(project); // before the copy, in which the project may be closed
    FileCopier copier(files, progress);
    for (const QFileInfo &file : files) {
        const CopyOutcome outcome = copier.copyFile(file.filePath(), target.filePath(file.fileName()));
        if (outcome != CopyOutcome::Done)
            return outcome;
    }
    const bool written = writeFileSafely(target.filePath(u"project.vnp"_s), text.toUtf8())
                         && writeTemplateFile(directory, {}, saved.name, saved.description);
    return written ? CopyOutcome::Done : CopyOutcome::CannotWrite;
}

/// Moves all files into another directory of the same file system, and deletes its other files.
bool replaceFiles(const QString &from, const QString &to)
{
    if (!QDir().mkpath(to))
        return false;
    QStringList old;
    for (const QFileInfo &file : filesIn(to))
        old.append(file.fileName());
    for (const QFileInfo &file : filesIn(from)) {
        std::error_code error;
        const QFileInfo target(QDir(to).filePath(file.fileName()));
        std::filesystem::rename(file.filesystemFilePath(), target.filesystemFilePath(), error);
        if (error)
            return false;
        old.removeOne(file.fileName());
    }
    for (const QString &name : old)
        QFile::remove(QDir(to).filePath(name));
    return true;
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

QStringList optionsElsewhere(const Project &project)
{
    static const QRegularExpression outside(u"(?<![^\\s;,='\"ILT])\\.\\.(?=/|$|[\\s;'\"])"_s); // also "-I../include"
    QStringList options;
    QXmlStreamReader reader(project.toXml());
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement() || reader.name() != "property"_L1)
            continue;
        const QString key = reader.attributes().value("key"_L1).toString();
        const QString value = reader.readElementText(QXmlStreamReader::SkipChildElements);
        if (value.contains(outside))
            options.append(key + u": "_s + value);
    }
    options.removeDuplicates(); // of several configurations
    return options;
}

bool liesIn(const Project &project, const QString &directory)
{
    const QString place = QFileInfo(directory).canonicalFilePath(); // empty if it does not exist
    const QString base = QFileInfo(project.basePath()).canonicalFilePath();
    return !place.isEmpty() && (base + u'/').startsWith(place + u'/');
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
    writer.writeTextElement(u"description"_s, description);
    writer.writeEndElement();
    return writeFileSafely(QDir(directory).filePath(u"template.xml"_s), text.trimmed() + '\n');
}

CopyOutcome saveTemplate(const Project &project, const SavedTemplate &saved, const CopyProgress &progress)
{
    const QString parent = QFileInfo(saved.directory).path();
    if (!QDir().mkpath(parent))
        return CopyOutcome::CannotWrite;
    const QTemporaryDir beside(parent + u"/.template-XXXXXX"_s); // hidden, so that the dialog does not offer it
    if (!beside.isValid())
        return CopyOutcome::CannotWrite;
    const CopyOutcome outcome = writeTemplate(project, saved, beside.path(), progress);
    if (outcome != CopyOutcome::Done)
        return outcome;
    return replaceFiles(beside.path(), saved.directory) ? CopyOutcome::Done : CopyOutcome::CannotWrite;
}

QString directoryNameOf(const QString &name)
{
    QString directory = name.simplified();
    directory.replace(u'/', u'_');
    if (directory.startsWith(u'.'))
        directory[0] = u'_';
    return directory;
}
