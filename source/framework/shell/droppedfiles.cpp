#include "droppedfiles.h"
#include <QMimeData>
#include <QUrl>

using namespace Qt::StringLiterals;

QStringList droppedFiles(const QMimeData &data)
{
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    const QString text = data.text();
    if (!files.isEmpty() || !text.startsWith("file:"_L1))
        return files;
    const QString local = QUrl(text.trimmed()).toLocalFile().trimmed();
    if (!local.isEmpty())
        return {local};
    QString path = text.mid(5).trimmed();
    if (path.startsWith("///"_L1))
        path.remove(0, 3);
    return path.isEmpty() ? QStringList() : QStringList(path);
}
