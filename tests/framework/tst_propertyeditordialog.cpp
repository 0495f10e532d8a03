#include "dialoganswers.h"
#include "dialogprobe.h"
#include "editproperties.h"
#include "filelistdialog.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "ipropertydefinitions.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projecttreeitem.h"
#include "projectworkspace.h"
#include "propertyeditor.h"
#include "propertyeditordialog.h"
#include "propertyitem.h"
#include "propertylist.h"
#include "stubfixture.h"
#include <QTextBrowser>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
const QString buildText = uR"(<p><group name="Build"><propertygroup name="Code">
    <property key="opt" name="Optimisation" type="list" defaultvalue="0">
      <option>None</option><option>Speed</option></property>
    <property key="warn" name="Warnings" type="boolean" defaultvalue="true"/>
    <property key="define" name="Definitions" type="text" defaultvalue="" pattern="[A-Z;]*" invalidtext="Capitals."/>
    <property key="incs" name="Includes" type="filelist" defaultvalue=""/>
    <property key="cflags" name="Flags for C" type="text" defaultvalue="">
      <appliesto selector="c"/><appliesto selector="h"/></property>
  </propertygroup></group></p>)"_s;
const QString debugText = uR"(<p><group name="Debugger"><appliesto selector="project"/><propertygroup name="Target">
    <property key="board" name="Board" type="text" defaultvalue="mps2"/></propertygroup></group></p>)"_s;
} // namespace

/// The property dialog for projects and files of a workspace whose environments are a scripted plug-in's.
class PropertyEditorDialogTest : public QObject, protected StubFixture
{
    Q_OBJECT

private:
    Project *m_project = nullptr;
    ProjectFile *m_file = nullptr;
    std::unique_ptr<PropertyEditorDialog> m_dialog;

    void open(ProjectFile *file = nullptr)
    {
        m_dialog.reset();
        m_dialog =
            std::make_unique<PropertyEditorDialog>(m_project, file, m_project->buildInterface(),
                                                   m_project->executionInterface(), nullptr, u"propertyEditorDialog"_s);
        showActive(*m_dialog);
    }

    PropertyEditor *editor() { return m_dialog->findChild<PropertyEditor *>(); }
    PropertyList *list() { return m_dialog->findChild<PropertyList *>(); }
    QComboBox *configurations() { return combo(*m_dialog, "ConfigurationsCombo"); }

    PropertyItem *row(const QString &name)
    {
        return static_cast<PropertyItem *>(list()->findItems(name, Qt::MatchExactly).value(0));
    }

    QString rows()
    {
        QStringList texts;
        for (int i = 0; i < list()->topLevelItemCount(); ++i)
            texts += list()->topLevelItem(i)->text(0) + u'=' + list()->topLevelItem(i)->text(1);
        return texts.join(u", "_s);
    }

    void startTyping(const QString &name, const QString &text)
    {
        list()->setFocus();
        list()->setCurrentItem(row(name));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
    }

    void choose(int index)
    {
        configurations()->setCurrentIndex(index);
        Q_EMIT configurations()->activated(index);
    }

    void ok() { QTest::mouseClick(button(*m_dialog, "OkButton"), Qt::LeftButton); }

    QString stored(const QString &key, const QString &configuration, ProjectFile *file = nullptr)
    {
        return (file ? file->properties() : m_project->properties())->property(key, configuration);
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        buildScript(u"b"_s, {IPropertyDefinitions::Iid}).propertyDefinitions = buildText;
        script(u"x"_s, {IExecutionEnvironment::Iid, IPropertyDefinitions::Iid}).propertyDefinitions = debugText;
        m_project = new Project(u"fw"_s, m_directory->path());
        ProjectProperties *properties = m_project->properties();
        properties->setProperty(u"opt"_s, u"1"_s, u"Release"_s);
        properties->setProperty(u"unknown"_s, u"kept"_s, u"Release"_s);
        properties->setProperty(u"define"_s, u"A"_s, u"Release"_s);
        properties->setProperty(u"define"_s, u"A"_s, u"Debug"_s);
        m_project->setCurrentConfiguration(u"Release"_s);
        m_file = new ProjectFile(u"a.c"_s, u"src/a.c"_s);
        m_project->addFile(m_file);
        const InterfacePtr<IPluginObject> build(create(u"{b}"_s));
        const InterfacePtr<IPluginObject> execution(create(u"{x}"_s));
        m_project->setBuildInterface(queryInterface<IBuildEnvironment>(build.get()).get());
        m_project->setExecutionInterface(queryInterface<IExecutionEnvironment>(execution.get()).get());
        m_project->setModified(false);
        m_workspace->addProject(m_project);
    }

