#pragma once
#include <QMimeData>
class ListView;
class Project;
class ProjectFile;
class ProjectFolder;

/// The selected folders and files of a project tree, as they are dragged or lie on the clipboard: for each the line
/// "folder" or "file" and a line with the address of the object. It means something inside this process only.
class ProjectItemDrag : public QMimeData
{
    Q_OBJECT
public:
    /// One of the two is null.
    struct Item
    {
        ProjectFolder *folder;
        ProjectFile *file;

        [[nodiscard]] Project *project() const;
        void takeOut() const; ///< Of its folder or project; it is nobody's then.
        /// Into @p target, or into the root of @p project if that is null. Files always go last.
        void putInto(Project *project, ProjectFolder *target, bool prepend) const;
    };

    explicit ProjectItemDrag(const ListView &tree);

    [[nodiscard]] static QString format(); ///< The only one.
    /// What lies on the clipboard, null if it is something else or comes from another process.
    [[nodiscard]] static const ProjectItemDrag *fromClipboard();
    [[nodiscard]] QByteArray encodedData(const QString &mimeType) const { return data(mimeType); }
    /// Reads the text pair by pair. A line that is no half of a pair costs the items behind it, up to the next such
    /// line.
    [[nodiscard]] static QList<Item> items(const QMimeData &data);
};
