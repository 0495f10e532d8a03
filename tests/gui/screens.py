#!/usr/bin/env python3
"""Takes pictures of the help, a large file, the disassembly and the product, to be looked at after a change of their drawing.

    screens.py [--pictures DIRECTORY] [light] [dark] [contrast] [scale2]

Saves a screenshot of the whole window for each of them, in light colours, in dark colours, in white on black, and on a
screen with two pixels per pixel. Those of the product are the about box, the page of the keys, and the window in German.
"""
import argparse
import pathlib
import re
import sys
import tempfile
import time

from debugging import Debugging, copy_of_examples, line_of
from driver import Program, Screen

WIDTH, HEIGHT = 1280, 800
SETTLED, LONGEST = 0.4, 10.0  # seconds
HELP = pathlib.Path(__file__).parents[2] / "build/stage/help/html"
PAGES = ("firststeps", "debugging", "disassembly", "memory", "scripts")
TOO_LARGE = "The file is too large to open for editing."
SETTINGS = {"Startup": {"DisableSplashScreen": 1}}
VARIANTS = ("light", "dark", "contrast", "scale2")

# The desktop's dark colours, as the toolkit reads them.
DARK = """
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=239,240,241
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=239,240,241
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=239,240,241
[Colors:View]
BackgroundAlternate=49,54,59
BackgroundNormal=35,38,41
ForegroundInactive=127,140,141
ForegroundLink=41,128,185
ForegroundNormal=239,240,241
ForegroundVisited=127,140,141
[Colors:Window]
BackgroundNormal=49,54,59
ForegroundNormal=239,240,241
"""

# White on black, for users who need the greatest contrast.
CONTRAST = re.sub(r"(Foreground\w+)=.*", r"\1=255,255,255", re.sub(r"(Background\w+)=.*", r"\1=0,0,0", DARK))
SCHEMES = {"dark": DARK, "contrast": CONTRAST}


