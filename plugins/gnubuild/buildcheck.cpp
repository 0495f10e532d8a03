#include "buildcheck.h"
#include "builddescription.h"
#include "ninjafile.h"
#include <QCoreApplication>
#include <QFileInfo>
using namespace Qt::StringLiterals;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(GnuBuild)
};

QStringList neededTools(const BuildDescription &description)
{
    QStringList tools;
    for (const SourceFile &source : description.sources)
        tools += description.compiler(source.language);
    tools.removeDuplicates();
    if (description.target == BuildDescription::Target::Library)
        tools += description.prefix + u"ar"_s;
    if (!description.imageFileName().isEmpty())
        tools += description.prefix + u"objcopy"_s;
    return tools;
}

/// The words of the launcher that are programs; the others set variables.
QStringList launcherPrograms(const BuildDescription &description)
{
    QStringList programs = description.launcher;
    if (programs.contains(u"CCACHE_PREFIX=distcc"_s))
        programs = QStringList{u"ccache"_s, u"distcc"_s};
    return programs;
}

QStringList allFlags(const BuildDescription &description)
{
    return description.flags.c + description.flags.cpp + description.flags.assembler
           + description.flags.preprocessedAssembler + description.linkFlags + description.libraries
           + QStringList{description.prefix, description.postBuild, description.configuration};
}

QStringList textProblems(const BuildDescription &description)
{
    QStringList problems;
    const auto checkPath = [&](const QString &path) {
        if (!isPossibleNinjaPath(path))
            problems += Text::tr("The name '%1' has a character that ninja does not support.").arg(path);
    };
    const auto checkFlags = [&](const QStringList &flags) {
        if (!std::all_of(flags.begin(), flags.end(), isPossibleNinjaValue))
            problems += Text::tr("An option has a line break, which ninja does not support: %1").arg(flags.join(u' '));
    };
    for (const SourceFile &source : description.sources) {
        checkPath(source.path);
        if (source.flags)
            checkFlags(*source.flags);
    }
    checkPath(description.output);
    for (const QString &input : description.linkInputs)
        checkPath(input);
    checkFlags(allFlags(description));
    return problems;
}

} // namespace

QStringList toolProblems(const BuildDescription &description)
{
    QStringList problems;
    if (!isProgram(u"ninja"_s))
        problems += ninjaMissing();
    for (const QString &tool : neededTools(description)) {
        if (!isProgram(tool))
            problems +=
                Text::tr("The program '%1' was not found. Install the tool chain, or set the option \"Tool prefix\".")
                    .arg(tool);
    }
    for (const QString &launcher : launcherPrograms(description)) {
        if (!isProgram(launcher))
            problems +=
                Text::tr("The program '%1' was not found. Install it, or change the option \"Compiler launcher\".")
                    .arg(launcher);
    }
    return problems + textProblems(description);
}

QStringList fileProblems(const BuildDescription &description)
{
    constexpr qsizetype most = 20;
    QStringList needed =
        description.target == BuildDescription::Target::Program ? description.linkInputs : QStringList();
    QStringList problems;
    for (const SourceFile &source : description.sources)
        needed += source.path;
    for (const QString &path : needed) {
        if (!QFileInfo::exists(description.absolute(path)))
            problems += Text::tr("The file '%1' does not exist.").arg(path);
        if (problems.size() == most)
            break;
    }
    return problems;
}

QString ninjaMissing()
{
    return Text::tr("The program 'ninja' was not found. Builds need it; install it.");
}
