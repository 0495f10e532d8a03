#include "eventtext.h"
#include "commandwords.h"
#include "qt3numbers.h"
#include <QKeyEvent>
#include <QMouseEvent>

using namespace Qt::StringLiterals;

namespace {
constexpr int LargestType = QEvent::MaxUser;

// Reading --------------------------------------------------------------------

/// The next @p count numbers; fewer if one of the words is not a number.
QList<int> readNumbers(CommandWords &words, int count)
{
    QList<int> numbers;
    while (numbers.size() < count) {
        const std::optional<int> number = words.number();
        if (!number)
            break;
        numbers.append(*number);
    }
    return numbers;
}

std::unique_ptr<QEvent> readMouseEvent(QEvent::Type type, CommandWords &words)
{
    const QList<int> n = readNumbers(words, 6);
    if (n.size() < 6)
        return nullptr;
    const auto button = Qt::MouseButton(n[4] & Qt::AllButtons);
    Qt::MouseButtons buttons = Qt3Numbers::toButtons(n[5]); // the buttons before the event
    if (type == QEvent::MouseButtonRelease)
        buttons &= ~Qt::MouseButtons(button);
    else
        buttons |= button;
    return std::make_unique<QMouseEvent>(type, QPointF(n[0], n[1]), QPointF(n[2], n[3]), button, buttons,
                                         Qt3Numbers::toModifiers(n[5]));
}

std::unique_ptr<QEvent> readKeyEvent(QEvent::Type type, CommandWords &words)
{
    const QList<int> n = readNumbers(words, 6); // the second, a code of the text, adds nothing to the text
    if (n.size() < 6)
        return nullptr;
    const QString text = n[5] == 1 ? words.rest() : QString();
    return std::make_unique<QKeyEvent>(type, Qt3Numbers::toKey(n[0]), Qt3Numbers::toModifiers(n[2]), text, n[3] == 1,
                                       quint16(n[4]));
}

std::unique_ptr<QEvent> readFocusEvent(QEvent::Type type, CommandWords &words)
{
    const std::optional<int> reason = words.number();
    return reason ? std::make_unique<QFocusEvent>(type, Qt3Numbers::toFocusReason(*reason)) : nullptr;
}

/// Receivers of these types cast the event to a class with more fields.
bool needsFields(int type)
{
    constexpr int Find = 1000; // of the search
    constexpr int Found = 1001;
    constexpr int Command = 52343; // of the server
    switch (type) {
    case QEvent::Timer:
    case QEvent::Paint:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Wheel:
    case QEvent::MetaCall:
    case QEvent::ShortcutOverride:
    case QEvent::DeferredDelete:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::DragResponse:
    case QEvent::ChildAdded:
    case QEvent::ChildPolished:
    case QEvent::ChildRemoved:
    case QEvent::UpdateLater:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TabletMove:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::IconDrag:
    case QEvent::WindowStateChange:
    case QEvent::ToolTip:
    case QEvent::WhatsThis:
    case QEvent::StatusTip:
    case QEvent::ActionChanged:
    case QEvent::ActionAdded:
    case QEvent::ActionRemoved:
    case QEvent::FileOpen:
    case QEvent::Shortcut:
    case QEvent::WhatsThisClicked:
    case QEvent::ToolBarChange:
    case QEvent::QueryWhatsThis:
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::HoverMove:
    case QEvent::GraphicsSceneMouseMove:
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseRelease:
    case QEvent::GraphicsSceneMouseDoubleClick:
    case QEvent::GraphicsSceneContextMenu:
    case QEvent::GraphicsSceneHoverEnter:
    case QEvent::GraphicsSceneHoverMove:
    case QEvent::GraphicsSceneHoverLeave:
    case QEvent::GraphicsSceneHelp:
    case QEvent::GraphicsSceneDragEnter:
    case QEvent::GraphicsSceneDragMove:
    case QEvent::GraphicsSceneDragLeave:
    case QEvent::GraphicsSceneDrop:
    case QEvent::GraphicsSceneWheel:
    case QEvent::GraphicsSceneLeave:
    case QEvent::GraphicsSceneResize:
    case QEvent::GraphicsSceneMove:
    case QEvent::DynamicPropertyChange:
    case QEvent::TabletEnterProximity:
    case QEvent::TabletLeaveProximity:
    case QEvent::NonClientAreaMouseMove:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonRelease:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::FutureCallOut:
    case QEvent::StateMachineSignal:
    case QEvent::StateMachineWrapped:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::NativeGesture:
    case QEvent::Gesture:
    case QEvent::GestureOverride:
    case QEvent::ScrollPrepare:
    case QEvent::Scroll:
    case QEvent::Expose:
    case QEvent::InputMethodQuery:
    case QEvent::OrientationChange:
    case QEvent::ApplicationStateChange:
    case QEvent::PlatformSurface:
    case QEvent::Pointer:
    case Find:
    case Found:
    case Command:
        return true;
    default:
        return false;
    }
}

std::unique_ptr<QEvent> eventOfType(QEvent::Type type)
{
    switch (type) {
    case QEvent::Enter:
        return std::make_unique<QEnterEvent>(QPointF(), QPointF(), QPointF());
    case QEvent::FocusAboutToChange:
        return std::make_unique<QFocusEvent>(type);
    case QEvent::Show:
        return std::make_unique<QShowEvent>();
    case QEvent::Hide:
        return std::make_unique<QHideEvent>();
    case QEvent::Close:
        return std::make_unique<QCloseEvent>();
    case QEvent::DragLeave:
        return std::make_unique<QDragLeaveEvent>();
    default:
        break;
    }
    if (!needsFields(type))
        return std::make_unique<QEvent>(type);
    qWarning("QtRunnerSocket: An event of type %d needs more than its type, so nothing is sent.", int(type));
    return std::make_unique<QEvent>(QEvent::None);
}

// Writing --------------------------------------------------------------------

QString mouseFields(const QMouseEvent *event)
{
    Qt::MouseButtons before = event->buttons();
    before.setFlag(event->button(), event->type() == QEvent::MouseButtonRelease);
    const QPoint position = event->position().toPoint();
    const QPoint global = event->globalPosition().toPoint();
    return u"%1 %2 %3 %4 %5 %6"_s.arg(position.x())
        .arg(position.y())
        .arg(global.x())
        .arg(global.y())
        .arg(int(event->button()))
        .arg(Qt3Numbers::fromState(before, event->modifiers()));
}

QString keyFields(const QKeyEvent *event)
{
    const QString text = event->text();
    const int code = text.isEmpty() ? 0 : uchar(text[0].toLatin1());
    // The modifiers before the event. In the key event of a modifier key itself they are the ones after it.
    const int state = Qt3Numbers::fromState(Qt::NoButton, event->QInputEvent::modifiers());
    const QString fields = u"%1 %2 %3 %4 %5 "_s.arg(Qt3Numbers::fromKey(event->key()))
                               .arg(code)
                               .arg(state)
                               .arg(event->isAutoRepeat() ? 1 : 0)
                               .arg(event->count());
    return fields + (text.isEmpty() ? u"0"_s : u"1 "_s + text);
}

QString fieldsOf(const QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return mouseFields(static_cast<const QMouseEvent *>(event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return keyFields(static_cast<const QKeyEvent *>(event));
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        return QString::number(Qt3Numbers::fromFocusReason(static_cast<const QFocusEvent *>(event)->reason()));
    default:
        return {};
    }
}
} // namespace

std::unique_ptr<QEvent> readEvent(CommandWords &words)
{
    const std::optional<int> number = words.number();
    if (!number || *number < 0 || *number > LargestType)
        return nullptr;
    const auto type = QEvent::Type(*number);
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return readMouseEvent(type, words);
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return readKeyEvent(type, words);
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        return readFocusEvent(type, words);
    default:
        return eventOfType(type);
    }
}

bool isRecorded(QEvent::Type type)
{
    return type >= QEvent::MouseButtonPress && type <= QEvent::Leave;
}

QString recordedCommand(const QObject *object, const QEvent *event)
{
    return u"EVENT "_s + objectPath(object) + u' ' + QString::number(event->type()) + u' ' + fieldsOf(event);
}

QString objectPath(const QObject *object)
{
    if (!object)
        return {};
    QString path = Qt3Numbers::nameOf(object);
    for (const QObject *parent = object->parent(); parent; parent = parent->parent()) {
        const QString name = Qt3Numbers::nameOf(parent);
        if (name == "unnamed"_L1)
            break;
        path.prepend(name + u'.');
    }
    return path;
}
