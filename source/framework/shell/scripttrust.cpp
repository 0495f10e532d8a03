#include "scripttrust.h"
#include "messages.h"
#include "windowservices.h"
#include <QDir>
#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
const auto AskKey = u"Startup/AskBeforeScripts"_s;

/// The same directory by whatever path a workspace in it was opened.
QString directoryOf(const QString &workspaceFile)
{
    const QFileInfo info(workspaceFile);
    const QString canonical = QFileInfo(info.absolutePath()).canonicalFilePath();
    return canonical.isEmpty() ? info.absolutePath() : canonical;
}

QString keyOf(ScriptTrust::Answer answer)
{
    return answer == ScriptTrust::Trusted ? u"Startup/TrustedDirectories"_s : u"Startup/DistrustedDirectories"_s;
}

bool remove(QSettings &settings, ScriptTrust::Answer answer, const QString &directory)
{
    QStringList directories = ScriptTrust::directories(settings, answer);
    const bool found = directories.removeAll(directory) > 0;
    ScriptTrust::setDirectories(settings, answer, directories);
    return found;
}
} // namespace

bool ScriptTrust::mayRun(const QString &workspaceFile)
{
    QSettings &settings = m_window.settings();
    if (m_unattended || !asks(settings))
        return true;
    const QString directory = directoryOf(workspaceFile);
    if (directories(settings, Trusted).contains(directory))
        return true;
    if (directories(settings, Distrusted).contains(directory))
        return false;
    const QString question = QObject::tr("Do you trust the authors of the files in this folder?\n\n%1\n\n"
                                         "The workspace names Python files that run when it is opened.");
    const bool trusted =
        showMessage(QMessageBox::Question, m_window.dialogParent(), question.arg(QDir::toNativeSeparators(directory)),
                    {QMessageBox::No, QMessageBox::Yes}) // the default runs nothing
        == QMessageBox::Yes;
    const Answer answer = trusted ? Trusted : Distrusted;
    setDirectories(settings, answer, directories(settings, answer) << directory);
    return trusted;
}

bool ScriptTrust::forget(const QString &workspaceFile)
{
    const QString directory = directoryOf(workspaceFile);
    const bool wasTrusted = remove(m_window.settings(), Trusted, directory);
    return remove(m_window.settings(), Distrusted, directory) || wasTrusted;
}

QStringList ScriptTrust::directories(const QSettings &settings, Answer answer)
{
    return settings.value(keyOf(answer)).toStringList();
}

void ScriptTrust::setDirectories(QSettings &settings, Answer answer, const QStringList &directories)
{
    if (directories.isEmpty())
        settings.remove(keyOf(answer));
    else
        settings.setValue(keyOf(answer), directories);
}

bool ScriptTrust::asks(const QSettings &settings)
{
    return settings.value(AskKey, 1).toInt() != 0;
}

void ScriptTrust::setAsks(QSettings &settings, bool on)
{
    settings.setValue(AskKey, int(on));
}
