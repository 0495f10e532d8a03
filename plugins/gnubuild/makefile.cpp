#include "makefile.h"
#include "ninjafile.h"
#include "projectreader.h"
#include "shellwords.h"
#include <QCoreApplication>
#include <QDir>
using namespace Qt::StringLiterals;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(GnuBuild)
};

const QList<Language> Languages = {Language::C, Language::Cpp, Language::Assembler, Language::PreprocessedAssembler};

/// The target that builds a configuration without the libraries of other projects.
QString onlyTarget(const QString &configuration)
{
    return u"only-"_s + configuration;
}

QString cleanTarget(const QString &configuration)
{
    return u"clean-"_s + configuration;
}

/// The names of all targets of a configuration that are not files.
QStringList phonyTargets(const QString &configuration)
{
    return {configuration, onlyTarget(configuration), cleanTarget(configuration)};
}

/// A command in a recipe.
QString recipe(const QString &command)
{
    return u'\t' + QString(command).replace(u'$', u"$$"_s) + u'\n';
}

QString prerequisites(const QStringList &names)
{
    QString text;
    for (const QString &name : names)
        text += u' ' + makePrerequisite(name);
    return text;
}

QString rule(const QString &target, const QStringList &names, const QString &recipes)
{
    return u'\n' + makeTarget(target) + u':' + prerequisites(names) + u'\n' + recipes;
}

QString dependencyFile(const SourceFile &source)
{
    return source.object + u".d"_s;
}

/// @p text as a part of a variable's name. Different texts give different names.
QString variablePart(const QString &text)
{
    QString result;
    for (const char c : text.toUtf8()) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
            result += QLatin1Char(c);
        else
            result += u'_' + QString::number(uchar(c), 16).rightJustified(2, u'0');
    }
    return result;
}

/// Writes the rules of one configuration.
class PartWriter
{
public:
    PartWriter(const Makefile &makefile, const MakefilePart &part)
        : m_makefile(makefile), m_part(part), m_description(part.description)
    {}

    QString write()
    {
        m_text += u"\n# Configuration "_s + m_description.configuration + u'\n';
        variables();
        for (const SourceFile &source : m_description.sources)
            compile(source);
        m_description.target == BuildDescription::Target::Library ? archive() : link();
        if (!m_description.imageFileName().isEmpty())
            convert(m_description.imageFileName(), m_description.imageCommand());
        if (!m_description.eepromFileName().isEmpty())
            convert(m_description.eepromFileName(), m_description.eepromCommand());
        postBuild();
        phony();
        clean();
        return m_text;
    }

private:
    QString variableName(const QString &name) const { return variablePart(m_description.configuration) + u'_' + name; }

    QString flagsVariable(Language language) const
    {
        static const QMap<Language, QString> names = {{Language::C, u"c_flags"_s},
                                                      {Language::Cpp, u"cxx_flags"_s},
                                                      {Language::Assembler, u"as_flags"_s},
                                                      {Language::PreprocessedAssembler, u"cpp_as_flags"_s}};
        return variableName(names.value(language));
    }

    void variables()
    {
        const auto &sources = m_description.sources;
        for (const Language language : Languages) {
            if (std::any_of(sources.begin(), sources.end(),
                            [&](const auto &each) { return each.language == language; }))
                m_text += flagsVariable(language) + u" := "_s
                          + makeValue(joinShellWords(m_description.flags.of(language))) + u'\n';
        }
        m_text += variableName(u"objects"_s) + u" :="_s;
        for (const SourceFile &source :
             sources) // a blank is escaped alike for make and in the compiler's list of files
            m_text += u" \\\n    "_s + makeValue(source.object).replace(u' ', u"\\ "_s);
        m_text += u'\n' + variableName(u"list"_s) + u" := "_s
                  + makeValue(m_description.configurationDirectory + u"/make.rsp"_s) + u'\n';
    }

