#include "availabilitywindow.h"
#include "debugoffers.h"

void AvailabilityWindow::emitNothingAvailable()
{
    Q_EMIT viewHasFocus(false);
    Q_EMIT textViewHasFocus(false);
    Q_EMIT textNavigationAvailable(false);
    Q_EMIT undoAvailable(false);
    Q_EMIT redoAvailable(false);
    Q_EMIT cutAvailable(false);
    Q_EMIT copyAvailable(false);
    Q_EMIT pasteAvailable(false);
    Q_EMIT selectAllAvailable(false);
    Q_EMIT backAvailable(false);
    Q_EMIT forwardAvailable(false);
    Q_EMIT previousAvailable(false);
    Q_EMIT nextAvailable(false);
    Q_EMIT saveAvailable(false);
    Q_EMIT closePaneAvailable(false);
    setProgramLines(false);
}

void AvailabilityWindow::emitActivity(const ActivityAvailability &available, const DebugOffers &offers)
{
    Q_EMIT projectOpenAvailable(available.projectOpen);
    Q_EMIT projectRepopulateAvailable(available.projectRepopulate);
    Q_EMIT workspaceEditingAvailable(available.workspaceEditing);
    Q_EMIT projectEditingAvailable(available.projectEditing);
    Q_EMIT buildAvailable(available.build);
    Q_EMIT projectBuilding(available.building);
    Q_EMIT runAvailable(available.run);
    Q_EMIT stopAvailable(available.stop);
    Q_EMIT pauseAvailable(available.pause);
    Q_EMIT startAvailable(available.start);
    Q_EMIT restartAvailable(available.restart);
    Q_EMIT wakeupAvailable(available.wakeup && offers.wakeUp);
    Q_EMIT showNextAvailable(available.showNext);
    Q_EMIT attachAvailable(available.attach);
    Q_EMIT batchBuildAvailable(available.batchBuild);
    m_canRun = available.run;
    m_canSetNext = available.showNext && offers.setNext;
    setProgramLines(offers.programLines);
}

void AvailabilityWindow::setProgramLines(bool available)
{
    m_programLines = available;
    Q_EMIT setNextAvailable(m_canSetNext && available);
    Q_EMIT runToCursorAvailable(m_canRun && available);
}
