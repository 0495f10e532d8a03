#pragma once
#include <QList>
#include <QString>

/// Writes the XML text of project and workspace files: one element a line, each level a blank further in, attributes in
/// the order of the calls, so that equal models give equal bytes.
///
/// What XML would not give back is written as a character reference; what XML cannot hold at all (control characters,
/// halves of surrogate pairs) becomes U+FFFD, so that a written file can always be read.
class ProjectXmlWriter
{
public:
    void startElement(QLatin1StringView tag);
    void attribute(QLatin1StringView name, const QString &value); ///< Of the element just started.
    void text(const QString &value);                              ///< The only child of the element just started.
    void endElement();
    /// All that was written.
    [[nodiscard]] const QString &xml() const { return m_xml; }

private:
    enum class State {
        StartTag, ///< the start tag still lacks its ">"
        Text,     ///< behind the text of an element
        Children  ///< behind a child, or at the start
    };
    void closeStartTag();
    void indent();
    void appendEscaped(QStringView text, bool inAttribute);

    QString m_xml;
    QList<QLatin1StringView> m_tags; ///< the open elements
    State m_state = State::Children;
};
