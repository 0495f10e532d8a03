#include "largetextview.h"
#include "textlineview.h"
#include "windowfixture.h"
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

/// Find in documents that are searched in the background.
class FindCommandsTest : public QObject
{
    Q_OBJECT

    /// Opens a file that is too large for the editor.
    static LargeTextView *openLarge(WindowFixture &f, const QByteArray &end)
    {
        f.answers->press(QMessageBox::Ok);
        f.open(u"large.log"_s, QByteArray(10'000'001, '\n') + end);
        return qobject_cast<LargeTextView *>(f.window->viewManager()->currentView());
    }

    template <typename Widget>
    static Widget *part(const LargeTextView *view, const char *name)
    {
        return view->findChild<Widget *>(QLatin1String(name));
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void findOpensTheBarOfALargeFile()
    {
        WindowFixture f;
        const LargeTextView *view = openLarge(f, "needle\n");
        QVERIFY(view);
        f.window->editFind();
        QVERIFY(!f.window->findChild<QDialog *>(u"findDialog"_s)->isVisible());
        auto *what = part<QLineEdit>(view, "LargeTextFindWhat");
        QVERIFY(what->isVisible());
        QTest::keyClicks(what, u"needle"_s);
        QTest::keyClick(what, Qt::Key_F3);
        QTRY_COMPARE(part<QLabel>(view, "LargeTextResult")->text(), u"1 of 1"_s);
        QCOMPARE(view->lineView()->cursorPlace().line, 10'000'001);
        QCOMPARE(f.window->findChild<QLabel *>(u"cursorLabel"_s)->text(), u" Ln 10000002, Col 1"_s);
    }

    void searchBoxSearchesALargeFileWithoutAMessage()
    {
        WindowFixture f;
        const LargeTextView *view = openLarge(f, "Needle\nneedle\n");
        f.window->searchBoxFind(u"needle"_s);
        QTRY_COMPARE(part<QLabel>(view, "LargeTextResult")->text(), u"1 of 2"_s);
        f.window->searchBoxFindAgain(u"needle"_s);
        QTRY_COMPARE(part<QLabel>(view, "LargeTextResult")->text(), u"2 of 2"_s);
        QCOMPARE(view->lineView()->selectedText(), u"needle"_s);
        f.window->searchBoxFind(u"haystack"_s);
        QTRY_COMPARE(part<QLabel>(view, "LargeTextResult")->text(), u"Not found"_s);
        f.window->searchBoxFind({});
        QCOMPARE(part<QLabel>(view, "LargeTextResult")->text(), QString());
    }
};

QTEST_APPLESS_MAIN(FindCommandsTest)
#include "tst_findcommands.moc"
