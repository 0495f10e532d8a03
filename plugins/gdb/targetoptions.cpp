#include "targetoptions.h"
#include <QCoreApplication>
#include <variant>

using namespace Qt::StringLiterals;

namespace {
using Kind = TargetOptions::Kind;
using Field = std::variant<QString TargetOptions::*, int TargetOptions::*, bool TargetOptions::*>;

struct Key
{
    QString name;
    Field field;
};

const QList<Key> &keys()
{
    static const QList<Key> table = {
        {u"image"_s, &TargetOptions::image},
        {u"gdb"_s, &TargetOptions::gdb},
        {u"machine"_s, &TargetOptions::machine},
        {u"qemu"_s, &TargetOptions::qemu},
        {u"qemuArguments"_s, &TargetOptions::qemuArguments},
        {u"uart"_s, &TargetOptions::uart},
        {u"semihosting"_s, &TargetOptions::semihosting},
        {u"secondImage"_s, &TargetOptions::secondImage},
        {u"address"_s, &TargetOptions::address},
        {u"server"_s, &TargetOptions::server},
        {u"tclPort"_s, &TargetOptions::tclPort},
        {u"load"_s, &TargetOptions::load},
        {u"resetCommand"_s, &TargetOptions::resetCommand},
        {u"leaveRunning"_s, &TargetOptions::leaveRunning},
        {u"arguments"_s, &TargetOptions::arguments},
        {u"environment"_s, &TargetOptions::environment},
        {u"workingDirectory"_s, &TargetOptions::workingDirectory},
        {u"processId"_s, &TargetOptions::processId},
        {u"runTo"_s, &TargetOptions::runTo},
        {u"regions"_s, &TargetOptions::regions},
        {u"sourceDirectories"_s, &TargetOptions::sourceDirectories},
        {u"symbolFiles"_s, &TargetOptions::symbolFiles},
        {u"commands"_s, &TargetOptions::commands},
        {u"svdFile"_s, &TargetOptions::svdFile},
        {u"tasks"_s, &TargetOptions::tasks},
        {u"readSensitive"_s, &TargetOptions::readSensitive},
        {u"callFunctions"_s, &TargetOptions::callFunctions},
        {u"catchFaults"_s, &TargetOptions::catchFaults},
        {u"group"_s, &TargetOptions::group},
        {u"timeLimit"_s, &TargetOptions::timeLimit},
        {u"verify"_s, &TargetOptions::verify},
        {u"rtt"_s, &TargetOptions::rtt},
    };
    return table;
}

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(TargetOptions)
};

bool isTrue(const QString &text)
{
    return text == u"1" || text.compare(u"true", Qt::CaseInsensitive) == 0
           || text.compare(u"yes", Qt::CaseInsensitive) == 0;
}

bool setField(const Field &field, const QString &text, TargetOptions *options)
{
    if (const auto *string = std::get_if<QString TargetOptions::*>(&field)) {
        options->*(*string) = text;
        return true;
    }
    if (const auto *flag = std::get_if<bool TargetOptions::*>(&field)) {
        options->*(*flag) = isTrue(text);
        return true;
    }
    bool valid = false;
    const int value = text.toInt(&valid);
    if (valid)
        options->*std::get<int TargetOptions::*>(field) = value;
    return valid;
}

bool setKind(const QString &name, TargetOptions *options)
{
    static const QMap<QString, Kind> kinds = {{u"auto"_s, Kind::Automatic},
                                              {u"native"_s, Kind::Native},
                                              {u"qemu"_s, Kind::Qemu},
                                              {u"remote"_s, Kind::Remote}};
    if (!kinds.contains(name))
        return false;
    options->kind = kinds.value(name);
    return true;
}

/// Reads a target such as "qemu:lm3s6965evb".
bool setTarget(const QString &text, TargetOptions *options)
{
    const qsizetype colon = text.indexOf(u':');
    if (!setKind(text.left(colon).trimmed().toLower(), options))
        return false;
    const QString what = colon < 0 ? QString() : text.mid(colon + 1).trimmed();
    if (what.isEmpty())
        return true;
    if (options->kind == Kind::Qemu)
        options->machine = what;
    else if (options->kind == Kind::Remote)
        options->address = what;
    else
        options->image = what;
    return true;
}

bool setPair(const QString &text, TargetOptions *options)
{
    const qsizetype equals = text.indexOf(u'=');
    const QString name = text.left(equals).trimmed();
    for (const Key &key : keys()) {
        if (key.name.compare(name, Qt::CaseInsensitive) == 0)
            return setField(key.field, text.mid(equals + 1).trimmed(), options);
    }
    return false;
}
} // namespace

QStringList optionKeys()
{
    QStringList names;
    for (const Key &key : keys())
        names.append(key.name);
    return names;
}

bool applyOptionText(const QString &text, TargetOptions *options, QString *error)
{
    const QStringList parts = text.split(u';', Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const bool pair = part.contains(u'=');
        if (part.trimmed().isEmpty() || (pair ? setPair(part, options) : setTarget(part.trimmed(), options)))
            continue;
        *error = Text::tr("The debugger option '%1' is invalid.").arg(part.trimmed());
        return false;
    }
    return true;
}

void applyProperties(const std::function<QString(const QString &)> &property, TargetOptions *options)
{
    if (const QString kind = property(u"gdbTarget"_s); !kind.isNull())
        setKind(kind, options);
    for (const Key &key : keys()) {
        const QString value = property(u"gdb"_s + key.name.at(0).toUpper() + key.name.mid(1));
        if (!value.isNull())
            setField(key.field, value, options);
    }
}
