"""Fails when a class or a file is too large to be read as a whole.

A class declared in a header of source has at most 60 members. The declaration of a class has at most 150 lines, and a
file of source, plugins or branding at most 500.

Members are fields and functions. A function with its body in the class does not count; types, friends and macros of the
toolkit do not count either.
"""
import pathlib
import re
import sys

LIMIT = 60
LONGEST_CLASS = 150
LONGEST_FILE = 500
EXCEPTIONS = {
    "MainWindow": "one slot for each command of the user interface file",
    "Project": "all that plug-ins, scripts and files say about a project",
}
NO_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|^[ \t]*#(?:\\\n|[^\n])*|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'',
                     re.MULTILINE | re.DOTALL)
CLASS = re.compile(r"(?<!enum )\b(?:class|struct)\s+(\w+)\s*(?:final\s*)?(?::[^;{}()]*)?\{")
NO_MEMBER = re.compile(r"\b(?:public|protected|private)\b(?:\s+Q_SLOTS)?\s*:(?!:)|\bQ_SIGNALS\s*:"
                       r"|\bQ_[A-Z_]+\b(?:\s*\(\))?")
NO_MEMBERS = ("using", "typedef", "friend", "static_assert", "enum", "class", "struct", "union")


def violations(root):
    found = dict(classes(root))
    for name, (file, count) in sorted(found.items()):
        if count > LIMIT and name not in EXCEPTIONS:
            yield f"{file}: class {name} has {count} members, more than {LIMIT}"
    for name in sorted(EXCEPTIONS):
        if name not in found or found[name][1] <= LIMIT:
            yield f"class {name} needs no exception"
    yield from long_files(root)


def long_files(root):
    """Messages about files with too many lines, and about classes in headers."""
    for folder in ("source", "plugins", "branding"):
        for path in sorted([*(root / folder).rglob("*.cpp"), *(root / folder).rglob("*.h")]):
            text = path.read_text(encoding="utf-8")
            if (lines := text.count("\n")) > LONGEST_FILE:
                yield f"{path.relative_to(root)}: {lines} lines, more than {LONGEST_FILE}"
            if path.suffix == ".h":
                yield from long_classes(path.relative_to(root), text)


def long_classes(name, text):
    code = NO_CODE.sub(lambda match: "\n" * match[0].count("\n") or " ", text)
    for match in CLASS.finditer(code):
        if (lines := (match[0] + body(code, match.end())).count("\n") + 1) > LONGEST_CLASS:
            yield f"{name}: class {match[1]} has {lines} lines, more than {LONGEST_CLASS}"


def classes(root):
    """The name of each class with its file and the number of its members."""
    for path in sorted((root / "source").rglob("*.h")):
        code = NO_CODE.sub(" ", path.read_text(encoding="utf-8"))
        for match in CLASS.finditer(code):
            yield match[1], (path.relative_to(root), members(body(code, match.end())))


def body(code, start):
    """The text from behind an opening brace to the closing one."""
    depth = 1
    for brace in re.finditer(r"[{}]", code[start:]):
        depth += 1 if brace[0] == "{" else -1
        if depth == 0:
            return code[start:start + brace.start()]
    return code[start:]


def members(text):
    text = emptied(text, r"\(", r"\)", "()")
    text = emptied(text, r"\{", r"\}", "{}")
    text = emptied(text, "<", ">", "")
    text = NO_MEMBER.sub(" ", text)
    text = re.sub(r"(\(\)[^;{}]*)\{\}", r"\1 HAS_BODY;", text)
    return sum(members_of(declaration) for declaration in text.split(";"))


def emptied(text, opening, closing, instead):
    """The text with each pair of brackets replaced, from the innermost to the outermost."""
    innermost = re.compile(rf"{opening}[^{opening}{closing}]*{closing}")
    marked = text
    while innermost.search(marked):
        marked = innermost.sub("\0", marked)
    return marked.replace("\0", instead)


def members_of(declaration):
    words = re.findall(r"\w+", declaration)
    if not words or words[0] in NO_MEMBERS or "HAS_BODY" in words:
        return 0
    return 1 if "()" in declaration else 1 + declaration.count(",")


def selftest():
    """Each kind of declaration is counted or left out."""
    counted = {
        "int field;": 1,
        "int field = 0; // a comment; with a semicolon": 1,
        'QString text = u"; }"_s; QChar quote = u\'"\';': 2,
        "QMap<int, QList<int>> nested;": 1,
        "int first, second;": 2,
        "QList<int> list{1, 2};": 1,
        "void function(int a, const QString &b = {}) const;": 1,
        "std::function<void(int)> callback;": 1,
        "template <typename T> T *object(QMap<int, T> map) const;": 1,
        "Class() = default; ~Class() override; bool operator==(const Class &) const = default;": 3,
        "int inlined() const { if (a) { return 1; } return 2; } int field;": 1,
        "Class(int a) : m_a(a), m_b{a} {} int field;": 1,
        "Q_OBJECT Q_PROPERTY(int a READ a) public: Q_INVOKABLE void run(); public Q_SLOTS: void slot(); "
        "Q_SIGNALS: void signal();": 3,
        "using A = int; friend class B; enum E { X, Y }; enum class F; struct G; static_assert(true);": 0,
        "struct Inner { int a; int b; void c(); }; Inner inner;": 1,
        "#define MACRO(x) int x;\nint field;": 1,
    }
    for text, expected in counted.items():
        found = members(NO_CODE.sub(" ", text))
        if found != expected:
            sys.exit(f"{found} members instead of {expected}: {text}")
    check_tree()


def check_tree():
    """A tree with a class that is too large, and exceptions of which one is needed, gives exactly these messages."""
    import tempfile
    large = "".join(f"int m_{i};" for i in range(LIMIT + 1))
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        (root / "source/widgets").mkdir(parents=True)
        header = f"class Forward;\nclass Large final : public QCache<int, int>\n{{ struct Small {{ int a; }}; {large} }};"
        (root / "source/widgets/large.h").write_text(header, encoding="utf-8")
        (root / "source/mainwindow.h").write_text(f"class MainWindow {{ {large} }};", encoding="utf-8")
        (root / "source/project.h").write_text("class Project { int a; };", encoding="utf-8")
        (root / "plugins").mkdir()
        for name, text in (("full.cpp", "\n" * LONGEST_FILE), ("long.cpp", "\n" * (LONGEST_FILE + 1))):
            (root / "plugins" / name).write_text(text, encoding="utf-8")
        for name, blanks in (("Full", LONGEST_CLASS - 2), ("Long", LONGEST_CLASS - 1)):
            (root / f"plugins/{name}.h").write_text(f"class {name}\n{{" + "\n" * blanks + "};\n", encoding="utf-8")
        found = list(violations(root))
    expected = [f"source/widgets/large.h: class Large has {LIMIT + 1} members, more than {LIMIT}",
                "class Project needs no exception",
                f"plugins/Long.h: class Long has {LONGEST_CLASS + 1} lines, more than {LONGEST_CLASS}",
                f"plugins/long.cpp: {LONGEST_FILE + 1} lines, more than {LONGEST_FILE}"]
    if found != expected:
        sys.exit("found:\n" + "\n".join(found) + "\nexpected:\n" + "\n".join(expected))


if sys.argv[1] == "--selftest":
    selftest()
else:
    messages = list(violations(pathlib.Path(sys.argv[1])))
    if messages:
        sys.exit("\n".join(messages))
