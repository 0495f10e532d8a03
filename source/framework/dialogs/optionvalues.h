#pragma once
#include "shortcutkeys.h"
#include "textformats.h"
#include "toolentry.h"
#include <functional>
#include <optional>

/// What the tab "Editor" of the options dialog edits.
struct EditorOptions
{
    bool mdi = false; ///< windows inside the main window instead of tabs
    int tabSize = 4;
    bool keepTabs = false;
    int indentMode = 2; ///< a TextIndent::IndentMode; other numbers stand for no choice

    bool operator==(const EditorOptions &) const = default;
};

/// What the tab "More" of the options dialog edits.
struct MoreOptions
{
    bool lineNumbers = true;
    bool currentLine = true;
    int zoom = 100;                                ///< of documents, in percent
    QString virtualEnvironment = {};               ///< a directory; empty for none
    std::optional<QString> automationAddress = {}; ///< none for all interfaces of this computer
    bool startPage = true;                         ///< the first page of the help is shown when the program starts
    bool askBeforeScripts = true;                  ///< before the scripts of a workspace run for the first time
    QStringList trustedDirectories = {};           ///< whose scripts run without a question
    QStringList distrustedDirectories = {};        ///< whose scripts do not run

    bool operator==(const MoreOptions &) const = default;
};

/// All that the options dialog shows, and gives back when it was accepted.
struct OptionValues
{
    EditorOptions editor = {};
    bool disableSplash = false;
    TextFormats formats = {};
    QList<ToolEntry> tools = {};
    QList<int> debugActions = {}; ///< for each event the number of one of its texts
    MoreOptions more = {};
    ShortcutOptions shortcuts = {};
};

/// What the options dialog shows besides the values.
struct OptionChoices
{
    std::function<TextFormats()> defaultFormats; ///< what "Use Defaults" goes back to
    QList<QStringList> debugTexts;               ///< the actions for each debug event
    ShortcutChoices shortcuts = {};
};
