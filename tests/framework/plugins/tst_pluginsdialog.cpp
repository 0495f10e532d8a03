#include "pluginmanager.h"
#include "pluginsdialog.h"
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

/// The list of plug-in libraries.
class PluginsDialogTest : public QObject
{
    Q_OBJECT

    static QList<PluginLibrary> libraries()
    {
        return {{u"/p/gdb.so"_s, u"GDB"_s, {u"{1}"_s, u"{2}"_s}, {}, true},
                {u"/p/bad.so"_s, u"bad"_s, {}, u"It was built with version 2.8."_s, true},
                {u"/p/off.so"_s, u"off"_s, {}, {}, false}};
    }

    static QString rows(const PluginsDialog &dialog)
    {
        const auto *list = dialog.findChild<QTreeWidget *>();
        QStringList lines;
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            const QTreeWidgetItem *item = list->topLevelItem(i);
            QStringList texts(item->checkState(0) == Qt::Checked ? u"[x]"_s : u"[ ]"_s);
            for (int column = 0; column < 4; ++column)
                texts += item->text(column).replace(u'\n', u' ');
            lines += texts.join(u'|');
        }
        return lines.join(u'\n');
    }

    /// Toggles the check box of a row with the keyboard.
    static void toggle(const PluginsDialog &dialog, int row)
    {
        auto *list = dialog.findChild<QTreeWidget *>();
        list->setCurrentItem(list->topLevelItem(row));
        QTest::keyClick(list, Qt::Key_Space);
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void librariesAreListedWithTheirProblems()
    {
        const PluginsDialog dialog(libraries(), {u"/p/off.so"_s});
        QCOMPARE(rows(dialog), u"[x]|GDB|{1} {2}|/p/gdb.so|Loaded\n"
                               "[x]|bad||/p/bad.so|It was built with version 2.8.\n"
                               "[ ]|off||/p/off.so|Switched off"_s);
        QCOMPARE(dialog.disabled(), QStringList(u"/p/off.so"_s));
    }

    /// Columns are too narrow for the text of a loader.
    void wholeTextsOfTheCurrentLibraryAreShown()
    {
        const PluginsDialog dialog(libraries(), {});
        const auto *details = dialog.findChild<QPlainTextEdit *>(u"DetailsEdit"_s);
        QCOMPARE(details->toPlainText(), u"It was built with version 2.8.\n\n/p/bad.so\n"_s); // the first problem
        auto *list = dialog.findChild<QTreeWidget *>();
        list->setCurrentItem(list->topLevelItem(0));
        QCOMPARE(details->toPlainText(), u"Loaded\n\n/p/gdb.so\n{1}\n{2}"_s);
        QCOMPARE(PluginsDialog({}, {}).findChild<QPlainTextEdit *>()->toPlainText(), QString());
    }

    void switchTakesEffectAtTheNextStart()
    {
        PluginsDialog dialog(libraries(), {u"/p/off.so"_s, u"/gone/x.so"_s});
        dialog.show();
        const auto *notice = dialog.findChild<QLabel *>(u"NoticeLabel"_s);
        QCOMPARE(notice->text(), u"A plug-in without a check mark is not loaded when Varnel starts."_s);
        toggle(dialog, 0);
        QCOMPARE(notice->text(), u"The change takes effect when Varnel is started again."_s);
        toggle(dialog, 2);
        QCOMPARE(dialog.disabled(), (QStringList{u"/gone/x.so"_s, u"/p/gdb.so"_s}));
        toggle(dialog, 0);
        toggle(dialog, 2);
        QCOMPARE(notice->text(), u"A plug-in without a check mark is not loaded when Varnel starts."_s);
    }

    void earlierChangeIsStillShown()
    {
        const PluginsDialog dialog(libraries(), {u"/p/gdb.so"_s});
        QCOMPARE(dialog.findChild<QLabel *>(u"NoticeLabel"_s)->text(),
                 u"The change takes effect when Varnel is started again."_s);
    }
};

QTEST_MAIN(PluginsDialogTest)
#include "tst_pluginsdialog.moc"
