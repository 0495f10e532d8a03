#include "templatecopy.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 BlockSize = 1 << 20; // bytes
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

bool isCopied(const QFileInfo &file)
{
    return file.fileName() != "template.xml"_L1 && file.completeSuffix() != "png"_L1;
}

CopyOutcome copyFile(const QString &from, const QString &to)
{
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        return CopyOutcome::CannotRead;
    QFile target(to);
    if (QFileInfo(from) == QFileInfo(to) || !target.open(QIODevice::WriteOnly))
        return CopyOutcome::CannotWrite;
    while (!source.atEnd()) {
        const QByteArray block = source.read(BlockSize);
        if (block.isEmpty())
            return CopyOutcome::CannotRead;
        if (target.write(block) != block.size())
            return CopyOutcome::CannotWrite;
    }
    return target.flush() ? CopyOutcome::Done : CopyOutcome::CannotWrite;
}

CopyResult copyFiles(const TemplateCopy &copy, Overwriting &overwriting)
{
    for (const QFileInfo &source : QDir(copy.templateDir).entryInfoList(QDir::Files)) {
        if (!isCopied(source))
            continue;
        if (!overwriting.mayReplace(copy.projectPath, source.fileName()))
            return {CopyOutcome::Cancelled};
        const QString target = QDir(copy.projectPath).filePath(source.fileName());
        const CopyOutcome outcome = copyFile(source.filePath(), target);
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

CopyResult copyTemplate(const TemplateCopy &copy, const OverwriteQuestion &ask)
{
    Overwriting overwriting(ask);
    if (!overwriting.mayReplace(copy.projectPath, copy.name + u".vnp"_s))
        return {CopyOutcome::Cancelled};
    QFile::remove(copy.projectFile());
    if (CopyResult result = copyFiles(copy, overwriting); result.outcome != CopyOutcome::Done)
        return result;
    return renameProject(copy) ? CopyResult{} : CopyResult{CopyOutcome::CannotRename, copy.projectFile()};
}
