#pragma once

/// The program `varnel-run`: runs a script in the whole program without a display, and returns the script's exit code.
/// The arguments are the script, or "-m" and a module, and the arguments of the script.
///
/// Dialogs are written to the standard error stream and answered like the Escape key. Nothing is saved at the end, and
/// processes that the script has started with debug sessions and builds are ended.
[[nodiscard]] int runVarnelScript(int argc, char **argv);
