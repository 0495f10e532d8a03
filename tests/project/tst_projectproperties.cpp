#include "modeltext.h"
#include "projectxmlreader.h"
#include "projectxmlwriter.h"
using namespace Qt::StringLiterals;

class TestProjectProperties : public QObject
{
    Q_OBJECT
private:
    static QString xmlOf(const ProjectProperties &properties)
    {
        ProjectXmlWriter xml;
        xml.startElement("properties"_L1);
        properties.write(xml);
        xml.endElement();
        return xml.xml();
    }
    static void read(ProjectProperties &properties, const QString &text)
    {
        ProjectXmlReader xml(text);
        QVERIFY(xml.readNextStartElement());
        properties.read(xml);
        QVERIFY(xml.finish());
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void listsConfigurationsAndKeysInAscendingOrder()
    {
        ProjectProperties properties;
        properties.setProperty(u"z"_s, u"1"_s, u"b"_s);
        properties.setProperty(u"Z"_s, u"2"_s, u"b"_s);
        properties.setProperty(u"a"_s, u"3"_s, u"b"_s);
        QVERIFY(properties.addConfiguration(u"a"_s));
        QCOMPARE(properties.configurations(), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(properties.propertyKeys(u"b"_s), (QStringList{u"Z"_s, u"a"_s, u"z"_s}));
    }

    void addingAnExistingConfigurationChangesNothing()
    {
        Project project(u"p"_s, u"/p"_s);
        project.properties()->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        project.setModified(false);
        QVERIFY(!project.properties()->addConfiguration(u"Debug"_s));
        QCOMPARE(project.properties()->property(u"k"_s, u"Debug"_s), u"v"_s);
        QVERIFY(!project.isModified());
        QVERIFY(project.properties()->addConfiguration(u"Release"_s));
        QVERIFY(project.isModified());
    }

    void changesAreReportedOnce()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        project.addFile(file);
        QStringList reports;
        connect(&project, &Project::propertyChanged, &project,
                [&](const QString &key, const QString &configuration) { reports += key + u' ' + configuration; });
        connect(&project, &Project::configurationsChanged, &project, [&] { reports += u"configurations"_s; });
        const auto take = [&] { return std::exchange(reports, {}).join(u", "_s); };
        ProjectProperties *properties = project.properties();
        properties->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        QCOMPARE(take(), u"configurations, k Debug"_s);
        project.setModified(false);
        properties->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        QCOMPARE(take(), QString());
        QVERIFY(project.isModified());
        file->properties()->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        QVERIFY(file->properties()->removeProperty(u"k"_s, u"Debug"_s));
        QCOMPARE(take(), u"k Debug, k Debug"_s);
        QVERIFY(properties->removeProperty(u"k"_s, u"Debug"_s));
        QVERIFY(!properties->removeProperty(u"k"_s, u"Debug"_s));
        QCOMPARE(take(), u"k Debug"_s);
        properties->removeConfiguration(u"Debug"_s);
        properties->removeConfiguration(u"Debug"_s);
        QCOMPARE(take(), u"configurations"_s);
    }

    void removedConfigurationLosesItsKeysAndMarksTheProject()
    {
        Project project(u"p"_s, u"/p"_s);
        project.properties()->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        project.setModified(false);
        QVERIFY(project.properties()->removeConfiguration(u"Debug"_s));
        QVERIFY(project.isModified());
        QVERIFY(project.properties()->configurations().isEmpty());
        QVERIFY(project.properties()->addConfiguration(u"Debug"_s));
        QVERIFY(project.properties()->propertyKeys(u"Debug"_s).isEmpty());
    }

    void removingAMissingConfigurationStillMarksTheProject()
    {
        Project project(u"p"_s, u"/p"_s);
        QVERIFY(project.properties()->removeConfiguration(u"Missing"_s));
        QVERIFY(project.isModified());
    }

    void readingKeysOfAnUnknownConfigurationCreatesIt()
    {
        Project project(u"p"_s, u"/p"_s);
        expectAssert(u"m_configurations.find(configuration) != m_configurations.end()"_s);
        QCOMPARE(project.properties()->propertyKeys(u"Missing"_s), QStringList());
        QCOMPARE(project.properties()->configurations(), QStringList(u"Missing"_s));
        QVERIFY(!project.isModified());
    }

    void settingAValueCreatesTheConfigurationAndSetsBothMarks()
    {
        Project project(u"p"_s, u"/p"_s);
        project.properties()->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        QCOMPARE(project.properties()->configurations(), QStringList(u"Debug"_s));
        QVERIFY(project.properties()->isModified());
        QVERIFY(project.isModified());
        project.setModified(false);
        QVERIFY(project.properties()->isModified());
    }

    void storeWithoutProjectReturnsItsOwnValues()
    {
        ProjectProperties properties;
        properties.setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        QCOMPARE(properties.property(u"k"_s, u"Debug"_s), u"v"_s);
        QVERIFY(properties.property(u"other"_s, u"Debug"_s).isNull());
        QVERIFY(properties.property(u"k"_s, u"Release"_s).isNull());
    }

    void fileFallsBackToTheProject_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("configuration");
        QTest::addColumn<QString>("value");
        QTest::newRow("file's own") << u"both"_s << u"Debug"_s << u"file"_s;
        QTest::newRow("key only in the project") << u"project"_s << u"Debug"_s << u"project"_s;
        QTest::newRow("configuration only in the project") << u"both"_s << u"Release"_s << u"project in Release"_s;
        QTest::newRow("empty value of the file hides the project's") << u"hidden"_s << u"Debug"_s << u""_s;
        QTest::newRow("nowhere") << u"none"_s << u"Debug"_s << QString();
        QTest::newRow("other configurations are not searched") << u"project"_s << u"Release"_s << QString();
        QTest::newRow("unknown configuration") << u"project"_s << u"Missing"_s << QString();
    }
    void fileFallsBackToTheProject()
    {
        QFETCH(QString, key);
        QFETCH(QString, configuration);
        QFETCH(QString, value);
        Project project(u"p"_s, u"/p"_s);
        project.properties()->setProperty(u"both"_s, u"project"_s, u"Debug"_s);
        project.properties()->setProperty(u"project"_s, u"project"_s, u"Debug"_s);
        project.properties()->setProperty(u"hidden"_s, u"project"_s, u"Debug"_s);
        project.properties()->setProperty(u"both"_s, u"project in Release"_s, u"Release"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        project.addFile(file);
        file->properties()->setProperty(u"both"_s, u"file"_s, u"Debug"_s);
        file->properties()->setProperty(u"hidden"_s, u""_s, u"Debug"_s);
        for (const bool flag : {false, true}) { // the flag has no effect
            const QString found = file->properties()->property(key, configuration, flag);
            QCOMPARE(found, value);
            QCOMPARE(found.isNull(), value.isNull());
        }
    }

    void removedValueOfAFileIsThatOfTheProjectAgain()
    {
        Project project(u"p"_s, u"/p"_s);
        project.properties()->setProperty(u"k"_s, u"project"_s, u"Debug"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        project.addFile(file);
        file->properties()->setProperty(u"k"_s, u"file"_s, u"Debug"_s);
        file->properties()->setProperty(u"other"_s, u"file"_s, u"Debug"_s);
        project.setModified(false);
        file->properties()->setModified(false);
        QVERIFY(file->properties()->removeProperty(u"k"_s, u"Debug"_s));
        QVERIFY(project.isModified() && file->properties()->isModified());
        QCOMPARE(file->properties()->property(u"k"_s, u"Debug"_s), u"project"_s);
        QCOMPARE(file->properties()->propertyKeys(u"Debug"_s), QStringList{u"other"_s});
        QVERIFY(file->properties()->removeProperty(u"other"_s, u"Debug"_s));
        QVERIFY(!file->properties()->hasConfigurations()); // as before its first value
    }

    void projectKeepsAConfigurationWithoutValues()
    {
        Project project(u"p"_s, u"/p"_s);
        project.properties()->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        QVERIFY(project.properties()->removeProperty(u"k"_s, u"Debug"_s));
        QCOMPARE(project.properties()->configurations(), QStringList{u"Debug"_s});
        QVERIFY(project.properties()->property(u"k"_s, u"Debug"_s).isNull());
    }

    void removingAMissingValueChangesNothing()
    {
        Project project(u"p"_s, u"/p"_s);
        project.properties()->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        project.setModified(false);
        QVERIFY(!project.properties()->removeProperty(u"other"_s, u"Debug"_s));
        QVERIFY(!project.properties()->removeProperty(u"k"_s, u"Missing"_s));
        QVERIFY(!project.isModified());
        QCOMPARE(project.properties()->configurations(), QStringList{u"Debug"_s});
    }

    void lookupCreatesNoConfiguration()
    {
        Project project(u"p"_s, u"/p"_s);
        project.properties()->addConfiguration(u"Debug"_s);
        QVERIFY(project.properties()->property(u"k"_s, u"Default"_s, false).isNull());
        QCOMPARE(project.properties()->configurations(), QStringList(u"Debug"_s));
    }

    void changedConfigurationsOfTheProjectDoNotAffectFiles()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        project.addFile(file);
        file->properties()->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        project.properties()->addConfiguration(u"Debug"_s);
        project.properties()->addConfiguration(u"New"_s);
        project.properties()->removeConfiguration(u"Debug"_s);
        QCOMPARE(file->properties()->configurations(), QStringList(u"Debug"_s));
        QCOMPARE(file->properties()->property(u"k"_s, u"Debug"_s), u"v"_s);
        QVERIFY(file->properties()->property(u"k"_s, u"New"_s).isNull());
    }

    void readsValuesFromChildrenWithAnyTag()
    {
        ProjectProperties properties;
        properties.setModified(true);
        read(properties,
             u"<any>text<!-- c --><other><configuration name='no'/></other>"
             "<configuration name='b'>text<property key='k'>v</property><x key='l'>w<y>z</y></x></configuration>"
             "<configuration name='a'/>"
             "<configuration name='b'><property key='k'>later</property></configuration></any>"_s);
        QCOMPARE(textOf(&properties, QString()), u"[a]\n[b]\nk=later\nl=wz\n"_s);
        QVERIFY(!properties.isModified());
    }

    void readingKeepsOldValuesAndDoesNotMarkTheProject()
    {
        Project project(u"p"_s, u"/p"_s);
        project.properties()->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
        project.setModified(false);
        read(*project.properties(), u"<p><configuration name='Debug'><property key='l'/></configuration></p>"_s);
        QCOMPARE(textOf(project.properties(), QString()), u"[Debug]\nk=v\nl=\n"_s);
        QVERIFY(!project.properties()->property(u"l"_s, u"Debug"_s).isNull());
        QVERIFY(!project.isModified());
    }

    void readsMissingNamesAsEmpty()
    {
        ProjectProperties properties;
        read(properties, u"<p><configuration><property>v</property></configuration></p>"_s);
        QCOMPARE(properties.configurations(), QStringList(QString()));
        QCOMPARE(properties.property(QString(), QString()), u"v"_s);
    }

    void writesConfigurationsAndKeysInAscendingOrder()
    {
        ProjectProperties properties;
        properties.setProperty(u"z"_s, u""_s, u"b"_s);
        properties.setProperty(u"a"_s, u"1 < 2\n"_s, u"b"_s);
        properties.addConfiguration(u"a"_s);
        QCOMPARE(xmlOf(properties), u"<properties>\n"
                                    " <configuration name=\"a\"/>\n"
                                    " <configuration name=\"b\">\n"
                                    "  <property key=\"a\">1 &lt; 2\n</property>\n"
                                    "  <property key=\"z\"></property>\n"
                                    " </configuration>\n"
                                    "</properties>\n"_s);
    }

    void keysAndNamesOfManyFilesShareTheirMemory()
    {
        const QString properties = u"<properties><configuration name='Debug'><property key='opt'>1</property>"
                                   "</configuration></properties>"_s;
        Project project({}, {});
        QVERIFY(project.loadFromXml(u"<p><file path='a'>%1</file><file path='b'>%1</file></p>"_s.arg(properties)));
        ProjectProperties *first = project.rootFiles().at(0)->properties();
        ProjectProperties *second = project.rootFiles().at(1)->properties();
        QCOMPARE(first->configurations().at(0).constData(), second->configurations().at(0).constData());
        QCOMPARE(first->propertyKeys(u"Debug"_s).at(0).constData(), second->propertyKeys(u"Debug"_s).at(0).constData());
    }
};

QTEST_APPLESS_MAIN(TestProjectProperties)
#include "tst_projectproperties.moc"
