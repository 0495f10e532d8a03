#include "projecttemplate.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

/// Reading descriptions of templates and finding the folders that group them.
class ProjectTemplateTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_root;

    QString path(const QString &name) const { return m_root->filePath(name); }

    void write(const QString &name, const QByteArray &text) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// "name(child(grandchild))" of each folder.
    static QString textOf(const QList<TemplateFolder> &folders)
    {
        QStringList texts;
        for (const TemplateFolder &folder : folders)
            texts += folder.info.name() + (folder.folders.isEmpty() ? QString() : u'(' + textOf(folder.folders) + u')');
        return texts.join(u' ');
    }

    static QString namesOf(const QList<ProjectTemplate> &templates)
    {
        QStringList names;
        for (const ProjectTemplate &each : templates)
            names.append(each.name());
        return names.join(u' ');
    }

    static QString textOf(const ProjectTemplate &info)
    {
        const auto shown = [](const QString &text) { return text.isNull() ? u"null"_s : text; };
        return QStringList{shown(info.type), shown(info.displayName), shown(info.description),
                           shown(info.icon), shown(info.openIcon),    shown(info.scriptModule.value_or(QString()))}
            .join(u'|');
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_root = std::make_unique<QTemporaryDir>();
    }

    void descriptionIsRead_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("expected");
        const QString nothing = u"null|null|null|null|null|null"_s;
        QTest::newRow("all") << QByteArray("<t type='script'><displayname>A</displayname><description>B</description>"
                                           "<icon default='c.png' open='d.png'/><script module='m'/></t>")
                             << u"script|A|B|c.png|d.png|m"_s;
        QTest::newRow("other order, unknown children")
            << QByteArray("<x><icon default='c'/><z><displayname>no</displayname></z>text<description>B</description>"
                          "<displayname>A</displayname></x>")
            << u"null|A|B|c|null|null"_s;
        QTest::newRow("empty texts are not null")
            << QByteArray("<t type=''><displayname/><description></description></t>") << u"|||null|null|null"_s;
        QTest::newRow("text of nested elements")
            << QByteArray("<t><description>a<b>b</b>&lt;c<![CDATA[<d>]]></description></t>")
            << u"null|null|ab<c<d>|null|null|null"_s;
        QTest::newRow("script at any depth; the first counts")
            << QByteArray("<t><a><script module='one'/></a><script module='two'/></t>")
            << u"null|null|null|null|null|one"_s;
        QTest::newRow("first script without module") << QByteArray("<t><script/><script module='two'/></t>") << nothing;
        QTest::newRow("a root named script is no script") << QByteArray("<script module='m'/>") << nothing;
        QTest::newRow("not well-formed") << QByteArray("<t type='folder'><displayname>A</displayname>") << nothing;
        QTest::newRow("empty") << QByteArray() << nothing;
        QTest::newRow("entity bomb") << QByteArray("<!DOCTYPE t [<!ENTITY a 'xxxxxxxxxx'><!ENTITY b "
                                                   "'&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;'>"
                                                   "<!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;'>]><t><displayname>&d;&d;"
                                                   "</displayname></t>")
                                     << nothing;
    }

    void descriptionIsRead()
    {
        QFETCH(QByteArray, xml);
        QTEST(textOf(parseTemplate(xml)), "expected");
    }

    void deeplyNestedFileIsRead()
    {
        const QByteArray xml = "<t><displayname>" + QByteArray("<a>").repeated(100000)
                               + QByteArray("</a>").repeated(100000) + "</displayname></t>";
        QCOMPARE(parseTemplate(xml).displayName, QString());
    }

    void longTextsAreShortened()
    {
        const ProjectTemplate info =
            parseTemplate("<t><displayname>" + QByteArray(100000, 'a') + "</displayname><description>"
                          + QByteArray(100000, 'b') + "</description></t>");
        QCOMPARE(info.displayName.size(), 200);
        QCOMPARE(info.description.size(), 1000);
    }

    void fileThatCannotBeReadCountsAsAbsent_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"absent", "too large", "pipe", "directory"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }

    void fileThatCannotBeReadCountsAsAbsent()
    {
        QFETCH(QString, kind);
        QDir().mkpath(path(u"t"_s));
        const QString file = path(u"t/template.xml"_s);
        if (kind == u"too large")
            write(u"t/template.xml"_s, "<t type='folder'/>" + QByteArray(1'000'000, ' '));
        else if (kind == u"pipe")
            QCOMPARE(mkfifo(QFile::encodeName(file).constData(), 0600), 0);
        else if (kind == u"directory")
            QDir().mkpath(file);
        const ProjectTemplate info = readTemplate(path(u"t"_s));
        QCOMPARE(textOf(info), u"null|null|null|null|null|null"_s);
        QCOMPARE(info.name(), u"t"_s);
        QCOMPARE(info.directory, path(u"t"_s));
    }

    void directoriesWithFilesAreTemplates()
    {
        write(u"group/b/project.vnp"_s, "");
        write(u"group/a/template.xml"_s, "<t><displayname>First</displayname></t>");
        write(u"group/more/c/project.vnp"_s, "");
        write(u"group/b/inner/project.vnp"_s, ""); // below a template nothing is searched
        QCOMPARE(textOf(findTemplateFolders({path(u"group"_s)})), u"group(more)"_s);
        QCOMPARE(namesOf(templatesIn(path(u"group"_s))), u"First b more"_s); // "more" has no type
    }

    void typeFolderMakesAGroupOfADirectoryWithFiles()
    {
        write(u"g/template.xml"_s, "<t type='folder'><displayname>Group</displayname></t>");
        write(u"g/project.vnp"_s, "");
        write(u"g/h/template.xml"_s, "<t type='folder'/>");
        write(u"g/t/project.vnp"_s, "");
        QCOMPARE(textOf(findTemplateFolders({path(u"g"_s)})), u"Group(h)"_s);
        QCOMPARE(namesOf(templatesIn(path(u"g"_s))), u"t"_s);
    }

    void sourcesKeepTheirOrderAndMissingOnesAreSkipped()
    {
        QDir().mkpath(path(u"z"_s));
        QDir().mkpath(path(u"a"_s));
        write(u"file"_s, "");
        QCOMPARE(textOf(findTemplateFolders({path(u"z"_s), path(u"gone"_s), path(u"file"_s), path(u"a"_s)})), u"z a"_s);
    }

    void hiddenDirectoriesAreIgnored()
    {
        QDir().mkpath(path(u"g/.git"_s));
        QDir().mkpath(path(u"g/.hidden"_s));
        QCOMPARE(textOf(findTemplateFolders({path(u"g"_s)})), u"g"_s);
        QCOMPARE(namesOf(templatesIn(path(u"g"_s))), QString());
    }

    void searchEndsInEndlessDirectories()
    {
        QDir().mkpath(path(u"g"_s));
        QVERIFY(QFile::link(path(u"g"_s), path(u"g/one"_s)));
        QVERIFY(QFile::link(path(u"g"_s), path(u"g/two"_s)));
        QVERIFY(QFile::link(path(u"g"_s), path(u"g/three"_s)));
        QVERIFY(QFile::link(path(u"g"_s), path(u"g/four"_s)));
        QCOMPARE(findTemplateFolders({path(u"g"_s)}).size(), 1);
    }
};

QTEST_GUILESS_MAIN(ProjectTemplateTest)
#include "tst_projecttemplate.moc"
