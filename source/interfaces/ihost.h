#pragma once
#include "unknown.h"
#include <QIcon>
#include <QStringList>
#include <QVariant>

class QWidget;

/// A message about a place in a file.
struct Diagnostic
{
    /// How important it is.
    enum Severity { Note = 0, Warning = 1, Error = 2 };

    int severity = Error;
    QString file;   ///< absolute, or relative to the project; empty for a message without a place
    int line = 0;   ///< counts from 1; 0 if it is not known
    int column = 0; ///< counts from 1 and a tab up to the next multiple of 8; 0 if it is not known
    QString text;
    QString code; ///< the tool's name of the message, "-Wshadow"; may be empty
};

/// Implemented by a plug-in that shows progress: the user has pressed "Cancel".
class IProgressCancel : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xaa618f20, 0xea2c, 0x4139, 0x9f, 0x47, 0xd5, 0xac, 0x32, 0x69, 0xf1, 0xb2};

    virtual void cancelled(int progress) = 0; ///< @p progress is the number that IHost::beginProgress() returned.

protected:
    ~IProgressCancel() = default;
};

/// Implemented by a plug-in that has settings of its own: a page of the dialog "Options".
class IOptionsPage : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x06174df2, 0x9ed3, 0x4384, 0xa9, 0x7c, 0x05, 0xd8, 0x77, 0x16, 0xa4, 0xa0};

    virtual QString title() = 0; ///< of the page's tab
    /// A new widget that shows the settings. The dialog owns it and deletes it when it closes.
    virtual QWidget *createPage() = 0;
    virtual void apply(QWidget *page) = 0; ///< The user has accepted the dialog: takes over what the widget shows.

protected:
    ~IOptionsPage() = default;
};

/// Implemented by a plug-in that follows what happens in the host. What a plug-in changes itself is reported as well,
/// when the host's call of the plug-in has returned. When the contents of the project were replaced, because its file
/// was loaded again or by IBuildEvents::xmlFeedback(), filesChanged() and configurationChanged() are called; properties
/// may differ then, too. Do not close windows or projects in these functions.
class IHostEvents : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x8443750a, 0x2fdc, 0x4791, 0xb2, 0xc5, 0x8c, 0xe3, 0x67, 0xa1, 0xdc, 0xf1};

    virtual void filesChanged() = 0; ///< Files or folders of the plug-in's project were added, removed or renamed.
    /// A property of the plug-in's project or of one of its files has another value, or has lost its value.
    virtual void propertyChanged(const QString &key, const QString &configuration) = 0;
    /// The current configuration of the plug-in's project is another one, or a configuration was added or removed. @p
    /// configuration is the current one.
    virtual void configurationChanged(const QString &configuration) = 0;
    /// Another project is current; @p own is true if it is the plug-in's.
    virtual void currentProjectChanged(bool own) = 0;

protected:
    ~IHostEvents() = default;
};

/// The services of the host for the plug-in objects of one project. It is returned by the query object that
/// IWorkspaceClient::setQueryInterface() passes: `queryInterface<IHost>(query)`, null in a host without it.
///
/// Paths may be absolute or relative to the project. After the project was closed, or bound to another plug-in object,
/// the functions have no effect. What changes the window (openFile(), showOutput(), showMessage() and the progress) is
/// done soon after the host's call, if the plug-in asks for it from inside one; the result of openFile() is then
/// whether the file exists.
class IHost : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x7efe86d3, 0xcb13, 0x46ed, 0xbe, 0x8b, 0xb8, 0x84, 0x1a, 0xba, 0xbd, 0xa1};

    virtual QString hostVersion() = 0; ///< "2.9.0"
    /// Opens a file in front, with the cursor at a line and column, which count from 1; 0 leaves it where it is. False
    /// if it cannot be opened; the user was informed.
    virtual bool openFile(const QString &file, int line, int column) = 0;

    /// Adds text to an output page, which is created if it does not exist; an empty name means "Build". Lines end in
    /// "\n". The start of a debug session removes the pages that were created so.
    virtual void output(const QString &page, const QString &text) = 0;
    /// The same for one line that opens the place when the user clicks it; @p text is without "\n".
    virtual void outputLink(const QString &page, const QString &text, const QString &file, int line, int column) = 0;
    virtual void clearOutput(const QString &page) = 0;
    virtual void showOutput(const QString &page) = 0; ///< Brings the page to the front. Nothing if it does not exist.

    /// Shows a text in the status bar, for a time or, if that is 0, until it is replaced.
    virtual void showMessage(const QString &text, int milliseconds) = 0;
    /// Shows progress in the status bar. If @p cancel is not null, the user can cancel: it is called then, and the
    /// plug-in ends the work and calls endProgress(). Returns a number for the next two functions.
    virtual int beginProgress(const QString &text, IProgressCancel *cancel) = 0;
    virtual void setProgress(int progress, int percent) = 0; ///< 0 to 100, or -1 if it is not known.
    virtual void endProgress(int progress) = 0;

    /// Replaces all messages that the plug-in has shown under this name for this project. They are added to the output
    /// page of this name, errors first, and each opens its place when the user clicks it. Other lines of the page stay,
    /// also the messages of other projects. An empty list removes them.
    virtual void setDiagnostics(const QString &page, const QList<Diagnostic> &diagnostics) = 0;

    /// A setting of the plug-in, kept for all projects of its user. @p key may contain "/" for groups.
    virtual QVariant setting(const QString &key, const QVariant &defaultValue) = 0;
    virtual void setSetting(const QString &key, const QVariant &value) = 0; ///< An invalid value removes the setting.
    /// Adds a page to the dialog "Options" until the plug-in object is released. The host keeps a reference. A second
    /// page with the same title, of another project's object, is not shown.
    virtual void addOptionsPage(IOptionsPage *page) = 0;

    /// A picture of the host by its file name, "build.png", or an image file of the plug-in by its absolute path; null
    /// if there is none.
    virtual QIcon icon(const QString &name) = 0;

    /// Reports events to @p events until the plug-in object is released or removeEvents() is called. The host keeps a
    /// reference.
    virtual void addEvents(IHostEvents *events) = 0;
    virtual void removeEvents(IHostEvents *events) = 0;

protected:
    ~IHost() = default;
};
