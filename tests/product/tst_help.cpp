#include <QDir>
#include <QDirIterator>
#include <QDomDocument>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextTable>

using namespace Qt::StringLiterals;

namespace {

const QDir helpDirectory(u"" VARNEL_SOURCE_DIR "/help"_s);

QString read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// All pages, as paths relative to the help directory.
QStringList pages()
{
    QStringList result;
    QDirIterator it(helpDirectory.path(), {u"*.htm*"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        result.append(helpDirectory.relativeFilePath(it.next()));
    result.sort();
    return result;
}

/// The page as shown in the help window.
std::unique_ptr<QTextDocument> show(const QString &page)
{
    auto document = std::make_unique<QTextDocument>();
    document->setHtml(read(helpDirectory.filePath(page)));
    return document;
}

QStringList links(const QTextDocument &document)
{
    QStringList result;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (const QTextLayout::FormatRange &range : block.textFormats()) {
            if (range.format.isAnchor() && !range.format.anchorHref().isEmpty())
                result.append(range.format.anchorHref());
        }
    }
    return result;
}

/// Whether the program carries out the link, instead of showing another page.
bool isCommand(const QString &link)
{
    return link.startsWith(u"command:");
}

QDomElement actionsOfTheProgram()
{
    QDomDocument document;
    document.setContent(read(u"" VARNEL_SOURCE_DIR "/config/uiconfig.xml"_s));
    return document.documentElement().firstChildElement(u"actions"_s);
}

/// The names of the actions, and with them the texts.
QMap<QString, QString> actionTexts()
{
    QMap<QString, QString> result;
    const QDomElement actions = actionsOfTheProgram();
    for (QDomElement action = actions.firstChildElement(); !action.isNull(); action = action.nextSiblingElement())
        result.insert(action.attribute(u"name"_s), action.firstChildElement(u"text"_s).text());
    return result;
}

/// The anchors of a page to which links lead.
QStringList anchors(const QTextDocument &document)
{
    QStringList result;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (const QTextLayout::FormatRange &range : block.textFormats())
            result += range.format.anchorNames();
    }
    return result;
}

/// The target page of a link on another page, relative to the help directory.
QString target(const QString &page, const QString &link)
{
    const QString path = QFileInfo(page).dir().filePath(link.section(u'#', 0, 0));
    return QDir::cleanPath(path);
}

QDomElement rootOf(const QString &path)
{
    QDomDocument document;
    document.setContent(read(path));
    return document.documentElement();
}

QDomElement contents(const QString &name = u"varnel.xml"_s)
{
    return rootOf(helpDirectory.filePath(name));
}

/// The pages of all tables of contents, in the order of the navigator.
QStringList contentsPages()
{
    QStringList result;
    for (const QString &name : helpDirectory.entryList({u"*.xml"_s})) {
        const QDomElement root = contents(name);
        const QDomNodeList nodes = root.elementsByTagName(u"page"_s);
        for (int i = 0; i < nodes.count(); ++i)
            result.append(nodes.at(i).toElement().attribute(u"path"_s));
    }
    return result;
}

/// The text of all pages.
QString manual()
{
    QString text;
    for (const QString &page : pages())
        text += show(page)->toPlainText().simplified() + u'\n';
    return text;
}

/// A text of the user interface without the mark of its key and the dots of commands that ask.
QString spoken(QString text)
{
    return text.remove(u'&').remove(u"..."_s).remove(u"%1"_s).trimmed();
}

/// The same without a colon and line breaks.
QString label(const QString &text)
{
    const QString simple = spoken(text).simplified();
    return simple.endsWith(u':') ? simple.chopped(1) : simple;
}

/// All source files of the program and its plug-ins as one text, to find names in.
QString sources()
{
    QString text;
    for (const auto &folder : {u"source"_s, u"plugins"_s, u"branding"_s}) {
        QDirIterator it(u"" VARNEL_SOURCE_DIR "/"_s + folder, {u"*.cpp"_s, u"*.ui"_s}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            text += read(it.next());
    }
    return text;
}

/// The texts of the source files that @p expression captures, without those that have parts filled in only.
QStringList textsInSources(const QString &expression)
{
    QStringList result;
    const QString code = sources();
    QRegularExpressionMatchIterator it = QRegularExpression(expression).globalMatch(code);
    while (it.hasNext())
        result.append(spoken(it.next().captured(1).section(u"\\t"_s, 0, 0)));
    return result;
}

/// The classes of the dialogs and of the pages of dialogs.
QStringList dialogClasses()
{
    QStringList result;
    const QDir dialogs(u"" VARNEL_SOURCE_DIR "/source/framework/dialogs"_s);
    static const QRegularExpression declaration(
        u"class (\\w+) (?:final )?: public (?:QDialog|QWidget|OptionsPage)\\b"_s);
    for (const QString &header : dialogs.entryList({u"*.h"_s})) {
        QRegularExpressionMatchIterator it = declaration.globalMatch(read(dialogs.filePath(header)));
        while (it.hasNext())
            result.append(it.next().captured(1));
    }
    return result;
}

/// The entries of the table that F1 uses: page by name.
QMap<QString, QString> pagesOf(const QString &kind)
{
    QMap<QString, QString> result;
    const QDomElement table = rootOf(u"" VARNEL_SOURCE_DIR "/config/helppages.xml"_s);
    for (QDomElement entry = table.firstChildElement(kind); !entry.isNull(); entry = entry.nextSiblingElement(kind))
        result.insert(entry.attribute(u"name"_s), entry.attribute(u"page"_s));
    return result;
}

void collect(const QDomElement &parent, QStringList *faults)
{
    for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString label = child.tagName() == u"page" ? u"name"_s : u"title"_s;
        if (child.tagName() != u"page" && child.tagName() != u"book")
            faults->append(child.tagName());
        else if (child.attribute(label).isEmpty())
            faults->append(child.tagName() + u" without "_s + label);
        collect(child, faults);
    }
}

/// The shortcuts of the UI configuration: "text: keys".
QStringList declaredShortcuts()
{
    QDomDocument document;
    document.setContent(read(u"" VARNEL_SOURCE_DIR "/config/uiconfig.xml"_s));
    QStringList result;
    const QDomNodeList actions = document.elementsByTagName(u"action"_s);
    for (int i = 0; i < actions.count(); ++i) {
        const QDomElement action = actions.at(i).toElement();
        if (!action.attribute(u"accel"_s).isEmpty())
            result.append(action.firstChildElement(u"text"_s).text() + u": "_s + action.attribute(u"accel"_s));
    }
    result.sort();
    return result;
}

QString cellText(const QTextTable &table, int row, int column)
{
    return table.cellAt(row, column).firstCursorPosition().block().text();
}

/// The rows of all tables of a page without their headings: "first cell: second cell".
QStringList tableRows(const QTextDocument &document)
{
    QStringList result;
    for (QTextFrame *frame : document.rootFrame()->childFrames()) {
        const auto *table = qobject_cast<QTextTable *>(frame);
        for (int row = 1; table && row < table->rows(); ++row)
            result.append(cellText(*table, row, 0) + u": "_s + cellText(*table, row, 1));
    }
    result.sort();
    return result;
}

} // namespace

