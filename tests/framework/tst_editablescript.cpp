#include "editablescript.h"
#include "ordinaryuser.h"
#include "scriptdirectories.h"
#include <QTest>

using namespace Qt::StringLiterals;

class EditableScriptTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    ScriptDirectories m_scripts;

    static void write(const QString &path, const QByteArray &content)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] QString installed() const { return m_scripts.installed + u"/macros.py"_s; }
    [[nodiscard]] QString copy() const { return m_scripts.user + u"/macros.py"_s; }
    [[nodiscard]] QString edited() const { return editableScript(m_scripts, u"macros.py"_s); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_scripts = {m_directory->filePath(u"installed"_s), m_directory->filePath(u"data/python"_s)};
        write(installed(), "installed\n");
    }

    void aFileThatCanBeWrittenIsEditedInPlace()
    {
        QCOMPARE(edited(), installed());
        QVERIFY(!QFile::exists(copy()));
    }

    void aReadOnlyFileIsCopiedForTheUser()
    {
        QFile::setPermissions(installed(), QFile::ReadOwner);
        QCOMPARE(edited(), copy());
        QCOMPARE(read(copy()), QByteArray("installed\n"));
        QVERIFY(QFileInfo(copy()).isWritable());
        QCOMPARE(read(installed()), QByteArray("installed\n"));
    }

    void theUsersCopyIsKept()
    {
        QFile::setPermissions(installed(), QFile::ReadOwner);
        write(copy(), "mine\n");
        QCOMPARE(edited(), copy());
        QCOMPARE(read(copy()), QByteArray("mine\n"));
    }

    void withoutACopyTheInstalledFileIsShown()
    {
        QFile::setPermissions(installed(), QFile::ReadOwner);
        write(m_directory->filePath(u"data"_s), "a file in the place of the directory");
        QCOMPARE(edited(), installed());
        m_scripts.user.clear();
        QCOMPARE(edited(), installed());
    }

    void missingScriptHasThePathInTheInstallation()
    {
        QFile::remove(installed());
        QCOMPARE(edited(), installed());
    }
};

int main(int argc, char **argv)
{
    if (!becomeOrdinaryUser())
        qFatal("files cannot be made unwritable for this user");
    EditableScriptTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_editablescript.moc"
