#include "baseindent.h"
#include "documenttemplate.h"
#include "icustomdocumentplugin.h"
#include "itextdocumentplugin.h"
#include "plugindocuments.h"
#include "stubfixture.h"
#include "textdocumenttemplate.h"
#include "workspace.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class PictureTemplate : public DocumentTemplate
{
public:
    PictureTemplate(const QString &name, const QString &extension)
        : DocumentTemplate(name, {}, {}), m_extension(extension)
    {}
    bool canOpen(const QString &) override { return false; }
    Document *createDocument() override { return nullptr; }
    View *createView(Document *) override { return nullptr; }
    QString extension() override { return m_extension; }

private:
    const QString m_extension;
};

class LoudHighlighter : public SyntaxHighlighter
{
};

class LoudIndent : public BaseIndent
{
};

QPixmap redPicture()
{
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    return picture;
}
} // namespace

/// Kinds of documents and languages of the editor from plug-ins.
class PluginDocumentsTest : public QObject, protected StubFixture
{
    Q_OBJECT

private:
    std::unique_ptr<Workspace> m_documents;
    FormatTable m_formats;
    QStringList m_extensions;

    void addDocumentKind(const QString &label, const QString &extension)
    {
        StubScript &kind = script(label, {ICustomDocumentPlugin::Iid});
        kind.type = IPluginObject::CustomDocument;
        kind.documentTemplate = [=] { return new PictureTemplate(label, extension); };
    }

    StubScript &addLanguage(const QString &label, const QStringList &extensions)
    {
        StubScript &language = script(label, {ITextDocumentPlugin::Iid});
        language.type = IPluginObject::TextDocument;
        language.title = label;
        language.extensions = extensions;
        return language;
    }

    void addAll()
    {
        const PluginManager manager({QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path()});
        addPluginDocuments(
            {.features = manager.featureList(), .create = [&](const QString &each) { return manager.create(each); }},
            m_documents.get(), &m_formats, &m_extensions);
        QCOMPARE(m_stub->objectCount(), 0);
    }

    QStringList names() const
    {
        QStringList names;
        for (const DocumentTemplate *docTemplate : m_documents->templates())
            names += docTemplate->name();
        return names;
    }

    TextDocumentTemplate *language(int index) const
    {
        return qobject_cast<TextDocumentTemplate *>(m_documents->templates().value(index));
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_documents = std::make_unique<Workspace>();
        m_formats = {};
        m_extensions = {u"c"_s};
    }
    void cleanup()
    {
        m_documents.reset();
        tearDown();
    }

    void documentKindsAreAddedBeforeLanguages()
    {
        addLanguage(u"a"_s, {u"asm"_s});
        addDocumentKind(u"b"_s, u"png"_s);
        addLanguage(u"c"_s, {u"ld"_s});
        addDocumentKind(u"d"_s, u"vcd"_s);
        addAll();
        QCOMPARE(names(), (QStringList{u"b"_s, u"d"_s, u"a"_s, u"c"_s}));
        QCOMPARE(m_extensions, (QStringList{u"c"_s, u"png"_s, u"vcd"_s, u"asm"_s, u"ld"_s}));
    }

    void anExtensionIsListedOnce()
    {
        addDocumentKind(u"a"_s, u"c"_s);
        addDocumentKind(u"b"_s, u"png"_s);
        addLanguage(u"d"_s, {u"png"_s, u"jpg"_s});
        addAll();
        QCOMPARE(names().size(), 3);
        QCOMPARE(m_extensions, (QStringList{u"c"_s, u"png"_s}));
    }

    void aLanguageIsATemplateOfTheTextEditor()
    {
        StubScript &asmLanguage = addLanguage(u"Assembler"_s, {u"asm"_s, u"s"_s});
        asmLanguage.description = u"Creates an assembler file"_s;
        asmLanguage.icon = redPicture;
        addAll();
        TextDocumentTemplate *docTemplate = language(0);
        QVERIFY(docTemplate);
        QCOMPARE(docTemplate->name(), u"Assembler"_s);
        QCOMPARE(docTemplate->description(), u"Creates an assembler file"_s);
        QCOMPARE(docTemplate->icon().pixmap(16).toImage().pixelColor(3, 3), QColor(Qt::red));
        QVERIFY(docTemplate->canOpen(u"boot.S"_s));
        QVERIFY(!docTemplate->canOpen(u"boot.c"_s));
        QCOMPARE(m_extensions, (QStringList{u"c"_s, u"asm"_s}));
    }

