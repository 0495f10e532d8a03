#include "ninjafile.h"
#include "builddescription.h"
#include "shellwords.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
using namespace Qt::StringLiterals;

namespace {

struct LanguageRule
{
    Language language;
    QString name;
};

const QList<LanguageRule> &languageRules()
{
    static const QList<LanguageRule> rules = {{Language::C, u"c"_s},
                                              {Language::Cpp, u"cxx"_s},
                                              {Language::Assembler, u"as"_s},
                                              {Language::PreprocessedAssembler, u"cpp_as"_s}};
    return rules;
}

QString ruleName(Language language)
{
    for (const LanguageRule &rule : languageRules()) {
        if (rule.language == language)
            return rule.name;
    }
    return {};
}

QString ninjaWords(const QStringList &words)
{
    return ninjaValue(joinShellWords(words));
}

/// Whether ninja correctly reads this name in a dependency file of the compiler.
bool isReadableDependency(const QString &path)
{
    return std::all_of(path.begin(), path.end(), [](QChar c) {
        return c.unicode() >= 0x80 || c.isLetterOrNumber() || u" $#+,/_:.~(){}%=@[]!-"_s.contains(c);
    });
}

/// A sed pattern that matches a name as the compiler writes it in a dependency file.
QString dependencyPattern(const QString &path)
{
    QString name = path;
    name.replace(u'$', u"$$"_s).replace(u' ', u"\\ "_s).replace(u'#', u"\\#"_s);
    static const QRegularExpression special(uR"(([\\.*^$\[\]|]))"_s);
    return name.replace(special, u"\\\\1"_s);
}

/// Writes the parts of the file in order.
class NinjaWriter
{
public:
    explicit NinjaWriter(const BuildDescription &description) : m_description(description) {}

    QByteArray write()
    {
        header();
        for (const LanguageRule &rule : languageRules()) {
            if (uses(rule.language))
                compileRule(rule);
        }
        m_description.target == BuildDescription::Target::Library ? archiveRule() : linkRule();
        for (const SourceFile &source : m_description.sources)
            compile(source);
        output();
        QStringList last = {m_description.output};
        if (!m_description.imageFileName().isEmpty())
            last += image();
        if (!m_description.eepromFileName().isEmpty())
            last += eeprom();
        if (!m_description.postBuild.isEmpty())
            last += postBuild(last);
        m_text += u"\ndefault"_s + paths(last) + u'\n';
        return m_text.toUtf8();
    }

private:
    static QString paths(const QStringList &list)
    {
        QString text;
        for (const QString &path : list)
            text += u' ' + ninjaPath(path);
        return text;
    }

    bool uses(Language language) const
    {
        const auto &sources = m_description.sources;
        return std::any_of(sources.begin(), sources.end(), [&](const SourceFile &s) { return s.language == language; });
    }

    void variable(const QString &name, const QString &value) { m_text += name + u" = "_s + value + u'\n'; }

    void header()
    {
        m_text +=
            u"# Generated from the project's options, and overwritten when they change. Run ninja in the project's "
            "directory.\n"_s;
        variable(u"ninja_required_version"_s, u"1.10"_s);
        variable(u"builddir"_s, ninjaValue(m_description.configurationDirectory));
    }

    void rule(const QString &name, const QString &command, const QString &description)
    {
        m_text += u"\nrule "_s + name + u'\n';
        variable(u"  command"_s, command);
        variable(u"  description"_s, description);
    }

    void compileRule(const LanguageRule &rule)
    {
        const QString flags = rule.name + u"_flags"_s;
        const bool plain = rule.language == Language::Assembler;
        m_text += u'\n';
        variable(flags, ninjaWords(m_description.flags.of(rule.language)));
        QStringList program = plain ? QStringList() : m_description.launcher;
        program += m_description.compiler(rule.language);
        const QString dependencies = plain ? u" -x assembler"_s : u" -MMD -MF $out.d"_s;
        this->rule(rule.name, ninjaWords(program) + u" $"_s + flags + dependencies + u" -c $in -o $out$and_then"_s,
                   u"Compiling $in"_s);
        if (plain)
            return;
        variable(u"  depfile"_s, u"$out.d"_s);
        variable(u"  deps"_s, u"gcc"_s);
    }

    /// Passes the objects in a response file: a command line with all names may exceed the system's limit.
    void objectsByFile()
    {
        variable(u"  rspfile"_s, u"$out.rsp"_s);
        variable(u"  rspfile_content"_s, u"$in"_s);
    }

