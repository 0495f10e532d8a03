#pragma once
#include <QString>
class QUrl;

/// What pages of the help can ask for. This class does what needs no window.
class HelpHost
{
public:
    virtual ~HelpHost() = default;

    /// Starts a program, or opens a file with the program that the desktop has for it. False if that fails.
    virtual bool start(const QString &path, const QString &directory);
    /// Shows a page of the web, or writes a mail.
    virtual bool openExternally(const QUrl &url);
    /// Carries out the command @p name with the argument @p argument, which may be empty. False if there is none.
    virtual bool runCommand(const QString &name, const QString &argument);
    /// The text of a page with its placeholders replaced.
    [[nodiscard]] virtual QString filledIn(const QString &page) { return page; }
};

/// The pages that may use the host: those below a directory.
struct HelpSite
{
    QString directory;        ///< empty: no page may
    HelpHost *host = nullptr; ///< outlives the views; null: no page can

    [[nodiscard]] bool trusts(const QString &page) const;
};
