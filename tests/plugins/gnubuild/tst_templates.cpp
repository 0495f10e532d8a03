// The shipped project templates: builds of copies.
#include "fakeproject.h"
#include "gnubuild.h"
#include "iprojectimpl.h"
#include "project.h"
#include "projectfile.h"
#include <filesystem>
#include <QDirIterator>
#include <QTest>
using namespace Qt::StringLiterals;

/// Each template is built in a directory whose name has special characters.
class TestTemplates : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_directory;

    static QByteArray bytesOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void copiesBuildWithoutWarnings_data()
    {
        QTest::addColumn<QString>("path");
        const QString templates = QStringLiteral(VARNEL_SOURCE_DIR "/templates");
        QDirIterator projects(templates, {u"project.vnp"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (projects.hasNext()) {
            const QFileInfo project(projects.next());
            QTest::newRow(qPrintable(project.dir().dirName())) << project.path();
        }
    }

    void copiesBuildWithoutWarnings()
    {
        QFETCH(QString, path);
        const QString copy = m_directory.filePath(u"a %1 \u00e4 'b' "_s + QFileInfo(path).fileName());
        std::filesystem::copy(path.toStdString(), copy.toStdString());
        QVERIFY(QFile::rename(copy + u"/project.vnp"_s, copy + u"/my 'new' \u00fc.vnp"_s));
        Project project{QString(), QString()};
        QVERIFY(project.load(copy + u"/my 'new' \u00fc.vnp"_s));
        for (const ProjectFile *file : project.files({}, nullptr))
            QVERIFY2(QFileInfo::exists(project.absolutePath(file->path())), qPrintable(file->path()));
        QVERIFY(project.save());
        QCOMPARE(bytesOf(project.fileName()), bytesOf(path + u"/project.vnp"_s)); // written as the program does

        const InterfacePtr<RecordingEvents> events(new RecordingEvents);
        const InterfacePtr<GnuBuild> environment(
            new GnuBuild(*findToolChain(project.buildEnvironment()), std::make_shared<QList<GnuProject *>>()));
        environment->initialise(events.get(), project.buildEnvironmentOption());
        const auto interface = queryInterface<IProject>(new IProjectImpl(&project));
        environment->setProject(interface.get());
        QVERIFY(!project.isModified()); // it has all options that the environment adds
        environment->build({u"Debug"_s, u"Release"_s}, false);
        QVERIFY(QTest::qWaitFor([&] { return !events->ends.isEmpty(); }, 120000));
        QVERIFY2(events->ends.first(), qPrintable(events->text));
        QVERIFY2(!events->text.contains(u"arning"_s), qPrintable(events->text));
    }
};

QTEST_GUILESS_MAIN(TestTemplates)
#include "tst_templates.moc"
