#include "livememory.h"
#include "formattedexpression.h"
#include "gdbsession.h"
#include "memoryaccess.h"
#include <bit>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {
/// A character like gdb's, with its escapes.
QString characterText(uchar letter)
{
    switch (letter) {
    case '\a':
        return u"\\a"_s;
    case '\b':
        return u"\\b"_s;
    case '\t':
        return u"\\t"_s;
    case '\n':
        return u"\\n"_s;
    case '\v':
        return u"\\v"_s;
    case '\f':
        return u"\\f"_s;
    case '\r':
        return u"\\r"_s;
    case '\'':
    case '\\':
        return u"\\"_s + QLatin1Char(char(letter));
    default:
        return letter >= 32 && letter < 127 ? QString(QLatin1Char(char(letter)))
                                            : u"\\%1"_s.arg(letter, 3, 8, QLatin1Char('0'));
    }
}

int signExtended(uint value, int size)
{
    const int unused = 32 - 8 * size;
    return int(value << unused) >> unused;
}
} // namespace

bool liveKindOf(const QString &type, LiveKind *kind)
{
    static const QSet<QString> known{u"volatile"_s, u"const"_s, u"unsigned"_s, u"signed"_s, u"char"_s, u"short"_s,
                                     u"int"_s,      u"long"_s,  u"bool"_s,     u"_Bool"_s,  u"float"_s};
    const QStringList words = type.simplified().split(u' ', Qt::SkipEmptyParts);
    for (const QString &word : words) {
        if (!known.contains(word))
            return false;
    }
    const bool isUnsigned = words.contains(u"unsigned"_s);
    if (words.contains(u"float"_s))
        *kind = LiveKind::Float;
    else if (words.contains(u"bool"_s) || words.contains(u"_Bool"_s))
        *kind = LiveKind::Boolean;
    else if (words.contains(u"char"_s))
        *kind = isUnsigned ? LiveKind::UnsignedCharacter : LiveKind::SignedCharacter;
    else
        *kind = isUnsigned ? LiveKind::Unsigned : LiveKind::Signed;
    return !words.isEmpty();
}

bool isPlainVariable(const QString &expression)
{
    static const QRegularExpression form(u"\\A(::)?[A-Za-z_]\\w*(::[A-Za-z_]\\w*)*(\\.[A-Za-z_]\\w*)*\\z"_s);
    return form.match(expression.trimmed()).hasMatch();
}

QString liveValueText(uint value, int size, LiveKind kind, QChar format)
{
    const int number = signExtended(value, size);
    switch (format.unicode()) {
    case 'x':
        return u"0x"_s + QString::number(value, 16);
    case 'd':
        return QString::number(number);
    case 'u':
        return QString::number(value);
    case 'o':
        return value == 0 ? u"0"_s : u'0' + QString::number(value, 8);
    case 't':
        return QString::number(value, 2);
    default:
        break;
    }
    switch (kind) {
    case LiveKind::Signed:
        return QString::number(number);
    case LiveKind::SignedCharacter:
        return u"%1 '%2'"_s.arg(QString::number(number), characterText(uchar(value)));
    case LiveKind::UnsignedCharacter:
        return u"%1 '%2'"_s.arg(QString::number(value), characterText(uchar(value)));
    case LiveKind::Boolean:
        return value > 1 ? QString::number(value) : value ? u"true"_s : u"false"_s;
    case LiveKind::Float:
        return QString::number(double(std::bit_cast<float>(value)), 'g', 9);
    case LiveKind::Unsigned:
        break;
    }
    return QString::number(value);
}

bool LiveMemory::canReadLive()
{
    return m_session->isAlive() && (m_session->target()->readsDirectly() || m_session->target()->readsWhileRunning());
}

bool LiveMemory::readLive(int region, int mode, uint address, int count, MemoryBlock &result)
{
    if (!canReadLive())
        return false;
    m_memory->readBlock(region, mode, address, count, result);
    return true;
}

bool LiveMemory::prepareLive(const QString &expression)
{
    if (!canReadLive())
        return false;
    if (!m_session->isStopped())
        return m_variables.contains(expression);
    m_variables.remove(expression);
    const FormattedExpression parts = parseFormattedExpression(expression);
    Variable variable;
    variable.format = parts.format;
    if (parts.format == u'c' || parts.format == u's' || !isPlainVariable(parts.expression)
        || !locate(parts.expression, &variable) || (variable.kind == LiveKind::Float && !parts.format.isNull()))
        return false;
    m_variables.insert(expression, variable);
    return true;
}

/// Variables at an address that gdb knows as part of no symbol are on a stack.
bool LiveMemory::locate(const QString &expression, Variable *variable)
{
    MiConnection *gdb = m_session->gdb();
    const auto ask = [&](const QString &text) { return gdb->ask("-data-evaluate-expression " + miQuoted(text)); };
    const MiRecord address = ask(u"(unsigned long)&("_s + expression + u')');
    const MiRecord size = ask(u"sizeof ("_s + expression + u')');
    variable->address = address.results.address(u"value");
    variable->size = size.results.text(u"value").toInt();
    if (!address.isDone() || !size.isDone() || (variable->size != 1 && variable->size != 2 && variable->size != 4))
        return false;
    QString type;
    QString symbol;
    return gdb->askConsole(u"ptype "_s + expression, &type).isDone()
           && liveKindOf(type.section(u'=', 1), &variable->kind)
           && gdb->askConsole(u"info symbol 0x"_s + QString::number(variable->address, 16), &symbol).isDone()
           && symbol.contains(" in section "_L1);
}

bool LiveMemory::evaluateLive(const QString &expression, QString &result)
{
    const auto variable = m_variables.constFind(expression);
    if (variable == m_variables.cend() || !canReadLive())
        return false;
    const QByteArray bytes = m_memory->readBytes(variable->address, variable->size);
    if (bytes.size() != variable->size)
        return false;
    const uint value = memoryCellValue(bytes, m_session->program().elf.bigEndian);
    result = liveValueText(value, variable->size, variable->kind, variable->format);
    return true;
}
