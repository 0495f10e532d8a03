#include "plugindocuments.h"
#include "baseindent.h"
#include "callplugin.h"
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
    const auto plugin = queryInterface<ICustomDocumentPlugin>(object);
    VARNEL_ASSERT_TEXT(plugin, "cdt");
    return TemplatePtr(plugin ? plugin->documentTemplate() : nullptr);
}

TemplatePtr textTemplate(IPluginObject *object, const FormatTable *formats)
{
    const auto plugin = queryInterface<ITextDocumentPlugin>(object);
    VARNEL_ASSERT_TEXT(plugin, "tdt");
    if (!plugin)
        return nullptr;
    std::unique_ptr<SyntaxHighlighter> highlighter(plugin->syntaxHighlighter());
    if (!highlighter)
        highlighter = std::make_unique<SyntaxHighlighter>();
    highlighter->setFormats(formats);
    std::unique_ptr<TextIndent> indenter(plugin->indenter());
    if (!indenter)
        indenter = std::make_unique<BaseIndent>();
    return std::make_unique<TextDocumentTemplate>(plugin->title(), plugin->description(), QIcon(plugin->icon()),
                                                  plugin->extensions(), std::move(highlighter), std::move(indenter));
}

TemplatePtr templateOf(const PluginSource &plugins, const QString &feature, int type,
                       TemplatePtr (*make)(IPluginObject *, const FormatTable *), const FormatTable *formats)
{
    const InterfacePtr<IPluginObject> object(plugins.create(feature));
    return object && object->type() == type ? make(object.get(), formats) : nullptr;
}
} // namespace

void addPluginDocuments(const PluginSource &plugins, Workspace *workspace, const FormatTable *formats,
                        QStringList *sourceExtensions)
{
    const auto addAll = [&](int type, auto make) {
        for (const QString &feature : plugins.features) {
            TemplatePtr docTemplate =
                askPlugin("addPluginDocuments", [&] { return templateOf(plugins, feature, type, make, formats); });
            if (!docTemplate)
                continue;
            const QString extension =
                askPlugin("DocumentTemplate::extension", [&] { return docTemplate->extension(); });
            if (!sourceExtensions->contains(extension))
                sourceExtensions->append(extension);
            workspace->addTemplate(docTemplate.release());
        }
    };
    addAll(IPluginObject::CustomDocument, customTemplate);
    addAll(IPluginObject::TextDocument, textTemplate);
}
