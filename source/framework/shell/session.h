#pragma once
#include "viewplace.h"
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
class ViewManager;
class Workspace;

/// The open files, with the cursor and the panes of each.
struct Session
{
    using Pane = PanePlace;
    struct File
    {
        QString path;
        QList<Pane> panes;  ///< empty for a view that is not a text view
        int activePane = 0; ///< the one that had the focus last

        bool operator==(const File &) const = default;
    };

    QList<File> files; ///< in the order of their views; a file with several views occurs several times
    int active = -1;   ///< the file in front, -1 for none
    QJsonObject parts; ///< what other parts of the window keep, by their names

    bool operator==(const Session &) const = default;
};

/// The files that are open now. Documents that are not files are left out.
[[nodiscard]] Session currentSession(ViewManager &viewManager);
/// Opens the files of @p session that still exist; no message for missing ones. Those of @p opened get a further view.
void restoreSession(const Session &session, Workspace &workspace, ViewManager &viewManager, QStringList opened = {});

/// Stores one session for each workspace in a directory of the user.
class SessionStore
{
public:
    explicit SessionStore(QString directory);

    /// The session of a workspace file; @p workspace is empty for the session without a workspace. Returns an empty
    /// session if there is none, or if it cannot be read.
    [[nodiscard]] Session load(const QString &workspace) const;
    /// Writes the whole file or leaves the old one.
    bool save(const QString &workspace, const Session &session) const;

private:
    [[nodiscard]] QString fileOf(const QString &workspace) const;

    const QString m_directory;
};
