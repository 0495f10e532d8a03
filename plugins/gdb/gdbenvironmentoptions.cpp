#include "gdbenvironment.h"
#include "iprojectfile.h"
#include "iprojectfolder.h"
#include "iprojectproperties.h"
#include "propertytext.h"
#include <QDir>

using namespace Qt::StringLiterals;

// What the option text, the properties and the project say about the target.

namespace {
void appendFiles(const QList<IProjectFile *> &files, const QDir &base, QStringList *paths)
{
    for (const auto &file : takeInterfaces(files))
        paths->append(QDir::cleanPath(base.absoluteFilePath(file->path())));
}

void appendFolders(const QList<IProjectFolder *> &folders, const QDir &base, QStringList *paths)
{
    for (const auto &folder : takeInterfaces(folders)) {
        appendFiles(folder->files(), base, paths);
        appendFolders(folder->folders(), base, paths);
    }
}
} // namespace

QString GdbEnvironment::absolute(const QString &path) const
{
    return path.isEmpty() ? path : QDir::cleanPath(QDir(m_project->basePath()).absoluteFilePath(path));
}

/// The option text, overridden by the properties, with absolute paths.
TargetOptions GdbEnvironment::options() const
{
    TargetOptions options;
    QString error;
    applyOptionText(m_optionText, &options, &error);
    const QString configuration = m_project->currentConfiguration();
    const InterfacePtr<IProjectProperties> store(m_project->properties());
    applyProperties([&](const QString &key) { return store->property(key, configuration, false); }, &options);
    for (QString *path : {&options.image, &options.secondImage, &options.svdFile}) {
        path->replace(u"$(Configuration)"_s, configuration).replace(u"$(Project)"_s, m_project->name());
        *path = absolute(*path);
    }
    options.workingDirectory =
        options.workingDirectory.isEmpty() ? m_project->basePath() : absolute(options.workingDirectory);
    for (QString *list : {&options.symbolFiles, &options.sourceDirectories}) {
        QStringList paths = list->split(u';', Qt::SkipEmptyParts);
        for (QString &path : paths)
            path = absolute(path.trimmed());
        *list = paths.join(u';');
    }
    return options;
}

QString GdbEnvironment::findProgram(const TargetOptions &options) const
{
    if (!options.image.isEmpty())
        return options.image;
    const InterfacePtr<IProjectProperties> store(m_project->properties());
    ImageSearch search;
    search.basePath = m_project->basePath();
    search.project = m_project->name();
    search.configuration = m_project->currentConfiguration();
    // The build environment's output, if these properties of it are set.
    if (const QString folder = store->property(u"buildDirectory"_s, search.configuration, false); !folder.isEmpty())
        search.buildDirectory = folder;
    search.name = store->property(u"buildOutputName"_s, search.configuration, false);
    if (search.name.isEmpty())
        search.name = m_project->name();
    return findImage(search);
}

QStringList GdbEnvironment::projectFiles() const
{
    QStringList paths;
    const QDir base(m_project->basePath());
    appendFiles(m_project->files(), base, &paths);
    appendFolders(m_project->folders(), base, &paths);
    return paths;
}

/// Sets what the windows show before the first session.
void GdbEnvironment::setExpectedTarget()
{
    const TargetOptions now = options();
    const ElfImage elf = loadElfImage(findProgram(now));
    const bool emulated =
        now.kind == TargetOptions::Kind::Qemu || (now.kind == TargetOptions::Kind::Automatic && !elf.isNative());
    m_registers.setExpected(expectedRegisters(elf.isValid() ? elf.machine : ElfImage::Arm, elf.wide, now.machine));
    QStringList bad;
    const RegionTable table = parseRegions(now.regions, &bad);
    m_memory.setTable(!table.isEmpty() ? table : emulated ? boardRegions(now.machine) : RegionTable());
    m_memory.setVerify(now.verify);
    m_peripherals.load(now.svdFile, now.readSensitive);
    m_group.setName(now.group);
}
