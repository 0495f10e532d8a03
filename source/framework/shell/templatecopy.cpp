#include "templatecopy.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
const auto ProjectInTemplate = u"project.vnp"_s;

/// Asks about each existing file until the answer is for all of them.
class Overwriting
{
public:
    explicit Overwriting(const OverwriteQuestion &ask) : m_ask(ask) {}

    bool mayReplace(const QString &directory, const QString &file)
    {
        if (m_all || !QFileInfo::exists(QDir(directory).filePath(file)))
            return true;
        const OverwriteAnswer answer = m_ask(file);
        m_all = answer == OverwriteAnswer::YesToAll;
        return answer != OverwriteAnswer::Cancel;
    }

private:
    const OverwriteQuestion &m_ask;
    bool m_all = false;
};

QFileInfoList copiedFiles(const QString &directory)
{
    QFileInfoList files = QDir(directory).entryInfoList(QDir::Files | QDir::Hidden);
    files.removeIf([](const QFileInfo &file) { return !isCopiedFromTemplate(file); });
    return files;
}

CopyResult copyFiles(const TemplateCopy &copy, Overwriting &overwriting, const CopyProgress &progress)
{
    const QFileInfoList files = copiedFiles(copy.templateDir);
    FileCopier copier(files, progress);
    for (const QFileInfo &source : files) {
        if (!overwriting.mayReplace(copy.projectPath, source.fileName()))
            return {CopyOutcome::Cancelled};
        const QString target = QDir(copy.projectPath).filePath(source.fileName());
        const CopyOutcome outcome = copier.copyFile(source.filePath(), target);
        if (outcome != CopyOutcome::Done)
            return {outcome, outcome == CopyOutcome::CannotRead ? source.filePath() : target};
    }
    return {};
}

bool renameProject(const TemplateCopy &copy)
{
    const QString copied = QDir(copy.projectPath).filePath(ProjectInTemplate);
    return copied == copy.projectFile() ? QFileInfo::exists(copied) : QFile::rename(copied, copy.projectFile());
}
} // namespace

QString TemplateCopy::projectFile() const
{
    return QDir(projectPath).filePath(name + u".vnp"_s);
}

bool isCopiedFromTemplate(const QFileInfo &file)
{
    return file.fileName() != "template.xml"_L1 && file.completeSuffix() != "png"_L1;
}

CopyResult copyTemplate(const TemplateCopy &copy, const OverwriteQuestion &ask, const CopyProgress &progress)
{
    Overwriting overwriting(ask);
    if (!overwriting.mayReplace(copy.projectPath, copy.name + u".vnp"_s))
        return {CopyOutcome::Cancelled};
    QFile::remove(copy.projectFile());
    if (CopyResult result = copyFiles(copy, overwriting, progress); result.outcome != CopyOutcome::Done)
        return result;
    return renameProject(copy) ? CopyResult{} : CopyResult{CopyOutcome::CannotRename, copy.projectFile()};
}
