#include "popupmenu.h"
#include "treefixture.h"
#include <QAbstractButton>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The commands of the tree by menu, clipboard and keyboard.
class ProjectTreeCommandsTest : public QObject, protected TreeFixture
{
    Q_OBJECT

private:
    /// Passes the next modal dialog to @p use, and then cancels it if it is still open.
    template <typename Dialog>
    void whenAsked(const std::function<void(Dialog *)> &use)
    {
        QTimer::singleShot(0, this, [use] {
            const QPointer<Dialog> dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            use(dialog);
            if (dialog && dialog->isVisible())
                dialog->reject();
        });
    }

    QByteArray clipboardText()
    {
        const QMimeData *data = QGuiApplication::clipboard()->mimeData();
        return data ? data->data(u"application/x-tarnprojectitems"_s) : QByteArray();
    }

    /// A new folder "inner", which is listed below @p parent and in the root of the project "lib", where it has a row.
    std::unique_ptr<ProjectFolder> folderInBothProjects(ProjectFolder *parent)
    {
        auto inner = std::make_unique<ProjectFolder>(u"inner"_s);
        parent->addFolder(inner.get(), false);
        m_lib->addFolder(inner.get(), false);
        return inner;
    }

    static QByteArray address(const void *object) { return "0x" + QByteArray::number(quintptr(object), 16) + '\n'; }

    static QMenu *menuUp() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    // Opening

