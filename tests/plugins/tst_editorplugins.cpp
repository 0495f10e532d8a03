#include "boxanswers.h"
#include "document.h"
#include "documenttemplate.h"
#include "icustomdocumentplugin.h"
#include "itextdocumentplugin.h"
#include "painted.h"
#include "pluginfactory.h"
#include "pluginmanager.h"
#include "syntaxhighlighter.h"
#include "tabbedviewmanager.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textindent.h"
#include "textview.h"
#include "textviewedit.h"
#include "workspace.h"
#include <QClipboard>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Documents of types and languages from plug-ins, in a tabbed view manager.
class tst_EditorPlugins : public QObject
{
    Q_OBJECT

    void registerTemplates()
    {
        const QStringList features = m_plugins->featureList();
        for (const int type : {IPluginObject::CustomDocument, IPluginObject::TextDocument}) {
            for (const QString &feature : features) {
                const InterfacePtr<IPluginObject> object(m_plugins->create(feature));
                if (object->type() == type)
                    m_workspace->addTemplate(templateOf(object.get()));
            }
        }
    }

    DocumentTemplate *templateOf(IPluginObject *object)
    {
        if (const auto kind = queryInterface<ICustomDocumentPlugin>(object))
            return kind->documentTemplate();
        const auto language = queryInterface<ITextDocumentPlugin>(object);
        std::unique_ptr<SyntaxHighlighter> highlighter(language->syntaxHighlighter());
        highlighter->setFormats(&m_formats);
        std::unique_ptr<TextIndent> indenter(language->indenter());
        indenter->setIndentMode(TextIndent::Smart);
        return new TextDocumentTemplate(language->title(), language->description(), language->icon(),
                                        language->extensions(), std::move(highlighter), std::move(indenter));
    }

    bool open(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_directory.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && (file.close(), true)
               && m_workspace->openDocument(file.fileName(), true);
    }

    TextView *textView() { return qobject_cast<TextView *>(m_views->currentView()); }

    QStringList paintedLines()
    {
        QStringList lines;
        const TextDocument *document = textView()->textDocument();
        textView()->textDocument()->ensureProcessed(document->text()->lastBlock()); // without the delay after a key
        textView()->textDocument()->ensureFormatted(0, document->text()->blockCount() - 1);
        for (QTextBlock block = document->text()->begin(); block.isValid(); block = block.next())
            lines += painted(block);
        return lines;
    }

    const FormatTable m_formats = readableFormats();
    std::unique_ptr<PluginManager> m_plugins;
    QTemporaryDir m_directory;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<TabbedViewManager> m_views;

private Q_SLOTS:
    void initTestCase()
    {
        m_plugins = std::make_unique<PluginManager>(QStringList{QStringLiteral(TESTPLUGIN_DIRECTORY)});
        QCOMPARE(m_plugins->featureList().size(), 2);
    }

    void init()
    {
        failOnWarnings();
        m_workspace = std::make_unique<Workspace>();
        m_views = std::make_unique<TabbedViewManager>();
        m_workspace->setViewManager(m_views.get());
        registerTemplates();
        m_views->resize(600, 400);
        m_views->show();
        QVERIFY(QTest::qWaitForWindowActive(m_views.get()));
    }

    void cleanup()
    {
        for (Document *document : m_workspace->documents())
            document->setModified(false); // closing does not ask
        m_workspace->closeAll();
        m_views.reset();
        m_workspace.reset();
    }

    void documentKindsAreRegisteredBeforeLanguages()
    {
        QCOMPARE(m_workspace->templates().size(), 2);
        const DocumentTemplate *binary = m_workspace->templates()[0];
        QCOMPARE(binary->name(), u"Binary File"_s);
        QCOMPARE(binary->metaObject()->className(), "BinaryTemplate");
        DocumentTemplate *assembler = m_workspace->templates()[1];
        QCOMPARE(assembler->name(), u"Assembler File"_s);
        QCOMPARE(assembler->description(), u"Creates an assembler source file"_s);
        QCOMPARE(assembler->extension(), u"s"_s);
        QVERIFY(assembler->canCreate());
        QVERIFY(assembler->canOpen(u"/tmp/START.ASM"_s) && !assembler->canOpen(u"/tmp/start.c"_s));
    }

