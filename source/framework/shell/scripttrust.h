#pragma once
#include <QStringList>
class QSettings;
class WindowServices;

/// Decides whether the scripts of a workspace run when it is opened. The user is asked once for each directory with
/// workspaces; the answer is kept in the settings until it is forgotten.
class ScriptTrust
{
public:
    /// @p window outlives this object.
    explicit ScriptTrust(WindowServices &window) : m_window(window) {}

    /// All scripts run without a question from now on: no user is there to answer.
    void setUnattended() { m_unattended = true; }
    /// Asks if there is no answer yet for the directory of the workspace file.
    [[nodiscard]] bool mayRun(const QString &workspaceFile);
    /// Forgets the answer for the directory of the workspace file. False if there was none.
    bool forget(const QString &workspaceFile);

    // The answers as they are stored
    enum Answer { Trusted, Distrusted };
    [[nodiscard]] static QStringList directories(const QSettings &settings, Answer answer);
    static void setDirectories(QSettings &settings, Answer answer, const QStringList &directories);
    [[nodiscard]] static bool asks(const QSettings &settings); ///< False if all scripts run without a question.
    static void setAsks(QSettings &settings, bool on);

private:
    WindowServices &m_window;
    bool m_unattended = false;
};
