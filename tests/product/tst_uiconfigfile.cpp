#include <QDomDocument>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList actionNames =
    u"fileNew fileOpen fileClose fileCloseAll fileSave fileSaveAs fileSaveAll filePrint "
    "fileExit fileProperties fileRevert "
    "editUndo editRedo editCut editCopy editPaste editRemove editInsertFile editComment "
    "editUncomment editIndent editUnindent editFind editReplace editFindInFiles "
    "editSelectAll editLookupNextLine editNextMessage editPreviousMessage editFindNext editFindPrevious "
    "editStopFindInFiles "
    "viewGotoLine viewShowInNavigator viewFileFormat viewNavigator viewOutput "
    "projectNew projectOpen projectRepopulate projectGenerateMakefile projectClose "
    "projectSave projectInsertFiles projectInsertFilesAlt projectInsertProject "
    "projectProperties projectPropertiesAlt projectForgetTrust "
    "buildCompileFile buildBuild buildRebuild buildClean buildBuildAlt buildRebuildAlt "
    "buildCleanAlt buildStopBuild buildBatchBuild buildConfigurationsNew "
    "buildConfigurationsEdit "
    "debugRun debugAttach debugRunToCursor debugStepOver debugStepInto debugPause "
    "debugStop debugRestart debugWakeup debugShowNext debugBreakpoints "
    "debugToggleBreakpoint debugViewDisassembly debugToggleRegisterWindow "
    "debugTogglePeripheralWindow debugToggleWatchWindow debugToggleMemoryWindow "
    "toolsMacroNew toolsMacroEdit toolsRecordScript toolsCustomise toolsOptions "
    "windowNew windowSplit windowClose windowCloseAll windowCascade windowTile windowNext "
    "windowPrev windowClosePane "
    "helpSearch helpHome helpBack helpForward helpPrevious helpNext helpAbout helpPlugins helpReport buildAllProjects debugSetNext debugShowValue"_s
        .split(u' ');

const QStringList signalNames =
    u"viewHasFocus textViewHasFocus textNavigationAvailable undoAvailable redoAvailable "
    "copyAvailable cutAvailable pasteAvailable selectAllAvailable projectOpenAvailable "
    "projectRepopulateAvailable projectEditingAvailable workspaceEditingAvailable "
    "compileAvailable buildAvailable projectBuilding runAvailable pauseAvailable "
    "stopAvailable restartAvailable startAvailable wakeupAvailable showNextAvailable setNextAvailable "
    "runToCursorAvailable "
    "backAvailable forwardAvailable previousAvailable nextAvailable attachAvailable batchBuildAvailable saveAvailable closePaneAvailable"_s
        .split(u' ');

const QStringList filledMenus =
    u"viewMenu viewToolbarsMenu windowMenu fileRecentFilesMenu projectRecentWorkspacesMenu "
    "buildConfigurationsMenu toolsMenu buildMenu debugMenu debugWindowsMenu toolMacroMenu"_s.split(u' ');

QList<QDomElement> elements(const QDomElement &root, const QString &tag)
{
    QList<QDomElement> result;
    const QDomNodeList nodes = root.elementsByTagName(tag);
    for (int i = 0; i < nodes.count(); ++i)
        result.append(nodes.at(i).toElement());
    return result;
}

QList<QDomElement> items(const QDomElement &parent)
{
    QList<QDomElement> result;
    for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        result.append(child);
    return result;
}

QString name(const QDomElement &element)
{
    return element.attribute(u"name"_s);
}

QStringList names(const QList<QDomElement> &elements)
{
    QStringList result;
    for (const QDomElement &element : elements)
        result.append(name(element));
    return result;
}

QString childText(const QDomElement &action, const QString &tag)
{
    return action.firstChildElement(tag).text();
}

/// The letter that selects an item by keyboard, in upper case; null if there is none.
QChar mnemonic(const QString &text)
{
    static const QRegularExpression mark(u"&([^&])"_s);
    const QRegularExpressionMatch match = mark.match(text);
    return match.hasMatch() ? match.captured(1).at(0).toUpper() : QChar();
}

