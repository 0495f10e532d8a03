#include "lastdirectories.h"
#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

LastDirectories::LastDirectories(QSettings *settings, QString documents)
    : m_settings(settings), m_documents(std::move(documents))
{}

QString LastDirectories::directory(const QString &kind) const
{
    const QString stored = m_settings->value(u"Paths/"_s + kind).toString();
    return QFileInfo(stored).isDir() ? stored : m_documents;
}

void LastDirectories::setDirectory(const QString &kind, const QString &directory)
{
    m_settings->setValue(u"Paths/"_s + kind, directory);
}

void LastDirectories::remember(const QString &kind, const QString &file)
{
    setDirectory(kind, QFileInfo(file).absolutePath());
}

QString sourceFilter(const QStringList &extensions)
{
    QString patterns = u"*.c *.cpp *.h"_s;
    for (const QString &extension : extensions)
        patterns += u" *."_s + extension;
    return QObject::tr("Source Files (%1);;Python Files (*.py);;All Files (*.*)").arg(patterns);
}
