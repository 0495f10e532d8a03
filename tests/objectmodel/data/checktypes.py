"""Compares the types of the module "varnel" with the table scripttypes.tsv. Names the differences."""
import varnel

# Special methods of lists and mappings; others come with each class.
PROTOCOLS = {"__len__", "__getitem__", "__setitem__", "__delitem__", "__iter__", "__next__", "__contains__", "__call__",
             "__add__", "__mul__", "__rmul__", "__iadd__", "__imul__"}
DERIVABLE = ("PyQtWrapper", "PySlotWrapper")
REFUSED = {"s": (None, 5, b"bytes", object()), "i": (None, "5", 1.5, object()), "l": (None, "5", 1.5, object())}


def read(path):
    """The types of the table: (module name, type name, expression, documentation, members, protocols). The protocols are
    a dictionary with the special methods that work, and those that only raise an exception."""
    types = []
    with open(path, encoding="utf-8") as file:
        for line in file:
            kind, *fields = line.rstrip("\n").split("\t")
            if kind == "type":
                types.append((*fields, [], {"protocol": [], "refused": []}))
            elif kind in ("protocol", "refused"):
                types[-1][-1][kind] = fields[0].split()
            elif not kind.startswith("#"):
                types[-1][-2].append((kind, *fields))
    return types


def refuses(method, arguments):
    try:
        method(*arguments)
    except TypeError:
        return True
    except Exception:
        pass
    return False


def check_arguments(what, method, arguments):
    required = arguments.split("|")[0]
    letters = arguments.replace("|", "")
    good = ["" if letter == "s" else 0 for letter in letters]
    if not refuses(method, good + [0]):
        yield f"{what} accepts too many arguments"
    for count in range(len(required)):
        if not refuses(method, good[:count]):
            yield f"{what} accepts {count} arguments"
    for position, letter in enumerate(letters):
        for value in REFUSED.get(letter, ()):
            count = max(len(required), position + 1)
            if not refuses(method, good[:position] + [value] + good[position + 1:count]):
                yield f"{what} accepts {value!r} as argument {position + 1}"


def check_type(module_name, name, instance, documentation, members, protocols):
    kind = type(instance)
    if module_name and getattr(varnel, module_name, None) is not kind:
        yield f"varnel.{module_name} is not the type of {name}"
    if not module_name and name in vars(varnel):
        yield f"the module has {name}"
    if kind.__name__ != name or (kind.__doc__ or "") != documentation:
        yield f"{name}: the type is {kind.__name__}, {kind.__doc__!r}"
    if not refuses(kind, ()):
        yield f"{name} can be created"
    if name not in DERIVABLE and not refuses(type, ("Derived", (kind,), {})):
        yield f"{name} can be derived from"
    special = PROTOCOLS.intersection(vars(kind))
    if special != {*protocols["protocol"], *protocols["refused"]}:
        yield f"{name} has {sorted(special)}"
    listed = [member for member in vars(kind) if not member.startswith("_")]
    if listed != [member[1] for member in members]:
        yield f"{name} has {listed}"
    for member_kind, member, form, text in members:
        live = vars(kind).get(member)
        what = f"{name}.{member}"
        if live is None:
            continue
        if (live.__doc__ or "") != text:
            yield f"{what}: {live.__doc__!r}"
        if isinstance(live, property) != (member_kind == "attribute"):
            yield f"{what} is not of the kind {member_kind}"
        elif member_kind == "attribute":
            if (live.fset is not None) != (form == "RW"):
                yield f"{what} is not {form}"
        else:
            yield from check_arguments(what, getattr(instance, member), form)


def check_module(types):
    names = [name for name in vars(varnel) if not name.startswith("_")]
    constants = [name for name in names if name[:2] in ("mb", "mc")]
    expected = ["app"] + constants + [each[0] for each in types if each[0]]
    if names != expected:
        yield f"the module has {names}"


def check(path, debugger=False):
    """Checks the module, and the types of the debugger or all others: they need different workspaces."""
    types = read(path)
    names = dict(vars(varnel))
    yield from check_module(types)
    for module_name, name, expression, documentation, members, protocols in types:
        if ("debugger" in expression) != debugger:
            continue
        yield from check_type(module_name, name, eval(expression, names), documentation, members, protocols)
