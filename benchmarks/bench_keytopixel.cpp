// The time from a key to the painted change, in the main window of the program and in a bare QPlainTextEdit of the same
// size and font: median and 95th percentile of several hundred keys at the top and in the middle of a C file of 9.9 MB,
// and in an empty file. Each window has a process of its own, as event filters of one would slow down the other, and
// the processes take turns.
#include "../tests/framework/installation.h"
#include "ideapplication.h"
#include "mainwindow.h"
#include "samplesource.h"
#include "textdocument.h"
#include "textview.h"
#include "textviewedit.h"
#include "viewmanager.h"
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <iterator>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QProcess>
#include <QTest>
#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype FileSize = 9'900'000;
constexpr int Keys = 400;
constexpr int KeysOfLine = 40;
constexpr int Rounds = 5;
constexpr QSize PaneSize(800, 600);
const auto SamplesArgument = "--samples";

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// Knows when a widget was painted and its window's changes were shown.
template <typename Application>
class WatchingApplication : public Application
{
public:
    using Application::Application;
    QWidget *watched = nullptr;

    void start()
    {
        m_shownAfter = -1;
        m_time.start();
    }
    [[nodiscard]] qint64 shownAfter() const { return m_shownAfter; } ///< in nanoseconds since start()

    bool notify(QObject *receiver, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        m_isPainted = m_isPainted || (type == QEvent::Paint && receiver == watched);
        const bool result = Application::notify(receiver, event);
        if (watched && type == QEvent::UpdateRequest && receiver == watched->window()
            && std::exchange(m_isPainted, false) && m_shownAfter < 0)
            m_shownAfter = m_time.nsecsElapsed();
        return result;
    }

private:
    QElapsedTimer m_time;
    qint64 m_shownAfter = -1;
    bool m_isPainted = false;
};

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // as exec() does, for the keys that follow
    for (const QDeadlineTimer end(500); !end.hasExpired();)
        QCoreApplication::processEvents();
}

