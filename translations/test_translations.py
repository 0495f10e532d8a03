"""Tests of the translations: complete, and usable in the place of the English texts."""
import ast
import collections
import pathlib
import re
import unittest
import xml.etree.ElementTree as ElementTree

import producttexts
import refresh

HERE = pathlib.Path(__file__).resolve().parent
FILES = sorted(HERE.glob("varnel_*.ts"))

# Menus with items of the code. Each item is a command of uiconfig.xml, or a context with an English text.
MIXED_MENUS = {
    "project of the navigator": [
        "projectInsertFilesAlt", "editPaste", "buildBuildAlt", "buildRebuildAlt", "buildCleanAlt", "projectPropertiesAlt",
        ("ProjectTreeMenus", "Set as Acti&ve Project"), ("ProjectTreeMenus", "&Remove Project from Workspace"),
        ("ProjectTreeMenus", "Save as &Template...")],
    "folder of the navigator": [
        "editCut", "editPaste", "editRemove", ("ProjectTreeMenus", "Add &Files to Folder..."),
        ("ProjectTreeMenus", "&New Folder"), ("ProjectTreeMenus", "Rena&me"), ("ProjectTreeMenus", "&Properties...")],
    "file of the navigator": [
        "buildCompileFile", "editCut", "editRemove", "fileProperties", ("ProjectTreeMenus", "&Open"), ("ProjectTreeMenus", "&Run")],
    "View": ["viewNavigator", "viewOutput", "viewGotoLine", ("ZoomCommands", "Zoom &In"), ("ZoomCommands", "Zoom O&ut"),
             ("ZoomCommands", "Zoom &100 %")],
    "Debug Windows": ["debugToggleRegisterWindow", "debugToggleWatchWindow", "debugToggleMemoryWindow",
                      "debugTogglePeripheralWindow", ("ProcessorDock", "&Processors")],
    "page of the output window": [("OutputPage", "&Copy"), ("OutputPage", "Select &All")],
}


class Text:
    def __init__(self, key, translation):
        self.context, self.source, self.comment = key
        self.unfinished = translation.get("type") is not None
        self.forms = [form.text or "" for form in translation.iterfind("numerusform")]
        self.translations = self.forms or [translation.text or ""]

    def __str__(self):
        return f"{self.context} ({self.comment}): {self.source!r} -> {self.translations}"


def texts():
    return [Text(*entry) for file in FILES for entry in refresh.entries(file)]


def placeholders(text):
    return sorted(re.findall(r"%[1-9n]|\$\(\w+\)|\{[a-z]*\}", text))


def plain_text(node):
    """A string of a script, also one with inserted values; empty for anything else."""
    if isinstance(node, ast.JoinedStr):
        return "".join(plain_text(each) if isinstance(each, ast.Constant) else "{}" for each in node.values)
    if isinstance(node, ast.BinOp):
        return plain_text(node.left)
    return node.value if isinstance(node, ast.Constant) and isinstance(node.value, str) else ""


def tags(text):
    return sorted(re.findall(r"</?\w+[^>]*>", text)) if re.search(r"</\w+>|<br>", text) else []


def patterns(text):
    """Patterns of file names in a filter of a file dialog."""
    return re.findall(r"\(([^)]*[*.][^)]*)\)", text) if ";;" in text else []


def mnemonic(text):
    found = re.search(r"&([^&\s;])", text.replace("&&", ""))
    return found.group(1).upper() if found and not re.search(r"&\w+;", text) else None


def underlined(text):
    return bool(re.search(r"<u>.</u>", text))


def repeated(letters):
    counts = collections.Counter(letter for letter in letters if letter)
    return [letter for letter, count in counts.items() if count > 1]


