#include "modelpointer.h"
#include "projectfile.h"
#include "projectfolder.h"
#include <QTest>
using namespace Qt::StringLiterals;

class TestModelPointer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void pointerIsValidUntilItsObjectIsDeleted()
    {
        auto file = std::make_unique<ProjectFile>(u"a.c"_s, u"a.c"_s);
        const ModelPointer first(file.get());
        const ModelPointer second(file.get());
        QVERIFY(first);
        QCOMPARE(first.get(), file.get());
        QCOMPARE(second->path(), u"a.c"_s);
        file.reset();
        QVERIFY(!first);
        QVERIFY(!first.get());
        QVERIFY(!second.get());
    }

    void deletionDoesNotAffectPointersToOtherObjects()
    {
        ProjectFile staying;
        const ModelPointer pointer(&staying);
        delete new ProjectFile;
        QCOMPARE(pointer.get(), &staying);
    }

    void pointerToEachKindOfObjectBecomesNull()
    {
        auto folder = std::make_unique<ProjectFolder>(u"Sources"_s);
        auto *file = new ProjectFile;
        folder->addFile(file);
        const ModelPointer folderPointer(folder.get());
        const ModelPointer filePointer(file);
        const ModelPointer propertiesPointer(file->properties());
        folder.reset();
        QVERIFY(!folderPointer);
        QVERIFY(!filePointer);
        QVERIFY(!propertiesPointer);
    }

    void deletedPointerDoesNotAffectOthers()
    {
        ProjectFile file;
        auto pointer = std::make_unique<ModelPointer<ProjectFile>>(&file);
        const ModelPointer other(&file);
        pointer.reset();
        QCOMPARE(other.get(), &file);
    }

    void assignmentKeepsThePointersOfItsTarget()
    {
        ProjectProperties target;
        const ModelPointer pointer(&target);
        {
            ProjectProperties source;
            const ModelPointer other(&source);
            target = source;
            ProjectProperties copy(source);
            QCOMPARE(ModelPointer(&copy).get(), &copy);
        }
        QCOMPARE(pointer.get(), &target);
    }

    void pointerOutlivesItsObject()
    {
        auto file = std::make_unique<ProjectFile>();
        auto pointer = std::make_unique<ModelPointer<ProjectFile>>(file.get());
        file.reset();
        const ModelPointer copy = *pointer;
        pointer.reset();
        QVERIFY(!copy);
    }

    void nullStaysNull()
    {
        const ModelPointer<ProjectFile> pointer(nullptr);
        QVERIFY(!pointer);
        QVERIFY(!pointer.get());
    }
};

QTEST_APPLESS_MAIN(TestModelPointer)
#include "tst_modelpointer.moc"