/// Types the keys at the start of a line and prints the microseconds of each.
template <typename Application>
void type(WatchingApplication<Application> &application, QPlainTextEdit *edit, int line)
{
    static const auto typed = u"if (value[i] > 0) count += 1; // and so "_s;
    QWidget *window = edit->window();
    for (int i = 0; i < 20 && edit->size() != PaneSize; ++i) { // docks take a share
        window->resize(window->size() + PaneSize - edit->size());
        QCoreApplication::processEvents();
    }
    window->activateWindow();
    edit->setFocus();
    edit->setTextCursor(QTextCursor(edit->document()->findBlockByNumber(line)));
    edit->centerCursor();
    settle();
    require(edit->size() == PaneSize && edit->hasFocus(), "The pane cannot be typed into.");
    application.watched = edit->viewport();
    for (int i = 0; i < Keys; ++i) {
        const int before = edit->document()->characterCount();
        const QChar key = typed[i % typed.size()];
        application.start();
        qt_handleKeyEvent(window->windowHandle(), QEvent::KeyPress, QTest::asciiToKey(key.toLatin1()), Qt::NoModifier,
                          QString(key)); // as from the window system
        while (application.shownAfter() < 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        std::printf("%lld\n", application.shownAfter());
        require(edit->document()->characterCount() == before + 1, "The character is missing.");
        QCoreApplication::processEvents();
        if (i % KeysOfLine == KeysOfLine - 1) { // the line stays short
            QTextCursor cursor = edit->textCursor();
            cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
            settle();
        }
    }
}

struct Place
{
    bool inFile;
    int percent;
};

Place placeOf(const QByteArray &name)
{
    return {name != "empty", name == "middle" ? 50 : 0};
}

int lineAt(const QPlainTextEdit *edit, Place place)
{
    return place.inFile ? std::max(20, edit->blockCount() * place.percent / 100) : 0;
}

QByteArray textAt(Place place)
{
    return place.inFile ? sampleSource(FileSize).toUtf8() : QByteArray();
}

void typeInProgram(Place place)
{
    Installation installation;
    qputenv("XDG_STATE_HOME", installation.path(u"state"_s).toLocal8Bit());
    installation.write(u"source.c"_s, textAt(place));
    Arguments arguments;
    const auto paths = [&installation] {
        const QDir user(installation.path(u"."_s));
        return ApplicationPaths(QDir(QStringLiteral(VARNEL_STAGE_DIR)), [user] { return UserDirectories{user, user}; });
    };
    WatchingApplication<IDEApplication> application(arguments.count(), arguments.values(), paths);
    MainWindow window;
    window.resize(1300, 1000);
    window.show();
    require(window.openFile(installation.path(u"source.c"_s), false), "The file does not open.");
    auto *view = qobject_cast<TextView *>(window.viewManager()->currentView());
    require(view, "The file is not shown as a text.");
    TextViewEdit *edit = view->currentEdit();
    while (edit->document()->characterCount() <= textAt(place).size() || edit->isReadOnly())
        QCoreApplication::processEvents();
    view->textDocument()->ensureProcessed(edit->document()->lastBlock());
    type(application, edit, lineAt(edit, place));
    view->textDocument()->setModified(false);
    window.close();
}

QFont fontOfProgram()
{
    QFont font;
    font.setFamilies({u"DejaVu Sans Mono"_s, u"Monospace"_s});
    font.setPointSize(10);
    return font;
}

void typeInBareEdit(Place place)
{
    Arguments arguments;
    WatchingApplication<QApplication> application(arguments.count(), arguments.values());
    QMainWindow window;
    auto *edit = new QPlainTextEdit;
    edit->setFrameStyle(QFrame::NoFrame);
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit->setFont(fontOfProgram());
    edit->setPlainText(QString::fromUtf8(textAt(place)));
    window.setCentralWidget(edit);
    window.resize(1300, 1000);
    window.show();
    type(application, edit, lineAt(edit, place));
}

std::vector<double> samples(const QString &window, const QString &place)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QLatin1StringView(SamplesArgument), window, place});
    require(process.waitForFinished(-1) && process.exitCode() == 0, "A window cannot be measured.");
    std::vector<double> result;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            result.push_back(line.toDouble() * 1e-3);
    }
    require(result.size() == Keys, "Keys are missing.");
    return result;
}

double percentile(std::vector<double> values, int percent)
{
    std::ranges::sort(values);
    return values[values.size() * size_t(percent) / 100];
}

void keyToPixel(benchmark::State &state, const char *place)
{
    for ([[maybe_unused]] auto _ : state) {
        std::vector<double> here;
        std::vector<double> bare;
        for (int i = 0; i < Rounds; ++i) {
            for (auto &[values, window] : {std::pair{&here, u"program"_s}, std::pair{&bare, u"bare"_s}})
                std::ranges::copy(samples(window, QLatin1StringView(place)), std::back_inserter(*values));
        }
        for (const int percent : {50, 95}) {
            const std::string name = u"p%1"_s.arg(percent).toStdString();
            state.counters[name + "_us"] = percentile(here, percent);
            state.counters[name + "_bare_us"] = percentile(bare, percent);
            state.counters[name + "_times_bare"] = percentile(here, percent) / percentile(bare, percent);
        }
        state.SetIterationTime(percentile(here, 50) * 1e-6);
    }
}
BENCHMARK_CAPTURE(keyToPixel, top, "top")->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(keyToPixel, middle, "middle")->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(keyToPixel, empty, "empty")->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char **argv)
{
    if (argc == 4 && qstrcmp(argv[1], SamplesArgument) == 0) {
        qstrcmp(argv[2], "program") == 0 ? typeInProgram(placeOf(argv[3])) : typeInBareEdit(placeOf(argv[3]));
        return 0;
    }
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