    void linkRule()
    {
        const QStringList words = QStringList(m_description.linker()) + m_description.linkFlags;
        QString command = ninjaWords(words);
        if (m_description.makesMap)
            command += u" -Xlinker -Map=$out.map"_s; // a comma in the name would split the argument of -Wl
        command += u" -o $out @$out.rsp"_s;
        if (!m_description.libraries.isEmpty())
            command += u' ' + ninjaWords(m_description.libraries);
        rule(u"link"_s, command, u"Linking $out"_s);
        objectsByFile();
    }

    void archiveRule()
    {
        rule(u"archive"_s,
             u"rm -f $out && "_s + ninjaWords({m_description.prefix + u"ar"_s}) + u" rcs $out @$out.rsp"_s,
             u"Making $out"_s);
        objectsByFile();
    }

    void compile(const SourceFile &source)
    {
        const QString rule = ruleName(source.language);
        m_text += u"\nbuild "_s + ninjaPath(source.object) + u": "_s + rule + u' ' + ninjaPath(source.path);
        if (source.flags)
            m_text += u"\n  "_s + rule + u"_flags = "_s + ninjaWords(*source.flags);
        if (source.language != Language::Assembler && !isReadableDependency(source.path))
            m_text += u"\n  and_then = $ && "_s + ninjaValue(withoutDependency(source));
    }

    /// A command that removes a source from its own dependency file. ninja has it as an input anyway.
    static QString withoutDependency(const SourceFile &source)
    {
        const QString script = u"s|"_s + dependencyPattern(source.path) + u"||"_s;
        return joinShellWords({u"sed"_s, u"-i"_s, script, source.object + u".d"_s});
    }

    void output()
    {
        const bool isLibrary = m_description.target == BuildDescription::Target::Library;
        m_text += u"\n\nbuild "_s + ninjaPath(m_description.output);
        if (m_description.makesMap && !isLibrary)
            m_text += u" |"_s + paths({m_description.mapFileName()});
        m_text += isLibrary ? u": archive"_s : u": link"_s;
        for (const SourceFile &source : m_description.sources)
            m_text += u' ' + ninjaPath(source.object);
        if (!m_description.linkInputs.isEmpty() && !isLibrary)
            m_text += u" |"_s + paths(m_description.linkInputs);
        m_text += u'\n';
    }

    QString image()
    {
        rule(u"image"_s, ninjaWords(m_description.imageCommand()) + u" $in $out"_s, u"Making $out"_s);
        QString name = m_description.imageFileName();
        m_text += u"build"_s + paths({name}) + u": image"_s + paths({m_description.output}) + u'\n';
        return name;
    }

    QString eeprom()
    {
        rule(u"eeprom"_s, ninjaWords(m_description.eepromCommand()) + u" $in $out"_s, u"Making $out"_s);
        QString name = m_description.eepromFileName();
        m_text += u"build"_s + paths({name}) + u": eeprom"_s + paths({m_description.output}) + u'\n';
        return name;
    }

    QString postBuild(const QStringList &inputs)
    {
        QString stamp = m_description.postBuildStamp();
        const QString command = m_description.hookCommand(m_description.postBuild);
        rule(u"post"_s, ninjaValue(command) + u" && touch $out"_s, ninjaValue(m_description.postBuild));
        m_text += u"build"_s + paths({stamp}) + u": post"_s + paths(inputs) + u'\n';
        return stamp;
    }

    const BuildDescription &m_description;
    QString m_text;
};

} // namespace

QByteArray ninjaFile(const BuildDescription &description)
{
    return NinjaWriter(description).write();
}

QByteArray compilationDatabase(const BuildDescription &description)
{
    QJsonArray entries;
    for (const SourceFile &source : description.sources) {
        entries += QJsonObject{{u"directory"_s, description.directory},
                               {u"file"_s, source.path},
                               {u"output"_s, source.object},
                               {u"arguments"_s, QJsonArray::fromStringList(description.compileCommand(source))}};
    }
    return QJsonDocument(entries).toJson();
}

QString ninjaPath(const QString &path)
{
    QString text = path;
    return text.replace(u'$', u"$$"_s).replace(u' ', u"$ "_s).replace(u':', u"$:"_s);
}

QString ninjaValue(const QString &text)
{
    return QString(text).replace(u'$', u"$$"_s);
}

bool isPossibleNinjaPath(const QString &text)
{
    return isPossibleNinjaValue(text) && !text.contains(u'|');
}

bool isPossibleNinjaValue(const QString &text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) { return c == u'\n' || c == u'\r' || c.isNull(); });
}
