#pragma once
#include "bracketmatcher.h"
#include "documenttemplate.h"
#include <QStringList>
class EditorHost;
class QSettings;
class SyntaxHighlighter;
class TextIndent;

/// A language of the text editor: the files it opens, and how they are highlighted and indented.
class TextDocumentTemplate : public DocumentTemplate
{
    Q_OBJECT
public:
    static constexpr qint64 LargestFile = 10'000'000; ///< bytes

    /// @p extensions are in lower case and without the dot; an empty list accepts every file.
    TextDocumentTemplate(const QString &name, const QString &description, const QIcon &icon,
                         const QStringList &extensions, std::unique_ptr<SyntaxHighlighter> highlighter,
                         std::unique_ptr<TextIndent> indenter, QObject *parent = nullptr);
    ~TextDocumentTemplate() override;

    /// The services for editors of this kind, which must not outlive them. May be null.
    void setEditorHost(EditorHost *host) { m_host = host; }
    /// What begins a comment that ends with its line, such as "//"; empty if the language has none.
    void setLineComment(const QString &marker) { m_lineComment = marker; }
    [[nodiscard]] const QString &lineComment() const { return m_lineComment; }
    /// The directory for the copies of unsaved texts of this kind; empty for no copies.
    void setSwapDirectory(const QString &directory) { m_swapDirectory = directory; }
    /// Reads "TabSize", "KeepTabs", "IndentMode", "LineNumbers" and "CurrentLine" of the group "Editor". Views follow
    /// at their next full update.
    void readSettings(const QSettings &settings);

    [[nodiscard]] bool canCreate() override { return true; }
    [[nodiscard]] bool canOpen(const QString &filename) override;
    [[nodiscard]] Document *createDocument() override;
    [[nodiscard]] View *createView(Document *document) override;
    [[nodiscard]] QString extension() override;

    [[nodiscard]] SyntaxHighlighter *highlighter() const { return m_highlighter.get(); }
    [[nodiscard]] TextIndent *indenter() const { return m_indenter.get(); } ///< may be null
    [[nodiscard]] BracketMatcher &bracketMatcher() { return m_bracketMatcher; }
    [[nodiscard]] EditorHost *editorHost() const { return m_host; }
    [[nodiscard]] bool showsLineNumbers() const { return m_lineNumbers; }
    [[nodiscard]] bool showsCurrentLine() const { return m_currentLine; }
    [[nodiscard]] const QString &swapDirectory() const { return m_swapDirectory; }

private:
    const QStringList m_extensions;
    const std::unique_ptr<SyntaxHighlighter> m_highlighter;
    const std::unique_ptr<TextIndent> m_indenter;
    BracketMatcher m_bracketMatcher;
    EditorHost *m_host = nullptr;
    bool m_lineNumbers = false;
    bool m_currentLine = false;
    QString m_swapDirectory;
    QString m_lineComment;
};
