#pragma once
#include "debugqueries.h"
#include "ilivememory.h"
#include "memorylayout.h"
#include <QObject>

/// Asks a plug-in for memory, with whole addresses if it offers that. A plug-in may call back while it is asked: it may
/// exchange the memory, or have the window deleted and this object with it. The functions that ask return false in
/// these cases; their results are of no use then.
class MemoryCalls : public QObject
{
    Q_OBJECT
public:
    /// Keeps references to the memory, which may be null, and to its wide one and its requests if there are some.
    void setMemory(IMemory *memory, IMemory64 *wide = nullptr, IMemoryRequests *requests = nullptr);
    [[nodiscard]] bool hasMemory() const { return bool(m_memory); }

    /// Whether the plug-in is being asked, so that it must not be asked again now.
    [[nodiscard]] bool isBusy() const { return m_busy; }
    void setBusy(bool busy) { m_busy = busy; }

    /// Whether the memory is read by request().
    [[nodiscard]] bool answersLater() const { return bool(m_requests); }
    /// Starts to read the @p count words that @p cache names. The signal answered() follows, in place of that of an
    /// earlier question.
    void request(const MemoryCache &cache, int count);

    [[nodiscard]] bool readRegions(QList<MemoryRegion64> &regions);
    /// Reads the @p count words that @p cache names.
    [[nodiscard]] bool read(MemoryCache &cache, int count);
    /// Also false if it is impossible.
    [[nodiscard]] bool readLive(ILiveMemory &live, MemoryCache &cache, int count);
    [[nodiscard]] bool write(int region, int mode, quint64 address, uint value);

Q_SIGNALS:
    void answered(const MemoryCache &cache);

private:
    template <typename Call>
    bool ask(const Call &call);

    void readWide(MemoryCache &cache, int count) const;

    InterfacePtr<IMemory> m_memory;
    InterfacePtr<IMemory64> m_wide;           ///< null if addresses have 32 bits
    InterfacePtr<IMemoryRequests> m_requests; ///< null if the memory is read at once
    DebugQueries m_queries;
    bool m_busy = false;
};
