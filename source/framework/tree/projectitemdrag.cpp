#include "projectitemdrag.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projectrows.h"
#include "projecttreeitem.h"
#include <algorithm>
#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

ProjectItemDrag::ProjectItemDrag(const ListView &tree)
{
    QByteArray text;
    for (const ListViewItem *item : tree.selectedItemsInOrder()) {
        if (item->rtti() == ProjectRows::WorkspaceRTTI)
            continue;
        if (item->rtti() == ProjectRows::FolderRTTI)
            text += "folder\n";
        if (item->rtti() == ProjectRows::FileRTTI)
            text += "file\n";
        const void *object = static_cast<const ProjectTreeItem *>(item)->object<void>();
        text += "0x" + QByteArray::number(quintptr(object), 16) + '\n';
    }
    setData(format(), text);
}

QString ProjectItemDrag::format()
{
    return u"application/x-tarnprojectitems"_s;
}

const ProjectItemDrag *ProjectItemDrag::fromClipboard()
{
    return qobject_cast<const ProjectItemDrag *>(QGuiApplication::clipboard()->mimeData());
}

QList<ProjectItemDrag::Item> ProjectItemDrag::items(const QMimeData &data)
{
    const QByteArrayList words = data.data(format()).split('\n');
    QList<Item> items;
    for (qsizetype i = 0; i + 1 < words.size(); i += 2) {
        const auto address = quintptr(words[i + 1].toULongLong(nullptr, 16));
        if (words[i] == "folder" && address)
            items += {reinterpret_cast<ProjectFolder *>(address), nullptr};
        if (words[i] == "file" && address)
            items += {nullptr, reinterpret_cast<ProjectFile *>(address)};
    }
    return items;
}

void ProjectItemDrag::keep(const QList<Item> &items)
{
    for (const Item &item : items)
        m_kept.append({item, ModelPointer(item.folder), ModelPointer(item.file)});
}

bool ProjectItemDrag::keeps(const Item &item) const
{
    return std::ranges::any_of(
        m_kept, [&item](const Kept &kept) { return kept.folder.get() == item.folder && kept.file.get() == item.file; });
}

QList<ProjectItemDrag::Item> ProjectItemDrag::keptItems() const
{
    QList<Item> alive;
    for (const Kept &kept : m_kept) {
        if (kept.folder || kept.file)
            alive.append(kept.item);
    }
    return alive;
}

Project *ProjectItemDrag::Item::project() const
{
    return folder ? folder->project() : file->project();
}

void ProjectItemDrag::Item::takeOut() const
{
    if (folder && folder->parent())
        folder->parent()->removeFolder(folder);
    else if (folder)
        folder->project()->removeFolder(folder);
    else if (file->folder())
        file->folder()->removeFile(file);
    else
        file->project()->removeFile(file);
}

/// An item that has been taken out is listed once less.
void ProjectItemDrag::Item::rebase(const Project &to) const
{
    if (folder)
        folder->rebase(base, to, folder->listings() > 0);
    else
        file->rebase(base, to, file->listings() > 0);
}

bool ProjectItemDrag::Item::fitsInto(const ProjectFolder *target) const
{
    return !folder || !wouldContainItself(folder, target);
}

void ProjectItemDrag::Item::putInto(Project *project, ProjectFolder *target, bool prepend) const
{
    putAt(project, target, folder && prepend ? 0 : AtEnd);
}

void ProjectItemDrag::Item::putAt(Project *project, ProjectFolder *target, qsizetype place) const
{
    if (!base.isNull())
        rebase(*project);
    if (folder && target)
        target->insertFolder(folder, place);
    else if (folder)
        project->insertFolder(folder, place);
    else if (target)
        target->insertFile(file, place);
    else
        project->insertFile(file, place);
}
