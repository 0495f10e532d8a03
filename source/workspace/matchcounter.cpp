#include "matchcounter.h"
#include <QElapsedTimer>
#include <utility>

namespace {
constexpr int Pause = 150;                   // milliseconds
constexpr qint64 PortionTime = 5;            // milliseconds
constexpr qsizetype PortionLength = 1 << 18; // characters
constexpr int LongestSearch = 100;           // milliseconds, in which the window does nothing else
} // namespace

MatchCounter::MatchCounter(QObject *parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &MatchCounter::countSome);
}

void MatchCounter::start(const std::function<QString()> &raw, const TextPattern &pattern)
{
    m_source = raw;
    m_pattern = pattern;
    m_pattern.setTimeLimit(LongestSearch);
    m_from = 0;
    m_count = 0;
    m_timer.start(Pause);
}

void MatchCounter::stop()
{
    m_timer.stop();
    m_source = nullptr;
    m_raw.clear();
}

void MatchCounter::countSome()
{
    QElapsedTimer time;
    time.start();
    if (m_source)
        m_raw = std::exchange(m_source, nullptr)();
    while (m_from < m_raw.size() && m_count < Most && time.elapsed() < PortionTime) {
        const qsizetype end = std::min(m_from + PortionLength, m_raw.size());
        const auto match = m_pattern.forward(m_raw, m_from, end);
        m_from = match ? match->position + match->length : end;
        m_count += match.has_value();
        if (m_pattern.hasGivenUp()) {
            m_raw.clear();
            Q_EMIT givenUp();
            return;
        }
    }
    if (m_from < m_raw.size() && m_count < Most) {
        m_timer.start(0);
        return;
    }
    Q_EMIT counted(m_count, m_pattern.forward(m_raw, m_from, m_raw.size()).has_value());
    m_raw.clear();
}
