#include "buildfixture.h"
#include "uptodate.h"
#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The check whether a build would do nothing, while the dry run of ninja takes long.
class TestUpToDate : public QObject
{
    Q_OBJECT
private:
    QByteArray m_path;

    /// A project that has been built.
    static void build(BuildFixture &fixture)
    {
        fixture.add(u"main.c"_s, "int main(void) { return 0; }\n");
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
    }

    /// Puts a script in the place of ninja, which notes its process.
    static void replaceNinja(const BuildFixture &fixture, const QByteArray &script)
    {
        fixture.write(u"bin/ninja"_s, "#!/bin/sh\necho $$ >" + fixture.path(u"pid"_s).toUtf8() + '\n' + script, true);
        qputenv("PATH", fixture.path(u"bin"_s).toUtf8() + ':' + qgetenv("PATH"));
    }

    static bool isRunning(const BuildFixture &fixture)
    {
        QFile file(u"/proc/%1/stat"_s.arg(QString::fromLatin1(fixture.read(u"pid"_s).trimmed())));
        return file.open(QIODevice::ReadOnly) && !file.readAll().contains(") Z ");
    }

    static QProgressDialog *dialog()
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == u"upToDateDialog" && window->isVisible())
                return qobject_cast<QProgressDialog *>(window);
        }
        return nullptr;
    }

    /// Calls @p act as soon as the dialog is open.
    static void whenDialogOpens(QTimer &timer, const std::function<void(QProgressDialog *)> &act)
    {
        connect(&timer, &QTimer::timeout, &timer, [&timer, act] {
            if (QProgressDialog *open = dialog()) {
                timer.stop();
                act(open);
            }
        });
        timer.start(5);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_path = qgetenv("PATH");
    }
    void cleanup()
    {
        qputenv("PATH", m_path);
        QCOMPARE(aliveInterfaces(), 0);
    }

    void userCancelsALongCheck()
    {
        BuildFixture fixture;
        build(fixture);
        replaceNinja(fixture, "exec sleep 100\n");
        QTimer timer;
        QString label;
        bool ran = false;
        whenDialogOpens(timer, [&](QProgressDialog *dialog) {
            label = dialog->labelText();
            ran = isRunning(fixture);
            QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
        });
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
        QVERIFY(ran);
        QVERIFY(!isRunning(fixture));
        QVERIFY(!dialog());
        QCOMPARE(label, u"Checking whether 'build/Debug/demo' is up to date..."_s);
    }

    void eventsAreProcessedDuringACheck()
    {
        BuildFixture fixture;
        build(fixture);
        replaceNinja(fixture, "while [ ! -e go ]; do sleep 0.01; done\necho 'ninja: no work to do.'\n");
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (++ticks == 5)
                fixture.write(u"go"_s, {});
        });
        timer.start(1);
        QVERIFY(fixture.environment->isUpToDate(u"Debug"_s));
        QVERIFY(ticks >= 5);
    }

    void longCheckThatEndsByItselfHasAResult()
    {
        BuildFixture fixture;
        build(fixture);
        replaceNinja(fixture, "while [ ! -e go ]; do sleep 0.01; done\necho 'ninja: no work to do.'\n");
        QTimer timer;
        whenDialogOpens(timer, [&](QProgressDialog *) { fixture.write(u"go"_s, {}); });
        QVERIFY(fixture.environment->isUpToDate(u"Debug"_s));
        QVERIFY(!timer.isActive()); // there was a dialog
    }

    void ninjaThatIgnoresTheStopIsKilled()
    {
        BuildFixture fixture;
        build(fixture);
        replaceNinja(fixture, "trap '' TERM\nwhile :; do sleep 0.01; done\n");
        const BuildDescription description = describe(fixture);
        QVERIFY(!isBuilt(description, 50ms));
        QVERIFY(!isRunning(fixture));
    }

    void failureIsNotUpToDate()
    {
        BuildFixture fixture;
        build(fixture);
        QVERIFY(isBuilt(describe(fixture)));
        replaceNinja(fixture, "echo 'ninja: no work to do.'\nexit 1\n");
        QVERIFY(!isBuilt(describe(fixture)));
    }

    void missingNinjaIsNotUpToDate()
    {
        BuildFixture fixture;
        build(fixture);
        qputenv("PATH", "/nowhere");
        QVERIFY(!isBuilt(describe(fixture)));
    }

    void projectMayCloseWhileTheDialogIsOpen_data()
    {
        QTest::addColumn<bool>("cancels");
        QTest::newRow("user cancels") << true;
        QTest::newRow("check ends") << false;
    }

    void projectMayCloseWhileTheDialogIsOpen()
    {
        QFETCH(const bool, cancels);
        BuildFixture fixture;
        build(fixture);
        replaceNinja(fixture, "while [ ! -e go ]; do sleep 0.01; done\necho 'ninja: no work to do.'\n");
        QTimer timer;
        whenDialogOpens(timer, [&](QProgressDialog *dialog) {
            fixture.environment->setProject(nullptr);
            fixture.project.reset();
            fixture.environment.reset();
            if (cancels)
                QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
            else
                fixture.write(u"go"_s, {});
        });
        const InterfacePtr<GnuBuild> called = shareInterface(fixture.environment.get()); // as the host does
        const int ends = int(fixture.events->ends.size());
        const QString text = fixture.events->text;
        const bool upToDate = called->isUpToDate(u"Debug"_s);
        QVERIFY(!cancels || !upToDate);
        QVERIFY(!fixture.environment);
        QVERIFY(!dialog());
        QVERIFY(!isRunning(fixture));
        QCOMPARE(fixture.events->ends.size(), ends);
        QCOMPARE(fixture.events->text, text);
    }

    void projectsMayCloseDuringACheck()
    {
        auto library = std::make_unique<BuildFixture>(QString(), u"util"_s);
        library->add(u"util.c"_s, "int util;\n");
        library->project->set(PropertyKey::TargetType, u"library"_s);
        QVERIFY2(library->build(), qPrintable(library->events->text));
        BuildFixture fixture;
        fixture.add(u"main.c"_s, "int main(void) { return 0; }\n");
        fixture.project->set(PropertyKey::UsedProjects, u"util"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        replaceNinja(fixture, "while [ ! -e " + fixture.path(u"go"_s).toUtf8()
                                  + " ]; do sleep 0.01; done\necho 'ninja: no work to do.'\n");
        QTimer::singleShot(20, this, [&] {
            library.reset();
            fixture.write(u"go"_s, {});
        });
        (void)fixture.environment->isUpToDate(u"Debug"_s);
        QVERIFY(!library);
    }

private:
    static BuildDescription describe(const BuildFixture &fixture)
    {
        GnuProject project(BuildFixture::toolChainOf({}), {}, BuildFixture::projects());
        project.setProject(fixture.project.get());
        QStringList problems;
        return project.describe(u"Debug"_s, problems);
    }
};

QTEST_MAIN(TestUpToDate)
#include "tst_uptodate.moc"