class TextsTest(unittest.TestCase):
    def each(self, is_wrong):
        wrong = [str(text) for text in texts() for translation in text.translations if is_wrong(text, translation)]
        self.assertEqual(wrong, [])

    def test_files_are_current_and_lupdate_reports_nothing(self):
        self.assertEqual(refresh.check(FILES), [])

    def test_every_text_has_a_translation(self):
        self.each(lambda text, translation: text.unfinished or (not translation.strip() and text.source.strip()))

    def test_german_is_there(self):
        self.assertIn("varnel_de.ts", [file.name for file in FILES])

    def test_plural_forms_are_complete(self):
        self.each(lambda text, _: "%n" in text.source and len(text.forms) < 2)

    def test_placeholders_are_kept(self):
        def lost(text, translation):
            dropped = [each for each in placeholders(text.source) if each not in placeholders(translation)]
            is_singular = text.forms and translation is text.forms[0]
            return dropped not in ([], ["%n"] if is_singular else []) or set(placeholders(translation)) - set(placeholders(text.source))
        self.each(lost)

    def test_markup_is_kept(self):
        self.each(lambda text, translation: [tag for tag in tags(text.source) if tag != "<u>"] != [
            tag for tag in tags(translation) if tag != "<u>"] or underlined(text.source) != underlined(translation))

    def test_file_patterns_are_kept(self):
        self.each(lambda text, translation: patterns(text.source) != patterns(translation))

    def test_blanks_and_line_ends_at_the_edges_are_kept(self):
        def edges(text):
            return re.match(r"\s*", text).group(), re.search(r"\s*\Z", text).group()
        self.each(lambda text, translation: edges(text.source) != edges(translation))

    def test_dots_of_commands_that_ask_are_kept(self):
        self.each(lambda text, translation: text.source.endswith("...") != translation.endswith("..."))

    def test_shortcut_behind_a_tab_is_kept(self):
        self.each(lambda text, translation: text.source.partition("\t")[2] != translation.partition("\t")[2])

    def test_mnemonic_is_kept(self):
        self.each(lambda text, translation: (mnemonic(text.source) is None) != (mnemonic(translation) is None))


class ScriptsTest(unittest.TestCase):
    """Sentences in scripts of the product, and all that is given to the functions that show texts."""

    SHOWING = {"DeviceError", "NoTarget", "ValueError", "append", "give_up", "messageBox"}

    def unmarked(self, node):
        if producttexts.is_marked(node):
            return
        if isinstance(node, ast.Call) and getattr(node.func, "id", getattr(node.func, "attr", "")) in self.SHOWING:
            yield from (each for each in map(plain_text, node.args) if re.search("[a-z]{2} ", each))
        if isinstance(node, (ast.FunctionDef, ast.ClassDef, ast.Module)) and ast.get_docstring(node):
            node.body.pop(0)
        if re.fullmatch(r"(?!Sources)[A-Z][^\n]* [^\n]*[.:]( *\{\})?", plain_text(node)):
            yield plain_text(node)
        for child in ast.iter_child_nodes(node):
            yield from self.unmarked(child)

    def test_all_texts_are_marked_for_translation(self):
        for file in producttexts.scripts():
            with self.subTest(file.name):
                self.assertEqual(list(self.unmarked(ast.parse(file.read_text(encoding="utf-8")))), [])

    def test_marked_texts_have_their_import(self):
        for file in producttexts.scripts():
            text = file.read_text(encoding="utf-8")
            self.assertEqual(" tr(" in text or "(tr(" in text, "from varneltexts import tr\n" in text, file.name)


class MnemonicsTest(unittest.TestCase):
    def setUp(self):
        self.ui = ElementTree.parse(HERE.parent / "config" / "uiconfig.xml").getroot()
        self.commands = {action.get("name"): action.findtext("menutext") for action in self.ui.iterfind("actions/action")}
        self.texts = {(text.context, text.comment, text.source): text.translations[0] for text in texts()}

    def check(self, place, keys):
        translated = [self.texts[key] for key in keys]
        with self.subTest(place):
            self.assertEqual(repeated(map(mnemonic, translated)), [], translated)

    def key(self, item):
        """The text of an item of MIXED_MENUS, or of an element of uiconfig.xml."""
        if isinstance(item, tuple):
            return item[0], "", item[1]
        name = item if isinstance(item, str) else item.get("name")
        return "UiConfig", name, self.commands.get(name) or item.get("displayname")

    def test_letters_of_a_menu_differ(self):
        for menu in [self.ui.find("menus"), *self.ui.iterfind("menus//menu")]:
            self.check(menu.get("name"), [self.key(item) for item in menu if item.tag in ("menu", "action")])
        for name, items in MIXED_MENUS.items():
            self.check(name, [self.key(item) for item in items])

    def test_letters_of_a_form_differ(self):
        contexts = collections.defaultdict(list)
        for context, comment, source in self.texts:
            if context.endswith("Base"):
                contexts[context].append((context, comment, source))
        for context, keys in contexts.items():
            if not repeated(mnemonic(source) for _, _, source in keys):
                self.check(context, keys)


if __name__ == "__main__":
    unittest.main()