    QString launcher() const
    {
        const QString hosts = m_description.distccHosts;
        QString words = joinShellWords(m_description.launcher);
        if (!hosts.isNull())
            words.prepend(u"DISTCC_HOSTS="_s + quoteShellWord(hosts) + u' ');
        return words.isEmpty() ? words : words + u' ';
    }

    static QString makeDirectoryOf(const QString &file)
    {
        return u"\t@"_s + recipe(joinShellWords({u"mkdir"_s, u"-p"_s, QFileInfo(file).path()})).sliced(1);
    }

    /// A variable of make cannot be passed through recipe().
    QString flagsOf(const SourceFile &source) const
    {
        return source.flags ? joinShellWords(*source.flags).replace(u'$', u"$$"_s)
                            : u"$("_s + flagsVariable(source.language) + u')';
    }

    void compile(const SourceFile &source)
    {
        const bool plain = source.language == Language::Assembler;
        const QString compiler =
            (plain ? QString() : launcher()) + quoteShellWord(m_description.compiler(source.language));
        const QStringList dependencies = {
            u"-MMD"_s, u"-MP"_s, u"-MF"_s, dependencyFile(source), u"-MT"_s, makeTarget(source.object)};
        const QStringList files = {u"-c"_s, source.path, u"-o"_s, source.object};
        const QStringList words = (plain ? QStringList{u"-x"_s, u"assembler"_s} : dependencies) + files;
        QStringList needed = {source.path, m_makefile.fileName};
        QString recipes = makeDirectoryOf(source.object) + recipe(compiler).chopped(1) + u' ' + flagsOf(source) + u' '
                          + recipe(joinShellWords(words)).sliced(1);
        if (!plain) {
            needed += dependencyFile(source);
            recipes += u"\t@"_s + recipe(joinShellWords({u"touch"_s, source.object})).sliced(1);
        }
        m_text += rule(source.object, needed, recipes);
        if (!plain)
            m_text += makeTarget(dependencyFile(source)) + u": ;\n-include "_s
                      + makePrerequisite(dependencyFile(source)) + u'\n';
    }

    /// The objects are passed in a file, because a command with all names may exceed the system's limit.
    QString writeList() const
    {
        return u"\t$(if $(dry_run),,$(file >$(%1),$(%2)))\n"_s.arg(variableName(u"list"_s), variableName(u"objects"_s));
    }

    QString listArgument() const { return u'@' + m_description.configurationDirectory + u"/make.rsp"_s; }

    void outputRule(const QStringList &needed, const QString &command)
    {
        m_text += u'\n' + makeTarget(m_description.output) + u": $("_s + variableName(u"objects"_s) + u')'
                  + prerequisites(needed + QStringList(m_makefile.fileName)) + u'\n'
                  + makeDirectoryOf(m_description.output) + writeList() + recipe(command);
    }

    void link()
    {
        QStringList words = QStringList(m_description.linker()) + m_description.linkFlags;
        if (m_description.makesMap)
            words += {u"-Xlinker"_s, u"-Map="_s + m_description.mapFileName()};
        words += QStringList{u"-o"_s, m_description.output, listArgument()} + m_description.libraries;
        outputRule(m_description.linkInputs, joinShellWords(words));
    }

    void archive()
    {
        const QStringList words = {m_description.prefix + u"ar"_s, u"rcs"_s, m_description.output, listArgument()};
        outputRule({}, joinShellWords({u"rm"_s, u"-f"_s, m_description.output}) + u" && "_s + joinShellWords(words));
    }

    void convert(const QString &file, const QStringList &command)
    {
        m_text += rule(file, {m_description.output},
                       recipe(joinShellWords(command + QStringList{m_description.output, file})));
    }

    /// The files that a build makes at the end.
    QStringList results() const
    {
        QStringList files = {m_description.output, m_description.imageFileName(), m_description.eepromFileName()};
        files.removeAll(QString());
        return files;
    }

