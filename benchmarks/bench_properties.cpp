// The property dialog with the definitions of the build and the debugger plug-in, beside a bare dialog with a tree of
// the same rows; and a grid of 10,000 rows in which the Down key is pressed.
#include "../plugins/gdb/propertytext.h"
#include "listview.h"
#include "project.h"
#include "propertyeditor.h"
#include "propertyeditordialog.h"
#include "propertyhexitem.h"
#include "propertylist.h"
#include "propertylistitem.h"
#include "propertytable.h"
#include "toolchain.h"
#include <benchmark/benchmark.h>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
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
    return {propertyDefinitionsXml(u"Build"_s, propertyPages(toolChains().first())), gdbPropertyDefinitions()};
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

/// A grid of 10,000 rows, every second one a choice.
void fill(PropertyList &list)
{
    ListViewItem *last = nullptr;
    for (int i = 0; i < RowCount; ++i) {
        const QString name = u"register %1"_s.arg(i);
        if (i % 2 == 0) {
            last = new PropertyHexItem(name, uint(i), 32, &list, last);
            continue;
        }
        auto *item = new PropertyListItem(name, QVariant(), &list, last);
        item->addOption(u"Off"_s, u"0"_s);
        item->addOption(u"On"_s, u"1"_s);
        item->setValue(u"1"_s, false);
        last = item;
    }
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
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
