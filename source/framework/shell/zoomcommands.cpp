#include "zoomcommands.h"
#include "textformats.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <algorithm>
#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QSettings>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {
const auto ZoomKey = u"Editor/Zoom"_s;
constexpr int Notch = 120; ///< of a mouse wheel, in eighths of a degree

int allowedZoom(int percent)
{
    return std::clamp(percent, ZoomCommands::Smallest, ZoomCommands::Largest);
}
} // namespace

ZoomCommands::ZoomCommands(WindowServices &window, QObject *parent) : QObject(parent), m_window(window)
{
    if (auto *menu = m_window.dialogParent()->findChild<QMenu *>(u"viewMenu"_s))
        menu->addSeparator();
    const auto zoomBy = [this](int percent) { setZoom(readZoom(m_window.settings()) + percent); };
    connect(addAction(u"viewZoomIn"_s, tr("Zoom &In"), {QKeySequence(u"Ctrl++"_s), QKeySequence(u"Ctrl+="_s)}),
            &QAction::triggered, this, [zoomBy] { zoomBy(Step); });
    connect(addAction(u"viewZoomOut"_s, tr("Zoom O&ut"), {QKeySequence(u"Ctrl+-"_s)}), &QAction::triggered, this,
            [zoomBy] { zoomBy(-Step); });
    connect(addAction(u"viewZoomReset"_s, tr("Zoom &100 %"), {QKeySequence(u"Ctrl+0"_s)}), &QAction::triggered, this,
            [this] { setZoom(100); });
    QCoreApplication::instance()->installEventFilter(this);
}

QAction *ZoomCommands::addAction(const QString &name, const QString &text, const QList<QKeySequence> &keys)
{
    QWidget *window = m_window.dialogParent();
    auto *action = new QAction(text, window);
    action->setObjectName(name);
    action->setShortcuts(keys);
    window->addAction(action);
    if (auto *menu = window->findChild<QMenu *>(u"viewMenu"_s))
        menu->addAction(action);
    return action;
}

void ZoomCommands::setZoom(int percent)
{
    const int zoom = allowedZoom(percent);
    if (zoom != readZoom(m_window.settings())) {
        m_window.settings().setValue(ZoomKey, zoom);
        Q_EMIT zoomChanged();
    }
    m_window.showMessage(tr("Zoom: %1 %").arg(zoom), 2000);
}

bool ZoomCommands::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return false;
    const auto *wheel = static_cast<QWheelEvent *>(event);
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (wheel->modifiers() != Qt::ControlModifier || !widget || !m_window.viewManager()->isAncestorOf(widget))
        return false;
    m_wheelAngle += wheel->angleDelta().y();
    if (const int notches = m_wheelAngle / Notch; notches != 0) {
        m_wheelAngle -= notches * Notch;
        setZoom(readZoom(m_window.settings()) + notches * Step);
    }
    return true;
}

int readZoom(const QSettings &settings)
{
    bool isNumber = false;
    const int zoom = settings.value(ZoomKey, 100).toInt(&isNumber);
    return isNumber ? allowedZoom(zoom) : 100;
}

TextFormats zoomedFormats(TextFormats formats, int percent)
{
    const QString section = formats.sections().value(0); // what the documents use
    for (const QString &format : formats.formats(section)) {
        if (const int size = formats.fontSize(section, format); size > 0)
            formats.setFontSize(section, format, std::max(1, (size * percent + 50) / 100));
    }
    return formats;
}
