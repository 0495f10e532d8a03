#include "../../plugins/gdb/propertytext.h"
#include "projecttreeitem.h"
#include "propertyeditor.h"
#include "propertylist.h"
#include "propertytable.h"
#include "toolchain.h"
#include <QApplication>
#include <QComboBox>
#include <QSpinBox>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>

using namespace Qt::StringLiterals;

/// The definitions of the plug-ins that come with the program, as the property editor shows and edits them.
class RealPropertiesTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PropertyEditor> m_editor;

    void open(const QString &selector)
    {
        const ToolChain &toolChain = toolChains().first();
        m_editor = std::make_unique<PropertyEditor>();
        m_editor->resize(700, 600);
        m_editor->show();
        m_editor->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_editor.get()));
        const QString build = propertyDefinitionsXml(u"Build"_s, {}, propertyPages(toolChain));
        QVERIFY(m_editor->setPropertyDefinitions(build, selector));
        QVERIFY(m_editor->setPropertyDefinitions(gdbPropertyDefinitions(), selector));
    }

    ListView *tree() { return m_editor->findChild<ListView *>(u"GroupTree"_s); }
    PropertyList *list() { return m_editor->findChild<PropertyList *>(); }

    QList<ListViewItem *> pages()
    {
        QList<ListViewItem *> pages;
        for (QTreeWidgetItemIterator it(tree()); *it; ++it) {
            if ((*it)->type() == 1)
                pages += static_cast<ListViewItem *>(*it);
        }
        return pages;
    }

    QString pageNames()
    {
        QStringList names;
        for (const ListViewItem *page : pages())
            names += page->text(0);
        return names.join(u", "_s);
    }

    QList<PropertyItem *> rows()
    {
        QList<PropertyItem *> rows;
        for (int i = 0; i < list()->topLevelItemCount(); ++i)
            rows += static_cast<PropertyItem *>(list()->topLevelItem(i));
        return rows;
    }

    /// Enters something else than the value by keys.
    static void typeNumber(QSpinBox *box, int number)
    {
        box->selectAll();
        QTest::keyClicks(box, QString::number(number));
    }

    static void change(PropertyItem *row)
    {
        QWidget *editor = row->editor();
        if (auto *box = qobject_cast<QComboBox *>(editor))
            QTest::keyClick(box, box->currentIndex() == 0 ? Qt::Key_End : Qt::Key_Home);
        else if (auto *number = qobject_cast<QSpinBox *>(editor))
            typeNumber(number, number->value() + 1);
        else
            QTest::keyClicks(QApplication::focusWidget(), u"x"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }
    void cleanup() { m_editor.reset(); }

    void pagesAreThoseOfTheSelector_data()
    {
        QTest::addColumn<QString>("selector");
        QTest::addColumn<QString>("names");
        QTest::newRow("project") << u"project"_s
                                 << u"Target, Tools, Code, Warnings, Preprocessor, Language and flags, Linker, "
                                    "Commands, Files, Target, Emulated board, Debug server, "
                                    "Program of this computer, Symbols and windows"_s;
        QTest::newRow("C") << u"c"_s << u"Code, Warnings, Preprocessor, Language and flags, This file"_s;
        QTest::newRow("assembler") << u"s"_s << u"Code, Language and flags, This file"_s;
        QTest::newRow("script") << u"py"_s << u"Script"_s;
        QTest::newRow("header") << u"h"_s << QString();
    }

    void pagesAreThoseOfTheSelector()
    {
        QFETCH(QString, selector);
        open(selector);
        QTEST(pageNames(), "names");
    }

    void everyRowHasAnExplanationAndAnEditor_data()
    {
        QTest::addColumn<QString>("selector");
        for (const char *selector : {"project", "c", "cpp", "S", "py"})
            QTest::newRow(selector) << QString::fromLatin1(selector);
    }

    void everyRowHasAnExplanationAndAnEditor()
    {
        QFETCH(QString, selector);
        open(selector);
        QStringList seen;
        for (ListViewItem *page : pages()) {
            tree()->setCurrentItem(page);
            QVERIFY2(!rows().isEmpty(), qPrintable(page->text(0)));
            for (PropertyItem *row : rows()) {
                seen += row->key();
                list()->setFocus();
                list()->setCurrentItem(row);
                QVERIFY2(row->isEditing(), qPrintable(row->key()));
                const QString help = m_editor->findChild<QTextBrowser *>()->toPlainText();
                QVERIFY2(help.startsWith(row->name() + u'\n'), qPrintable(help)); // no markup that shows
                QVERIFY2(!help.contains(u"&quot;"_s) && !help.contains(u"&amp;"_s), qPrintable(help));
                const QVariant before = row->value();
                change(row);
                bool changed = false;
                const QVariant value = m_editor->value(row->key(), &changed);
                QVERIFY2(changed && value != before, qPrintable(row->key()));
            }
        }
        QCOMPARE(seen, m_editor->keys());
    }

    void quotesInDescriptionsAreReadable()
    {
        open(u"project"_s);
        tree()->setCurrentItem(pages().at(1));
        QVERIFY(m_editor->findChild<QTextBrowser *>()->toPlainText().contains(
            u"Prefix of \"gcc\" in the compiler's path"_s));
    }

    void processNumbersOfThisComputerCanBeEntered()
    {
        open(u"project"_s);
        m_editor->showProperty(u"gdbProcessId"_s);
        auto *number = qobject_cast<QSpinBox *>(list()->currentItem()->editor());
        QVERIFY(number);
        QVERIFY(number->maximum() >= 4194304);
    }
};

QTEST_MAIN(RealPropertiesTest)
#include "tst_realproperties.moc"
