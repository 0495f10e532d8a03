#include "commandlinewindow.h"
#include "historycombo.h"
#include "lineeditor.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "pasteguard.h"
#include "problemreportdialog.h"
#include "propertycombobox.h"
#include "windowfixture.h"
#include <QClipboard>
#include <QPlainTextEdit>
#include <QTextEdit>

// Pasting from an empty clipboard into every kind of widget with text.

using namespace Qt::StringLiterals;

namespace {
enum class Kind { Pane, Console, Page, TextEdit, PlainTextEdit, GridEdit, GridCombo, HistoryCombo, ProblemReport };

/// A widget of the kind; those that are no part of the window become a part of it.
QWidget *widgetOf(Kind kind, const WindowFixture &f)
{
    switch (kind) {
    case Kind::Pane:
        return f.view()->currentEdit();
    case Kind::Console:
        return f.window->outputWindow()->findChild<CommandLineWindow *>();
    case Kind::Page:
        return f.window->outputWindow()->page(OutputWindow::Build);
    case Kind::TextEdit:
        return new PasteGuard<QTextEdit>(f.window.get());
    case Kind::PlainTextEdit:
        return new PasteGuard<QPlainTextEdit>(f.window.get());
    case Kind::GridEdit:
        return (new LineEditor(LineEditor::NoButton, f.window.get()))->edit();
    case Kind::GridCombo:
        return new PropertyComboBox(f.window.get());
    case Kind::HistoryCombo:
        return new HistoryCombo(f.window.get());
    case Kind::ProblemReport:
        return (new ProblemReportDialog({}, f.window.get(), u"report"_s))->findChild<QWidget *>(u"descriptionEdit"_s);
    }
    return nullptr;
}

/// As desktops have it: there is data, but in no format.
void emptyClipboard()
{
    QGuiApplication::clipboard()->setMimeData(new QMimeData);
}

QString textOf(QWidget *widget)
{
    if (const auto *combo = qobject_cast<QComboBox *>(widget))
        return combo->currentText();
    const QVariant plain = widget->property("plainText");
    return plain.isValid() ? plain.toString() : widget->property("text").toString();
}
} // namespace

class EmptyClipboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void pasteFromAnEmptyClipboardChangesNothing_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("editor pane") << Kind::Pane;
        QTest::newRow("console") << Kind::Console;
        QTest::newRow("output page") << Kind::Page;
        QTest::newRow("text edit") << Kind::TextEdit;
        QTest::newRow("plain text edit") << Kind::PlainTextEdit;
        QTest::newRow("line edit of the grid") << Kind::GridEdit;
        QTest::newRow("combo box of the grid") << Kind::GridCombo;
        QTest::newRow("combo box with a history") << Kind::HistoryCombo;
        QTest::newRow("report of a problem") << Kind::ProblemReport;
    }
    void pasteFromAnEmptyClipboardChangesNothing()
    {
        QFETCH(const Kind, kind);
        const WindowFixture f;
        f.open(u"main.c"_s);
        QWidget *widget = widgetOf(kind, f);
        QVERIFY(widget);
        widget->show();
        const QString before = textOf(widget);
        emptyClipboard();
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_V, u"\x16"_s, Qt::ControlModifier); // as a keyboard sends it
        QTest::keyClick(widget, Qt::Key_Insert, Qt::ShiftModifier);
        QTest::mouseClick(widget, Qt::MiddleButton);
        QCOMPARE(textOf(widget), before);
    }

    void editPasteWithAnEmptyClipboardChangesNothing()
    {
        const WindowFixture f;
        f.open(u"main.c"_s, "one\n");
        emptyClipboard();
        f.window->editPaste();
        QCOMPARE(f.text(), u"one\n"_s);
        QVERIFY(!f.document()->modified());
    }

    void textOnTheClipboardIsPasted()
    {
        const WindowFixture f;
        f.open(u"main.c"_s, "one\n");
        QGuiApplication::clipboard()->setText(u"two "_s);
        QTest::keyClick(f.view()->currentEdit(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.text(), u"two one\n"_s);
    }
};

int main(int argc, char *argv[])
{
    EmptyClipboardTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_emptyclipboard.moc"
