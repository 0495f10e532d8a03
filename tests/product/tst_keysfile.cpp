#include "shortcuts.h"
#include <QDomDocument>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// The commands of the user interface file, and those of the program with fixed keys.
ShortcutChoices productChoices()
{
    ShortcutChoices choices{.sets = readKeySets(QStringLiteral(VARNEL_SOURCE_DIR "/config/keys.xml"))};
    QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/config/uiconfig.xml"));
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
        return choices;
    const QDomNodeList actions =
        document.documentElement().firstChildElement(u"actions"_s).elementsByTagName(u"action"_s);
    for (int i = 0; i < actions.size(); ++i) {
        const QDomElement action = actions.at(i).toElement();
        const QString name = action.attribute(u"name"_s);
        choices.commands.append({name, name, {}, keysFromStored(action.attribute(u"accel"_s))});
    }
    choices.commands.append({u"viewZoom"_s, u"zoom"_s, {}, keysFromStored(u"Ctrl++; Ctrl+=; Ctrl+-; Ctrl+0"_s)});
    choices.commands.append({u"debugToggleCallStackWindow"_s, u"call stack"_s, {}, keysFromStored(u"Alt+9"_s)});
    choices.commands.append({u"debugToggleVariablesWindow"_s, u"variables"_s, {}, keysFromStored(u"Alt+0"_s)});
    choices.commands.append({u"debugToggleBreakpointsWindow"_s, u"breakpoints"_s, {}, keysFromStored(u"Ctrl+Alt+B"_s)});
    choices.commands.append({u"debugToggleProcessorWindow"_s, u"processors"_s, {}, keysFromStored(u"Alt+7"_s)});
    choices.commands.append({u"debugToggleLiveWindow"_s, u"live"_s, {}, keysFromStored(u"Alt+8"_s)});
    for (QDomElement menu = document.documentElement().firstChildElement(u"menus"_s).firstChildElement(u"menu"_s);
         !menu.isNull(); menu = menu.nextSiblingElement(u"menu"_s))
        choices.menuKeys.insert(menu.attribute(u"name"_s), QKeySequence::mnemonic(menu.attribute(u"displayname"_s)));
    return choices;
}
} // namespace

/// The product file config/keys.xml.
class TestKeysFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void setsHaveNamesAndTexts()
    {
        const QList<KeySet> sets = productChoices().sets;
        QCOMPARE(sets.size(), 2);
        for (const KeySet &set : sets) {
            QVERIFY(!set.name.isEmpty());
            QVERIFY(!set.text.isEmpty());
            QVERIFY(set.keys.size() > 10);
        }
    }

    void setsNameCommandsOfTheProduct()
    {
        const ShortcutChoices choices = productChoices();
        QStringList names;
        for (const ShortcutCommand &command : choices.commands)
            names.append(command.name);
        for (const KeySet &set : choices.sets) {
            for (const QString &name : set.keys.keys())
                QVERIFY2(names.contains(name), qPrintable(set.name + u": "_s + name));
        }
    }

    void keysAreWrittenInThePortableForm()
    {
        QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/config/keys.xml"));
        QDomDocument document;
        QVERIFY(file.open(QIODevice::ReadOnly) && document.setContent(&file));
        const QDomNodeList commands = document.elementsByTagName(u"command"_s);
        for (int i = 0; i < commands.size(); ++i) {
            const QString keys = commands.at(i).toElement().attribute(u"keys"_s);
            QCOMPARE(storedKeys(keysFromStored(keys)), keys);
        }
    }

    void noKeysAreInConflict()
    {
        const ShortcutChoices choices = productChoices();
        QStringList sets{QString()};
        for (const KeySet &set : choices.sets)
            sets.append(set.name);
        for (const QString &set : std::as_const(sets)) {
            for (const ShortcutCommand &command : choices.commands) {
                const ShortcutOptions options{set, {}};
                const QStringList others =
                    othersWithKeys(keysOf(command, choices, options), command.name, choices, options);
                QVERIFY2(others.isEmpty(), qPrintable(set + u": "_s + command.name + u", "_s + others.join(u", "_s)));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestKeysFile)
#include "tst_keysfile.moc"
