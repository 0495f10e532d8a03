#!/usr/bin/env python3
"""Shows a debug session with two processors: builds the example, pauses the programs, reads and changes variables.

    demo.py [--here] [--pictures DIRECTORY]

Prints one line per step and saves a screenshot of each. The exit code is 1 at the first step with an unexpected result.
With --here it runs slowly on the current display, otherwise on a virtual screen.
"""
import argparse
import contextlib
import os
import pathlib
import sys
import tempfile
import time

from debugging import Debugging, copy_of_examples, line_of
from driver import AutomationError, Desktop, Program, Screen

RAM = range(0x20000000, 0x20400000)  # of the board
SECONDS_TO_LOOK = 2


class Differs(Exception):
    """A result differs from the expected one."""


class Demo:
    def __init__(self, here, pictures):
        self._pictures = pictures
        self._pause = SECONDS_TO_LOOK if here else 0
        self._screen = Desktop() if here else Screen(1440, 900)
        self._step = 0

    def run(self):
        """Runs all steps. Returns the exit code."""
        with tempfile.TemporaryDirectory(prefix="varnel-demo.") as directory:
            self._examples = copy_of_examples(directory)
            try:
                with self._start() as program:
                    self._varnel = program.client
                    self._user = Debugging(program, "twoprocessors", "thermostat")
                    with self._picture_of_failure():
                        self._show(program)
            except (Differs, AutomationError, TimeoutError, ValueError) as difference:
                print(f"demo: {difference}\nPictures: {self._pictures}", file=sys.stderr)
                return 1
            finally:
                self._screen.close()
        print(f"Pictures: {self._pictures}")
        return 0

    def _start(self):
        authority = {name: os.environ[name] for name in ("XAUTHORITY",) if name in os.environ}
        return Program("-w", self._examples / "twoprocessors.vnw", screen=self._screen, environment=authority)

    @contextlib.contextmanager
    def _picture_of_failure(self):
        try:
            yield
        except Exception:
            self._take_picture("failure")
            raise

    def _show(self, program):
        self._open()
        self._build()
        line = self._set_breakpoint()
        self._hit(line)
        self._step_over(line)
        self._look_around()
        self._change()
        self._go_on(line)
        self._pause_both()
        self._stop()
        self._varnel.choose("fileExit")
        self._expect("exit code", program.wait(), 0)

    # Steps --------------------------------------------------------------------

    def _open(self):
        self._user.wait_for_state("")
        self._expect("processors", self._varnel.read("projectDropdown", "count"), 2)
        self._see("open", "two processors: thermostat, morse")

    def _build(self):
        last = self._user.build().splitlines()[-2]
        self._expect("program", (self._examples / "thermostat/build/Debug/thermostat.elf").exists(), True)
        self._see("build", last)

    def _set_breakpoint(self):
        file = self._examples / "thermostat/regulator.c"
        self._varnel.wait_for("mainWindow", "visible", True)
        for key in "Home Down Down Right Down Down Return".split():  # selects the second file of the first folder
            self._varnel.press(key, on="ProjectTree")
        self._varnel.wait_for("viewManagerTabBar", "count", 1)
        line = line_of(file, "regulator->power = limited(")
        self._user.click_margin("regulator.c", line)
        self._see("breakpoint", f"regulator.c, line {line}, by a click into the margin")
        return line

    def _hit(self, line):
        self._user.show_docks()
        self._varnel.choose("debugRun")
        self._user.wait_for_function(f"regulator_step regulator.c, {line}")
        self._user.wait_for_state("paused")
        self._expect("boards", len(self._user.children("qemu")), 2)
        self._see("hit", ", ".join(self._user.call_stack()))

    def _step_over(self, line):
        self._varnel.choose("debugStepOver")
        self._user.wait_for_function(f"regulator_step regulator.c, {line + 1}")
        self._see("step", f"at line {line + 1}")

    def _look_around(self):
        """Evaluates expressions by editing a value in "Variables"."""
        self._user.open_local("regulator")
        self._varnel.wait_until(lambda: self._user.locals().get("target") == "21000", "the member 'target' to be 21000")
        kept = self._user.locals()["proportional"]
        register = int(self._assign("proportional", "(int)$sp"))
        self._expect("stack pointer is in the RAM", register in RAM, True)
        self._see("register", f"sp = {register:#x}")
        memory = self._assign("proportional", f"*(int *)({self._user.locals()['regulator'].split()[0]})")
        self._expect("memory at the regulator", memory, "21000")
        self._see("memory", f"the regulator's first word = {memory}")
        self._expect("value put back", self._assign("proportional", f"0 + {kept}"), kept)

    def _change(self):
        self._expect("changed value", self._assign("target", "25 * 1000"), "25000")
        self._see("change", "regulator->target = 25000")

    def _go_on(self, line):
        self._user.click_margin("regulator.c", line)  # disabled
        self._varnel.choose("debugRun")
        self._user.wait_for_state("running")
        self._varnel.wait_until(lambda: "target 25.0" in self._user.console(), "the board to print its new target", 60)
        self._see("run on", next(text for text in self._user.console().splitlines() if "target 25.0" in text))

    def _pause_both(self):
        self._varnel.choose("debugPause")
        self._user.wait_for_function("")
        self._user.wait_for_state("paused")
        self._see("pause", ", ".join(self._user.call_stack()))

    def _stop(self):
        self._varnel.choose("debugStop")
        self._user.wait_for_state("")
        self._varnel.wait_until(lambda: not self._user.children(), "debuggers and emulators to end")
        self._see("stop", "all processes have ended")

    # Results ------------------------------------------------------------------

    def _assign(self, name, expression):
        """Assigns an expression to a variable or member. Returns its value, which is shown as a number."""
        self._user.change_local(name, expression)
        self._varnel.wait_until(lambda: self._user.locals().get(name, "").lstrip("-").isdigit(), f"a number for '{name}'")
        return self._user.locals()[name]

    def _expect(self, what, found, expected):
        if found != expected:
            raise Differs(f"{what}: {found!r} instead of {expected!r}")

    def _see(self, step, words):
        if self._varnel.exists("messageBox"):
            raise Differs(f"after '{step}' there is a message: {self._varnel.read('messageBox', 'text')}")
        self._step += 1
        self._take_picture(f"{self._step:02}-{step.replace(' ', '-')}")
        print(f"{self._step:2} {step}: {words}", flush=True)
        time.sleep(self._pause)

    def _take_picture(self, name):
        window = self._varnel.read("mainWindow", "windowTitle")
        self._screen.screenshot(self._pictures / f"{name}.png", window)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--here", action="store_true", help="on the current display")
    parser.add_argument("--pictures", type=pathlib.Path, default=pathlib.Path("demo"), help="directory of the screenshots")
    options = parser.parse_args()
    options.pictures.mkdir(parents=True, exist_ok=True)
    return Demo(options.here, options.pictures.resolve()).run()


if __name__ == "__main__":
    sys.exit(main())
