#include "filetemplate.h"
#include "projecttemplate.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 LargestFile = 1'000'000; // bytes
const auto CursorMark = u"$cursor$"_s;

struct SourceFile
{
    QString name;
    QString text;
};

/// The files of a template; the one in front comes first.
QList<SourceFile> readFiles(const QString &directory)
{
    QList<SourceFile> files;
    for (const QString &name : QDir(directory).entryList(QDir::Files)) {
        QFile file(QDir(directory).filePath(name));
        const QString suffix = QFileInfo(name).suffix();
        if (name == "template.xml"_L1 || suffix == "png"_L1 || suffix == "svg"_L1 || file.size() > LargestFile
            || !file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        files.insert(text.contains(CursorMark) ? 0 : files.size(), {name, text});
    }
    return files;
}

/// Replaces all placeholders at once, so that a name that looks like one stays as it is.
QString expand(const QString &text, const QString &name)
{
    const QString identifier = identifierOf(name);
    const QList<std::pair<QString, QString>> values = {
        {u"$name$"_s, name}, {u"$identifier$"_s, identifier}, {u"$IDENTIFIER$"_s, identifier.toUpper()}};
    QString result;
    for (qsizetype i = 0; i < text.size();) {
        const auto found = std::find_if(values.begin(), values.end(), [&](const auto &each) {
            return QStringView(text).sliced(i).startsWith(each.first);
        });
        result += found == values.end() ? QString(text[i]) : found->second;
        i += found == values.end() ? 1 : found->first.size();
    }
    return result;
}

NewFile newFile(const SourceFile &source, const QString &path, const QString &name)
{
    const qsizetype mark = source.text.indexOf(CursorMark);
    const QString before = expand(source.text.left(mark), name); // all of it if there is no mark
    const QString after = mark < 0 ? QString() : expand(source.text.mid(mark + CursorMark.size()), name);
    return {path, before + after, mark < 0 ? 0 : int(before.size())};
}
} // namespace

QList<FileTemplate> findFileTemplates(const QStringList &directories)
{
    QList<FileTemplate> found;
    for (const QString &directory : directories) {
        for (const QString &each : subdirectories(directory)) {
            const QList<SourceFile> files = readFiles(each);
            const ProjectTemplate info = readTemplate(each);
            if (!files.isEmpty())
                found.append({each, info.name(), info.description, info.icon, QFileInfo(files.first().name).suffix()});
        }
    }
    return found;
}

QList<NewFile> filesOf(const FileTemplate &fileTemplate, const QString &path)
{
    const QFileInfo target(path);
    const QString name = target.completeBaseName();
    QList<NewFile> files;
    for (const SourceFile &source : readFiles(fileTemplate.directory)) {
        const QString place = files.isEmpty() ? path : target.dir().filePath(expand(source.name, name));
        const auto isThere = [&place](const NewFile &file) { return file.path == place; };
        if (std::none_of(files.begin(), files.end(), isThere)) // for the name "x.h" the header of a pair is such a file
            files.append(newFile(source, place, name));
    }
    return files;
}

QString identifierOf(const QString &name)
{
    QString identifier;
    for (const QChar c : name)
        identifier += c.unicode() < 0x80 && c.isLetterOrNumber() ? c : QChar(u'_');
    if (identifier.isEmpty() || identifier.front().isDigit())
        identifier.prepend(u'_');
    return identifier;
}
