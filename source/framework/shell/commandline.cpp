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
        bool isPort = false;
        if (isOption(arguments[i], u'r')) {
            if (++i == count)
                return false;
            target.startServer(arguments[i].toUShort(nullptr, 10));
            isPort = true;
            // The next argument is still handled below, so that "-r -p file" serves on port 0 and opens the file.
        }
        const bool project = isOption(arguments[i], u'p');
        if (!project && !isOption(arguments[i], u'w')) {
            if (!isPort && QFileInfo::exists(arguments[i]))
                target.openNamed(absolutePath(arguments[i]));
            continue;
        }
        if (++i == count)
            return false;
        const QString path = absolutePath(arguments[i]);
        project ? target.openProject(path) : target.openWorkspace(path);
        return true;
    }
    return true;
}

QString commandLineAnswer(const QStringList &arguments, const QString &version)
{
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        if (arguments[i] == "--version"_L1)
            return u"Varnel %1\n"_s.arg(version);
        if (arguments[i] == "--help"_L1)
            return QStringLiteral( // printed before the language is known, as by the other tools of a terminal
                "Usage: varnel [OPTION]... [FILE]... [DIRECTORY]\n"
                "Opens files, workspaces (.vnw) and projects (.vnp). A directory stands for the workspace "
                "or project in it.\n\n"
                "  -w FILE     open a workspace; further arguments are ignored\n"
                "  -p FILE     open a project; further arguments are ignored\n"
                "  -r PORT     let test drivers connect to PORT; 0 is any free port\n"
                "  --help      print this text and end\n"
                "  --version   print the version and end\n");
        if (isOption(arguments[i], u'p') || isOption(arguments[i], u'w'))
            return {}; // what follows their argument is ignored
        if (isOption(arguments[i], u'r'))
            ++i;
    }
    return {};
}

QString commandLineUsage()
{
    return QObject::tr("Incorrect options were specified.\n\nUsage: varnel [option]\nOptions:\n"
                       "-p <project file>\\Varnel opens the specified project\n");
}
