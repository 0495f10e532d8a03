#include "scripteditor.h"
#include "activity.h"
#include "callplugin.h"
#include "documenttemplate.h"
#include "newerfile.h"
#include "programplace.h"
#include "project.h"
#include "scriptdocument.h"
#include "scripthost.h"
#include "textdocument.h"
#include "viewmanager.h"
#include "workspace.h"
#include <algorithm>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
DocumentTemplate *templateFor(const Workspace &workspace, const QString &path)
{
    const auto &templates = workspace.templates();
    const auto found = std::ranges::find_if(templates, [&path](DocumentTemplate *docTemplate) {
        return askPlugin("DocumentTemplate::canOpen", [&] { return docTemplate->canOpen(path); });
    });
    return found == templates.end() ? nullptr : *found;
}
} // namespace

void ScriptEditor::openDocument(const QString &path) const
{
    if (path.isEmpty() || !model().host().openFile(path, false))
        raisePython(PyExc_OSError, u"Error opening document '%1'."_s.arg(path));
}

QString absolutePath(const ObjectModel &model, const QString &name)
{
    const Project *project = model.activity().currentProject();
    return QDir::cleanPath(QDir(project ? project->basePath() : QString()).absoluteFilePath(name));
}

void ScriptEditor::newDocument(const QString &path, int addToProject) const
{
    Workspace *workspace = model().host().workspace();
    const bool isFile = !ProgramPlace::fromBreakpoint(path, 1).isDisassembly(); // "disassembler:fw" stays as it is
    const QString absolute = isFile ? absolutePath(model(), path) : path;
    DocumentTemplate *docTemplate = templateFor(*workspace, absolute);
    if (!docTemplate)
        raisePython(PyExc_ValueError, u"No document template for '%1' could not be found."_s.arg(path));
    const bool exists = workspace->findDocument(absolute) || QFileInfo::exists(absolute); // it would be overwritten
    if (exists || !workspace->newDocument(docTemplate, absolute))
        raisePython(PyExc_OSError, u"Document '%1' could not be created."_s.arg(path));
    if (Project *project = model().activity().currentProject(); project && addToProject != 0)
        project->addFiles({absolute}, nullptr);
}

void ScriptEditor::saveAll(int modifiedOnly) const
{
    const Workspace *workspace = model().host().workspace();
    const auto isOverwritten = [modifiedOnly](Document *document) {
        return (document->modified() || modifiedOnly == 0) && document->isNewerOnDisk();
    };
    QList<QPointer<Document>> newer; // questions are asked
    std::ranges::copy_if(workspace->documents(), std::back_inserter(newer), isOverwritten);
    for (const QPointer<Document> &document : std::as_const(newer)) {
        const QString path = document ? document->filename() : QString();
        if (document && !maySave(model().host().dialogParent(), document))
            raisePython(PyExc_OSError, u"Could not save file '%1'."_s.arg(path));
    }
    model().host().workspace()->saveAll(modifiedOnly != 0);
}

py::list ScriptEditor::documents() const
{
    py::list list;
    for (Document *document : model().host().workspace()->documents()) {
        if (auto *text = qobject_cast<TextDocument *>(document))
            list.append(newScriptObject<ScriptDocument>(model(), text));
    }
    return list;
}

PythonReference ScriptEditor::currentDocument() const
{
    auto *document = qobject_cast<TextDocument *>(model().host().viewManager()->currentDocument());
    return document ? newScriptObject<ScriptDocument>(model(), document) : nullptr;
}

py::object bindEditor()
{
    auto type =
        newScriptType<ScriptEditor>("Editor", "Represents a the source editor, and provides access to Text Documents");
    type.def("openDocument", &ScriptEditor::openDocument, py::arg("filename"), py::pos_only(),
             "openDocument(filename) - Opens document with path 'filename'");
    type.def("newDocument", &ScriptEditor::newDocument, py::arg("filename"), py::arg("addToProject") = 0,
             py::pos_only(), "newDocument(filename,[addToProject]) - Creates a new document with name 'filename'");
    type.def("saveAll", &ScriptEditor::saveAll, py::arg("modifiedOnly") = 1, py::pos_only(),
             "saveAll([modifiedOnly]) - Saves all open documents");
    type.def_property_readonly("documents", &ScriptEditor::documents, "List fo currently open documents [R]");
    type.def_property_readonly("currentDocument", &ScriptEditor::currentDocument,
                               "TexDocument object representing the currently active documents [R]");
    return type;
}
