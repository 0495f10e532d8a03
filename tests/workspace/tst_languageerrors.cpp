#include "boxanswers.h"
#include "syntaxhighlighter.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textindent.h"
#include "textview.h"
#include "textviewedit.h"
#include <stdexcept>

// Languages of plug-ins that throw exceptions.

using namespace Qt::StringLiterals;

namespace {
class ThrowingIndent : public TextIndent
{
public:
    void indent(QTextDocument *, QTextBlock, int *, int *) override { throw std::runtime_error("boom"); }
    [[nodiscard]] bool changesIndent(const QString &) const override { throw std::runtime_error("boom"); }
};

class ThrowingFormats : public SyntaxHighlighter
{
public:
    using SyntaxHighlighter::SyntaxHighlighter;
    [[nodiscard]] QTextCharFormat format(int) const override { throw std::runtime_error("boom"); }
};

struct Editor
{
    Editor(std::unique_ptr<SyntaxHighlighter> highlighter, std::unique_ptr<TextIndent> indenter)
        : docTemplate(u"C"_s, u"C source"_s, {}, {u"c"_s}, std::move(highlighter), std::move(indenter))
        , document(static_cast<TextDocument *>(docTemplate.createDocument()))
        , view(static_cast<TextView *>(docTemplate.createView(document.get())))
    {
        view->resize(300, 200);
        view->show();
    }

    TextDocumentTemplate docTemplate;
    std::unique_ptr<TextDocument> document;
    std::unique_ptr<TextView> view;
};
} // namespace

class LanguageErrorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarnings(); }

    void exceptionInTheIndenterKeepsTheLineBreak()
    {
        const FormatTable formats{{FormatId::Standard, {}}};
        const Editor editor(std::make_unique<SyntaxHighlighter>(&formats), std::make_unique<ThrowingIndent>());
        QTest::keyClicks(editor.view->currentEdit(), u"one"_s);
        QTest::ignoreMessage(QtWarningMsg, "TextIndent::indent: an exception has left the plug-in (boom)");
        QTest::keyClick(editor.view->currentEdit(), Qt::Key_Return);
        QTest::keyClicks(editor.view->currentEdit(), u"two"_s);
        QCOMPARE(editor.document->text()->toPlainText(), u"one\ntwo"_s);
        QTest::ignoreMessage(QtWarningMsg, "TextIndent::indent: an exception has left the plug-in (boom)");
        editor.view->indentSelection();
        editor.view->currentEdit()->undo();
        QCOMPARE(editor.document->text()->toPlainText(), u"one\n"_s);
    }

    void indenterIsAskedForSignsOnly()
    {
        const FormatTable formats{{FormatId::Standard, {}}};
        const Editor editor(std::make_unique<SyntaxHighlighter>(&formats), std::make_unique<ThrowingIndent>());
        QTest::keyClicks(editor.view->currentEdit(), u"one 2 "_s);
        QTest::ignoreMessage(QtWarningMsg, "TextIndent::changesIndent: an exception has left the plug-in (boom)");
        QTest::keyClicks(editor.view->currentEdit(), u";"_s);
        QCOMPARE(editor.document->text()->toPlainText(), u"one 2 ;"_s);
    }

    void exceptionInAFormatGivesPlainText()
    {
        const QRegularExpression message(u"^SyntaxHighlighter::(format|process): an exception has left the plug-in"_s);
        QStringList warnings;
        static QStringList *caught = nullptr;
        caught = &warnings;
        const auto previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { caught->append(text); });
        {
            const Editor editor(std::make_unique<ThrowingFormats>(), std::make_unique<ThrowingIndent>());
            editor.document->text()->setPlainText(u"int\nx"_s);
            editor.view->grab();
        }
        qInstallMessageHandler(previous);
        warnings.removeIf([](const QString &text) { return text.startsWith("This plugin does not support"_L1); });
        QVERIFY(!warnings.isEmpty());
        for (const QString &warning : std::as_const(warnings))
            QVERIFY2(message.match(warning).hasMatch(), qPrintable(warning));
    }
};

QTEST_MAIN(LanguageErrorsTest)
#include "tst_languageerrors.moc"