    void cleanup()
    {
        m_dialog.reset();
        tearDown();
    }

    void projectDialogLooksAsItShould()
    {
        open();
        QCOMPARE(m_dialog->windowTitle(), u"Project Properties: "_s + m_project->displayName());
        QCOMPARE(m_dialog->objectName(), u"propertyEditorDialog"_s);
        QCOMPARE(entries(configurations()),
                 QStringList({u"Active (Release)"_s, u"Debug"_s, u"Release"_s, u"All configurations"_s}));
        QCOMPARE(configurations()->currentIndex(), 0);
        QVERIFY(textsOf<QLabel>(*m_dialog).contains(u"Configuration:"_s));
        QCOMPARE(button(*m_dialog, "OkButton")->text(), u"OK"_s);
        QCOMPARE(button(*m_dialog, "CancelButton")->text(), u"Cancel"_s);
        QVERIFY(m_dialog->findChild<QFrame *>(u"EditorFrame"_s));
        QVERIFY(showsAllTexts(*m_dialog));
        auto *tree = m_dialog->findChild<ListView *>(u"GroupTree"_s);
        QCOMPARE(tree->topLevelItem(0)->text(0), u"Build"_s); // the build environment first
        QCOMPARE(tree->topLevelItem(1)->text(0), u"Debugger"_s);
    }

    void fileDialogHasTheFilesPagesAndPath()
    {
        open(m_file);
        QCOMPARE(m_dialog->windowTitle(),
                 u"File Properties - a.c  [%1]"_s.arg(QDir(m_directory->path()).filePath(u"src/a.c"_s)));
        QCOMPARE(editor()->keys().join(u' '), u"opt warn define incs cflags"_s);
    }

