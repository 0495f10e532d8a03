#include "cpphighlighter.h"
#include "cppindent.h"
#include "documentkinds.h"
#include "documenttemplate.h"
#include "pythonhighlighter.h"
#include "pythonindent.h"
#include "textdocumenttemplate.h"
#include "windowfixture.h"
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace {
TextDocumentTemplate *kindOf(const WindowFixture &f, const QString &filename)
{
    for (DocumentTemplate *kind : f.window->workspace()->templates()) {
        if (kind->canOpen(filename))
            return qobject_cast<TextDocumentTemplate *>(kind);
    }
    return nullptr;
}
} // namespace

class DocumentKindsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void eachKindHasItsTextsAndPosition()
    {
        const WindowFixture f;
        QStringList kinds;
        for (DocumentTemplate *kind : f.window->workspace()->templates()) {
            if (kind->inherits("TextDocumentTemplate"))
                kinds.append(kind->name() + u'|' + kind->description() + u'|' + kind->extension());
            QVERIFY(!kind->icon().isNull());
        }
        QCOMPARE(kinds,
                 (QStringList{u"C/C++ Header File|Creates a C/C++ header file|h"_s,
                              u"C Source File|Creates a C source file|c"_s,
                              u"Python File|Creates a Python source file|py"_s, u"Text File|Creates a text file|"_s}));
    }

    void aFileGoesToItsKind_data()
    {
        QTest::addColumn<QString>("filename");
        QTest::addColumn<QString>("kind");
        QTest::newRow("header") << u"/a/b.h"_s << u"C/C++ Header File"_s;
        QTest::newRow("header, upper case") << u"/a/B.H"_s << u"C/C++ Header File"_s;
        QTest::newRow("source") << u"/a/b.c"_s << u"C Source File"_s;
        QTest::newRow("C++ source") << u"/a/b.cpp"_s << u"C Source File"_s;
        QTest::newRow("script") << u"/a/b.py"_s << u"Python File"_s;
        QTest::newRow("text") << u"/a/b.txt"_s << u"Text File"_s;
        QTest::newRow("no extension") << u"/a/Makefile"_s << u"Text File"_s;
        QTest::newRow("last extension counts") << u"/a/b.c.txt"_s << u"Text File"_s;
    }

    void aFileGoesToItsKind()
    {
        QFETCH(QString, filename);
        const WindowFixture f;
        QTEST(kindOf(f, filename)->name(), "kind");
    }

    void eachLanguageHasItsHighlighterAndIndenter()
    {
        const WindowFixture f;
        QVERIFY(dynamic_cast<CppHighlighter *>(kindOf(f, u"a.c"_s)->highlighter()));
        QVERIFY(dynamic_cast<CppIndent *>(kindOf(f, u"a.h"_s)->indenter()));
        QVERIFY(dynamic_cast<PythonHighlighter *>(kindOf(f, u"a.py"_s)->highlighter()));
        QVERIFY(dynamic_cast<PythonIndent *>(kindOf(f, u"a.py"_s)->indenter()));
        QVERIFY(!dynamic_cast<CppIndent *>(kindOf(f, u"a.txt"_s)->indenter()));
    }

    void editorSettingsReachEveryKind_data()
    {
        QTest::addColumn<QVariantMap>("stored");
        QTest::addColumn<int>("tabSize");
        QTest::addColumn<bool>("keepTabs");
        QTest::addColumn<int>("indentMode");
        QTest::newRow("none stored") << QVariantMap() << 4 << true << 2;
        QTest::newRow("all stored") << QVariantMap{{u"TabSize"_s, 8}, {u"KeepTabs"_s, 0}, {u"IndentMode"_s, 1}} << 8
                                    << false << 1;
    }

    void editorSettingsReachEveryKind()
    {
        QFETCH(QVariantMap, stored);
        const WindowFixture f;
        for (auto it = stored.cbegin(); it != stored.cend(); ++it)
            f.settings()->setValue(u"Editor/"_s + it.key(), it.value());
        applyEditorSettings(*f.window->workspace(), *f.settings());
        for (const QString &filename : {u"a.h"_s, u"a.c"_s, u"a.py"_s, u"a.txt"_s}) {
            const TextIndent *indenter = kindOf(f, filename)->indenter();
            QTEST(indenter->tabSize(), "tabSize");
            QTEST(indenter->keepTabs(), "keepTabs");
            QTEST(indenter->indentMode(), "indentMode");
        }
    }

    void plugInKindsComeBeforePlainText()
    {
        const WindowFixture f;
        Workspace workspace;
        auto *assembler = new TextDocumentTemplate(u"Assembler"_s, {}, {}, {u"s"_s}, nullptr, nullptr);
        registerDocumentKinds(workspace, {}, [&] { workspace.addTemplate(assembler); });
        QCOMPARE(workspace.templates().indexOf(assembler), workspace.templates().size() - 3);
    }

    void disassembliesHaveTheirKind()
    {
        const WindowFixture f;
        const QList<DocumentTemplate *> kinds = f.window->workspace()->templates();
        const auto takes = [](DocumentTemplate *kind) { return kind->canOpen(u"disassembler:0x00000001:main.c"_s); };
        const auto first = std::ranges::find_if(kinds, takes);
        QVERIFY((*first)->inherits("DisassemblerDocumentTemplate"));
        QCOMPARE((*first)->name(), u"Disassembler View"_s);
        QCOMPARE((*first)->description(), u"View disassembly"_s);
        QCOMPARE((*std::prev(first))->name(), u"Python File"_s);
    }

    void largeFilesGoToTheLastKind()
    {
        const WindowFixture f;
        const QList<DocumentTemplate *> kinds = f.window->workspace()->templates();
        QVERIFY(kinds.last()->inherits("LargeTextDocumentTemplate"));
        QVERIFY(kinds.last()->name().isEmpty() && kinds.last()->description().isEmpty());
        QCOMPARE(kinds.at(kinds.size() - 2)->name(), u"Text File"_s);
        QTemporaryFile file(QDir::temp().filePath(u"XXXXXX.py"_s));
        QVERIFY(file.open() && file.resize(10'000'000));
        QCOMPARE(kindOf(f, file.fileName())->name(), u"Python File"_s);
        QVERIFY(file.resize(10'000'001));
        for (DocumentTemplate *kind : kinds)
            QCOMPARE(kind->canOpen(file.fileName()), kind == kinds.last());
    }
};

int main(int argc, char **argv)
{
    DocumentKindsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_documentkinds.moc"
