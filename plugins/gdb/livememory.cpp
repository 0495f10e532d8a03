#include "livememory.h"
#include "formattedexpression.h"
#include "gdbsession.h"
#include "memoryaccess.h"
#include <algorithm>
#include <bit>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {
constexpr int FreshTime = 5;      ///< in ms: variables that are evaluated together are read together
constexpr quint64 WidestGap = 64; ///< in bytes, between variables that are read together
constexpr quint64 LongestSpan = 4096;

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

qint64 signExtended(quint64 value, int size)
{
    const int unused = 64 - 8 * size;
    return qint64(value << unused) >> unused;
}

quint64 valueOf(QByteArrayView bytes, bool bigEndian)
{
    if (bytes.size() <= 4)
        return memoryCellValue(bytes, bigEndian);
    const quint64 first = memoryCellValue(bytes.first(4), bigEndian);
    const quint64 last = memoryCellValue(bytes.sliced(4), bigEndian);
    return bigEndian ? first << 32 | last : last << 32 | first;
}

QString floatText(quint64 value, int size)
{
    return size == 8 ? QString::number(std::bit_cast<double>(value), 'g', 17)
                     : QString::number(double(std::bit_cast<float>(uint(value))), 'g', 9);
}
} // namespace

bool liveKindOf(const QString &type, LiveKind *kind)
{
    static const QSet<QString> known{u"volatile"_s, u"const"_s, u"unsigned"_s, u"signed"_s, u"char"_s,  u"short"_s,
                                     u"int"_s,      u"long"_s,  u"bool"_s,     u"_Bool"_s,  u"float"_s, u"double"_s};
    *kind = LiveKind::Enumeration;
    if (!liveEnumerators(type).isEmpty())
        return true;
    const QStringList words = type.simplified().split(u' ', Qt::SkipEmptyParts);
    for (const QString &word : words) {
        if (!known.contains(word))
            return false;
    }
    const bool isUnsigned = words.contains(u"unsigned"_s);
    if (words.contains(u"float"_s) || words.contains(u"double"_s))
        *kind = LiveKind::Float;
    else if (words.contains(u"bool"_s) || words.contains(u"_Bool"_s))
        *kind = LiveKind::Boolean;
    else if (words.contains(u"char"_s))
        *kind = isUnsigned ? LiveKind::UnsignedCharacter : LiveKind::SignedCharacter;
    else
        *kind = isUnsigned ? LiveKind::Unsigned : LiveKind::Signed;
    return !words.isEmpty();
}

QMap<qint64, QString> liveEnumerators(const QString &type)
{
    static const QRegularExpression form(u"\\A(?:(?:volatile|const)\\s+)*enum\\b[^{}]*\\{([^{}]*)\\}\\s*\\z"_s);
    QMap<qint64, QString> names;
    const QRegularExpressionMatch match = form.match(type.trimmed());
    qint64 next = 0;
    for (const QString &entry : match.captured(1).split(u',', Qt::SkipEmptyParts)) {
        const QString value = entry.section(u'=', 1).trimmed();
        next = value.isEmpty() ? next : value.toLongLong();
        if (!names.contains(next)) // gdb prints the first of several names
            names.insert(next, entry.section(u'=', 0, 0).trimmed());
        ++next;
    }
    return names;
}

bool isPlainVariable(const QString &expression)
{
    static const QRegularExpression form(u"\\A(::)?[A-Za-z_]\\w*(::[A-Za-z_]\\w*)*(\\.[A-Za-z_]\\w*)*\\z"_s);
    return form.match(expression.trimmed()).hasMatch();
}

QString liveValueText(quint64 value, int size, LiveKind kind, QChar format)
{
    const qint64 number = signExtended(value, size);
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
        return floatText(value, size);
    case LiveKind::Enumeration:
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
    const TargetRegion *memory = m_memory->regionOf(region);
    result = m_memory->readCells(memory, memory ? MemoryAccess::wholeAddress(*memory, address) : 0, mode, count,
                                 MemoryAccess::redrawLimit());
    return true;
}

void LiveMemory::reset()
{
    m_variables.clear();
    m_spans.clear();
}