    void postBuild()
    {
        if (m_description.postBuild.isEmpty())
            return;
        const QString stamp = m_description.postBuildStamp();
        m_text += rule(stamp, results(),
                       recipe(m_description.hookCommand(m_description.postBuild))
                           + recipe(joinShellWords({u"touch"_s, stamp})));
    }

    QStringList goals() const
    {
        return m_description.postBuild.isEmpty() ? results() : QStringList(m_description.postBuildStamp());
    }

    /// Runs make again in this directory, or in that of another project.
    static QString callMake(const QStringList &options, const QStringList &targets)
    {
        return u"\t$(MAKE) "_s + recipe(joinShellWords(options + targets)).sliced(1);
    }

    QStringList sameFile() const { return {u"--no-print-directory"_s, u"-f"_s, m_makefile.fileName}; }

    void phony()
    {
        const QString name = m_description.configuration;
        m_text += u"\n.PHONY:"_s + prerequisites(phonyTargets(name)) + u'\n';
        QString recipes;
        for (const UsedMakefile &used : m_part.used)
            recipes += callMake({u"-C"_s, used.directory, u"-f"_s, used.file}, {onlyTarget(name)});
        if (recipes.isEmpty())
            m_text += rule(name, {onlyTarget(name)}, {});
        else
            m_text += rule(name, {}, recipes + callMake(sameFile(), {onlyTarget(name)}));
        if (m_description.preBuild.isEmpty())
            m_text += rule(onlyTarget(name), goals(), {});
        else // a separate run, which sees the files that the command has changed
            m_text += rule(onlyTarget(name), {},
                           recipe(m_description.hookCommand(m_description.preBuild)) + callMake(sameFile(), goals()));
    }

    /// Removes files that a build has made in the directory of the configuration, and no others.
    void clean()
    {
        constexpr qsizetype chunk = 100; // names in a command
        QStringList files = results()
                            + QStringList{m_description.mapFileName(), m_description.postBuildStamp(),
                                          m_description.configurationDirectory + u"/make.rsp"_s};
        for (const SourceFile &source : m_description.sources)
            files += {source.object, dependencyFile(source)};
        files.removeIf(
            [this](const QString &file) { return !file.startsWith(m_description.configurationDirectory + u'/'); });
        QString recipes;
        for (qsizetype i = 0; i < files.size(); i += chunk)
            recipes += recipe(u"rm -f "_s + joinShellWords(files.mid(i, chunk)));
        m_text += rule(cleanTarget(m_description.configuration), {}, recipes);
    }

    const Makefile &m_makefile;
    const MakefilePart &m_part;
    const BuildDescription &m_description;
    QString m_text;
};

QString relativeWord(const QString &word, const QString &directory, const QDir &base)
{
    const QString option = word.startsWith(u"-L"_s) ? u"-L"_s : u""_s;
    const QString path = word.sliced(option.size());
    return path == directory || path.startsWith(directory + u'/') ? option + base.relativeFilePath(path) : word;
}

/// The names of files that make reads or writes for @p description.
QStringList fileNames(const BuildDescription &description)
{
    QStringList names = QStringList{description.configurationDirectory, description.output} + description.linkInputs;
    for (const SourceFile &source : description.sources)
        names += source.path;
    return names;
}

/// All texts in commands and comments, which cannot contain line breaks.
QStringList commandTexts(const MakefilePart &part)
{
    const BuildDescription &description = part.description;
    QStringList texts = {description.project, description.preBuild, description.postBuild, description.distccHosts,
                         description.prefix};
    texts += description.flags.c + description.flags.cpp + description.flags.assembler
             + description.flags.preprocessedAssembler + description.linkFlags + description.libraries;
    for (const SourceFile &source : description.sources)
        texts += source.flags.value_or(QStringList());
    for (const UsedMakefile &used : part.used)
        texts += {used.directory, used.file};
    return texts;
}

