#pragma once
#include "unknown.h"
#include <QPixmap>
#include <QStringList>

class SyntaxHighlighter;
class TextIndent;

/// A language of the text editor. Offered by objects whose type() is IPluginObject::TextDocument.
///
/// Each function is called once; the object is released before a file of the language is opened.
class ITextDocumentPlugin : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xc07debd1, 0x07d2, 0x48d7, 0x99, 0xcb, 0x8c, 0x13, 0xe0, 0x87, 0x67, 0x68};

    virtual QString title() = 0;                        ///< The name of the kind of file, translated.
    virtual QString description() = 0;                  ///< A longer description, translated.
    virtual QStringList extensions() = 0;               ///< In lower case, without the dot.
    virtual QPixmap icon() = 0;                         ///< Shown on the tabs of such files.
    virtual SyntaxHighlighter *syntaxHighlighter() = 0; ///< A new object, owned by the host; null for plain text.
    virtual TextIndent *indenter() = 0; ///< A new object, owned by the host; null for simple indentation.

protected:
    ~ITextDocumentPlugin() = default;
};
