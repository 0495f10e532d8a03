#pragma once
#include "syntaxhighlighter.h"
#include <functional>
#include <QString>
class EditorHost;
class QSettings;
class Workspace;

/// What the text editors of the program have in common.
struct EditorSetup
{
    const FormatTable *formats; ///< outlives the documents, as does the host
    EditorHost *host;
    QString swapDirectory;
};

/// Gives @p workspace the kinds of documents that the program opens. A file goes to the first kind that takes it: those
/// of the program that know their extensions, then those that @p addPluginKinds adds, then plain text, and last the
/// viewer of large files.
void registerDocumentKinds(Workspace &workspace, const EditorSetup &setup, const std::function<void()> &addPluginKinds);

/// Has every kind of text take over the editor's settings.
void applyEditorSettings(const Workspace &workspace, const QSettings &settings);
