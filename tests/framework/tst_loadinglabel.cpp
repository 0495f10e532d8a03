#include "fileformatbutton.h"
#include "loadinglabel.h"
#include "textloading.h"
#include "windowfixture.h"
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {
constexpr int Lines = 20'000;

QByteArray numbered()
{
    QByteArray text;
    for (int i = 1; i <= Lines; ++i)
        text += "int a" + QByteArray::number(i) + "; // some words\n";
    return text;
}

TextDocument *currentText(const WindowFixture &f)
{
    return f.view()->textDocument();
}

LoadingLabel *labelOf(const WindowFixture &f)
{
    return f.window->findChild<LoadingLabel *>();
}

bool isShown(const WindowFixture &f)
{
    return labelOf(f) && labelOf(f)->isVisible();
}

bool waitForEnd(const WindowFixture &f)
{
    return QTest::qWaitFor([&f] { return !currentText(f)->isLoading(); }, 60'000);
}
} // namespace

/// How the window shows that a large file is being loaded.
class LoadingLabelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void progressIsShownUntilTheEnd()
    {
        const WindowFixture f;
        QVERIFY(!isShown(f));
        f.open(u"large.c"_s, numbered().repeated(10));
        QVERIFY(currentText(f)->isLoading());
        QVERIFY(isShown(f));
        const QSignalSpy save(f.window.get(), &MainWindow::saveAvailable);
        QStringList texts(labelOf(f)->text());
        QVERIFY2(texts.first().startsWith(u"Loading 'large.c'... "_s) && texts.first().endsWith(u" %"_s),
                 qPrintable(texts.first()));
        QObject::connect(currentText(f)->loading(), &TextLoading::grown, f.window.get(),
                         [&] { texts << labelOf(f)->text(); });
        QVERIFY(!f.window->findChild<FileFormatButton *>()->isEnabled());
        QVERIFY(waitForEnd(f));
        QVERIFY(!isShown(f));
        QCOMPARE(labelOf(f)->text(), u"Loading 'large.c'... 100 %"_s);
        QVERIFY(texts.removeDuplicates() >= 0 && texts.size() >= 3);
        QVERIFY(f.window->findChild<FileFormatButton *>()->isEnabled());
        QCOMPARE(f.text().toUtf8(), numbered().repeated(10));
        QVERIFY(!save.contains(QVariantList{true}));
        f.type(u"x"_s);
        QCOMPARE(save.last(), QVariantList{true});
    }

    void nameOfTheFileIsNoMarkup()
    {
        const WindowFixture f;
        f.open(u"a<br>b.c"_s, numbered());
        QVERIFY(isShown(f));
        const QLabel *label = labelOf(f);
        QVERIFY2(label->text().contains(u"a<br>b.c"_s), qPrintable(label->text()));
        QVERIFY(label->sizeHint().width() >= label->fontMetrics().horizontalAdvance(label->text()));
        QVERIFY(waitForEnd(f));
    }

    void progressIsThatOfTheCurrentFile()
    {
        const WindowFixture f;
        f.open(u"large.c"_s, numbered());
        QVERIFY(currentText(f)->isLoading());
        f.open(u"small.c"_s);
        QVERIFY(!isShown(f));
        QVERIFY(f.window->findChild<FileFormatButton *>()->isEnabled());
        QVERIFY(f.window->openFile(f.path(u"large.c"_s), false));
        QCOMPARE(isShown(f), currentText(f)->isLoading());
        QVERIFY(waitForEnd(f));
        QVERIFY(!isShown(f));
    }

    /// A message of the status bar is cut off where the label begins.
    void longNameLeavesRoomInANarrowWindow()
    {
        const WindowFixture f;
        f.window->resize(700, 500);
        f.open(u"a_long_name_of_generated_tables_of_constants.c"_s, numbered());
        QVERIFY(isShown(f));
        const QString name = labelOf(f)->text().section(u'\'', 1, 1);
        QVERIFY2(name.startsWith(u'a') && name.endsWith(u".c"_s) && name.contains(u'…'), qPrintable(name));
        QVERIFY(labelOf(f)->fontMetrics().horizontalAdvance(name) <= f.window->width() / 5);
        QVERIFY(labelOf(f)->contentsRect().left() > 0);
    }

    void fileIsClosedWhileItIsLoading()
    {
        const WindowFixture f;
        f.open(u"large.c"_s, numbered());
        QVERIFY(isShown(f));
        f.window->fileClose();
        QVERIFY(f.openFiles().isEmpty());
        QVERIFY(!isShown(f));
        QCoreApplication::processEvents();
    }

    void fileIsRevertedWhileItIsLoading()
    {
        const WindowFixture f;
        f.open(u"large.c"_s, numbered());
        f.view()->gotoLine(4'000);
        QVERIFY(currentText(f)->isLoading());
        f.write(u"large.c"_s, "new\n" + numbered());
        QVERIFY(f.window->workspace()->reopenDocument(f.path(u"large.c"_s)));
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 3'999);
        QVERIFY(waitForEnd(f));
        QCOMPARE(f.text().toUtf8(), "new\n" + numbered());
        QVERIFY(!f.document()->modified());
    }

    void cursorOfTheLastSessionIsRestored()
    {
        WindowFixture f;
        f.open(u"large.c"_s, numbered());
        f.view()->gotoLine(15'000);
        f.restart();
        f.window->continueLastRun();
        QCOMPARE(f.openFiles(), QStringList(u"large.c"_s));
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 14'999);
        QVERIFY(waitForEnd(f));
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 14'999);
    }
};

int main(int argc, char **argv)
{
    LoadingLabelTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_loadinglabel.moc"
