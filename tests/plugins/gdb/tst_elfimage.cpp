#include "elfimage.h"
#include "livesession.h"
#include <sys/stat.h>

class tst_ElfImage : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void nativeProgramIsRead();
    void firmwareIsRead();
    void onlyWhatIsLoadedHasALoadSize();
    void otherFilesAreInvalid_data();
    void otherFilesAreInvalid();
    void pipeIsNotRead();
    void findImagePrefersConfigurationThenName();
    void sharedLibrariesAreNoPrograms();
};

void tst_ElfImage::nativeProgramIsRead()
{
    const Programs programs;
    const ElfImage image = loadElfImage(programs.native(u"demo"_s));
    QVERIFY(image.isValid() && image.isNative() && image.program && image.debugInformation);
    QVERIFY(image.functions.size() > 3);
    QVERIFY(!image.dataAtZero);
    QVERIFY(std::any_of(image.segments.begin(), image.segments.end(),
                        [](const auto &segment) { return segment.executable && !segment.writable; }));
    QVERIFY(!loadElfImage(programs.native(u"bare"_s, {u"-s"_s})).debugInformation);
}

void tst_ElfImage::firmwareIsRead()
{
    const Programs programs;
    const ElfImage image = loadElfImage(programs.firmware(u"firmware.elf"_s));
    QCOMPARE(image.machine, int(ElfImage::Arm));
    QVERIFY(!image.wide && !image.bigEndian && !image.isNative() && !image.relocatable);
    QCOMPARE(image.entry & 1, 0u); // the Thumb bit is not part of the address
    QVERIFY(image.functions.contains(image.entry));
    QVERIFY(!image.functions.contains(0));
    QVERIFY(image.dataAtZero); // the vectors
}

void tst_ElfImage::onlyWhatIsLoadedHasALoadSize()
{
    const Programs programs;
    const auto size = [&programs](const QString &name, const QStringList &flags) {
        return loadElfImage(programs.firmware(name, u"mps2.ld"_s, flags)).loadSize;
    };
    const quint64 withDebugInformation = size(u"debug.elf"_s, {});
    QVERIFY(withDebugInformation > 0);
    QCOMPARE(size(u"stripped.elf"_s, {u"-s"_s}), withDebugInformation);
    QCOMPARE(size(u"larger.elf"_s, {u"-DFILLER=1000"_s}), withDebugInformation + 1000);
}

void tst_ElfImage::otherFilesAreInvalid_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("hello");
    QTest::newRow("mark alone") << QByteArray("\177ELF");
}

void tst_ElfImage::otherFilesAreInvalid()
{
    QFETCH(QByteArray, contents);
    QVERIFY(!readElfImage(contents).isValid());
}

void tst_ElfImage::pipeIsNotRead()
{
    const QTemporaryDir directory;
    const QString pipe = directory.filePath(u"program"_s);
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!loadElfImage(pipe).isValid());
}

void tst_ElfImage::findImagePrefersConfigurationThenName()
{
    const Programs programs;
    const QDir base(programs.directory());
    ImageSearch search;
    search.basePath = base.path();
    search.name = u"demo"_s;
    search.configuration = u"Debug"_s;
    QCOMPARE(findImage(search), QString());
    const QString loose = programs.native(u"loose"_s);
    QCOMPARE(findImage(search), loose);
    QVERIFY(base.mkpath(u"build/Debug"_s) && base.mkpath(u"build/Release"_s));
    QVERIFY(QFile::copy(loose, base.filePath(u"build/Release/demo"_s)));
    QCOMPARE(findImage(search), base.filePath(u"build/Release/demo"_s));
    QVERIFY(QFile::copy(loose, base.filePath(u"build/Debug/demo.elf"_s)));
    QVERIFY(QFile::copy(loose, base.filePath(u"build/Debug/newer"_s)));
    QCOMPARE(findImage(search), base.filePath(u"build/Debug/demo.elf"_s));
    for (const QString &name : {u"newer"_s, u"a"_s, u"b"_s, u"c"_s, u"d"_s}) { // in any order of the directory
        (void)QFile::copy(loose, base.filePath(u"build/Debug/"_s + name));
        search.name = name;
        QCOMPARE(findImage(search), base.filePath(u"build/Debug/"_s + name));
    }
    search.name = u"none"_s; // the newest one
    int hours = 0;
    for (const QString &name : {u"b"_s, u"newer"_s, u"d"_s, u"a"_s}) {
        QFile file(base.filePath(u"build/Debug/"_s + name));
        QVERIFY(file.open(QIODevice::Append));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(3600 * ++hours), QFile::FileModificationTime));
        file.close();
        QCOMPARE(findImage(search), file.fileName());
    }
}

/// Only the end of a file's own name counts: directories and programs may have ".so" in their names.
void tst_ElfImage::sharedLibrariesAreNoPrograms()
{
    const Programs programs;
    const QString loose = programs.native(u"loose"_s);
    const QDir base(programs.directory());
    const QString directory = u"my.sources/motor.sorted/"_s;
    QVERIFY(base.mkpath(directory));
    ImageSearch search;
    search.basePath = base.filePath(directory);
    for (const QString &name : {u"libmotor.so"_s, u"libmotor.so.1"_s, u"libmotor.so.1.2.3"_s})
        QVERIFY(QFile::copy(loose, base.filePath(directory + name)));
    QCOMPARE(findImage(search), QString());
    QVERIFY(QFile::copy(loose, base.filePath(directory + u"motor.software.elf"_s)));
    QCOMPARE(findImage(search), base.filePath(directory + u"motor.software.elf"_s));
}

QTEST_MAIN(tst_ElfImage)
#include "tst_elfimage.moc"
