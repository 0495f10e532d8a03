// Any bytes as a project file: the file is refused, or loaded; then saving, loading and saving gives the same text.
#include "project.h"
#include <QFile>
#include <QTemporaryDir>
using namespace Qt::StringLiterals;

namespace {

bool loadBytes(Project &project, const QByteArray &bytes)
{
    static const QTemporaryDir directory;
    static const QString fileName = directory.filePath(u"fuzz.vnp"_s);
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("Cannot write the input.");
    file.close();
    return project.load(fileName);
}

void checkRoundTrip(const Project &project)
{
    const QString text = project.toXml();
    Project again({}, {});
    if (!loadBytes(again, text.toUtf8()))
        qFatal("The saved text cannot be loaded.");
    if (again.toXml() != text)
        qFatal("Saving again gives another text.");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    Project project({}, {});
    if (loadBytes(project, bytes))
        checkRoundTrip(project);
    if (project.loadFromXml(QString::fromUtf8(bytes))) // into the loaded project
        checkRoundTrip(project);
    return 0;
}
