#include "filestamp.h"
#include "wholefile.h"
#include <QFileInfo>

namespace {
bool leaveCopy(const QString &path)
{
    if (!QFileInfo::exists(path))
        return true;
    const std::optional<QByteArray> bytes = readFile(path);
    return bytes && writeFileSafely(path + u'~', *bytes);
}
} // namespace

bool FileStamp::isOlderThan(const QString &path) const
{
    const QFileInfo info(path);
    return modified.isValid() && info.exists() && info.lastModified() > modified;
}

bool writeProjectFile(const QString &path, const QString &xml, FileStamp &stamp)
{
    if ((stamp.isForeign && !leaveCopy(path)) || !writeFileSafely(path, xml.toUtf8()))
        return false;
    stamp = {QFileInfo(path).lastModified(), false};
    return true;
}