/// The help pages of the product: complete, linked, and consistent with the menus.
class TestHelp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void homePageIsThere() { QVERIFY(pages().contains(u"html/index.html"_s)); }
    void contentsConsistOfBooksAndPages();
    void contentsNameEachPageOnce();
    void firstPageOfTheContentsIsTheHomePage();
    void pageHasTitleAndDescription_data() { pageRows(); }
    void pageHasTitleAndDescription();
    void titlesAreUnique();
    void linkTargetsExist_data() { pageRows(); }
    void linkTargetsExist();
    void commandLinksNameActionsAndWorkspaces_data() { pageRows(); }
    void commandLinksNameActionsAndWorkspaces();
    void picturesExist_data() { pageRows(); }
    void picturesExist();
    void everyActionIsNamed();
    void everyMenuItemIsNamed();
    void everyDialogIsNamed();
    void everyWindowTitleIsNamed();
    void everyMenuItemOfTheCodeIsNamed();
    void everyDialogHasAPage();
    void everyDocumentWindowHasAPage();
    void everyActionHasAPage();
    void pagesForKeyF1Exist();
    void windowsAndCommandsWithPagesExist();
    void samplesAreShownAsTheyAre();
    void everyCodeBlockIsASampleOrTried();
    void picturesAreUsedAndOfModestSize();
    void homePageLinksToAllPages();
    void homePageLinksToAllExamples();
    void titlesAreThoseOfTheContents();
    void boldWordsAreTextsOfTheProgram();
    void pageSetsNoColours_data() { pageRows(); }
    void pageSetsNoColours();
    void pageIsIndexedCompletely_data() { pageRows(); }
    void pageIsIndexedCompletely();
    void shortcutsAreThoseOfTheMenus();

