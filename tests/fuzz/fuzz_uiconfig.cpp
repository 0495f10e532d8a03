#include "popupmenu.h"
#include "toolbar.h"
#include "uiconfig.h"
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace {
/// Has the slots and signals that the corpus uses.
class Window : public QMainWindow
{
    Q_OBJECT
public Q_SLOTS:
    void fileNew() {}
    void editFind() {}
    void viewOutput(bool) {}

Q_SIGNALS:
    void cutAvailable(bool available);
};

void build(const QString &file)
{
    Window window;
    UiConfig ui(&window, file, [](const QString &) { return QIcon(); });
    ui.addCompanion(u"editFind"_s, [](ToolBar *bar) { bar->addWidget(new QLabel(bar)); });
    ui.setupActions();
    ui.setupToolbars();
    ui.setupMenus();
    window.setWindowTitle(ui.title());
    Q_EMIT window.cutAvailable(false);
    if (PopupMenu *menu = ui.menu(u"fileMenu"_s))
        menu->removeItemsWithId();
    if (QAction *action = ui.action(u"fileNew"_s))
        action->trigger();
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}); // warnings are not failures
    new QApplication(*argc, *argv);                                                        // never deleted
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QTemporaryFile file; // a new one each time: some file systems write a truncated file to disk when it is closed
    if (!file.open())
        return 0;
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.flush();
    build(file.fileName());
    return 0;
}

#include "fuzz_uiconfig.moc"
