// Any lines of a test driver, executed on a window with widgets: each has a valid reply or none, and the posted events
// are handled without errors.
#include "../framework/fakeservices.h"
#include "activity.h"
#include "objectmodel.h"
#include "qtrunnerserver.h"
#include "runnercommands.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
class Window : public QMainWindow, public FakeServices
{
public:
    Window()
    {
        setObjectName(u"window"_s);
        auto *area = new QWidget(this);
        setCentralWidget(area);
        new QVBoxLayout(area);
        add(new QLineEdit(u"some text"_s), u"edit"_s);
        add(new QPushButton(u"Press"_s), u"my button"_s);
        add(new QCheckBox(u"Check"_s), u"box"_s);
        add(new QSpinBox, u"spin"_s);
        add(new QPlainTextEdit(u"a\nb"_s), u"pane"_s);
        auto *combo = new QComboBox;
        combo->addItems({u"a"_s, u"b"_s});
        add(combo, u"combo"_s);
        auto *tree = new QTreeWidget;
        new QTreeWidgetItem(new QTreeWidgetItem(tree));
        add(tree, u"tree"_s);
        QAction *action = menuBar()->addMenu(u"File"_s)->addAction(u"Do it"_s);
        action->setObjectName(u"doIt"_s);
        statusBar()->setObjectName(u"bar"_s);
        new QtRunnerServer(0, QHostAddress(), nullptr, this);
    }

    [[nodiscard]] QAction *action(const QString &name) const override { return findChild<QAction *>(name); }

private:
    void add(QWidget *widget, const QString &name)
    {
        widget->setObjectName(name);
        centralWidget()->layout()->addWidget(widget);
    }
};

bool isReply(const QString &reply)
{
    static const QStringList errors{u"ERROR\r\n"_s,
                                    u"ERROR 1 Bad command syntax\r\n"_s,
                                    u"ERROR 2 No such object\r\n"_s,
                                    u"ERROR 3 Bad parameter\r\n"_s,
                                    u"ERROR 4 No such object\r\n"_s,
                                    u"ERROR No such property"_s};
    return reply.isEmpty() || errors.contains(reply) || (reply.startsWith("OK"_L1) && reply.endsWith("\r\n"_L1));
}
} // namespace

/// The font library keeps its cache until the process ends.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}); // warnings are not failures
    auto *application = new QApplication(*argc, *argv);                                    // never deleted
    application->setQuitOnLastWindowClosed(false);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Window window;
    Activity activity;
    ObjectModel model(activity, window);
    RunnerCommands commands(&window, &model);
    const QByteArrayList lines = QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)).split('\n');
    for (const QByteArray &line : lines) {
        if (!isReply(commands.execute(QString::fromUtf8(line) + u'\n')))
            qFatal("A reply has an invalid form.");
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return 0;
}
