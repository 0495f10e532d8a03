#pragma once
#include "activitystate.h"
#include <QMainWindow>
struct DebugOffers;

/// A main window with the signals that enable its actions: the UI file binds actions to them by name.
class AvailabilityWindow : public QMainWindow
{
    Q_OBJECT
public:
    using QMainWindow::QMainWindow;

    /// To be called at start-up, when there is no view.
    void emitNothingAvailable();
    void emitActivity(const ActivityAvailability &available, const DebugOffers &offers);
    void setProgramLines(bool available); ///< See DebugOffers; the current view is another one.

Q_SIGNALS:
    void viewHasFocus(bool available);
    void textViewHasFocus(bool available);
    void textNavigationAvailable(bool available);
    void undoAvailable(bool available);
    void redoAvailable(bool available);
    void copyAvailable(bool available);
    void cutAvailable(bool available);
    void pasteAvailable(bool available);
    void selectAllAvailable(bool available);
    void projectOpenAvailable(bool available);
    void projectRepopulateAvailable(bool available);
    void projectEditingAvailable(bool available);
    void workspaceEditingAvailable(bool available);
    void compileAvailable(bool available);
    void buildAvailable(bool available);
    void projectBuilding(bool available);
    void runAvailable(bool available);
    void pauseAvailable(bool available);
    void stopAvailable(bool available);
    void restartAvailable(bool available);
    void startAvailable(bool available);
    void wakeupAvailable(bool available);
    void showNextAvailable(bool available);
    void setNextAvailable(bool available);
    void runToCursorAvailable(bool available);
    void backAvailable(bool available);
    void forwardAvailable(bool available);
    void previousAvailable(bool available);
    void nextAvailable(bool available);
    void attachAvailable(bool available);
    void batchBuildAvailable(bool available);
    void saveAvailable(bool available);
    void closePaneAvailable(bool available);

private:
    bool m_canRun = false;
    bool m_canSetNext = false;
    bool m_programLines = false;
};