/// The texts without a letter, or with a letter that an earlier text has.
QStringList withoutOwnMnemonic(const QStringList &texts)
{
    QStringList result;
    QSet<QChar> taken;
    for (const QString &text : texts) {
        const QChar letter = mnemonic(text);
        if (letter.isNull() || taken.contains(letter))
            result.append(text);
        taken.insert(letter);
    }
    return result;
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

} // namespace

/// The product file config/uiconfig.xml: complete, consistent, and as documented.
class TestUiConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void titleIsVarnel() { QCOMPARE(m_root.attribute(u"title"_s), u"Varnel"_s); }
    void sectionsAreActionsMenusToolbars();
    void actionIsDeclaredOnce();
    void actionHasItsTexts_data() { actionRows(); }
    void actionHasItsTexts();
    void textsOfActionsAreUnique();
    void textsOfCommandsThatAskEndInDots();
    void compileTextHasAPlaceholderForTheFile();
    void reservedActionsHaveATextForNoFunction();
    void acceleratorsAreValidAndUnique();
    void renamingKeyIsNotAnAccelerator();
    void iconsAreNamedLikeTheirActions();
    void onlyDockWindowActionsAndTheRecorderAreCheckable();
    void enableNamesAnAvailabilitySignal();
    void actionsThatTheWindowEnablesFollowNoSignal();
    void menuBarHasTheExpectedMenus();
    void menusFilledByCodeExistOnce();
    void menusHaveTextsAndOnlyKnownElements();
    void everyReferenceIsDeclared();
    void everyCommandIsInExactlyOneMenu();
    void mnemonicsAreUniquePerMenu();
    void mnemonicsAreUniqueInTheNavigator_data();
    void mnemonicsAreUniqueInTheNavigator();
    void separatorsStandBetweenItems();
    void recentMenusAreEmpty();
    void configurationsAreSeparated();
    void thereAreFiveToolBars();
    void boxesAreLastInTheirToolBars();
    void toolBarActionsHaveIcons();
    void documentationListsEverything();

private:
    void actionRows() const;
    QString menuText(const QString &actionName) const;
    QStringList itemTexts(const QDomElement &menu) const;

    QDomElement m_root;
    QList<QDomElement> m_actions;
    QList<QDomElement> m_menus;
    QList<QDomElement> m_toolBars;
};

void TestUiConfig::initTestCase()
{
    QFile file(u"" VARNEL_SOURCE_DIR "/config/uiconfig.xml"_s);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QDomDocument document;
    QString error;
    QVERIFY2(document.setContent(&file, &error), qPrintable(error));
    m_root = document.documentElement();
    m_actions = elements(m_root.firstChildElement(u"actions"_s), u"action"_s);
    m_menus = elements(m_root.firstChildElement(u"menus"_s), u"menu"_s);
    m_toolBars = elements(m_root.firstChildElement(u"toolbars"_s), u"toolbar"_s);
}

void TestUiConfig::actionRows() const
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < m_actions.size(); ++i)
        QTest::newRow(qPrintable(name(m_actions.at(i)))) << i;
}

QString TestUiConfig::menuText(const QString &actionName) const
{
    for (const QDomElement &action : m_actions) {
        if (name(action) == actionName)
            return childText(action, u"menutext"_s);
    }
    return {};
}

QStringList TestUiConfig::itemTexts(const QDomElement &menu) const
{
    QStringList result;
    for (const QDomElement &item : items(menu)) {
        if (item.tagName() == u"action")
            result.append(menuText(name(item)));
        else if (item.tagName() == u"menu")
            result.append(item.attribute(u"displayname"_s));
    }
    return result;
}

void TestUiConfig::sectionsAreActionsMenusToolbars()
{
    QStringList tags;
    for (const QDomElement &section : items(m_root))
        tags.append(section.tagName());
    QCOMPARE(tags, (QStringList{u"actions"_s, u"menus"_s, u"toolbars"_s}));
}