class Screens:
    """The pictures of one variant."""

    def __init__(self, variant, pictures):
        self._variant = variant
        self._pictures = pictures
        factor = 2 if variant == "scale2" else 1
        self._screen = Screen(WIDTH * factor, HEIGHT * factor, pointer=False)

    def take(self):
        with tempfile.TemporaryDirectory(prefix="varnel-screens.") as directory:
            directory = pathlib.Path(directory)
            try:
                self._take_product(self._home(directory, "product"), self._home(directory, "german"))
                self._take_help(self._home(directory, "help"))
                self._take_large_file(self._home(directory, "large"), directory)
                self._take_disassembly(self._home(directory, "disassembly"), copy_of_examples(directory))
            finally:
                self._screen.close()

    def _home(self, directory, name):
        home = directory / name
        (home / ".config").mkdir(parents=True)
        (home / ".config/kdeglobals").write_text(SCHEMES.get(self._variant, ""), encoding="ascii")
        return home

    def _start(self, home, *arguments, settings=SETTINGS):
        environment = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"} if self._variant in SCHEMES else {}
        if self._variant == "scale2":
            environment["QT_SCALE_FACTOR"] = "2"
        return Program(*arguments, screen=self._screen, home=home, settings=settings, environment=environment)

    def _prepare(self, program):
        self._varnel = program.client
        self._varnel.wait_for("mainWindow", "isActiveWindow", True)

    def _take_product(self, home, german):
        with self._start(home) as program:
            self._prepare(program)
            self._varnel.choose("helpHome")
            for action, window in (("helpAbout", "aboutBox"), ("toolsCustomise", "optionsDialog")):
                self._varnel.choose(action)
                self._varnel.wait_for(window, "isActiveWindow", True)
                self._save(action)
                self._varnel.press("Escape", on=window)
                self._varnel.find_gone(window)
        with self._start(german, settings={**SETTINGS, "Startup": {**SETTINGS["Startup"], "Language": "de"}}) as program:
            self._prepare(program)
            self._varnel.choose("helpHome")
            self._varnel.wait_for("HelpBrowser", "visible", True)
            self._save("german")

    def _take_help(self, home):
        with self._start(home) as program:
            self._prepare(program)
            self._varnel.choose("helpHome")  # the start page is not shown to test drivers
            self._varnel.wait_for("HelpBrowser", "visible", True)
            self._save("help-start")
            for page in PAGES:
                self._varnel.choose("fileOpen")
                self._varnel.choose_file("openFileDialog", HELP / f"{page}.html")
                self._varnel.wait_for("HelpBrowser", "source", lambda source, wanted=page: f"{wanted}.html" in source)
                self._save(f"help-{page}")
            self._varnel.write("SearchEdit", "text", "break*")
            self._varnel.press("Return", on="SearchEdit")
            self._varnel.wait_for("HelpBrowser", "documentTitle", "Search Results", 60)
            self._save("help-results")

    def _take_large_file(self, home, directory):
        log = directory / "board.log"
        with open(log, "w", encoding="utf-8") as file:
            for line in range(250_000):
                file.write(f"{line:07} 12:00:{line % 60:02} <b>uart{line % 3}</b> <i>info</i>: a < b & größe = {line * 7 % 1000}\n")
        with self._start(home) as program:
            self._prepare(program)
            self._varnel.choose("fileOpen")
            self._varnel.choose_file("openFileDialog", log)
            self._varnel.answer(TOO_LARGE, "Return")
            self._varnel.wait_for("board/lines", "visible", True)
            self._varnel.choose("editFind")
            self._varnel.write("LargeTextFindWhat", "text", "größe = 42")
            self._varnel.press("Return", on="LargeTextFindWhat")
            self._varnel.wait_for("LargeTextResult", "text", lambda text: " of " in text)
            self._save("largefile")

    def _take_disassembly(self, home, examples):
        """With source lines, an enabled and a disabled breakpoint, the current line and the arrow of its branch."""
        with self._start(home, "-w", examples / "thermostat/thermostat.vnw") as program:
            self._prepare(program)
            user = Debugging(program, "thermostat", "thermostat")
            user.wait_for_state("")
            user.build()
            self._varnel.choose("debugStepOver")
            user.wait_for_stop(line_of(examples / "thermostat/main.c", "int main") + 3)
            self._varnel.choose("debugViewDisassembly")
            self._varnel.wait_for("disassembly/thermostat/lines", "visible", True)
            self._varnel.wait_until(lambda: "<board_init>" in self._rows(), "the instructions")
            rows = self._rows().splitlines()
            branch = next(number for number, row in enumerate(rows) if "<board_init>" in row)
            for row, clicks in ((branch + 2, 1), (branch + 4, 2)):
                for _ in range(clicks):
                    self._varnel.click("disassembly/thermostat/margin", x=5, y=self._height() * row + 6)
            self._save("disassembly")
            self._varnel.choose("debugStop")
            user.wait_for_state("")

    def _rows(self):
        return self._varnel.read("disassembly/thermostat/lines", "text")

    def _height(self):
        return self._varnel.read("disassembly/thermostat/lines", "lineHeight")

    def _save(self, name):
        """A screen has no event for "everything is painted"."""
        end = time.monotonic() + LONGEST
        last, since = self._screen.pixels(), time.monotonic()
        while time.monotonic() - since < SETTLED and time.monotonic() < end:
            time.sleep(0.1)
            now = self._screen.pixels()
            if now != last:
                last, since = now, time.monotonic()
        picture = self._pictures / f"{name}-{self._variant}.png"
        self._screen.screenshot(picture)
        print(picture, flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--pictures", type=pathlib.Path, default=pathlib.Path("screens"), help="directory of the screenshots")
    parser.add_argument("variants", nargs="*", choices=[*VARIANTS, []], metavar="VARIANT",
                        help="light, dark, contrast or scale2; by default all")
    options = parser.parse_args()
    options.pictures.mkdir(parents=True, exist_ok=True)
    for variant in options.variants or VARIANTS:
        Screens(variant, options.pictures).take()
    return 0


if __name__ == "__main__":
    sys.exit(main())
