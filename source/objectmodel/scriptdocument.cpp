#include "scriptdocument.h"
#include "newerfile.h"
#include "scripteditor.h"
#include "scripthost.h"
#include "textdocument.h"
#include "textview.h"
#include "viewmanager.h"
#include "workspace.h"
#include <limits>

using namespace Qt::StringLiterals;

namespace {
[[noreturn]] void raiseNotSaved(const QString &path)
{
    raisePython(PyExc_OSError, u"Could not save file '%1'."_s.arg(path));
}
} // namespace

ScriptDocument::ScriptDocument(ObjectModel &model, TextDocument *document) : ScriptObject(model), m_document(document)
{}

// This document

TextDocument &ScriptDocument::document() const
{
    requireMainThread();
    return requireAlive(m_document);
}

void ScriptDocument::activate() const
{
    views().activateDocument(&document(), true);
}

void ScriptDocument::save() const
{
    const QString path = document().filename(); // the document may be closed while a message is shown
    if (!maySave(model().host().dialogParent(), &document()) || !document().save())
        raiseNotSaved(path);
}

/// Two documents on one file would overwrite each other's changes.
void ScriptDocument::saveAs(const QString &path) const
{
    TextDocument &saved = document();
    const QString absolute = absolutePath(model(), path);
    if (absolute == saved.filename() && !maySave(model().host().dialogParent(), &saved))
        raiseNotSaved(path);
    if (model().host().workspace()->findOther(absolute, m_document) || !document().saveAs(absolute))
        raiseNotSaved(path);
}

// The view in front

ViewManager &ScriptDocument::views() const
{
    (void)document();
    return *model().host().viewManager();
}

TextView *ScriptDocument::textView() const
{
    return qobject_cast<TextView *>(views().currentView());
}

void ScriptDocument::gotoLine(long line) const
{
    if (auto *navigation = viewInterface<ITextNavigation>(views().currentView()))
        navigation->gotoLine(int(std::clamp<long>(line, 0, std::numeric_limits<int>::max())));
}

void ScriptDocument::insert(const QString &text) const
{
    if (TextView *view = textView())
        view->insert(text);
}

void ScriptDocument::moveCursor(long direction, long select) const
{
    TextView *view = textView();
    if (view && direction >= TextView::MoveBackward && direction <= TextView::MoveEnd)
        view->moveCursor(TextView::CursorAction(direction), select != 0);
}

// The type

namespace {
/// Calls a command of the view in front.
template <void (ViewManager::*command)()>
void callView(const ScriptDocument &self)
{
    (self.views().*command)();
}

void defineMethods(py::class_<ScriptDocument> &type)
{
    type.def("activate", &ScriptDocument::activate,
             "activate() - Makes the document the currently active document in the work place.");
    type.def("save", &ScriptDocument::save, "save() - Saves the last editing operation");
    type.def("saveAs", &ScriptDocument::saveAs, py::arg("filename"), py::pos_only(),
             "saveAs(filename) - Saves document with name 'filename'");
    type.def("undo", callView<&ViewManager::undo>, "undo() - Undoes the last editing operation");
    type.def("redo", callView<&ViewManager::redo>, "redo() - Redoes the last editing operation");
    type.def("cut", callView<&ViewManager::cut>, "cut() - Cuts the selected text to the clipboard.");
    type.def("copy", callView<&ViewManager::copy>, "copy() - Copies the selected text to the clipboard");
    type.def("paste", callView<&ViewManager::paste>,
             "paste() - Pastes the text on the clipboard at the current cursor position");
    type.def("gotoLine", &ScriptDocument::gotoLine, py::arg("line"), py::pos_only(),
             "gotoLine(line) - Moves the cursor to 'line'");
    type.def("insert", &ScriptDocument::insert, py::arg("text"), py::pos_only(),
             "instert(text) - inserts 'text' at the cursor");
    type.def(
        "moveCursor", &ScriptDocument::moveCursor, py::arg("direction"), py::arg("select") = 0, py::pos_only(),
        "moveCursor(CursorDirection,[SelectText]) - Moves cursor in 'CursorDirection' and optionally selects text");
    type.def("selectAll", callView<&ViewManager::selectAll>, "SelectAll() - selects the entire document");
}
} // namespace

py::object bindDocument()
{
    auto type = newScriptType<ScriptDocument>("Document", "Represents a single open text document");
    defineMethods(type);
    type.def_property_readonly(
        "title", [](const ScriptDocument &self) { return self.document().title(); },
        "Returns the title of the document. [R]");
    type.def_property_readonly(
        "path", [](const ScriptDocument &self) { return self.document().filename(); },
        "Returns full path to the document [R]");
    type.def_property_readonly(
        "isModified", [](const ScriptDocument &self) { return int(self.document().modified()); },
        "Returns 1 if document is modified [R]");
    type.def_property_readonly(
        "selectedText", [](const ScriptDocument &self) { return self.document().selectedText(); },
        "Returns the currently selected text. [R]");
    return type;
}
