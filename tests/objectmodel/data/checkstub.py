"""Compares the stub file for editors with the table scripttypes.tsv and the running module. Names the differences."""
import ast

import varnel


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


def check_class(node, documentation, rows):
    name = node.name
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


def check(stub, table, load):
    with open(stub, encoding="utf-8") as file:
        tree = ast.parse(file.read())
    classes = [each for each in tree.body if isinstance(each, ast.ClassDef)]
    types = load("checktypes").read(table)
    yield from check_names(tree)
    hidden = {"projects-iterator": "ProjectsIterator"}
    names = [each[0] or hidden.get(each[1], each[1]) for each in types]
    if [each.name for each in classes] != names:
        yield f"the classes are {[each.name for each in classes]}"
        return
    for node, (_, _, _, documentation, rows) in zip(classes, types):
        yield from check_class(node, documentation, rows)
