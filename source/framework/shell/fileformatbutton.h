#pragma once
#include <QPointer>
#include <QToolButton>
class TextDocument;
struct TextFileFormat;

/// Shows the encoding and the line ends of a text in the status bar. Its menu changes them.
class FileFormatButton : public QToolButton
{
    Q_OBJECT
public:
    explicit FileFormatButton(QWidget *parent = nullptr);

    /// The button is hidden while there is none.
    void setDocument(TextDocument *document);

private:
    void refresh();
    void fillMenu();
    void addChoice(const QString &text, const TextFileFormat &format);

    QPointer<TextDocument> m_document;
};

/// A format for the user: "Latin-1, CRLF" or "UTF-8, mixed line ends".
[[nodiscard]] QString fileFormatText(const TextFileFormat &format);
/// The message that a save has changed the format of the file of @p document.
[[nodiscard]] QString conversionText(TextDocument &document, const TextFileFormat &before);
