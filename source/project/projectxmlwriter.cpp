#include "projectxmlwriter.h"
using namespace Qt::StringLiterals;

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

/// The reference for a character that must not be written itself; empty for all others.
QLatin1StringView replacement(QChar c, bool inAttribute)
{
    switch (c.unicode()) {
    case '<':
        return "&lt;"_L1;
    case '&':
        return "&amp;"_L1;
    case '"':
        return inAttribute ? "&quot;"_L1 : QLatin1StringView();
    case '\r':
        return "&#xd;"_L1;
    case '\n':
        return inAttribute ? "&#xa;"_L1 : QLatin1StringView();
    case '\t':
        return inAttribute ? "&#x9;"_L1 : QLatin1StringView();
    default:
        return {};
    }
}

/// Whether XML cannot represent the character at @p index, not even by a reference.
bool isImpossible(QStringView text, qsizetype index)
{
    const QChar c = text[index];
    if (c.isHighSurrogate())
        return index + 1 == text.size() || !text[index + 1].isLowSurrogate();
    if (c.isLowSurrogate())
        return index == 0 || !text[index - 1].isHighSurrogate();
    return c >= u'\xfffe' || (c < u' ' && !isBlank(c));
}

} // namespace

void ProjectXmlWriter::startElement(QLatin1StringView tag)
{
    closeStartTag();
    indent();
    m_xml += u'<';
    m_xml += tag;
    m_tags += tag;
    m_state = State::StartTag;
}

void ProjectXmlWriter::attribute(QLatin1StringView name, const QString &value)
{
    m_xml += u' ';
    m_xml += name;
    m_xml += "=\""_L1;
    appendEscaped(value, true);
    m_xml += u'"';
}

void ProjectXmlWriter::text(const QString &value)
{
    m_xml += u'>';
    m_state = State::Text;
    QStringView rest = value;
    if (!rest.isEmpty() && std::all_of(rest.begin(), rest.end(), isBlank)) {
        // White space alone would be read as indentation; one reference in it makes it text.
        m_xml += "&#x"_L1 + QString::number(rest.front().unicode(), 16) + u';';
        rest = rest.sliced(1);
    }
    appendEscaped(rest, false);
}

void ProjectXmlWriter::endElement()
{
    const QLatin1StringView tag = m_tags.takeLast();
    if (m_state == State::StartTag) {
        m_xml += "/>\n"_L1;
    } else {
        if (m_state == State::Children)
            indent();
        m_xml += "</"_L1;
        m_xml += tag;
        m_xml += ">\n"_L1;
    }
    m_state = State::Children;
}

void ProjectXmlWriter::closeStartTag()
{
    if (m_state == State::StartTag)
        m_xml += ">\n"_L1;
}

void ProjectXmlWriter::indent()
{
    m_xml.resize(m_xml.size() + m_tags.size(), u' ');
}

void ProjectXmlWriter::appendEscaped(QStringView text, bool inAttribute)
{
    qsizetype done = 0;
    const auto replace = [&](qsizetype index, auto with) {
        m_xml += text.sliced(done, index - done);
        m_xml += with;
        done = index + 1;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c > u'>' && c < u'\xd800')
            continue; // the frequent case
        if (const QLatin1StringView with = replacement(c, inAttribute); !with.isEmpty())
            replace(i, with);
        else if (c == u'>' && i >= 2 && text[i - 1] == u']' && text[i - 2] == u']')
            replace(i, "&gt;"_L1);
        else if (isImpossible(text, i))
            replace(i, QChar(QChar::ReplacementCharacter));
    }
    m_xml += text.sliced(done);
}
