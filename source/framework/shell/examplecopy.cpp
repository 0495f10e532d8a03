#include "examplecopy.h"
#include <QDir>
#include <QDirIterator>

QString ExampleCopy::placeOf(const QString &file) const
{
    const QString prefix = QDir(installed).absolutePath() + u'/';
    const QString path = QDir::cleanPath(file);
    return path.startsWith(prefix) ? QDir(own).filePath(path.mid(prefix.size())) : QString();
}

CopyResult copyMissingExamples(const ExampleCopy &copy, const CopyProgress &progress)
{
    QFileInfoList missing;
    QDirIterator files(QDir(copy.installed).absolutePath(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        if (!QFileInfo::exists(copy.placeOf(file.filePath())))
            missing.append(file);
    }
    FileCopier copier(missing, progress);
    for (const QFileInfo &file : missing) {
        const QString target = copy.placeOf(file.filePath());
        if (!QDir().mkpath(QFileInfo(target).path()))
            return {CopyOutcome::CannotWrite, target};
        const CopyOutcome outcome = copier.copyFile(file.filePath(), target);
        if (outcome != CopyOutcome::Done)
            return {outcome, outcome == CopyOutcome::CannotRead ? file.filePath() : target};
    }
    return {};
}
