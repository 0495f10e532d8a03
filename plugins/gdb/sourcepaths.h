#pragma once
#include <QString>
#include <QStringList>

/// The first of @p candidates with the longest common end with @p path, compared by whole components; empty if no file
/// name matches.
[[nodiscard]] QString bestPathMatch(const QString &path, const QStringList &candidates);

/// @p path below @p newRoot instead of @p oldRoot; unchanged if it is not below @p oldRoot.
[[nodiscard]] QString withOtherRoot(const QString &path, const QString &oldRoot, const QString &newRoot);

/// @p path in the host's form: relative if it is below @p basePath, otherwise unchanged.
[[nodiscard]] QString projectPath(const QString &path, const QString &basePath);
