#include "plugindocuments.h"
#include "baseindent.h"
#include "callplugin.h"
#include "guardedtemplate.h"
#include "icustomdocumentplugin.h"
#include "itextdocumentplugin.h"
#include "pluginfactory.h"
#include "textdocumenttemplate.h"
#include "varnelassert.h"
#include "workspace.h"

namespace {
using TemplatePtr = std::unique_ptr<DocumentTemplate>;

TemplatePtr customTemplate(IPluginObject *object, const FormatTable *)
{
    const auto plugin = queryPlugin<ICustomDocumentPlugin>(object);
    VARNEL_ASSERT_TEXT(plugin, "cdt");
    return guardedTemplate(TemplatePtr(askPlugin<&ICustomDocumentPlugin::documentTemplate>(plugin)));
}

TemplatePtr textTemplate(IPluginObject *object, const FormatTable *formats)
{
    const auto plugin = queryPlugin<ITextDocumentPlugin>(object);
    VARNEL_ASSERT_TEXT(plugin, "tdt");
    if (!plugin)
        return nullptr;
    const auto title = tryPlugin<&ITextDocumentPlugin::title>(plugin);
    const auto description = tryPlugin<&ITextDocumentPlugin::description>(plugin);
    const auto extensions = tryPlugin<&ITextDocumentPlugin::extensions>(plugin);
    const auto icon = tryPlugin<&ITextDocumentPlugin::icon>(plugin);
    const auto made = tryPlugin<&ITextDocumentPlugin::syntaxHighlighter>(plugin);
    std::unique_ptr<SyntaxHighlighter> highlighter(made.value_or(nullptr));
    const auto madeIndenter = tryPlugin<&ITextDocumentPlugin::indenter>(plugin);
    std::unique_ptr<TextIndent> indenter(madeIndenter.value_or(nullptr));
    if (!title || !description || !extensions || !icon || !made || !madeIndenter)
        return nullptr; // it has thrown an exception
    if (!highlighter)
        highlighter = std::make_unique<SyntaxHighlighter>();
    highlighter->setFormats(formats);
    if (!indenter)
        indenter = std::make_unique<BaseIndent>();
    return std::make_unique<TextDocumentTemplate>(*title, *description, QIcon(*icon), *extensions,
                                                  std::move(highlighter), std::move(indenter));
}

TemplatePtr templateOf(const PluginSource &plugins, const QString &feature, int type,
                       TemplatePtr (*make)(IPluginObject *, const FormatTable *), const FormatTable *formats)
{
    const InterfacePtr<IPluginObject> object(plugins.create(feature));
    return tryPlugin<&IPluginObject::type>(object) == type ? make(object.get(), formats) : nullptr;
}
} // namespace

void addPluginDocuments(const PluginSource &plugins, Workspace *workspace, const FormatTable *formats,
                        QStringList *sourceExtensions)
{
    const auto addAll = [&](int type, auto make) {
        for (const QString &feature : plugins.features) {
            TemplatePtr docTemplate = templateOf(plugins, feature, type, make, formats);
            if (!docTemplate)
                continue;
            const QString extension = askPlugin<&DocumentTemplate::extension>(docTemplate);
            if (!sourceExtensions->contains(extension))
                sourceExtensions->append(extension);
            workspace->addTemplate(docTemplate.release());
        }
    };
    addAll(IPluginObject::CustomDocument, customTemplate);
    addAll(IPluginObject::TextDocument, textTemplate);
}
