#pragma once
#include "editorversion.h"

class QString;
class QTextBlock;
class QTextDocument;

/// Indents lines of a text document: after Return, after some characters, and by the indent command.
class TextIndent
{
public:
    enum IndentMode { NoIndent, CopyPrevious, Smart };

    TextIndent() = default;
    virtual ~TextIndent() = default;
    TextIndent(const TextIndent &) = delete;
    TextIndent &operator=(const TextIndent &) = delete;

    /// Indents the line @p block of @p document, as one step for undo. Returns the indentation before and after, in
    /// columns and characters; either pointer may be null.
    virtual void indent(QTextDocument *document, QTextBlock block, int *oldIndent = nullptr,
                        int *newIndent = nullptr) = 0;
    /// Whether the line is to be indented again because of the character that was just typed, the last of @p start,
    /// which is the line up to the cursor. Not asked for letters, digits and white space.
    [[nodiscard]] virtual bool changesIndent(const QString &start) const;

    [[nodiscard]] int indentMode() const { return m_indentMode; } ///< an IndentMode; settings may contain other numbers
    void setIndentMode(int mode) { m_indentMode = mode; }
    [[nodiscard]] int tabSize() const { return m_tabSize; } ///< columns per tab stop, at least 1
    void setTabSize(int columns) { m_tabSize = columns > 0 ? columns : 1; }
    [[nodiscard]] bool keepTabs() const { return m_keepTabs; } ///< whether indentation is written with tabs
    void setKeepTabs(bool keep) { m_keepTabs = keep; }

private:
    int m_indentMode = CopyPrevious;
    int m_tabSize = 4;
    bool m_keepTabs = false;
};

inline bool TextIndent::changesIndent(const QString &) const
{
    return false;
}