void TestUiConfig::actionIsDeclaredOnce()
{
    QCOMPARE(actionNames.size(), 88 + 15); // the given ones and our own
    QCOMPARE(sorted(names(m_actions)), sorted(actionNames));
}

void TestUiConfig::actionHasItsTexts()
{
    QFETCH(int, index);
    const QDomElement &action = m_actions.at(index);
    for (const QString &tag : {u"text"_s, u"menutext"_s, u"statustip"_s, u"whatsthis"_s}) {
        const QString text = childText(action, tag);
        QVERIFY2(!text.isEmpty(), qPrintable(tag));
        QCOMPARE(text, text.simplified());
    }
    QVERIFY(!childText(action, u"text"_s).contains(u'&'));
    QVERIFY(!childText(action, u"statustip"_s).endsWith(u'.'));
    QVERIFY(childText(action, u"whatsthis"_s).endsWith(u'.'));
}

void TestUiConfig::textsOfActionsAreUnique()
{
    QSet<QString> texts;
    for (const QDomElement &action : m_actions)
        texts.insert(childText(action, u"text"_s));
    QCOMPARE(texts.size(), m_actions.size());
}

void TestUiConfig::textsOfCommandsThatAskEndInDots()
{
    QStringList asking;
    for (const QDomElement &action : m_actions) {
        if (childText(action, u"menutext"_s).endsWith(u"..."))
            asking.append(name(action));
    }
    const QStringList expected = u"fileNew fileOpen fileSaveAs filePrint fileProperties editInsertFile editFind "
                                 "editReplace editFindInFiles viewGotoLine projectNew projectOpen projectInsertFiles "
                                 "projectInsertFilesAlt projectInsertProject projectProperties projectPropertiesAlt "
                                 "buildBatchBuild buildConfigurationsNew buildConfigurationsEdit debugBreakpoints "
                                 "toolsOptions helpSearch helpPlugins helpReport"_s.split(u' ');
    QCOMPARE(sorted(asking), sorted(expected));
}

void TestUiConfig::compileTextHasAPlaceholderForTheFile()
{
    QCOMPARE(menuText(u"buildCompileFile"_s).count(u"%1"_s), 1);
    for (const QDomElement &action : m_actions)
        QCOMPARE(childText(action, u"menutext"_s).contains(u'%'), name(action) == u"buildCompileFile");
}

void TestUiConfig::reservedActionsHaveATextForNoFunction()
{
    QStringList reserved;
    for (const QDomElement &action : m_actions) {
        const bool isReserved = childText(action, u"statustip"_s).endsWith(u" (not implemented)");
        QCOMPARE(childText(action, u"whatsthis"_s).contains(u"In this version the command has no effect"), isReserved);
        if (isReserved)
            reserved.append(name(action));
    }
    QCOMPARE(reserved, QStringList());
}

void TestUiConfig::acceleratorsAreValidAndUnique()
{
    QMap<QString, QString> owners;
    for (const QDomElement &action : m_actions) {
        const QString text = action.attribute(u"accel"_s);
        if (text.isEmpty())
            continue;
        const QKeySequence keys(text);
        QCOMPARE(keys.count(), 1);
        QVERIFY2(keys[0].key() != Qt::Key_unknown, qPrintable(text));
        QCOMPARE(keys.toString(QKeySequence::PortableText), text);
        QVERIFY2(!owners.contains(text), qPrintable(owners.value(text) + u" and "_s + name(action)));
        owners.insert(text, name(action));
    }
    QVERIFY(!owners.isEmpty());
}

void TestUiConfig::renamingKeyIsNotAnAccelerator()
{
    for (const QDomElement &action : m_actions)
        QVERIFY(action.attribute(u"accel"_s) != u"F2");
}

void TestUiConfig::iconsAreNamedLikeTheirActions()
{
    for (const QDomElement &action : m_actions) {
        if (action.hasAttribute(u"icon"_s))
            QCOMPARE(action.attribute(u"icon"_s), name(action).toLower() + u".png"_s);
    }
}

