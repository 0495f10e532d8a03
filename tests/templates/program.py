"""The modules of the program for scripts that are tested without it: texts stay English, and dialogs are answered."""
import pathlib
import sys
import types

ROOT = pathlib.Path(__file__).parents[2]


class Widget:
    """Any widget of a form. Attributes that were not set are further widgets."""

    def __getattr__(self, name):
        widget = Widget()
        setattr(self, name, widget)
        return widget

    def __call__(self, *_):
        return None


class Form(Widget):
    """A form that `use` fills in; it returns whether the form is accepted."""

    windowTitle = "Title"

    def __init__(self, use):
        self.execute = lambda: use(self)


class App:
    """Answers forms in the order of `forms`, and records messages."""

    def __init__(self):
        self.messages, self.forms, self.outputWindow = [], [], Output()

    def messageBox(self, title, text, _buttons):
        self.messages.append(f"{title}|{text}")

    def loadUI(self, _path):
        return Form(self.forms.pop(0))


class Output(dict):
    def show(self):
        pass


app = App()


def use_scripts(*templates):
    """Makes the scripts of these templates importable."""
    sys.modules["varnel"] = module("varnel", app=app, mbOk=1)
    sys.modules["varneltexts"] = module("varneltexts", tr=str)
    sys.path[:0] = [str(ROOT / "templates" / each) for each in templates] + [str(ROOT / "python")]


def module(name, **contents):
    made = types.ModuleType(name)
    vars(made).update(contents)
    return made
