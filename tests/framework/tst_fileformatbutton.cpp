#include "../workspace/editorfixture.h"
#include "fileformatbutton.h"
#include "windowfixture.h"
#include <QLabel>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {
FileFormatButton *buttonOf(const WindowFixture &f)
{
    return f.window->findChild<FileFormatButton *>();
}

/// The texts of the menu without mnemonics; that of the present format is in brackets.
QStringList choices(const WindowFixture &f)
{
    Q_EMIT buttonOf(f)->menu()->aboutToShow();
    QStringList texts;
    for (const QAction *choice : buttonOf(f)->menu()->actions()) {
        if (!choice->isSeparator())
            texts << (choice->isChecked() ? u"[%1]"_s : u"%1"_s).arg(choice->text().remove(u'&'));
    }
    return texts;
}

void choose(const WindowFixture &f, const QString &text)
{
    Q_EMIT buttonOf(f)->menu()->aboutToShow();
    for (QAction *choice : buttonOf(f)->menu()->actions()) {
        if (choice->text().remove(u'&') == text)
            return choice->trigger();
    }
    QFAIL(qPrintable(text));
}
} // namespace

/// The format of the current file in the status bar.
class FileFormatButtonTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void buttonIsHiddenWithItsDocument()
    {
        const WindowFixture f;
        EditorFixture editor;
        FileFormatButton button;
        button.setDocument(editor.document.get());
        QVERIFY(button.isVisible());
        editor.view.reset();
        editor.document.reset();
        QVERIFY(!button.isVisible());
    }

    void formatIsShown_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected");
        QTest::newRow("UTF-8") << QByteArray("a\n") << u"UTF-8, LF"_s;
        QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF"
                                                       "a\n")
                                         << u"UTF-8 BOM, LF"_s;
        QTest::newRow("Latin-1, CRLF") << QByteArray("\xE9\r\n") << u"Latin-1, CRLF"_s;
        QTest::newRow("UTF-16") << QByteArray("\xFF\xFE"
                                              "a\0\n\0",
                                              6)
                                << u"UTF-16 LE, LF"_s;
        QTest::newRow("mixed") << QByteArray("a\r\nb\n") << u"UTF-8, mixed line ends"_s;
        QTest::newRow("UTF-16, big endian") << QByteArray("\xFE\xFF\0a\0\n", 6) << u"UTF-16 BE, LF"_s;
    }
    void formatIsShown()
    {
        QFETCH(const QByteArray, content);
        const WindowFixture f;
        QVERIFY(!buttonOf(f)->isVisible());
        f.open(u"a.c"_s, content);
        QTEST(buttonOf(f)->text(), "expected");
        QVERIFY(buttonOf(f)->isVisible());
        f.window->fileClose();
        QVERIFY(!buttonOf(f)->isVisible());
    }

    void saveThatChangesTheFormatIsReported_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("message");
        QTest::newRow("mixed line ends") << QByteArray("a\r\nb\nc\r\n")
                                         << u"a.c was UTF-8, mixed line ends and is saved as UTF-8, LF"_s;
        QTest::newRow("not in Latin-1") << QByteArray("\xE9\r\n")
                                        << u"a.c was Latin-1, CRLF and is saved as UTF-8, CRLF"_s;
        QTest::newRow("kept") << QByteArray("\xC3\xA9\r\n") << QString();
    }
    void saveThatChangesTheFormatIsReported()
    {
        QFETCH(const QByteArray, content);
        const WindowFixture f;
        f.open(u"a.c"_s, content);
        f.type(u"\u20AC"_s);
        f.window->statusBar()->clearMessage();
        f.window->fileSave();
        QTEST(f.status(), "message");
    }

    void formatIsSwitchedToUtf8()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "\xE9\r\n");
        QCOMPARE(choices(f), (QStringList{u"Save as UTF-8"_s, u"[Save as Latin-1]"_s, u"Line ends LF (Unix)"_s,
                                          u"[Line ends CRLF (Windows)]"_s}));
        choose(f, u"Save as UTF-8"_s);
        QCOMPARE(buttonOf(f)->text(), u"UTF-8, CRLF"_s);
        QVERIFY(f.document()->modified());
        f.window->fileSave();
        QCOMPARE(f.read(u"a.c"_s), QByteArray("\xC3\xA9\r\n"));
        choose(f, u"Line ends LF (Unix)"_s);
        f.window->fileSave();
        QCOMPARE(f.read(u"a.c"_s), QByteArray("\xC3\xA9\n"));
    }

    void byteOrderMarkIsRemovedWithItsEncoding()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "\xEF\xBB\xBF\xC3\xA9\n");
        QCOMPARE(buttonOf(f)->text(), u"UTF-8 BOM, LF"_s);
        choose(f, u"Save as UTF-8"_s);
        QCOMPARE(buttonOf(f)->text(), u"UTF-8, LF"_s);
        f.window->fileSave();
        QCOMPARE(f.read(u"a.c"_s), QByteArray("\xC3\xA9\n"));
    }

    void encodingThatIsNotOfferedIsKept()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, QByteArray("\xFF\xFE"
                                    "a\0",
                                    4));
        QCOMPARE(choices(f), (QStringList{u"Save as UTF-8"_s, u"Save as Latin-1"_s, u"[Save as UTF-16 LE]"_s,
                                          u"[Line ends LF (Unix)]"_s, u"Line ends CRLF (Windows)"_s}));
    }

    void textThatLatin1CannotHoldIsShownAsUtf8AfterTheSave()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "\xE9");
        f.type(u"\u20AC"_s);
        QCOMPARE(buttonOf(f)->text(), u"Latin-1, LF"_s);
        f.window->fileSave();
        QCOMPARE(buttonOf(f)->text(), u"UTF-8, LF"_s);
    }

    void menuIsEmptyWithoutAText()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        QVERIFY(!choices(f).isEmpty());
        f.window->fileClose();
        QCOMPARE(choices(f), QStringList());
    }

    void entryOfAnOpenMenuHasNoEffectOnAClosedText()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        Q_EMIT buttonOf(f)->menu()->aboutToShow();
        QAction *entry = buttonOf(f)->menu()->actions().last();
        f.window->fileClose();
        entry->trigger();
        QCOMPARE(f.openFiles(), QStringList());
    }

    void lineSeparatesEncodingsAndLineEnds()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        Q_EMIT buttonOf(f)->menu()->aboutToShow();
        QStringList starts;
        for (const QAction *choice : buttonOf(f)->menu()->actions())
            starts << (choice->isSeparator() ? u"---"_s : choice->text().remove(u'&').section(u' ', 0, 0));
        QCOMPARE(starts, (QStringList{u"Save"_s, u"Save"_s, u"---"_s, u"Line"_s, u"Line"_s}));
    }

    void buttonFollowsTheCurrentView()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "\xE9");
        f.open(u"b.c"_s);
        QCOMPARE(buttonOf(f)->text(), u"UTF-8, LF"_s);
        f.window->windowNext();
        QCOMPARE(buttonOf(f)->text(), u"Latin-1, LF"_s);
    }

    void cursorIsNotShownWithoutAFile()
    {
        const WindowFixture f;
        const auto *label = f.window->findChild<QLabel *>(u"cursorLabel"_s);
        QCOMPARE(label->property("text"), QString());
        f.open(u"a.c"_s);
        QTRY_COMPARE(label->property("text"), u" Ln 1, Col 1"_s);
        f.window->fileClose();
        QCOMPARE(label->property("text"), QString());
    }
};

int main(int argc, char **argv)
{
    FileFormatButtonTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_fileformatbutton.moc"
