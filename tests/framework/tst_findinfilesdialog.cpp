#include "dialogprobe.h"
#include "findinfilesdialog.h"
#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>

using namespace Qt::StringLiterals;

class FindInFilesDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<FindInFilesDialog> m_dialog;

    void open() { m_dialog = std::make_unique<FindInFilesDialog>(m_settings.get(), nullptr, u"findInFilesDialog"_s); }

    QComboBox *what() { return combo(*m_dialog, "FindWhatCombo"); }
    QComboBox *types() { return combo(*m_dialog, "FileTypesCombo"); }
    QComboBox *folder() { return combo(*m_dialog, "LookInCombo"); }

    void store(const QString &key, const QVariant &value) { m_settings->setValue(u"FindInFiles/"_s + key, value); }

    void storeHistory(const QString &key, const QStringList &texts)
    {
        for (qsizetype i = 0; i < texts.size(); ++i)
            store(key + QString::number(i), texts[i]);
    }

    static QStringList numbers(int first, int last)
    {
        QStringList texts;
        for (int i = first; i <= last; ++i)
            texts << u"t%1"_s.arg(i);
        return texts;
    }

    QStringList storedHistory(const QString &key) const
    {
        QStringList texts;
        while (m_settings->contains(u"FindInFiles/"_s + key + QString::number(texts.size())))
            texts << m_settings->value(u"FindInFiles/"_s + key + QString::number(texts.size())).toString();
        return texts;
    }

    /// The file on disk with its lines sorted.
    QString file()
    {
        m_settings->sync();
        QFile file(m_settings->fileName());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        lines.sort();
        return lines.join(u' ');
    }

    /// Selects @p path in the next file dialog, or cancels it.
    void choose(
        const QString &path, const std::function<void(QFileDialog *)> &look = [](QFileDialog *) {})
    {
        QTimer::singleShot(0, this, [path, look] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            look(dialog);
            if (path.isNull())
                return dialog->reject();
            dialog->selectFile(path);
            static_cast<QDialog *>(dialog)->accept();
        });
    }

    /// So that the search can be started.
    void fill()
    {
        what()->setEditText(u"needle"_s);
        folder()->setEditText(u"/src"_s);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"s.ini"_s), QSettings::IniFormat);
    }

    void cleanup()
    {
        m_dialog.reset();
        m_settings.reset();
    }

    void textsAreTheExpectedOnes()
    {
        open();
        QCOMPARE(m_dialog->objectName(), u"findInFilesDialog"_s);
        QCOMPARE(m_dialog->windowTitle(), u"Find in Files"_s);
        QCOMPARE(textsOf<QLabel>(*m_dialog),
                 (QStringList{u"Find what:"_s, u"File types:"_s, u"Look in:"_s, u"&Search in:"_s}));
        QCOMPARE(button(*m_dialog, "MatchCaseCheck")->text(), u"Match &case"_s);
        QCOMPARE(button(*m_dialog, "MatchWholeWordCheck")->text(), u"Match whole &word"_s);
        QCOMPARE(button(*m_dialog, "SubfoldersCheck")->text(), u"Look in subfolders"_s);
        QCOMPARE(button(*m_dialog, "RegExpCheck")->text(), u"Use &regular expressions"_s);
        QCOMPARE(textsOf<QPushButton>(*m_dialog), (QStringList{u"&Browse..."_s, u"Find"_s, u"Cancel"_s}));
        QVERIFY(what()->isEditable() && types()->isEditable() && folder()->isEditable());
        QVERIFY(m_dialog->findChild<QPushButton *>(u"FindButton"_s)->isDefault());
    }

    void textsHaveEnoughSpace()
    {
        open();
        m_dialog->resize(1, 1);
        showActive(*m_dialog);
        QVERIFY(showsAllTexts(*m_dialog));
        const int width = folder()->width();
        m_dialog->resize(m_dialog->width() + 200, m_dialog->height());
        QTRY_COMPARE(folder()->width(), width + 200);
        const QList<QLabel *> labels = m_dialog->findChildren<QLabel *>();
        QCOMPARE(labels[0]->buddy(), what());
        QCOMPARE(labels[1]->buddy(), types());
        QCOMPARE(labels[2]->buddy(), folder());
    }

    void tabGoesFromTopToBottom()
    {
        open();
        showActive(*m_dialog);
        QCOMPARE(QApplication::focusWidget(), what());
        fill();
        QCOMPARE(tabOrder(*m_dialog),
                 (QStringList{u"FindWhatCombo"_s, u"FileTypesCombo"_s, u"LookInCombo"_s, u"BrowseButton"_s,
                              u"ScopeCombo"_s, u"MatchCaseCheck"_s, u"MatchWholeWordCheck"_s, u"SubfoldersCheck"_s,
                              u"RegExpCheck"_s, u"FindButton"_s, u"CancelButton"_s}));
    }

    // Reading

    void defaultsAreTheExpectedOnes()
    {
        open();
        QCOMPARE(entries(types()), (QStringList{u"*.c; *.h;*.asm"_s, u"*.txt"_s, u"*.*"_s}));
        QCOMPARE(m_dialog->findText(), QString());
        QCOMPARE(m_dialog->mask(), u"*.c; *.h;*.asm"_s);
        QCOMPARE(folder()->currentText(), QString());
        QVERIFY(!m_dialog->caseSensitive() && !m_dialog->wholeWord() && !m_dialog->recursive() && !m_dialog->regExp());
    }

    void dialogStartsWithTheLastAnswers()
    {
        storeHistory(u"Match"_s, {u"foo"_s, u"bar, baz"_s, u"@x;\\d"_s});
        storeHistory(u"Folder"_s, {u"/a"_s, u"/b c"_s});
        store(u"FileMask"_s, u"*.py"_s);
        for (const QString &key : {u"MatchCase"_s, u"MatchWholeWord"_s, u"LookInSubfolders"_s, u"UseRegExp"_s})
            store(key, true);
        open();
        QCOMPARE(entries(what()), (QStringList{u"foo"_s, u"bar, baz"_s, u"@x;\\d"_s}));
        QCOMPARE(m_dialog->findText(), u"foo"_s);
        QCOMPARE(what()->lineEdit()->selectedText(), u"foo"_s); // typing replaces it
        QCOMPARE(entries(folder()), (QStringList{u"/a"_s, u"/b c"_s}));
        QCOMPARE(m_dialog->folder(), u"/a"_s);
        QCOMPARE(m_dialog->mask(), u"*.py"_s);
        QCOMPARE(types()->count(), 3);
        QVERIFY(m_dialog->caseSensitive() && m_dialog->wholeWord() && m_dialog->recursive() && m_dialog->regExp());
    }

    void flagIsReadFromItsKey_data()
    {
        QTest::addColumn<QString>("box");
        QTest::newRow("MatchCase") << u"MatchCaseCheck"_s;
        QTest::newRow("MatchWholeWord") << u"MatchWholeWordCheck"_s;
        QTest::newRow("LookInSubfolders") << u"SubfoldersCheck"_s;
        QTest::newRow("UseRegExp") << u"RegExpCheck"_s;
    }

    void flagIsReadFromItsKey()
    {
        QFETCH(QString, box);
        const QString key = QString::fromLatin1(QTest::currentDataTag());
        store(key, true);
        open();
        QStringList checked;
        for (const QCheckBox *each : m_dialog->findChildren<QCheckBox *>()) {
            if (each->isChecked())
                checked << each->objectName();
        }
        QCOMPARE(checked, QStringList{box});
        fill();
        m_dialog->accept();
        for (const QString &other : {u"MatchCase"_s, u"MatchWholeWord"_s, u"LookInSubfolders"_s, u"UseRegExp"_s})
            QCOMPARE(m_settings->value(u"FindInFiles/"_s + other).toString(), other == key ? u"true"_s : u"false"_s);
    }

    void gettersReturnTheirFlags()
    {
        open();
        const auto flags = [this] {
            return u"%1%2%3%4"_s.arg(m_dialog->caseSensitive())
                .arg(m_dialog->wholeWord())
                .arg(m_dialog->recursive())
                .arg(m_dialog->regExp());
        };
        QStringList seen;
        for (const char *name : {"MatchCaseCheck", "MatchWholeWordCheck", "SubfoldersCheck", "RegExpCheck"}) {
            button(*m_dialog, name)->setChecked(true);
            seen << flags();
        }
        QCOMPARE(seen, (QStringList{u"1000"_s, u"1100"_s, u"1110"_s, u"1111"_s}));
    }

    void historyEndsAtTheFirstEmptyEntry()
    {
        storeHistory(u"Match"_s, {u"a"_s, QString(), u"c"_s});
        storeHistory(u"Folder"_s, {QString(), u"/b"_s});
        open();
        QCOMPARE(entries(what()), QStringList{u"a"_s});
        QCOMPARE(entries(folder()), QStringList());
    }

    void everyListedFileIsSearchedUnlessAMaskIsGiven()
    {
        store(u"FileMask"_s, u"*.py"_s);
        open();
        QComboBox *scope = combo(*m_dialog, "ScopeCombo");
        scope->setCurrentIndex(FindInFilesDialog::AllProjects);
        QCOMPARE(m_dialog->mask(), u"*.*"_s);
        scope->setCurrentIndex(FindInFilesDialog::CurrentProject);
        QCOMPARE(m_dialog->mask(), u"*.*"_s);
        types()->setEditText(u"*.cpp"_s);
        scope->setCurrentIndex(FindInFilesDialog::Folder);
        QCOMPARE(m_dialog->mask(), u"*.py"_s);
        scope->setCurrentIndex(FindInFilesDialog::OpenDocuments);
        QCOMPARE(m_dialog->mask(), u"*.cpp"_s);
        fill();
        m_dialog->accept();
        open();
        QCOMPARE(m_dialog->mask(), u"*.cpp"_s);
        m_dialog->setProjectsAvailable(false);
        combo(*m_dialog, "ScopeCombo")->setCurrentIndex(FindInFilesDialog::Folder);
        QCOMPARE(m_dialog->mask(), u"*.py"_s);
        QCOMPARE(m_settings->value(u"FindInFiles/FileMask"_s).toString(), u"*.py"_s);
    }

    void emptyMaskIsIgnored()
    {
        store(u"FileMask"_s, QString());
        open();
        QCOMPARE(m_dialog->mask(), u"*.c; *.h;*.asm"_s);
    }

    // Writing

    void answersAreStored()
    {
        open();
        what()->setEditText(u"foo"_s);
        types()->setEditText(u"*.h"_s);
        folder()->setEditText(u"/src"_s);
        button(*m_dialog, "SubfoldersCheck")->setChecked(true);
        button(*m_dialog, "FindButton")->click();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(file(), u"FileMask=*.h Folder0=/src LookInSubfolders=true Match0=foo MatchCase=false "
                         "MatchWholeWord=false Scope=0 UseRegExp=false [FindInFiles]"_s);
    }

    void cancellingStoresNothing()
    {
        open();
        what()->setEditText(u"foo"_s);
        button(*m_dialog, "CancelButton")->click();
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
        QCOMPARE(file(), QString());
    }

    void historyIsTheCurrentTextAndElevenOthers_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("current");
        QTest::addColumn<QStringList>("after");
        QTest::newRow("first of all") << QStringList() << u"x"_s << QStringList{u"x"_s};
        QTest::newRow("new") << QStringList{u"a"_s, u"b"_s} << u"x"_s << QStringList{u"x"_s, u"a"_s, u"b"_s};
        QTest::newRow("same") << QStringList{u"a"_s, u"b"_s} << u"a"_s << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("older") << QStringList{u"a"_s, u"b"_s, u"c"_s} << u"b"_s << QStringList{u"b"_s, u"a"_s, u"c"_s};
        QTest::newRow("other case") << QStringList{u"a"_s} << u"A"_s << QStringList{u"A"_s, u"a"_s};
        QTest::newRow("eleven") << numbers(1, 11) << u"x"_s << QStringList{u"x"_s} + numbers(1, 11);
        QTest::newRow("twelve: one is dropped") << numbers(1, 12) << u"x"_s << QStringList{u"x"_s} + numbers(1, 11);
        QTest::newRow("twelve, the last again") << numbers(1, 12) << u"t12"_s << QStringList{u"t12"_s} + numbers(1, 11);
        QTest::newRow("twelve, one of them again: no other takes its place")
            << numbers(1, 12) << u"t3"_s << QStringList{u"t3"_s} + numbers(1, 2) + numbers(4, 11) + numbers(12, 12);
    }

    void historyIsTheCurrentTextAndElevenOthers()
    {
        QFETCH(QStringList, before);
        QFETCH(QString, current);
        QFETCH(QStringList, after);
        storeHistory(u"Match"_s, before);
        storeHistory(u"Folder"_s, before);
        open();
        what()->setEditText(current);
        folder()->setEditText(current);
        m_dialog->accept();
        QCOMPARE(storedHistory(u"Match"_s), after);
        QCOMPARE(storedHistory(u"Folder"_s), after);
        open();
        QCOMPARE(m_dialog->findText(), current);
    }

    void folderThatIsNotNeededDoesNotEndTheHistory()
    {
        storeHistory(u"Folder"_s, {u"/a"_s, u"/b"_s});
        open();
        what()->setEditText(u"x"_s);
        combo(*m_dialog, "ScopeCombo")->setCurrentIndex(FindInFilesDialog::Folder);
        folder()->setEditText(QString());
        combo(*m_dialog, "ScopeCombo")->setCurrentIndex(FindInFilesDialog::OpenDocuments);
        m_dialog->accept();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        open();
        QCOMPARE(entries(folder()), (QStringList{u"/a"_s, u"/b"_s}));
    }

    void returnFinds()
    {
        open();
        showActive(*m_dialog);
        QTest::keyClicks(what()->lineEdit(), u"foo"_s);
        QTest::keyClick(what()->lineEdit(), Qt::Key_Return);
        QVERIFY(m_dialog->isVisible()); // there is no folder yet
        folder()->setEditText(u"/src"_s);
        QTest::keyClick(what()->lineEdit(), Qt::Key_Return);
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(storedHistory(u"Match"_s), QStringList{u"foo"_s});
    }

    // What can be searched

    void emptyTextAndEmptyFolderAreRefused()
    {
        open();
        QVERIFY(!button(*m_dialog, "FindButton")->isEnabled());
        what()->setEditText(u"x"_s);
        QVERIFY(!button(*m_dialog, "FindButton")->isEnabled());
        folder()->setEditText(u" "_s);
        QVERIFY(!button(*m_dialog, "FindButton")->isEnabled());
        m_dialog->accept();
        QCOMPARE(m_dialog->result(), 0);
        folder()->setEditText(u"/src"_s);
        QVERIFY(button(*m_dialog, "FindButton")->isEnabled());
    }

    void scopeIsChosenAndKept()
    {
        open();
        auto *scope = combo(*m_dialog, "ScopeCombo");
        QCOMPARE(entries(scope), (QStringList{u"Folder"_s, u"Files of the current project"_s,
                                              u"Files of all projects"_s, u"Open documents"_s}));
        what()->setEditText(u"x"_s);
        scope->setCurrentIndex(FindInFilesDialog::OpenDocuments);
        QVERIFY(!folder()->isEnabled() && !button(*m_dialog, "BrowseButton")->isEnabled());
        QVERIFY(button(*m_dialog, "FindButton")->isEnabled()); // no folder is needed
        m_dialog->accept();
        open();
        QCOMPARE(m_dialog->scope(), FindInFilesDialog::OpenDocuments);
        store(u"Scope"_s, 99);
        open();
        QCOMPARE(m_dialog->scope(), FindInFilesDialog::OpenDocuments);
        store(u"Scope"_s, int(FindInFilesDialog::AllProjects));
        open();
        m_dialog->setProjectsAvailable(false);
        QCOMPARE(m_dialog->scope(), FindInFilesDialog::Folder);
    }

    // Folder

    void folderIsAbsolute_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("absolute") << u"/usr/src"_s << u"/usr/src"_s;
        QTest::newRow("slash at the end") << u"/usr/src/"_s << u"/usr/src"_s;
        QTest::newRow("relative") << u"src"_s << QDir::currentPath() + u"/src"_s;
        QTest::newRow("none") << QString() << QDir::currentPath();
        QTest::newRow("root") << u"/"_s << u"/"_s;
    }

    void folderIsAbsolute()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        open();
        folder()->setEditText(text);
        QCOMPARE(m_dialog->folder(), expected);
        QCOMPARE(folder()->lineEdit()->placeholderText(), QDir::currentPath()); // the folder of an empty text
    }

    void browsingSetsTheFolder()
    {
        QVERIFY(QDir(m_directory->path()).mkdir(u"sub"_s));
        open();
        folder()->setEditText(m_directory->path());
        choose(m_directory->filePath(u"sub"_s), [this](QFileDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"getDirectory"_s);
            QCOMPARE(dialog->windowTitle(), u"Choose Directory"_s);
            QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
            QCOMPARE(dialog->directory().path(), m_directory->path());
        });
        button(*m_dialog, "BrowseButton")->click();
        QCOMPARE(folder()->currentText(), m_directory->filePath(u"sub"_s));
        QCOMPARE(folder()->count(), 0);
    }

    void cancelledBrowsingKeepsTheFolder()
    {
        open();
        folder()->setEditText(u"/usr"_s);
        choose(QString());
        m_dialog->browse();
        QCOMPARE(folder()->currentText(), u"/usr"_s);
    }
};

QTEST_MAIN(FindInFilesDialogTest)
#include "tst_findinfilesdialog.moc"
