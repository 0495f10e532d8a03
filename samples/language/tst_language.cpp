#include <interfaceobject.h>
#include <itextdocumentplugin.h>
#include <memory>
#include <pluginfactory.h>
#include <QPlainTextDocumentLayout>
#include <QPluginLoader>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <syntaxhighlighter.h>
#include <textindent.h>

using namespace Qt::StringLiterals;

/// The language as Varnel uses it.
class LanguageTest : public QObject
{
    Q_OBJECT

    InterfacePtr<IPluginObject> m_object;
    InterfacePtr<ITextDocumentPlugin> m_language;
    FormatTable m_formats;

    /// The identifier of the format of each character, as a digit.
    static QString painted(const QTextBlock &block)
    {
        QString digits(block.length() - 1, u'-');
        for (const QTextLayout::FormatRange &range : block.layout()->formats()) {
            const QString digit = QString::number(range.format.intProperty(QTextFormat::UserProperty));
            digits.replace(range.start, range.length, digit.repeated(range.length));
        }
        return digits;
    }

private Q_SLOTS:
    void init()
    {
        QPluginLoader loader(QStringLiteral(PLUGIN_LIBRARY));
        auto *factory = qobject_cast<IPluginFactory *>(loader.instance());
        QVERIFY2(factory, qPrintable(loader.errorString()));
        m_object.reset(factory->create(factory->featureList().constFirst()));
        m_language = queryInterface<ITextDocumentPlugin>(m_object.get());
        QVERIFY(m_language);
        for (int id = FormatId::Background; id <= FormatId::Label; ++id)
            m_formats[id].setProperty(QTextFormat::UserProperty, id);
    }

    void objectIsALanguageForAssemblerFiles()
    {
        QCOMPARE(m_object->type(), IPluginObject::TextDocument);
        QCOMPARE(m_language->extensions(), (QStringList{u"s"_s, u"asm"_s}));
        QCOMPARE(m_language->title(), u"Assembler File"_s);
        QVERIFY(!m_language->icon().isNull());
    }

    void linesAreHighlighted_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("formats");
        QTest::newRow("label, number, comment") << u"start: ldi 12 ; twelve"_s << u"8888881111133122222222"_s;
        QTest::newRow("directive and text") << u".byte \"a;b\""_s << u"77777144444"_s;
        QTest::newRow("comment of two lines") << u"/* here\nthere */ 7"_s << u"2222222\n2222222213"_s;
    }
    void linesAreHighlighted()
    {
        QFETCH(QString, text);
        QFETCH(QString, formats);
        QTextDocument document(text);
        document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
        const std::unique_ptr<SyntaxHighlighter> highlighter(m_language->syntaxHighlighter());
        highlighter->setFormats(&m_formats);
        QStringList lines;
        for (QTextBlock line = document.begin(); line.isValid(); line = line.next()) {
            highlighter->process(&document, line, 0);
            lines += painted(line);
        }
        QCOMPARE(lines.join(u'\n'), formats);
    }

    void linesAreIndented_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("indented");
        QTest::newRow("smart") << int(TextIndent::Smart) << u"loop:\n    nop"_s;
        QTest::newRow("none") << int(TextIndent::NoIndent) << u"  loop:\nnop"_s;
    }
    void linesAreIndented()
    {
        QFETCH(int, mode);
        QFETCH(QString, indented);
        QTextDocument document(u"  loop:\nnop"_s);
        const std::unique_ptr<TextIndent> indenter(m_language->indenter());
        indenter->setIndentMode(TextIndent::IndentMode(mode));
        for (QTextBlock line = document.begin(); line.isValid(); line = line.next())
            indenter->indent(&document, line);
        QCOMPARE(document.toPlainText(), indented);
    }
};

QTEST_MAIN(LanguageTest)
#include "tst_language.moc"
