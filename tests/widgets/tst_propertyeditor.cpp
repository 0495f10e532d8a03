#include "projecttreeitem.h"
#include "propertybooleanitem.h"
#include "propertyeditor.h"
#include "propertyfilelistitem.h"
#include "propertyintegercomboitem.h"
#include "propertyintegeritem.h"
#include "propertylist.h"
#include "propertysubsectionitem.h"
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QSplitter>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
const QString definitions = uR"(<properties>
  <group name="Build">
    <propertygroup name="Code">
      <property key="opt" name="Optimisation" type="list" defaultvalue="2">
        <description>How much.</description>
        <option key="0">None</option><option key="2">Speed</option><option>Odd</option>
      </property>
      <property key="warn" name="Warnings" type="boolean" defaultvalue="true"/>
      <property key="colour" name="Colour" type="text" defaultvalue="red" pattern="[a-z]+" invalidtext="Small letters."/>
    </propertygroup>
    <propertygroup name="Files">
      <property key="out" name="Output" type="file" defaultvalue=""/>
      <property key="dir" name="Directory" type="directory" defaultvalue="."/>
      <property key="sources" name="Sources" type="filelist" defaultvalue="a;b"/>
      <property key="incs" name="Includes" type="directorylist" defaultvalue=""/>
      <property key="jobs" name="Jobs" type="integer" defaultvalue="4" maximum="100000"/>
      <property key="baud" name="Baud rate" type="integercombo" defaultvalue="9600"><option>9600</option></property>
      <property key="cpu" name="Processor" type="textcombo" defaultvalue="7"><option>m3</option></property>
    </propertygroup>
  </group>
</properties>)"_s;
const QString more = uR"(<x><group name="Debug"><group name="Inner"><propertygroup name="Target">
      <property key="target" name="Target" type="text" defaultvalue="qemu"/>
    </propertygroup></group></group></x>)"_s;
} // namespace

class PropertyEditorTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PropertyEditor> m_editor;

    PropertyList *list() { return m_editor->findChild<PropertyList *>(); }
    ListView *tree() { return m_editor->findChild<ListView *>(u"GroupTree"_s); }
    QLineEdit *filter() { return m_editor->findChild<QLineEdit *>(u"FilterEdit"_s); }
    QString help() { return m_editor->findChild<QTextBrowser *>()->toPlainText(); }

    PropertyItem *row(const QString &name)
    {
        const auto found = list()->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? nullptr : static_cast<PropertyItem *>(found.first());
    }

    ListViewItem *page(const QString &name)
    {
        return static_cast<ListViewItem *>(tree()->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0));
    }

    /// The rows as the user sees them, those with a bold name marked by "*".
    QString rows()
    {
        QString text;
        for (QTreeWidgetItemIterator it(list()); *it; ++it) {
            const auto *item = static_cast<PropertyItem *>(*it);
            text += QString(item->parent() ? 2 : 0, u' ') + (item->isChanged() ? u"*"_s : QString()) + item->text(0)
                    + (item->text(1).isEmpty() ? QString() : u"="_s + item->text(1)) + u'\n';
        }
        return text;
    }

    void typeInto(PropertyItem *item, const QString &text)
    {
        list()->setFocus();
        list()->setCurrentItem(item);
        if (!item->isEditing())
            QTest::keyClick(list(), Qt::Key_F2);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }

    static QMenu *openMenu(const QString &name)
    {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        return menu && menu->objectName() == name ? menu : nullptr;
    }

    static void rightPress(QWidget *widget)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3), widget->mapToGlobal(QPoint(3, 3)));
        QCoreApplication::sendEvent(widget, &event);
    }

    bool isChanged(const QString &key)
    {
        bool changed = false;
        (void)m_editor->value(key, &changed);
        return changed;
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_editor = std::make_unique<PropertyEditor>();
        m_editor->resize(700, 600);
        m_editor->show();
        m_editor->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_editor.get()));
        QVERIFY(m_editor->setPropertyDefinitions(definitions, u"project"_s));
    }

    void cleanup() { m_editor.reset(); }

    void hasItsHeadersAndSizes()
    {
        QCOMPARE(list()->headerItem()->text(0), u"Property"_s);
        QCOMPARE(list()->headerItem()->text(1), u"Value"_s);
        QVERIFY(tree()->isHeaderHidden());
        QCOMPARE(tree()->headerItem()->text(0), u"Column1"_s);
        QCOMPARE(tree()->indentation(), 14);
        QVERIFY(tree()->rootIsDecorated());
        QCOMPARE(m_editor->findChild<QTextBrowser *>()->height(), 200);
        QCOMPARE(m_editor->findChild<QSplitter *>()->sizes().first(), 180);
        QCOMPARE(page(u"Build"_s)->rtti(), 0);
        QCOMPARE(page(u"Code"_s)->rtti(), 1);
        QVERIFY(!page(u"Build"_s)->paintsBranches());
    }

    void treeIsAsWideAsItsNamesInBoldNeed()
    {
        const QString name = u"A longer name of a page"_s;
        QVERIFY(m_editor->setPropertyDefinitions(u"<x><group name=\"G\"><propertygroup name=\"%1\">"
                                                 "<property key=\"k\" name=\"k\" type=\"text\"/>"
                                                 "</propertygroup></group></x>"_s.arg(name),
                                                 u"project"_s));
        m_editor->setValue(u"k"_s, u"v"_s); // another value than the default one: the page is bold
        page(u"G"_s)->setOpen(true);
        QFont bold = tree()->font();
        bold.setBold(true);
        const int room = tree()->viewport()->width() - tree()->visualItemRect(page(name)).x();
        QVERIFY(room >= tree()->iconSize().width() + QFontMetrics(bold).horizontalAdvance(name));
        QVERIFY(m_editor->findChild<QSplitter *>()->sizes().first() > 180);
        QVERIFY(
            m_editor->setPropertyDefinitions(u"<x><group name=\"%1\"/></x>"_s.arg(QString(200, u'x')), u"project"_s));
        QCOMPARE(m_editor->findChild<QSplitter *>()->sizes().first(), 300);
    }

    void firstPageIsShownWithItsDefaults()
    {
        QCOMPARE(rows(), u"Optimisation=Speed\nWarnings=Yes\nColour=red\n"_s);
        QCOMPARE(help(), u"Optimisation\nHow much."_s);
        QVERIFY(page(u"Build"_s)->isOpen());
        QCOMPARE(tree()->currentItem(), page(u"Build"_s));
    }

    void currentPageHasTheMarker()
    {
        const auto picture = [this](const QString &name) { return page(name)->icon(0).pixmap(12, 12).toImage(); };
        QCOMPARE(page(u"Code"_s)->icon(0).actualSize(QSize(12, 12)),
                 page(u"Files"_s)->icon(0).actualSize(QSize(12, 12)));
        const QImage marker = picture(u"Code"_s);
        const QImage plain = picture(u"Files"_s);
        QVERIFY(marker != plain);
        tree()->setCurrentItem(page(u"Files"_s));
        QCOMPARE(picture(u"Code"_s), plain);
        QCOMPARE(picture(u"Files"_s), marker);
    }

    void everyTypeHasItsRow()
    {
        QVERIFY(qobject_cast<PropertyListItem *>(row(u"Optimisation"_s)));
        QVERIFY(qobject_cast<PropertyBooleanItem *>(row(u"Warnings"_s)));
        QVERIFY(qobject_cast<PropertyTextItem *>(row(u"Colour"_s)));
        tree()->setCurrentItem(page(u"Files"_s));
        QCOMPARE(rows(), u"Output\nDirectory=.\nSources=a;b\nIncludes\nJobs=4\nBaud rate=9600\nProcessor=7\n"_s);
        QVERIFY(qobject_cast<PropertyFileItem *>(row(u"Output"_s)));
        QVERIFY(qobject_cast<PropertyFileItem *>(row(u"Directory"_s)));
        QVERIFY(qobject_cast<PropertyFileListItem *>(row(u"Sources"_s)));
        QVERIFY(qobject_cast<PropertyFileListItem *>(row(u"Includes"_s)));
        QVERIFY(qobject_cast<PropertyIntegerItem *>(row(u"Jobs"_s)));
        QVERIFY(qobject_cast<PropertyIntegerComboItem *>(row(u"Baud rate"_s)));
        QVERIFY(qobject_cast<PropertyComboItem *>(row(u"Processor"_s)));
        list()->setCurrentItem(row(u"Jobs"_s));
        QCOMPARE(qobject_cast<QSpinBox *>(row(u"Jobs"_s)->editor())->maximum(), 100000);
    }

    void unknownTypeHasARecordAndNoRow()
    {
        QTest::ignoreMessage(QtWarningMsg, "PropertyEditor::fillTree: Invalid property type 'colour'");
        PropertyEditor editor;
        QVERIFY(editor.setPropertyDefinitions(
            u"<x><group><propertygroup><property key=\"k\" name=\"N\" type=\"colour\" defaultvalue=\"d\"/>"
            "</propertygroup></group></x>"_s,
            {}));
        QCOMPARE(editor.keys(), QStringList{u"k"_s});
        QCOMPARE(editor.findChild<PropertyList *>()->topLevelItemCount(), 0);
        QVERIFY(editor.setValue(u"k"_s, u"v"_s));
        QCOMPARE(editor.value(u"k"_s), u"v"_s);
    }

    void brokenDefinitionsAreRefused()
    {
        QTest::ignoreMessage(QtWarningMsg,
                             "PropertyEditor::setPropertyDefinitions: failed to parse property definitions.");
        QVERIFY(!m_editor->setPropertyDefinitions(u"<x>"_s, u"project"_s));
        QCOMPARE(rows(), u"Optimisation=Speed\nWarnings=Yes\nColour=red\n"_s); // what was there stays
    }

    void secondDefinitionsAreAppended()
    {
        QVERIFY(m_editor->setPropertyDefinitions(more, u"project"_s));
        QCOMPARE(tree()->topLevelItemCount(), 2);
        QCOMPARE(tree()->topLevelItem(1)->text(0), u"Debug"_s);
        QCOMPARE(m_editor->keys().last(), u"target"_s);
        tree()->setCurrentItem(page(u"Debug"_s)); // leads to the first page in it
        QVERIFY(page(u"Inner"_s)->isOpen());
        QCOMPARE(rows(), u"Target=qemu\n"_s);
    }

    void groupWithoutPagesShowsNothing()
    {
        QVERIFY(m_editor->setPropertyDefinitions(u"<x><group name=\"Empty\"/></x>"_s, u"project"_s));
        tree()->setCurrentItem(page(u"Empty"_s));
        QCOMPARE(rows(), QString());
        QCOMPARE(help(), QString());
    }

    void laterPropertyReplacesTheOneWithItsKey()
    {
        QVERIFY(m_editor->setPropertyDefinitions(u"<x><group><propertygroup name=\"New\"><property key=\"opt\" "
                                                 u"name=\"Other\" type=\"text\"/></propertygroup>"
                                                 "</group></x>"_s,
                                                 u"project"_s));
        QCOMPARE(rows(), u"Warnings=Yes\nColour=red\n"_s);
        QCOMPARE(m_editor->keys().count(u"opt"_s), 1);
        QCOMPARE(m_editor->value(u"opt"_s), QString());
    }

    void keysAreInTheOrderOfTheDefinitions()
    {
        QCOMPARE(m_editor->keys().join(u' '), u"opt warn colour out dir sources incs jobs baud cpu"_s);
    }

    void propertyWithoutKeyIsEdited()
    {
        QVERIFY(m_editor->setPropertyDefinitions(
            u"<x><group name=\"G\"><propertygroup name=\"Nameless\">"
            "<property name=\"colour\" type=\"text\" defaultvalue=\"d\" pattern=\"[a-z]*\"/>"
            "</propertygroup></group></x>"_s,
            u"project"_s));
        QVERIFY(m_editor->keys().contains(QString()));
        tree()->setCurrentItem(page(u"Nameless"_s));
        typeInto(row(u"colour"_s), u"X"_s);
        QCOMPARE(m_editor->value(QString()), u"X"_s);
        QVERIFY(isChanged(QString()));
        QVERIFY(!isChanged(u"colour"_s)); // the key of another one
        QCOMPARE(m_editor->firstInvalidKey(), std::optional(QString()));
        QVERIFY(m_editor->setValue(QString(), u"stored"_s));
        QCOMPARE(row(u"colour"_s)->text(1), u"stored"_s);
        m_editor->resetToDefault(QString());
        QVERIFY(m_editor->isReset(QString()));
        QCOMPARE(row(u"colour"_s)->text(1), u"d"_s);
    }

    void laterPropertyWithoutKeyReplacesTheFirstOne()
    {
        QVERIFY(m_editor->setPropertyDefinitions(
            u"<x><group name=\"G\"><propertygroup name=\"Nameless\"><property name=\"one\" type=\"text\"/>"
            "<property name=\"two\" type=\"text\"/></propertygroup></group></x>"_s,
            u"project"_s));
        tree()->setCurrentItem(page(u"Nameless"_s));
        QCOMPARE(rows(), u"two\n"_s);
        QCOMPARE(m_editor->keys().count(QString()), 1);
    }

    void pageAtTheTopLevelIsShown()
    {
        QVERIFY(m_editor->setPropertyDefinitions(
            u"<x><propertygroup name=\"Alone\"><property key=\"a\" name=\"A\" type=\"text\" defaultvalue=\"1\"/>"
            "</propertygroup></x>"_s,
            u"project"_s));
        tree()->setCurrentItem(page(u"Alone"_s));
        QCOMPARE(rows(), u"A=1\n"_s);
        m_editor->setValue(u"a"_s, u"2"_s);
        QVERIFY(static_cast<ProjectTreeItem *>(page(u"Alone"_s))->isBold());
        filter()->setText(u"2"_s); // not found by its value
        filter()->setText(u"A"_s);
        QVERIFY(rows().contains(u"Alone\n  A=2\n"_s));
    }

    void invalidPatternIsReportedOnceAndForbidsNothing()
    {
        QTest::ignoreMessage(QtWarningMsg, "PropertyEditor: Invalid pattern '[a'");
        QVERIFY(m_editor->setPropertyDefinitions(
            u"<x><group name=\"G\"><propertygroup name=\"P\"><property key=\"a\" name=\"A\" type=\"text\" "
            "pattern=\"[a\"/></propertygroup></group></x>"_s,
            u"project"_s));
        tree()->setCurrentItem(page(u"P"_s));
        typeInto(row(u"A"_s), u"anything"_s);
        QVERIFY(!m_editor->firstInvalidKey());
        filter()->setText(u"A"_s);
    }

    void integerOutsideItsRangeIsShownAsStored()
    {
        m_editor->setValue(u"jobs"_s, u"123456789"_s); // the maximum is 100000
        tree()->setCurrentItem(page(u"Files"_s));
        list()->setFocus();
        list()->setCurrentItem(row(u"Jobs"_s));
        QVERIFY(row(u"Jobs"_s)->isEditing());
        m_editor->endEdit();
        QCOMPARE(row(u"Jobs"_s)->text(1), u"123456789"_s);
        QVERIFY(!isChanged(u"jobs"_s));
    }

    void unknownKeyHasNoValue()
    {
        QVERIFY(!m_editor->setValue(u"none"_s, 1));
        bool changed = true;
        QVERIFY(!m_editor->value(u"none"_s, &changed).isValid());
        QVERIFY(!changed);
    }

    void setValueCountsAsUnchanged()
    {
        QVERIFY(m_editor->setValue(u"opt"_s, u"0"_s));
        QCOMPARE(row(u"Optimisation"_s)->text(1), u"None"_s);
        QVERIFY(!isChanged(u"opt"_s));
        QCOMPARE(m_editor->value(u"opt"_s), u"0"_s);
        m_editor->setValue(u"opt"_s, u"2"_s); // an option without a key has its index
        QCOMPARE(row(u"Optimisation"_s)->text(1), u"Speed"_s);
    }

    void oddStoredValuesAreNotChangedByShowingThem()
    {
        m_editor->setValue(u"warn"_s, u"true"_s);
        m_editor->setValue(u"opt"_s, u"other"_s);
        m_editor->setValue(u"jobs"_s, u"many"_s);
        tree()->setCurrentItem(page(u"Files"_s));
        tree()->setCurrentItem(page(u"Code"_s));
        for (const QString &key : m_editor->keys())
            QVERIFY2(!isChanged(key), qPrintable(key));
    }

    void severalValuesShowAnEmptyCell()
    {
        for (const QString &key : {u"opt"_s, u"warn"_s, u"colour"_s}) {
            m_editor->setValue(key, QVariant());
            QVERIFY(!m_editor->value(key).isValid());
        }
        QCOMPARE(rows(), u"Optimisation\nWarnings\nColour\n"_s);
        list()->setFocus();
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QVERIFY(!isChanged(u"opt"_s) && !isChanged(u"warn"_s) && !isChanged(u"colour"_s));
    }

    void typedValueIsBoldAndMarked()
    {
        typeInto(row(u"Colour"_s), u"blue"_s);
        QCOMPARE(rows(), u"Optimisation=Speed\nWarnings=Yes\n*Colour=blue\n"_s);
        QVERIFY(isChanged(u"colour"_s));
        QCOMPARE(m_editor->value(u"colour"_s), u"blue"_s);
        tree()->setCurrentItem(page(u"Files"_s));
        tree()->setCurrentItem(page(u"Code"_s));
        QVERIFY(row(u"Colour"_s)->isChanged());
    }

    void valueTypedBackLosesTheBoldButIsStillWritten()
    {
        typeInto(row(u"Colour"_s), u"blue"_s);
        typeInto(row(u"Colour"_s), u"red"_s);
        QVERIFY(!row(u"Colour"_s)->isChanged());
        QVERIFY(isChanged(u"colour"_s));
        QCOMPARE(m_editor->value(u"colour"_s), u"red"_s); // what the user sees
    }

    void valueTypedBackIsNotBoldAfterAnotherPage()
    {
        typeInto(row(u"Colour"_s), u"blue"_s);
        typeInto(row(u"Colour"_s), u"red"_s);
        tree()->setCurrentItem(page(u"Files"_s));
        tree()->setCurrentItem(page(u"Code"_s));
        QVERIFY(!row(u"Colour"_s)->isChanged());
        QVERIFY(isChanged(u"colour"_s));
    }

    void setValueEndsTheEditOfItsRowFirst()
    {
        list()->setFocus();
        list()->setCurrentItem(row(u"Colour"_s));
        QTest::keyClicks(QApplication::focusWidget(), u"x"_s);
        m_editor->setValue(u"colour"_s, u"green"_s);
        QCOMPARE(row(u"Colour"_s)->text(1), u"green"_s);
        QVERIFY(!row(u"Colour"_s)->isEditing());
        QVERIFY(!isChanged(u"colour"_s));
        QVERIFY(!row(u"Colour"_s)->isChanged());
    }

    void clearValuesGivesBackTheDefaults()
    {
        typeInto(row(u"Colour"_s), u"blue"_s);
        m_editor->setValue(u"opt"_s, u"0"_s);
        m_editor->clearValues();
        QCOMPARE(rows(), u"Optimisation=Speed\nWarnings=Yes\nColour=red\n"_s);
        QVERIFY(!isChanged(u"colour"_s));
    }

    void pageWithOtherValuesThanTheDefaultsIsBold()
    {
        const auto *code = static_cast<ProjectTreeItem *>(page(u"Code"_s));
        const auto *files = static_cast<ProjectTreeItem *>(page(u"Files"_s));
        QVERIFY(!code->isBold());
        m_editor->setValue(u"warn"_s, u"1"_s);
        QVERIFY(!code->isBold());
        m_editor->setValue(u"warn"_s, u"0"_s);
        m_editor->setValue(u"opt"_s, u"0"_s);
        QVERIFY(code->isBold() && !files->isBold());
        QVERIFY(!code->toolTip(0).isEmpty());
        m_editor->setValue(u"warn"_s, u"1"_s);
        QVERIFY(code->isBold());
        m_editor->setValue(u"opt"_s, u"2"_s);
        QVERIFY(!code->isBold());
    }

    void groupOfAMarkedPageIsBold()
    {
        QVERIFY(m_editor->setPropertyDefinitions(more, u"project"_s));
        const auto isBold = [this](const QString &name) {
            return static_cast<ProjectTreeItem *>(page(name))->isBold() && !page(name)->toolTip(0).isEmpty();
        };
        const auto *debug = static_cast<ProjectTreeItem *>(page(u"Debug"_s));
        QVERIFY(!debug->isOpen()); // only the first group is
        m_editor->setValue(u"target"_s, u"board"_s);
        QVERIFY(debug->isBold() && isBold(u"Inner"_s));
        QVERIFY(!isBold(u"Build"_s));
        m_editor->setValue(u"colour"_s, u"blue"_s);
        m_editor->setValue(u"jobs"_s, u"9"_s);
        m_editor->setValue(u"colour"_s, u"red"_s);
        QVERIFY(isBold(u"Build"_s)); // its other page
        m_editor->setValue(u"jobs"_s, u"4"_s);
        m_editor->setValue(u"target"_s, u"qemu"_s);
        QVERIFY(!isBold(u"Build"_s) && !debug->isBold() && !isBold(u"Inner"_s));
    }

    void clearButtonHasTheColourOfTheText()
    {
        const auto lightest = [this] {
            const QImage picture = filter()->findChild<QToolButton *>()->icon().pixmap(16).toImage();
            int lightness = -1;
            for (int i = 0; i < picture.width(); ++i) { // along the cross
                const QColor colour = picture.pixelColor(i, i);
                if (colour.alpha() > 128)
                    lightness = std::max(lightness, colour.lightness());
            }
            return lightness;
        };
        for (const Qt::GlobalColor text : {Qt::white, Qt::black, Qt::white}) {
            QPalette palette = filter()->palette();
            palette.setColor(QPalette::Text, text);
            filter()->setPalette(palette);
            QCOMPARE(lightest(), text == Qt::white ? 255 : 0);
        }
    }

    void clearButtonGoesWhenAPageIsChosen()
    {
        filter()->setText(u"colour"_s);
        const auto *clear = filter()->findChild<QToolButton *>();
        QTRY_VERIFY(clear->isVisible());
        tree()->setCurrentItem(page(u"Files"_s));
        QCOMPARE(filter()->text(), QString());
        QTRY_VERIFY(!clear->isVisible() || qFuzzyIsNull(clear->property("opacity").toDouble()));
        QCOMPARE(list()->firstChild()->name(), u"Output"_s);
    }

    void filterMatches_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("name in the middle") << u"ptimis"_s << u"Build / Code\n  Optimisation=Speed\n"_s;
        QTest::newRow("description") << u"how MUCH"_s << u"Build / Code\n  Optimisation=Speed\n"_s;
        QTest::newRow("label of an option") << u"odd"_s << u"Build / Code\n  Optimisation=Speed\n"_s;
        QTest::newRow("label of a proposal") << u"M3"_s << u"Build / Files\n  Processor=7\n"_s;
        QTest::newRow("key") << u"incs"_s << u"Build / Files\n  Includes\n"_s;
        QTest::newRow("two pages") << u"ou"_s
                                   << u"Build / Code\n  Colour=red\nBuild / Files\n  Output\n  Sources=a;b\n"_s;
        QTest::newRow("not the value") << u"9600x"_s << QString();
    }

    void filterMatches()
    {
        QFETCH(QString, text);
        filter()->setFocus();
        QTest::keyClicks(filter(), text);
        QTEST(rows(), "shown");
    }

    void filterShowsMatchingRowsOfAllPages()
    {
        QVERIFY(m_editor->setPropertyDefinitions(more, u"project"_s));
        filter()->setFocus();
        QTest::keyClicks(filter(), u"TAR"_s);
        QCOMPARE(rows(), u"Debug / Inner / Target\n  Target=qemu\n"_s);
        QTest::keyClick(filter(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(filter(), u"out"_s);
        QCOMPARE(rows(), u"Build / Files\n  Output\n"_s);
        QTest::keyClick(filter(), Qt::Key_Down); // to the first row
        QVERIFY(list()->hasFocusInside());
        QCOMPARE(list()->currentItem(), row(u"Output"_s));
        QVERIFY(list()->currentItem()->isEditing());
        filter()->setFocus();
        QTest::keyClick(filter(), Qt::Key_Escape);
        QCOMPARE(rows(), u"Optimisation=Speed\nWarnings=Yes\nColour=red\n"_s);
    }

    void manyRowsAreMadeInSlices()
    {
        QString text = u"<x><group name=\"Many\"><propertygroup name=\"One\">"_s;
        for (int i = 0; i < 10000; ++i)
            text += u"<property key=\"many%1\" name=\"Many %1\" type=\"text\" defaultvalue=\"v\"/>"_s.arg(i);
        QVERIFY(m_editor->setPropertyDefinitions(text + u"</propertygroup></group></x>"_s, u"project"_s));
        const auto count = [this] { return list()->firstChild() ? list()->firstChild()->childCount() : 0; };
        filter()->setText(u"many"_s);
        QVERIFY(count() > 0 && count() < 10000);
        typeInto(row(u"Many 0"_s), u"typed"_s); // while rows are being added
        QTRY_COMPARE(count(), 10000);
        QCOMPARE(list()->firstChild()->child(9999)->text(0), u"Many 9999"_s);
        QVERIFY(isChanged(u"many0"_s));
        filter()->setText(u"many 1"_s);
        filter()->setText(u"colour"_s); // replaces what is being added
        QCoreApplication::processEvents();
        QCOMPARE(rows(), u"Build / Code\n  Colour=red\n"_s);
        filter()->clear();
        m_editor->showProperty(u"many9999"_s);
        QCOMPARE(list()->currentItem()->name(), u"Many 9999"_s);
        QVERIFY(list()->currentItem()->isEditing());
    }

    void filterWithoutMatchShowsANotice()
    {
        filter()->setText(u"zzz"_s);
        QCOMPARE(rows(), QString());
        QCOMPARE(help(), u"No property contains this text."_s);
    }

    void rowsOfTheFilterAreEdited()
    {
        filter()->setText(u"colour"_s);
        typeInto(row(u"Colour"_s), u"blue"_s);
        QVERIFY(isChanged(u"colour"_s));
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, tree()->visualItemRect(page(u"Build"_s)).center());
        QCOMPARE(filter()->text(), QString()); // a click on the tree shows its page, also on the current one
        QCOMPARE(rows(), u"Optimisation=Speed\nWarnings=Yes\n*Colour=blue\n"_s);
    }

    void contextMenuResetsARowToItsDefault()
    {
        m_editor->setValue(u"warn"_s, u"0"_s);
        list()->setFocus();
        list()->setCurrentItem(row(u"Warnings"_s));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::keyClick(list(), Qt::Key_F10, Qt::ShiftModifier);
        QMenu *menu = openMenu(u"propertyMenu"_s);
        QVERIFY(menu);
        QCOMPARE(menu->actions().first()->text(), u"&Reset to Default"_s);
        QVERIFY(menu->actions().first()->isEnabled());
        QTest::keyClick(menu, Qt::Key_R);
        QVERIFY(isChanged(u"warn"_s));
        QVERIFY(m_editor->isReset(u"warn"_s));
        QCOMPARE(m_editor->value(u"warn"_s), true);
        QCOMPARE(row(u"Warnings"_s)->text(1), u"Yes"_s);
        QVERIFY(row(u"Warnings"_s)->isChanged());
        QTest::keyClick(list(), Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY(!openMenu(u"propertyMenu"_s)->actions().first()->isEnabled()); // once is enough
        QApplication::activePopupWidget()->close();
    }

    void storedValueThatIsTheDefaultCanBeReset()
    {
        m_editor->setValue(u"colour"_s, u"red"_s);
        m_editor->resetToDefault(u"colour"_s);
        QVERIFY(isChanged(u"colour"_s) && m_editor->isReset(u"colour"_s));
        QVERIFY(row(u"Colour"_s)->isChanged());
        tree()->setCurrentItem(page(u"Files"_s));
        tree()->setCurrentItem(page(u"Code"_s));
        QVERIFY(row(u"Colour"_s)->isChanged());
    }

    void valueEnteredAfterAResetIsStoredAgain()
    {
        m_editor->setValue(u"colour"_s, u"green"_s);
        m_editor->resetToDefault(u"colour"_s);
        typeInto(row(u"Colour"_s), u"blue"_s);
        QVERIFY(isChanged(u"colour"_s) && !m_editor->isReset(u"colour"_s));
        m_editor->resetToDefault(u"colour"_s);
        m_editor->setValue(u"colour"_s, u"green"_s); // loaded again
        QVERIFY(!isChanged(u"colour"_s) && !m_editor->isReset(u"colour"_s));
        m_editor->resetToDefault(u"colour"_s);
        m_editor->clearValues();
        QVERIFY(!isChanged(u"colour"_s) && !m_editor->isReset(u"colour"_s));
    }

    void resetOfAValueThatWasOnlyTypedLeavesNothingToStore()
    {
        typeInto(row(u"Colour"_s), u"blue"_s);
        m_editor->resetToDefault(u"colour"_s);
        QCOMPARE(row(u"Colour"_s)->text(1), u"red"_s);
        QVERIFY(!isChanged(u"colour"_s) && !m_editor->isReset(u"colour"_s));
        QVERIFY(!row(u"Colour"_s)->isChanged());
    }

    void resetOfAKeyOnAnotherPageOrOfAnUnknownOneIsSafe()
    {
        m_editor->setValue(u"jobs"_s, u"9"_s);
        m_editor->resetToDefault(u"jobs"_s);
        QVERIFY(m_editor->isReset(u"jobs"_s));
        QCOMPARE(m_editor->value(u"jobs"_s), 4);
        m_editor->resetToDefault(u"none"_s);
        QVERIFY(!m_editor->isReset(u"none"_s));
    }

    void menuOfTheTextThatIsBeingTypedResets()
    {
        list()->setFocus();
        list()->setCurrentItem(row(u"Colour"_s));
        QTest::keyClicks(QApplication::focusWidget(), u"x"_s);
        rightPress(QApplication::focusWidget());
        QMenu *menu = openMenu(u"editorMenu"_s);
        QVERIFY(menu);
        QAction *reset = menu->findChild<QAction *>(u"resetToDefault"_s);
        QVERIFY(reset && reset->isEnabled());
        menu->close();
        reset->trigger();
        QCOMPARE(row(u"Colour"_s)->text(1), u"red"_s);
        QVERIFY(!row(u"Colour"_s)->isEditing());
        QVERIFY(!isChanged(u"colour"_s));
    }

    void menuEndsTheEditOfAChoice()
    {
        list()->setFocus();
        list()->setCurrentItem(row(u"Optimisation"_s));
        QTest::keyClicks(QApplication::focusWidget(), u"N"_s);
        rightPress(QApplication::focusWidget());
        QMenu *menu = openMenu(u"propertyMenu"_s);
        QVERIFY(menu);
        QVERIFY(!row(u"Optimisation"_s)->isEditing());
        QCOMPARE(row(u"Optimisation"_s)->text(1), u"None"_s);
        QVERIFY(menu->actions().first()->isEnabled());
        QTest::keyClick(menu, Qt::Key_R);
        QCOMPARE(row(u"Optimisation"_s)->text(1), u"Speed"_s);
    }

    void headingHasNoMenu()
    {
        filter()->setText(u"colour"_s);
        list()->setFocus();
        list()->setCurrentItem(list()->firstChild());
        QTest::keyClick(list(), Qt::Key_Menu);
        QVERIFY(!QApplication::activePopupWidget());
    }

    void defaultValueCannotBeReset()
    {
        list()->setFocus();
        list()->setCurrentItem(row(u"Warnings"_s));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::keyClick(list(), Qt::Key_Menu);
        QMenu *menu = openMenu(u"propertyMenu"_s);
        QVERIFY(menu);
        QVERIFY(!menu->actions().first()->isEnabled());
        menu->close();
    }

    void forbiddenValueIsExplained()
    {
        QVERIFY(!m_editor->firstInvalidKey());
        typeInto(row(u"Colour"_s), u"RED"_s);
        QCOMPARE(m_editor->firstInvalidKey(), u"colour"_s);
        QCOMPARE(m_editor->problem(u"colour"_s), u"Colour: Small letters."_s);
        QVERIFY(help().contains(u"Small letters."_s));
        QCOMPARE(row(u"Colour"_s)->warning(), u"Small letters."_s);
        tree()->setCurrentItem(page(u"Files"_s));
        m_editor->showProperty(u"colour"_s);
        QVERIFY(row(u"Colour"_s)->isEditing());
        typeInto(row(u"Colour"_s), u"blue"_s);
        QVERIFY(!m_editor->firstInvalidKey());
        QVERIFY(row(u"Colour"_s)->warning().isEmpty());
    }

    void forbiddenValueThatWasLoadedDoesNotCount()
    {
        m_editor->setValue(u"colour"_s, u"RED"_s);
        QVERIFY(!m_editor->firstInvalidKey());
        QVERIFY(!row(u"Colour"_s)->warning().isEmpty());
    }
};

QTEST_MAIN(PropertyEditorTest)
#include "tst_propertyeditor.moc"
