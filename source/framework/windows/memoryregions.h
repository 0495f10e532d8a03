#pragma once
#include "imemory64.h"
#include <QString>
#include <QStringList>

/// The regions of a target's memory, and for each where the user has left it.
class MemoryRegions
{
public:
    struct View
    {
        QString region; ///< its name
        quint64 address = 0;
        int width = 2;
    };

    /// Replaces the regions. Those whose names stay keep their views. None is current until one is selected.
    void set(const QList<MemoryRegion64> &regions);
    void clear(); ///< The views are kept for the next set().

    [[nodiscard]] QStringList names() const;
    /// Makes a region the current one. Returns false if there is none at @p index.
    bool select(int index);
    /// The index of the region that contains @p address; -1 if there is none, or if the current one contains it.
    [[nodiscard]] int regionOf(quint64 address) const;
    [[nodiscard]] bool hasCurrent() const { return m_current >= 0; }
    [[nodiscard]] const MemoryRegion64 &current() const { return m_regions[m_current]; }
    [[nodiscard]] const View &view() const { return m_views[m_current]; } ///< Of the current region.
    void saveView(quint64 address, int width);

private:
    [[nodiscard]] static View takeView(const MemoryRegion64 &region, QList<View> &saved);

    QList<MemoryRegion64> m_regions;
    QList<View> m_views; ///< one for each region
    int m_current = -1;
};
