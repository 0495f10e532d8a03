#include "filetemplate.h"
#include "projecttemplate.h"
#include <QDir>
#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString Source = QStringLiteral(VARNEL_SOURCE_DIR);
} // namespace

/// The descriptions of the shipped templates.
class TemplateFilesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void dialogShowsTheFoldersAndTheirTemplates()
    {
        QString shown;
        for (const TemplateFolder &folder : findTemplateFolders(subdirectories(Source + u"/templates"_s))) {
            shown += folder.info.displayName + u'\n';
            for (const ProjectTemplate &each : templatesIn(folder.info.directory))
                shown += u"    "_s + each.displayName + u'\n';
        }
        QCOMPARE(shown, u"Embedded firmware\n"
                        "    AVR firmware\n"
                        "    Cortex-M firmware\n"
                        "    Cortex-M firmware with printf\n"
                        "    Cortex-M firmware with two cores\n"
                        "    Your own Arm device\n"
                        "    RISC-V firmware\n"
                        "    Two processors\n"
                        "Existing sources\n"
                        "    From an existing folder\n"
                        "Programs for this computer\n"
                        "    C program\n"
                        "    C++ program\n"
                        "    Static library\n"
                        "Extensions of Varnel\n"
                        "    Script with a docked panel\n"
                        "    Plug-in\n"_s);
    }

    void eachTemplateHasDescriptionPictureAndProject()
    {
        for (const TemplateFolder &folder : findTemplateFolders(subdirectories(Source + u"/templates"_s))) {
            QVERIFY(!folder.info.description.isEmpty());
            for (const ProjectTemplate &each : templatesIn(folder.info.directory)) {
                const QDir directory(each.directory);
                QVERIFY2(!each.description.isEmpty(), qPrintable(each.directory));
                QVERIFY2(QFileInfo(directory.filePath(each.icon)).isFile(), qPrintable(each.icon));
                QVERIFY(directory.exists(each.isScript() ? *each.scriptModule + u".py"_s : u"project.vnp"_s));
                const QStringList pictures = directory.entryList({u"*.svg"_s, u"*.png"_s}, QDir::Files);
                QVERIFY2(pictures.isEmpty(), qPrintable(each.directory)); // they would be copied into projects
            }
        }
    }

    void newFilesHaveTheirTexts_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("expected"); // "|" is the cursor
        QTest::newRow("assembler")
            << u"Assembler source"_s
            << u"    .section .text.my_uart\n    .globl  my_uart\n    .type   my_uart, %function\n"
               "my_uart:\n    |\n    .size   my_uart, . - my_uart\n"_s;
        QTest::newRow("pair") << u"C source with header"_s << u"#include \"my-uart.h\"\n\n|\n"_s;
        QTest::newRow("class") << u"C++ class"_s << u"#include \"my-uart.h\"\n\nmy_uart::my_uart()\n{\n    |\n}\n"_s;
        QTest::newRow("python") << u"Python script"_s
                                << u"\"\"\"|\"\"\"\n\n\ndef main():\n    pass\n\n\nif __name__ == \"__main__\":\n"
                                   "    main()\n"_s;
    }

    void newFilesHaveTheirTexts()
    {
        QFETCH(QString, kind);
        for (const FileTemplate &each : findFileTemplates({Source + u"/data/filetemplates"_s})) {
            QVERIFY2(QFileInfo(QDir(each.directory).filePath(each.icon)).isFile(), qPrintable(each.icon));
            if (each.name != kind)
                continue;
            const NewFile file = filesOf(each, u"/src/my-uart."_s + each.extension).first();
            QTEST(QString(file.text).insert(file.cursor, u'|'), "expected");
            return;
        }
        QFAIL("no such template");
    }

    void nameWithTheExtensionOfTheSecondFileMakesOneFile()
    {
        int pairs = 0;
        for (const FileTemplate &each : findFileTemplates({Source + u"/data/filetemplates"_s})) {
            const QList<NewFile> files = filesOf(each, u"/src/uart.h"_s);
            QCOMPARE(files.size(), 1);
            QCOMPARE(files.first().path, u"/src/uart.h"_s);
            pairs += filesOf(each, u"/src/uart."_s + each.extension).size() == 2 ? 1 : 0;
        }
        QCOMPARE(pairs, 2); // C source with header, C++ class
    }

    void linkerScriptHasItsCursorAtTheFirstAddress()
    {
        for (const FileTemplate &each : findFileTemplates({Source + u"/data/filetemplates"_s})) {
            if (each.extension != u"ld")
                continue;
            const NewFile file = filesOf(each, u"/src/board.ld"_s).first();
            QVERIFY(QStringView(file.text).sliced(file.cursor).startsWith(u"0x00000000"));
            return;
        }
        QFAIL("no such template");
    }
};

QTEST_GUILESS_MAIN(TemplateFilesTest)
#include "tst_templatefiles.moc"
