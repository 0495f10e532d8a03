#include "dialoganswers.h"
#include "dialogprobe.h"
#include "newprojectdialog.h"
#include "ordinaryuser.h"
#include "projecttreeitem.h"
#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

/// The dialog that asks for template, name and place of a new project.
class NewProjectDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<DialogAnswers> m_answers;
    std::unique_ptr<NewProjectDialog> m_dialog;
    QStringList m_pictures; ///< those that were asked for: "file or fallback"

    QString path(const QString &name) const { return m_root->filePath(name); }

    void write(const QString &name, const QByteArray &text = {}) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// Two folders: "boards" with two templates and a folder, and "pc" with one.
    void writeTemplates() const
    {
        write(u"boards/template.xml"_s, "<t type='folder'><displayname>Boards</displayname><description>For boards."
                                        "</description><icon default='b.png' open='o.png'/></t>");
        write(
            u"boards/blink/template.xml"_s,
            "<t><displayname>Blink</displayname><description>A <b>lamp</b>.</description><icon default='i.png'/></t>");
        write(u"boards/plain/project.vnp"_s);
        write(u"boards/more/template.xml"_s, "<t type='folder'/>");
        write(u"pc/hello/project.vnp"_s);
    }

    void open(const QStringList &folders = {u"boards"_s, u"pc"_s}, const QStringList &recent = {})
    {
        QStringList paths;
        for (const QString &each : folders)
            paths.append(path(each));
        QList<ProjectTemplate> used;
        for (const QString &each : recent)
            used.append(readTemplate(path(each)));
        QDir().mkpath(path(u"home"_s));
        m_dialog = std::make_unique<NewProjectDialog>(
            NewProjectChoices{findTemplateFolders(paths), used, path(u"home"_s),
                              [this](const QString &directory, const QString &file, const QString &fallback) {
                                  m_pictures.append(QDir(directory).dirName() + u':' + file + u'/' + fallback);
                                  return QIcon();
                              }},
            nullptr, u"newProjectDialog"_s);
        showActive(*m_dialog);
    }

    template <typename T>
    T *child(const char *name) const
    {
        return m_dialog->findChild<T *>(QString::fromLatin1(name));
    }
    QTreeWidget *tree() const { return child<QTreeWidget>("TemplateListView"); }
    QListWidget *icons() const { return child<QListWidget>("TemplateIconView"); }
    QLineEdit *nameEdit() const { return child<QLineEdit>("NameLineEdit"); }
    QLineEdit *locationEdit() const { return child<QLineEdit>("LocationLineEdit"); }
    QString description() const { return child<QLabel>("DescriptionLabel")->text(); }
    QString placeText() const { return child<QLabel>("LocationLabel")->text(); }
    QString focus() const { return m_dialog->focusWidget() ? m_dialog->focusWidget()->objectName() : QString(); }

    /// The visible rows of the tree, children in brackets, then the icons, the chosen ones with a star.
    QString shown() const
    {
        QStringList names;
        for (int i = 0; i < icons()->count(); ++i)
            names += icons()->item(i)->text() + (icons()->item(i)->isSelected() ? u"*"_s : QString());
        QStringList rows;
        for (int i = 0; i < tree()->topLevelItemCount(); ++i)
            rows += textOf(tree()->topLevelItem(i));
        return rows.join(u' ') + u" | "_s + names.join(u' ');
    }

    static QString textOf(const QTreeWidgetItem *item)
    {
        QStringList children;
        for (int i = 0; i < item->childCount(); ++i)
            children += textOf(item->child(i));
        return item->text(0) + (children.isEmpty() ? QString() : u'(' + children.join(u' ') + u')');
    }

    void chooseFirstTemplate() const { icons()->setCurrentRow(0); }
    void enterName(const QString &name) const
    {
        nameEdit()->setFocus();
        nameEdit()->selectAll();
        nameEdit()->insert(name); // the test keyboard has no letters beyond ASCII
    }
    void pressOk() const { QTest::mouseClick(child<QAbstractButton>("OKButton"), Qt::LeftButton); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_root = std::make_unique<QTemporaryDir>();
        m_answers = std::make_unique<DialogAnswers>();
        m_pictures.clear();
        writeTemplates();
    }
    void cleanup()
    {
        QVERIFY(m_answers->allGiven());
        m_dialog.reset();
        m_answers.reset();
    }

    void textsAndInitialState()
    {
        open();
        QCOMPARE(m_dialog->windowTitle(), u"New Project"_s);
        QCOMPARE(m_dialog->objectName(), u"newProjectDialog"_s);
        const QStringList labels = textsOf<QLabel>(*m_dialog);
        for (const QString &text : {u"Select a project type:"_s, u"Name:"_s, u"Location:"_s})
            QVERIFY2(labels.contains(text), qPrintable(text));
        const QStringList buttons = textsOf<QAbstractButton>(*m_dialog);
        for (const QString &text : {u"&Browse..."_s, u"Create project folder"_s, u"Create new workspace"_s,
                                    u"Add to current workspace"_s, u"OK"_s, u"Cancel"_s})
            QVERIFY2(buttons.contains(text), qPrintable(text));
        QCOMPARE(nameEdit()->text(), u"<enter name>"_s);
        QCOMPARE(locationEdit()->text(), path(u"home"_s));
        QVERIFY(child<QGroupBox>("WorkspaceButtonGroup"));
        QVERIFY(child<QCheckBox>("ProjectFolderCheckBox")->isChecked());
        QVERIFY(child<QRadioButton>("CreateWorkspaceRadio")->isChecked());
        QVERIFY(tree()->isHeaderHidden());
        QCOMPARE(m_dialog->templateDir(), QString());
        QVERIFY(!m_dialog->addToWorkspace());
        QCOMPARE(placeText(), u"Project will be created at "_s + path(u"home/<enter name>"_s));
        QVERIFY(showsAllTexts(*m_dialog));
    }

    void slotsHaveTheirOrder()
    {
        const QMetaObject &meta = NewProjectDialog::staticMetaObject;
        QStringList names;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            names.append(QString::fromLatin1(meta.method(i).name()));
        QCOMPARE(names.join(u' '),
                 u"accept templateFolderChanged templateChanged updateLocation browse projectPathChanged"_s);
    }

    void firstFolderIsShown()
    {
        open();
        QCOMPARE(shown(), u"Boards(more) pc | Blink plain"_s);
        QVERIFY(tree()->topLevelItem(0)->isSelected());
        QCOMPARE(description(), u"For boards."_s);
        QCOMPARE(focus(), u"TemplateListView"_s);
    }

    void picturesAreThoseOfTheTemplatesOrTheDefaults()
    {
        open();
        QCOMPARE(m_pictures.join(u' '), u"boards:b.png/treefolder.png boards:o.png/treefolderopen.png "
                                        "more:/treefolder.png more:/treefolderopen.png "
                                        "pc:/treefolder.png pc:/treefolderopen.png "
                                        "blink:i.png/projecttemplate.png plain:/projecttemplate.png"_s);
    }

    void otherFolderClearsTheChoice()
    {
        open();
        chooseFirstTemplate();
        QCOMPARE(m_dialog->templateDir(), path(u"boards/blink"_s));
        QCOMPARE(description(), u"A lamp."_s);
        QTest::keyClick(tree(), Qt::Key_End);
        QCOMPARE(shown(), u"Boards(more) pc | hello"_s);
        QCOMPARE(m_dialog->templateDir(), QString());
        QCOMPARE(description(), QString());
        chooseFirstTemplate();
        QCOMPARE(description(), u"hello project template"_s);
    }

    void textsOfTemplatesAreNotRichText()
    {
        write(u"pc/hello/template.xml"_s, "<t><description>&lt;b&gt;bold&lt;/b&gt; &amp;amp;</description></t>");
        open({u"pc"_s});
        chooseFirstTemplate();
        QCOMPARE(description(), u"<b>bold</b> &amp;"_s);
        QCOMPARE(child<QLabel>("DescriptionLabel")->textFormat(), Qt::PlainText);
    }

    void noTemplatesDisableOk()
    {
        open({});
        QCOMPARE(shown(), u"No templates installed | "_s);
        QVERIFY(static_cast<ProjectTreeItem *>(tree()->topLevelItem(0))->isItalic());
        QVERIFY(!child<QAbstractButton>("OKButton")->isEnabled());
    }

    void recentTemplatesComeFirst()
    {
        open({u"boards"_s, u"pc"_s}, {u"pc/hello"_s, u"boards/blink"_s});
        QCOMPARE(shown(), u"Recently used Boards(more) pc | hello Blink"_s);
        chooseFirstTemplate();
        QCOMPARE(m_dialog->templateDir(), path(u"pc/hello"_s));
    }

    void folderThatVanishedIsEmpty()
    {
        open();
        QDir(path(u"pc"_s)).removeRecursively();
        QTest::keyClick(tree(), Qt::Key_End);
        QCOMPARE(shown(), u"Boards(more) pc | "_s);
    }

    void placeFollowsNameLocationAndCheckBox()
    {
        open();
        enterName(u"a %1 b"_s);
        QCOMPARE(m_dialog->projectPath(), path(u"home/a %1 b"_s));
        QCOMPARE(placeText(), u"Project will be created at "_s + path(u"home/a %1 b"_s));
        locationEdit()->setText(u"/x"_s);
        QCOMPARE(placeText(), u"Project will be created at /x/a %1 b"_s);
        QTest::mouseClick(child<QCheckBox>("ProjectFolderCheckBox"), Qt::LeftButton, {}, QPoint(8, 8));
        QCOMPARE(placeText(), u"Project will be created at /x"_s);
        QCOMPARE(m_dialog->projectPath(), u"/x"_s);
    }

    void dialogWithItsFrameFitsASmallScreen()
    {
        open();
        QVERIFY2(m_dialog->height() <= 540, qPrintable(QString::number(m_dialog->height())));
        QVERIFY(m_dialog->width() <= 780);
    }

    void longPlaceDoesNotWidenTheDialog()
    {
        open();
        const int width = m_dialog->minimumSizeHint().width();
        locationEdit()->setText(u"/"_s + QString(2000, u'x'));
        QCOMPARE(m_dialog->minimumSizeHint().width(), width);
    }

    void browseSetsTheLocation()
    {
        open();
        QDir().mkpath(path(u"other"_s));
        m_answers->choose({path(u"other"_s)});
        QTest::mouseClick(child<QAbstractButton>("BrowseButton"), Qt::LeftButton);
        QVERIFY(m_answers->shown.value(0).startsWith(u"getDirectory|Choose Directory|"_s));
        QCOMPARE(m_answers->directory, path(u"home"_s));
        QCOMPARE(locationEdit()->text(), path(u"other"_s));
        m_answers->choose({});
        QTest::mouseClick(child<QAbstractButton>("BrowseButton"), Qt::LeftButton);
        QCOMPARE(locationEdit()->text(), path(u"other"_s));
    }

    void workspaceChoiceIsEnabledAsAWhole()
    {
        open();
        QVERIFY(!child<QRadioButton>("AddWorkspaceRadio")->isEnabled());
        m_dialog->setWorkspaceChoiceEnabled(true);
        QVERIFY(child<QRadioButton>("CreateWorkspaceRadio")->isEnabled());
        child<QRadioButton>("AddWorkspaceRadio")->click();
        QVERIFY(m_dialog->addToWorkspace());
        m_dialog->setWorkspaceChoiceEnabled(false);
        QVERIFY(!m_dialog->addToWorkspace()); // the workspace was closed
    }

    // Accepting

    void incompleteInputIsRefused_data()
    {
        QTest::addColumn<bool>("choose");
        QTest::addColumn<QString>("name"); // null: not edited
        QTest::addColumn<QString>("location");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("focused");
        const QString name = u"Please enter a name for the new project."_s;
        QTest::newRow("no type") << false << u"fw"_s << u"home"_s << u"Please select a project type."_s
                                 << u"TemplateIconView"_s;
        QTest::newRow("no name") << true << QString() << u"home"_s << name << u"NameLineEdit"_s;
        QTest::newRow("blank name") << true << u" "_s << u"home"_s << name << u"NameLineEdit"_s;
        QTest::newRow("existing folder") << true << u"home"_s << QString()
                                         << u"A folder with that name already exists."_s << u"NameLineEdit"_s;
        const QString badName =
            u"The name of a project cannot be '.' or '..', and cannot contain '/' or control characters."_s;
        for (const QString &each : {u"."_s, u".."_s, u"../fw"_s, u"I/O test"_s, u"/fw"_s, u"a\u0001b"_s, u"a\tb"_s})
            QTest::newRow(qPrintable(each)) << true << each << u"home"_s << badName << u"NameLineEdit"_s;
    }

    void incompleteInputIsRefused()
    {
        QFETCH(bool, choose);
        QFETCH(QString, name);
        QFETCH(QString, location);
        QFETCH(QString, message);
        open();
        locationEdit()->setText(path(location));
        if (choose)
            chooseFirstTemplate();
        if (!name.isNull())
            enterName(name);
        m_answers->press(QMessageBox::Ok);
        pressOk();
        QCOMPARE(m_answers->shown, QStringList(message));
        QCOMPARE(m_answers->lastBox(), u"warning Varnel [Ok]"_s);
        QVERIFY(m_dialog->isVisible());
        QTEST(focus(), "focused");
        if (focus() == u"NameLineEdit")
            QCOMPARE(nameEdit()->selectedText(), nameEdit()->text());
        QVERIFY(QDir(path(u"home"_s)).isEmpty());
    }

    void emptyLocationIsRefused()
    {
        open();
        chooseFirstTemplate();
        enterName(u"fw"_s);
        locationEdit()->clear();
        m_answers->press(QMessageBox::Ok);
        pressOk();
        QCOMPARE(m_answers->shown, QStringList(u"Please enter a location for the new project."_s));
        QCOMPARE(focus(), u"LocationLineEdit"_s);
        QVERIFY(m_dialog->isVisible());
    }

    void projectFolderIsCreated()
    {
        open();
        chooseFirstTemplate();
        enterName(u"it's \"new\" \u00e4"_s);
        pressOk();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QVERIFY(QFileInfo(path(u"home/it's \"new\" \u00e4"_s)).isDir());
        QCOMPARE(m_dialog->projectName(), u"it's \"new\" \u00e4"_s);
    }

    void existingFolderIsUsedWithoutTheCheckBox()
    {
        open();
        chooseFirstTemplate();
        enterName(u"home"_s);
        child<QCheckBox>("ProjectFolderCheckBox")->setChecked(false);
        pressOk();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(m_dialog->projectPath(), path(u"home"_s));
    }

    void missingLocationIsCreatedOnRequest()
    {
        open();
        chooseFirstTemplate();
        enterName(u"fw"_s);
        locationEdit()->setText(path(u"a/b %1/c"_s));
        m_answers->press(QMessageBox::Cancel);
        pressOk();
        const QString question =
            u"The folder does not exist:\n\n"_s + path(u"a/b %1/c"_s) + u"\n\nDo you want to create it?"_s;
        QCOMPARE(m_answers->shown, QStringList(question));
        QCOMPARE(m_answers->lastBox(), u"information Varnel [Ok Cancel]"_s);
        QCOMPARE(focus(), u"LocationLineEdit"_s);
        QVERIFY(!QFileInfo::exists(path(u"a"_s)));
        m_answers->press(QMessageBox::Ok);
        pressOk();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QVERIFY(QFileInfo(path(u"a/b %1/c/fw"_s)).isDir());
    }

    void locationThatIsAFileIsReported()
    {
        write(u"file"_s);
        open();
        chooseFirstTemplate();
        enterName(u"fw"_s);
        locationEdit()->setText(path(u"file"_s));
        m_answers->press(QMessageBox::Ok);
        pressOk();
        QCOMPARE(m_answers->shown,
                 QStringList(u"Could not create the project folder '"_s + path(u"file/fw"_s) + u"'."_s));
    }

    void failureToCreateTheFolderIsReportedAndAccepted()
    {
        open();
        chooseFirstTemplate();
        enterName(u"fw"_s);
        QFile::setPermissions(path(u"home"_s), QFile::ReadOwner | QFile::ExeOwner);
        m_answers->press(QMessageBox::Ok);
        pressOk();
        QCOMPARE(m_answers->shown,
                 QStringList(u"Could not create the project folder '"_s + path(u"home/fw"_s) + u"'."_s));
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QFile::setPermissions(path(u"home"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void keyboardSuffices()
    {
        open();
        QTest::keyClick(tree(), Qt::Key_Tab);
        QCOMPARE(focus(), u"TemplateIconView"_s);
        QCOMPARE(shown(), u"Boards(more) pc | Blink* plain"_s);
        QTest::keyClick(icons(), Qt::Key_Right);
        QCOMPARE(m_dialog->templateDir(), path(u"boards/plain"_s));
        QTest::keyClick(icons(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), u"fw"_s); // replaces the selected text
        QCOMPARE(nameEdit()->text(), u"fw"_s);
        QTest::keyClick(nameEdit(), Qt::Key_Return);
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    }

    void tabFollowsTheLayout()
    {
        open();
        m_dialog->setWorkspaceChoiceEnabled(true);
        QCOMPARE(tabOrder(*m_dialog).join(u' '),
                 u"TemplateListView TemplateIconView NameLineEdit LocationLineEdit BrowseButton ProjectFolderCheckBox "
                 "CreateWorkspaceRadio OKButton CancelButton"_s);
    }

    void doubleClickAccepts()
    {
        open();
        enterName(u"fw"_s);
        const QPoint place = icons()->visualItemRect(icons()->item(1)).center();
        QTest::mouseClick(icons()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(icons()->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(m_dialog->templateDir(), path(u"boards/plain"_s));
    }
};

int main(int argc, char **argv)
{
    if (!becomeOrdinaryUser())
        qFatal("folders cannot be made unwritable for this user");
    const QApplication application(argc, argv);
    NewProjectDialogTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_newprojectdialog.moc"