    void onlyFilesAreOpened_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("path");
        QTest::newRow("root") << u"Workspace 'all': 2 project(s)"_s << QString();
        QTest::newRow("project") << u" - fw"_s << QString();
        QTest::newRow("folder") << u"src"_s << QString();
        QTest::newRow("file") << u"boot.py"_s << u"/work/fw/boot.py"_s;
        QTest::newRow("file above the project") << u"above.c"_s << u"/work/common/above.c"_s;
        QTest::newRow("file elsewhere") << u"else.c"_s << u"/opt/else.c"_s;
    }

    void onlyFilesAreOpened()
    {
        QFETCH(QString, text);
        QFETCH(QString, path);
        m_fw->addFile(new ProjectFile(u"above.c"_s, u"../common/above.c"_s));
        m_fw->addFile(new ProjectFile(u"else.c"_s, u"/opt/else.c"_s));
        select(*m_tree, {text});
        const auto emitted = [&](const std::function<void()> &act) {
            m_signals.clear();
            act();
            return m_signals.join(u'|');
        };
        const QString open = path.isEmpty() ? QString() : u"open "_s + path;
        const QString run = path.isEmpty() ? QString() : u"run "_s + path;
        QCOMPARE(emitted([&] { m_tree->openFile(); }), open);
        QCOMPARE(emitted([&] { m_tree->runPyFile(); }), run);
        QCOMPARE(emitted([&] { QTest::keyClick(m_tree, Qt::Key_Return); }), open);
        QCOMPARE(emitted([&] { QTest::keyClick(m_tree, Qt::Key_Enter); }), open);
        m_tree->scrollToItem(row(*m_tree, text));
        QTest::mouseClick(m_tree->viewport(), Qt::LeftButton, {}, centerOf(text));
        QCOMPARE(emitted([&] { QTest::mouseDClick(m_tree->viewport(), Qt::LeftButton, {}, centerOf(text)); }), open);
    }

    void openWithoutASelectionDoesNothing()
    {
        m_tree->openFile();
        m_tree->runPyFile();
        m_tree->showFileProperties();
        QCOMPARE(m_signals, QStringList());
    }

    void propertiesAreShownOfFilesOnly()
    {
        select(*m_tree, {u"src"_s});
        m_signals.clear();
        m_tree->showFileProperties();
        QCOMPARE(m_signals, QStringList());
        select(*m_tree, {u"boot.py"_s});
        m_signals.clear();
        m_tree->showFileProperties();
        QCOMPARE(m_signals, QStringList{u"properties boot.py"_s});
    }

    // Context menus

    void menusHaveTheExpectedItems()
    {
        const auto menu = [&](const QString &name) { return textOf(m_tree->findChild<QMenu *>(name)); };
        QCOMPARE(menu(u"workspaceContextMenu"_s), QString());
        QCOMPARE(menu(u"projectContextMenu"_s), u"projectInsertFilesAlt\n"
                                                "New Folder\n"
                                                "---\n"
                                                "editPaste\n"
                                                "---\n"
                                                "buildBuildAlt\n"
                                                "buildRebuildAlt\n"
                                                "buildCleanAlt\n"
                                                "---\n"
                                                "Set as Acti&ve Project\n"
                                                "&Remove Project from Workspace\n"
                                                "---\n"
                                                "projectPropertiesAlt\n"
                                                "---\n"
                                                "Save as &Template...\n"_s);
        QCOMPARE(menu(u"folderContextMenu"_s), u"Add &Files to Folder...\n"
                                               "&New Folder\n"
                                               "---\n"
                                               "editCut\n"
                                               "editPaste\n"
                                               "editRemove\n"
                                               "Rena&me\n"
                                               "---\n"
                                               "&Properties...\n"_s);
        const QString fileMenu = u"&Open\n"
                                 "---\n"
                                 "buildCompileFile\n"
                                 "---\n"
                                 "editCut\n"
                                 "editRemove\n"
                                 "---\n"
                                 "fileProperties\n"_s;
        QCOMPARE(menu(u"fileContextMenu"_s), fileMenu);
        QCOMPARE(menu(u"pyFileContextMenu"_s), fileMenu + u"---\n&Run\n"_s);
    }

    void missingActionsOfTheUiFileAreOmitted()
    {
        FakeTreeHost bare;
        ProjectTree tree(m_activity, bare);
        QCOMPARE(textOf(tree.findChild<QMenu *>(u"fileContextMenu"_s)), u"&Open\n---\n---\n---\n"_s);
        auto *menu = tree.findChild<PopupMenu *>(u"projectContextMenu"_s);
        QCOMPARE(menu->item(1)->text(), u"Set as Acti&ve Project"_s);
    }

    void kindOfRowSelectsTheMenu_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("menu");
        QTest::newRow("root") << u"Workspace 'all': 2 project(s)"_s << QString();
        QTest::newRow("project") << u" - fw"_s << u"projectContextMenu"_s;
        QTest::newRow("folder") << u"src"_s << u"folderContextMenu"_s;
        QTest::newRow("file") << u"link.ld"_s << u"fileContextMenu"_s;
        QTest::newRow("Python file") << u"boot.py"_s << u"pyFileContextMenu"_s;
        QTest::newRow("upper case") << u"upper.PY"_s << u"fileContextMenu"_s;
        QTest::newRow("more than the extension") << u"more.x.py"_s << u"fileContextMenu"_s;
        QTest::newRow("no extension") << u"py"_s << u"fileContextMenu"_s;
    }

    void kindOfRowSelectsTheMenu()
    {
        QFETCH(QString, text);
        QFETCH(QString, menu);
        fill(m_fw, {u"upper.PY"_s, u"more.x.py"_s, u"py"_s});
        activate();
        m_tree->scrollToItem(row(*m_tree, text));
        const QPoint position = centerOf(text);
        QTest::mouseClick(m_tree->viewport(), Qt::RightButton, {}, position);
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, m_tree->viewport()->mapToGlobal(position));
        QCoreApplication::sendEvent(m_tree->viewport(), &event);
        QCOMPARE(menuUp() ? menuUp()->objectName() : QString(), menu);
        if (menuUp())
            QCOMPARE(menuUp()->pos(), m_tree->viewport()->mapToGlobal(position));
        QCOMPARE(selected(*m_tree), QStringList{text});
    }

    void menuIsNotShownBelowTheRows()
    {
        m_tree->slotContextMenuRequested(nullptr, QPoint(10, 10));
        QVERIFY(!menuUp());
    }

    void onlyAnActiveProjectCanBecomeCurrent()
    {
        QAction *setActive = m_tree->findChild<PopupMenu *>(u"projectContextMenu"_s)->item(1);
        m_fw->setActive(false);
        m_tree->slotContextMenuRequested(row(*m_tree, u" - fw"_s), QPoint());
        QVERIFY(!setActive->isEnabled());
        menuUp()->close();
        m_fw->setActive(true);
        m_tree->slotContextMenuRequested(row(*m_tree, u" - fw"_s), QPoint());
        QVERIFY(setActive->isEnabled());
    }

    void menuOfAProjectMakesItCurrent()
    {
        select(*m_tree, {u" - fw"_s});
        m_tree->findChild<PopupMenu *>(u"projectContextMenu"_s)->item(1)->trigger();
        QCOMPARE(m_workspace->currentProject(), m_fw);
        select(*m_tree, {u"math"_s});
        m_tree->setActiveProject();
        QCOMPARE(m_workspace->currentProject(), m_fw);
    }

    void removingAProjectAsksForConfirmation_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("OK") << int(QMessageBox::Ok);
        QTest::newRow("Cancel") << int(QMessageBox::Cancel);
    }

    void removingAProjectAsksForConfirmation()
    {
        QFETCH(int, answer);
        select(*m_tree, {u" - fw"_s});
        whenAsked<QMessageBox>([&](QMessageBox *box) {
            QCOMPARE(box->text(), u"Are you sure that you want to remove the project?"_s);
            QCOMPARE(box->windowTitle(), u"Varnel"_s);
            QCOMPARE(box->icon(), QMessageBox::Information);
            QCOMPARE(box->standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
            box->button(QMessageBox::StandardButton(answer))->click();
        });
        m_tree->removeProject();
        QCOMPARE(m_workspace->count(), answer == QMessageBox::Ok ? 1 : 2);
        QCOMPARE(m_workspace->project(0)->name(), answer == QMessageBox::Ok ? u"lib"_s : u"fw"_s);
    }

    void removingNoProjectFailsAnAssertion()
    {
        expectAssert(u"project"_s);
        m_tree->removeProject();
    }

    void workspaceMayCloseWhileTheQuestionIsOpen()
    {
        select(*m_tree, {u" - fw"_s});
        whenAsked<QMessageBox>([&](QMessageBox *box) {
            dropWorkspace();
            box->button(QMessageBox::Ok)->click();
        });
        m_tree->removeProject();
        QCOMPARE(shown(*m_tree), QString());
    }

    // Folders

    void newFolderIsFirstAndIsRenamedAtOnce_data()
    {
        QTest::addColumn<QString>("parent");
        QTest::addColumn<QString>("expected");
        QTest::newRow("in a project") << u" - fw"_s << u"  -  - fw\n      New Folder\n    + src\n"_s;
        QTest::newRow("in an empty folder") << u"doc"_s << u"    - doc\n        New Folder\n      boot.py\n"_s;
        QTest::newRow("in a closed folder")
            << u"math"_s << u"    - math\n        New Folder\n      + fixed\n        sin.c\n"_s;
    }

    void newFolderIsFirstAndIsRenamedAtOnce()
    {
        QFETCH(QString, parent);
        QFETCH(QString, expected);
        activate();
        select(*m_tree, {parent});
        m_tree->createNewFolder();
        QVERIFY2(shown(*m_tree).contains(expected), qPrintable(shown(*m_tree)));
        QCOMPARE(selected(*m_tree), QStringList{u"New Folder"_s});
        QCOMPARE(m_tree->renameEdit()->text(), u"New Folder"_s);
        QVERIFY(m_tree->renameEdit()->hasFocus());
        QTest::keyClicks(m_tree->renameEdit(), u"net"_s);
        QTest::keyClick(m_tree->renameEdit(), Qt::Key_Return);
        QVERIFY(shown(*m_tree).contains(QString(expected).replace(u"New Folder"_s, u"net"_s)));
        QVERIFY(treeOf(*m_fw).contains(u"net/"_s) || treeOf(*m_lib).contains(u"net/"_s));
        QCOMPARE(selected(*m_tree), QStringList{u"net"_s});
        QVERIFY(m_tree->hasFocus());
    }

    void newFolderWithoutAParentFailsAnAssertion_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing selected") << QString();
        QTest::newRow("root") << u"Workspace 'all': 2 project(s)"_s;
        QTest::newRow("file") << u"boot.py"_s;
    }

    void newFolderWithoutAParentFailsAnAssertion()
    {
        QFETCH(QString, text);
        if (!text.isEmpty())
            select(*m_tree, {text});
        const QString before = shown(*m_tree);
        expectAssert(u"selectedItem && (selectedItem->rtti() == FolderRTTI || selectedItem->rtti() == ProjectRTTI)"_s);
        m_tree->createNewFolder();
        QCOMPARE(shown(*m_tree), before);
    }

    void renamingOtherThanAFolderFailsAnAssertion_data() { newFolderWithoutAParentFailsAnAssertion_data(); }

    void renamingOtherThanAFolderFailsAnAssertion()
    {
        QFETCH(QString, text);
        if (!text.isEmpty())
            select(*m_tree, {text});
        expectAssert(u"selectedItem && selectedItem->rtti() == FolderRTTI"_s);
        m_tree->renameFolder();
        QVERIFY(!m_tree->renameEdit());
    }

    void renamingSetsOrKeepsTheName_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("name");
        QTest::newRow("a new name") << u"source"_s << int(Qt::Key_Return) << u"source"_s;
        QTest::newRow("no name keeps the old one") << QString() << int(Qt::Key_Return) << u"src"_s;
        QTest::newRow("escaped") << u"source"_s << int(Qt::Key_Escape) << u"src"_s;
        QTest::newRow("focus lost") << u"source"_s << int(Qt::Key_Tab) << u"src"_s;
    }

    void renamingSetsOrKeepsTheName()
    {
        QFETCH(QString, text);
        QFETCH(int, key);
        QFETCH(QString, name);
        activate();
        ProjectFolder *folder = folderIn(m_fw->folders(), u"src"_s);
        select(*m_tree, {u"src"_s});
        m_tree->renameFolder();
        m_tree->renameEdit()->setText(text);
        QTest::keyClick(m_tree->renameEdit(), Qt::Key(key));
        QVERIFY(!m_tree->renameEdit());
        QCOMPARE(folder->name(), name);
        QVERIFY(row(*m_tree, name));
    }

    void losingTheFocusKeepsTheOldName()
    {
        activate();
        select(*m_tree, {u"src"_s});
        QTest::keyClick(m_tree, Qt::Key_F2);
        QTest::keyClicks(m_tree->renameEdit(), u"source"_s);
        m_tree->setFocus();
        QVERIFY(row(*m_tree, u"src"_s));
        QCOMPARE(m_fw->folders().constFirst()->name(), u"src"_s);
    }

    void rebuildEndsRenaming()
    {
        activate();
        select(*m_tree, {u"src"_s});
        m_tree->renameFolder();
        m_tree->renameEdit()->setText(u"source"_s);
        const QPointer<QLineEdit> edit = m_tree->renameEdit();
        m_tree->workspaceChanged();
        QVERIFY(!m_tree->renameEdit());
        QVERIFY(row(*m_tree, u"src"_s));
        QVERIFY(m_tree->hasFocus());
        QTRY_VERIFY(!edit);
    }

    void enteredExtensionsAreSet_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("split") << u"c;cpp;h"_s << QStringList{u"c"_s, u"cpp"_s, u"h"_s};
        QTest::newRow("empty parts dropped") << u";c;;h;"_s << QStringList{u"c"_s, u"h"_s};
        QTest::newRow("cleared") << QString() << QStringList();
        QTest::newRow("blanks") << u" c ; h;  ; cpp "_s << QStringList{u"c"_s, u"h"_s, u"cpp"_s};
    }

    void enteredExtensionsAreSet()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, expected);
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        src->setExtensions({u"s"_s, u"asm"_s});
        select(*m_tree, {u"src"_s});
        whenAsked<QInputDialog>([&](QInputDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"inputDialog"_s);
            QCOMPARE(dialog->windowTitle(), u"Varnel"_s);
            QCOMPARE(dialog->labelText(), u"Enter file extensions for this folder:"_s);
            QCOMPARE(dialog->textValue(), u"s;asm"_s);
            dialog->setTextValue(text);
            dialog->accept();
        });
        m_tree->folderProperties();
        QCOMPARE(src->extensions(), expected);
    }

    void cancelKeepsTheExtensions()
    {
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        src->setExtensions({u"s"_s});
        select(*m_tree, {u"src"_s});
        whenAsked<QInputDialog>([](QInputDialog *dialog) {
            dialog->setTextValue(u"c"_s);
            dialog->reject();
        });
        m_tree->folderProperties();
        QCOMPARE(src->extensions(), QStringList{u"s"_s});
    }

    void onlyFoldersHaveExtensions()
    {
        select(*m_tree, {u"boot.py"_s});
        m_tree->folderProperties(); // shows nothing
        QVERIFY(!QApplication::activeModalWidget());
    }

    void folderMayBeDeletedWhileItsDialogIsOpen()
    {
        select(*m_tree, {u"doc"_s});
        whenAsked<QInputDialog>([&](QInputDialog *dialog) {
            ProjectFolder *folder = folderIn(m_fw->folders(), u"doc"_s);
            m_fw->removeFolder(folder); // as a script may do
            delete folder;
            dialog->accept();
        });
        m_tree->folderProperties();
        QVERIFY(!row(*m_tree, u"doc"_s));
    }

    void filesAreAddedToTheSelectedFolder()
    {
        QTemporaryDir directory;
        const QString path = QDir(directory.path()).canonicalPath();
        QVERIFY(QDir(path).mkpath(u"inner"_s));
        writeFile(path + u"/inner/one.c"_s, "1");
        writeFile(path + u"/inner/two.h"_s, "2");
        m_window->directories().setDirectory(u"Files"_s, path + u"/inner"_s);
        folderIn(m_fw->folders(), u"src"_s)->setExtensions({u"c"_s}); // would take one.c
        select(*m_tree, {u"doc"_s});
        whenAsked<QFileDialog>([&](QFileDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"addFilesDialog"_s);
            QCOMPARE(dialog->windowTitle(), u"Add Files to Folder"_s);
            QCOMPARE(dialog->nameFilters(), (QStringList{u"Source Files (*.c *.h)"_s, u"All Files (*.*)"_s}));
            QCOMPARE(dialog->directory().path(), path + u"/inner"_s);
            QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFiles);
            auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
            edit->setText(u"\"one.c\" \"two.h\""_s);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        m_window->directories().setDirectory(u"Files"_s, path + u"/inner"_s);
        m_tree->addFilesToFolder();
        QCOMPARE(m_window->directory(), path + u"/inner"_s);
        QVERIFY(shown(*m_tree).contains(u"    - doc\n        one.c\n        two.h\n"_s));
        const QString stored = folderIn(m_fw->folders(), u"doc"_s)->files().constFirst()->path();
        QCOMPARE(m_fw->absolutePath(stored), path + u"/inner/one.c"_s);
    }

    void directoryOfTheFirstFileIsRemembered()
    {
        QTemporaryDir directory;
        const QString path = QDir(directory.path()).canonicalPath();
        QVERIFY(QDir(path).mkpath(u"other"_s));
        writeFile(path + u"/other/one.c"_s, "1");
        m_window->directories().setDirectory(u"Files"_s, path);
        select(*m_tree, {u"doc"_s});
        whenAsked<QFileDialog>([&](QFileDialog *dialog) {
            auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
            edit->setText(path + u"/other/one.c"_s);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        m_tree->addFilesToFolder();
        QCOMPARE(m_window->directory(), path + u"/other"_s);
    }

    void selectingNoFilesChangesNothing()
    {
        m_window->directories().setDirectory(u"Files"_s, u"/tmp"_s);
        select(*m_tree, {u"doc"_s});
        whenAsked<QFileDialog>([](QFileDialog *dialog) { dialog->reject(); });
        m_tree->addFilesToFolder();
        QCOMPARE(m_window->directory(), u"/tmp"_s);
        QVERIFY(folderIn(m_fw->folders(), u"doc"_s)->files().isEmpty());
    }

    void filesAreAddedToFoldersOnly_data()
    {
        QTest::addColumn<QString>("text");
        for (const QString &text : {u"Workspace 'all': 2 project(s)"_s, u" - fw"_s, u"boot.py"_s})
            QTest::newRow(qPrintable(text)) << text;
    }

    void filesAreAddedToFoldersOnly()
    {
        QFETCH(QString, text);
        select(*m_tree, {text});
        expectAssert(u"selectedItem && (selectedItem->rtti() == FolderRTTI)"_s);
        m_tree->addFilesToFolder();
    }

    // Clipboard

    void cutMovesTheItemsToTheClipboard()
    {
        open(*m_tree, {u"math"_s});
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        ProjectFile *link = fileIn(m_fw->rootFiles(), u"link.ld"_s);
        ProjectFile *sin = folderIn(m_lib->folders(), u"math"_s)->files().constFirst();
        select(*m_tree, {u"sin.c"_s, u"link.ld"_s, u"src"_s});
        m_signals.clear();
        m_tree->cut();
        QCOMPARE(clipboardText(),
                 QByteArray("folder\n" + address(src) + "file\n" + address(link) + "file\n" + address(sin)));
        QCOMPARE(QGuiApplication::clipboard()->mimeData()->formats(), QStringList{u"application/x-tarnprojectitems"_s});
        QCOMPARE(treeOf(*m_fw), u"doc/ \nboot.py\n"_s);
        QCOMPARE(treeOf(*m_lib), u"math/ \n  fixed/ \n    q15.c\n"_s);
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "      doc\n"
                                 "      boot.py\n"
                                 "  - * - lib*\n"
                                 "    - math\n"
                                 "      + fixed\n"_s);
        QCOMPARE(m_signals, (QStringList{u"no cut"_s, u"no paste"_s, u"file "_s}));
        QVERIFY(m_fw->isModified());
        delete src;
        delete link;
        delete sin;
    }

    void cutItemsAreNotInTheProject()
    {
        QTemporaryDir directory;
        const QString vnp = writeFile(directory.filePath(u"p.vnp"_s),
                                      "<project><folder name='src'><file path='a.c'/></folder></project>");
        const QString onDisk = writeFile(directory.filePath(u"a.c"_s), "int a;");
        auto *project = new Project({}, {});
        QVERIFY(project->load(vnp));
        m_workspace->addProject(project);
        const std::unique_ptr<ProjectFolder> other(folderIn(m_fw->folders(), u"src"_s));
        m_fw->removeFolder(other.get()); // one "src" remains in the tree
        ProjectFolder *src = project->folders().constFirst();
        select(*m_tree, {u"src"_s});
        m_tree->cut();
        QVERIFY(project->save());
        QVERIFY(!bytesOf(vnp).contains("src"));
        QCOMPARE(bytesOf(onDisk), QByteArray("int a;"));
        QCOMPARE(src->name(), u"src"_s); // it still exists
        delete src;
    }

    void pastedItemsAreInsertedFirst_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("fw");
        QTest::addColumn<QString>("lib");
        QTest::newRow("into a project") << u" - lib"_s << u"src/ \n  main.c\n  adc.c\nboot.py\n"_s
                                        << u"doc/ \nmath/ \n  fixed/ \n    q15.c\n  sin.c\n../fw/link.ld\n"_s;
        QTest::newRow("into a folder") << u"math"_s << u"src/ \n  main.c\n  adc.c\nboot.py\n"_s
                                       << u"math/ \n  doc/ \n  fixed/ \n    q15.c\n  sin.c\n  ../fw/link.ld\n"_s;
        QTest::newRow("back") << u" - fw"_s << u"doc/ \nsrc/ \n  main.c\n  adc.c\nboot.py\nlink.ld\n"_s
                              << u"math/ \n  fixed/ \n    q15.c\n  sin.c\n"_s;
    }

    void pastedItemsAreInsertedFirst()
    {
        QFETCH(QString, target);
        QFETCH(QString, fw);
        QFETCH(QString, lib);
        select(*m_tree, {u"doc"_s, u"link.ld"_s});
        m_tree->cut();
        select(*m_tree, {target});
        m_signals.clear();
        m_tree->paste();
        QCOMPARE(treeOf(*m_fw), fw);
        QCOMPARE(treeOf(*m_lib), lib);
        QVERIFY(clipboardText().isEmpty());
        QCOMPARE(m_signals.at(1), u"no paste"_s);
        QCOMPARE(m_signals.count(), 3);
        const QString after = shown(*m_tree);
        m_tree->paste();
        QCOMPARE(shown(*m_tree), after);
    }

    void pastingWithoutAProjectFailsAnAssertion_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing selected") << QString();
        QTest::newRow("root") << u"Workspace 'all': 2 project(s)"_s;
    }

    void pastingWithoutAProjectFailsAnAssertion()
    {
        QFETCH(QString, text);
        select(*m_tree, {u"link.ld"_s});
        m_tree->cut();
        m_tree->clearSelection();
        if (!text.isEmpty())
            select(*m_tree, {text});
        expectAssert(u"project"_s);
        m_tree->paste();
        QVERIFY(!clipboardText().isEmpty());
        select(*m_tree, {u" - fw"_s});
        m_tree->paste();
        QVERIFY(row(*m_tree, u"link.ld"_s));
    }

    void dataOfAnotherProcessIsNotPasted()
    {
        auto *data = new QMimeData;
        data->setData(u"application/x-tarnprojectitems"_s, "file\n0x1234\n");
        QGuiApplication::clipboard()->setMimeData(data);
        select(*m_tree, {u"src"_s});
        QVERIFY(m_signals.contains(u"no paste"_s));
        m_tree->paste();
        QCOMPARE(folderIn(m_fw->folders(), u"src"_s)->files().size(), 2);
    }

    void pastedFilesNameTheSameFiles()
    {
        ProjectFile *link = fileIn(m_fw->rootFiles(), u"link.ld"_s);
        ProjectFile *adc = fileIn(folderIn(m_fw->folders(), u"src"_s)->files(), u"adc.c"_s);
        select(*m_tree, {u"src"_s, u"link.ld"_s});
        m_tree->cut();
        m_workspace->removeProject(m_fw); // the paths are relative to a project that is gone
        select(*m_tree, {u" - lib"_s});
        m_tree->paste();
        QCOMPARE(link->path(), u"../fw/link.ld"_s);
        QCOMPARE(adc->path(), u"../fw/adc.c"_s);
    }

    void cutFolderIsNotPastedIntoItsOwnSubfolder()
    {
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        const std::unique_ptr<ProjectFolder> inner = folderInBothProjects(src);
        select(*m_tree, {u"src"_s});
        m_tree->cut();
        m_signals.clear();
        select(*m_tree, {u"inner"_s});
        QVERIFY(m_signals.contains(u"no paste"_s));
        QVERIFY(!m_signals.contains(u"paste"_s));
        m_tree->paste();
        QVERIFY(!clipboardText().isEmpty());
        select(*m_tree, {u" - fw"_s});
        m_tree->paste();
        QCOMPARE(treeOf(*m_fw), u"src/ \n  inner/ \n  main.c\n  adc.c\ndoc/ \nlink.ld\nboot.py\n"_s);
        src->removeFolder(inner.get());
        m_lib->removeFolder(inner.get());
    }

    void cutFolderThatIsDeletedInAnotherProjectIsNotPasted()
    {
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        std::unique_ptr<ProjectFolder> inner = folderInBothProjects(src);
        select(*m_tree, {u"inner"_s, u"link.ld"_s});
        m_tree->cut();
        expectAssert(u"m_folderItems[folder]"_s); // its only row is gone
        src->removeFolder(inner.get());
        inner.reset();
        select(*m_tree, {u" - lib"_s});
        m_tree->paste();
        QCOMPARE(treeOf(*m_lib), u"math/ \n  fixed/ \n    q15.c\n  sin.c\n../fw/link.ld\n"_s);
    }

    void fileCutWithItsFolderIsRemovedFromIt()
    {
        open(*m_tree, {u"src"_s});
        select(*m_tree, {u"src"_s, u"adc.c"_s});
        m_tree->cut();
        select(*m_tree, {u"doc"_s});
        m_tree->paste();
        QCOMPARE(treeOf(*m_fw), u"doc/ \n  src/ \n    main.c\n  adc.c\nlink.ld\nboot.py\n"_s);
        open(*m_tree, {u"src"_s});
        QVERIFY(shown(*m_tree).contains(u"    - doc\n      - src\n          main.c\n        adc.c\n"_s));
    }

    void selectedProjectAddsALineWithItsAddressOnly()
    {
        ProjectFile *link = fileIn(m_fw->rootFiles(), u"link.ld"_s);
        select(*m_tree, {u"Workspace 'all': 2 project(s)"_s, u" - fw"_s, u"link.ld"_s});
        const ProjectItemDrag drag(*m_tree);
        QCOMPARE(drag.encodedData(u"application/x-tarnprojectitems"_s),
                 QByteArray(address(m_fw) + "file\n" + address(link)));
        QCOMPARE(drag.encodedData(u"text/plain"_s), QByteArray());
        QCOMPARE(drag.formats(), QStringList{u"application/x-tarnprojectitems"_s});
    }

    void selectedProjectShiftsThePairsOfLines_data()
    {
        QTest::addColumn<QStringList>("select");
        QTest::addColumn<QStringList>("read");
        QTest::newRow("no project") << QStringList{u"src"_s, u"link.ld"_s} << QStringList{u"src"_s, u"link.ld"_s};
        QTest::newRow("project first") << QStringList{u" - fw"_s, u"link.ld"_s} << QStringList();
        QTest::newRow("project last") << QStringList{u"link.ld"_s, u" - lib"_s} << QStringList{u"link.ld"_s};
        QTest::newRow("project between") << QStringList{u"link.ld"_s, u" - lib"_s, u"math"_s}
                                         << QStringList{u"link.ld"_s};
        QTest::newRow("a second project corrects the pairs")
            << QStringList{u" - fw"_s, u"src"_s, u" - lib"_s, u"math"_s} << QStringList{u"math"_s};
    }

    void selectedProjectShiftsThePairsOfLines()
    {
        QFETCH(QStringList, select);
        QFETCH(QStringList, read);
        ::select(*m_tree, select);
        QStringList names;
        for (const ProjectItemDrag::Item &item : ProjectItemDrag::items(ProjectItemDrag(*m_tree)))
            names += item.folder ? item.folder->name() : item.file->name();
        QCOMPARE(names, read);
    }

    void removingAsksFirst_data()
    {
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QString>("question");
        const QString end = u" from the project?\n\nNo file is deleted on disk."_s;
        QTest::newRow("file") << QStringList{u"boot.py"_s}
                              << u"Are you sure that you want to remove the file 'boot.py' from the project?\n\nIt is "
                                 "not deleted on disk."_s;
        QTest::newRow("empty folder") << QStringList{
            u"doc"_s} << u"Are you sure that you want to remove the empty folder 'doc' from the project?"_s;
        QTest::newRow("folder with files")
            << QStringList{u"src"_s}
            << u"Are you sure that you want to remove the folder 'src' with its contents"_s + end;
        QTest::newRow("several items") << QStringList{u"boot.py"_s, u"doc"_s}
                                       << u"Are you sure that you want to remove the selected items (2)"_s + end;
    }

    void removingAsksFirst()
    {
        QFETCH(const QStringList, items);
        QFETCH(const QString, question);
        const QString before = treeOf(*m_fw);
        select(*m_tree, items);
        whenAsked<QMessageBox>([&](QMessageBox *box) {
            QCOMPARE(box->text(), question);
            box->button(QMessageBox::Cancel)->click();
        });
        m_tree->remove();
        QCOMPARE(treeOf(*m_fw), before);
        confirming([&] { m_tree->remove(); });
        QVERIFY(treeOf(*m_fw) != before);
    }

    void workspaceMayCloseWhileTheQuestionAboutItemsIsOpen()
    {
        select(*m_tree, {u"src"_s});
        whenAsked<QMessageBox>([&](QMessageBox *box) {
            dropWorkspace();
            box->button(QMessageBox::Ok)->click();
        });
        m_tree->remove();
        QVERIFY(!m_workspace);
    }

    void returnOpensAndClosesAFolder()
    {
        select(*m_tree, {u"src"_s});
        QTest::keyClick(m_tree, Qt::Key_Return);
        QVERIFY(row(*m_tree, u"adc.c"_s));
        QTest::keyClick(m_tree, Qt::Key_Return);
        QVERIFY(!row(*m_tree, u"adc.c"_s));
    }

    void removedItemsDisappear()
    {
        open(*m_tree, {u"math"_s});
        select(*m_tree, {u"src"_s, u"boot.py"_s, u"fixed"_s, u"sin.c"_s});
        m_signals.clear();
        confirming([&] { m_tree->remove(); });
        QCOMPARE(treeOf(*m_fw), u"doc/ \nlink.ld\n"_s);
        QCOMPARE(treeOf(*m_lib), u"math/ \n"_s);
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "      doc\n"
                                 "      link.ld\n"
                                 "  - * - lib*\n"
                                 "      math\n"_s);
        QCOMPARE(m_signals.last(3), (QStringList{u"no cut"_s, u"no paste"_s, u"file "_s}));
        QVERIFY(clipboardText().isEmpty());
    }

    void rowInThePlaceOfARemovedOneBecomesCurrent_data()
    {
        QTest::addColumn<QStringList>("removed"); // the last one was current
        QTest::addColumn<QString>("current");
        QTest::newRow("next") << QStringList{u"adc.c"_s} << u"main.c"_s;
        QTest::newRow("last") << QStringList{u"main.c"_s} << u"adc.c"_s;
        QTest::newRow("all") << QStringList{u"main.c"_s, u"adc.c"_s} << u"src"_s;
        QTest::newRow("folder") << QStringList{u"src"_s} << u"doc"_s;
        QTest::newRow("with its folder") << QStringList{u"src"_s, u"adc.c"_s} << u"Workspace 'all': 2 project(s)"_s;
    }

    void rowInThePlaceOfARemovedOneBecomesCurrent()
    {
        QFETCH(const QStringList, removed);
        QFETCH(const QString, current);
        open(*m_tree, {u"src"_s});
        select(*m_tree, removed);
        confirming([&] { m_tree->remove(); });
        QCOMPARE(m_tree->currentItem()->text(0), current);
        QCOMPARE(selected(*m_tree), QStringList());
    }

    void currentRowStaysWhenOthersAreRemoved()
    {
        select(*m_tree, {u"boot.py"_s});
        m_tree->setCurrentItem(row(*m_tree, u"doc"_s), 0, QItemSelectionModel::NoUpdate);
        confirming([&] { m_tree->remove(); });
        QCOMPARE(m_tree->currentItem()->text(0), u"doc"_s);
    }

    void folderAndItsSelectedContentsAreDeletedOnce()
    {
        open(*m_tree, {u"math"_s, u"fixed"_s});
        select(*m_tree, {u"math"_s, u"fixed"_s, u"q15.c"_s, u"sin.c"_s});
        confirming([&] { m_tree->remove(); });
        QCOMPARE(treeOf(*m_lib), QString());
    }

    // Keyboard

    void arrowsOpenAndCloseFolders()
    {
        activate();
        select(*m_tree, {u"src"_s});
        QTest::keyClick(m_tree, Qt::Key_Right);
        QVERIFY(row(*m_tree, u"adc.c"_s));
        QTest::keyClick(m_tree, Qt::Key_Right);
        QCOMPARE(selected(*m_tree), QStringList{u"adc.c"_s});
        QTest::keyClick(m_tree, Qt::Key_Left);
        QCOMPARE(selected(*m_tree), QStringList{u"src"_s});
        QTest::keyClick(m_tree, Qt::Key_Left);
        QVERIFY(!row(*m_tree, u"adc.c"_s));
        select(*m_tree, {u"math"_s});
        QTest::keyClick(m_tree, Qt::Key_Asterisk);
        QVERIFY(row(*m_tree, u"q15.c"_s));
    }

    void keyboardSelectsSeveralItems()
    {
        activate();
        select(*m_tree, {u"src"_s});
        QTest::keyClick(m_tree, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(selected(*m_tree), (QStringList{u"src"_s, u"doc"_s}));
        QTest::keyClick(m_tree, Qt::Key_Down, Qt::ControlModifier);
        QTest::keyClick(m_tree, Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(selected(*m_tree), (QStringList{u"src"_s, u"doc"_s}));
        QTest::keyClick(m_tree, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(selected(*m_tree), (QStringList{u"src"_s, u"doc"_s, u"link.ld"_s}));
        QTest::keyClick(m_tree, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(selected(*m_tree), (QStringList{u"src"_s, u"doc"_s}));
    }

    void keyboardCutsAndPastesItems()
    {
        activate();
        select(*m_tree, {u"boot.py"_s});
        QTest::keyClick(m_tree, Qt::Key_X, Qt::ControlModifier);
        select(*m_tree, {u"doc"_s});
        QTest::keyClick(m_tree, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(treeOf(*m_fw), u"src/ \n  main.c\n  adc.c\ndoc/ \n  boot.py\nlink.ld\n"_s);
    }

    void deleteKeyTriggersTheSharedAction()
    {
        activate();
        select(*m_tree, {u"boot.py"_s});
        confirming([&] { QTest::keyClick(m_tree, Qt::Key_Delete); });
        QVERIFY(!row(*m_tree, u"boot.py"_s));
        m_window->action(u"editRemove"_s)->setEnabled(false);
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier, u"\x7f"_s);
        QCoreApplication::sendEvent(m_tree, &event);
        QVERIFY(!event.isAccepted());
    }

    void copyDoesNotReplaceCutItemsOnTheClipboard()
    {
        activate();
        select(*m_tree, {u"boot.py"_s});
        m_tree->cut();
        select(*m_tree, {u"link.ld"_s});
        QTest::keyClick(m_tree, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!clipboardText().isEmpty());
        select(*m_tree, {u" - fw"_s});
        m_tree->paste();
    }

    void keyOpensTheContextMenu_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("menu key") << int(Qt::Key_Menu) << int(Qt::NoModifier);
        QTest::newRow("Shift+F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier);
    }

    void keyOpensTheContextMenu()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        activate();
        select(*m_tree, {u"src"_s});
        QTest::keyClick(m_tree, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QVERIFY(menuUp());
        QCOMPARE(menuUp()->objectName(), u"folderContextMenu"_s);
        QTest::keyClick(menuUp(), Qt::Key_M); // Rena&me
        QTRY_VERIFY(m_tree->renameEdit());
        QTRY_VERIFY(m_tree->renameEdit()->hasFocus());
        QTest::keyClicks(m_tree->renameEdit(), u"source"_s);
        QTest::keyClick(m_tree->renameEdit(), Qt::Key_Return);
        QVERIFY(row(*m_tree, u"source"_s));
    }

    void manyFilesAddedOneByOneAreSorted()
    {
        QStringList names;
        for (int i = 0; i < 2000; ++i)
            names += u"%1.c"_s.arg((i * 7919) % 2000, 4, 10, QChar(u'0'));
        fill(m_lib, names);
        names.sort();
        const ProjectTreeItem *item = row(*m_tree, u" - lib"_s);
        for (int i = 0; i < names.size(); ++i)
            QCOMPARE(item->child(i + 1)->text(0), names[i]);
    }
};

QTEST_MAIN(ProjectTreeCommandsTest)
#include "tst_projecttreecommands.moc"
