#include "disassemblerbar.h"
#include "disassemblerdocument.h"
#include "disassemblerview.h"
#include "parasearch.h"
#include "programplace.h"
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPointer>

using namespace Qt::StringLiterals;

// Going to places of the disassembly, and back.

namespace {
constexpr qsizetype LongestHistory = 200;

QString outsideText(quint64 address)
{
    return DisassemblerView::tr("0x%1 is outside the memory that is shown here.").arg(address, 0, 16);
}
} // namespace

void DisassemblerView::gotoLine(int line)
{
    const int para = m_disassembly->paraOf(line);
    if (para < 0)
        m_bar->setMessage(outsideText(addressOfLine(line)));
    else if (m_isOutside)
        m_bar->setMessage({});
    m_isOutside = para < 0;
    if (para >= 0)
        m_paras->showPara(para);
}

void DisassemblerView::getCursorPosition(int *para, int *index)
{
    const TextParaView::Place cursor = m_paras->cursorPlace();
    *para = m_disassembly->lineOf(cursor.para) - 1;
    *index = cursor.column;
}

ParaScan::Pattern DisassemblerView::pattern(const QString &text, bool caseSensitive, bool forward)
{
    return {text, caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive, forward};
}

TextParaView::Place DisassemblerView::findStart(bool forward, bool fromCursor) const
{
    if (!fromCursor)
        return {};
    TextParaView::Place place = m_paras->cursorPlace();
    place.column += forward ? 1 : -1;
    return place;
}

bool DisassemblerView::find(const QString &text, bool caseSensitive, bool, bool forward, bool fromCursor)
{
    const QPointer<DisassemblerView> self(this);
    ParaScan scan(pattern(text, caseSensitive, forward), findStart(forward, fromCursor));
    QElapsedTimer time;
    time.start();
    while (scan.para() >= 0 && scan.para() < m_disassembly->paraCount() && !text.isEmpty()) {
        const QStringList lines = m_paras->linesOf(scan.para());
        if (!self || time.elapsed() >= m_findTimeLimit)
            return false;
        if (scan.find(lines)) {
            m_paras->showPlace(scan.place());
            return true;
        }
    }
    return false;
}

void DisassemblerView::startFind(const QString &text, bool caseSensitive, bool forward, bool fromCursor)
{
    m_search->cancel();
    m_bar->endProgress();
    m_bar->setMessage({});
    m_wanted = text;
    m_wantedForward = forward;
    if (text.isEmpty())
        return;
    m_bar->setMessage(tr("Searching..."));
    m_search->start(pattern(text, caseSensitive, forward), findStart(forward, fromCursor));
}

void DisassemblerView::showFound(const TextParaView::Place &place, bool wrapped)
{
    m_bar->endProgress();
    m_bar->setMessage(wrapped ? tr("Passed the end of the disassembly") : QString());
    const QPointer<DisassemblerView> self(this);
    TextParaView::Place other = place;
    other.column += int(m_wanted.size()) * (m_wantedForward ? -1 : 1);
    m_paras->showPlace(place);
    if (self)
        m_paras->showMatch(other, place);
}

bool DisassemblerView::goTo(const QString &text)
{
    const QPointer<DisassemblerView> self(this);
    const auto address = m_disassembly->addressOf(text);
    if (!self)
        return false;
    const int para = address ? m_disassembly->paraOfAddress(*address) : -1;
    if (!address)
        m_bar->setMessage(tr("There is no symbol or address '%1'.").arg(text.trimmed()));
    else if (para < 0)
        m_bar->setMessage(outsideText(*address));
    else
        m_bar->setMessage({});
    if (para < 0)
        return false;
    const int instruction = instructionAt(para);
    if (self)
        jump(instruction);
    return self;
}

/// The paragraph of the instruction that covers a paragraph's address; that paragraph itself if there is none, or if it
/// is not read yet.
int DisassemblerView::instructionAt(int para) const
{
    constexpr int LongestInstruction = 15; // bytes
    const QPointer<const DisassemblerView> self(this);
    for (int before = 0; before < LongestInstruction && before <= para; ++before) {
        const auto lines = m_paras->linesInTime(para - before);
        if (!self || !lines)
            break;
        if (!lines->isEmpty())
            return para - before;
    }
    return para;
}

std::optional<BranchTarget> DisassemblerView::branchAt(const TextParaView::Place &place) const
{
    const QString line = m_paras->lineAt(place);
    const int row = m_paras->rowOf(place.para);
    int para = 0;
    int last = 0;
    if (row < 0 || !m_paras->rowToPara(row, &para, &last) || last != place.line)
        return {}; // a source line
    const auto target = branchTarget(plainText(line));
    return target && m_disassembly->paraOfAddress(target->address) >= 0 ? target : std::nullopt;
}

/// The same if the place is within the instruction, without its address and bytes.
std::optional<BranchTarget> DisassemblerView::linkAt(const TextParaView::Place &place) const
{
    const auto target = branchAt(place);
    return target && place.column >= target->start && place.column < target->end ? target : std::nullopt;
}

void DisassemblerView::showHand(const QPoint &position)
{
    m_paras->viewport()->setCursor(linkAt(m_paras->placeAt(position)) ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void DisassemblerView::follow(const std::optional<BranchTarget> &target)
{
    if (target)
        jump(m_disassembly->paraOfAddress(target->address));
}

/// Goes to a paragraph, and remembers where the view was.
void DisassemblerView::jump(int para)
{
    m_history.resize(std::min<qsizetype>(m_history.size(), m_present));
    m_history.append(m_paras->cursorPlace().para);
    m_history.append(para);
    if (m_history.size() > LongestHistory)
        m_history.remove(0, m_history.size() - LongestHistory);
    m_present = int(m_history.size()) - 1;
    const QPointer<DisassemblerView> self(this);
    m_paras->showPara(para);
    if (self)
        slotSelectionChanged();
}

void DisassemblerView::moveInHistory(int step)
{
    if (m_present + step < 0 || m_present + step >= m_history.size())
        return;
    m_present += step;
    const QPointer<DisassemblerView> self(this);
    m_paras->showPara(m_history[m_present]);
    if (self)
        slotSelectionChanged();
}

void DisassemblerView::back()
{
    moveInHistory(-1);
}

void DisassemblerView::forward()
{
    moveInHistory(1);
}

void DisassemblerView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Back))
        back();
    else if (event->matches(QKeySequence::Forward))
        forward();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        follow(branchAt(m_paras->cursorPlace()));
    else if (event->key() == Qt::Key_Escape && m_search->isRunning())
        startFind({}, false, true, true);
    else if (event->key() == Qt::Key_Escape && !m_paras->hasFocus())
        m_paras->setFocus();
    else
        View::keyPressEvent(event);
}
