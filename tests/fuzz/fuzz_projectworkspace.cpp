// Any bytes as a workspace file: the file is refused, or loaded; then saving, loading and saving gives the same text.
#include "project.h"
#include "projectworkspace.h"
#include <QFile>
#include <QTemporaryDir>
using namespace Qt::StringLiterals;

namespace {

QString fileNameInTemporaryDirectory(const QString &name)
{
    static const QTemporaryDir directory;
    return directory.filePath(name);
}

void write(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("Cannot write the input.");
}

QByteArray read(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QString fileName = fileNameInTemporaryDirectory(u"fuzz.vnw"_s);
    write(fileNameInTemporaryDirectory(u"a.vnp"_s), "<project/>"); // for inputs that refer to it
    write(fileName, QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    ProjectWorkspace workspace;
    if (!workspace.load(fileName))
        return 0;
    if (!workspace.save())
        qFatal("The workspace cannot be saved.");
    const QByteArray saved = read(fileName);
    if (!workspace.load(fileName) || !workspace.save() || read(fileName) != saved)
        qFatal("Saving again gives another text.");
    return 0;
}
