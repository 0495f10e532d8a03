#include "documentkinds.h"
#include "cpphighlighter.h"
#include "cppindent.h"
#include "ideapplication.h"
#include "pythonhighlighter.h"
#include "pythonindent.h"
#include "textdocumenttemplate.h"
#include "workspace.h"

using namespace Qt::StringLiterals;

namespace {
struct TextKind
{
    QString name;
    QString description;
    QStringList extensions;
    QString picture;
};

class Registrar
{
public:
    Registrar(Workspace &workspace, const EditorSetup &setup) : m_workspace(workspace), m_setup(setup) {}

    template <typename Highlighter, typename Indenter>
    void add(const TextKind &kind)
    {
        auto *docTemplate = new TextDocumentTemplate(
            kind.name, kind.description, IDEApplication::instance()->loadIcon(kind.picture), kind.extensions,
            std::make_unique<Highlighter>(m_setup.formats), std::make_unique<Indenter>());
        add(docTemplate);
    }

    void add(DocumentTemplate *docTemplate)
    {
        if (auto *text = qobject_cast<TextDocumentTemplate *>(docTemplate)) {
            text->setEditorHost(m_setup.host);
            text->setSwapDirectory(m_setup.swapDirectory);
            if (text->highlighter())
                text->highlighter()->setFormats(m_setup.formats);
        }
        m_workspace.addTemplate(docTemplate);
    }

private:
    Workspace &m_workspace;
    const EditorSetup &m_setup;
};
} // namespace

void registerDocumentKinds(Workspace &workspace, const EditorSetup &setup, const QList<DocumentTemplate *> &pluginKinds)
{
    // New files get the first extension of their kind.
    Registrar kinds(workspace, setup);
    kinds.add<CppHighlighter, CppIndent>({QObject::tr("C/C++ Header File"),
                                          QObject::tr("Creates a C/C++ header file"),
                                          {u"h"_s, u"hh"_s, u"hpp"_s, u"hxx"_s},
                                          u"headerfile.png"_s});
    kinds.add<CppHighlighter, CppIndent>({QObject::tr("C Source File"),
                                          QObject::tr("Creates a C source file"),
                                          {u"c"_s, u"cpp"_s, u"cc"_s, u"cxx"_s},
                                          u"csourcefile.png"_s});
    kinds.add<PythonHighlighter, PythonIndent>({QObject::tr("Python File"),
                                                QObject::tr("Creates a Python source file"),
                                                {u"py"_s},
                                                u"pythonsourcefile.png"_s});
    for (DocumentTemplate *kind : pluginKinds)
        kinds.add(kind);
    kinds.add<SyntaxHighlighter, BaseIndent>(
        {QObject::tr("Text File"), QObject::tr("Creates a text file"), {}, u"textfile.png"_s});
}

void applyEditorSettings(const Workspace &workspace, const QSettings &settings)
{
    for (DocumentTemplate *docTemplate : workspace.templates()) {
        if (auto *text = qobject_cast<TextDocumentTemplate *>(docTemplate))
            text->readSettings(settings);
    }
}
