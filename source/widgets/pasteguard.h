#pragma once
#include <QMimeData>

/// A text widget of the toolkit, QTextEdit or QPlainTextEdit, that survives a paste from an empty clipboard. All
/// widgets with text that users can edit derive from it: the toolkit takes the first format of the data even if there
/// is none.
template <typename TextEdit>
class PasteGuard : public TextEdit
{
public:
    using TextEdit::TextEdit;

protected:
    void insertFromMimeData(const QMimeData *source) override
    {
        if (source && !source->formats().isEmpty())
            TextEdit::insertFromMimeData(source);
    }
};
