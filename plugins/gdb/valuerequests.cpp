#include "valuerequests.h"
#include "formattedexpression.h"
#include "gdbsession.h"
#include "memoryaccess.h"
#include "mirecord.h"
#include "registeraccess.h"
#include <memory>

namespace {
/// Kept until the answer, also by handlers of gdb that are never called.
std::shared_ptr<IValueReplies> kept(IValueReplies *replies)
{
    return shareInterface(replies);
}
} // namespace

void ValueRequests::requestMemory(const DebugRequest &request, int region, int mode, quint64 address, int count,
                                  IValueReplies *replies)
{
    const QList<TargetRegion> &regions = m_memory->wholeTable().regions();
    const TargetRegion *place = region >= 0 && region < regions.size() ? &regions.at(region) : nullptr;
    m_memory->requestCells(place, address, mode, count, MemoryAccess::redrawLimit(),
                           [request, to = kept(replies)](const MemoryBlock &cells) {
                               MemoryBlock64 wide;
                               wide.reserve(cells.size());
                               for (const MemoryBlockCell &cell : cells)
                                   wide.append({cell.value, cell.status});
                               to->memory(request, wide);
                           });
}

void ValueRequests::requestRegisters(const DebugRequest &request, const QStringList &names, IValueReplies *replies)
{
    m_registers->requestValues([request, names, to = kept(replies)](const QHash<QString, QList<uint>> &all) {
        QList<RegisterValue> values;
        for (const QString &name : names)
            values.append({name, all.value(name)});
        to->registers(request, values);
    });
}

/// The command that evaluates later knows no formats, and an assignment has consequences for the host: these are done
/// at once.
void ValueRequests::requestEvaluation(const DebugRequest &request, const QString &expression, IValueReplies *replies)
{
    const auto to = kept(replies);
    if (!m_session->isAlive() || expression.contains(u'=') || !parseFormattedExpression(expression).format.isNull()) {
        QString text;
        const bool known = m_evaluate(expression, text) == 0;
        return known ? to->evaluated(request, text) : to->failed(request, text);
    }
    m_session->gdb()->send("-data-evaluate-expression " + miQuoted(expression), [request, to](const MiRecord &answer) {
        if (answer.isDone())
            to->evaluated(request, answer.results.text(u"value"));
        else
            to->failed(request, answer.errorText().section(u'\n', 0, 0));
    });
}
