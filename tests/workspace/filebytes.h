#pragma once
#include <QByteArray>
#include <QFile>

/// Writes a file; a failure ends the test program.
inline void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// The bytes of a file; "unreadable" if it cannot be read.
inline QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}
