#pragma once
#include <QByteArrayList>

/// The names that actions of the UI file may have: first those of plain commands, then those of toggles.
inline QByteArrayList plainCommands()
{
    return QByteArray(
               "fileNew fileOpen fileClose fileCloseAll fileSave fileSaveAs fileSaveAll filePrint fileExit "
               "fileProperties fileRevert "
               "editUndo editRedo editCut editCopy editPaste editRemove editInsertFile editComment editUncomment "
               "editIndent editUnindent editFind editReplace editFindInFiles editSelectAll editLookupNextLine "
               "viewGotoLine "
               "projectNew projectOpen projectRepopulate projectGenerateMakefile projectClose projectSave "
               "projectInsertFiles projectInsertFilesAlt projectInsertProject projectProperties "
               "projectPropertiesAlt "
               "buildCompileFile buildBuild buildRebuild buildClean buildBuildAlt buildRebuildAlt buildCleanAlt "
               "buildStopBuild buildBatchBuild buildConfigurationsNew buildConfigurationsEdit "
               "debugRun debugAttach debugRunToCursor debugStepOver debugStepInto debugPause debugStop "
               "debugRestart debugWakeup debugShowNext debugBreakpoints debugToggleBreakpoint "
               "debugViewDisassembly "
               "toolsMacroNew toolsMacroEdit toolsCustomise toolsOptions "
               "windowNew windowSplit windowClose windowCloseAll windowCascade windowTile windowNext windowPrev "
               "helpSearch helpHome helpBack helpForward helpPrevious helpNext helpAbout")
        .split(' ');
}

/// The actions that the class of their subject connects.
inline QByteArrayList commandsWithoutSlot()
{
    return QByteArray("editNextMessage editPreviousMessage editFindNext editFindPrevious editStopFindInFiles "
                      "toolsRecordScript windowClosePane viewShowInNavigator viewFileFormat projectForgetTrust "
                      "buildAllProjects "
                      "debugSetNext debugShowValue "
                      "helpPlugins helpReport")
        .split(' ');
}

inline QByteArrayList toggleCommands()
{
    return QByteArray("viewNavigator viewOutput debugToggleRegisterWindow debugTogglePeripheralWindow "
                      "debugToggleWatchWindow debugToggleMemoryWindow")
        .split(' ');
}

/// The signals that an action may follow, in the order of their declaration.
inline QByteArrayList availabilitySignals()
{
    return QByteArray(
               "viewHasFocus textViewHasFocus textNavigationAvailable undoAvailable redoAvailable copyAvailable "
               "cutAvailable pasteAvailable selectAllAvailable projectOpenAvailable projectRepopulateAvailable "
               "projectEditingAvailable workspaceEditingAvailable compileAvailable buildAvailable projectBuilding "
               "runAvailable pauseAvailable stopAvailable restartAvailable startAvailable wakeupAvailable "
               "showNextAvailable setNextAvailable runToCursorAvailable backAvailable forwardAvailable "
               "previousAvailable nextAvailable attachAvailable "
               "batchBuildAvailable saveAvailable closePaneAvailable")
        .split(' ');
}
