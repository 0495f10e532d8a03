#pragma once
#include <algorithm>
#include <limits>
#include <QList>

class Project;
class ProjectFolder;

inline constexpr qsizetype AtEnd = std::numeric_limits<qsizetype>::max(); ///< a place behind all others

/// The folders or the files of one parent, in the user's order. The parent owns those whose parent pointer names it.
///
/// Normally a child is in one list. Adding it twice, or removing it from the wrong parent, is reported but not
/// prevented; therefore each child counts the lists that contain it.
template <typename Child>
class ProjectChildren
{
public:
    [[nodiscard]] const QList<Child *> &items() const { return m_items; }
    /// Searches only if the child is in some list.
    [[nodiscard]] bool contains(const Child *child) const { return child->m_listings > 0 && m_items.contains(child); }

    /// Behind all others if there are fewer than @p place.
    void insert(Child *child, qsizetype place)
    {
        m_items.insert(std::min(place, m_items.size()), child);
        ++child->m_listings;
    }
    bool remove(Child *child)
    {
        const bool found = m_items.removeOne(child);
        child->m_listings -= found;
        return found;
    }
    void forget(const Child *dead) { m_items.removeAll(dead); }

    /// Removes children from the front until one names this parent; the caller deletes that one. Null when none is
    /// left.
    [[nodiscard]] Child *takeOwned(const ProjectFolder *folder, const Project *project)
    {
        while (!m_items.isEmpty()) {
            Child *child = m_items.takeFirst();
            if (--child->m_listings > 0)
                child->m_listings -= quint32(m_items.removeAll(child));
            if (child->isChildOf(folder, project))
                return child;
        }
        return nullptr;
    }

private:
    QList<Child *> m_items;
};
