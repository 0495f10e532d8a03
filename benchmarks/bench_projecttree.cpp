// The project tree with 100,000 files in 1,000 folders. The peer is a QTreeWidget with a row for each of them.
#include "../tests/framework/fakeservices.h"
#include "activity.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projecttree.h"
#include "projecttreeitem.h"
#include "projectworkspace.h"
#include <benchmark/benchmark.h>
#include <ctime>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {
constexpr int FolderCount = 1000;
constexpr int FilesPerFolder = 100;
constexpr int FileCount = FolderCount * FilesPerFolder;
constexpr int FilesInBigFolder = 10000;

class Host : public FakeServices
{
public:
    QIcon icon(const QString &) const override { return QApplication::style()->standardIcon(QStyle::SP_FileIcon); }
};

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// File names in neither ascending nor descending order.
QString fileName(int number)
{
    return u"source_file_%1.c"_s.arg(number * 7919 % 100003);
}

/// A workspace with one project: 1,000 folders of 100 files, then one of 10,000.
std::unique_ptr<ProjectWorkspace> largeWorkspace()
{
    auto workspace = std::make_unique<ProjectWorkspace>(u"/work/large.vnw"_s);
    auto *project = new Project(u"large"_s, u"/work"_s);
    for (int i = 0; i <= FolderCount; ++i) {
        auto *folder = new ProjectFolder(u"Component %1"_s.arg(i));
        for (int j = 0; j < (i < FolderCount ? FilesPerFolder : FilesInBigFolder); ++j)
            folder->addFile(new ProjectFile(fileName(j), u"source/%1/%2"_s.arg(QString::number(i), fileName(j))));
        project->addFolder(folder, false);
    }
    workspace->addProject(project);
    return workspace;
}

ListViewItem *bigFolder(const ProjectTree &tree)
{
    return static_cast<ListViewItem *>(tree.firstChild()->child(0)->child(FolderCount));
}

/// Handles all pending events and paints.
void settle(QWidget &window)
{
    QCoreApplication::processEvents();
    window.repaint();
}

double processorMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Processor time of this process, which does not depend on the load of the machine.
template <typename Work>
double milliseconds(const Work &work)
{
    const double start = processorMilliseconds();
    work();
    return processorMilliseconds() - start;
}

void addRows(QTreeWidgetItem *parent, int count)
{
    static const QIcon icon = QApplication::style()->standardIcon(QStyle::SP_FileIcon);
    QList<QTreeWidgetItem *> rows;
    for (int i = 0; i < count; ++i) {
        rows += new QTreeWidgetItem(QStringList(fileName(i)));
        rows.last()->setIcon(0, icon);
    }
    parent->addChildren(rows);
}

/// The time to add a row for each file, with collapsed folders, and to paint.
double bareTree()
{
    QTreeWidget tree;
    tree.setUniformRowHeights(true);
    tree.setHeaderHidden(true);
    tree.resize(300, 800);
    tree.show();
    settle(tree);
    return milliseconds([&] {
        for (int i = 0; i <= FolderCount; ++i) {
            auto *folder = new QTreeWidgetItem(&tree, QStringList(u"Component %1"_s.arg(i)));
            addRows(folder, i < FolderCount ? FilesPerFolder : FilesInBigFolder);
        }
        settle(tree);
    });
}

/// The time to expand a folder with 10,000 existing rows.
double bareExpansion()
{
    QTreeWidget tree;
    tree.setUniformRowHeights(true);
    tree.resize(300, 800);
    auto *folder = new QTreeWidgetItem(&tree, QStringList(u"Component"_s));
    addRows(folder, FilesInBigFolder);
    tree.show();
    settle(tree);
    return milliseconds([&] {
        folder->setExpanded(true);
        settle(tree);
    });
}

/// A visible tree with the large project.
struct Shown
{
    Host host;
    Activity activity;
    ProjectTree tree{activity, host};

    Shown()
    {
        tree.resize(300, 800);
        tree.show();
        activity.openWorkspace(largeWorkspace());
        tree.showWorkspace();
        settle(tree);
    }
    ~Shown() { activity.closeWorkspace(); }
    Project *project() const { return activity.currentProject(); }
};

void report(benchmark::State &state, double peer, const char *name)
{
    state.counters[name] = peer;
}

/// The time from the loaded model to the painted tree.
void showLargeProject(benchmark::State &state)
{
    Shown shown;
    require(shown.tree.firstChild()->child(0)->childCount() == FolderCount + 1, "Folders are missing.");
    double peer = 0;
    for ([[maybe_unused]] auto _ : state) {
        peer += bareTree();
        state.SetIterationTime(milliseconds([&] {
                                   shown.tree.showWorkspace();
                                   settle(shown.tree);
                               })
                               / 1000);
    }
    report(state, peer / double(state.iterations()), "bare_fill_ms");
}
BENCHMARK(showLargeProject)->UseManualTime()->Unit(benchmark::kMillisecond);

