#pragma once
#include <QList>
#include <QString>

/// Writes the XML text of project and workspace files: one element on each line, each level indented by one more blank,
/// attributes in the order of the calls. Equal models give equal bytes.
///
/// Characters that XML readers would change are written as character references; characters that XML cannot represent
/// (control characters, halves of surrogate pairs) become U+FFFD, so that a written file can always be read.
class ProjectXmlWriter
{
public:
    void startElement(QLatin1StringView tag);
    void attribute(QLatin1StringView name, const QString &value); ///< of the element just started
    void text(const QString &value);                              ///< the only child of the element just started
    void endElement();
    /// The complete text.
    [[nodiscard]] const QString &xml() const { return m_xml; }

private:
    enum class State {
        StartTag, ///< after a start tag without its ">"
        Text,     ///< after the text of an element
        Children  ///< after a child, or at the start
    };
    void closeStartTag();
    void indent();
    void appendEscaped(QStringView text, bool inAttribute);

    QString m_xml;
    QList<QLatin1StringView> m_tags; ///< the open elements
    State m_state = State::Children;
};
