"""producttexts.py FILE: writes the user texts of product files to FILE, in a form that lupdate reads.

The contexts and comments are those that the program uses: see productText().
"""
import ast
import pathlib
import sys
import xml.etree.ElementTree as ElementTree

SOURCE = pathlib.Path(__file__).resolve().parent.parent


def root_of(file):
    return ElementTree.parse(SOURCE / file).getroot()


def ui_texts():
    """Menus, tool bars and actions. The comment is the element's name, since mnemonics depend on the menu."""
    root = root_of("config/uiconfig.xml")
    for action in root.iterfind("actions/action"):
        for tag in ("text", "menutext", "statustip", "whatsthis"):
            yield "UiConfig", action.findtext(tag), action.get("name")
    for element in [*root.iterfind(".//menu"), *root.iterfind("toolbars/toolbar")]:
        yield "UiConfig", element.get("displayname"), element.get("name")


def key_sets():
    for element in root_of("config/keys.xml").iterfind("set"):
        yield "KeySets", element.get("text"), None


def format_names():
    """What the options dialog lists: sections and items of the formats."""
    root = root_of("config/textformats.xml")
    for element in [*root.iterfind("section"), *root.iterfind("section/format")]:
        yield "TextFormats", element.get("name"), None


def template_texts():
    for file in sorted([*SOURCE.glob("templates/**/template.xml"), *SOURCE.glob("data/filetemplates/**/template.xml")]):
        for tag in ("displayname", "description"):
            yield "Templates", root_of(file).findtext(tag), None


def scripts():
    """Those that are part of the product. What templates copy into projects has no texts of its own."""
    return sorted([*SOURCE.glob("python/*.py"), *SOURCE.glob("templates/**/*.py")])


def is_marked(node):
    """Whether an expression of a script is a call of `tr`, of the module varneltexts."""
    return isinstance(node, ast.Call) and isinstance(node.func, ast.Name) and node.func.id == "tr"


def script_texts():
    for file in scripts():
        for node in ast.walk(ast.parse(file.read_text(encoding="utf-8"))):
            if is_marked(node):
                yield "Scripts", ast.literal_eval(node.args[0]), None


def quoted(text):
    escaped = text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")
    return f'"{escaped}"'


def line(context, text, comment):
    if comment:
        return f"QT_TRANSLATE_NOOP3({quoted(context)}, {quoted(text)}, {quoted(comment)})"
    return f"QT_TRANSLATE_NOOP({quoted(context)}, {quoted(text)})"


def lines():
    texts = [*ui_texts(), *key_sets(), *format_names(), *template_texts(), *script_texts()]
    return [line(*each) for each in dict.fromkeys(texts) if each[1]]


if __name__ == "__main__":
    pathlib.Path(sys.argv[1]).write_text("\n".join(lines()) + "\n", encoding="utf-8")
