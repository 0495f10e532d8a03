#include "builddescription.h"
#include "shellwords.h"
#include <QDir>
using namespace Qt::StringLiterals;

namespace {

/// @p text with "%" and two digits for each byte for which @p isPlain is false.
QString encoded(const QString &text, bool (*isPlain)(char))
{
    QString result;
    for (const char c : text.toUtf8()) {
        if (isPlain(c))
            result += QLatin1Char(c);
        else
            result += u'%' + QString::number(uchar(c), 16).rightJustified(2, u'0');
    }
    return result;
}

bool isLetterOrDigit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

QString withoutElf(const QString &program)
{
    return program.endsWith(u".elf"_s) ? program.chopped(4) : program;
}

} // namespace

const QStringList &LanguageFlags::of(Language language) const
{
    switch (language) {
    case Language::C:
        return c;
    case Language::Cpp:
        return cpp;
    case Language::PreprocessedAssembler:
        return preprocessedAssembler;
    default:
        return assembler;
    }
}

QString BuildDescription::ninjaFileName() const
{
    return configurationDirectory + u"/build.ninja"_s;
}

QString BuildDescription::imageFileName() const
{
    if (image == Image::None || target != Target::Program)
        return {};
    return withoutElf(output) + (image == Image::Hex ? u".hex"_s : u".bin"_s);
}

QString BuildDescription::eepromFileName() const
{
    return makesEeprom && !imageFileName().isEmpty() ? withoutElf(output) + u".eep"_s : QString();
}

QString BuildDescription::postBuildStamp() const
{
    return configurationDirectory + u"/postbuild.stamp"_s;
}

QString BuildDescription::compiler(Language language) const
{
    return prefix + (language == Language::Cpp ? u"g++"_s : u"gcc"_s);
}

QString BuildDescription::linker() const
{
    const bool hasCpp = std::any_of(sources.begin(), sources.end(),
                                    [](const SourceFile &source) { return source.language == Language::Cpp; });
    return compiler(hasCpp ? Language::Cpp : Language::C);
}

const QStringList &BuildDescription::flagsOf(const SourceFile &source) const
{
    return source.flags ? *source.flags : flags.of(source.language);
}

QStringList BuildDescription::compileCommand(const SourceFile &source) const
{
    QStringList words = QStringList(compiler(source.language)) + flagsOf(source);
    if (source.language == Language::Assembler)
        words += {u"-x"_s, u"assembler"_s};
    return words + QStringList{u"-c"_s, source.path, u"-o"_s, source.object};
}

QStringList BuildDescription::imageCommand() const
{
    QStringList words = {prefix + u"objcopy"_s, u"-O"_s, image == Image::Hex ? u"ihex"_s : u"binary"_s};
    if (makesEeprom) {
        for (const char *section : {".eeprom", ".fuse", ".lock", ".signature", ".user_signatures"})
            words += {u"-R"_s, QString::fromLatin1(section)};
    }
    return words;
}

QStringList BuildDescription::eepromCommand() const
{
    return {prefix + u"objcopy"_s,
            u"-O"_s,
            u"ihex"_s,
            u"-j"_s,
            u".eeprom"_s,
            u"--set-section-flags=.eeprom=alloc,load"_s,
            u"--no-change-warnings"_s,
            u"--change-section-lma"_s,
            u".eeprom=0"_s};
}

QString BuildDescription::hookCommand(const QString &command) const
{
    return u"OUTPUT="_s + quoteShellWord(output) + u" BUILD_DIRECTORY="_s + quoteShellWord(configurationDirectory)
           + u" CONFIGURATION="_s + quoteShellWord(configuration) + u" sh -c "_s + quoteShellWord(command);
}

QString BuildDescription::absolute(const QString &path) const
{
    return QDir::cleanPath(QDir(directory).absoluteFilePath(path));
}

QString objectFileName(const QString &directory, const QString &source)
{
    QString place =
        encoded(source, [](char c) { return isLetterOrDigit(c) || c == '_' || c == '.' || c == '-' || c == '/'; });
    qsizetype start = 0;
    if (place.startsWith(u'/')) {
        place.prepend(u"%root"_s);
        start = place.indexOf(u'/') + 1; // cleaning the path does not remove ".." after the root
    }
    for (qsizetype i = start; QStringView(place).sliced(i).startsWith(u"../"); i += 4)
        place.replace(i, 2, u"%up"_s);
    return directory + u"/obj/"_s + place + u".o"_s;
}

QString configurationDirectoryName(const QString &configuration)
{
    QString name = configuration;
    name.replace(u'%', u"%25"_s).replace(u'/', u"%2F"_s);
    if (name.isEmpty() || name.startsWith(u'.'))
        name = u"%2E"_s + name.mid(1);
    return name;
}

QString withoutLeadingDash(const QString &path, const QString &directory)
{
    return path.startsWith(u'-') ? QDir::cleanPath(QDir(directory).absoluteFilePath(path)) : path;
}

bool isInside(const QString &path, const QString &directory)
{
    const QString parent = QFileInfo(QFileInfo(path).path()).canonicalFilePath();
    const QString root = QFileInfo(directory).canonicalFilePath();
    return !root.isEmpty() && (parent == root || parent.startsWith(root + u'/'));
}

int distccSlots(const QString &hosts)
{
    constexpr int usual = 4;   // distcc's default for a host without a limit
    constexpr int most = 1000; // for one host
    int sum = 0;
    for (const QString &host : hosts.split(u' ', Qt::SkipEmptyParts)) {
        if (host.startsWith(u"--"_s) || host.startsWith(u'+'))
            continue; // options of distcc in the list of hosts
        const QString limit = host.section(u',', 0, 0).section(u'/', 1);
        const int slots = limit.toInt();
        sum += slots > 0 ? std::min(slots, most) : usual;
    }
    return sum;
}
