#pragma once
#include <algorithm>
#include <QElapsedTimer>

/// The number of positions at which an expression is tried between two checks for cancellation: many if that is fast,
/// few if each takes many steps.
class MatchStretch
{
public:
    [[nodiscard]] qsizetype length() const { return m_length; }
    void begin() { m_time.start(); }
    void end()
    {
        const qint64 microseconds = m_time.nsecsElapsed() / 1000;
        if (microseconds < 500)
            m_length = std::min(m_length * 4, Longest);
        else if (microseconds > 5000)
            m_length = std::max(m_length / 16, Shortest);
    }

private:
    static constexpr qsizetype Shortest = 32;
    static constexpr qsizetype Longest = 1 << 20;

    qsizetype m_length = Shortest;
    QElapsedTimer m_time;
};