/// A configuration is a target, so it cannot have the name of another target or of a file.
bool isPossibleConfiguration(const Makefile &makefile, const MakefilePart &part)
{
    const QString name = part.description.configuration;
    QStringList taken = fileNames(part.description) + QStringList{u"all"_s, u"clean"_s, makefile.fileName};
    for (const MakefilePart &other : makefile.parts)
        taken += phonyTargets(other.description.configuration) + fileNames(other.description);
    const QStringList wanted = phonyTargets(name);
    const auto isTaken = [&](const QString &target) { return taken.contains(target); };
    return isPossibleMakeName(name) && !name.startsWith(u'.') && !name.startsWith(u'-') && !name.contains(u'/')
           && std::none_of(wanted.begin(), wanted.end(), isTaken);
}

} // namespace

QString Makefile::text() const
{
    QString text = u"# Makefile of the project '%1', written by the command \"Generate Makefile\" from the project's "
                   "options.\n"_s.arg(project);
    text += u"# The command overwrites this file. Run GNU make in this directory: \"make CONFIGURATION\", \"make\" for "
            "all configurations,\n# \"make clean-CONFIGURATION\", \"make clean\". \"only-CONFIGURATION\" leaves out "
            "the libraries of other projects.\n\n"_s;
    text += u".SUFFIXES:\n.DELETE_ON_ERROR:\nMAKEFLAGS += --no-builtin-rules\nhash := \\#\n"_s;
    text += u"dry_run := $(findstring n,$(filter-out --%,$(firstword $(MAKEFLAGS))))\n"_s;
    QStringList names;
    QStringList cleans;
    for (const MakefilePart &part : parts) {
        names += part.description.configuration;
        cleans += cleanTarget(part.description.configuration);
    }
    text += u"\n.PHONY: all clean\n"_s + rule(u"all"_s, names, {}) + rule(u"clean"_s, cleans, {});
    for (const MakefilePart &part : parts)
        text += PartWriter(*this, part).write();
    return text;
}

QString makefileName(const QString &project, const QString &directory)
{
    return sharesItsDirectory(directory) ? project + u".mk"_s : u"Makefile"_s;
}

QStringList makefileProblems(const Makefile &makefile, const MakefilePart &part)
{
    QStringList problems;
    for (const QString &name : fileNames(part.description) + QStringList(makefile.fileName)) {
        if (!isPossibleMakeName(name))
            problems += Text::tr("The name '%1' has a character that make does not support.").arg(name);
    }
    for (const QString &text : commandTexts(part)) {
        if (!isPossibleNinjaValue(text))
            problems += Text::tr("An option has a line break, which make does not support: %1").arg(text);
    }
    if (!isPossibleConfiguration(makefile, part))
        problems += Text::tr("A Makefile cannot have a target with the name '%1'. Rename the configuration.")
                        .arg(part.description.configuration);
    return problems;
}

void useRelativePaths(BuildDescription &description, const QString &directory)
{
    const QDir base(description.directory);
    for (QStringList *words : {&description.linkFlags, &description.libraries, &description.linkInputs}) {
        for (QString &word : *words)
            word = relativeWord(word, directory, base);
    }
}

bool isPossibleMakeName(const QString &text)
{
    const auto isPossible = [](QChar c) { return c >= u' ' && c != u'\x7f' && !u"*?[]:;=|\\&'\""_s.contains(c); };
    return !text.isEmpty() && !text.startsWith(u'~') && !text.startsWith(u' ') && !text.endsWith(u' ')
           && !text.endsWith(u')') && std::all_of(text.begin(), text.end(), isPossible);
}

QString makeTarget(const QString &name)
{
    return makePrerequisite(name).replace(u'%', u"\\%"_s);
}

QString makePrerequisite(const QString &name)
{
    return QString(name).replace(u'$', u"$$"_s).replace(u' ', u"\\ "_s).replace(u'#', u"\\#"_s);
}

QString makeValue(const QString &text)
{
    return QString(text).replace(u'$', u"$$"_s).replace(u'#', u"$(hash)"_s);
}