/// While the program runs, gdb finds variables that need no frame. At a stop the name may mean another variable than
/// before, so its address is read again; a variable whose address is the same is kept.
bool LiveMemory::prepareLive(const QString &expression)
{
    if (!canReadLive())
        return false;
    const FormattedExpression parts = parseFormattedExpression(expression);
    if (m_variables.contains(expression)) {
        const quint64 before = m_variables.value(expression).address;
        if (!m_session->isStopped() || addressOf(parts.expression) == before)
            return true;
    }
    m_variables.remove(expression);
    m_spans.clear();
    Variable variable;
    variable.format = parts.format;
    if (parts.format == u'c' || parts.format == u's' || !isPlainVariable(parts.expression)
        || !locate(parts.expression, &variable) || (variable.kind == LiveKind::Float && !parts.format.isNull()))
        return false;
    m_variables.insert(expression, variable);
    return true;
}

MiRecord LiveMemory::evaluate(const QString &expression) const
{
    return m_session->gdb()->ask("-data-evaluate-expression " + miQuoted(expression));
}

std::optional<quint64> LiveMemory::addressOf(const QString &variable) const
{
    const MiRecord answer = evaluate(u"(unsigned long)&("_s + variable + u')');
    return answer.isDone() ? std::optional(answer.results.address(u"value")) : std::nullopt;
}

/// Variables at an address that gdb knows as part of no symbol are on a stack.
bool LiveMemory::locate(const QString &expression, Variable *variable) const
{
    const std::optional<quint64> address = addressOf(expression);
    if (!address)
        return false;
    const MiRecord size = evaluate(u"sizeof ("_s + expression + u')');
    variable->address = *address;
    variable->size = size.results.text(u"value").toInt();
    if (!size.isDone() || !QList{1, 2, 4, 8}.contains(variable->size))
        return false;
    MiConnection *gdb = m_session->gdb();
    QString type;
    QString symbol;
    if (!gdb->askConsole(u"ptype "_s + expression, &type).isDone()
        || !liveKindOf(type.section(u'=', 1), &variable->kind))
        return false;
    variable->names = liveEnumerators(type.section(u'=', 1));
    return gdb->askConsole(u"info symbol 0x"_s + QString::number(variable->address, 16), &symbol).isDone()
           && symbol.contains(" in section "_L1);
}

/// Device registers are not read together with their neighbours.
void LiveMemory::findSpans()
{
    QList<Span> single;
    for (const Variable &variable : std::as_const(m_variables)) {
        const TargetRegion *region = m_memory->table().at(variable.address);
        if (region && region->kind != TargetRegion::Kind::Io)
            single.append({variable.address, variable.size, {}});
    }
    std::ranges::sort(single, {}, &Span::address);
    for (const Span &span : std::as_const(single)) {
        const quint64 end = span.address + quint64(span.length);
        if (m_spans.isEmpty() || span.address > m_spans.last().address + quint64(m_spans.last().length) + WidestGap
            || end - m_spans.last().address > LongestSpan)
            m_spans.append(span);
        else
            m_spans.last().length = std::max(m_spans.last().length, int(end - m_spans.last().address));
    }
}

/// A window evaluates all its variables at once, and each access takes about the same time.
QByteArray LiveMemory::bytesOf(const Variable &variable)
{
    if (m_spans.isEmpty())
        findSpans();
    if (!m_age.isValid() || m_age.hasExpired(FreshTime)) {
        for (Span &span : m_spans)
            span.bytes.clear();
        m_age.start();
    }
    for (Span &span : m_spans) {
        if (variable.address < span.address
            || variable.address + quint64(variable.size) > span.address + quint64(span.length))
            continue;
        if (span.bytes.isEmpty())
            span.bytes = m_memory->readBytes(span.address, span.length);
        QByteArray bytes = span.bytes.mid(qsizetype(variable.address - span.address), variable.size);
        if (bytes.size() == variable.size)
            return bytes;
    }
    return m_memory->readBytes(variable.address, variable.size);
}

bool LiveMemory::evaluateLive(const QString &expression, QString &result)
{
    const auto variable = m_variables.constFind(expression);
    if (variable == m_variables.cend() || !canReadLive())
        return false;
    const QByteArray bytes = bytesOf(*variable);
    if (bytes.size() != variable->size)
        return false;
    const quint64 value = valueOf(bytes, m_session->program().elf.bigEndian);
    const QString name = variable->names.value(signExtended(value, variable->size));
    result = name.isEmpty() || !variable->format.isNull()
                 ? liveValueText(value, variable->size, variable->kind, variable->format)
                 : name;
    return true;
}
