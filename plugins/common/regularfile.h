#pragma once
#include <QFile>
#include <QFileInfo>

/// Opens @p file for reading if it is a regular file: to open a pipe may block, and a device may never end.
[[nodiscard]] inline bool openRegularFile(QFile &file, QIODevice::OpenMode mode = QIODevice::ReadOnly)
{
    return QFileInfo(file.fileName()).isFile() && file.open(mode);
}