private:
    static void pageRows();
};

void TestHelp::pageRows()
{
    QTest::addColumn<QString>("page");
    for (const QString &page : pages())
        QTest::newRow(qPrintable(page)) << page;
}

void TestHelp::contentsConsistOfBooksAndPages()
{
    QCOMPARE(contents().attribute(u"name"_s), u"Varnel"_s);
    QStringList faults;
    collect(contents(), &faults);
    QCOMPARE(faults, QStringList());
}

void TestHelp::contentsNameEachPageOnce()
{
    QStringList listed = contentsPages();
    listed.sort();
    QCOMPARE(listed, pages());
}

void TestHelp::firstPageOfTheContentsIsTheHomePage()
{
    QCOMPARE(contentsPages().value(0), u"html/index.html"_s);
}

void TestHelp::pageHasTitleAndDescription()
{
    QFETCH(QString, page);
    const QString title = show(page)->metaInformation(QTextDocument::DocumentTitle);
    QVERIFY(!title.isEmpty());
    const QString html = read(helpDirectory.filePath(page));
    // Search results show these two texts.
    QVERIFY(html.contains(u"<title>"_s + title + u"</title>"_s));
    QVERIFY(html.contains(QRegularExpression(u"<meta name=\"description\" content=\"[^\"<>&]+\">"_s)));
}

void TestHelp::titlesAreUnique()
{
    QSet<QString> titles;
    for (const QString &page : pages())
        titles.insert(show(page)->metaInformation(QTextDocument::DocumentTitle));
    QCOMPARE(titles.size(), pages().size());
}

void TestHelp::linkTargetsExist()
{
    QFETCH(QString, page);
    const auto document = show(page);
    for (const QString &link : links(*document)) {
        if (isCommand(link))
            continue;
        QVERIFY2(pages().contains(target(page, link)), qPrintable(link));
        const QString anchor = link.section(u'#', 1);
        QVERIFY2(anchor.isEmpty() || anchors(*show(target(page, link))).contains(anchor), qPrintable(link));
    }
}

void TestHelp::commandLinksNameActionsAndWorkspaces()
{
    QFETCH(QString, page);
    const auto document = show(page);
    for (const QString &link : links(*document)) {
        const QString name = link.section(u':', 1).section(u'?', 0, 0);
        if (isCommand(link) && name != "openWorkspace"_L1)
            QVERIFY2(actionTexts().contains(name), qPrintable(link));
        else if (isCommand(link))
            QVERIFY2(QFile::exists(helpDirectory.filePath(link.section(u'?', 1))), qPrintable(link));
    }
}

void TestHelp::picturesExist()
{
    QFETCH(QString, page);
    static const QRegularExpression picture(u"<img[^>]*\\ssrc=\"([^\"]*)\""_s);
    QRegularExpressionMatchIterator it = picture.globalMatch(read(helpDirectory.filePath(page)));
    while (it.hasNext()) {
        const QString source = it.next().captured(1);
        QVERIFY2(helpDirectory.exists(target(page, source)), qPrintable(source));
    }
}

void TestHelp::everyActionIsNamed()
{
    const QString text = manual();
    QVERIFY(actionTexts().size() >= 88);
    for (const QString &name : actionTexts())
        QVERIFY2(text.contains(name), qPrintable(name));
}

