#pragma once
#include "modelpointer.h"
#include "projectfile.h"
#include "projectfolder.h"
#include <QMimeData>
class ListView;
class Project;

/// The selected folders and files of a project tree, for drag and drop or the clipboard: for each the line "folder" or
/// "file" and a line with the address of the object. Valid inside this process only.
class ProjectItemDrag : public QMimeData
{
    Q_OBJECT
public:
    /// One of the two is null.
    struct Item
    {
        ProjectFolder *folder;
        ProjectFile *file;
        QString base = {}; ///< the directory of its project when it was taken out; null if it is new

        [[nodiscard]] Project *project() const;
        void takeOut() const; ///< Removes it from its folder or project; then it has no owner.
        /// Rewrites the stored paths for a move to the project @p to: they name the same files.
        void rebase(const Project &to) const;
        /// Whether it can be put into @p target: a folder not into itself. Null is the root of a project.
        [[nodiscard]] bool fitsInto(const ProjectFolder *target) const;
        /// Adds it to @p target, or to the root of @p project if that is null. Files are always appended.
        void putInto(Project *project, ProjectFolder *target, bool prepend) const;
        /// Likewise, before the one that is at @p place.
        void putAt(Project *project, ProjectFolder *target, qsizetype place) const;
    };

    explicit ProjectItemDrag(const ListView &tree);

    [[nodiscard]] static QString format(); ///< the only format
    /// The object on the clipboard; null if the clipboard contains something else or data of another process.
    [[nodiscard]] static const ProjectItemDrag *fromClipboard();
    [[nodiscard]] QByteArray encodedData(const QString &mimeType) const { return data(mimeType); }
    /// Reads the text in pairs of lines. An invalid line shifts the pairs, so that the following items are skipped up
    /// to the next invalid line.
    [[nodiscard]] static QList<Item> items(const QMimeData &data);
    /// Keeps items that have been cut. They have no owner, except for those that are in another project as well.
    void keep(const QList<Item> &items);
    [[nodiscard]] bool keeps(const Item &item) const;
    [[nodiscard]] QList<Item> keptItems() const; ///< Without those that have been deleted in another project.

private:
    struct Kept
    {
        Item item;
        ModelPointer<ProjectFolder> folder;
        ModelPointer<ProjectFile> file;
    };
    QList<Kept> m_kept;
};
