#include "markedlines.h"
#include "paragdata.h"
#include "viewinterfaces.h"
#include <QTextCursor>

/// The data of a line that has or had a marker. It knows its line, and its anchor follows the start of the line's text.
class MarkedParagData : public ParagData
{
public:
    MarkedParagData(MarkedLines *owner, const QTextBlock &block)
        : m_owner(owner)
        , m_block(block)
        , m_anchor(block)
    {
        if (const ParagData *previous = paragDataOf(block)) {
            parenList = previous->parenList;
            marker = previous->marker;
            endState = previous->endState;
        }
        m_owner->m_marked.insert(this);
    }
    ~MarkedParagData() override { m_owner->m_marked.remove(this); }
    Q_DISABLE_COPY_MOVE(MarkedParagData)

    /// The line that the text has moved to, or an invalid one if it is still here. The anchor is at its start again.
    QTextBlock takeNewPlace()
    {
        const QTextBlock place = m_anchor.block();
        m_anchor.setPosition(m_block.position());
        return place == m_block ? QTextBlock() : place;
    }

private:
    MarkedLines *const m_owner;
    const QTextBlock m_block;
    QTextCursor m_anchor;
};

MarkedLines::MarkedLines(QTextDocument *document)
{
    connect(document, &QTextDocument::contentsChange, this, &MarkedLines::moveWithText);
}

MarkedLines::~MarkedLines() = default;

void MarkedLines::set(const QTextBlock &block, quint32 mask, bool on, bool alternate)
{
    if (!on && markers(block) == 0)
        return;
    MarkedParagData *data = ensureMarked(block);
    data->marker = on ? data->marker | mask : data->marker & ~mask;
    if (!on || mask == IViewWithMarkers::CurrentLineMarker || mask == IViewWithMarkers::LookupMarker)
        return;
    if (alternate)
        data->marker |= IViewWithMarkers::AlternateMarker;
    else
        data->marker &= ~quint32(IViewWithMarkers::AlternateMarker);
}

void MarkedLines::clear(quint32 mask)
{
    for (MarkedParagData *data : std::as_const(m_marked))
        data->marker &= ~mask;
}

quint32 MarkedLines::markers(const QTextBlock &block)
{
    const ParagData *data = paragDataOf(block);
    return data ? data->marker : 0;
}

MarkedParagData *MarkedLines::ensureMarked(QTextBlock block)
{
    auto *data = dynamic_cast<MarkedParagData *>(block.userData());
    if (!data) {
        data = new MarkedParagData(this, block);
        block.setUserData(data);
    }
    return data;
}

/// Return at the start of a line leaves the line's data on the empty line above the text; the marker goes with the text.
void MarkedLines::moveWithText()
{
    const QSet<MarkedParagData *> marked = m_marked;
    for (MarkedParagData *data : marked) {
        const QTextBlock place = data->takeNewPlace();
        if (!place.isValid() || data->marker == 0)
            continue;
        ensureMarked(place)->marker |= data->marker;
        data->marker = 0;
    }
}