void TestHelp::everyMenuItemIsNamed()
{
    const QString text = manual();
    const QDomNodeList items = actionsOfTheProgram().elementsByTagName(u"menutext"_s);
    for (int i = 0; i < items.count(); ++i) {
        const QString name = spoken(items.at(i).toElement().text());
        QVERIFY2(text.contains(name), qPrintable(name));
    }
}

void TestHelp::everyDialogIsNamed()
{
    const QString text = manual();
    const QDir dialogs(u"" VARNEL_SOURCE_DIR "/source/framework/dialogs"_s);
    const QStringList forms = dialogs.entryList({u"*.ui"_s});
    QVERIFY(forms.size() > 10);
    for (const QString &form : forms) {
        const QDomNodeList properties = rootOf(dialogs.filePath(form)).elementsByTagName(u"property"_s);
        for (int i = 0; i < properties.count(); ++i) {
            const QDomElement property = properties.at(i).toElement();
            if (property.attribute(u"name"_s) == "windowTitle"_L1)
                QVERIFY2(text.contains(spoken(property.text().trimmed())), qPrintable(form));
        }
    }
}

/// The titles of windows without a form, and of dock windows.
void TestHelp::everyWindowTitleIsNamed()
{
    const QString text = manual();
    const QStringList titles = textsInSources(u"setWindowTitle\\(tr\\(\"([^\"]+)\""_s)
                               + textsInSources(u"addDock\\([^;]*?tr\\(\"([^\"]+)\""_s);
    QVERIFY(titles.size() > 8);
    for (const QString &title : titles) {
        const QString name = title.section(QRegularExpression(u" - |:"_s), 0, 0); // the rest is filled in
        QVERIFY2(text.contains(name), qPrintable(name));
    }
}

/// Those of context menus, and the commands that plug-ins add.
void TestHelp::everyMenuItemOfTheCodeIsNamed()
{
    const QString text = manual();
    const QStringList ofMenus = textsInSources(u"(?:addAction|insertItem|addMenu)\\([^;]*?tr\\(\"([^\"]+)\""_s);
    const QStringList ofPlugins = textsInSources(u"\\{(?:u\"\\w+\"_s|\\w+), tr\\(\"([^\"]+)\"\\),\\s+tr\\("_s);
    QVERIFY(ofMenus.size() > 15 && ofPlugins.size() > 5);
    for (const QString &item : ofMenus + ofPlugins)
        QVERIFY2(text.contains(item, Qt::CaseInsensitive), qPrintable(item));
}

// Key F1 ------------------------------------------------------------------

/// By the name of its class or, as it is in the program, of the object.
void TestHelp::everyDialogHasAPage()
{
    const QMap<QString, QString> table = pagesOf(u"window"_s);
    const QStringList classes = dialogClasses();
    QVERIFY(classes.size() > 12);
    for (const QString &name : classes) {
        const QString object = name.left(1).toLower() + name.mid(1);
        const bool isHelp = name == "HelpDialog"_L1;
        QVERIFY2(isHelp || table.contains(name) || table.contains(object), qPrintable(name));
    }
}

/// By the classes of the views, which have the names of their files as objects.
void TestHelp::everyDocumentWindowHasAPage()
{
    const QMap<QString, QString> table = pagesOf(u"window"_s);
    const QDir views(u"" VARNEL_SOURCE_DIR "/source/workspace"_s);
    static const QRegularExpression declaration(u"class (\\w+) (?:final )?: public View\\b"_s);
    int count = 0;
    for (const QString &header : views.entryList({u"*.h"_s})) {
        QRegularExpressionMatchIterator it = declaration.globalMatch(read(views.filePath(header)));
        for (; it.hasNext(); ++count) {
            const QString name = it.next().captured(1);
            QVERIFY2(table.contains(name), qPrintable(name));
        }
    }
    QCOMPARE(count, 4);
}

void TestHelp::everyActionHasAPage()
{
    const QMap<QString, QString> table = pagesOf(u"action"_s);
    for (const QString &name : actionTexts().keys())
        QVERIFY2(table.contains(name), qPrintable(name));
}

