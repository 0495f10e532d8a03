#include "questions.h"
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class QuestionsTest : public QObject
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

    static void touch(const QString &path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    /// The files listed in the dialog.
    static QStringList offered(QFileDialog *dialog)
    {
        const auto *list = dialog->findChild<QListView *>(u"listView"_s);
        QStringList names;
        for (int i = 0; i < list->model()->rowCount(list->rootIndex()); ++i)
            names += list->model()->index(i, 0, list->rootIndex()).data().toString();
        names.sort();
        return names;
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void textDialogHasItsObjectName()
    {
        QWidget window;
        whenAsked<QInputDialog>([&](QInputDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"inputDialog"_s);
            QCOMPARE(dialog->windowTitle(), u"Varnel"_s);
            QCOMPARE(dialog->parentWidget(), &window);
            QCOMPARE(dialog->textValue(), u"old"_s);
            auto *edit = dialog->findChild<QLineEdit *>();
            QCOMPARE(edit->selectedText(), u"old"_s);
            QTest::keyClicks(edit, u"new"_s);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        QCOMPARE(askForText(&window, u"Name:"_s, u"old"_s), u"new"_s);
    }

    void namesInALabelAreShownLiterally()
    {
        whenAsked<QInputDialog>([&](QInputDialog *dialog) {
            const auto *label = dialog->findChild<QLabel *>();
            QCOMPARE(label->text(), u"Rename '<b>a &&amp;&& b</b>':"_s); // a doubled & is shown as one
            QCOMPARE(label->textFormat(), Qt::PlainText);
            dialog->reject();
        });
        QCOMPARE(askForText(nullptr, u"Rename '<b>a &amp;& b</b>':"_s, {}), std::nullopt);
    }

    void cancelDiffersFromAnEmptyText()
    {
        whenAsked<QInputDialog>([](QInputDialog *dialog) { dialog->accept(); });
        QCOMPARE(askForText(nullptr, u"Name:"_s, {}), QString());
        whenAsked<QInputDialog>([](QInputDialog *dialog) { dialog->reject(); });
        QCOMPARE(askForText(nullptr, u"Name:"_s, u"old"_s), std::nullopt);
    }

    void fileDialogsHaveTheirObjectNames()
    {
        QTemporaryDir directory;
        const QString path = QDir(directory.path()).canonicalPath();
        touch(path + u"/a.c"_s);
        touch(path + u"/b.c"_s);
        whenAsked<QFileDialog>([&](QFileDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"addFilesDialog"_s);
            QCOMPARE(dialog->windowTitle(), u"Add Files"_s);
            QCOMPARE(dialog->directory().path(), path);
            QCOMPARE(dialog->nameFilters(), (QStringList{u"C (*.c)"_s, u"All Files (*.*)"_s}));
            QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
            auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
            edit->setText(u"\"a.c\" \"b.c\""_s);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        const FileQuestion question{u"addFilesDialog"_s, u"Add Files"_s, path, u"C (*.c);;All Files (*.*)"_s};
        QCOMPARE(askForOpenFiles(nullptr, question), (QStringList{path + u"/a.c"_s, path + u"/b.c"_s}));
        whenAsked<QFileDialog>([](QFileDialog *dialog) { dialog->reject(); });
        QCOMPARE(askForOpenFiles(nullptr, question), QStringList());
    }

    void directoryThatDoesNotExistIsNoProposal_data()
    {
        QTest::addColumn<QString>("start");
        QTest::newRow("missing") << u"/Documents"_s;
        QTest::newRow("missing in a missing one") << u"/Documents/projects"_s;
        QTest::newRow("present") << QString();
    }

    void directoryThatDoesNotExistIsNoProposal()
    {
        QFETCH(QString, start);
        QTemporaryDir directory;
        const QString home = QDir(directory.path()).canonicalPath();
        for (const auto &question : {askForOpenFile, askForSaveFile, askForDirectory}) {
            whenAsked<QFileDialog>([&](QFileDialog *dialog) {
                QCOMPARE(dialog->directory().path(), home);
                QCOMPARE(dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->text(), QString());
            });
            QCOMPARE(question(nullptr, {u"d"_s, u"c"_s, home + start, {}}), QString());
        }
    }

    void fileThatExistsIsProposed()
    {
        QTemporaryDir directory;
        touch(directory.filePath(u"a.c"_s));
        whenAsked<QFileDialog>(
            [](QFileDialog *dialog) { QCOMPARE(dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->text(), u"a.c"_s); });
        QCOMPARE(askForOpenFile(nullptr, {u"d"_s, u"c"_s, directory.filePath(u"a.c"_s), {}}), QString());
    }

    void allFilesAreListedWithOrWithoutADot_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QStringList>("after"); // with the second entry selected
        const QStringList all{u"Makefile"_s, u"a.c"_s};
        const QStringList one{u"a.c"_s};
        QTest::newRow("first entry") << u"All Files (*.*);;C (*.c)"_s << all << one;
        QTest::newRow("second entry") << u"C (*.c);;All Files (*.*)"_s << one << all;
    }

    void allFilesAreListedWithOrWithoutADot()
    {
        QFETCH(QString, filter);
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        QTemporaryDir directory;
        touch(directory.filePath(u"a.c"_s));
        touch(directory.filePath(u"Makefile"_s));
        whenAsked<QFileDialog>([&](QFileDialog *dialog) {
            QTRY_COMPARE(offered(dialog), before);
            QTest::keyClick(dialog->findChild<QComboBox *>(u"fileTypeCombo"_s), Qt::Key_Down);
            QTRY_COMPARE(offered(dialog), after);
        });
        QCOMPARE(askForOpenFiles(nullptr, {u"d"_s, u"c"_s, directory.path(), filter}), QStringList());
    }
};

QTEST_MAIN(QuestionsTest)
#include "tst_questions.moc"
