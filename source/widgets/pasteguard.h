#pragma once
#include <functional>
#include <QMimeData>
#include <QTextCursor>
#include <utility>

/// A text widget of the toolkit, QTextEdit or QPlainTextEdit, that survives a paste from an empty clipboard. All
/// widgets with text that users can edit derive from it: the toolkit takes the first format of the data even if there
/// is none.
template <typename TextEdit>
class PasteGuard : public TextEdit
{
public:
    using TextEdit::TextEdit;

    /// @p pasted returns the form of a pasted or dropped text that the document can hold. @p copied returns the text of
    /// a selection without such forms; a null text if there are none in the document.
    void setTextForms(std::function<QString(const QString &)> pasted,
                      std::function<QString(const QTextCursor &)> copied)
    {
        m_pasted = std::move(pasted);
        m_copied = std::move(copied);
    }

protected:
    void insertFromMimeData(const QMimeData *source) override
    {
        if (!source || source->formats().isEmpty())
            return;
        const QString text = m_pasted ? source->text() : QString();
        const QString form = m_pasted ? m_pasted(text) : QString();
        if (form == text)
            return TextEdit::insertFromMimeData(source);
        QMimeData data;
        data.setText(form);
        TextEdit::insertFromMimeData(&data);
    }

    QMimeData *createMimeDataFromSelection() const override
    {
        const QString text = m_copied ? m_copied(TextEdit::textCursor()) : QString();
        if (text.isNull())
            return TextEdit::createMimeDataFromSelection();
        auto *data = new QMimeData;
        data->setText(text);
        return data;
    }

private:
    std::function<QString(const QString &)> m_pasted;
    std::function<QString(const QTextCursor &)> m_copied;
};
