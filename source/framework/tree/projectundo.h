#pragma once
#include "projectitemdrag.h"
#include <QPointer>
#include <vector>
class ProjectRows;

/// Takes back what the user has done in a project tree, the newest step first: folders and files that were cut or
/// moved, and names of folders. What was deleted, renamed or moved by others meanwhile stays as it is.
class ProjectUndo
{
public:
    using Items = QList<ProjectItemDrag::Item>;

    /// Where items are, before they are cut or moved.
    class Places
    {
    public:
        explicit Places(const Items &items);

    private:
        friend class ProjectUndo;
        struct Place
        {
            ModelPointer<ProjectFolder> folder;
            ModelPointer<ProjectFile> file; ///< one of the two is null
            [[nodiscard]] ProjectItemDrag::Item item() const { return {folder.get(), file.get()}; }
            QPointer<Project> project;
            bool isInFolder;
            ModelPointer<ProjectFolder> parent;
            qsizetype index;
            int depth;
            quint32 listings; ///< of a step, after the change
        };
        std::vector<Place> m_places;
    };

    void noteCut(Places before); ///< Afterwards.
    /// The cut items have been put into another place: one step with the cut.
    void notePaste(const Items &items);
    void noteMove(Places before); ///< Afterwards.
    void noteRename(ProjectFolder *folder, const QString &before);

    [[nodiscard]] bool isEmpty() const { return m_steps.empty(); }
    /// Takes back the last step that can be taken back. The items that have their former places again, or the renamed
    /// folder; empty if there is no such step.
    [[nodiscard]] Items undo();

private:
    enum class Kind { Cut, Move, Rename };
    struct Step
    {
        Kind kind;
        std::vector<Places::Place> places; ///< of a renamed folder, only the folder itself
        QString nameBefore = {};
        QString nameAfter = {};
    };

    void add(Step step);
    [[nodiscard]] static bool isWhereItWas(const Places::Place &place);
    [[nodiscard]] static Items putBack(const Step &step);
    [[nodiscard]] static Items renameBack(const Step &step);

    std::vector<Step> m_steps;
};
