#include "commandline.h"
#include <QFileInfo>
#include <QObject>

using namespace Qt::StringLiterals;

namespace {
bool isOption(const QString &argument, QChar letter)
{
    return argument == u'-' + QString(letter) || argument == u'/' + QString(letter);
}

QString absolutePath(const QString &path)
{
    return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
}
} // namespace

bool walkCommandLine(const QStringList &arguments, CommandLineTarget &target)
{
    const auto count = arguments.size();
    for (qsizetype i = 1; i < count; ++i) {
        if (isOption(arguments[i], u'r')) {
            if (++i == count)
                return false;
            target.startServer(arguments[i].toUShort(nullptr, 10));
            // The next argument is still handled below, so that "-r -p file" serves on port 0 and opens the file.
        }
        const bool project = isOption(arguments[i], u'p');
        if (!project && !isOption(arguments[i], u'w'))
            continue;
        if (++i == count)
            return false;
        const QString path = absolutePath(arguments[i]);
        project ? target.openProject(path) : target.openWorkspace(path);
        return true;
    }
    return true;
}

QString commandLineUsage()
{
    return QObject::tr("Incorrect options were specified.\n\nUsage: varnel [option]\nOptions:\n"
                       "-p <project file>\\Varnel opens the specified project\n");
}
