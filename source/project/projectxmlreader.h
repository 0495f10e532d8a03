#pragma once
#include <QSet>
#include <QXmlStreamReader>

/// Reads project and workspace files. Tags and attributes are compared by their full names, prefix included.
class ProjectXmlReader : public QXmlStreamReader
{
public:
    explicit ProjectXmlReader(const QByteArray &bytes);
    explicit ProjectXmlReader(const QString &text);

    /// One of @p attributes; null if it is missing, empty but not null if it is empty. Valid as long as @p attributes.
    [[nodiscard]] static QStringView valueOf(const QXmlStreamAttributes &attributes, QLatin1StringView name);

    [[nodiscard]] bool isAt(QLatin1StringView tag) const { return qualifiedName() == tag; }
    /// The attribute of the current element; the null string if it is missing. Others are foreign.
    [[nodiscard]] QString attribute(QLatin1StringView name);
    /// The same for frequent texts: equal ones share their memory.
    [[nodiscard]] QString sharedAttribute(QLatin1StringView name);
    /// Skips an unknown element, which is lost when the file is written again.
    void skipForeignElement();
    /// Notes attributes of the current element that are lost when the file is written again: those above @p known.
    void noteForeignAttributes(qsizetype known);
    /// Elements, attributes, comments and processing instructions.
    [[nodiscard]] bool hasForeignContent() const { return m_foreign; }
    /// Reads the start tag of the root. Another tag than @p tag is read as well, but is foreign.
    void readRoot(QLatin1StringView tag);
    /// All text in the current element; reads its end tag. White space between elements is not text.
    [[nodiscard]] QString elementText();
    /// Reads the rest of the document after the root element. Returns whether the whole document is well-formed.
    [[nodiscard]] bool finish();

private:
    QSet<QString> m_shared;
    const bool m_hasComments = false; ///< or processing instructions
    bool m_foreign = false;
};
