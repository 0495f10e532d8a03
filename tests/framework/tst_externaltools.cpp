#include "externaltools.h"
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

class ExternalToolsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;

    /// The list as text: "name|command|arguments|directory" for each tool.
    static QStringList listOf(const ExternalTools &tools)
    {
        QStringList list;
        for (const ExternalTool *tool : tools.tools())
            list << QStringList{tool->name(), tool->command(), tool->arguments(), tool->initialDir()}.join(u'|');
        return list;
    }

    void store(int number, const QString &field, const QString &value)
    {
        m_settings->setValue(u"Tools/tool%1%2"_s.arg(number).arg(field), value);
    }

    static void addThree(ExternalTools &tools)
    {
        tools.add(u"A"_s, u"a"_s, u"-a $(FilePath), -b"_s, u"/a b"_s);
        tools.add(u"B"_s, u"b"_s, {}, {});
        tools.add(u"C"_s, u"c"_s, u"@Invalid()"_s, u"$(ProjectDir)"_s);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"s.ini"_s), QSettings::IniFormat);
    }

    void aSavedListIsLoadedTheSame()
    {
        ExternalTools saved;
        addThree(saved);
        saved.save(*m_settings);
        m_settings->sync();
        const QSettings file(m_settings->fileName(), QSettings::IniFormat);
        ExternalTools loaded;
        loaded.load(file);
        QCOMPARE(listOf(loaded), listOf(saved));
    }

    void toolsAreMovedAndRemoved()
    {
        ExternalTools tools;
        addThree(tools);
        const auto names = [&] {
            QString text;
            for (const ExternalTool *tool : tools.tools())
                text += tool->name();
            return text;
        };
        tools.moveUp(0);
        tools.moveUp(3);
        QCOMPARE(names(), u"ABC"_s);
        tools.moveDown(2);
        tools.moveDown(-1);
        tools.remove(3);
        tools.remove(-1);
        QCOMPARE(names(), u"ABC"_s);
        tools.moveUp(2);
        QCOMPARE(names(), u"ACB"_s);
        tools.moveDown(0);
        QCOMPARE(names(), u"CAB"_s);
        const ExternalTool *kept = tools.tools().at(2);
        tools.remove(1);
        QCOMPARE(names(), u"CB"_s);
        QCOMPARE(tools.tools().at(1), kept);
    }

    void theDirectoryIsWrittenInSmallLettersBesideTheOtherKeys()
    {
        ExternalTools tools;
        addThree(tools);
        tools.setEntries({tools.entries().at(1)});
        tools.save(*m_settings);
        QCOMPARE(m_settings->allKeys(), (QStringList{u"Tools/tool0arguments"_s, u"Tools/tool0command"_s,
                                                     u"Tools/tool0initialdir"_s, u"Tools/tool0name"_s}));
    }

    void savingRemovesOldEntries()
    {
        store(0, u"initialDir"_s, u"/old"_s);
        store(7, u"name"_s, u"old"_s);
        m_settings->setValue(u"Tools/other"_s, 1);
        m_settings->setValue(u"Debug/action0"_s, 1);
        ExternalTools().save(*m_settings);
        QCOMPARE(m_settings->allKeys(), QStringList{u"Debug/action0"_s});
    }

    void theDirectoryIsReadInBothSpellings_data()
    {
        QTest::addColumn<QString>("mixed");
        QTest::addColumn<QString>("small");
        QTest::addColumn<QString>("expected");
        QTest::newRow("as it is written") << QString() << u"/small"_s << u"/small"_s;
        QTest::newRow("as it is read first") << u"/mixed"_s << QString() << u"/mixed"_s;
        QTest::newRow("both") << u"/mixed"_s << u"/small"_s << u"/mixed"_s;
        QTest::newRow("none") << QString() << QString() << QString();
    }
    void theDirectoryIsReadInBothSpellings()
    {
        QFETCH(QString, mixed);
        QFETCH(QString, small);
        store(0, u"name"_s, u"A"_s);
        if (!mixed.isEmpty())
            store(0, u"initialDir"_s, mixed);
        if (!small.isEmpty())
            store(0, u"initialdir"_s, small);
        ExternalTools tools;
        tools.load(*m_settings);
        QTEST(tools.tools().at(0)->initialDir(), "expected");
    }

    void loadingEndsAtTheFirstNumberWithoutAName()
    {
        store(0, u"name"_s, u"A"_s);
        store(1, u"name"_s, QString());
        store(2, u"command"_s, u"c"_s);
        store(3, u"name"_s, u"D"_s);
        ExternalTools tools;
        tools.load(*m_settings);
        QCOMPARE(listOf(tools), (QStringList{u"A|||"_s, u"|||"_s}));
    }

    void loadingReplacesTheList()
    {
        store(0, u"name"_s, u"A"_s);
        ExternalTools tools;
        tools.add(u"Z"_s, {}, {}, {});
        tools.load(*m_settings);
        QCOMPARE(listOf(tools), QStringList{u"A|||"_s});
    }

    void textsWithCommasWrittenByHandAreKept()
    {
        m_settings.reset();
        QFile file(m_directory->filePath(u"s.ini"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Tools]\ntool0name=A\ntool0command=ld\ntool0arguments=-Wl,-Map,x.map\n");
        file.close();
        ExternalTools tools;
        tools.load(QSettings(file.fileName(), QSettings::IniFormat));
        QCOMPARE(listOf(tools), QStringList{u"A|ld|-Wl,-Map,x.map|"_s});
    }

    void editedEntriesAreTakenOver()
    {
        ExternalTools tools;
        addThree(tools);
        const ExternalTool *second = tools.tools().at(1);
        QList<ToolEntry> entries = tools.entries();
        entries[1].name = u"Second"_s;
        entries.swapItemsAt(0, 1);
        entries.removeLast();
        entries.append({.name = u"New"_s});
        tools.setEntries(entries);
        QCOMPARE(listOf(tools), (QStringList{u"Second|b||"_s, u"A|a|-a $(FilePath), -b|/a b"_s, u"New|||"_s}));
        QCOMPARE(tools.tools().at(0), second);
        QVERIFY(tools.entries().at(2).id > tools.entries().at(1).id);
    }

    void entriesOfTheSameIdMakeTwoTools()
    {
        ExternalTools tools;
        tools.add(u"A"_s, {}, {}, {});
        tools.setEntries({tools.entries().at(0), tools.entries().at(0)});
        QCOMPARE(listOf(tools), (QStringList{u"A|||"_s, u"A|||"_s}));
        QVERIFY(tools.entries().at(0).id != tools.entries().at(1).id);
    }

    void everyToolsOutputIsPassedOn()
    {
        ExternalTools tools;
        QString output;
        connect(&tools, &ExternalTools::output, this, [&](const QString &text) { output += text; });
        tools.add(u"A"_s, u"/no/a"_s, {}, {})->execute({});
        tools.add(u"B"_s, u"/no/b"_s, {}, {})->execute({});
        QCOMPARE(output, u"Running '/no/a '...\nCould not start process\n"
                         "Running '/no/b '...\nCould not start process\n"_s);
    }

    void twoToolsRunAtTheSameTime()
    {
        ExternalTools tools;
        ExternalTool *first = tools.add(u"A"_s, u"/bin/sleep"_s, u"30"_s, {});
        ExternalTool *second = tools.add(u"B"_s, u"/bin/sleep"_s, u"30"_s, {});
        QVERIFY(first->execute({}) && second->execute({}));
        QCOMPARE(tools.runningTools(), (QList<ExternalTool *>{first, second}));
        tools.stop(second->entry().id);
        QTRY_COMPARE(tools.runningTools(), QList<ExternalTool *>{first});
        tools.stop(first->entry().id);
        QTRY_VERIFY(tools.runningTools().isEmpty());
    }

    void aToolThatIsRemovedWhileItRunsIsKeptUntilItEnds()
    {
        ExternalTools tools;
        QString output;
        connect(&tools, &ExternalTools::output, this, [&](const QString &text) { output += text; });
        QStringList changes;
        connect(&tools, &ExternalTools::runningChanged, this,
                [&](int id, bool running) { changes << u"%1 %2"_s.arg(id).arg(running); });
        const QPointer<ExternalTool> tool = tools.add(u"A"_s, u"/bin/sleep"_s, u"30"_s, {});
        QVERIFY(tool->execute({}));
        bool isReportedToAll = false;
        connect(tool, &ExternalTool::runningChanged, this, [&](bool running) { isReportedToAll = !running; });
        tools.setEntries({});
        QVERIFY(tools.tools().isEmpty());
        QCOMPARE(tools.runningTools(), QList<ExternalTool *>{tool});
        tools.stop(tool->entry().id);
        QTRY_VERIFY(tools.runningTools().isEmpty());
        QVERIFY(output.endsWith(u"Process '/bin/sleep' exited prematurely\n"_s));
        QVERIFY(isReportedToAll);
        QTRY_VERIFY(!tool);
        QCOMPARE(changes, (QStringList{u"1 1"_s, u"1 0"_s}));
    }

    void anUnknownToolIsNotStopped()
    {
        ExternalTools tools;
        ExternalTool *tool = tools.add(u"A"_s, u"/bin/sleep"_s, u"30"_s, {});
        QVERIFY(tool->execute({}));
        tools.stop(77);
        ExternalTool *next = tools.add(u"B"_s, u"/bin/true"_s, {}, {});
        QVERIFY(next->execute({}));
        QTRY_VERIFY(!next->isRunning());
        QVERIFY(tool->isRunning());
        tools.stop(tool->entry().id);
        QTRY_VERIFY(!tool->isRunning());
    }
};

QTEST_GUILESS_MAIN(ExternalToolsTest)
#include "tst_externaltools.moc"
