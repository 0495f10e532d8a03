#include "textdocumenttemplate.h"
#include "programplace.h"
#include "syntaxhighlighter.h"
#include "textdocument.h"
#include "textindent.h"
#include "textview.h"
#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

TextDocumentTemplate::TextDocumentTemplate(const QString &name, const QString &description, const QIcon &icon,
                                           const QStringList &extensions,
                                           std::unique_ptr<SyntaxHighlighter> highlighter,
                                           std::unique_ptr<TextIndent> indenter, QObject *parent)
    : DocumentTemplate(name, description, icon, parent)
    , m_extensions(extensions)
    , m_highlighter(std::move(highlighter))
    , m_indenter(std::move(indenter))
{}

TextDocumentTemplate::~TextDocumentTemplate() = default;

void TextDocumentTemplate::readSettings(const QSettings &settings)
{
    m_lineNumbers = settings.value(u"Editor/LineNumbers"_s, 1).toInt() != 0;
    m_currentLine = settings.value(u"Editor/CurrentLine"_s, 1).toInt() != 0;
    if (!m_indenter)
        return;
    m_indenter->setTabSize(settings.value(u"Editor/TabSize"_s, 4).toInt());
    m_indenter->setKeepTabs(settings.value(u"Editor/KeepTabs"_s, 4).toInt() != 0);
    m_indenter->setIndentMode(settings.value(u"Editor/IndentMode"_s, 2).toInt());
}

bool TextDocumentTemplate::canOpen(const QString &filename)
{
    const QFileInfo info(filename);
    if (info.size() > LargestFile || isDisassemblyName(filename))
        return false;
    return m_extensions.isEmpty() || m_extensions.contains(info.suffix().toLower());
}

Document *TextDocumentTemplate::createDocument()
{
    return new TextDocument(this);
}

View *TextDocumentTemplate::createView(Document *document)
{
    auto *view = new TextView(static_cast<TextDocument *>(document));
    view->setWindowIcon(icon());
    return view;
}

QString TextDocumentTemplate::extension()
{
    return m_extensions.value(0);
}