void TestHelp::pagesForKeyF1Exist()
{
    QVERIFY(!pagesOf(u"window"_s).isEmpty());
    for (const QString &entry : pagesOf(u"action"_s).values() + pagesOf(u"window"_s).values()) {
        const QString page = u"html/"_s + entry.section(u'#', 0, 0);
        QVERIFY2(pages().contains(page), qPrintable(entry));
        const QString anchor = entry.section(u'#', 1);
        QVERIFY2(anchor.isEmpty() || anchors(*show(page)).contains(anchor), qPrintable(entry));
    }
}

/// Names in the table would otherwise stay when a window or a command is renamed.
void TestHelp::windowsAndCommandsWithPagesExist()
{
    const QString code = sources();
    for (const QString &name : pagesOf(u"action"_s).keys())
        QVERIFY2(actionTexts().contains(name) || code.contains(u'"' + name + u'"'), qPrintable(name));
    for (const QString &name : pagesOf(u"window"_s).keys())
        QVERIFY2(code.contains(u'"' + name + u'"') || code.contains(name + u"::"_s + name), qPrintable(name));
}

// Samples and pictures ----------------------------------------------------

void TestHelp::samplesAreShownAsTheyAre()
{
    const QDir samples(helpDirectory.filePath(u"samples"_s));
    const QStringList files = samples.entryList(QDir::Files);
    QVERIFY(!files.isEmpty());
    QString html;
    for (const QString &page : pages())
        html += read(helpDirectory.filePath(page));
    html.replace(u"&lt;"_s, u"<"_s).replace(u"&gt;"_s, u">"_s).replace(u"&amp;"_s, u"&"_s);
    for (const QString &file : files)
        QVERIFY2(html.contains(u"<pre>\n"_s + read(samples.filePath(file)) + u"</pre>"_s), qPrintable(file));
}

void TestHelp::everyCodeBlockIsASampleOrTried()
{
    QString tried = read(u"" VARNEL_SOURCE_DIR "/tests/gui/test_manual.py"_s);
    const QDir samples(helpDirectory.filePath(u"samples"_s));
    for (const QString &file : samples.entryList(QDir::Files))
        tried += u"\"\"\"\n"_s + read(samples.filePath(file)) + u"\"\"\""_s;
    static const QRegularExpression block(u"<pre>(.*?)</pre>"_s, QRegularExpression::DotMatchesEverythingOption);
    int count = 0;
    for (const QString &page : pages()) {
        QRegularExpressionMatchIterator it = block.globalMatch(read(helpDirectory.filePath(page)));
        for (; it.hasNext(); ++count) {
            QString text = it.next().captured(1);
            text.replace(u"&lt;"_s, u"<"_s).replace(u"&gt;"_s, u">"_s).replace(u"&amp;"_s, u"&"_s);
            QVERIFY2(tried.contains(u"\"\"\""_s + text + u"\"\"\""_s), qPrintable(page + u": "_s + text));
        }
    }
    QVERIFY(count > 12);
}

void TestHelp::picturesAreUsedAndOfModestSize()
{
    constexpr qint64 Largest = 250'000;
    QString html;
    for (const QString &page : pages())
        html += read(helpDirectory.filePath(page));
    const QFileInfoList pictures = QDir(helpDirectory.filePath(u"pictures"_s)).entryInfoList(QDir::Files);
    QVERIFY(!pictures.isEmpty());
    for (const QFileInfo &picture : pictures) {
        QVERIFY2(html.contains(u"pictures/"_s + picture.fileName()), qPrintable(picture.fileName()));
        QVERIFY2(picture.size() < Largest, qPrintable(picture.fileName()));
    }
}

void TestHelp::homePageLinksToAllPages()
{
    QStringList reached;
    // the others have those of the types
    for (const auto &home : {u"html/index.html"_s, u"html/python/index.html"_s, u"html/interfaces/index.html"_s}) {
        reached.append(home);
        const auto document = show(home);
        for (const QString &link : links(*document)) {
            if (!isCommand(link))
                reached.append(target(home, link));
        }
    }
    reached.removeDuplicates();
    reached.sort();
    QCOMPARE(reached, pages());
}