void expandTenThousand(benchmark::State &state)
{
    Shown shown;
    double peer = 0;
    for ([[maybe_unused]] auto _ : state) {
        peer += bareExpansion();
        shown.tree.showWorkspace();
        settle(shown.tree);
        ListViewItem *folder = bigFolder(shown.tree);
        state.SetIterationTime(milliseconds([&] {
                                   folder->setOpen(true);
                                   settle(shown.tree);
                               })
                               / 1000);
        require(folder->childCount() == FilesInBigFolder, "Files are missing.");
    }
    report(state, peer / double(state.iterations()), "bare_rows_there_ms");
}
BENCHMARK(expandTenThousand)->UseManualTime()->Unit(benchmark::kMillisecond);

/// Moves the selection by one row, with all rows expanded.
void arrowKeyInOpenTree(benchmark::State &state)
{
    Shown shown;
    shown.tree.expandAll();
    shown.tree.setCurrentItem(shown.tree.firstChild());
    settle(shown.tree);
    for ([[maybe_unused]] auto _ : state) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(&shown.tree, &key);
        settle(shown.tree);
    }
    require(shown.tree.selectedItem() != shown.tree.firstChild(), "The selection has not moved.");
}
BENCHMARK(arrowKeyInOpenTree)->Unit(benchmark::kMicrosecond);

/// Scrolls by one page, with all rows expanded.
void pageInOpenTree(benchmark::State &state)
{
    Shown shown;
    shown.tree.expandAll();
    settle(shown.tree);
    QScrollBar *bar = shown.tree.verticalScrollBar();
    require(bar->maximum() > (FileCount + FilesInBigFolder) * 10, "Rows are missing.");
    for ([[maybe_unused]] auto _ : state) {
        bar->setValue(bar->value() < bar->maximum() ? bar->value() + bar->pageStep() : 0);
        settle(shown.tree);
    }
}
BENCHMARK(pageInOpenTree)->Unit(benchmark::kMicrosecond);

/// Renames a folder, with all rows expanded.
void renameInOpenTree(benchmark::State &state)
{
    Shown shown;
    shown.tree.expandAll();
    settle(shown.tree);
    ListViewItem *folder = bigFolder(shown.tree);
    int number = 0;
    for ([[maybe_unused]] auto _ : state) {
        folder->startRename(0);
        shown.tree.renameEdit()->setText(u"Name %1"_s.arg(++number));
        shown.tree.endRename(ListView::Accept);
        settle(shown.tree);
    }
    require(shown.project()->folders().constLast()->name() == u"Name %1"_s.arg(number), "The folder has another name.");
}
BENCHMARK(renameInOpenTree)->Unit(benchmark::kMicrosecond);

/// Adds a file, with all rows expanded; the tree scrolls to it.
void addFileToOpenTree(benchmark::State &state)
{
    Shown shown;
    shown.tree.expandAll();
    settle(shown.tree);
    ProjectFolder *folder = shown.project()->folders().constFirst();
    int number = 0;
    for ([[maybe_unused]] auto _ : state) {
        folder->addFile(new ProjectFile(fileName(number), fileName(number)));
        ++number;
        settle(shown.tree);
    }
    require(shown.tree.firstChild()->child(0)->child(0)->childCount() == FilesPerFolder + number, "Files are missing.");
}
BENCHMARK(addFileToOpenTree)->Unit(benchmark::kMillisecond);

/// Adds 10,000 files like a plug-in, with one signal for each.
void addTenThousand(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        Shown shown;
        QList<ProjectFile *> files;
        for (int i = 0; i < FilesInBigFolder; ++i)
            files += new ProjectFile(fileName(i), fileName(i));
        state.SetIterationTime(milliseconds([&] {
                                   for (ProjectFile *file : files)
                                       shown.project()->addFile(file);
                                   settle(shown.tree);
                               })
                               / 1000);
        require(shown.tree.firstChild()->child(0)->childCount() == FolderCount + 1 + FilesInBigFolder,
                "Files are missing.");
    }
}
BENCHMARK(addTenThousand)->UseManualTime()->Unit(benchmark::kMillisecond);

void removeTenThousand(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        Shown shown;
        ListViewItem *folder = bigFolder(shown.tree);
        folder->setOpen(true);
        shown.tree.setCurrentItem(folder->firstChild());
        const QItemSelection all(shown.tree.indexFromItem(folder->child(0)),
                                 shown.tree.indexFromItem(folder->child(FilesInBigFolder - 1)));
        shown.tree.selectionModel()->select(all, QItemSelectionModel::ClearAndSelect);
        settle(shown.tree);
        state.SetIterationTime(milliseconds([&] {
                                   shown.tree.remove();
                                   settle(shown.tree);
                               })
                               / 1000);
        require(folder->childCount() == 0, "Files are left.");
    }
}
BENCHMARK(removeTenThousand)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("LC_ALL", "en_US.UTF-8"); // names are compared by locale, not by bytes
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
