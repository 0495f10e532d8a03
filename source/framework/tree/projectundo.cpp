#include "projectundo.h"
#include "project.h"
#include <algorithm>
#include <QHash>
#include <QSet>

namespace {
constexpr size_t MostSteps = 100;

ProjectFolder *parentOf(const ProjectItemDrag::Item &item)
{
    return item.folder ? item.folder->parent() : item.file->folder();
}

/// The places of items among their siblings. The siblings are counted once for all items of a parent.
class Indexes
{
public:
    qsizetype of(const ProjectItemDrag::Item &item)
    {
        const ProjectFolder *parent = parentOf(item);
        const Project *project = item.project();
        if (const void *list = parent ? static_cast<const void *>(parent) : project; !m_counted.contains(list)) {
            m_counted.insert(list);
            count(parent ? parent->folders() : project->folders());
            count(parent ? parent->files() : project->rootFiles());
        }
        return m_indexes.value(item.folder ? static_cast<const void *>(item.folder) : item.file);
    }

private:
    template <typename Child>
    void count(const QList<Child *> &siblings)
    {
        for (qsizetype i = 0; i < siblings.size(); ++i)
            m_indexes.insert(siblings[i], i);
    }

    QSet<const void *> m_counted;
    QHash<const void *, qsizetype> m_indexes;
};

int depthOf(const ProjectFolder *folder)
{
    int depth = 0;
    for (; folder && depth < ProjectFolder::MaximumDepth; folder = folder->parent())
        ++depth;
    return depth;
}

quint32 listingsOf(const ProjectItemDrag::Item &item)
{
    return item.folder ? item.folder->listings() : item.file->listings();
}

/// Whether the folder was not taken out of its project, alone or with one above it; true for the root.
bool isInProject(const ProjectFolder *folder)
{
    for (; folder; folder = folder->parent()) {
        if (folder->listings() == 0)
            return false;
    }
    return true;
}
} // namespace

ProjectUndo::Places::Places(const Items &items)
{
    Indexes indexes;
    for (const ProjectItemDrag::Item &item : items) {
        ProjectFolder *parent = parentOf(item);
        m_places.push_back({ModelPointer(item.folder), ModelPointer(item.file), item.project(), parent != nullptr,
                            ModelPointer(parent), indexes.of(item), depthOf(parent), listingsOf(item)});
    }
    // In this order each item finds its folder and those before it in their places again.
    std::ranges::stable_sort(m_places, {}, [](const Place &place) { return std::pair(place.depth, place.index); });
}

// Steps -------------------------------------------------------------------

void ProjectUndo::noteCut(Places before)
{
    add({Kind::Cut, std::move(before.m_places)});
}

void ProjectUndo::noteMove(Places before)
{
    // Without what has stayed in its place, and what is in its old place as well as in the new one.
    Indexes indexes;
    std::erase_if(before.m_places, [&indexes](const Places::Place &place) {
        const ProjectItemDrag::Item item = place.item();
        if (!item.folder && !item.file)
            return true; // a plug-in or script has deleted it when it was notified of the move
        const bool isThere = item.project() == place.project && parentOf(item) == place.parent.get();
        return listingsOf(item) != place.listings || (isThere && indexes.of(item) == place.index);
    });
    if (!before.m_places.empty())
        add({Kind::Move, std::move(before.m_places)});
}

void ProjectUndo::notePaste(const Items &items)
{
    if (items.isEmpty())
        return;
    const auto isPasted = [item = items.first()](const Places::Place &place) { // one step has cut them all
        return place.folder.get() == item.folder && place.file.get() == item.file;
    };
    const auto cut = std::ranges::find_if(m_steps, [&](const Step &step) {
        return step.kind == Kind::Cut && std::ranges::any_of(step.places, isPasted);
    });
    if (cut == m_steps.end())
        return;
    std::vector<Places::Place> places = std::move(cut->places);
    m_steps.erase(cut);
    add({Kind::Move, std::move(places)});
}

void ProjectUndo::noteRename(ProjectFolder *folder, const QString &before)
{
    if (folder->name() != before)
        add({Kind::Rename, Places({{folder, nullptr}}).m_places, before, folder->name()});
}

void ProjectUndo::add(Step step)
{
    for (Places::Place &place : step.places) {
        if (place.folder || place.file)
            place.listings = listingsOf(place.item());
    }
    m_steps.push_back(std::move(step));
    if (m_steps.size() > MostSteps)
        m_steps.erase(m_steps.begin());
}

ProjectUndo::Items ProjectUndo::undo()
{
    while (!m_steps.empty()) {
        const Step step = std::move(m_steps.back());
        m_steps.pop_back();
        Items items = step.kind == Kind::Rename ? renameBack(step) : putBack(step);
        if (!items.isEmpty())
            return items;
    }
    return {};
}

/// Whether the folder or the project in which the item was is still there.
bool ProjectUndo::isWhereItWas(const Places::Place &place)
{
    if (place.isInFolder)
        return place.parent && isInProject(place.parent.get()) && place.parent->project() == place.project;
    return place.project;
}

ProjectUndo::Items ProjectUndo::putBack(const Step &step)
{
    Items items;
    for (const Places::Place &place : step.places) {
        if (!isWhereItWas(place) || (!place.folder && !place.file))
            continue;
        ProjectItemDrag::Item item = place.item();
        const bool isListed = listingsOf(item) > 0 && isInProject(parentOf(item));
        if (listingsOf(item) != place.listings || (step.kind == Kind::Move && !isListed)
            || !item.fitsInto(place.parent.get()))
            continue;
        if (step.kind == Kind::Move) {
            item.base = item.project()->basePath();
            item.takeOut();
        }
        item.putAt(place.project, place.parent.get(), place.index);
        items.append(item);
    }
    return items;
}

ProjectUndo::Items ProjectUndo::renameBack(const Step &step)
{
    ProjectFolder *folder = step.places.front().folder.get();
    if (!folder || !isInProject(folder) || folder->name() != step.nameAfter)
        return {};
    folder->rename(step.nameBefore);
    return {{folder, nullptr}};
}
