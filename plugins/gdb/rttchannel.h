#pragma once
#include "regiontable.h"
#include "rttblock.h"
#include <functional>
#include <QByteArray>
#include <QObject>
#include <QTimer>
class GdbSession;

/// Text that a program writes into a buffer in its memory instead of a serial port (RTT), and input for it.
///
/// The control block is searched for in RAM, a piece at a time. Memory is accessed past gdb if the target supports
/// that, also while the program runs; otherwise through gdb while it is paused. The program is never paused for it.
/// Answers are not waited for.
class RttChannel : public QObject
{
    Q_OBJECT
public:
    explicit RttChannel(GdbSession *session);

    /// Called when a program was loaded, with its regions of memory, whose devices are not touched.
    void begin(bool enabled, const RegionTable &regions);
    /// Takes input for the program. False if there is no buffer for it.
    bool write(const QByteArray &bytes);

Q_SIGNALS:
    void output(const QByteArray &bytes);
    void message(const QString &text, bool serious);

private:
    using Bytes = std::function<void(const QByteArray &bytes)>;

    void poll();
    void search();
    void searchIn(quint64 address, const QByteArray &bytes);
    void examine(quint64 address);
    void transfer(const QByteArray &block);
    void takeOutput(const RttBuffer &up);
    void sendInput(const RttBuffer &down);
    void searchAgain();
    void findSpans();
    [[nodiscard]] bool isUsable(const RttBlock &block) const;
    [[nodiscard]] bool isRam(quint64 address, quint64 length) const;
    [[nodiscard]] bool canAccess() const;
    [[nodiscard]] int most() const;
    [[nodiscard]] RttLayout layout() const;
    /// Calls @p done with the bytes, none if they cannot be read; never if there is another program then.
    void read(quint64 address, int length, const Bytes &done);
    /// Calls @p done if it has succeeded; so nothing is shown again and again after a failure.
    void write(quint64 address, const QByteArray &bytes, const std::function<void()> &done);
    void writeOffset(quint64 address, uint offset, const std::function<void()> &done);
    void soon();
    [[nodiscard]] bool takeAnswer(int program);
    void answered();

    GdbSession *const m_session;
    QTimer m_timer;
    RegionTable m_regions;
    QList<TargetRegion> m_spans; ///< where to search
    qsizetype m_span = 0;        ///< of them, the one in which the search goes on
    quint64 m_position = 0;      ///< from its start
    quint64 m_block = 0;         ///< the address of the control block; 0 if it was not found yet
    int m_length = 0;            ///< its length
    bool m_hasInput = false;     ///< it has a buffer for input
    QByteArray m_input;          ///< that the program has not read yet
    int m_program = 0;           ///< grows with each program
    int m_open = 0;              ///< questions without an answer
    int m_idleAt = -1;           ///< GdbSession::generation() when there was nothing to do
    int m_searchedAt = -1;       ///< the same when the search began
    bool m_soon = false;         ///< there may be more to do after the answer
    bool m_complained = false;
};
