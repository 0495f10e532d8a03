"""createProject() of the shipped script templates: names, files that exist already, refusals and cancelled forms."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from unittest import mock

from program import ROOT, app, use_scripts

use_scripts("embedded/device", "embedded/twoprocessors", "existing/folder", "varnel/plugin")
import device  # noqa: E402
import fromfolder  # noqa: E402
import pluginproject  # noqa: E402
import twoprocessors  # noqa: E402

TEMPLATES = {device: "embedded/device", twoprocessors: "embedded/twoprocessors", fromfolder: "existing/folder",
             pluginproject: "varnel/plugin"}
NAMES = "demo", "two words", "Gr\u00f6\u00dfe %1", "it's \"q\" & <y>", "motor-v1.2", ".x.y"


class ScriptTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(os.path.realpath(directory.name))
        app.messages, app.forms = [], []
        installation = self.root / "installation"
        (installation / "include/varnel").mkdir(parents=True)
        (installation / "include/varnel/pluginfactory.h").touch()
        self.enterContext(mock.patch.object(pluginproject, "INSTALLATION", installation))
        self.enterContext(mock.patch.object(pluginproject, "paths_of_qt", lambda: {
            "QT_INSTALL_HEADERS": "/qt", "QT_HOST_LIBEXECS": "/moc"}))

    def create(self, script, name="demo", form=None, path=None, has_folder=True):
        """Runs the script as the dialog does, with a form that is filled in."""
        self.project = path or self.root / name
        if has_folder:
            self.project.mkdir(exist_ok=True)
        app.forms = [form or FORMS.get(script)]
        return script.createProject(name, str(ROOT / "templates" / TEMPLATES[script]), str(self.project))

    def cancel(self, _form):
        return False

    # Names

    def test_special_names_make_projects_that_can_be_opened(self):
        for script in TEMPLATES:
            for name in NAMES:
                with self.subTest(script.__name__, name=name):
                    path = pathlib.Path(self.create(script, name))
                    self.assertEqual(app.messages, [])
                    self.assertEqual(path.parent, self.root / name)
                    self.assertIn(path.name.split(".", 1)[1], ("vnp", "vnw"))  # the complete extension
                    ElementTree.parse(path)
                    shutil.rmtree(self.project)

    # Files that are there already

    def test_workspace_and_folders_of_two_processors_are_not_replaced(self):
        for name in ("demo.vnw", "asker/mine.c", "board/mine.c"):
            with self.subTest(name):
                file = self.root / "demo" / name
                file.parent.mkdir(parents=True)
                file.write_text("precious", encoding="utf-8")
                app.messages = []
                self.assertIsNone(self.create(twoprocessors))
                existing = file if name == "demo.vnw" else file.parent
                self.assertEqual(app.messages, [f"Two processors|The file '{existing}' exists already."])
                self.assertEqual(file.read_text(encoding="utf-8"), "precious")
                self.assertEqual([each for each in self.project.rglob("*") if each.is_file()], [file])
                shutil.rmtree(self.project)

    def test_existing_file_is_named_and_nothing_is_written(self):
        for script, name in ((device, "main.c"), (pluginproject, "plugin.cpp"), (pluginproject, "demo.vnp"),
                             (fromfolder, "demo.vnp")):
            with self.subTest(script.__name__, name=name):
                file = self.root / "demo" / name
                file.parent.mkdir()
                file.write_text("precious", encoding="utf-8")
                app.messages = []
                self.assertIsNone(self.create(script))
                self.assertIn(f"The file '{file}' exists already.", app.messages[0])
                self.assertEqual(list(self.project.rglob("*")), [file])
                self.assertEqual(file.read_text(encoding="utf-8"), "precious")
                shutil.rmtree(self.project)

    # Refusals

    def test_project_that_cannot_be_written_is_reported(self):
        (self.root / "file").touch()  # in the place of a directory
        for script in TEMPLATES:
            with self.subTest(script.__name__):
                app.messages = []
                self.assertIsNone(self.create(script, path=self.root / "file/demo", has_folder=False))
                self.assertEqual(len(app.messages), 1)
                self.assertIn("The project could not be written: [Errno 20]", app.messages[0])

    def test_missing_headers_and_qt_are_reported_and_leave_no_folder(self):
        with mock.patch.object(pluginproject, "paths_of_qt", dict):
            self.assertIsNone(self.create(pluginproject))
        self.assertIn("'qmake6' was not found", app.messages[0])
        self.assertFalse(self.project.exists())
        with mock.patch.object(pluginproject, "INSTALLATION", self.root):
            self.assertIsNone(self.create(pluginproject))
        self.assertIn("The headers for plug-ins are not installed", app.messages[1])
        self.assertFalse(self.project.exists())

    def test_cancelled_forms_leave_no_folder(self):
        for script in (device, fromfolder):
            self.assertIsNone(self.create(script, form=self.cancel))
            self.assertFalse(self.project.exists())
        self.assertEqual(app.messages, [])

    def test_empty_folder_of_the_user_stays(self):
        for script in (device, fromfolder):
            self.assertIsNone(self.create(script, form=self.cancel, path=self.root / "own"))
            self.assertTrue(self.project.exists())

    def test_cancelled_choice_of_the_program_leaves_no_folder(self):
        sources = self.root / "sources"
        sources.mkdir()
        (sources / "CMakeLists.txt").touch()
        for existing in ("", "mine.c", "build/cmake/mine.o"):
            with self.subTest(existing):
                self.choose_after_cmake(sources, existing)
                files = [str(each.relative_to(self.project)) for each in self.project.rglob("*") if each.is_file()]
                self.assertEqual(files, [existing] if existing else [])
                self.assertEqual(self.project.exists(), bool(existing))
                shutil.rmtree(self.project, ignore_errors=True)

    def choose_after_cmake(self, sources, existing):
        """CMake has written to the project when the user cancels."""
        if existing:
            file = self.root / "demo" / existing
            file.parent.mkdir(parents=True)
            file.touch()

        def inspect(*_):
            (self.project / "build/cmake/.cmake").mkdir(parents=True)
            return mock.Mock(targets=[1, 2])

        with mock.patch.object(fromfolder, "Inspection", inspect), \
                mock.patch.object(fromfolder, "choose_target", lambda *_: None):
            self.assertIsNone(self.create(fromfolder, form=folder_form(sources)))

    def test_interrupted_script_leaves_no_folder(self):
        with mock.patch.object(fromfolder, "Inspection", side_effect=KeyboardInterrupt), \
                self.assertRaises(KeyboardInterrupt):
            self.create(fromfolder, form=folder_form(self.root))
        self.assertFalse(self.project.exists())

    def test_wrong_text_in_the_form_is_reported(self):
        def fill(form):
            fill_device(form)
            form.flashSizeEdit.text = "much"
            form.buttonBox.onAccepted(None)
            return False

        self.create(device, form=fill)
        self.assertEqual(app.messages, ["Title|'much' is not a number. Write it like 0x8000, 64K or 1M."])

    def test_qmake_that_fails_or_hangs_counts_as_missing(self):
        for error in (FileNotFoundError(), subprocess.TimeoutExpired("qmake6", 5), subprocess.CalledProcessError(1, "qmake6")):
            with mock.patch.object(subprocess, "run", side_effect=error):
                self.assertEqual(PATHS_OF_QT(), {})
        with mock.patch.object(subprocess, "run", return_value=mock.Mock(stdout="QT_VERSION:6\nnonsense\n")):
            self.assertEqual(PATHS_OF_QT(), {})


PATHS_OF_QT = pluginproject.paths_of_qt


def fill_device(form):
    form.coreBox.currentIndex, form.probeBox.currentIndex = 2, 4
    form.flashStartEdit.text, form.flashSizeEdit.text = "0", "256K"
    form.ramStartEdit.text, form.ramSizeEdit.text = "0x20000000", "16K"
    form.svdEdit.text = form.chipEdit.text = ""


def device_form(form):
    fill_device(form)
    form.buttonBox.onAccepted(None)
    return True


def folder_form(folder):
    def fill(form):
        form.folderEdit.text, form.askCheck.checked = str(folder), False
        return True

    return fill


FORMS = {device: device_form, fromfolder: folder_form(ROOT / "templates/native/c")}

if __name__ == "__main__":
    unittest.main()
