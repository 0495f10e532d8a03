#pragma once
class IDEApplication;

/// The whole life of the program. Returns its exit code.
int runVarnel(int &argc, char **argv);

/// The life of the main window in @p application: shows it where it was left, does what the command line asks for
/// and runs the event loop. Returns the exit code: 1 for bad options, which end the program before the loop.
int runMainWindow(IDEApplication &application);
