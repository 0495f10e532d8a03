// The property dialog with the definitions of the build and the debugger plug-in, beside a bare dialog with a tree of
// the same rows; a grid of 10,000 rows in which the Down key is pressed; the filter of 10,000 options; and the options
// dialog.
#include "../plugins/gdb/propertytext.h"
#include "listview.h"
#include "optionsdialog.h"
#include "project.h"
#include "propertybooleanitem.h"
#include "propertyeditor.h"
#include "propertyeditordialog.h"
#include "propertyfileitem.h"
#include "propertyflagsitem.h"
#include "propertyhexitem.h"
#include "propertyintegercomboitem.h"
#include "propertyintegeritem.h"
#include "propertylist.h"
#include "propertylistitem.h"
#include "propertylonghexitem.h"
#include "propertypages.h"
#include "propertytable.h"
#include "toolchain.h"
#include <benchmark/benchmark.h>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextBrowser>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int RowCount = 10000;

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// Lets everything be laid out and painted.
void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

QStringList realDefinitions()
{
    return {propertyDefinitionsXml(u"Build"_s, {}, propertyPages(toolChains().first())), gdbPropertyDefinitions()};
}

/// A dialog around a property editor with all definitions, shown.
void openDialog(benchmark::State &state)
{
    const QStringList definitions = realDefinitions();
    Project project(u"fw"_s, u"/work/fw"_s);
    project.properties()->setProperty(u"buildOptimisation"_s, u"2"_s, u"Release"_s);
    project.setCurrentConfiguration(u"Release"_s);
    for ([[maybe_unused]] auto _ : state) {
        PropertyEditorDialog dialog(&project, nullptr, nullptr, nullptr, nullptr, u"propertyEditorDialog"_s);
        auto *editor = dialog.findChild<PropertyEditor *>();
        for (const QString &text : definitions)
            require(editor->setPropertyDefinitions(text, u"project"_s), "The definitions are broken.");
        editor->setValue(u"buildOptimisation"_s, u"2"_s);
        dialog.show();
        settle();
        require(dialog.findChild<PropertyList *>()->topLevelItemCount() == 4, "Rows are missing.");
    }
}
BENCHMARK(openDialog)->Unit(benchmark::kMillisecond);

/// What the toolkit alone needs for such a dialog.
void openBareDialog(benchmark::State &state)
{
    PropertyEditor model;
    for (const QString &text : realDefinitions())
        model.setPropertyDefinitions(text, u"project"_s);
    const auto *tree = model.findChild<ListView *>(u"GroupTree"_s);
    for ([[maybe_unused]] auto _ : state) {
        QDialog dialog;
        dialog.resize(700, 560);
        QVBoxLayout layout(&dialog);
        QTreeWidget left;
        QTreeWidget right;
        QTextBrowser help;
        for (QWidget *widget :
             {static_cast<QWidget *>(&left), static_cast<QWidget *>(&right), static_cast<QWidget *>(&help)})
            layout.addWidget(widget);
        for (int i = 0; i < tree->topLevelItemCount(); ++i)
            left.addTopLevelItem(tree->topLevelItem(i)->clone());
        right.setColumnCount(2);
        for (int i = 0; i < 4; ++i)
            new QTreeWidgetItem(&right, {u"Name"_s, u"Value"_s});
        help.setHtml(u"<p><b>Name</b></p><p>Description</p>"_s);
        dialog.show();
        settle();
    }
}
BENCHMARK(openBareDialog)->Unit(benchmark::kMillisecond);

PropertyItem *makeChoice(const QString &name, PropertyList &list, ListViewItem *last)
{
    auto *item = new PropertyListItem(name, QVariant(), &list, last);
    item->addOption(u"Off"_s, u"0"_s);
    item->addOption(u"On"_s, u"1"_s);
    item->setValue(u"1"_s, false);
    return item;
}

/// A row of one of all kinds that have an editor.
PropertyItem *makeRow(int number, PropertyList &list, ListViewItem *last)
{
    const QString name = u"register %1"_s.arg(number);
    switch (number % 8) {
    case 0:
        return new PropertyHexItem(name, uint(number), 32, &list, last);
    case 1:
        return makeChoice(name, list, last);
    case 2:
        return new PropertyIntegerItem(name, number, &list, last);
    case 3:
        return new PropertyBooleanItem(name, true, &list, last);
    case 4:
        return new PropertyIntegerComboItem(name, u"1"_s, &list, last);
    case 5:
        return new PropertyFileItem(name, u"a"_s, PropertyFileItem::File, &list, last);
    case 6:
        return new PropertyFlagsItem(name, 5u, u"ZNCV"_s, &list, last);
    default:
        return new PropertyLongHexItem(name, QByteArray(8, '\1'), 64, &list, last);
    }
}

