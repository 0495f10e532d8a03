#include "uptodate.h"
#include "buildrun.h"
#include "ninjafile.h"
#include "textoutput.h"

bool isBuilt(const BuildDescription &description)
{
    constexpr int patience = 30000; // ms
    if (!hasContents(description.absolute(description.ninjaFileName()), ninjaFile(description)))
        return false;
    const ToolProcess::Command command = ninjaCommand(description, {QStringLiteral("-n")});
    QProcess ninja;
    ninja.setProcessEnvironment(command.environment);
    ninja.setWorkingDirectory(command.directory);
    ninja.start(command.program, command.arguments, QIODevice::ReadOnly);
    if (ninja.waitForFinished(patience))
        return ninja.exitCode() == 0 && ninja.readAllStandardOutput().contains("ninja: no work to do.");
    ninja.kill();
    ninja.waitForFinished();
    return false;
}
