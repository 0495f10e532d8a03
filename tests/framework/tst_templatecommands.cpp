#include "documenttemplate.h"
#include "navigator.h"
#include "newfiledialog.h"
#include "newprojectdialog.h"
#include "ordinaryuser.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "templatesave.h"
#include "windowfixture.h"
#include <csignal>
#include <QAction>
#include <QListWidget>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {
const QByteArray ProjectText = "<project><folder name='Sources'><extension name='c'/><file path='main.c'/></folder>"
                               "</project>";
const auto ReadDetails = u"\n\nSee Python Command Window for details"_s;

/// A window whose installation has templates.
struct TemplateFixture : WindowFixture
{
    TemplateFixture()
    {
        installation.writeWindowFiles();
        installation.write(u"images/projecttemplate.svg"_s, "<svg xmlns='http://www.w3.org/2000/svg'/>");
        addTemplate(u"plain"_s, {}, {{u"project.vnp"_s, ProjectText}, {u"main.c"_s, "int main;"}});
        settings()->setValue(u"Paths/NewProjects"_s, path(u"home"_s));
        QDir().mkpath(path(u"home"_s));
    }

    void addTemplate(const QString &name, const QByteArray &xml, const QMap<QString, QByteArray> &files) const
    {
        const QString directory = u"templates/group/"_s + name + u'/';
        if (!xml.isEmpty())
            installation.write(directory + u"template.xml"_s, xml);
        for (auto file = files.begin(); file != files.end(); ++file)
            installation.write(directory + file.key(), file.value());
    }
    void addScript(const QByteArray &script) const
    {
        addTemplate(u"script"_s, "<t type='script'><script module='builder'/></t>", {{u"builder.py"_s, script}});
    }

    /// Fills in the next new-project dialog; @p last runs before it is accepted.
    void answer(const QString &templateName, const QString &name,
                const std::function<void(NewProjectDialog *)> &last = {}) const
    {
        answers->meet([=](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>(u"TemplateIconView"_s);
            auto *tree = dialog->findChild<QTreeWidget *>(u"TemplateListView"_s);
            tree->setCurrentItem(tree->findItems(u"group"_s, Qt::MatchExactly).value(0));
            list->setCurrentItem(list->findItems(templateName, Qt::MatchExactly).value(0));
            dialog->findChild<QLineEdit *>(u"NameLineEdit"_s)->setText(name);
            if (last)
                last(static_cast<NewProjectDialog *>(dialog));
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection); // it may show a message itself
        });
    }
    static void add(NewProjectDialog *dialog)
    {
        dialog->findChild<QRadioButton *>(u"AddWorkspaceRadio"_s)->setChecked(true);
    }

    /// Creates a project and returns the messages.
    QStringList create(const QString &templateName, const QString &name = u"fw"_s,
                       const std::function<void(NewProjectDialog *)> &last = {}) const
    {
        answers->shown.clear();
        answer(templateName, name, last);
        window->projectNew();
        return answers->shown;
    }
    QString openOther() const
    {
        const QString other = writeWorkspace(u"other.vnw"_s, {});
        return window->openWorkspace(other, false) ? other : QString();
    }
    QString openWorkspaceFile() const
    {
        return window->projectWorkspace() ? window->projectWorkspace()->fileName() : u"none"_s;
    }
    /// Saves the current project as a template. Returns the messages after the question for the name.
    QStringList saveAsTemplate(const QString &name) const
    {
        answers->shown.clear();
        answers->prepend([name](QDialog *dialog) {
            static_cast<QInputDialog *>(dialog)->setTextValue(name);
            dialog->accept();
        });
        Q_EMIT window->findChild<Navigator *>()->saveAsTemplate(window->activity().currentProject());
        return answers->shown;
    }
    /// The names of all files of a template of the user's own.
    QString savedFiles(const QString &name) const
    {
        const QDir directory(installation.path(u"mytemplates/"_s + name));
        return directory.entryList(QDir::Files | QDir::Hidden).join(u' ');
    }
    QString templatePath(const QString &name) const { return installation.path(u"templates/group/"_s + name); }

    // Files

    void answerFile(const QString &kind, const QString &name,
                    const std::function<void(NewFileDialog *)> &last = {}) const
    {
        answers->meet([=](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>(u"fileIconView"_s);
            list->setCurrentItem(list->findItems(kind, Qt::MatchExactly).value(0));
            dialog->findChild<QLineEdit *>(u"nameEdit"_s)->setText(name);
            if (last)
                last(static_cast<NewFileDialog *>(dialog));
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection); // it may show a message itself
        });
    }
    QStringList createFile(const QString &kind, const QString &name,
                           const std::function<void(NewFileDialog *)> &last = {}) const
    {
        answers->shown.clear();
        answerFile(kind, name, last);
        window->fileNew();
        return answers->shown;
    }
    QStringList projectFiles() const
    {
        QStringList paths;
        for (const ProjectFile *file : window->activity().currentProject()->files({}, nullptr))
            paths.append((file->folder() ? file->folder()->name() + u'/' : QString()) + file->path());
        return paths;
    }
};

/// Makes a file without blocks on the disk, which takes a while to copy.
void makeLarge(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(400'000'000));
}

QString overwrite(const QString &file)
{
    return u"The file '%1' already exists in the project folder.\n\n Do you want to overwrite it?"_s.arg(file);
}
} // namespace

