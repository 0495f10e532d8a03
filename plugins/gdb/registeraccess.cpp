#include "registeraccess.h"
#include "gdbsession.h"
#include <algorithm>

using namespace Qt::StringLiterals;

void RegisterAccess::setExpected(const QList<TargetRegister> &registers)
{
    if (!m_session->isAlive() && m_registers.isEmpty())
        m_registers = registers;
}

void RegisterAccess::load()
{
    QString text;
    if (m_session->gdb()->askConsole(u"maint print register-groups"_s, &text).isError() && text.isEmpty())
        return;
    if (const QList<TargetRegister> found = parseRegisterGroups(text); !found.isEmpty())
        m_registers = found;
    m_generation = -1;
}

QList<RegisterInfo> RegisterAccess::registers()
{
    QList<RegisterInfo> list;
    for (const TargetRegister &entry : m_registers)
        list.append(entry.info);
    return list;
}

const TargetRegister *RegisterAccess::find(const QString &name) const
{
    const auto found = std::find_if(m_registers.begin(), m_registers.end(),
                                    [&name](const TargetRegister &entry) { return entry.info.name == name; });
    return found == m_registers.end() ? nullptr : &*found;
}

void RegisterAccess::refresh()
{
    if (!m_session->isStopped() || m_generation == m_session->generation())
        return;
    m_generation = m_session->generation();
    QHash<int, QString> names;
    const QByteArray command = readCommand(&names);
    setValues(m_session->gdb()->ask(command), names);
}

QByteArray RegisterAccess::readCommand(QHash<int, QString> *names) const
{
    QByteArray command = "-data-list-register-values --skip-unavailable r";
    for (const TargetRegister &entry : m_registers) {
        if (entry.number < 0)
            continue;
        command += ' ' + QByteArray::number(entry.number);
        names->insert(entry.number, entry.info.name);
    }
    return command;
}

void RegisterAccess::setValues(const MiRecord &answer, const QHash<int, QString> &names)
{
    for (const MiValue &row : answer.results[u"register-values"].items())
        m_values.insert(names.value(row.number(u"number")), registerWords(row.text(u"value")));
}

void RegisterAccess::requestValues(const std::function<void(const QHash<QString, QList<uint>> &values)> &use)
{
    if (!m_session->isStopped() || m_generation == m_session->generation())
        return use(m_values);
    QHash<int, QString> names;
    const QByteArray command = readCommand(&names);
    m_session->gdb()->send(command, [this, names, use, generation = m_session->generation()](const MiRecord &answer) {
        if (answer.isDone() && generation == m_session->generation()) {
            setValues(answer, names);
            m_generation = generation;
        }
        use(m_values);
    });
}

uint RegisterAccess::value(const QString &name, int word)
{
    refresh();
    return m_values.value(name).value(word, 0);
}

void RegisterAccess::setValue(const QString &name, uint value, int word)
{
    const TargetRegister *entry = find(name);
    if (!entry || entry->info.readOnly || entry->number < 0 || !m_session->isStopped())
        return;
    refresh();
    QList<uint> words = m_values.value(name);
    words.resize(std::max<qsizetype>(qsizetype(entry->info.width + 31) / 32, 1));
    if (word < 0 || word >= words.size())
        return;
    words[word] = value;
    if (entry->vector) {
        (void)m_session->gdb()->ask(
            u"-data-evaluate-expression $%1.v4_int32[%2]=%3"_s.arg(name).arg(word).arg(value).toLatin1());
    } else {
        const quint64 bits = words[0] | (words.size() > 1 ? quint64(words[1]) << 32 : 0);
        (void)m_session->gdb()->ask("-data-write-register-values x " + QByteArray::number(entry->number) + " 0x"
                                    + QByteArray::number(bits, 16));
    }
    m_session->targetChanged();
}
