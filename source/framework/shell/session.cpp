#include "session.h"
#include "document.h"
#include "view.h"
#include "viewmanager.h"
#include "wholefile.h"
#include "workspace.h"
#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {
constexpr int FormatVersion = 1;

Session::File fileOf(View *view)
{
    const ViewPlace place = placeOf(view);
    return {view->document()->filename(), place.panes, place.activePane};
}

/// Opens a view of a file, which may be open already; a second view if @p further is true. Null if the file is missing.
View *openView(const QString &path, bool further, Workspace &workspace, ViewManager &viewManager)
{
    if (!workspace.findDocument(path) && !QFileInfo(path).isFile())
        return nullptr;
    if (!workspace.openDocument(path, true))
        return nullptr;
    if (further)
        viewManager.newView();
    return viewManager.currentView();
}

QJsonObject toJson(const Session::File &file)
{
    QJsonArray panes;
    for (const Session::Pane &pane : file.panes)
        panes.append(QJsonObject{
            {u"height"_s, pane.height}, {u"line"_s, pane.line}, {u"column"_s, pane.column}, {u"top"_s, pane.top}});
    return {{u"path"_s, file.path}, {u"panes"_s, panes}, {u"activePane"_s, file.activePane}};
}

Session::File fileFromJson(const QJsonObject &object)
{
    Session::File file{object[u"path"_s].toString(), {}, object[u"activePane"_s].toInt()};
    for (const auto &value : object[u"panes"_s].toArray()) {
        const QJsonObject pane = value.toObject();
        const auto number = [&pane](const QString &key) { return qMax(0, pane[key].toInt()); };
        file.panes.append({number(u"height"_s), number(u"line"_s), number(u"column"_s), number(u"top"_s)});
    }
    return file;
}
} // namespace

Session currentSession(ViewManager &viewManager)
{
    Session session;
    for (View *view : viewManager.arrangedViews()) {
        if (!QFileInfo(view->document()->filename()).isAbsolute())
            continue;
        if (view == viewManager.currentView())
            session.active = int(session.files.size());
        session.files.append(fileOf(view));
    }
    return session;
}

void restoreSession(const Session &session, Workspace &workspace, ViewManager &viewManager, QStringList opened)
{
    QPointer<View> active;
    for (int i = 0; i < session.files.size(); ++i) {
        const QString &path = session.files[i].path;
        View *view = openView(path, opened.contains(path), workspace, viewManager);
        if (!view)
            continue;
        opened.append(path);
        restorePlace(view, {session.files[i].panes, session.files[i].activePane});
        if (i == session.active)
            active = view;
    }
    if (active)
        viewManager.activateView(active, true);
}

SessionStore::SessionStore(QString directory) : m_directory(std::move(directory)) {}

QString SessionStore::fileOf(const QString &workspace) const
{
    if (workspace.isEmpty())
        return m_directory + u"/no workspace.json"_s;
    const QByteArray hash = QCryptographicHash::hash(QDir::cleanPath(workspace).toUtf8(), QCryptographicHash::Sha1);
    return m_directory + u'/' + QString::fromLatin1(hash.toHex()) + u".json"_s;
}

Session SessionStore::load(const QString &workspace) const
{
    const QByteArray bytes = readFile(fileOf(workspace)).value_or(QByteArray());
    const QJsonObject root = QJsonDocument::fromJson(bytes).object();
    if (root[u"version"_s].toInt() != FormatVersion)
        return {};
    Session session;
    session.active = root[u"active"_s].toInt(-1);
    for (const auto &value : root[u"files"_s].toArray())
        session.files.append(fileFromJson(value.toObject()));
    session.parts = root[u"parts"_s].toObject();
    return session;
}

bool SessionStore::save(const QString &workspace, const Session &session) const
{
    QJsonArray files;
    for (const Session::File &file : session.files)
        files.append(toJson(file));
    const QJsonObject root{{u"version"_s, FormatVersion},
                           {u"workspace"_s, workspace},
                           {u"active"_s, session.active},
                           {u"files"_s, files},
                           {u"parts"_s, session.parts}};
    QSaveFile file(fileOf(workspace));
    return QDir().mkpath(m_directory) && file.open(QIODevice::WriteOnly)
           && file.write(QJsonDocument(root).toJson()) >= 0 && file.commit();
}
