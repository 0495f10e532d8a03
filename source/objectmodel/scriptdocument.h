#pragma once
#include "scriptobject.h"
#include "scripttypes.h"
class TextDocument;
class TextView;
class ViewManager;

/// An open text document for scripts. Raises RuntimeError after it was closed. The methods that edit act on the view in
/// front, which may show another document.
class ScriptDocument : public ScriptObject
{
public:
    ScriptDocument(ObjectModel &model, TextDocument *document);

    [[nodiscard]] TextDocument &document() const;
    void activate() const;
    void save() const;
    void saveAs(const QString &path) const;

    [[nodiscard]] ViewManager &views() const;
    void gotoLine(long line) const;
    void insert(const QString &text) const;
    void moveCursor(long direction, long select) const;

private:
    [[nodiscard]] TextView *textView() const; ///< The view in front; null if it shows no text document.

    const QPointer<TextDocument> m_document;
};

[[nodiscard]] py::object bindDocument();