    void languageHighlightsLines()
    {
        QVERIFY(open(u"start.s"_s, "start: ldi 12 ; twelve\n.byte \"a;b\"\n/* here\nthere */ 7\n"));
        QCOMPARE(paintedLines(), (QStringList{u"6666661111133122222222"_s.replace(0, 6, u"888888"_s), u"77777144444"_s,
                                              u"2222222"_s, u"22222222"_s + u"13"_s, u""_s}));
    }

    void openedCommentChangesTheLinesBelow()
    {
        QVERIFY(open(u"start.s"_s, "\nadd 1\nadd 2\n"));
        QCOMPARE(paintedLines(), (QStringList{u""_s, u"11113"_s, u"11113"_s, u""_s}));
        QTest::keyClicks(textView()->currentEdit(), u"/*"_s);
        QCOMPARE(paintedLines(), (QStringList{u"22"_s, u"22222"_s, u"22222"_s, u""_s}));
        m_views->undo();
        QCOMPARE(paintedLines(), (QStringList{u""_s, u"11113"_s, u"11113"_s, u""_s}));
    }

    void languageIndentsSelectedLines()
    {
        QVERIFY(open(u"start.s"_s, "  loop:\nldi 1\n"));
        m_views->selectAll();
        m_views->indentCurrent();
        QCOMPARE(textView()->textDocument()->text()->toPlainText(), u"loop:\n    ldi 1\n    "_s);
    }

    void returnIndentsTheNewLine()
    {
        QVERIFY(open(u"start.s"_s, "loop:"));
        TextViewEdit *edit = textView()->currentEdit();
        QTest::keyClick(edit, Qt::Key_End);
        QTest::keyClick(edit, Qt::Key_Return);
        QTest::keyClicks(edit, u"rjmp loop"_s);
        QCOMPARE(edit->toPlainText(), u"loop:\n    rjmp loop"_s);
    }

    void documentTypeShowsItsOwnView()
    {
        QVERIFY(open(u"image.bin"_s, QByteArray("0123456789abcdef\xff", 17)));
        View *view = m_views->currentView();
        QCOMPARE(view->metaObject()->className(), "BinaryView");
        QCOMPARE(view->title(), u"image.bin"_s);
        QVERIFY(!view->windowIcon().isNull());
        auto *text = view->findChild<QPlainTextEdit *>();
        QCOMPARE(text->toPlainText(), u"00000000  30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66\n00000010  ff"_s);
        QCOMPARE(qApp->focusWidget(), text);
    }

    void editCommandsAreSentToTheViewOfThePlugin()
    {
        QVERIFY(open(u"image.bin"_s, "0"));
        bool copyable = false;
        connect(m_views.get(), &ViewManager::copyAvailable, this, [&copyable](bool can) { copyable = can; });
        m_views->selectAll();
        QVERIFY(copyable);
        m_views->copy();
        QCOMPARE(qApp->clipboard()->text(), u"00000000  30"_s);
    }

    void unreadableFileShowsAWarningAndIsNotOpened()
    {
        const BoxAnswers box({QMessageBox::Ok});
        QVERIFY(!m_workspace->openDocument(u"/nowhere/image.bin"_s, true));
        QCOMPARE(box.texts, QStringList{u"The following file could not be opened:\n/nowhere/image.bin"_s});
        QVERIFY(m_workspace->documents().isEmpty());
    }

    void documentsOfBothPluginsCanBeOpenTogether()
    {
        QVERIFY(open(u"image.bin"_s, "0"));
        QVERIFY(open(u"start.s"_s, "nop"));
        QCOMPARE(m_workspace->documents().size(), 2);
        QVERIFY(textView());
        m_views->nextView();
        QCOMPARE(m_views->currentView()->title(), u"image.bin"_s);
        m_views->newView();
        QCOMPARE(m_views->currentView()->title(), u"image.bin:1"_s);
        const QPointer<Document> binary(m_views->currentDocument());
        m_workspace->closeCurrentDocument();
        QVERIFY(!binary);
        QCOMPARE(m_views->currentView()->title(), u"start.s"_s);
    }
};

QTEST_MAIN(tst_EditorPlugins)
#include "tst_editorplugins.moc"
