#pragma once
#include "syntaxhighlighter.h"
#include <functional>
#include <QStringList>
class IPluginObject;
class Workspace;

/// The plug-ins of the program: their features, and the function that creates an object of one, with a reference for
/// the caller.
struct PluginSource
{
    QStringList features;
    std::function<IPluginObject *(const QString &feature)> create;
};

/// Adds the templates of all plug-ins to @p workspace: their kinds of documents first, then their languages of the text
/// editor, which paint with @p formats. Appends the default extensions of those that are new to @p sourceExtensions.
void addPluginDocuments(const PluginSource &plugins, Workspace *workspace, const FormatTable *formats,
                        QStringList *sourceExtensions);
