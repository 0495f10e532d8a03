#pragma once
#include <QList>

class Project;
class ProjectFolder;

/// The folders or the files of one parent, in the user's order. Owned are those that name this parent as theirs.
///
/// A child stands in one list, as a rule. Adding it twice, or taking it out of the wrong parent, is reported but not
/// undone, so each child counts the lists that it stands in.
template <typename Child>
class ProjectChildren
{
public:
    [[nodiscard]] const QList<Child *> &items() const { return m_items; }
    /// Searches only if the child is in some list.
    [[nodiscard]] bool contains(const Child *child) const { return child->m_listings > 0 && m_items.contains(child); }

    void insert(Child *child, bool prepend = false)
    {
        m_items.insert(prepend ? 0 : m_items.size(), child);
        ++child->m_listings;
    }
    bool remove(Child *child)
    {
        const bool found = m_items.removeOne(child);
        child->m_listings -= found;
        return found;
    }
    void forget(const Child *dead) { m_items.removeAll(dead); }

    /// Takes children out from the front until there is one that names this parent, for the caller to delete; null when
    /// none is left.
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
