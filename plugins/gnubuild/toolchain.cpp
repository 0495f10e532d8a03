#include "toolchain.h"
#include <QDir>
#include <QStandardPaths>
using namespace Qt::StringLiterals;

const QList<ToolChain> &toolChains()
{
    static const QList<ToolChain> all = {
        {u"{6bca5f2f-17de-4d7e-b2dd-e693ae57731c}"_s, u"GNU Host"_s, u""_s, u"-march=native"_s, false},
        {u"{4a4905aa-65c2-400d-a8cd-89d2955cfc30}"_s, u"GNU Arm"_s, u"arm-none-eabi-"_s, u"-mcpu=cortex-m3 -mthumb"_s},
        {u"{8f5eeaa5-7523-4d75-a632-bda646b40d4a}"_s, u"GNU AVR"_s, u"avr-"_s, u"-mmcu=atmega328p"_s, true, true},
        {u"{bd60aff8-4b70-4014-b42e-e4075d27866d}"_s, u"GNU RISC-V"_s, u"riscv64-unknown-elf-"_s,
         u"-march=rv32imac -mabi=ilp32"_s},
    };
    return all;
}

const ToolChain *findToolChain(const QString &feature)
{
    for (const ToolChain &each : toolChains()) {
        if (each.feature == feature)
            return &each;
    }
    return nullptr;
}

QString toolPrefix(const ToolChain &toolChain, const QString &wish, const QString &base)
{
    const QString text = wish.trimmed();
    if (text.isEmpty())
        return toolChain.prefix;
    const QString prefix = text.endsWith(u'/') ? text + toolChain.prefix : text;
    return prefix.contains(u'/') ? QDir(base).absoluteFilePath(prefix) : prefix;
}

QStringList extensionsOf(Language language)
{
    switch (language) {
    case Language::C:
        return {u"c"_s};
    case Language::Cpp:
        return {u"cpp"_s, u"cc"_s, u"cxx"_s, u"c++"_s, u"C"_s, u"CPP"_s};
    case Language::Assembler:
        return {u"s"_s, u"asm"_s};
    case Language::PreprocessedAssembler:
        return {u"S"_s, u"sx"_s};
    case Language::None:
        break;
    }
    return {};
}

Language languageOf(QStringView path)
{
    static const QHash<QString, Language> languages = [] {
        QHash<QString, Language> table;
        for (const Language language :
             {Language::C, Language::Cpp, Language::Assembler, Language::PreprocessedAssembler}) {
            for (const QString &extension : extensionsOf(language))
                table.insert(extension, language);
        }
        return table;
    }();
    const QStringView name = path.sliced(path.lastIndexOf(u'/') + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot < 0)
        return Language::None;
    const QStringView suffix = name.sliced(dot + 1);
    return languages.value(QString::fromRawData(suffix.data(), suffix.size()), Language::None);
}

bool isProgram(const QString &program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}
