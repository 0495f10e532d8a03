#include <baseindent.h>
#include <interfaceobject.h>
#include <itextdocumentplugin.h>
#include <pluginfactory.h>
#include <QCoreApplication>
#include <QRegularExpression>
#include <QTextBlock>
#include <syntaxhighlighter.h>

using namespace Qt::StringLiterals;

/// Highlights assembler: comments after ";" or between "/*" and "*/", labels, directives, strings and numbers.
class AssemblerHighlighter : public SyntaxHighlighter
{
public:
    void process(QTextDocument *document, QTextBlock block, int, bool invalidate) override
    {
        const QString text = block.text();
        QList<QTextLayout::FormatRange> ranges;
        int done = 0;
        const auto paintUpTo = [&](qsizetype end, int id) {
            if (end > done)
                ranges.append({done, int(end) - done, format(id)});
            done = int(end);
        };

        int state = startState(document, block);
        if (state == InComment) {
            const qsizetype end = text.indexOf(u"*/"_s);
            paintUpTo(end < 0 ? text.size() : end + 2, FormatId::Comment);
            state = end < 0 ? InComment : InCode;
        }
        for (auto words = m_words.globalMatch(text, done); words.hasNext();) {
            const QRegularExpressionMatch word = words.next();
            paintUpTo(word.capturedStart(), FormatId::Standard);
            paintUpTo(word.capturedEnd(), FormatOfGroup[word.lastCapturedIndex()]);
            if (word.lastCapturedIndex() == OpenComment)
                state = InComment;
        }
        paintUpTo(text.size(), FormatId::Standard);

        paint(document, block, ranges);
        setEndState(block, state, invalidate);
    }

private:
    enum State { InCode, InComment };
    static constexpr int OpenComment = 1; ///< its group in m_words
    static constexpr int FormatOfGroup[] = {FormatId::Standard,     FormatId::Comment, FormatId::Comment,
                                            FormatId::PreProcessor, FormatId::Label,   FormatId::String,
                                            FormatId::Number};
    const QRegularExpression m_words{u"(/\\*(?:(?!\\*/).)*$)|(;.*|/\\*.*?\\*/)|(\\.\\w+)|(^\\w+:)"
                                     u"|(\"(?:[^\"\\\\]|\\\\.)*\"?)|(\\b\\d\\w*)"_s};
};

/// Puts labels at the left edge and everything else one tab stop to the right.
class AssemblerIndent : public BaseIndent
{
public:
    void indent(QTextDocument *document, QTextBlock block, int *oldIndent, int *newIndent) override
    {
        if (indentMode() != Smart) {
            BaseIndent::indent(document, block, oldIndent, newIndent);
            return;
        }
        static const QRegularExpression label(u"^\\s*\\w+:"_s);
        int before = 0;
        int after = label.match(block.text()).hasMatch() ? 0 : tabSize();
        setIndent(block, &before, &after);
        if (oldIndent)
            *oldIndent = before;
        if (newIndent)
            *newIndent = after;
    }
};

/// The plug-in object: the properties of the language, its highlighter and indenter.
class Assembler : public InterfaceObject<IPluginObject, ITextDocumentPlugin>
{
    Q_DECLARE_TR_FUNCTIONS(Assembler)
public:
    int type() override { return TextDocument; }
    QString title() override { return tr("Assembler File"); }
    QString description() override { return tr("Creates an assembler source file"); }
    QStringList extensions() override { return {u"s"_s, u"asm"_s}; }
    QPixmap icon() override
    {
        QPixmap picture(16, 16);
        picture.fill(Qt::darkCyan);
        return picture;
    }
    SyntaxHighlighter *syntaxHighlighter() override { return new AssemblerHighlighter; }
    TextIndent *indenter() override { return new AssemblerIndent; }
};

/// The root object of the plug-in library.
class LanguageFactory : public QObject, public InterfaceObject<IPluginFactory>
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
    Q_INTERFACES(IPluginFactory)
public:
    QStringList featureList() override { return {u"{5f5c3f0e-5d0f-4b6e-9a39-1d3c2b7f9e11}"_s}; }
    IPluginObject *create(const QString &feature) override
    {
        return featureList().contains(feature) ? new Assembler : nullptr;
    }
    QString name() override { return u"Assembler"_s; }
    QPixmap logo() override
    {
        QPixmap picture(32, 32);
        picture.fill(Qt::darkCyan);
        return picture;
    }
};

#include "language.moc"
