#include "markedlines.h"
#include "paragdata.h"
#include "viewinterfaces.h"
#include <QTextDocument>

/// The data of a line that has or had a marker, registered in its MarkedLines.
class MarkedParagData : public ParagData
{
public:
    MarkedParagData(MarkedLines *owner, const QTextBlock &block) : m_owner(owner)
    {
        if (const ParagData *previous = paragDataOf(block)) {
            parenList = previous->parenList;
            marker = previous->marker;
            endState = previous->endState;
            skipsFormats = previous->skipsFormats;
            hasFormats = previous->hasFormats;
        }
        m_owner->m_marked.insert(this, {block, QTextCursor(block), block.position()});
    }
    ~MarkedParagData() override { m_owner->m_lost.append({m_owner->m_marked.take(this), marker}); }
    Q_DISABLE_COPY_MOVE(MarkedParagData)

private:
    MarkedLines *const m_owner;
};

MarkedLines::MarkedLines(QTextDocument *document)
{
    connect(document, &QTextDocument::contentsChange, this, &MarkedLines::contentsChanged);
}

MarkedLines::~MarkedLines() = default;

void MarkedLines::set(const QTextBlock &block, quint32 mask, bool on, bool alternate)
{
    if (!on && markers(block) == 0)
        return;
    MarkedParagData *data = ensureMarked(block);
    data->marker = on ? data->marker | mask : data->marker & ~mask;
    if (!on || mask == IViewWithMarkers::CurrentLineMarker || mask == IViewWithMarkers::LookupMarker
        || mask == IViewWithMarkers::CallerMarker)
        return;
    if (alternate)
        data->marker |= IViewWithMarkers::AlternateMarker;
    else
        data->marker &= ~quint32(IViewWithMarkers::AlternateMarker);
}

void MarkedLines::clear(quint32 mask)
{
    for (auto place = m_marked.keyBegin(); place != m_marked.keyEnd(); ++place)
        (*place)->marker &= ~mask;
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

void MarkedLines::contentsChanged(int from, int removed, int added)
{
    const QList<LostLine> lost = std::exchange(m_lost, {});
    moveWithText();
    for (const LostLine &line : lost)
        saveMarker(line, from, removed, added);
}

/// After Return at the start of a line, the line's data is on the empty line above the text; move the marker to the
/// text.
void MarkedLines::moveWithText()
{
    QList<std::pair<MarkedParagData *, QTextBlock>> moved;
    for (auto it = m_marked.begin(); it != m_marked.end(); ++it) {
        QTextBlock textBlock = it->anchor.block();
        if (textBlock != it->block)
            moved.append({it.key(), textBlock});
        it->position = it->block.position();
        if (it->anchor.position() != it->position)
            it->anchor.setPosition(it->position); // takes long
    }
    for (const auto &[data, block] : moved) {
        const quint32 marker = std::exchange(data->marker, 0);
        if (marker)
            ensureMarked(block)->marker |= marker;
    }
}

/// Undo of that Return removes the line with the text. A line whose text still starts a line keeps its marker.
void MarkedLines::saveMarker(const LostLine &line, int from, int removed, int added)
{
    const QTextBlock block = line.place.anchor.document()->findBlock(from + added);
    if (line.marker != 0 && line.place.position == from + removed && block.position() == from + added)
        ensureMarked(block)->marker |= line.marker;
}