    void selectorIsTheCompleteExtensionAsWritten_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("hasFlags");
        QTest::newRow("c") << u"a.c"_s << true;
        QTest::newRow("h") << u"a.h"_s << true;
        QTest::newRow("upper case") << u"a.C"_s << false;
        QTest::newRow("two suffixes") << u"a.b.c"_s << false;
        QTest::newRow("no suffix") << u"c"_s << false;
    }

    void selectorIsTheCompleteExtensionAsWritten()
    {
        QFETCH(QString, name);
        auto *file = new ProjectFile(name, name);
        m_project->addFile(file);
        open(file);
        QTEST(editor()->keys().contains(u"cflags"_s), "hasFlags");
    }

    void propertyForFilesIsNotShownForTheProject()
    {
        open();
        QVERIFY(!editor()->keys().contains(u"cflags"_s));
        QVERIFY(editor()->keys().contains(u"board"_s));
    }

    void valuesOfTheActiveConfigurationAreShown()
    {
        open();
        QCOMPARE(rows(), u"Optimisation=Speed, Warnings=Yes, Definitions=A, Includes="_s);
    }

    void unchangedDialogChangesNothing()
    {
        open();
        for (int i = 0; i < 4; ++i)
            choose(i);
        list()->setFocus();
        for (int i = 0; i < 5; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        const QString before = m_project->toXml();
        ok();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(m_project->toXml(), before);
        QVERIFY(!m_project->isModified());
    }

    void okWritesOnlyWhatWasChanged()
    {
        open();
        startTyping(u"Definitions"_s, u"B"_s);
        ok(); // ends the edit
        QCOMPARE(stored(u"define"_s, u"Release"_s), u"B"_s);
        QCOMPARE(stored(u"define"_s, u"Debug"_s), u"A"_s);
        QVERIFY(stored(u"warn"_s, u"Release"_s).isNull());
        QCOMPARE(stored(u"unknown"_s, u"Release"_s), u"kept"_s);
        QVERIFY(m_project->isModified());
    }

    void booleanIsStoredAsADigit()
    {
        open();
        list()->setFocus();
        list()->setCurrentItem(row(u"Warnings"_s));
        QTest::keyClicks(QApplication::focusWidget(), u"N"_s);
        ok();
        QCOMPARE(stored(u"warn"_s, u"Release"_s), u"0"_s);
    }

    void optionWithoutKeyStoresItsIndex()
    {
        open();
        list()->setFocus();
        list()->setCurrentItem(row(u"Optimisation"_s));
        QTest::keyClicks(QApplication::focusWidget(), u"N"_s);
        ok();
        QCOMPARE(stored(u"opt"_s, u"Release"_s), u"0"_s);
    }

    void valueTypedBackIsStillWritten()
    {
        open();
        startTyping(u"Includes"_s, u"x"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        startTyping(u"Includes"_s, QString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        ok();
        QVERIFY(!stored(u"incs"_s, u"Release"_s).isNull());
        QCOMPARE(stored(u"incs"_s, u"Release"_s), QString());
    }

    void cancelWritesNothing()
    {
        open();
        startTyping(u"Definitions"_s, u"B"_s);
        QTest::mouseClick(button(*m_dialog, "CancelButton"), Qt::LeftButton);
        QCOMPARE(stored(u"define"_s, u"Release"_s), u"A"_s);
        QVERIFY(!m_project->isModified());
    }

    void allConfigurationsShowEqualValuesOnly()
    {
        open();
        choose(3);
        QCOMPARE(rows(), u"Optimisation=, Warnings=Yes, Definitions=A, Includes="_s);
        startTyping(u"Definitions"_s, u"B"_s);
        ok();
        QCOMPARE(stored(u"define"_s, u"Release"_s), u"B"_s);
        QCOMPARE(stored(u"define"_s, u"Debug"_s), u"B"_s);
        QCOMPARE(stored(u"opt"_s, u"Release"_s), u"1"_s); // differing values stay
        QVERIFY(stored(u"opt"_s, u"Debug"_s).isNull());
    }

    void differingValuesGetOneIfTheUserChoosesIt()
    {
        open();
        choose(3);
        list()->setFocus();
        list()->setCurrentItem(row(u"Optimisation"_s));
        QTest::keyClicks(QApplication::focusWidget(), u"N"_s); // the first option, too
        ok();
        QCOMPARE(stored(u"opt"_s, u"Release"_s), u"0"_s);
        QCOMPARE(stored(u"opt"_s, u"Debug"_s), u"0"_s);
    }

    void changesBeforeAnotherConfigurationAreAskedAbout_data()
    {
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::addColumn<QString>("result");
        QTest::newRow("yes") << QMessageBox::Yes << u"B"_s;
        QTest::newRow("no") << QMessageBox::No << u"A"_s;
    }

    void changesBeforeAnotherConfigurationAreAskedAbout()
    {
        QFETCH(QMessageBox::StandardButton, answer);
        QFETCH(QString, result);
        DialogAnswers answers;
        answers.press(answer);
        open();
        startTyping(u"Definitions"_s, u"B"_s);
        choose(1);
        QCOMPARE(answers.shown, QStringList{u"Do you want to save the changes you have made?"_s});
        QCOMPARE(answers.lastBox(), u"information Varnel [Yes No]"_s);
        QCOMPARE(stored(u"define"_s, u"Release"_s), result);
        QCOMPARE(rows(), u"Optimisation=None, Warnings=Yes, Definitions=A, Includes="_s); // those of Debug
        choose(0);
        QCOMPARE(answers.shown.size(), 1); // nothing is changed any more
        QCOMPARE(row(u"Definitions"_s)->text(1), result);
    }

    void filePageShowsDefaultsForWhatOnlyTheProjectSets()
    {
        open(m_file);
        QCOMPARE(rows(), u"Optimisation=None, Warnings=Yes, Definitions=, Includes=, Flags for C="_s);
        m_file->properties()->setProperty(u"warn"_s, u"0"_s, u"Release"_s);
        open(m_file);
        QCOMPARE(rows(), u"Optimisation=None, Warnings=No, Definitions=, Includes=, Flags for C="_s);
    }

    void openingAFileDialogLeavesItsStoreAlone()
    {
        open(m_file);
        QCOMPARE(m_file->properties()->configurations(), QStringList());
        ok();
        QCOMPARE(m_file->properties()->configurations(), QStringList());
    }

    void fileValueIsWrittenToTheFile()
    {
        open(m_file);
        startTyping(u"Flags for C"_s, u"-funsigned-char"_s);
        ok();
        QCOMPARE(stored(u"cflags"_s, u"Release"_s, m_file), u"-funsigned-char"_s);
        QVERIFY(stored(u"cflags"_s, u"Release"_s).isNull());
        QCOMPARE(m_file->properties()->configurations(), QStringList{u"Release"_s});
    }

    void allConfigurationsOfAFileWithoutStoreWriteNothing()
    {
        open(m_file);
        choose(3);
        ok();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted)); // nothing is lost
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        open(m_file);
        choose(3);
        startTyping(u"Flags for C"_s, u"-x"_s);
        ok();
        QCOMPARE(
            answers.shown,
            QStringList{u"The changes cannot be saved in \"All configurations\", because this file has no values of "
                        "its own yet. Choose one configuration."_s});
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(row(u"Flags for C"_s)->text(1), u"-x"_s);
        QCOMPARE(m_file->properties()->configurations(), QStringList());
        QVERIFY(!m_project->isModified());
        answers.press(QMessageBox::Yes); // save before another configuration is chosen
        answers.press(QMessageBox::Ok);
        choose(0);
        QVERIFY(answers.allGiven());
        QCOMPARE(configurations()->currentIndex(), 3);
        QCOMPARE(row(u"Flags for C"_s)->text(1), u"-x"_s);
    }

    void changesOfAProjectWithoutConfigurationsAreNotLostSilently()
    {
        for (const QString &name : m_project->properties()->configurations())
            m_project->properties()->removeConfiguration(name);
        m_project->setCurrentConfiguration(QString());
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        open();
        startTyping(u"Definitions"_s, u"B"_s);
        ok();
        QCOMPARE(answers.shown,
                 QStringList{u"The changes cannot be saved, because the project has no configuration."_s});
        QVERIFY(m_dialog->isVisible());
    }

    void resetRemovesTheValueFromTheStore()
    {
        open();
        editor()->resetToDefault(u"opt"_s);
        QCOMPARE(row(u"Optimisation"_s)->text(1), u"None"_s);
        ok();
        QVERIFY(!m_project->properties()->propertyKeys(u"Release"_s).contains(u"opt"_s));
        QVERIFY(m_project->isModified());
    }

    void resetInAllConfigurationsRemovesTheValueFromEach()
    {
        open();
        choose(3);
        editor()->resetToDefault(u"define"_s);
        editor()->resetToDefault(u"opt"_s);
        ok();
        QCOMPARE(m_project->properties()->propertyKeys(u"Release"_s), QStringList{u"unknown"_s});
        QCOMPARE(m_project->properties()->propertyKeys(u"Debug"_s), QStringList());
        QCOMPARE(m_project->properties()->configurations(), QStringList({u"Debug"_s, u"Release"_s}));
    }

    void resetOfAFileLetsTheValueOfTheProjectThrough()
    {
        m_file->properties()->setProperty(u"opt"_s, u"0"_s, u"Release"_s); // the default, but not the project's value
        open(m_file);
        editor()->resetToDefault(u"opt"_s);
        ok();
        QCOMPARE(stored(u"opt"_s, u"Release"_s, m_file), u"1"_s);
        QCOMPARE(m_file->properties()->configurations(), QStringList());
    }

    void propertyWithoutKeyIsStoredAndLoaded()
    {
        buildScript(u"b"_s, {IPropertyDefinitions::Iid}).propertyDefinitions =
            u"<p><group name=\"G\"><propertygroup name=\"P\"><property name=\"define\" type=\"text\" "
            "pattern=\"[a-z]*\"/></propertygroup></group></p>"_s;
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        open();
        startTyping(u"define"_s, u"X"_s);
        ok();
        QCOMPARE(answers.shown, QStringList{u"define: This value is not possible here."_s});
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        startTyping(u"define"_s, u"x"_s);
        ok();
        QCOMPARE(stored(QString(), u"Release"_s), u"x"_s);
        QCOMPARE(stored(u"define"_s, u"Release"_s), u"A"_s);
        open();
        QCOMPARE(rows(), u"define=x"_s);
    }

    void sameRowOfTheBoxChosenAgainAsksAndLoadsAgain()
    {
        DialogAnswers answers;
        answers.press(QMessageBox::No);
        open();
        startTyping(u"Definitions"_s, u"B"_s);
        choose(0);
        QVERIFY(answers.allGiven());
        QCOMPARE(row(u"Definitions"_s)->text(1), u"A"_s);
        QVERIFY(!m_project->isModified());
    }

    void unknownCurrentConfigurationIsNotCreatedByLooking()
    {
        m_project->setCurrentConfiguration(u"Gone"_s);
        open();
        QCOMPARE(rows(), u"Optimisation=None, Warnings=Yes, Definitions=, Includes="_s);
        ok();
        QCOMPARE(m_project->properties()->configurations(), QStringList({u"Debug"_s, u"Release"_s}));
    }

    void forbiddenValueKeepsTheDialogOpen()
    {
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        open();
        startTyping(u"Definitions"_s, u"small"_s);
        ok();
        QCOMPARE(answers.shown, QStringList{u"Definitions: Capitals."_s});
        QVERIFY(m_dialog->isVisible());
        QVERIFY(row(u"Definitions"_s)->isEditing());
        QCOMPARE(stored(u"define"_s, u"Release"_s), u"A"_s);
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        startTyping(u"Definitions"_s, u"LARGE"_s);
        ok();
        QCOMPARE(stored(u"define"_s, u"Release"_s), u"LARGE"_s);
    }

    void forbiddenValueKeepsTheConfiguration()
    {
        DialogAnswers answers;
        answers.press(QMessageBox::Yes);
        answers.press(QMessageBox::Ok);
        open();
        startTyping(u"Definitions"_s, u"small"_s);
        choose(1);
        QCOMPARE(answers.shown.last(), u"Definitions: Capitals."_s);
        QCOMPARE(configurations()->currentIndex(), 0);
        QCOMPARE(row(u"Definitions"_s)->text(1), u"small"_s);
    }

    void keysAloneAreEnough()
    {
        open();
        configurations()->setFocus();
        QStringList order;
        for (int i = 0; i < 7; ++i) {
            order += QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order, QStringList({u"ConfigurationsCombo"_s, u"FilterEdit"_s, u"GroupTree"_s, u"propertyListEditor"_s,
                                     u"HelpView"_s, u"OkButton"_s, u"CancelButton"_s}));
        QVERIFY(configurations()->hasFocus());
        startTyping(u"Definitions"_s, u"K"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // ends the edit only
        QVERIFY(m_dialog->isVisible());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(stored(u"define"_s, u"Release"_s), u"K"_s);
    }

    void escapeClosesTheDialogOnceNothingIsEdited()
    {
        open();
        startTyping(u"Definitions"_s, u"K"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(m_dialog->isVisible());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(stored(u"define"_s, u"Release"_s), u"A"_s);
    }

    void environmentsMayBeMissingOrHaveNoDefinitions()
    {
        m_project->setBuildInterface(nullptr);
        m_project->setExecutionInterface(nullptr);
        open();
        QCOMPARE(list()->topLevelItemCount(), 0);
        ok();
        buildScript(u"plain"_s);
        const InterfacePtr<IPluginObject> build(create(u"{plain}"_s));
        m_project->setBuildInterface(queryInterface<IBuildEnvironment>(build.get()).get());
        open();
        QCOMPARE(list()->topLevelItemCount(), 0);
    }

    void hintIsShownIfThereIsNothingToEdit()
    {
        m_project->setBuildInterface(nullptr);
        m_project->setExecutionInterface(nullptr);
        open();
        QCOMPARE(m_dialog->findChild<QTextBrowser *>()->toPlainText(), u"There are no properties to edit here."_s);
    }

    // The commands

    void commandsShowTheDialogUntilItIsClosed()
    {
        DialogAnswers answers;
        QStringList captions;
        const auto accept = [&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"propertyEditorDialog"_s);
            captions += dialog->windowTitle().section(u' ', 0, 1);
            dialog->accept();
        };
        answers.meet(accept);
        editProjectProperties(m_project, nullptr);
        answers.meet(accept);
        editFileProperties(m_file, nullptr);
        QCOMPARE(captions, QStringList({u"Project Properties:"_s, u"File Properties"_s}));
    }

    void commandsWithoutAModelOnlyWarn()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"project\" in "_s));
        editProjectProperties(nullptr, nullptr);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"file\" in "_s));
        editFileProperties(nullptr, nullptr);
        ProjectFile stray(u"a.c"_s, u"a.c"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"project\" in "_s));
        editFileProperties(&stray, nullptr);
    }

    void dialogClosesWithTheWorkspace()
    {
        DialogAnswers answers;
        answers.meet([this](QDialog *) { dropWorkspace(); });
        editProjectProperties(m_project, nullptr);
        QVERIFY(answers.allGiven());
        QCOMPARE(answers.shown, QStringList());
    }

    void fileDialogClosesWithTheWorkspace()
    {
        DialogAnswers answers;
        answers.meet([this](QDialog *dialog) {
            dialog->findChild<PropertyList *>()->setCurrentItem(
                dialog->findChild<PropertyList *>()->topLevelItem(2)); // an edit is running
            dropWorkspace();
        });
        editFileProperties(m_file, nullptr);
        QVERIFY(answers.allGiven());
    }

    void dialogClosesWithItsFile()
    {
        DialogAnswers answers;
        answers.meet([this](QDialog *) {
            m_project->removeFile(m_file);
            delete m_file;
        });
        editFileProperties(m_file, nullptr);
        QVERIFY(answers.allGiven());
    }

    void questionClosesWithTheWorkspace()
    {
        DialogAnswers answers;
        answers.meet([this](QDialog *dialog) {
            auto *rows = dialog->findChild<PropertyList *>();
            static_cast<PropertyItem *>(rows->topLevelItem(2))->setValue(u"B"_s, true);
            auto *box = combo(*dialog, "ConfigurationsCombo");
            QTimer::singleShot(0, box, [box] { Q_EMIT box->activated(1); }); // it asks something itself
        });
        answers.meet([this](QDialog *question) {
            QVERIFY(qobject_cast<QMessageBox *>(question));
            dropWorkspace();
        });
        editProjectProperties(m_project, nullptr);
        QVERIFY(answers.allGiven());
    }

    void listOfFilesClosesWithTheWorkspace()
    {
        DialogAnswers answers;
        answers.meet([](QDialog *dialog) {
            auto *rows = dialog->findChild<PropertyList *>();
            rows->setCurrentItem(rows->topLevelItem(3));
            auto *browse = rows->viewport()->findChild<QToolButton *>();
            QTimer::singleShot(0, browse, [browse] { browse->click(); }); // it opens another dialog
        });
        answers.meet([this](QDialog *files) {
            QVERIFY(qobject_cast<FileListDialog *>(files));
            dropWorkspace();
        });
        editProjectProperties(m_project, nullptr);
        QVERIFY(answers.allGiven());
    }
};

QTEST_MAIN(PropertyEditorDialogTest)
#include "tst_propertyeditordialog.moc"