    void languageUsesItsHighlighterAndIndenter()
    {
        StubScript &script = addLanguage(u"a"_s, {u"asm"_s});
        script.syntaxHighlighter = [] { return new LoudHighlighter; };
        script.indenter = [] { return new LoudIndent; };
        m_formats[FormatId::Comment].setForeground(Qt::green);
        addAll();
        QVERIFY(dynamic_cast<LoudHighlighter *>(language(0)->highlighter()));
        QVERIFY(dynamic_cast<LoudIndent *>(language(0)->indenter()));
        QCOMPARE(language(0)->highlighter()->format(FormatId::Comment).foreground().color(), QColor(Qt::green));
    }

    void languageWithoutHighlighterAndIndenterGetsPlainOnes()
    {
        addLanguage(u"a"_s, {u"asm"_s});
        m_formats[FormatId::Standard].setForeground(Qt::blue);
        addAll();
        const SyntaxHighlighter *highlighter = language(0)->highlighter();
        QVERIFY(highlighter);
        QVERIFY(typeid(*highlighter) == typeid(SyntaxHighlighter));
        QCOMPARE(highlighter->format(FormatId::Standard).foreground().color(), QColor(Qt::blue));
        const TextIndent *indenter = language(0)->indenter();
        QVERIFY(indenter);
        QVERIFY(typeid(*indenter) == typeid(BaseIndent));
    }

    void everyFeatureIsCreatedAndReleasedTwice()
    {
        int made = 0;
        int gone = 0;
        for (const QString &label : {u"gcc"_s, u"a"_s}) {
            StubScript &each = label == u"gcc"_s ? buildScript(label) : addLanguage(label, {u"asm"_s});
            each.on[u"create"_s] = [&] { ++made; };
            each.on[u"delete"_s] = [&] { ++gone; };
        }
        addAll();
        QCOMPARE(made, 4);
        QCOMPARE(gone, 4);
    }

    void environmentsAddNoDocumentKinds()
    {
        StubScript &gcc = buildScript(u"gcc"_s, {ICustomDocumentPlugin::Iid, ITextDocumentPlugin::Iid});
        for (const int type : {1, 2, 3, 5, -1}) {
            gcc.type = type;
            addAll();
        }
        QCOMPARE(names(), QStringList());
        QCOMPARE(m_stub->takeCalls(), QStringList());
    }

    void typeWithoutItsInterfaceFailsAnAssertion()
    {
        script(u"a"_s, {ITextDocumentPlugin::Iid}).type = IPluginObject::CustomDocument;
        script(u"b"_s, {ICustomDocumentPlugin::Iid}).type = IPluginObject::TextDocument;
        expectAssert(u"cdt"_s);
        expectAssert(u"tdt"_s);
        addAll();
        QCOMPARE(names(), QStringList());
    }

    void kindWithoutATemplateIsSkipped()
    {
        addDocumentKind(u"a"_s, u"png"_s);
        m_stub->script(u"{a}"_s).documentTemplate = nullptr;
        addDocumentKind(u"b"_s, u"vcd"_s);
        addAll();
        QCOMPARE(names(), QStringList{u"b"_s});
        QCOMPARE(m_extensions, (QStringList{u"c"_s, u"vcd"_s}));
    }

    void exceptionSkipsOneKindOnly_data()
    {
        QTest::addColumn<QString>("call");
        for (const QString &call : {u"documentTemplate"_s, u"title"_s, u"description"_s, u"icon"_s,
                                    u"syntaxHighlighter"_s, u"indenter"_s, u"extensions"_s})
            QTest::newRow(qPrintable(call)) << call;
    }

    void exceptionSkipsOneKindOnly()
    {
        QFETCH(QString, call);
        addDocumentKind(u"a"_s, u"png"_s);
        addLanguage(u"b"_s, {u"asm"_s}).indenter = [] { return new LoudIndent; };
        addDocumentKind(u"c"_s, u"vcd"_s);
        addLanguage(u"d"_s, {u"ld"_s});
        const QString bad = call == u"documentTemplate"_s ? u"a"_s : u"b"_s;
        m_stub->script(u'{' + bad + u'}').on[call] = throwError;
        const QString interface = bad == u"a"_s ? u"ICustomDocumentPlugin::"_s : u"ITextDocumentPlugin::"_s;
        expectException(qPrintable(interface + call));
        addAll();
        QStringList good{u"a"_s, u"c"_s, u"b"_s, u"d"_s};
        good.removeOne(bad);
        QCOMPARE(names(), good);
    }

    void featureWithoutAnObjectIsSkipped()
    {
        addDocumentKind(u"a"_s, u"png"_s);
        m_stub->script(u"{a}"_s).on[u"create"_s] = throwError;
        expectException("IPluginFactory::create");
        expectException("IPluginFactory::create");
        addAll();
        QCOMPARE(names(), QStringList());
    }
};

QTEST_MAIN(PluginDocumentsTest)
#include "tst_plugindocuments.moc"