void fill(PropertyList &list)
{
    ListViewItem *last = nullptr;
    for (int i = 0; i < RowCount; ++i)
        last = makeRow(i, list, last);
}

void fillTenThousandRows(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        PropertyList list(u"Register"_s, u"Value"_s);
        list.resize(400, 700);
        list.show();
        fill(list);
        settle();
    }
}
BENCHMARK(fillTenThousandRows)->Unit(benchmark::kMillisecond);

/// One key: the old row gives up its editor, the next one gets its own, and both are painted. The limit is 4 ms.
void downKeyInTenThousandRows(benchmark::State &state)
{
    PropertyList list(u"Register"_s, u"Value"_s);
    list.resize(400, 700);
    fill(list);
    list.show();
    list.activateWindow();
    list.setFocus();
    settle();
    int pressed = 0;
    for ([[maybe_unused]] auto _ : state) {
        QWidget *focus = QApplication::focusWidget() ? QApplication::focusWidget() : &list;
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(focus, &key);
        settle();
        if (++pressed % (RowCount - 1) == 0)
            list.setCurrentItem(list.firstChild());
    }
    require(list.currentItem()->isEditing(), "The row has no editor.");
    require(pressed >= RowCount - 1 || list.currentItem()->name() == u"register %1"_s.arg(pressed), "Keys are lost.");
    state.counters["limit_ms"] = 4;
}
BENCHMARK(downKeyInTenThousandRows)->Unit(benchmark::kMillisecond);
/// The same key in the toolkit's tree of as many rows, which has no editors.
void downKeyInBareTree(benchmark::State &state)
{
    QTreeWidget tree;
    tree.setColumnCount(2);
    tree.setUniformRowHeights(true);
    for (int i = 0; i < RowCount; ++i)
        new QTreeWidgetItem(&tree, {u"register %1"_s.arg(i), u"0x%1"_s.arg(i, 8, 16)});
    tree.resize(400, 700);
    tree.show();
    tree.setFocus();
    settle();
    for ([[maybe_unused]] auto _ : state) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(&tree, &key);
        settle();
    }
    require(tree.currentItem(), "Keys are lost.");
}
BENCHMARK(downKeyInBareTree)->Unit(benchmark::kMillisecond);

/// One key in the filter of a property editor with 10,000 options on 100 pages, until the first rows are painted. The
/// limit is one frame of 60 a second for the key itself; further rows follow in slices.
void filterKeyInTenThousandOptions(benchmark::State &state)
{
    QString text = u"<x>"_s;
    for (int page = 0; page < 100; ++page) {
        text += u"<group name=\"G%1\"><propertygroup name=\"P\">"_s.arg(page);
        for (int i = 0; i < RowCount / 100; ++i)
            text += u"<property key=\"k%1_%2\" name=\"option %2\" type=\"text\"/>"_s.arg(page).arg(i);
        text += u"</propertygroup></group>"_s;
    }
    PropertyEditor editor;
    require(editor.setPropertyDefinitions(text + u"</x>"_s, u"project"_s), "The definitions are broken.");
    editor.resize(700, 600);
    editor.show();
    settle();
    auto *filter = editor.findChild<QLineEdit *>(u"FilterEdit"_s);
    const auto *list = editor.findChild<PropertyList *>();
    for ([[maybe_unused]] auto _ : state) {
        filter->setText(u"o"_s); // all options, while those of the last round are still there
        QCoreApplication::processEvents();
        require(list->topLevelItemCount() > 0, "Rows are missing.");
        filter->setText(u"op"_s);
        QCoreApplication::processEvents();
    }
    state.counters["limit_ms"] = 2 * 16;
}
BENCHMARK(filterKeyInTenThousandOptions)->Unit(benchmark::kMillisecond);

/// The options dialog with the formats of the product, shown.
void openOptions(benchmark::State &state)
{
    TextFormats formats;
    require(formats.loadFromFile(QStringLiteral(VARNEL_CONFIG "/textformats.xml")), "There are no formats.");
    const QStringList actions{u"Current"_s, u"All"_s, u"Ask"_s};
    const OptionValues values{.formats = formats, .debugActions = {0, 0, 0, 0, 0}};
    const OptionChoices choices{.defaultFormats = [&] { return formats; },
                                .debugTexts = {actions, actions, actions, actions, actions}};
    for ([[maybe_unused]] auto _ : state) {
        OptionsDialog dialog(values, choices, nullptr, u"optionsDialog"_s);
        dialog.show();
        settle();
        require(dialog.isVisible(), "There is no dialog.");
    }
    state.counters["limit_ms"] = 100;
}
BENCHMARK(openOptions)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
