#include "productdetails.h"
#include <patchlevel.h>
#include <QDir>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
QString firstLine(const QByteArray &output)
{
    return QString::fromLocal8Bit(output.left(output.indexOf('\n'))).trimmed().left(120);
}

QString screenText()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return {};
    const QSize size = screen->size();
    return u", %1 x %2, scale %3"_s.arg(size.width()).arg(size.height()).arg(screen->devicePixelRatio());
}

QString versionText(const QString &version, const QString &commit)
{
    return u"Varnel "_s + version + (commit.isEmpty() ? QString() : ProductDetails::tr(" (commit %1)").arg(commit));
}
} // namespace

ProductDetails::ProductDetails(const QString &version, const QDir &root, const QStringList &plugins, QObject *parent)
    : QObject(parent)
{
    m_lines = {versionText(version, productCommit(root)),
               tr("Libraries: Qt %1, Python %2").arg(QLatin1StringView(qVersion()), QLatin1StringView(PY_VERSION)),
               tr("System: %1, %2 %3, %4")
                   .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion(),
                        QSysInfo::currentCpuArchitecture()),
               tr("Display: %1").arg(QGuiApplication::platformName()) + screenText(),
               tr("Plug-ins: %1").arg(plugins.isEmpty() ? tr("none") : plugins.join(u", "_s))};
}

/// A tool that still runs is ended without waiting for it.
ProductDetails::~ProductDetails()
{
    if (!m_process || m_process->state() == QProcess::NotRunning)
        return;
    QProcess *process = m_process.release();
    process->disconnect(this);
    connect(process, &QProcess::finished, process, &QObject::deleteLater);
    process->kill();
}

QString ProductDetails::text() const
{
    QStringList lines = m_lines;
    if (!m_tools.isEmpty())
        lines.append(tr("Tools:"));
    for (const QString &tool : m_tools)
        lines.append(u"  %1: %2"_s.arg(tool, m_found.value(tool, tr("..."))));
    return lines.join(u'\n');
}

void ProductDetails::askTools(const QStringList &tools)
{
    m_tools = m_waiting = tools;
    QTimer::singleShot(0, this, &ProductDetails::askNext);
}

void ProductDetails::askNext()
{
    if (m_waiting.isEmpty())
        return Q_EMIT complete();
    const QString program = QStandardPaths::findExecutable(m_waiting.first());
    if (program.isEmpty())
        return answered(tr("not found"));
    m_process = std::make_unique<QProcess>();
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    connect(m_process.get(), &QProcess::finished, this, [this] {
        const QString version = firstLine(m_process->readAll());
        answered(version.isEmpty() ? tr("does not answer") : version);
    });
    connect(m_process.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            answered(tr("cannot be started"));
    });
    QTimer::singleShot(ToolTime, m_process.get(), &QProcess::kill);
    m_process->start(program, {u"--version"_s});
}

void ProductDetails::answered(const QString &version)
{
    if (m_process)
        m_process.release()->deleteLater(); // this is called by one of its signals
    m_found.insert(m_waiting.takeFirst(), version);
    QTimer::singleShot(0, this, &ProductDetails::askNext);
    Q_EMIT changed();
}

QStringList usedTools()
{
    return {u"ninja"_s,
            u"ccache"_s,
            u"gcc"_s,
            u"arm-none-eabi-gcc"_s,
            u"avr-gcc"_s,
            u"riscv64-unknown-elf-gcc"_s,
            u"gdb"_s,
            u"gdb-multiarch"_s,
            u"qemu-system-arm"_s,
            u"qemu-system-riscv64"_s,
            u"simavr"_s,
            u"openocd"_s};
}

QString productCommit(const QDir &root)
{
    QFile file(root.filePath(u"data/commit"_s));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.read(80)).trimmed() : QString();
}
