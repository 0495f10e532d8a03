#include "filecopier.h"
#include <QFile>

namespace {
constexpr qint64 BlockSize = 1 << 18; // bytes

/// Other permissions are not copied, since the source may be read-only.
void keepExecutable(const QFile &source, QFile *target)
{
    constexpr QFile::Permissions Executable = QFile::ExeOwner | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther;
    if (source.permissions().testFlag(QFile::ExeOwner))
        target->setPermissions(target->permissions() | (source.permissions() & Executable));
}
} // namespace

FileCopier::FileCopier(const QFileInfoList &files, CopyProgress progress) : m_progress(std::move(progress))
{
    for (const QFileInfo &file : files)
        m_total += file.size();
}

CopyOutcome FileCopier::copyFile(const QString &from, const QString &to)
{
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        return CopyOutcome::CannotRead;
    QFile target(to);
    if (QFileInfo(from) == QFileInfo(to) || !target.open(QIODevice::WriteOnly))
        return CopyOutcome::CannotWrite;
    CopyOutcome outcome = copyBlocks(&source, &target);
    if (outcome == CopyOutcome::Done && !target.flush())
        outcome = CopyOutcome::CannotWrite;
    if (outcome == CopyOutcome::Done)
        keepExecutable(source, &target);
    else
        target.remove();
    return outcome;
}

CopyOutcome FileCopier::copyBlocks(QFile *source, QFile *target)
{
    while (!source->atEnd()) {
        const QByteArray block = source->read(BlockSize);
        if (block.isEmpty())
            return CopyOutcome::CannotRead;
        if (target->write(block) != block.size())
            return CopyOutcome::CannotWrite;
        m_done += block.size();
        const qint64 percent = m_done * 100 / std::max<qint64>(1, m_total); // a file may have grown
        if (m_progress && !m_progress(int(std::min<qint64>(100, percent))))
            return CopyOutcome::Cancelled;
    }
    return CopyOutcome::Done;
}