void TestHelp::homePageLinksToAllExamples()
{
    const QStringList linked = links(*show(u"html/index.html"_s));
    int count = 0;
    QDirIterator it(u"" VARNEL_SOURCE_DIR "/examples"_s, {u"*.vnw"_s}, QDir::Files, QDirIterator::Subdirectories);
    for (; it.hasNext(); ++count) {
        const QString link = u"command:openWorkspace?"_s + helpDirectory.relativeFilePath(it.next());
        QVERIFY2(linked.contains(link), qPrintable(link));
    }
    QVERIFY(count >= 5);
}

/// Those of generated pages have a word before the name of the type.
void TestHelp::titlesAreThoseOfTheContents()
{
    for (const QString &file : helpDirectory.entryList({u"*.xml"_s})) {
        const QDomElement root = contents(file);
        const QDomNodeList entries = root.elementsByTagName(u"page"_s);
        for (int i = 0; i < entries.count(); ++i) {
            const QDomElement entry = entries.at(i).toElement();
            const auto page = show(entry.attribute(u"path"_s));
            QString title = page->metaInformation(QTextDocument::DocumentTitle);
            const QString heading = page->firstBlock().text();
            QVERIFY2(heading == title || heading == title.section(u": "_s, 1), qPrintable(heading));
            title.remove(QRegularExpression(u"^(Python|Interface): "_s));
            QCOMPARE(entry.attribute(u"name"_s), title);
        }
    }
}

/// Bold words name menus, windows and controls, as the translation lists them.
void TestHelp::boldWordsAreTextsOfTheProgram()
{
    const QStringList others{u"Change the value"_s,
                             u"There is no password."_s, // headings of paragraphs
                             u"project"_s,
                             u"workspace"_s,
                             u"current"_s,
                             u"build environment"_s,
                             u"execution environment"_s,
                             u"F1"_s,
                             u"CRLF"_s,
                             u"Latin-1"_s,
                             u"Import"_s,
                             u"No probe"_s,
                             u"Text in memory"_s,
                             u"Replace with"_s}; // of forms and tables
    QSet<QString> texts(others.begin(), others.end());
    const QDomElement root = rootOf(u"" VARNEL_SOURCE_DIR "/translations/varnel_de.ts"_s);
    const QDomNodeList sources = root.elementsByTagName(u"source"_s);
    for (int i = 0; i < sources.count(); ++i)
        texts.insert(label(sources.at(i).toElement().text().section(u'\t', 0, 0)));
    QVERIFY(texts.size() > 1000);
    static const QRegularExpression bold(u"<b>(.*?)</b>"_s, QRegularExpression::DotMatchesEverythingOption);
    for (const QString &page : pages()) {
        QRegularExpressionMatchIterator it = bold.globalMatch(read(helpDirectory.filePath(page)));
        while (it.hasNext()) {
            const QString words = label(QTextDocumentFragment::fromHtml(it.next().captured(1)).toPlainText());
            for (const QString &part :
                 texts.contains(words) ? QStringList() : words.split(u", "_s)) // a way through menus
                QVERIFY2(texts.contains(label(part)), qPrintable(page + u": "_s + part));
        }
    }
}

void TestHelp::pageSetsNoColours()
{
    QFETCH(QString, page);
    const QString html = read(helpDirectory.filePath(page));
    static const QRegularExpression unwanted(u"color|<script|<font|\\sstyle=|<style|\\son[a-z]+="_s,
                                             QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = unwanted.match(html);
    QVERIFY2(!match.hasMatch(), qPrintable(match.captured()));
}

// The full-text index reads ".html" files byte by byte without the last one.
void TestHelp::pageIsIndexedCompletely()
{
    QFETCH(QString, page);
    QVERIFY(page.endsWith(u".html"));
    const QString html = read(helpDirectory.filePath(page));
    QVERIFY(html.endsWith(u"</html>\n"));
    for (const QChar c : html)
        QVERIFY2(c.unicode() < 0x80, qPrintable(QString(c)));
}

void TestHelp::shortcutsAreThoseOfTheMenus()
{
    QVERIFY(!declaredShortcuts().isEmpty());
    QCOMPARE(tableRows(*show(u"html/keyboard.html"_s)), declaredShortcuts());
}

QTEST_MAIN(TestHelp)
#include "tst_help.moc"
