#include "memoryregions.h"
#include "memorylayout.h"
#include <algorithm>

void MemoryRegions::set(const QList<MemoryRegion64> &regions)
{
    m_regions = regions;
    m_current = -1;
    QList<View> saved = std::exchange(m_views, {});
    for (const MemoryRegion64 &region : regions)
        m_views.append(takeView(region, saved));
}

/// Takes the view out of the saved ones, so that each of several regions with the same name gets its own.
MemoryRegions::View MemoryRegions::takeView(const MemoryRegion64 &region, QList<View> &saved)
{
    const auto it = std::ranges::find(saved, region.name, &View::region);
    if (it == saved.end())
        return {region.name, region.lowAddress, widestWidth(region)};
    View view = *it;
    saved.erase(it);
    if (view.address > region.highAddress || view.address < region.lowAddress)
        view.address = region.lowAddress;
    return view;
}

void MemoryRegions::clear()
{
    m_regions.clear();
    m_current = -1;
}

QStringList MemoryRegions::names() const
{
    QStringList names;
    for (const MemoryRegion64 &region : m_regions)
        names.append(region.name);
    return names;
}

bool MemoryRegions::select(int index)
{
    if (index < 0 || index >= m_regions.size())
        return false;
    m_current = index;
    View &view = m_views[index];
    if (!supportsWidth(current(), view.width))
        view.width = widestWidth(current());
    return true;
}

void MemoryRegions::saveView(quint64 address, int width)
{
    m_views[m_current].address = address;
    m_views[m_current].width = width;
}

int MemoryRegions::regionOf(quint64 address) const
{
    const auto contains = [address](const MemoryRegion64 &region) {
        return address >= region.lowAddress && address <= region.highAddress;
    };
    if (hasCurrent() && contains(current()))
        return -1;
    const auto found = std::ranges::find_if(m_regions, contains);
    return found == m_regions.end() ? -1 : int(found - m_regions.begin());
}