void TestUiConfig::onlyDockWindowActionsAndTheRecorderAreCheckable()
{
    QStringList toggles;
    for (const QDomElement &action : m_actions) {
        if (action.hasAttribute(u"toggle"_s))
            toggles.append(name(action) + u' ' + action.attribute(u"toggle"_s));
    }
    const QStringList expected{u"debugTogglePeripheralWindow off"_s,
                               u"debugToggleRegisterWindow off"_s,
                               u"debugToggleWatchWindow off"_s,
                               u"debugToggleMemoryWindow off"_s,
                               u"toolsRecordScript off"_s,
                               u"viewNavigator on"_s,
                               u"viewOutput on"_s};
    QCOMPARE(sorted(toggles), sorted(expected));
}

void TestUiConfig::enableNamesAnAvailabilitySignal()
{
    QCOMPARE(signalNames.size(), 33);
    for (const QDomElement &action : m_actions) {
        const QList<QDomElement> enables = elements(action, u"enable"_s);
        QVERIFY(enables.size() <= 1);
        for (const QDomElement &enable : enables)
            QVERIFY2(signalNames.contains(enable.attribute(u"signal"_s)), qPrintable(name(action)));
    }
}

void TestUiConfig::actionsThatTheWindowEnablesFollowNoSignal()
{
    const QStringList byWindow{u"windowCascade"_s, u"windowTile"_s, u"debugViewDisassembly"_s};
    for (const QDomElement &action : m_actions)
        QVERIFY(!byWindow.contains(name(action)) || action.firstChildElement(u"enable"_s).isNull());
}

void TestUiConfig::menuBarHasTheExpectedMenus()
{
    QStringList texts;
    for (const QDomElement &menu : items(m_root.firstChildElement(u"menus"_s)))
        texts.append(menu.attribute(u"displayname"_s).remove(u'&'));
    QCOMPARE(texts, u"File Edit View Project Build Debug Tools Window Help"_s.split(u' '));
    QCOMPARE(withoutOwnMnemonic(itemTexts(m_root.firstChildElement(u"menus"_s))), QStringList());
}

void TestUiConfig::menusFilledByCodeExistOnce()
{
    QCOMPARE(filledMenus.size(), 11);
    for (const QString &menu : filledMenus)
        QCOMPARE(names(m_menus).count(menu), 1);
}

void TestUiConfig::menusHaveTextsAndOnlyKnownElements()
{
    for (const QDomElement &menu : m_menus) {
        QVERIFY(!name(menu).isEmpty());
        QVERIFY2(!mnemonic(menu.attribute(u"displayname"_s)).isNull(), qPrintable(name(menu)));
        for (const QDomElement &item : items(menu)) {
            const bool known = QStringList{u"action"_s, u"menu"_s, u"separator"_s}.contains(item.tagName());
            QVERIFY2(known, qPrintable(item.tagName()));
        }
    }
}

void TestUiConfig::everyReferenceIsDeclared()
{
    for (const QString &section : {u"menus"_s, u"toolbars"_s}) {
        for (const QDomElement &item : elements(m_root.firstChildElement(section), u"action"_s))
            QVERIFY2(actionNames.contains(name(item)), qPrintable(name(item)));
    }
}

void TestUiConfig::everyCommandIsInExactlyOneMenu()
{
    const QList<QDomElement> references = elements(m_root.firstChildElement(u"menus"_s), u"action"_s);
    const QStringList expected = actionNames.filter(QRegularExpression(u"(?<!Alt)$"_s));
    QCOMPARE(expected.size(), 83 + 15);
    QCOMPARE(sorted(names(references)), sorted(expected));
}

void TestUiConfig::mnemonicsAreUniquePerMenu()
{
    for (const QDomElement &menu : m_menus)
        QCOMPARE(withoutOwnMnemonic(itemTexts(menu)), QStringList());
}

