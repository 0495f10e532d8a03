#include "dialoganswers.h"
#include "dialogprobe.h"
#include "documenttemplate.h"
#include "newfiledialog.h"
#include "workspace.h"
#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {
class Kind : public DocumentTemplate
{
    Q_OBJECT
public:
    Kind(const QString &name, const QString &extension, bool creates = true)
        : DocumentTemplate(name, u"Creates "_s + name, QIcon()), m_extension(extension), m_creates(creates)
    {}
    bool canCreate() override { return m_creates; }
    bool canOpen(const QString &) override { return false; }
    Document *createDocument() override { return nullptr; }
    View *createView(Document *) override { return nullptr; }
    QString extension() override { return m_extension; }

private:
    const QString m_extension;
    const bool m_creates;
};
} // namespace

/// The dialog for a new file, and the templates with text.
class NewFileDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<DialogAnswers> m_answers;
    std::unique_ptr<NewFileDialog> m_dialog;

    QString path(const QString &name) const { return m_root->filePath(name); }

    void write(const QString &name, const QByteArray &text) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    void open()
    {
        m_dialog = std::make_unique<NewFileDialog>(*m_workspace, nullptr, u"newFileDialog"_s);
        m_dialog->addFileTemplates(findFileTemplates({path(u"templates"_s)}),
                                   [](const FileTemplate &) { return QIcon(); });
        m_dialog->setLocation(m_root->path());
        showActive(*m_dialog);
    }

    template <typename T>
    T *child(const char *name) const
    {
        return m_dialog->findChild<T *>(QString::fromLatin1(name));
    }
    QListWidget *icons() const { return child<QListWidget>("fileIconView"); }
    QLineEdit *nameEdit() const { return child<QLineEdit>("nameEdit"); }
    QString placeText() const { return child<QLabel>("locationLabel")->text(); }
    void enterName(const QString &name) const
    {
        nameEdit()->selectAll();
        nameEdit()->insert(name); // the test keyboard has no letters beyond ASCII
    }
    void pressOk() const { QTest::mouseClick(child<QAbstractButton>("okButton"), Qt::LeftButton); }

    /// "name: text with | at the cursor" of each file.
    static QString textOf(const QList<NewFile> &files)
    {
        QStringList texts;
        for (const NewFile &file : files)
            texts += QFileInfo(file.path).fileName() + u": "_s + QString(file.text).insert(file.cursor, u'|');
        return texts.join(u'\n');
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_root = std::make_unique<QTemporaryDir>();
        m_answers = std::make_unique<DialogAnswers>();
        m_workspace = std::make_unique<Workspace>();
        m_workspace->addTemplate(new Kind(u"Header"_s, u"h"_s));
        m_workspace->addTemplate(new Kind(u"View"_s, u"x"_s, false));
        m_workspace->addTemplate(new Kind(u"Source"_s, u"c"_s));
        m_workspace->addTemplate(new Kind(u"Text"_s, QString()));
    }
    void cleanup()
    {
        QVERIFY(m_answers->allGiven());
        m_dialog.reset();
        m_workspace.reset();
        m_answers.reset();
    }

    void textsAndInitialState()
    {
        open();
        QCOMPARE(m_dialog->windowTitle(), u"New File"_s);
        QCOMPARE(m_dialog->objectName(), u"newFileDialog"_s);
        QCOMPARE(nameEdit()->text(), u"<enter name>"_s);
        QCOMPARE(child<QLineEdit>("locationEdit")->text(), m_root->path());
        const QStringList labels = textsOf<QLabel>(*m_dialog);
        for (const QString &text : {u"Select a file type:"_s, u"Name:"_s, u"Location:"_s, u"Creates Header"_s})
            QVERIFY2(labels.contains(text), qPrintable(text));
        QCOMPARE(textsOf<QAbstractButton>(*m_dialog).filter(QRegularExpression(u"."_s)).join(u'|'),
                 u"&Browse...|Add file to project|OK|Cancel"_s);
        QCOMPARE(placeText(), u"File will be created at "_s + path(u"<enter name>.h"_s));
        QVERIFY(!child<QCheckBox>("addCheck")->isEnabled());
        QVERIFY(!m_dialog->addToProject());
        QVERIFY(showsAllTexts(*m_dialog));
    }

    void slotsHaveTheirOrder()
    {
        const QMetaObject &meta = NewFileDialog::staticMetaObject;
        QStringList names;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            names.append(QString::fromLatin1(meta.method(i).name()));
        QCOMPARE(names.join(u' '), u"accept updateTemplate updateLocation browse filenameChanged"_s);
    }

    void onlyKindsThatCreateFilesAreOffered()
    {
        open();
        QStringList names;
        for (int i = 0; i < icons()->count(); ++i)
            names.append(icons()->item(i)->text());
        QCOMPARE(names.join(u' '), u"Header Source Text"_s);
        QCOMPARE(icons()->currentRow(), 0);
        QCOMPARE(m_dialog->documentTemplate(), m_workspace->templates()[0]);
        QTest::keyClick(icons(), Qt::Key_Right);
        QCOMPARE(m_dialog->documentTemplate(), m_workspace->templates()[2]);
        QCOMPARE(child<QLabel>("descriptionLabel")->text(), u"Creates Source"_s);
    }

    void kindIsFoundByItsName()
    {
        m_workspace->addTemplate(new Kind(u"Source"_s, u"cpp"_s)); // of a plug-in with the same name
        open();
        icons()->setCurrentRow(3);
        QCOMPARE(m_dialog->documentTemplate(), m_workspace->templates()[2]);
    }

    void extensionIsAddedToNamesWithoutOne_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");
        QTest::newRow("without") << 1 << u"main"_s << u"main.c"_s;
        QTest::newRow("with") << 1 << u"main.cpp"_s << u"main.cpp"_s;
        QTest::newRow("several dots") << 1 << u"a.b.c"_s << u"a.b.c"_s;
        QTest::newRow("kind without extension") << 2 << u"notes"_s << u"notes"_s;
        QTest::newRow("special characters") << 0 << u"a %1 \u00e4 'b'"_s << u"a %1 \u00e4 'b'.h"_s;
    }

    void extensionIsAddedToNamesWithoutOne()
    {
        QFETCH(int, row);
        QFETCH(QString, name);
        QFETCH(QString, file);
        open();
        icons()->setCurrentRow(row);
        enterName(name);
        QCOMPARE(m_dialog->filePath(), path(file));
        QCOMPARE(placeText(), u"File will be created at "_s + path(file));
    }

    void changesOfKindAndLocationChangeThePath()
    {
        open();
        enterName(u"a"_s);
        child<QLineEdit>("locationEdit")->setText(u"/x"_s);
        icons()->setCurrentRow(1);
        QCOMPARE(m_dialog->filePath(), u"/x/a.c"_s);
    }

    void openProjectEnablesAndTicksTheCheckBox()
    {
        open();
        m_dialog->setProjectOpen(true);
        QVERIFY(child<QCheckBox>("addCheck")->isEnabled());
        QVERIFY(m_dialog->addToProject());
        m_dialog->setProjectOpen(false);
        QVERIFY(!m_dialog->addToProject());
    }

    void browseSetsTheLocation()
    {
        open();
        QDir().mkpath(path(u"other"_s));
        m_answers->choose({path(u"other"_s)});
        QTest::mouseClick(child<QAbstractButton>("browseButton"), Qt::LeftButton);
        QVERIFY(m_answers->shown.value(0).startsWith(u"getDirectory|Choose Directory|"_s));
        QCOMPARE(child<QLineEdit>("locationEdit")->text(), path(u"other"_s));
    }

    void nameMustBeEntered()
    {
        open();
        m_answers->press(QMessageBox::Ok);
        pressOk();
        QCOMPARE(m_answers->shown, QStringList(u"Please enter a name for the new file."_s));
        QCOMPARE(m_answers->lastBox(), u"warning Varnel [Ok]"_s);
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(m_dialog->focusWidget(), nameEdit());
        QCOMPARE(nameEdit()->selectedText(), u"<enter name>"_s);
    }

    void locationMustBeEntered()
    {
        open();
        enterName(u"a"_s);
        child<QLineEdit>("locationEdit")->clear();
        m_answers->press(QMessageBox::Ok);
        pressOk();
        QCOMPARE(m_answers->shown, QStringList(u"Please enter a location for the new file."_s));
        QVERIFY(m_dialog->isVisible());
    }

    void existingFileIsOverwrittenOnRequest()
    {
        open();
        write(u"a.h"_s, "old");
        enterName(u"a"_s);
        m_answers->press(QMessageBox::No);
        pressOk();
        QCOMPARE(m_answers->shown, QStringList(u"A file with that name already exist. Do you want to overwrite it with "
                                               "the new file?"_s));
        QCOMPARE(m_answers->lastBox(), u"information Varnel [Yes No]"_s);
        QVERIFY(m_dialog->isVisible());
        m_answers->press(QMessageBox::Yes);
        pressOk();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    }

    // Templates with text

    void templatesWithTextFollowTheKinds()
    {
        write(u"templates/pair/template.xml"_s, "<t><displayname>Pair</displayname><description>Two</description></t>");
        write(u"templates/pair/$name$.c"_s, "$cursor$");
        write(u"templates/pair/$name$.h"_s, "");
        write(u"templates/pictures/x.svg"_s, "<svg/>");
        write(u"templates/empty/template.xml"_s, "<t/>");
        open();
        QCOMPARE(icons()->count(), 4);
        QTest::keyClick(icons(), Qt::Key_End);
        QCOMPARE(icons()->currentItem()->text(), u"Pair"_s);
        QCOMPARE(child<QLabel>("descriptionLabel")->text(), u"Two"_s);
        QCOMPARE(m_dialog->documentTemplate(), nullptr);
        QCOMPARE(m_dialog->fileTemplate()->directory, path(u"templates/pair"_s));
        enterName(u"uart"_s);
        QCOMPARE(m_dialog->filePath(), path(u"uart.c"_s));
    }

    void placeholdersAreReplacedOnce_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("all") << QByteArray("$name$ $identifier$ $IDENTIFIER$ $cursor$end") << u"my-uart.c"_s
                             << u"my-uart.c: my-uart my_uart MY_UART |end"_s;
        QTest::newRow("name like a placeholder")
            << QByteArray("$name$$cursor$") << u"$IDENTIFIER$.c"_s << u"$IDENTIFIER$.c: $IDENTIFIER$|"_s;
        QTest::newRow("digit first") << QByteArray("$identifier$$cursor$") << u"7seg.c"_s << u"7seg.c: _7seg|"_s;
        QTest::newRow("other letters") << QByteArray("$identifier$$cursor$") << u"\u00e4 b.c"_s
                                       << u"\u00e4 b.c: __b|"_s;
        QTest::newRow("unknown placeholder") << QByteArray("$other$ 5$ $cursor$") << u"a.c"_s << u"a.c: $other$ 5$ |"_s;
        QTest::newRow("no cursor") << QByteArray("text") << u"a.c"_s << u"a.c: |text"_s;
        QTest::newRow("%1 in the name") << QByteArray("$name$ %2$cursor$") << u"%1.c"_s << u"%1.c: %1 %2|"_s;
    }

    void placeholdersAreReplacedOnce()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, name);
        write(u"templates/t/$name$.c"_s, text);
        const QList<FileTemplate> templates = findFileTemplates({path(u"templates"_s)});
        QCOMPARE(templates.size(), 1);
        QTEST(textOf(filesOf(templates.first(), path(name))), "expected");
    }

    void furtherFilesLieBesideTheFirst()
    {
        write(u"templates/t/$name$.c"_s, "one");
        write(u"templates/t/$name$_test.cpp"_s, "two$cursor$");
        const FileTemplate found = findFileTemplates({path(u"templates"_s)}).value(0);
        QCOMPARE(found.extension, u"cpp"_s);
        const QList<NewFile> files = filesOf(found, path(u"x/a.cpp"_s));
        QCOMPARE(files.size(), 2);
        QCOMPARE(files[0], (NewFile{path(u"x/a.cpp"_s), u"two"_s, 3}));
        QCOMPARE(files[1], (NewFile{path(u"x/a.c"_s), u"one"_s, 0}));
    }

    void hugeFilesAreNoTemplates()
    {
        write(u"templates/t/$name$.c"_s, QByteArray(1'000'001, 'x'));
        QVERIFY(findFileTemplates({path(u"templates"_s)}).isEmpty());
    }
};

QTEST_MAIN(NewFileDialogTest)
#include "tst_newfiledialog.moc"
