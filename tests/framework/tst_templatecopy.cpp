#include "ordinaryuser.h"
#include "templatecopy.h"
#include <csignal>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using enum OverwriteAnswer;

/// Copying a template into the folder of a project.
class TemplateCopyTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_root;
    QStringList m_asked;

    QString path(const QString &name) const { return m_root->filePath(name); }

    void write(const QString &name, const QByteArray &text) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("absent");
    }

    QString filesIn(const QString &directory) const
    {
        return QDir(path(directory)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(u' ');
    }

    /// Copies "t" into "p" with these answers in order, then with Cancel.
    CopyResult copy(const QString &name = u"fw"_s, QList<OverwriteAnswer> answers = {})
    {
        m_asked.clear();
        return copyTemplate({name, path(u"t"_s), path(u"p"_s)}, [&](const QString &file) {
            m_asked.append(file);
            return answers.isEmpty() ? Cancel : answers.takeFirst();
        });
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_root = std::make_unique<QTemporaryDir>();
        write(u"t/project.vnp"_s, "<project/>");
        write(u"t/main.c"_s, "main");
        write(u"t/template.xml"_s, "<t/>");
        QDir().mkpath(path(u"p"_s));
    }

    void filesAreCopiedAndTheProjectIsRenamed()
    {
        write(u"t/picture.png"_s, "png");
        write(u"t/some.more.png"_s, "copied: its complete extension is more.png");
        write(u"t/sub/file.c"_s, "not copied");
        QCOMPARE(copy().outcome, CopyOutcome::Done);
        QCOMPARE(filesIn(u"p"_s), u"fw.vnp main.c some.more.png"_s);
        QCOMPARE(read(u"p/fw.vnp"_s), QByteArray("<project/>"));
        QCOMPARE(read(u"p/main.c"_s), QByteArray("main"));
        QVERIFY(m_asked.isEmpty());
    }

    void hiddenFilesAreCopied()
    {
        write(u"t/.gdbinit"_s, "set confirm off");
        QCOMPARE(copy().outcome, CopyOutcome::Done);
        QCOMPARE(read(u"p/.gdbinit"_s), QByteArray("set confirm off"));
    }

    void bytesStayAsTheyAre()
    {
        const QByteArray bytes = "\xef\xbb\xbf"
                                 "caf\xe9\r\n"
                                 + QByteArray(3'000'000, 'x') + '\0';
        write(u"t/main.c"_s, bytes);
        QCOMPARE(copy().outcome, CopyOutcome::Done);
        QCOMPARE(read(u"p/main.c"_s), bytes);
    }

    void specialNamesAreCopied_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : {u"two words"_s, u"Gr\u00f6\u00dfe"_s, u"a%1b%2"_s, u"it's \"q\""_s, u"a.b"_s,
                                    u"project"_s, u"$(x) & <y>"_s})
            QTest::newRow(qPrintable(name)) << name;
    }

    void specialNamesAreCopied()
    {
        QFETCH(QString, name);
        QCOMPARE(copy(name).outcome, CopyOutcome::Done);
        QCOMPARE(read(u"p/"_s + name + u".vnp"_s), QByteArray("<project/>"));
    }

    void templateWithoutProjectFailsAtTheRename()
    {
        QFile::remove(path(u"t/project.vnp"_s));
        const CopyResult result = copy();
        QCOMPARE(result.outcome, CopyOutcome::CannotRename);
        QCOMPARE(result.file, path(u"p/fw.vnp"_s));
        QCOMPARE(filesIn(u"p"_s), u"main.c"_s);
    }

    void vanishedTemplateFailsAtTheRename()
    {
        QDir(path(u"t"_s)).removeRecursively();
        QCOMPARE(copy().outcome, CopyOutcome::CannotRename);
        QCOMPARE(copy(u"project"_s).outcome, CopyOutcome::CannotRename);
    }

    void existingFilesAreAskedAbout_data()
    {
        QTest::addColumn<QList<OverwriteAnswer>>("answers");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<CopyOutcome>("outcome");
        QTest::addColumn<QByteArray>("project");
        QTest::addColumn<QByteArray>("source");
        using List = QList<OverwriteAnswer>;
        const QByteArray old = "old";
        QTest::newRow("cancel") << List{Cancel} << u"fw.vnp"_s << CopyOutcome::Cancelled << old << old;
        QTest::newRow("the second cancelled")
            << List{Yes, Cancel} << u"fw.vnp main.c"_s << CopyOutcome::Cancelled << QByteArray("absent") << old;
        QTest::newRow("each") << List{Yes, Yes} << u"fw.vnp main.c"_s << CopyOutcome::Done << QByteArray("<project/>")
                              << QByteArray("main");
        QTest::newRow("all at first") << List{YesToAll} << u"fw.vnp"_s << CopyOutcome::Done << QByteArray("<project/>")
                                      << QByteArray("main");
        QTest::newRow("all at second") << List{Yes, YesToAll} << u"fw.vnp main.c"_s << CopyOutcome::Done
                                       << QByteArray("<project/>") << QByteArray("main");
    }

    void existingFilesAreAskedAbout()
    {
        QFETCH(QList<OverwriteAnswer>, answers);
        write(u"p/fw.vnp"_s, "old");
        write(u"p/main.c"_s, "old");
        QTEST(copy(u"fw"_s, answers).outcome, "outcome");
        QTEST(m_asked.join(u' '), "asked");
        QTEST(read(u"p/fw.vnp"_s), "project");
        QTEST(read(u"p/main.c"_s), "source");
    }

    void unreadableFileEndsTheCopyAndEarlierOnesStay()
    {
        write(u"t/a.c"_s, "a");
        QFile::setPermissions(path(u"t/main.c"_s), {});
        const CopyResult result = copy();
        QCOMPARE(result.outcome, CopyOutcome::CannotRead);
        QCOMPARE(result.file, path(u"t/main.c"_s));
        QCOMPARE(filesIn(u"p"_s), u"a.c"_s);
    }

    void readOnlyTargetCannotBeWritten()
    {
        QFile::setPermissions(path(u"p"_s), QFile::ReadOwner | QFile::ExeOwner);
        const CopyResult result = copy();
        QCOMPARE(result.outcome, CopyOutcome::CannotWrite);
        QCOMPARE(result.file, path(u"p/main.c"_s));
        QFile::setPermissions(path(u"p"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void missingTargetCannotBeWritten()
    {
        QDir(path(u"p"_s)).removeRecursively();
        QCOMPARE(copy().outcome, CopyOutcome::CannotWrite);
    }

    void fullDiskCannotBeWritten()
    {
        QVERIFY(QFile::link(u"/dev/full"_s, path(u"p/main.c"_s)));
        const CopyResult result = copy(u"fw"_s, {Yes});
        QCOMPARE(result.outcome, CopyOutcome::CannotWrite);
        QCOMPARE(result.file, path(u"p/main.c"_s));
    }

    void incompleteFileIsRemovedAndEarlierOnesStay()
    {
        write(u"t/a.c"_s, "a");
        write(u"t/large.bin"_s, QByteArray(2'000'000, 'x'));
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{1'000'000, before.rlim_max};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        const CopyResult result = copy();
        setrlimit(RLIMIT_FSIZE, &before);
        QCOMPARE(result.outcome, CopyOutcome::CannotWrite);
        QCOMPARE(result.file, path(u"p/large.bin"_s));
        QCOMPARE(filesIn(u"p"_s), u"a.c"_s);
    }

    void executableFileStaysExecutableAndWritable()
    {
        QFile::setPermissions(path(u"t/main.c"_s), QFile::ReadOwner | QFile::ExeOwner);
        QCOMPARE(copy().outcome, CopyOutcome::Done);
        const QFileInfo copied(path(u"p/main.c"_s));
        QVERIFY(copied.isExecutable() && copied.isWritable());
        QVERIFY(!QFileInfo(path(u"p/fw.vnp"_s)).isExecutable());
    }

    void progressRisesToTheEnd()
    {
        write(u"t/large.bin"_s, QByteArray(2'000'000, 'x'));
        QList<int> steps;
        const CopyResult result = copyTemplate(
            {u"fw"_s, path(u"t"_s), path(u"p"_s)}, [](const QString &) { return Cancel; },
            [&](int percent) {
                steps.append(percent);
                return true;
            });
        QCOMPARE(result.outcome, CopyOutcome::Done);
        QVERIFY(steps.size() > 5);
        QVERIFY(std::is_sorted(steps.begin(), steps.end()));
        QVERIFY(steps.first() < 50);
        QCOMPARE(steps.last(), 100);
    }

    void cancelledCopyLeavesNoIncompleteFile()
    {
        write(u"t/a.c"_s, "a");
        write(u"t/large.bin"_s, QByteArray(2'000'000, 'x'));
        const CopyResult result = copyTemplate(
            {u"fw"_s, path(u"t"_s), path(u"p"_s)}, [](const QString &) { return Yes; },
            [](int percent) { return percent < 50; });
        QCOMPARE(result.outcome, CopyOutcome::Cancelled);
        QCOMPARE(filesIn(u"p"_s), u"a.c"_s);
    }

    void templateIsNotCopiedOntoItself()
    {
        const CopyResult result =
            copyTemplate({u"fw"_s, path(u"t"_s), path(u"t"_s)}, [](const QString &) { return Yes; });
        QCOMPARE(result.outcome, CopyOutcome::CannotWrite);
        QCOMPARE(read(u"t/main.c"_s), QByteArray("main"));
    }
};

int main(int argc, char **argv)
{
    if (!becomeOrdinaryUser())
        qFatal("files cannot be made unreadable for this user");
    TemplateCopyTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_templatecopy.moc"
