#include "scripttrust.h"
#include "messages.h"
#include "windowservices.h"
#include <QDir>
#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
const auto AskKey = u"Startup/AskBeforeScripts"_s;
const auto TrustedKey = u"Startup/TrustedDirectories"_s;
const auto DistrustedKey = u"Startup/DistrustedDirectories"_s;

/// The same directory by whatever path a workspace in it was opened.
QString directoryOf(const QString &workspaceFile)
{
    const QFileInfo info(workspaceFile);
    const QString canonical = QFileInfo(info.absolutePath()).canonicalFilePath();
    return canonical.isEmpty() ? info.absolutePath() : canonical;
}

bool contains(const QSettings &settings, const QString &key, const QString &directory)
{
    return settings.value(key).toStringList().contains(directory);
}

void add(QSettings &settings, const QString &key, const QString &directory)
{
    settings.setValue(key, settings.value(key).toStringList() << directory);
}

bool remove(QSettings &settings, const QString &key, const QString &directory)
{
    QStringList directories = settings.value(key).toStringList();
    const bool found = directories.removeAll(directory) > 0;
    if (found)
        settings.setValue(key, directories);
    return found;
}
} // namespace

bool ScriptTrust::mayRun(const QString &workspaceFile)
{
    QSettings &settings = m_window.settings();
    if (m_unattended || settings.value(AskKey, 1).toInt() == 0)
        return true;
    const QString directory = directoryOf(workspaceFile);
    if (contains(settings, TrustedKey, directory) || contains(settings, DistrustedKey, directory))
        return contains(settings, TrustedKey, directory);
    const QString question = QObject::tr("Do you trust the authors of the files in this folder?\n\n%1\n\n"
                                         "The workspace names Python files that run when it is opened.");
    const bool trusted =
        showMessage(QMessageBox::Question, m_window.dialogParent(), question.arg(QDir::toNativeSeparators(directory)),
                    {QMessageBox::No, QMessageBox::Yes}) // the default runs nothing
        == QMessageBox::Yes;
    add(settings, trusted ? TrustedKey : DistrustedKey, directory);
    return trusted;
}

bool ScriptTrust::forget(const QString &workspaceFile)
{
    const QString directory = directoryOf(workspaceFile);
    const bool wasTrusted = remove(m_window.settings(), TrustedKey, directory);
    return remove(m_window.settings(), DistrustedKey, directory) || wasTrusted;
}
