#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QSettings>
#include <QSvgRenderer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString share = QStringLiteral(VARNEL_STAGE_DIR "/share");
}

class tst_packaging : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { qputenv("XDG_DATA_DIRS", share.toUtf8() + ":/usr/share"); }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void desktopEntryOpensTheFileType_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("command");
        QTest::newRow("project") << u"blinky.vnp"_s << u"application/x-varnel-project"_s << u"varnel-project"_s
                                 << u"varnel %f"_s;
        QTest::newRow("workspace") << u"blinky.vnw"_s << u"application/x-varnel-workspace"_s << u"varnel-workspace"_s
                                   << u"varnel %f"_s;
    }
    void desktopEntryOpensTheFileType()
    {
        QFETCH(const QString, file);
        QFETCH(const QString, entry);
        const QMimeType type = QMimeDatabase().mimeTypeForFile(file, QMimeDatabase::MatchExtension);
        QTEST(type.name(), "type");
        QVERIFY(type.inherits(u"application/xml"_s));
        QCOMPARE(type.iconName(), u"varnel"_s);

        QSettings desktop(share + u"/applications/%1.desktop"_s.arg(entry), QSettings::IniFormat);
        desktop.beginGroup(u"Desktop Entry"_s);
        QTEST(desktop.value(u"Exec"_s).toString(), "command");
        QVERIFY(desktop.value(u"NoDisplay"_s).toBool());
    }

    void launcherStartsWithoutArguments()
    {
        QSettings desktop(share + u"/applications/varnel.desktop"_s, QSettings::IniFormat);
        QCOMPARE(desktop.value(u"Desktop Entry/Exec"_s).toString(), u"varnel"_s);
        QCOMPARE(desktop.value(u"Desktop Entry/Icon"_s).toString(), u"varnel"_s);
    }

    void everyProgramHasAManualPageAndALink()
    {
        QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/packaging/debian/varnel.links"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList links = QString::fromUtf8(file.readAll()).split(u'\n');
        QStringList programs = QDir(QStringLiteral(VARNEL_STAGE_DIR "/bin")).entryList(QDir::Files | QDir::Executable);
        programs.removeIf([](const QString &name) { return name.contains(u".so"_s); });
        programs += {u"varnel"_s, u"varnel-run"_s}; // they may not be built yet
        for (const QString &name : programs) {
            QVERIFY2(QFile::exists(share + u"/man/man1/%1.1"_s.arg(name)), qPrintable(name));
            QVERIFY2(links.contains(u"usr/lib/varnel/bin/%1 usr/bin/%1"_s.arg(name)), qPrintable(name));
        }
    }

    void iconExists() { QVERIFY(QSvgRenderer(share + u"/icons/hicolor/scalable/apps/varnel.svg"_s).isValid()); }
};

QTEST_GUILESS_MAIN(tst_packaging)
#include "tst_packaging.moc"
