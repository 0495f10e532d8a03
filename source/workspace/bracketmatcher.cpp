#include "bracketmatcher.h"
#include "longline.h"
#include "paragdata.h"
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {
bool areOnePair(QChar a, QChar b)
{
    const auto pairs = u"(){}[]"_s;
    return pairs.indexOf(a) / 2 == pairs.indexOf(b) / 2;
}

bool isOpening(QChar c)
{
    return c == u'{' || c == u'(' || c == u'[';
}

bool isClosing(QChar c)
{
    return c == u'}' || c == u')' || c == u']';
}
} // namespace

BracketSearch::BracketSearch(const QTextBlock &block, int position, bool forward, Prepare prepare)
    : m_prepare(std::move(prepare)), m_block(block), m_forward(forward), m_from(block.position() + position)
{
    m_prepare(block);
    const ParagData *data = paragDataOf(block);
    if (!data)
        return;
    const auto isHere = [position](const ParenEntry &entry) { return entry.position == position; };
    const auto here = std::find_if(data->parenList.cbegin(), data->parenList.cend(), isHere);
    if (here == data->parenList.cend())
        return; // in a comment or a string
    m_character = here->character;
    m_entry = std::distance(data->parenList.cbegin(), here) + (forward ? 1 : -1);
    m_state = Searching;
    searchParagraph();
}

BracketSearch::State BracketSearch::advance(int paragraphs)
{
    for (; m_state == Searching && paragraphs > 0; --paragraphs) {
        m_block = m_forward ? m_block.next() : m_block.previous();
        if (!m_block.isValid()) {
            m_state = Failed;
            break;
        }
        m_prepare(m_block);
        if (const ParagData *data = paragDataOf(m_block)) {
            m_entry = m_forward ? 0 : data->parenList.size() - 1;
            searchParagraph();
        }
    }
    return m_state;
}

/// Checks the brackets of the line from the current one on.
void BracketSearch::searchParagraph()
{
    const QList<ParenEntry> &entries = paragDataOf(m_block)->parenList;
    const auto deeper = m_forward ? ParenEntry::Open : ParenEntry::Close;
    for (; m_entry >= 0 && m_entry < entries.size(); m_entry += m_forward ? 1 : -1) {
        const ParenEntry &entry = entries[m_entry];
        if (entry.kind == deeper) {
            ++m_depth;
        } else if (m_depth > 0) {
            --m_depth;
        } else {
            m_to = m_block.position() + entry.position;
            m_state = areOnePair(m_character, entry.character) ? Found : Failed;
            return;
        }
    }
}

BracketSearch BracketMatcher::begin(const QTextCursor &cursor, BracketSearch::Prepare prepare) const
{
    if (!m_enabled)
        return {};
    const QTextBlock line = cursor.block();
    const int position = cursor.positionInBlock();
    // This is done for each key, and to read single characters of a document takes as long as to read a line.
    const QString text = LongLine::isLong(line) ? QString() : line.text();
    const auto at = [&](int index) {
        return text.isEmpty() ? cursor.document()->characterAt(line.position() + index) : text[index];
    };
    if (position < line.length() - 1 && isOpening(at(position)))
        return {line, position, true, std::move(prepare)};
    if (position > 0 && isClosing(at(position - 1)))
        return {line, position - 1, false, std::move(prepare)};
    return {};
}