// The menus of the navigator contain actions of the file and items of the navigator.
void TestUiConfig::mnemonicsAreUniqueInTheNavigator_data()
{
    QTest::addColumn<QString>("actions");
    QTest::addColumn<QStringList>("ownTexts");
    QTest::newRow("project") << u"projectInsertFilesAlt editPaste buildBuildAlt buildRebuildAlt buildCleanAlt "
                                "projectPropertiesAlt"_s
                             << QStringList{u"Set as Acti&ve Project"_s, u"&Remove Project from Workspace"_s};
    QTest::newRow("folder") << u"editCut editPaste editRemove"_s
                            << QStringList{u"Add &Files to Folder..."_s, u"&New Folder"_s, u"Rena&me"_s,
                                           u"&Properties..."_s};
    QTest::newRow("file") << u"buildCompileFile editCut editRemove fileProperties"_s
                          << QStringList{u"&Open"_s, u"&Run"_s};
}

void TestUiConfig::mnemonicsAreUniqueInTheNavigator()
{
    QFETCH(QString, actions);
    QFETCH(QStringList, ownTexts);
    for (const QString &action : actions.split(u' '))
        ownTexts.append(menuText(action));
    QCOMPARE(withoutOwnMnemonic(ownTexts), QStringList());
}

// Only a menu to which items are appended may end with a separator.
void TestUiConfig::separatorsStandBetweenItems()
{
    const QStringList closing{u"buildConfigurationsMenu"_s, u"toolMacroMenu"_s};
    for (const QDomElement &holder : m_menus + m_toolBars) {
        QString before = u"separator"_s;
        for (const QDomElement &item : items(holder)) {
            QVERIFY2(before != u"separator" || item.tagName() != u"separator", qPrintable(name(holder)));
            before = item.tagName();
        }
        const bool closes = before == u"separator" && holder.hasChildNodes();
        QVERIFY2(!closes || closing.contains(name(holder)), qPrintable(name(holder)));
    }
}

void TestUiConfig::recentMenusAreEmpty()
{
    for (const QDomElement &menu : m_menus) {
        if (name(menu) == u"fileRecentFilesMenu" || name(menu) == u"projectRecentWorkspacesMenu")
            QVERIFY(items(menu).isEmpty());
    }
}

void TestUiConfig::configurationsAreSeparated()
{
    for (const QDomElement &menu : m_menus) {
        if (name(menu) == u"buildConfigurationsMenu")
            QCOMPARE(items(menu).constLast().tagName(), u"separator"_s);
    }
}

void TestUiConfig::thereAreFiveToolBars()
{
    QStringList captions;
    for (const QDomElement &toolBar : m_toolBars)
        captions.append(toolBar.attribute(u"displayname"_s));
    QCOMPARE(names(m_toolBars), u"fileToolbar editToolbar buildToolbar debugToolbar macroToolbar"_s.split(u' '));
    QCOMPARE(captions, u"File Edit Build Debug Macros"_s.split(u' '));
    QVERIFY(items(m_toolBars.constLast()).isEmpty());
}

void TestUiConfig::boxesAreLastInTheirToolBars()
{
    QCOMPARE(name(items(m_toolBars.at(1)).constLast()), u"editFind"_s);
    QCOMPARE(name(items(m_toolBars.at(3)).constLast()), u"debugStepInto"_s);
    const QStringList onToolBars = names(elements(m_root.firstChildElement(u"toolbars"_s), u"action"_s));
    QCOMPARE(onToolBars.count(u"editFind"_s), 1);
    QCOMPARE(onToolBars.count(u"debugStepInto"_s), 1);
}

void TestUiConfig::toolBarActionsHaveIcons()
{
    const QStringList onToolBars = names(elements(m_root.firstChildElement(u"toolbars"_s), u"action"_s));
    for (const QDomElement &action : m_actions)
        QVERIFY2(!onToolBars.contains(name(action)) || action.hasAttribute(u"icon"_s), qPrintable(name(action)));
}

void TestUiConfig::documentationListsEverything()
{
    QFile file(u"" VARNEL_SOURCE_DIR "/docs/uiconfig.md"_s);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    for (const QString &word : actionNames + signalNames + filledMenus + QStringList{u"macroToolbar"_s})
        QVERIFY2(text.contains(u'`' + word + u'`'), qPrintable(word));
}

QTEST_MAIN(TestUiConfig)
#include "tst_uiconfigfile.moc"
