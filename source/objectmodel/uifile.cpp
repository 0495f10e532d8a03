#include "uifile.h"
#include "wholefile.h"
#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QtUiTools/QUiLoader>
#include <QXmlStreamReader>

namespace {

/// The loader calls itself for each element within another one, so that the stack limits their depth.
bool isTooDeep(const QByteArray &xml)
{
    constexpr int MaximumDepth = 500;
    QXmlStreamReader reader(xml);
    for (int depth = 0; !reader.atEnd();) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && ++depth > MaximumDepth)
            return true;
        if (token == QXmlStreamReader::EndElement)
            --depth;
    }
    return false;
}

} // namespace

QWidget *loadUiFile(const QString &path)
{
    constexpr qint64 MaximumSize = qint64(16) * 1024 * 1024;
    if (QFileInfo(path).size() > MaximumSize)
        return nullptr;
    std::optional<QByteArray> content = readFile(path);
    if (!content || isTooDeep(*content))
        return nullptr;
    QBuffer buffer(&*content);
    QUiLoader loader;
    loader.setWorkingDirectory(QFileInfo(path).dir());
    return buffer.open(QIODevice::ReadOnly) ? loader.load(&buffer) : nullptr;
}

QWidget *createUiWidget(const QString &className, const QString &objectName)
{
    return QUiLoader().createWidget(className, nullptr, objectName);
}
