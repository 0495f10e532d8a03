#pragma once
#include "syntaxhighlighter.h"
#include <functional>
#include <QString>
class EditorHost;
class QSettings;
class Workspace;

/// The objects that all text editors of the program share.
struct EditorSetup
{
    const FormatTable *formats; ///< outlives the documents, as does the host
    EditorHost *host;
    QString swapDirectory;
};

/// Adds the kinds of documents that the program opens to @p workspace. The first kind that accepts a file opens it: the
/// program's kinds for certain extensions, then the kinds that @p addPluginKinds adds, then plain text, and last the
/// viewer of large files.
void registerDocumentKinds(Workspace &workspace, const EditorSetup &setup, const std::function<void()> &addPluginKinds);

/// Applies the editor's settings to every kind of text.
void applyEditorSettings(const Workspace &workspace, const QSettings &settings);