/// The commands that create projects and files from templates.
class TemplateCommandsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Projects from copied templates

    void projectIsCreatedInANewWorkspaceAndOpened()
    {
        const TemplateFixture f;
        QVERIFY(f.create(u"plain"_s).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/fw/fw.vnw"_s));
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
        QCOMPARE(f.projectFiles(), QStringList(u"Sources/main.c"_s));
        QCOMPARE(f.read(u"home/fw/main.c"_s), QByteArray("int main;"));
        QVERIFY(f.read(u"home/fw/fw.vnw"_s).contains("path=\"fw.vnp\""));
    }

    void specialNamesWork_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name :
             {u"two words"_s, u"Gr\u00f6\u00dfe"_s, u"a%1b"_s, u"it's \"q\""_s, u"a.b"_s, u"project"_s})
            QTest::newRow(qPrintable(name)) << name;
    }

    void specialNamesWork()
    {
        QFETCH(QString, name);
        const TemplateFixture f;
        QVERIFY(f.create(u"plain"_s, name).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/%2/%2.vnw"_s.replace(u"%2"_s, name)));
        QCOMPARE(f.projects(), QStringList(name));
    }

    void settingsAreWritten()
    {
        const TemplateFixture f;
        f.addScript("def createProject(name, template, path): pass");
        f.create(u"script"_s);
        QCOMPARE(f.settings()->value(u"Paths/NewProjects"_s).toString(), f.path(u"home"_s));
        QCOMPARE(f.settings()->value(u"Paths/Projects"_s).toString(), f.path(u"home/fw"_s));
        QCOMPARE(f.settings()->value(u"Paths/Files"_s).toString(), f.path(u"home/fw"_s));
    }

    void cancelledDialogChangesNothing()
    {
        const TemplateFixture f;
        const QString other = f.openOther();
        f.answers->meet([](QDialog *dialog) { dialog->reject(); });
        f.window->projectNew();
        QCOMPARE(f.openWorkspaceFile(), other);
        QVERIFY(!f.settings()->contains(u"Templates/Recent0"_s));
    }

    void openWorkspaceIsReplacedOrGetsTheProject()
    {
        const TemplateFixture f;
        f.openOther();
        QVERIFY(f.create(u"plain"_s).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/fw/fw.vnw"_s));
        QVERIFY(f.create(u"plain"_s, u"second"_s, TemplateFixture::add).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/fw/fw.vnw"_s));
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"second"_s}));
        QCOMPARE(f.window->activity().currentProject()->name(), u"second"_s);
        QVERIFY(!QFileInfo::exists(f.path(u"home/second/second.vnw"_s)));
    }

    void refusedCloseStopsTheCommand()
    {
        const TemplateFixture f;
        const QString other = f.openOther();
        f.window->projectWorkspace()->setModified(true);
        f.answer(u"plain"_s, u"fw"_s);
        f.answers->press(QMessageBox::Cancel);
        f.window->projectNew();
        QCOMPARE(f.openWorkspaceFile(), other);
        QVERIFY(QDir(f.path(u"home/fw"_s)).isEmpty()); // the dialog has created it
    }

    void windowDeletedDuringTheQuestionAboutTheWorkspaceEndsTheCommand()
    {
        TemplateFixture f;
        QVERIFY(!f.openOther().isEmpty());
        f.window->projectWorkspace()->setModified(true);
        f.answer(u"plain"_s, u"fw"_s);
        f.answers->meet([&f](QDialog *) {
            f.discard();
            f.window.reset();
        });
        MainWindow *window = f.window.get();
        window->projectNew();
        QVERIFY(!f.window);
        QVERIFY(QDir(f.path(u"home/fw"_s)).isEmpty());
    }

    void workspaceChoiceFollowsTheWorkspaceWhileTheDialogIsOpen()
    {
        const TemplateFixture f;
        f.openOther();
        QVERIFY(f.create(u"plain"_s, u"fw"_s, [&f](NewProjectDialog *dialog) {
                     const auto *radio = dialog->findChild<QRadioButton *>(u"AddWorkspaceRadio"_s);
                     QVERIFY(radio->isEnabled());
                     TemplateFixture::add(dialog);
                     f.window->closeWorkspace();
                     QVERIFY(!radio->isEnabled());
                     QVERIFY(!dialog->addToWorkspace());
                 }).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/fw/fw.vnw"_s));
    }

    void projectThatCannotBeLoadedIsAddedAllTheSame()
    {
        const TemplateFixture f;
        f.addTemplate(u"broken"_s, {}, {{u"project.vnp"_s, "<project"}});
        f.openOther();
        QVERIFY(f.create(u"broken"_s, u"bad"_s, TemplateFixture::add).isEmpty());
        QCOMPARE(f.projects(), QStringList(u"(bad)"_s));
        QVERIFY(f.create(u"broken"_s, u"worse"_s).size() <= 1); // the question about the changed workspace
    }

    void secondCommandWhileTheDialogIsOpenShowsNoSecondDialog()
    {
        const TemplateFixture f;
        QVERIFY(f.create(u"plain"_s, u"fw"_s, [&f](NewProjectDialog *) {
                     f.window->projectNew();
                     f.window->fileNew();
                 }).isEmpty());
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
    }

    void existingFilesAreAskedAbout()
    {
        const TemplateFixture f;
        f.write(u"home/fw.vnp"_s, "old");
        f.write(u"home/main.c"_s, "old");
        const auto here = [](NewProjectDialog *dialog) {
            dialog->findChild<QAbstractButton *>(u"ProjectFolderCheckBox"_s)->setChecked(false);
        };
        f.answer(u"plain"_s, u"fw"_s, here);
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Cancel);
        f.window->projectNew();
        QCOMPARE(f.answers->shown, (QStringList{overwrite(u"fw.vnp"_s), overwrite(u"main.c"_s)}));
        QCOMPARE(f.answers->boxes.last().buttons, QMessageBox::Yes | QMessageBox::YesToAll | QMessageBox::Cancel);
        QVERIFY(!f.window->projectWorkspace());
        QVERIFY(!QFileInfo::exists(f.path(u"home/fw.vnp"_s))); // nothing is rolled back

        f.write(u"home/fw.vnp"_s, "old");
        f.answers->shown.clear();
        f.answer(u"plain"_s, u"fw"_s, here);
        f.answers->press(QMessageBox::YesToAll);
        f.window->projectNew();
        QCOMPARE(f.answers->shown, QStringList{overwrite(u"fw.vnp"_s)});
        QCOMPARE(f.read(u"home/main.c"_s), QByteArray("int main;"));
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
    }

    void existingWorkspaceIsAskedAbout()
    {
        const TemplateFixture f;
        f.write(u"home/fw.vnw"_s, "old");
        const auto here = [](NewProjectDialog *dialog) {
            dialog->findChild<QAbstractButton *>(u"ProjectFolderCheckBox"_s)->setChecked(false);
        };
        f.answer(u"plain"_s, u"fw"_s, here);
        f.answers->press(QMessageBox::Cancel);
        f.window->projectNew();
        QCOMPARE(f.answers->shown, QStringList{overwrite(u"fw.vnw"_s)});
        QCOMPARE(f.read(u"home/fw.vnw"_s), "old");
        QVERIFY(!QFileInfo::exists(f.path(u"home/fw.vnp"_s)));
        QVERIFY(!f.window->projectWorkspace());

        f.answer(u"plain"_s, u"fw"_s, here);
        f.answers->press(QMessageBox::Yes);
        f.window->projectNew();
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
        QVERIFY(f.read(u"home/fw.vnw"_s).contains("fw.vnp"));
    }

    void failuresOfCopyingAreReported()
    {
        const TemplateFixture f;
        f.addTemplate(u"bare"_s, {}, {{u"main.c"_s, "x"}});
        f.addTemplate(u"locked"_s, {}, {{u"project.vnp"_s, ProjectText}, {u"z.c"_s, "x"}});
        QFile::setPermissions(f.templatePath(u"locked/z.c"_s), {});
        const auto failure = [&f](const QString &name, const QString &project) {
            f.answer(name, project);
            f.answers->press(QMessageBox::Ok);
            f.answers->shown.clear();
            f.window->projectNew();
            return f.answers->shown.join(u'|');
        };
        const QString end = u"' .\n\nThe project has not been created"_s;
        QCOMPARE(failure(u"bare"_s, u"a"_s),
                 u"Could not rename the project file '"_s + f.path(u"home/a/a.vnp"_s) + end);
        QCOMPARE(f.read(u"home/a/main.c"_s), QByteArray("x"));
        QCOMPARE(f.answers->lastBox(), u"warning Varnel [Ok]"_s);
        QCOMPARE(failure(u"locked"_s, u"b %1"_s),
                 u"Could not read from file '"_s + f.templatePath(u"locked/z.c"_s) + end);
        QVERIFY(!f.window->projectWorkspace());
    }

    void readOnlyLocationIsReported()
    {
        const TemplateFixture f;
        QFile::setPermissions(f.path(u"home"_s), QFile::ReadOwner | QFile::ExeOwner);
        f.answer(u"plain"_s, u"fw"_s);
        f.answers->press(QMessageBox::Ok);
        f.answers->press(QMessageBox::Ok);
        f.window->projectNew();
        QCOMPARE(f.answers->shown,
                 (QStringList{u"Could not create the project folder '"_s + f.path(u"home/fw"_s) + u"'."_s,
                              u"Could not write to file '"_s + f.path(u"home/fw/main.c"_s)
                                  + u"' .\n\nThe project has not been created"_s}));
        QFile::setPermissions(f.path(u"home"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void scriptRunsAlthoughTheFolderCouldNotBeCreated()
    {
        const TemplateFixture f;
        f.addScript("import os\ndef createProject(name, template, path):\n    assert not os.path.exists(path)\n");
        QFile::setPermissions(f.path(u"home"_s), QFile::ReadOwner | QFile::ExeOwner);
        f.answer(u"script"_s, u"fw"_s);
        f.answers->press(QMessageBox::Ok);
        f.window->projectNew();
        QCOMPARE(f.answers->shown,
                 QStringList(u"Could not create the project folder '"_s + f.path(u"home/fw"_s) + u"'."_s));
        QFile::setPermissions(f.path(u"home"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void fileOfAnOpenProjectIsNotReplaced()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        const QByteArray before = f.read(u"home/fw/fw.vnp"_s);
        f.settings()->setValue(u"Paths/NewProjects"_s, f.path(u"home/fw"_s));
        f.answer(u"plain"_s, u"fw"_s, [](NewProjectDialog *dialog) {
            TemplateFixture::add(dialog);
            dialog->findChild<QAbstractButton *>(u"ProjectFolderCheckBox"_s)->setChecked(false);
        });
        f.answers->press(QMessageBox::Ok);
        f.window->projectNew();
        QCOMPARE(f.answers->shown,
                 QStringList(u"The project '"_s + f.path(u"home/fw/fw.vnp"_s)
                             + u"' is open. Remove it from the workspace before its file is replaced."_s));
        QCOMPARE(f.read(u"home/fw/fw.vnp"_s), before);
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
    }

    void projectIsCreatedBesideOneWhoseFileHasDisappeared()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        QVERIFY(QFile::remove(f.path(u"home/fw/fw.vnp"_s)));
        QCOMPARE(f.create(u"plain"_s, u"other"_s, TemplateFixture::add), QStringList());
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"other"_s}));
    }

    void workspaceThatCannotBeWrittenIsReported()
    {
        const TemplateFixture f;
        QDir().mkpath(f.path(u"home/fw.vnw"_s));
        f.answer(u"plain"_s, u"fw"_s, [](NewProjectDialog *dialog) {
            dialog->findChild<QAbstractButton *>(u"ProjectFolderCheckBox"_s)->setChecked(false);
        });
        f.answers->press(QMessageBox::Ok);
        f.window->projectNew();
        QCOMPARE(f.answers->shown,
                 QStringList(u"The workspace could not be saved.\n\nPlease make sure that the workspace "
                             "file is not read-only."_s));
        QVERIFY(!f.window->projectWorkspace());
    }

    void templatesOfTheSettingsAndTheUserAreOffered()
    {
        const TemplateFixture f;
        QDir().mkpath(f.path(u"mine/t"_s));
        f.settings()->setValue(u"Paths/Templates"_s,
                               QString(u"; "_s + f.path(u"mine"_s) + u" ; ;/no/such/directory"_s));
        f.installation.write(u"mytemplates/template.xml"_s, "<t type='folder'><displayname>Own</displayname></t>");
        QStringList rows;
        f.answers->meet([&rows](QDialog *dialog) {
            const auto *tree = dialog->findChild<QTreeWidget *>(u"TemplateListView"_s);
            for (int i = 0; i < tree->topLevelItemCount(); ++i)
                rows.append(tree->topLevelItem(i)->text(0));
            dialog->reject();
        });
        f.window->projectNew();
        QCOMPARE(rows, (QStringList{u"group"_s, u"mine"_s, u"Own"_s}));
    }

    void recentTemplatesAreOfferedFirst()
    {
        const TemplateFixture f;
        f.addTemplate(u"second"_s, {}, {{u"project.vnp"_s, ProjectText}});
        f.create(u"plain"_s, u"a"_s);
        f.create(u"second"_s, u"b"_s);
        f.create(u"second"_s, u"c"_s);
        QStringList rows;
        const auto look = [&rows](QDialog *dialog) {
            const auto *list = dialog->findChild<QListWidget *>(u"TemplateIconView"_s);
            rows = {dialog->findChild<QTreeWidget *>(u"TemplateListView"_s)->topLevelItem(0)->text(0)};
            for (int i = 0; i < list->count(); ++i)
                rows.append(list->item(i)->text());
            dialog->reject();
        };
        f.answers->meet(look);
        f.window->projectNew();
        QCOMPARE(rows, (QStringList{u"Recently used"_s, u"second"_s, u"plain"_s}));
        QDir(f.templatePath(u"second"_s)).removeRecursively();
        f.answers->meet(look);
        f.window->projectNew();
        QCOMPARE(rows, (QStringList{u"Recently used"_s, u"plain"_s}));
    }

    void onlyTemplatesAreOfferedAsRecentOnes()
    {
        const TemplateFixture f;
        f.installation.write(u"mytemplates/template.xml"_s, "<t type='folder'><displayname>Own</displayname></t>");
        const QStringList stored{f.installation.path(u"mytemplates"_s), f.templatePath(u"gone"_s),
                                 f.templatePath(u"plain"_s)};
        for (int i = 0; i < stored.size(); ++i)
            f.settings()->setValue(u"Templates/Recent%1"_s.arg(i), stored[i]);
        QStringList offered;
        f.answers->meet([&offered](QDialog *dialog) {
            const auto *list = dialog->findChild<QListWidget *>(u"TemplateIconView"_s);
            for (int i = 0; i < list->count(); ++i)
                offered.append(list->item(i)->text());
            dialog->reject();
        });
        f.window->projectNew();
        QCOMPARE(offered, QStringList(u"plain"_s));
    }

    // Projects from scripts

    void windowDeletedWhileATemplateIsCopiedEndsTheCopy()
    {
        TemplateFixture f;
        f.addTemplate(u"plain"_s, {}, {{u"a.c"_s, "a"}});
        makeLarge(f.templatePath(u"plain/large.bin"_s));
        f.answer(u"plain"_s, u"fw"_s, [&](NewProjectDialog *dialog) {
            connect(dialog, &QDialog::accepted, qApp, [&] { QTimer::singleShot(0, qApp, [&] { f.window.reset(); }); });
        });
        f.window->projectNew();
        QVERIFY(!f.window);
        QCOMPARE(QDir(f.path(u"home/fw"_s)).entryList(QDir::Files), QStringList(u"a.c"_s));
    }

    void scriptCanReturnAProject()
    {
        const TemplateFixture f;
        f.addScript("import os\ndef createProject(name, template, path):\n    file = os.path.join(path, 'x.vnp')\n"
                    "    open(file, 'w').write('<project/>')\n    return file");
        QVERIFY(f.create(u"script"_s).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/fw/fw.vnw"_s));
        QCOMPARE(f.projects(), QStringList(u"x"_s));
        QVERIFY(f.create(u"script"_s, u"more"_s, TemplateFixture::add).isEmpty());
        QCOMPARE(f.projects(), (QStringList{u"x"_s, u"x"_s}));
    }

    void scriptCanReturnAWorkspace()
    {
        const TemplateFixture f;
        f.addScript("import os\ndef createProject(name, template, path):\n    file = os.path.join(path, 'all.vnw')\n"
                    "    open(file, 'w').write('<workspace/>')\n    return file");
        f.openOther();
        QVERIFY(f.create(u"script"_s, u"fw"_s, TemplateFixture::add).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/fw/all.vnw"_s));
    }

    void resultOfAScriptIsNotOpenedIfTheOpenWorkspaceIsKept_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("workspace") << QByteArray("all.vnw") << QByteArray("<workspace/>");
        QTest::newRow("project") << QByteArray("x.vnp") << QByteArray("<project/>");
    }

    void resultOfAScriptIsNotOpenedIfTheOpenWorkspaceIsKept()
    {
        QFETCH(const QByteArray, file);
        QFETCH(const QByteArray, content);
        const TemplateFixture f;
        f.addScript("import os\nfrom varnel import app\ndef createProject(name, template, path):\n"
                    "    app.openWorkspace(os.path.dirname(os.path.dirname(path)) + '/other.vnw')\n"
                    "    file = os.path.join(path, '"
                    + file + "')\n    open(file, 'w').write('" + content + "')\n    return file");
        const QString other = f.writeWorkspace(u"other.vnw"_s, {});
        QObject::connect(&f.window->activity(), &Activity::workspaceReady, f.answers.get(),
                         [&f] { f.window->projectWorkspace()->setModified(true); });
        f.answer(u"script"_s, u"fw"_s);
        f.answers->press(QMessageBox::Cancel);
        f.window->projectNew();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.openWorkspaceFile(), other);
        QVERIFY(f.window->projectWorkspace()->isModified());
    }

    void projectOfAScriptIsNotOpenedIfItsWorkspaceFileIsKept()
    {
        const TemplateFixture f;
        f.addScript("import os\ndef createProject(name, template, path):\n    file = os.path.join(path, 'x.vnp')\n"
                    "    open(os.path.join(path, 'fw.vnw'), 'w').write('mine')\n"
                    "    open(file, 'w').write('<project/>')\n    return file");
        f.answer(u"script"_s, u"fw"_s);
        f.answers->press(QMessageBox::Cancel);
        f.window->projectNew();
        QCOMPARE(f.answers->shown.size(), 1);
        QVERIFY2(f.answers->shown[0].startsWith(u"The file 'fw.vnw' already exists"_s),
                 qPrintable(f.answers->shown[0]));
        QCOMPARE(f.openWorkspaceFile(), u"none"_s);
        QCOMPARE(f.read(u"home/fw/fw.vnw"_s), "mine");
    }

    void cancelledNameSavesNoTemplate()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        f.answers->meet([](QDialog *dialog) { dialog->reject(); });
        Q_EMIT f.window->findChild<Navigator *>()->saveAsTemplate(f.window->activity().currentProject());
        QVERIFY(f.answers->allGiven());
        QVERIFY(QDir(f.installation.path(u"mytemplates"_s)).isEmpty());
        QCOMPARE(f.status(), QString());
    }

    void scriptThatReturnsNoneLeavesTheWorkspaceClosed()
    {
        const TemplateFixture f;
        f.addScript("def createProject(name, template, path): pass");
        const QString other = f.openOther();
        QVERIFY(f.create(u"script"_s, u"a"_s, TemplateFixture::add).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), other);
        QVERIFY(f.create(u"script"_s, u"b"_s).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), u"none"_s);
    }

    void failuresOfScriptsAreReported_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("message");
        const QByteArray head = "def createProject(name, template, path):\n    ";
        QTest::newRow("module") << QByteArray("1 / 0") << u"Error loading Python module 'builder'."_s + ReadDetails;
        QTest::newRow("function") << QByteArray("x = 1")
                                  << u"createProject Python function not found in module 'builder'."_s + ReadDetails;
        QTest::newRow("exception") << head + "raise OSError"
                                   << u"Error in createProject Python function."_s + ReadDetails;
        QTest::newRow("exit") << head + "raise SystemExit(3)"
                              << u"Error in createProject Python function."_s + ReadDetails;
        QTest::newRow("other type")
            << head + "return 5"
            << u"createProject Python function must return:\n\n    path to project file "
               "(.vnp)\n\n    OR\n\n    path to workspace file (.vnw)\n\n    OR\n\n    Nothing"_s;
        QTest::newRow("missing file") << head + "return '/no %1/such.vnp'"
                                      << u"File returned from createProject Python function does not exist:\n\n"
                                         "/no %1/such.vnp"_s;
        for (const QByteArray name : {"x.VNP", "x.a.vnp", "x.c", "x"})
            QTest::newRow(name.constData())
                << head + "open(path + '/" + name + "', 'w'); return path + '/" + name + "'"
                << u"File returned from createProject Python function is not a workspace file (.vnw) or a project file "
                   "(.vnp):\n\n@/"_s
                       + QString::fromLatin1(name);
    }

    void failuresOfScriptsAreReported()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, message);
        const TemplateFixture f;
        f.addScript(script);
        f.openOther();
        f.answer(u"script"_s, u"fw"_s);
        f.answers->press(QMessageBox::Ok);
        f.window->projectNew();
        QCOMPARE(f.answers->shown, QStringList(message.replace(u"@"_s, f.path(u"home/fw"_s))));
        QCOMPARE(f.answers->lastBox(), u"warning Varnel [Ok]"_s);
        QCOMPARE(f.openWorkspaceFile(), u"none"_s);
    }

    void scriptThatRunsForEverCanBeCancelled()
    {
        const TemplateFixture f;
        f.addScript("def createProject(name, template, path):\n    while True: pass");
        f.answer(u"script"_s, u"fw"_s);
        QString shown;
        f.answers->meet([&](QDialog *dialog) {
            auto *progress = qobject_cast<QProgressDialog *>(dialog);
            QVERIFY(progress);
            shown = progress->labelText();
            QTest::mouseClick(progress->findChild<QPushButton *>(), Qt::LeftButton);
        });
        f.answers->press(QMessageBox::Ok);
        f.window->projectNew();
        QCOMPARE(shown, u"The template 'script' creates the project..."_s);
        QCOMPARE(f.answers->shown, QStringList(u"Error in createProject Python function."_s + ReadDetails));
        QVERIFY(!f.window->findChild<QProgressDialog *>());
    }

    void formOfAScriptIsNotCoveredByTheProgress()
    {
        const TemplateFixture f;
        f.addScript("import time\nfrom varnel import app\ndef createProject(*given):\n"
                    "    form, end = app.createUI('QDialog', 'form'), time.monotonic() + 0.8\n"
                    "    timer = app.createTimer('scriptTimer')\n    timer.interval = 10\n"
                    "    def tick(sender):\n        if time.monotonic() > end:\n            timer.stop()\n"
                    "            form.reject()\n"
                    "    timer.onTimeout = tick\n    timer.start(0)\n    form.execute()\n");
        f.answer(u"script"_s, u"fw"_s);
        bool closed = false;
        bool covered = false;
        f.answers->meet([&](QDialog *form) {
            connect(form, &QDialog::finished, f.window.get(), [&] {
                closed = true;
                covered = f.window->findChild<QProgressDialog *>();
            });
        });
        f.window->projectNew();
        QVERIFY(closed);
        QVERIFY(!covered);
    }

    void furtherModulesOfTemplatesMayHaveTheSameName()
    {
        const TemplateFixture f;
        for (const QString &each : {u"one"_s, u"two"_s})
            f.addTemplate(each, "<t type='script'><script module='builder'/></t>",
                          {{u"builder.py"_s, "import parts\ndef createProject(name, template, path):\n"
                                             "    file = path + '/' + parts.NAME + '.vnp'\n"
                                             "    open(file, 'w').write('<project/>')\n    return file"},
                           {u"parts.py"_s, "NAME = '" + each.toUtf8() + "'"}});
        QVERIFY(f.create(u"one"_s, u"a"_s).isEmpty());
        QCOMPARE(f.projects(), QStringList(u"one"_s));
        QVERIFY(f.create(u"two"_s, u"b"_s).isEmpty());
        QCOMPARE(f.projects(), QStringList(u"two"_s));
    }

    void scriptMayCloseAndOpenWorkspacesItself()
    {
        const TemplateFixture f;
        f.addScript("from varnel import app\ndef createProject(name, template, path):\n    app.closeWorkspace()\n"
                    "    open(path + '/own.vnw', 'w').write('<workspace/>')\n    app.openWorkspace(path + '/own.vnw')\n"
                    "    open(path + '/a.vnp', 'w').write('<project/>'); return path + '/a.vnp'");
        f.openOther();
        QVERIFY(f.create(u"script"_s, u"fw"_s, TemplateFixture::add).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/fw/own.vnw"_s));
        QCOMPARE(f.projects(), QStringList(u"a"_s));
        f.discard();
        QVERIFY(f.create(u"script"_s, u"next"_s).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/next/next.vnw"_s)); // in place of the one that it has opened
    }

    void scriptThatEndsTheProgramOpensNothing()
    {
        TemplateFixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             "<ui><actions><action name='fileExit'><text>Exit</text></action></actions></ui>");
        f.restart();
        f.addScript("from varnel import app\ndef createProject(name, template, path):\n    app.doAction('fileExit')\n"
                    "    open(path + '/a.vnp', 'w').write('<project/>'); return path + '/a.vnp'");
        QCOMPARE(f.create(u"script"_s).join(u'\n'), QString());
        QVERIFY(!f.window->isVisible());
        QCOMPARE(f.openWorkspaceFile(), u"none"_s);
    }

    void workspaceClosedWhileTheScriptRunsIsReplaced()
    {
        const TemplateFixture f;
        f.addScript("import time\ndef createProject(name, template, path):\n    end = time.monotonic() + 0.3\n"
                    "    while time.monotonic() < end: pass\n"
                    "    open(path + '/a.vnp', 'w').write('<project/>'); return path + '/a.vnp'");
        f.openOther();
        f.answer(u"script"_s, u"fw"_s, [&](NewProjectDialog *dialog) {
            TemplateFixture::add(dialog);
            connect(dialog, &QDialog::accepted, f.window.get(),
                    [&] { QTimer::singleShot(0, f.window.get(), [&] { f.window->closeWorkspace(); }); });
        });
        f.window->projectNew();
        QCOMPARE(f.openWorkspaceFile(), f.path(u"home/fw/fw.vnw"_s));
        QCOMPARE(f.projects(), QStringList(u"a"_s));
    }

    void workspaceFileIsAskedAboutUnlessTheProjectIsAdded_data()
    {
        QTest::addColumn<QByteArray>("statement");
        QTest::addColumn<bool>("add");
        QTest::addColumn<QString>("open");
        QTest::newRow("the script closes the workspace") << QByteArray("app.closeWorkspace()") << true << u"none"_s;
        QTest::newRow("the script opens one")
            << QByteArray("app.openWorkspace(path + '/../../other.vnw')") << false << u"other.vnw"_s;
    }
    void workspaceFileIsAskedAboutUnlessTheProjectIsAdded()
    {
        QFETCH(const QByteArray, statement);
        QFETCH(const bool, add);
        const TemplateFixture f;
        f.addScript("from varnel import app\ndef createProject(name, template, path):\n    " + statement
                    + "\n    open(path + '/fw.vnw', 'w').write('mine')\n"
                      "    open(path + '/a.vnp', 'w').write('<project/>'); return path + '/a.vnp'");
        f.openOther();
        f.answer(u"script"_s, u"fw"_s, add ? TemplateFixture::add : nullptr);
        f.answers->press(QMessageBox::Cancel);
        f.window->projectNew();
        QVERIFY(f.answers->allGiven());
        QTEST(QFileInfo(f.openWorkspaceFile()).fileName(), "open");
        QCOMPARE(f.read(u"home/fw/fw.vnw"_s), "mine");
    }

    void windowDeletedWhileTheScriptRunsInterruptsIt()
    {
        TemplateFixture f;
        f.addScript("def createProject(name, template, path):\n    while True: pass");
        f.answer(u"script"_s, u"fw"_s, [&](NewProjectDialog *dialog) {
            connect(dialog, &QDialog::accepted, qApp, [&] { QTimer::singleShot(0, qApp, [&] { f.window.reset(); }); });
        });
        f.window->projectNew();
        QVERIFY(!f.window);
        QVERIFY(f.answers->shown.isEmpty());
    }

    void scriptTemplateWithoutModuleIsReported()
    {
        const TemplateFixture f;
        f.addTemplate(u"script"_s, "<t type='script'><script/></t>", {});
        f.answer(u"script"_s, u"fw"_s);
        f.answers->press(QMessageBox::Ok);
        f.window->projectNew();
        QCOMPARE(f.answers->shown,
                 QStringList(u"No script specified in template '"_s + f.templatePath(u"script"_s) + u"' "_s));
    }

    void templateThatChangesWhileTheDialogIsOpenIsReadAgain()
    {
        const TemplateFixture f;
        QVERIFY(f.create(u"plain"_s, u"fw"_s, [&f](NewProjectDialog *) {
                     f.addTemplate(u"plain"_s, "<t type='script'><script module='late'/></t>",
                                   {{u"late.py"_s, "def createProject(*given): pass"}});
                 }).isEmpty());
        QCOMPARE(f.openWorkspaceFile(), u"none"_s);
    }

    // Files

    void newFileIsADocumentOfItsKind()
    {
        const TemplateFixture f;
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"home"_s));
        QVERIFY(f.createFile(u"C Source File"_s, u"a %1"_s).isEmpty());
        QCOMPARE(f.openFiles(), QStringList(u"a %1.c *"_s));
        QCOMPARE(f.document()->filename(), f.path(u"home/a %1.c"_s));
        QVERIFY(!QFileInfo::exists(f.path(u"home/a %1.c"_s)));
        QCOMPARE(f.settings()->value(u"Paths/Files"_s).toString(), f.path(u"home"_s));
        QVERIFY(f.document()->save());
    }

    void newFileIsAddedToTheCurrentProject()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        QVERIFY(f.createFile(u"C Source File"_s, u"uart"_s).isEmpty());
        QCOMPARE(f.projectFiles(), (QStringList{u"Sources/main.c"_s, u"Sources/uart.c"_s}));
        // After a crash, the text is recovered, and the project still has the file.
        QVERIFY(!f.window->activity().currentProject()->isModified());
        Project stored({}, {});
        QVERIFY(stored.load(f.window->activity().currentProject()->fileName()));
        QVERIFY(stored.containsFile(f.document()->filename()));
        QVERIFY(f.createFile(u"C Source File"_s, u"other"_s, [](NewFileDialog *dialog) {
                     dialog->findChild<QAbstractButton *>(u"addCheck"_s)->setChecked(false);
                 }).isEmpty());
        QCOMPARE(f.projectFiles().size(), 2);
    }

    void cancelledFileDialogCreatesNothing()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        f.answers->meet([](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>(u"fileIconView"_s);
            list->setCurrentItem(list->findItems(u"C Source File"_s, Qt::MatchExactly).value(0));
            dialog->findChild<QLineEdit *>(u"nameEdit"_s)->setText(u"uart"_s);
            dialog->reject();
        });
        f.window->fileNew();
        QVERIFY(f.answers->allGiven());
        QVERIFY(f.openFiles().isEmpty());
        QCOMPARE(f.projectFiles(), QStringList(u"Sources/main.c"_s));
    }

    void windowDeletedWhileTheFileDialogIsOpenEndsTheCommand()
    {
        TemplateFixture f;
        f.answers->meet([&f](QDialog *) { f.window.reset(); });
        MainWindow *window = f.window.get();
        window->fileNew();
        QVERIFY(!f.window);
        QVERIFY(f.answers->shown.isEmpty());
    }

    void secondCommandWhileTheFileDialogIsOpenShowsNoSecondDialog()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        QVERIFY(f.createFile(u"C Source File"_s, u"uart"_s, [&f](NewFileDialog *) { f.window->fileNew(); }).isEmpty());
        QCOMPARE(f.openFiles(), QStringList(u"uart.c *"_s));
    }

    void newFileDoesNotSaveOtherChangesOfTheProject()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        Project *project = f.window->activity().currentProject();
        project->addFiles({f.path(u"home/fw/other.c"_s)}, nullptr);
        const QByteArray before = f.read(u"home/fw/fw.vnp"_s);
        QVERIFY(f.createFile(u"C Source File"_s, u"uart"_s).isEmpty());
        QVERIFY(project->isModified());
        QCOMPARE(f.read(u"home/fw/fw.vnp"_s), before);
    }

    void newFileDoesNotReplaceAProjectFileThatDiffers_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("isReadAgain");
        QTest::newRow("changed by another program")
            << QByteArray("<project><file path='theirs.c'/></project>") << false;
        QTest::newRow("not readable") << QByteArray("<project") << true;
    }
    void newFileDoesNotReplaceAProjectFileThatDiffers()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const bool, isReadAgain);
        const TemplateFixture f;
        f.create(u"plain"_s);
        if (isReadAgain)
            f.window->closeWorkspace();
        f.changeOutside(u"home/fw/fw.vnp"_s, content);
        if (isReadAgain)
            f.window->openWorkspace(f.path(u"home/fw/fw.vnw"_s), false);
        QVERIFY(f.createFile(u"C Source File"_s, u"uart"_s).isEmpty());
        QCOMPARE(f.openFiles().first(), u"uart.c *"_s);
        QCOMPARE(f.read(u"home/fw/fw.vnp"_s), content);
    }

    void workspaceClosedWhileTheFileDialogIsOpen()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        QVERIFY(f.createFile(u"C Source File"_s, u"uart"_s, [&f](NewFileDialog *dialog) {
                     QVERIFY(dialog->addToProject());
                     f.discard();
                     QVERIFY(!dialog->addToProject());
                 }).isEmpty());
        QCOMPARE(f.openFiles(), QStringList(u"uart.c *"_s));
    }

    void openDocumentOfAnOverwrittenFileIsReplaced()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        QVERIFY(f.window->openFile(f.path(u"home/fw/main.c"_s), false));
        f.answerFile(u"C Source File"_s, u"main"_s, [&f](NewFileDialog *) { f.answers->press(QMessageBox::Yes); });
        f.window->fileNew();
        QCOMPARE(f.openFiles(), QStringList(u"main.c *"_s));
        QCOMPARE(f.text(), QString());
        QCOMPARE(f.projectFiles(), QStringList(u"Sources/main.c"_s)); // not a second time
    }

    /// The user has agreed to overwrite that file, so nothing on the disk is newer than the document.
    void overwrittenFileIsSavedWithoutAnotherQuestion()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        f.answerFile(u"C Source File"_s, u"main"_s, [&f](NewFileDialog *) { f.answers->press(QMessageBox::Yes); });
        f.window->fileNew();
        f.type(u"int a;"_s);
        f.answers->shown.clear();
        f.activate();
        f.window->fileSave();
        QCOMPARE(f.answers->shown, QStringList());
        QCOMPARE(f.read(u"home/fw/main.c"_s), QByteArray("int a;"));
        f.changeOutside(u"home/fw/main.c"_s, "other");
        QVERIFY(f.document()->isNewerOnDisk());
    }

    void refusedCloseOfAnOverwrittenDocumentKeepsIt()
    {
        const TemplateFixture f;
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"home"_s));
        f.open(u"home/a.c"_s);
        f.type(u"new"_s);
        f.answerFile(u"C Source File"_s, u"a"_s, [&f](NewFileDialog *) {
            f.answers->press(QMessageBox::Yes);
            f.answers->press(QMessageBox::Cancel);
        });
        f.window->fileNew();
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
        QVERIFY(f.text().startsWith(u"new"_s));
    }

    void templateWithTextOpensAllItsFilesWithTheCursorInPlace()
    {
        const TemplateFixture f;
        f.installation.write(u"data/filetemplates/pair/$name$.c"_s, "#include \"$name$.h\"\n\n  $cursor$\n");
        f.installation.write(u"data/filetemplates/pair/$name$.h"_s, "#define $IDENTIFIER$_H\n");
        f.create(u"plain"_s);
        QVERIFY(f.createFile(u"pair"_s, u"uart"_s).isEmpty());
        QCOMPARE(f.openFiles(), (QStringList{u"uart.h *"_s, u"uart.c *"_s}));
        QCOMPARE(f.status(), QString());
        QCOMPARE(f.projectFiles().count(u"Sources/uart.c"_s), 1);
        QCOMPARE(f.text(), u"#include \"uart.h\"\n\n  \n"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().position(), 21);
        QVERIFY(f.projectFiles().contains(u"Sources/uart.c"_s));
        QVERIFY(f.projectFiles().contains(u"uart.h"_s));
        QVERIFY(f.window->fileSaveAll());
        QCOMPARE(f.read(u"home/fw/uart.h"_s), QByteArray("#define UART_H\n"));
    }

    void fileOfATemplateIsOfTheKindOfItsName_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("a.c") << u"C Source File"_s;
        QTest::newRow("a.py") << u"Python File"_s;
        QTest::newRow("a.html") << u"Text File"_s; // to be written, not to be read as a page of help
    }

    void fileOfATemplateIsOfTheKindOfItsName()
    {
        QFETCH(const QString, kind);
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        const TemplateFixture f;
        f.installation.write(u"data/filetemplates/one/"_s + QString(name).replace(u"a."_s, u"$name$."_s), "text");
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"home"_s));
        QVERIFY(f.createFile(u"one"_s, name).isEmpty());
        QCOMPARE(f.openFiles(), QStringList(name + u" *"_s));
        QCOMPARE(f.document()->documentTemplate()->name(), kind);
        QCOMPARE(f.text(), u"text"_s);
    }

    void furtherFilesOfATemplateDoNotReplaceFiles()
    {
        const TemplateFixture f;
        f.installation.write(u"data/filetemplates/pair/$name$.c"_s, "$cursor$");
        f.installation.write(u"data/filetemplates/pair/$name$.h"_s, "new");
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"home"_s));
        QVERIFY(f.window->workspace()->openOrCreate(f.path(u"home/uart.h"_s)));
        QVERIFY(f.createFile(u"pair"_s, u"uart"_s).isEmpty());
        QCOMPARE(f.openFiles(), (QStringList{u"uart.h *"_s, u"uart.c *"_s}));
        QCOMPARE(f.status(), u"This file exists already and was not changed: "_s + f.path(u"home/uart.h"_s));
        f.discard();
        f.write(u"home/uart.h"_s, "old");
        QVERIFY(f.createFile(u"pair"_s, u"uart"_s).isEmpty());
        QCOMPARE(f.openFiles(), QStringList(u"uart.c *"_s));
        QCOMPARE(f.status(), u"This file exists already and was not changed: "_s + f.path(u"home/uart.h"_s));
    }

    void firstFileOfATemplateReplacesOneOnRequest()
    {
        const TemplateFixture f;
        f.installation.write(u"data/filetemplates/pair/$name$.c"_s, "new");
        f.installation.write(u"data/filetemplates/pair/$name$.h"_s, "second");
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"home"_s));
        f.write(u"home/uart.c"_s, "old");
        f.answerFile(u"pair"_s, u"uart"_s, [&f](NewFileDialog *) { f.answers->press(QMessageBox::Yes); });
        f.window->fileNew();
        QCOMPARE(f.openFiles(), (QStringList{u"uart.h *"_s, u"uart.c *"_s}));
        QCOMPARE(f.text(), u"new"_s);
        QCOMPARE(f.status(), QString());
    }

    void nameOfTheSecondFileOpensOneDocument()
    {
        const TemplateFixture f;
        f.installation.write(u"data/filetemplates/pair/$name$.c"_s, "$cursor$");
        f.installation.write(u"data/filetemplates/pair/$name$.h"_s, "second");
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"home"_s));
        QVERIFY(f.createFile(u"pair"_s, u"uart.h"_s).isEmpty());
        QCOMPARE(f.openFiles(), QStringList(u"uart.h *"_s));
        QCOMPARE(f.text(), QString());
    }

    void vanishedFileTemplateIsReported()
    {
        const TemplateFixture f;
        f.installation.write(u"data/filetemplates/pair/$name$.c"_s, "$cursor$");
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"home"_s));
        f.answerFile(u"pair"_s, u"uart"_s, [&f](NewFileDialog *) {
            QDir(f.installation.path(u"data/filetemplates"_s)).removeRecursively();
            f.answers->press(QMessageBox::Ok);
        });
        f.window->fileNew();
        QCOMPARE(f.answers->shown, QStringList(u"The files of the template 'pair' cannot be read."_s));
        QVERIFY(f.openFiles().isEmpty());
    }

    // Templates of the user's own

    void projectIsSavedAsTemplate()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        f.write(u"home/fw/unlisted.h"_s, "header");
        f.write(u"home/fw/main.c~"_s, "left by an editor");
        f.answers->type(u"My <board>"_s);
        auto *tree = f.window->findChild<QTreeWidget *>(u"ProjectTree"_s);
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        for (QAction *action : f.window->findChild<QMenu *>(u"projectContextMenu"_s)->actions()) {
            if (action->text() == u"Save as &Template...")
                action->trigger();
        }
        QCOMPARE(f.answers->shown, QStringList(u"Varnel|Name of the new project template:"_s));
        const QDir saved(f.installation.path(u"mytemplates/My <board>"_s));
        QCOMPARE(saved.entryList(QDir::Files).join(u' '), u"main.c project.vnp template.xml unlisted.h"_s);
        QCOMPARE(readTemplate(saved.path()).name(), u"My <board>"_s);
        QVERIFY(f.status().startsWith(u"The template 'My <board>' was saved."_s));

        f.answers->shown.clear();
        f.answers->meet([](QDialog *dialog) {
            auto *folders = dialog->findChild<QTreeWidget *>(u"TemplateListView"_s);
            folders->setCurrentItem(folders->findItems(u"My templates"_s, Qt::MatchExactly).value(0));
            dialog->findChild<QListWidget *>(u"TemplateIconView"_s)->setCurrentRow(0);
            dialog->findChild<QLineEdit *>(u"NameLineEdit"_s)->setText(u"copy"_s);
            dialog->accept();
        });
        f.window->projectNew();
        QVERIFY(f.answers->shown.isEmpty());
        QCOMPARE(f.projects(), QStringList(u"copy"_s));
        QCOMPARE(f.projectFiles(), QStringList(u"Sources/main.c"_s));
    }

    void savedTemplateConsistsOfPlainFiles()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        QVERIFY(f.saveAsTemplate(u"mine"_s).isEmpty());
        const auto saved = [&f](const QString &name) {
            QFile file(f.installation.path(u"mytemplates/"_s + name));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QCOMPARE(saved(u"mine/template.xml"_s), "<template>\n <displayname>mine</displayname>\n"
                                                " <description>A project like fw.</description>\n</template>\n");
        QCOMPARE(saved(u"template.xml"_s),
                 "<template type=\"folder\">\n <displayname>My templates</displayname>\n"
                 " <description>Templates that were made of your projects.</description>\n</template>\n");
        const QByteArray project = saved(u"mine/project.vnp"_s);
        QVERIFY2(project.startsWith("<!DOCTYPE") || project.startsWith("<project"), project.constData());
        QVERIFY2(project.endsWith("</project>\n"), project.constData());
    }

    void folderOfTheTemplatesKeepsItsName()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        const QByteArray own = "<t type='folder'><displayname>Own</displayname></t>";
        f.installation.write(u"mytemplates/template.xml"_s, own);
        QVERIFY(f.saveAsTemplate(u"mine"_s).isEmpty());
        QFile file(f.installation.path(u"mytemplates/template.xml"_s));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), own);
    }

    void templateThatCannotBeReplacedIsReported()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        f.installation.write(u"mytemplates/mine/main.c/inner.c"_s, "a folder with the name of a file");
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(f.saveAsTemplate(u"mine"_s).last().startsWith(u"The template could not be saved."_s));
        QVERIFY(QFileInfo::exists(f.installation.path(u"mytemplates/mine/main.c/inner.c"_s)));
    }

    void templateInAReadOnlyFolderIsWrittenNowhere()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        QVERIFY(f.saveAsTemplate(u"first"_s).isEmpty());
        const QString folder = f.installation.path(u"mytemplates"_s);
        const QString before = QDir::currentPath();
        QDir().mkpath(f.path(u"here"_s));
        QVERIFY(QDir::setCurrent(f.path(u"here"_s)));
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
        f.answers->press(QMessageBox::Ok);
        const QString message = f.saveAsTemplate(u"mine"_s).last();
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const bool isEmpty = QDir(f.path(u"here"_s)).isEmpty();
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(message.startsWith(u"The template could not be saved."_s));
        QVERIFY(isEmpty);
    }

    void filesElsewhereAreSharedAndListed()
    {
        const TemplateFixture f;
        f.writeProject(u"fw/fw.vnp"_s, {u"a.c"_s, u"sub/b.c"_s, u"../lib/c.c"_s});
        Project project{QString(), QString()};
        QVERIFY(project.load(f.path(u"fw/fw.vnp"_s)));
        QCOMPARE(filesElsewhere(project), (QStringList{u"sub/b.c"_s, u"../lib/c.c"_s}));
        const QString text = templateProjectText(project);
        for (const QString &path : {u"a.c"_s, f.path(u"fw/sub/b.c"_s), f.path(u"lib/c.c"_s)})
            QVERIFY2(text.contains(u"path=\""_s + path + u'"'), qPrintable(text));
        Project copy{QString(), QString()};
        f.write(u"t/project.vnp"_s, text.toUtf8());
        QVERIFY(copy.load(f.path(u"t/project.vnp"_s)));
        QCOMPARE(copy.files({}, nullptr).size(), 3);
    }

    void windowDeletedWhileATemplateIsSavedLeavesNoTemplate()
    {
        TemplateFixture f;
        f.create(u"plain"_s);
        makeLarge(f.path(u"home/fw/large.bin"_s));
        f.answers->meet([&](QDialog *dialog) {
            static_cast<QInputDialog *>(dialog)->setTextValue(u"mine"_s);
            dialog->accept();
            QTimer::singleShot(0, qApp, [&] {
                f.discard();
                f.window.reset();
            });
        });
        const QString saved = f.installation.path(u"mytemplates/mine"_s);
        auto *tree = f.window->findChild<QTreeWidget *>(u"ProjectTree"_s);
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        const QList<QAction *> actions = f.window->findChild<QMenu *>(u"projectContextMenu"_s)->actions();
        const auto save = std::find_if(actions.begin(), actions.end(),
                                       [](const QAction *action) { return action->text() == u"Save as &Template..."; });
        QVERIFY(save != actions.end());
        (*save)->trigger();
        QVERIFY(!f.window);
        QVERIFY(!QFileInfo::exists(saved));
    }

    void existingTemplateIsReplacedOnRequest()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        f.installation.write(u"mytemplates/a_b/old.c"_s, "old");
        auto *tree = f.window->findChild<QTreeWidget *>(u"ProjectTree"_s);
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        const auto save = [&](QMessageBox::StandardButton button) {
            f.answers->shown.clear();
            f.answers->type(u"a/b"_s);
            f.answers->press(button);
            for (QAction *action : f.window->findChild<QMenu *>(u"projectContextMenu"_s)->actions()) {
                if (action->text() == u"Save as &Template...")
                    action->trigger();
            }
            return QDir(f.installation.path(u"mytemplates/a_b"_s)).entryList(QDir::Files).join(u' ');
        };
        QCOMPARE(save(QMessageBox::No), u"old.c"_s);
        QCOMPARE(f.answers->shown.last(), u"A template with that name exists already. Do you want to replace it?"_s);
        QCOMPARE(save(QMessageBox::Yes), u"main.c project.vnp template.xml"_s);
    }

    void projectIsNotSavedOverItsOwnFiles_data()
    {
        QTest::addColumn<QString>("directory");
        QTest::newRow("in the template") << u"mytemplates/mine/"_s;
        QTest::newRow("below the template") << u"mytemplates/mine/sub/"_s;
    }

    void projectIsNotSavedOverItsOwnFiles()
    {
        QFETCH(QString, directory);
        const TemplateFixture f;
        f.installation.write(u"mytemplates/mine/project.vnp"_s, ProjectText);
        f.installation.write(directory + u"project.vnp"_s, ProjectText);
        f.installation.write(directory + u"main.c"_s, "mine");
        f.window->openWorkspace(f.writeWorkspace(u"t.vnw"_s, {f.installation.path(directory + u"project.vnp"_s)}),
                                false);
        f.answers->press(QMessageBox::Ok);
        QCOMPARE(
            f.saveAsTemplate(u"mine"_s),
            QStringList(u"The template 'mine' cannot be replaced, because an open project lies in its folder. Please "
                        "enter another name."_s));
        QVERIFY(QFileInfo::exists(f.installation.path(directory + u"main.c"_s)));
        QVERIFY(f.saveAsTemplate(u"other"_s).isEmpty());
        QCOMPARE(f.savedFiles(u"other"_s), u"main.c project.vnp template.xml"_s);
    }

    void failedSaveKeepsTheOldTemplateAndLeavesNoOther()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        QVERIFY(f.saveAsTemplate(u"mine"_s).isEmpty());
        QFile::setPermissions(f.path(u"home/fw/main.c"_s), {});
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(f.saveAsTemplate(u"mine"_s).last().startsWith(u"The template could not be saved."_s));
        QCOMPARE(f.savedFiles(u"mine"_s), u"main.c project.vnp template.xml"_s);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(f.saveAsTemplate(u"new"_s).last().startsWith(u"The template could not be saved."_s));
        const QDir templates(f.installation.path(u"mytemplates"_s));
        QCOMPARE(templates.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot), QStringList(u"mine"_s));
    }

    void templateWhoseProjectCannotBeWrittenKeepsTheOldOne()
    {
        const TemplateFixture f;
        f.installation.write(u"mytemplates/mine/old.c"_s, "old");
        const QByteArray large = "<property key='flags'>" + QByteArray(300'000, 'x') + "</property>";
        f.write(u"fw/fw.vnp"_s, "<project><properties currentconfiguration='A'><configuration name='A'>" + large
                                    + "</configuration></properties></project>");
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"t.vnw"_s, {u"fw/fw.vnp"_s}), false));
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{100'000, before.rlim_max};
        signal(SIGXFSZ, SIG_IGN);
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        setrlimit(RLIMIT_FSIZE, &limit);
        const QString message = f.saveAsTemplate(u"mine"_s).last();
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY2(message.startsWith(u"The template could not be saved."_s), qPrintable(message));
        QCOMPARE(f.savedFiles(u"mine"_s), u"old.c"_s);
    }

    void cancelledSaveKeepsTheOldTemplate()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        f.installation.write(u"mytemplates/mine/old.c"_s, "old");
        makeLarge(f.path(u"home/fw/large.bin"_s));
        f.answers->press(QMessageBox::Yes);
        f.answers->meet([](QDialog *dialog) { QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton); });
        const QString shown = f.saveAsTemplate(u"mine"_s).join(u'|');
        QVERIFY2(!shown.contains(u"could not be saved"_s), qPrintable(shown));
        QCOMPARE(f.savedFiles(u"mine"_s), u"old.c"_s);
    }

    void templateWhosePictureIsMissingHasTheCommonOne()
    {
        const TemplateFixture f;
        f.installation.write(
            u"images/projecttemplate.svg"_s,
            "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'><rect width='8' height='8'/></svg>");
        f.addTemplate(u"bare"_s, "<t><icon default='missing.png'/></t>", {{u"project.vnp"_s, ProjectText}});
        f.addTemplate(u"drawn"_s, "<t><icon default='own.svg'/></t>",
                      {{u"project.vnp"_s, ProjectText},
                       {u"own.svg"_s, "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
                                      "<rect width='8' height='8' fill='red'/></svg>"}});
        QImage bare;
        QImage drawn;
        f.answers->meet([&](QDialog *dialog) {
            auto *tree = dialog->findChild<QTreeWidget *>(u"TemplateListView"_s);
            tree->setCurrentItem(tree->findItems(u"group"_s, Qt::MatchExactly).value(0));
            const auto *list = dialog->findChild<QListWidget *>(u"TemplateIconView"_s);
            bare = list->findItems(u"bare"_s, Qt::MatchExactly).value(0)->icon().pixmap(8).toImage();
            drawn = list->findItems(u"drawn"_s, Qt::MatchExactly).value(0)->icon().pixmap(8).toImage();
            dialog->reject();
        });
        f.window->projectNew();
        QVERIFY(!bare.isNull());
        QCOMPARE(bare.pixelColor(4, 4), QColor(Qt::black));
        QCOMPARE(drawn.pixelColor(4, 4), QColor(Qt::red));
    }

    void picturesAndHiddenFilesOfATemplateReachNewProjects()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        for (const QString &each : {u"logo.png"_s, u".gdbinit"_s}) {
            f.write(u"home/fw/"_s + each, "x");
            f.window->activity().currentProject()->addFiles({f.path(u"home/fw/"_s + each)}, nullptr);
        }
        f.answers->press(QMessageBox::Ok);
        QCOMPARE(f.saveAsTemplate(u"mine"_s),
                 QStringList(u"The template does not contain these files. New projects will "
                             "use them where they are now:\n\nlogo.png"_s));
        QCOMPARE(f.savedFiles(u"mine"_s), u".gdbinit main.c project.vnp template.xml"_s);
        QVERIFY(QDir().rename(f.installation.path(u"mytemplates/mine"_s), f.templatePath(u"mine"_s)));
        f.discard();
        QVERIFY(f.create(u"mine"_s, u"copy"_s).isEmpty());
        const Project *project = f.window->activity().currentProject();
        for (const ProjectFile *file : project->files({}, nullptr))
            QVERIFY2(QFileInfo::exists(project->absolutePath(file->path())), qPrintable(file->path()));
        QVERIFY(f.projectFiles().contains(u".gdbinit"_s));
    }

    void whatATemplateLacksIsListed()
    {
        const TemplateFixture f;
        const QByteArray properties = "<project><file path='a.c'/><properties currentconfiguration='A'>"
                                      "<configuration name='A'><property key='includes'>inc;../lib</property>"
                                      "<property key='flags'>-Wall -I../x</property><property key='dots'>a..b x/../y "
                                      "...</property></configuration>"
                                      "<configuration name='B'><property "
                                      "key='includes'>inc;../lib</property></configuration></properties></project>";
        f.write(u"fw/fw.vnp"_s, properties);
        f.window->openWorkspace(f.writeWorkspace(u"t.vnw"_s, {u"fw/fw.vnp"_s}), false);
        f.open(u"fw/saved.c"_s);
        for (const QString &name : {u"fw/a.c"_s, u"other/b.c"_s}) { // the second one does not belong to the template
            f.open(name);
            f.type(u"new"_s);
        }
        f.answers->press(QMessageBox::Ok);
        QStringList notes = f.saveAsTemplate(u"mine"_s).value(0).split(u"\n\n"_s);
        QCOMPARE(notes.size(), 4);
        QVERIFY(notes[0].startsWith(u"These options have paths that lead out of the project's folder."_s));
        QCOMPARE(notes[1], u"flags: -Wall -I../x\nincludes: inc;../lib"_s);
        QVERIFY(notes[2].startsWith(u"The changes of these files are not saved"_s));
        QCOMPARE(notes[3], u"a.c"_s);
    }

    void workspaceClosedWhileTheNameIsAsked()
    {
        const TemplateFixture f;
        f.create(u"plain"_s);
        auto *tree = f.window->findChild<QTreeWidget *>(u"ProjectTree"_s);
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        f.answers->meet([&f](QDialog *dialog) {
            f.discard();
            static_cast<QInputDialog *>(dialog)->setTextValue(u"late"_s);
            dialog->accept();
        });
        Q_EMIT f.window->findChild<Navigator *>()->saveAsTemplate(f.window->activity().currentProject());
        QVERIFY(!QFileInfo::exists(f.installation.path(u"mytemplates"_s)));
    }

    void directoryNamesAreSafe()
    {
        QCOMPARE(directoryNameOf(u" a/b \t c "_s), u"a_b c"_s);
        QCOMPARE(directoryNameOf(u"../x"_s), u"_._x"_s);
    }
};

int main(int argc, char **argv)
{
    if (!becomeOrdinaryUser())
        qFatal("files cannot be made unreadable for this user");
    TemplateCommandsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_templatecommands.moc"
