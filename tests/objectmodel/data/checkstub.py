"""Compares the stub files for editors with the table scripttypes.tsv and the running modules. Names the differences."""
import ast

import varnel
import varnelreplay
import varneltexts

# The classes of the stub file for types that the module does not offer by name, which therefore begin with "_".
HIDDEN = {"app.projects": "_Projects", "iter(app.projects)": "_ProjectsIterator", "app.debugger.processors": "_Processors",
          "iter(app.debugger.processors)": "_ProcessorsIterator"}


def decorators(function):
    return [ast.unparse(each) for each in function.decorator_list]


def members(node):
    """The members of a class: (kind, name, documentation, function). A setter is not one of its own."""
    functions = [each for each in node.body if isinstance(each, ast.FunctionDef)]
    setters = {text for each in functions for text in decorators(each) if text.endswith(".setter")}
    for each in functions:
        if each.name.startswith("_") or setters.intersection(decorators(each)):
            continue
        kind = "method"
        if "property" in decorators(each):
            kind = "RW" if each.name + ".setter" in setters else "R"
        yield kind, each.name, ast.get_docstring(each, clean=False) or "", each


def check_parameters(what, function, arguments):
    required = len(arguments.split("|")[0])
    letters = arguments.replace("|", "")
    positional = function.args.posonlyargs[1:]
    if function.args.args not in ([], function.args.args[:1]) or len(positional) != len(letters):
        yield f"{what} has other parameters than {arguments!r}"
    if len(positional) - len(function.args.defaults) != required:
        yield f"{what} does not have {required} required parameters"
    for letter, parameter in zip(letters, positional):
        expected = {"s": "str", "i": "int", "l": "int"}.get(letter)
        if expected and ast.unparse(parameter.annotation) != expected:
            yield f"{what}: {parameter.arg} is not {expected}"


def check_protocols(node, expected):
    special = {each.name for each in node.body if isinstance(each, ast.FunctionDef) and each.name.startswith("__")}
    if special != set(expected):
        yield f"{node.name} has {sorted(special)}"
    for each in node.body:
        if isinstance(each, ast.FunctionDef) and each.name != "extension" and "Any" in ast.unparse(each):
            yield f"{node.name}.{each.name} does not say what it returns"


def check_class(node, documentation, rows, protocols):
    name = node.name
    yield from check_protocols(node, protocols["protocol"])
    if (ast.get_docstring(node, clean=False) or "") != documentation:
        yield f"{name}: other documentation"
    stubs = list(members(node))
    if [stub[1] for stub in stubs] != [row[1] for row in rows]:
        yield f"{name} has {[stub[1] for stub in stubs]}"
        return
    for (kind, member, text, function), (row_kind, _, form, row_text) in zip(stubs, rows):
        what = f"{name}.{member}"
        if text != row_text:
            yield f"{what}: other documentation"
        if kind != ("method" if row_kind == "method" else form):
            yield f"{what} is {kind}"
        if function.returns is None:
            yield f"{what} has no type"
        if kind == "method":
            yield from check_parameters(what, function, form)


def check_names(tree):
    declared = {each.target.id: ast.unparse(each.annotation) for each in tree.body if isinstance(each, ast.AnnAssign)}
    for name, value in vars(varnel).items():
        if not name.startswith("_") and not isinstance(value, type) and declared.pop(name, None) != type(value).__name__:
            yield f"{name} is not declared as {type(value).__name__}"
    if declared:
        yield f"the module has no {list(declared)}"


def parse(stub):
    with open(stub, encoding="utf-8") as file:
        return ast.parse(file.read())


def check_widgets(classes):
    """The objects of the toolkit have any attributes."""
    for name in ("_Object", "_Slot"):
        if classes.pop(name, None) is None:
            yield f"there is no {name}"


def check_replay(tree):
    node, = (each for each in tree.body if isinstance(each, ast.ClassDef))
    live = [name for name in vars(varnelreplay.Replay) if not name.startswith("_")]
    stubs = list(members(node))
    if [stub[1] for stub in stubs] != live:
        yield f"Replay has {[stub[1] for stub in stubs]}"
    for _, name, text, _ in stubs:
        if text != getattr(varnelreplay.Replay, name).__doc__:
            yield f"Replay.{name}: other documentation"
    declared = {each.target.id: ast.unparse(each.annotation) for each in tree.body if isinstance(each, ast.AnnAssign)}
    if declared != {"replay": "Replay"}:
        yield f"varnelreplay declares {declared}"


def check_texts(tree):
    function, = (each for each in tree.body if isinstance(each, ast.FunctionDef))
    live = [name for name in vars(varneltexts) if not name.startswith("_")]
    if live != [function.name]:
        yield f"varneltexts has {live}"
    elif ast.get_docstring(function) != varneltexts.tr.__doc__:
        yield "varneltexts.tr: other documentation"


def check(folder, table, load):
    tree = parse(folder + "/varnel.pyi")
    yield from check_names(tree)
    yield from check_replay(parse(folder + "/varnelreplay.pyi"))
    yield from check_texts(parse(folder + "/varneltexts.pyi"))
    classes = {each.name: each for each in tree.body if isinstance(each, ast.ClassDef)}
    yield from check_widgets(classes)
    types = [each for each in load("checktypes").read(table) if not each[1].startswith("Py")]
    names = [each[0] or HIDDEN[each[2]] for each in types]
    if list(classes) != names:
        yield f"the classes are {list(classes)}"
        return
    for name, (_, _, _, documentation, rows, protocols) in zip(names, types):
        yield from check_class(classes[name], documentation, rows, protocols)
