#pragma once

/// Gives the threads that scripts have started a share of the time while the program waits for events: otherwise they
/// would run only inside calls of Python. To be called after each of these calls. Costs nothing without threads.
void letPythonThreadsRun();
