#include "modeltext.h"
#include <QDirIterator>
#include <QRandomGenerator>
#include <QTemporaryDir>
using namespace Qt::StringLiterals;

/// Loading and saving of project files.
class TestProjectFormat : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_fileName;

    static QString corpus(const QString &name)
    {
        return QStringLiteral(VARNEL_SOURCE_DIR "/tests/project/corpus/") + name;
    }
    static void addRows(const QString &directory)
    {
        QTest::addColumn<QString>("fileName");
        QDirIterator files(corpus(directory), {u"*.vnp"_s});
        while (files.hasNext()) {
            const QString path = files.next();
            QTest::newRow(qPrintable(files.fileName())) << path;
        }
    }

    /// Loads the file, saves, loads and saves again; model and bytes must be the same each time.
    void checkRoundTrip()
    {
        Project first({}, {});
        QVERIFY(first.load(m_fileName));
        const QString model = textOf(first);
        QVERIFY(first.save());
        const QByteArray saved = bytesOf(m_fileName);
        Project second({}, {});
        QVERIFY(second.load(m_fileName));
        QCOMPARE(textOf(second), model);
        QVERIFY(second.save());
        QCOMPARE(bytesOf(m_fileName), saved);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_fileName = m_directory->filePath(u"sample.vnp"_s);
    }

    void irregularFileIsSavedInTheRegularForm_data() { addRows(u"."_s); }
    void irregularFileIsSavedInTheRegularForm()
    {
        QFETCH(QString, fileName);
        writeFile(m_fileName, bytesOf(fileName));
        checkRoundTrip();
        QCOMPARE(bytesOf(m_fileName), bytesOf(fileName + u".saved"_s));
    }

    void malformedFileIsRefused_data() { addRows(u"malformed"_s); }
    void malformedFileIsRefused()
    {
        QFETCH(QString, fileName);
        Project project({}, {});
        QVERIFY(!project.load(fileName));
        QCOMPARE(textOf(project), u"|||||\ncurrent \n"_s);
    }

    void truncatedFileIsRefused()
    {
        const QByteArray whole = bytesOf(corpus(u"values.vnp"_s)).trimmed();
        for (qsizetype length = 0; length < whole.size(); ++length) {
            Project project({}, {});
            QVERIFY2(!project.load(writeFile(m_fileName, whole.first(length))), qPrintable(QString::number(length)));
        }
    }

    void megabyteInOnePropertyIsReadBack()
    {
        QString value;
        for (int i = 0; value.size() < 1'000'000; ++i)
            value += u"line %1 <&> \u00e4\t]]>\r\n"_s.arg(i);
        Project project({}, {});
        QVERIFY(project.load(writeFile(m_fileName, "<project/>")));
        project.properties()->setProperty(u"big"_s, value, u"Default"_s);
        QVERIFY(project.save());
        checkRoundTrip();
        QVERIFY(project.load(m_fileName));
        QVERIFY(project.properties()->property(u"big"_s, u"Default"_s) == value);
    }

    void randomModelIsReadBack()
    {
        QRandomGenerator random(20031); // a fixed seed gives the same models each time
        const QStringList pieces{u"a"_s,    u"B"_s,      u"."_s,          u"/"_s,     u" "_s,  u"\n"_s,     u"\r"_s,
                                 u"\t"_s,   u"<"_s,      u">"_s,          u"&"_s,     u"\""_s, u"'"_s,      u"]"_s,
                                 u"é"_s,    u"\u65e5"_s, u"-"_s,          u"="_s,     u"--"_s, u"\u0085"_s, u"]]>"_s,
                                 u"<!--"_s, u"&amp;"_s,  u"\U0001f600"_s, u"\u2028"_s};
        const auto text = [&] {
            QString result;
            for (int i = random.bounded(6); i > 0; --i)
                result += pieces[random.bounded(pieces.size())];
            return result;
        };
        const auto fill = [&](ProjectProperties *properties) {
            for (int i = random.bounded(4); i > 0; --i)
                properties->setProperty(text(), text(), text());
        };
        for (int round = 0; round < 200; ++round) {
            Project project({}, {});
            QVERIFY(project.load(writeFile(m_fileName, "<project/>")));
            QList<ProjectFolder *> folders{nullptr};
            for (int i = random.bounded(30); i > 0; --i) {
                ProjectFolder *parent = folders[random.bounded(folders.size())];
                if (random.bounded(2)) {
                    auto *folder = new ProjectFolder(text());
                    folder->setExtensions({text(), text()});
                    parent ? parent->addFolder(folder, false) : project.addFolder(folder, true);
                    folders += folder;
                } else {
                    const QString path = text();
                    auto *file = new ProjectFile(path.section(u'/', -1), path);
                    fill(file->properties());
                    parent ? parent->addFile(file) : project.addFile(file);
                }
            }
            fill(project.properties());
            project.setCurrentConfiguration(u"x"_s + text());
            const QString model = textOf(project);
            QVERIFY(project.save());
            checkRoundTrip();
            Project read({}, {});
            QVERIFY(read.load(m_fileName));
            QCOMPARE(textOf(read), model);
        }
    }
};

QTEST_APPLESS_MAIN(TestProjectFormat)
#include "tst_projectformat.moc"
