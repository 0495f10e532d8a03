#pragma once
#include "textpattern.h"
#include <functional>
#include <QObject>
#include <QTimer>

/// Counts the matches of a pattern in a text, in small portions between other events.
class MatchCounter : public QObject
{
    Q_OBJECT
public:
    static constexpr int Most = 10'000; ///< matches that are counted

    explicit MatchCounter(QObject *parent = nullptr);

    /// Begins after a short pause, in which another start replaces this one. @p raw returns the text, and is called
    /// after the pause: the text of a large file takes long to collect.
    void start(const std::function<QString()> &raw, const TextPattern &pattern);
    void stop();

Q_SIGNALS:
    void counted(int matches, bool isMore); ///< @p isMore: the text has more of them
    void givenUp();                         ///< The expression takes too long.

private:
    void countSome();

    QTimer m_timer;
    std::function<QString()> m_source; ///< null as soon as the text was taken
    QString m_raw;
    TextPattern m_pattern;
    qsizetype m_from = 0;
    int m_count = 0;
};
