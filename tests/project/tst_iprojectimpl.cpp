#include "iprojectfile.h"
#include "iprojectfolder.h"
#include "iprojectfolderimpl.h"
#include "iprojectimpl.h"
#include "iprojectproperties.h"
#include "modeltext.h"
#include <QTemporaryDir>
using namespace Qt::StringLiterals;

class TestIProjectImpl : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_directory;
    QString m_fileName = m_directory.filePath(u"sample.vnp"_s);
    std::unique_ptr<Project> m_project;
    InterfacePtr<IProject> m_iproject;

    std::vector<InterfacePtr<IProjectFile>> rootFiles() const { return takeInterfaces(m_iproject->files()); }
    std::vector<InterfacePtr<IProjectFolder>> topFolders() const { return takeInterfaces(m_iproject->folders()); }
    static void expectParentMessage() { expectAssert(u"res = QS_OK"_s); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_project = std::make_unique<Project>(QString(), QString());
        QVERIFY(m_project->load(
            writeFile(m_fileName, "<project executionenvironmentname='Sim x'>"
                                  "<folder name='Sources'><extension name='c'/><folder name='Inner'>"
                                  "<file path='src/inner.c'/></folder><file path='src/a.c'/></folder><folder name='B'/>"
                                  "<file path='r1.txt'/><file path='doc/r2.txt'/>"
                                  "<properties currentconfiguration='Debug'><configuration name='Release'/>"
                                  "<configuration name='Debug'><property key='k'>v</property></configuration>"
                                  "</properties></project>")));
        m_iproject = queryInterface<IProject>(new IProjectImpl(m_project.get()));
    }
    void cleanup() { m_iproject.reset(); }

    // Reference counts

    void startsWithoutAReference()
    {
        auto *object = new IProjectImpl(m_project.get());
        QCOMPARE(object->addRef(), 0ul); // the old count
        QCOMPARE(object->addRef(), 1ul);
        QCOMPARE(object->release(), 1ul); // the new count
        QCOMPARE(object->release(), 0ul);
    }

    void queryFindsItsOwnInterfaceAndTheCommonOneOnly()
    {
        QUnknownInterface *out = m_iproject.get();
        QCOMPARE(m_iproject->queryInterface(IProjectFile::Iid, &out), QE_NOINTERFACE);
        QVERIFY(!out);
        QCOMPARE(m_iproject->queryInterface(IProject::Iid, &out), QS_OK);
        QCOMPARE(out, m_iproject.get());
        QCOMPARE(out->release(), 1ul);
        const auto files = rootFiles();
        IProjectFile *file = files.at(0).get();
        QCOMPARE(file->queryInterface(QUnknownInterface::Iid, &out), QS_OK);
        QCOMPARE(out, file); // the same pointer with one more reference
        QCOMPARE(file->addRef(), 2ul);
        QCOMPARE(file->release(), 2ul);
        QCOMPARE(file->release(), 1ul);
    }

    void accessorsReturnOneReference()
    {
        const InterfacePtr<IProjectProperties> properties(m_iproject->properties());
        QCOMPARE(properties->addRef(), 1ul);
        QCOMPARE(properties->release(), 1ul);
        for (const auto &folder : topFolders()) {
            QCOMPARE(folder->addRef(), 1ul);
            QCOMPARE(folder->release(), 1ul);
        }
    }

    void twoWrappersOfOneObjectAreDifferentPointers()
    {
        const auto first = rootFiles();
        const auto second = rootFiles();
        QVERIFY(first.at(0).get() != second.at(0).get());
        QCOMPARE(first.at(0)->path(), second.at(0)->path());
        const InterfacePtr<IProjectProperties> properties(m_iproject->properties());
        const InterfacePtr<IProjectProperties> same(m_iproject->properties());
        QVERIFY(properties.get() != same.get());
    }

    // Values

    void returnsTheValuesOfTheProject()
    {
        QCOMPARE(m_iproject->name(), u"sample"_s);
        QCOMPARE(m_iproject->basePath(), m_directory.path());
        QCOMPARE(m_iproject->displayName(), u"Sim - sample"_s);
        QCOMPARE(m_iproject->currentConfiguration(), u"Debug"_s);
        QVERIFY(!m_iproject->isModified());
        QVERIFY(m_iproject->isActive());
    }

    void changesTheProject()
    {
        m_iproject->setActive(false);
        QVERIFY(!m_project->isActive());
        QVERIFY(!m_iproject->isActive());
        m_project->setModified(true);
        QVERIFY(m_iproject->isModified());
        QVERIFY(m_iproject->save());
        QVERIFY(!m_project->isModified());
        QVERIFY(bytesOf(m_fileName).startsWith("<project buildenvironment="));
        QVERIFY(QFile::remove(m_fileName));
        QVERIFY(QDir().mkdir(m_fileName));
        QVERIFY(!m_iproject->save());
        QVERIFY(QDir().rmdir(m_fileName));
    }

    void unknownConfigurationIsCreated()
    {
        const InterfacePtr<IProjectProperties> properties(m_iproject->properties());
        expectAssert(u"m_configurations.find(configuration) != m_configurations.end()"_s);
        QCOMPARE(properties->propertyKeys(u"Missing"_s), QStringList());
        QCOMPARE(properties->configurations(), (QStringList{u"Debug"_s, u"Missing"_s, u"Release"_s}));
        QVERIFY(!properties->isModified());
        properties->setProperty(u"key"_s, u"value"_s, u"Test"_s);
        QCOMPARE(properties->configurations(), (QStringList{u"Debug"_s, u"Missing"_s, u"Release"_s, u"Test"_s}));
        QCOMPARE(properties->property(u"key"_s, u"Test"_s, false), u"value"_s);
        QVERIFY(properties->isModified());
        properties->setModified(false);
        QVERIFY(!properties->isModified());
        QVERIFY(m_iproject->isModified());
    }

    void saveDoesNotOverwriteANewerFile()
    {
        QStringList refused;
        connect(m_project.get(), &Project::overwriteRefused, this, [&](const QString &name) { refused += name; });
        m_project->setModified(true);
        writeFile(m_fileName, "<project/>");
        QFile file(m_fileName);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
        file.close();
        QVERIFY(!m_iproject->save());
        QCOMPARE(bytesOf(m_fileName), QByteArray("<project/>"));
        QCOMPARE(refused, QStringList(m_fileName));
        QVERIFY(m_project->isModified());
        QVERIFY(m_project->save()); // as the user wants
        QVERIFY(m_iproject->save());
        QCOMPARE(refused.size(), 1);
    }

    void listsRootFilesAndFilesOfFolders()
    {
        const auto files = rootFiles();
        QCOMPARE(files.size(), 2u);
        QCOMPARE(files.at(0)->name(), u"r1.txt"_s);
        QCOMPARE(files.at(1)->name(), u"r2.txt"_s);
        QCOMPARE(files.at(1)->path(), u"doc/r2.txt"_s);
        QVERIFY(!files.at(1)->folder());
        const auto folders = topFolders();
        QCOMPARE(folders.size(), 2u);
        QCOMPARE(folders.at(0)->name(), u"Sources"_s);
        QCOMPARE(folders.at(0)->extensions(), QStringList(u"c"_s));
        QVERIFY(!folders.at(0)->parent());
        QCOMPARE(folders.at(1)->name(), u"B"_s);
        const auto sources = takeInterfaces(folders.at(0)->files());
        QCOMPARE(sources.size(), 1u);
        QCOMPARE(sources.at(0)->path(), u"src/a.c"_s);
        const auto inner = takeInterfaces(folders.at(0)->folders());
        QCOMPARE(inner.size(), 1u);
        QCOMPARE(inner.at(0)->name(), u"Inner"_s);
        QCOMPARE(takeInterfaces(inner.at(0)->files()).at(0)->name(), u"inner.c"_s);
    }

    void folderOfAFileAndParentOfAFolderPrintAMessage()
    {
        const auto folders = topFolders();
        const auto inner = takeInterfaces(folders.at(0)->folders());
        expectParentMessage();
        const InterfacePtr<IProjectFolder> parent(inner.at(0)->parent());
        QCOMPARE(parent->name(), u"Sources"_s);
        const auto files = takeInterfaces(inner.at(0)->files());
        expectParentMessage();
        const InterfacePtr<IProjectFolder> folder(files.at(0)->folder());
        QCOMPARE(folder->name(), u"Inner"_s);
        QCOMPARE(folder->addRef(), 1ul);
        QCOMPARE(folder->release(), 1ul);
    }

    void addedFilesAreClassified()
    {
        SignalLog log(m_project.get());
        m_iproject->addFiles({m_directory.filePath(u"src/new.c"_s), m_directory.filePath(u"new.txt"_s)});
        QCOMPARE(log.take(), (QStringList{u"fileAdded Sources src/new.c"_s, u"projectModified true"_s,
                                          u"fileAdded root new.txt"_s}));
    }

    // Properties

    void returnsTheStoreOfTheProject()
    {
        const InterfacePtr<IProjectProperties> properties(m_iproject->properties());
        QCOMPARE(properties->configurations(), (QStringList{u"Debug"_s, u"Release"_s}));
        QCOMPARE(properties->propertyKeys(u"Debug"_s), QStringList(u"k"_s));
        QCOMPARE(properties->property(u"k"_s, u"Debug"_s, false), u"v"_s);
        QCOMPARE(properties->property(u"k"_s, u"Debug"_s, true), u"v"_s);
        QVERIFY(properties->property(u"k"_s, u"Release"_s, false).isNull());
    }

    void storeOfAFileFallsBackToTheProject()
    {
        const InterfacePtr<IProjectProperties> properties(rootFiles().at(0)->properties());
        QCOMPARE(properties->configurations(), QStringList());
        QCOMPARE(properties->property(u"k"_s, u"Debug"_s, false), u"v"_s);
    }

    void valueOfAFileMarksProjectAndStore()
    {
        const InterfacePtr<IProjectProperties> properties(rootFiles().at(0)->properties());
        QVERIFY(!properties->isModified());
        properties->setProperty(u"k"_s, u"file"_s, u"Debug"_s);
        QCOMPARE(m_project->rootFiles().at(0)->properties()->property(u"k"_s, u"Debug"_s), u"file"_s);
        QVERIFY(m_project->isModified());
        QVERIFY(properties->isModified());
        QVERIFY(m_project->save());
        QVERIFY(properties->isModified());
        properties->setModified(false);
        QVERIFY(!properties->isModified());
        properties->setModified(true);
        QVERIFY(properties->isModified());
        QVERIFY(!m_project->isModified()); // the mark of the project itself does not change
    }

    // Wrappers of deleted objects

    void returnsEmptyValuesAfterTheProjectWasDeleted()
    {
        const InterfacePtr<IProjectProperties> properties(m_iproject->properties());
        const auto files = rootFiles();
        const auto folders = topFolders();
        const InterfacePtr<IProjectProperties> fileProperties(files.at(0)->properties());
        m_project.reset();
        QCOMPARE(m_iproject->name() + m_iproject->basePath() + m_iproject->currentConfiguration()
                     + m_iproject->displayName(),
                 QString());
        QVERIFY(!m_iproject->isModified() && !m_iproject->isActive() && !m_iproject->save());
        QVERIFY(m_iproject->files().isEmpty() && m_iproject->folders().isEmpty());
        m_iproject->addFiles({u"/a.c"_s});
        m_iproject->setActive(true);
        const InterfacePtr<IProjectProperties> none(m_iproject->properties());
        QVERIFY(none->configurations().isEmpty());
        QCOMPARE(files.at(0)->name() + files.at(0)->path(), QString());
        QVERIFY(!files.at(0)->folder());
        const InterfacePtr<IProjectProperties> noneEither(files.at(0)->properties());
        QVERIFY(noneEither->property(u"k"_s, u"Debug"_s, false).isNull());
        QCOMPARE(folders.at(0)->name(), QString());
        QVERIFY(folders.at(0)->extensions().isEmpty() && folders.at(0)->files().isEmpty());
        QVERIFY(folders.at(0)->folders().isEmpty() && !folders.at(0)->parent());
        for (const auto *store : {&properties, &fileProperties}) {
            (*store)->setProperty(u"k"_s, u"v"_s, u"Debug"_s);
            (*store)->setModified(true);
            QVERIFY((*store)->property(u"k"_s, u"Debug"_s, false).isNull());
            QVERIFY((*store)->configurations().isEmpty() && (*store)->propertyKeys(u"Debug"_s).isEmpty());
            QVERIFY(!(*store)->isModified());
        }
    }

    void returnsEmptyValuesAfterTheContentsWereReplaced()
    {
        const auto files = rootFiles();
        QVERIFY(m_project->loadFromXml(u"<p><file path='new.c'/></p>"_s));
        QCOMPARE(files.at(0)->path(), QString());
        QCOMPARE(rootFiles().at(0)->path(), u"new.c"_s);
    }

    void objectIsNullAfterDeletion()
    {
        auto *wrapper = static_cast<IProjectImpl *>(m_iproject.get());
        QCOMPARE(wrapper->object(), m_project.get());
        const auto folders = topFolders();
        const auto *folder = static_cast<IProjectFolderImpl *>(folders.at(0).get());
        QCOMPARE(folder->object(), m_project->folders().at(0));
        m_project.reset();
        QVERIFY(!wrapper->object());
        QVERIFY(!folder->object());
    }
};

QTEST_APPLESS_MAIN(TestIProjectImpl)
#include "tst_iprojectimpl.moc"
