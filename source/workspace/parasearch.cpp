#include "parasearch.h"
#include "linesource.h"
#include <limits>
#include <QElapsedTimer>
#include <QPointer>

namespace {
constexpr int Slice = 30;       ///< milliseconds without an event loop
constexpr int WaitInterval = 5; ///< milliseconds between two questions whether a paragraph is there
} // namespace

ParaSearch::ParaSearch(TextParaView *view, IParaSource *source, QObject *parent)
    : QObject(parent), m_view(view), m_source(source)
{
    connect(&m_timer, &QTimer::timeout, this, &ParaSearch::step);
}

ParaSearch::~ParaSearch() = default;

void ParaSearch::start(const ParaScan::Pattern &pattern, const TextParaView::Place &from)
{
    ++m_number;
    m_pattern = pattern;
    m_scan = std::make_unique<ParaScan>(pattern, from);
    m_first = from.para;
    m_wrapped = false;
    m_timer.start(0);
}

void ParaSearch::cancel()
{
    ++m_number;
    m_timer.stop();
    m_scan.reset();
}

/// A plug-in that is asked for a paragraph may close the view or start another search.
void ParaSearch::step()
{
    const QPointer<ParaSearch> self(this);
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < Slice) {
        const int para = m_scan->para();
        if (para < 0 || para >= m_source->paraCount()) {
            if (m_wrapped)
                break;
            wrap();
            continue;
        }
        const bool isOver = m_wrapped && (m_pattern.forward ? para > m_first : para < m_first);
        if (isOver)
            break;
        const int number = m_number;
        const auto lines = m_view->linesInTime(para, std::max(0, Slice - int(time.elapsed())));
        if (!self || m_number != number)
            return;
        m_timer.setInterval(lines ? 0 : WaitInterval);
        if (!lines) {
            Q_EMIT progress(percent());
            return;
        }
        if (m_scan->find(*lines)) {
            const TextParaView::Place place = m_scan->place();
            cancel();
            Q_EMIT found(place, m_wrapped);
            return;
        }
    }
    if (time.elapsed() >= Slice) {
        Q_EMIT progress(percent());
        return;
    }
    cancel();
    Q_EMIT notFound();
}

void ParaSearch::wrap()
{
    m_wrapped = true;
    const int last = m_source->paraCount() - 1;
    const TextParaView::Place start{0, 0, 0};
    const TextParaView::Place end{std::max(0, last), std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
    m_scan = std::make_unique<ParaScan>(m_pattern, m_pattern.forward ? start : end);
}

int ParaSearch::percent() const
{
    const qint64 count = std::max(1, m_source->paraCount());
    const qint64 way = m_pattern.forward ? qint64(m_scan->para()) - m_first : qint64(m_first) - m_scan->para();
    return int((way + (way < 0 ? count : 0)) * 100 / count);
}
