#include "documentkinds.h"
#include "cpphighlighter.h"
#include "cppindent.h"
#include "disassemblerdocumenttemplate.h"
#include "helpdocumenttemplate.h"
#include "ideapplication.h"
#include "largetextdocumenttemplate.h"
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
    QString lineComment = {};
};

template <typename Highlighter, typename Indenter>
void addTextKind(Workspace &workspace, const EditorSetup &setup, const TextKind &kind)
{
    auto *textTemplate = new TextDocumentTemplate(
        kind.name, kind.description, IDEApplication::instance()->loadIcon(kind.picture), kind.extensions,
        std::make_unique<Highlighter>(setup.formats), std::make_unique<Indenter>());
    textTemplate->setLineComment(kind.lineComment);
    workspace.addTemplate(textTemplate);
}
} // namespace

void registerDocumentKinds(Workspace &workspace, const EditorSetup &setup, const std::function<void()> &addPluginKinds)
{
    // New files get the first extension of their kind.
    addTextKind<CppHighlighter, CppIndent>(workspace, setup,
                                           {QObject::tr("C/C++ Header File"),
                                            QObject::tr("Creates a C/C++ header file"),
                                            {u"h"_s, u"hh"_s, u"hpp"_s, u"hxx"_s},
                                            u"headerfile.png"_s,
                                            u"//"_s});
    addTextKind<CppHighlighter, CppIndent>(workspace, setup,
                                           {QObject::tr("C Source File"),
                                            QObject::tr("Creates a C source file"),
                                            {u"c"_s, u"cpp"_s, u"cc"_s, u"cxx"_s},
                                            u"csourcefile.png"_s,
                                            u"//"_s});
    addTextKind<PythonHighlighter, PythonIndent>(workspace, setup,
                                                 {QObject::tr("Python File"),
                                                  QObject::tr("Creates a Python source file"),
                                                  {u"py"_s},
                                                  u"pythonsourcefile.png"_s,
                                                  u"#"_s});
    workspace.addTemplate(new HelpDocumentTemplate(QObject::tr("Help File"), QObject::tr("View Online Help file"),
                                                   IDEApplication::instance()->loadIcon(u"textfile.png"_s)));
    auto *disassembly =
        new DisassemblerDocumentTemplate(QObject::tr("Disassembler View"), QObject::tr("View disassembly"),
                                         IDEApplication::instance()->loadIcon(u"textfile.png"_s), setup.formats);
    disassembly->setEditorHost(setup.host);
    workspace.addTemplate(disassembly);
    addPluginKinds();
    addTextKind<SyntaxHighlighter, BaseIndent>(
        workspace, setup, {QObject::tr("Text File"), QObject::tr("Creates a text file"), {}, u"textfile.png"_s});
    auto *large = new LargeTextDocumentTemplate(IDEApplication::instance()->loadIcon(u"textfile.png"_s), setup.formats);
    large->setEditorHost(setup.host);
    workspace.addTemplate(large); // for files that are too large for all others
    for (DocumentTemplate *docTemplate : workspace.templates()) {
        if (auto *text = qobject_cast<TextDocumentTemplate *>(docTemplate)) {
            text->setEditorHost(setup.host);
            text->setSwapDirectory(setup.swapDirectory);
        }
    }
}

void applyEditorSettings(const Workspace &workspace, const QSettings &settings)
{
    for (DocumentTemplate *docTemplate : workspace.templates()) {
        if (auto *text = qobject_cast<TextDocumentTemplate *>(docTemplate))
            text->readSettings(settings);
    }
}
