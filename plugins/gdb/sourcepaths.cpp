#include "sourcepaths.h"
#include <QDir>

QString bestPathMatch(const QString &path, const QStringList &candidates)
{
    const QStringList wanted = QDir::fromNativeSeparators(path).split(u'/');
    QString best;
    qsizetype bestScore = 0;
    for (const QString &candidate : candidates) {
        const QStringList parts = candidate.split(u'/');
        qsizetype score = 0;
        while (score < parts.size() && score < wanted.size()
               && parts[parts.size() - 1 - score] == wanted[wanted.size() - 1 - score])
            ++score;
        if (score > bestScore) {
            best = candidate;
            bestScore = score;
        }
    }
    return best;
}

QString withOtherRoot(const QString &path, const QString &oldRoot, const QString &newRoot)
{
    if (oldRoot.isEmpty() || !path.startsWith(oldRoot + u'/'))
        return path;
    return newRoot + path.sliced(oldRoot.size());
}

QString projectPath(const QString &path, const QString &basePath)
{
    const QString root = QDir::cleanPath(basePath) + u'/';
    return path.startsWith(root) ? path.mid(root.size()) : path;
}
