#include "uptodate.h"
#include "buildrun.h"
#include "ninjafile.h"
#include "textoutput.h"
#include <QApplication>
#include <QEventLoop>
#include <QProgressDialog>
using namespace Qt::StringLiterals;

namespace {
constexpr int Grace = 500; // milliseconds between SIGTERM and SIGKILL
constexpr std::chrono::milliseconds DialogDelay(500);

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(GnuBuild)
};

/// A dry run of ninja.
class DryRun
{
public:
    explicit DryRun(const BuildDescription &description) : m_description(description)
    {
        QObject::connect(&m_ninja, &ToolProcess::line, &m_loop, [this](const QString &line) {
            m_hasNothingToDo = m_hasNothingToDo || line == u"ninja: no work to do.";
        });
        QObject::connect(&m_ninja, &ToolProcess::finished, &m_loop, [this](bool success) {
            m_success = success;
            m_ended = true;
            m_loop.quit();
        });
    }

    bool findsNothingToDo(std::chrono::milliseconds limit)
    {
        QTimer::singleShot(limit, &m_ninja, &ToolProcess::stop);
        m_ninja.start(ninjaCommand(m_description, {u"-n"_s}));
        waitBriefly();
        if (!m_ended)
            waitWithDialog();
        return m_success && m_hasNothingToDo;
    }

private:
    /// The user cannot give another command meanwhile, but the window is painted.
    void waitBriefly()
    {
        QTimer::singleShot(DialogDelay, &m_loop, &QEventLoop::quit);
        m_loop.exec(QEventLoop::ExcludeUserInputEvents);
    }

    void waitWithDialog()
    {
        QProgressDialog dialog(Text::tr("Checking whether '%1' is up to date...").arg(m_description.output),
                               Text::tr("Cancel"), 0, 0, QApplication::activeWindow());
        dialog.setObjectName(u"upToDateDialog"_s);
        dialog.setWindowModality(Qt::ApplicationModal);
        QObject::connect(&dialog, &QProgressDialog::canceled, &m_ninja, &ToolProcess::stop);
        dialog.show();
        m_loop.exec(); // also ends with the program
    }

    const BuildDescription m_description; // the project may be closed meanwhile
    QEventLoop m_loop;
    ToolProcess m_ninja{Grace};
    bool m_hasNothingToDo = false;
    bool m_success = false;
    bool m_ended = false;
};
} // namespace

bool isBuilt(const BuildDescription &description, std::chrono::milliseconds limit)
{
    return hasContents(description.absolute(description.ninjaFileName()), ninjaFile(description))
           && DryRun(description).findsNothingToDo(limit);
}
