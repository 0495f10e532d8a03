"""The samples of the documentation and of the manual's pages about scripts, run in the whole program without a display."""
import pathlib
import re
import tempfile
import unittest
from unittest import mock

import test_scripts
from debugging import copy_of_examples

ROOT = pathlib.Path(__file__).parents[2]
RUNNER = pathlib.Path(__file__).with_name("samples.py")


class SamplesTest(test_scripts.ScriptTest):
    def run_samples(self, page, count):
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(dir=self.directory)))
        examples, data = copy_of_examples(folder), folder / "data"
        users_folder = data / "Ostrand Labs/Varnel/python"
        users_folder.mkdir(parents=True)  # Python looks for it when it starts
        with mock.patch.dict("os.environ", {"XDG_DATA_HOME": str(data)}):
            code, output, errors = self.run_program(RUNNER, ROOT / page, examples, users_folder)
        self.assertEqual(code, 0, output + errors)
        self.assertEqual(output.splitlines()[-1], f"{count} samples", output)
        self.assertNotIn("Traceback", errors)
        return output

    def test_every_sample_of_a_page_is_run(self):
        """Pages with Python that are not named here would not be tried."""
        pages = {page.name for page in (ROOT / "docs").glob("scripting*.md") if re.search("^```py", page.read_text(), re.MULTILINE)}
        self.assertEqual(pages, {"scripting.md", "scripting-debugger.md", "scripting-widgets.md"})

    def test_tutorial(self):
        output = self.run_samples("docs/scripting.md", 12)
        self.assertIn("/* A thermostat that heats a simulated room", output)
        self.assertIn("['main.c', 'notes.txt']", output)
        self.assertRegex(output, r"main\.c', \d+\)\npower \d+\npc is 0x[0-9a-f]+\nthe first sample: \[\d+, \d+, \d+\]")

    def test_debugger(self):
        self.assertRegex(self.run_samples("docs/scripting-debugger.md", 1), r"main\.c', \d+\) \d+\n\['.*\] \[0\]")

    def test_widgets(self):
        self.run_samples("docs/scripting-widgets.md", 1)

    def test_manual(self):
        for page, count in (("scripts", 1), ("macros", 0), ("console", 0), ("headless", 0)):
            with self.subTest(page):
                self.run_samples(f"help/html/{page}.html", count)


if __name__ == "__main__":
    unittest.main()
