#include "runnercommands.h"
#include "commandwords.h"
#include "eventtext.h"
#include "objectmodel.h"
#include "qt3numbers.h"
#include <algorithm>
#include <QAction>
#include <QApplication>
#include <QMetaMethod>
#include <QMetaProperty>

using namespace Qt::StringLiterals;

namespace {
const QString Ok = u"OK\r\n"_s;
const QString NoSuchProperty = u"ERROR No such property"_s; // without number and line end, as drivers expect it

/// The objects of that name in the visible windows that do not belong to @p mainWidget.
QList<QObject *> inOtherWindows(const QString &name, const QWidget *mainWidget)
{
    QList<QObject *> objects;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window == mainWidget || !window->isVisible())
            continue;
        if (window->objectName() == name)
            objects.append(window);
        objects += window->findChildren<QObject *>(name);
    }
    return objects;
}

// Members --------------------------------------------------------------------

QString listReply(const QByteArrayList &names)
{
    QString reply = u"OK"_s;
    for (const QByteArray &name : names)
        reply += u' ' + QString::fromUtf8(name);
    return reply + u"\r\n"_s;
}

QByteArrayList propertyNames(const QObject *object)
{
    QByteArrayList names;
    for (int i = 0; i < object->metaObject()->propertyCount(); ++i)
        names.append(object->metaObject()->property(i).name());
    return names;
}

QList<QMetaMethod> methods(const QObject *object, QMetaMethod::MethodType type)
{
    QList<QMetaMethod> methods;
    for (int i = 0; i < object->metaObject()->methodCount(); ++i) {
        const QMetaMethod method = object->metaObject()->method(i);
        if (method.methodType() == type)
            methods.append(method);
    }
    return methods;
}

QByteArrayList signatures(const QList<QMetaMethod> &methods)
{
    QByteArrayList signatures;
    for (const QMetaMethod &method : methods)
        signatures.append(method.methodSignature());
    return signatures;
}

/// The index of the method with that signature in @p methods, or -1.
int findMethod(const QList<QMetaMethod> &methods, const QString &signature)
{
    return int(signatures(methods).indexOf(QMetaObject::normalizedSignature(signature.toUtf8().constData())));
}

/// An invalid method is not called, and no method with parameters, because there are no arguments.
void call(QObject *object, const QMetaMethod &method)
{
    method.invoke(object, Qt::DirectConnection);
}

// Values ---------------------------------------------------------------------

/// Drivers get the number of an enumeration value.
QString valueText(const QVariant &value)
{
    return value.metaType().flags() & QMetaType::IsEnumeration ? QString::number(value.toInt()) : value.toString();
}

/// The value of type @p type that @p text represents; the null value of the type if there is none.
QVariant valueOf(const QString &text, QMetaType type)
{
    QVariant value(text);
    if (type.id() == QMetaType::Bool || type.flags() & QMetaType::IsEnumeration)
        value.convert(QMetaType(QMetaType::Int)); // so "true" is false
    value.convert(type);
    return value;
}

// Commands on an object ------------------------------------------------------

QString getClass(QObject *object, CommandWords &)
{
    return u"OK "_s + QLatin1StringView(object->metaObject()->className()) + u"\r\n"_s;
}

QString getProperties(QObject *object, CommandWords &)
{
    return listReply(propertyNames(object));
}

QString getProperty(QObject *object, CommandWords &words)
{
    const QVariant value = object->property(words.word().toUtf8().constData());
    if (!value.isValid())
        return NoSuchProperty;
    return u"OK "_s + QString::number(Qt3Numbers::fromMetaType(value.metaType())) + u' ' + valueText(value) + u"\r\n"_s;
}

QString setProperty(QObject *object, CommandWords &words)
{
    const QByteArray name = words.word().toUtf8();
    const QVariant present = object->property(name.constData());
    if (!present.isValid())
        return NoSuchProperty;
    object->setProperty(name.constData(), valueOf(words.rest(), present.metaType()));
    return Ok;
}

QString getSlots(QObject *object, CommandWords &)
{
    return listReply(signatures(methods(object, QMetaMethod::Slot)));
}

QString getSignals(QObject *object, CommandWords &)
{
    return listReply(signatures(methods(object, QMetaMethod::Signal)));
}

QString callSlot(QObject *object, CommandWords &words)
{
    const QList<QMetaMethod> all = methods(object, QMetaMethod::Slot);
    const int index = findMethod(all, words.name());
    qDebug("SLOT %d\n", index);
    call(object, all.value(index));
    return {};
}

QString emitSignal(QObject *object, CommandWords &words)
{
    const QList<QMetaMethod> all = methods(object, QMetaMethod::Signal);
    const int index = findMethod(all, words.name());
    qDebug("SIGNAL %d\n", index);
    call(object, all.value(index));
    return {};
}

using ObjectCommand = QString (*)(QObject *, CommandWords &);

ObjectCommand objectCommand(const QString &name)
{
    static const QHash<QString, ObjectCommand> commands{
        {u"GETCLASS"_s, getClass},       {u"GETPROPERTIES"_s, getProperties}, {u"GETPROPERTY"_s, getProperty},
        {u"SETPROPERTY"_s, setProperty}, {u"GETSLOTS"_s, getSlots},           {u"GETSIGNALS"_s, getSignals},
        {u"CALLSLOT"_s, callSlot},       {u"EMITSIGNAL"_s, emitSignal}};
    return commands.value(name);
}
} // namespace

RunnerCommands::RunnerCommands(QWidget *mainWidget, ObjectModel *objectModel)
    : m_mainWidget(mainWidget), m_objectModel(objectModel)
{}

QString RunnerCommands::execute(const QString &line)
{
    CommandWords words(line);
    const QString command = words.word();
    if (command == "EVENT"_L1)
        return postEvent(words);
    if (command == "RECORD"_L1)
        return record(words);
    if (command == "DOACTION"_L1)
        return doAction(words);
    const ObjectCommand execute = objectCommand(command);
    if (!execute) {
        if (!command.isEmpty())
            qDebug("QtRunnerSocket: unknown command (%s)", qPrintable(command));
        return {};
    }
    QObject *object = findObject(words.name());
    return object ? execute(object, words) : u"ERROR 4 No such object\r\n"_s;
}

QString RunnerCommands::postEvent(CommandWords &words) const
{
    const QString name = words.word();
    std::unique_ptr<QEvent> event = readEvent(words);
    if (!event)
        return u"ERROR 1 Bad command syntax\r\n"_s;
    QObject *object = findChild(name); // the main widget itself cannot be reached
    if (!object)
        return u"ERROR 2 No such object\r\n"_s;
    QCoreApplication::postEvent(object, event.release());
    return Ok;
}

QString RunnerCommands::record(CommandWords &words)
{
    const QString onOff = words.word();
    if (onOff != "ON"_L1 && onOff != "OFF"_L1)
        return u"ERROR 3 Bad parameter\r\n"_s;
    m_recording = onOff == "ON"_L1;
    return Ok;
}

QString RunnerCommands::doAction(CommandWords &words) const
{
    const QString name = words.word();
    const auto *action = m_mainWidget && !name.isEmpty() ? m_mainWidget->findChild<QAction *>(name) : nullptr;
    if (!action)
        return u"ERROR\r\n"_s;
    if (action->isCheckable())
        qDebug("QtRunnerSocket: DOACTION keeps the check mark, CALLSLOT %s trigger() changes it", qPrintable(name));
    if (m_objectModel)
        m_objectModel->doAction(name);
    return Ok;
}

/// Dialogs have fields of the same names, so a visible widget precedes hidden ones, and one of the window that is used
/// now precedes those of others that are open. The main widget's own objects precede those of dialogs without a parent,
/// which a plug-in may show.
QObject *RunnerCommands::findChild(const QString &name) const
{
    if (!m_mainWidget || name.isEmpty())
        return nullptr;
    QList<QObject *> objects = m_mainWidget->findChildren<QObject *>(name);
    if (objects.isEmpty())
        objects = inOtherWindows(name, m_mainWidget);
    const QWidget *modal = QApplication::activeModalWidget();
    const QWidget *used = modal ? modal : QApplication::activeWindow();
    const auto rank = [used](const QObject *object) {
        const auto *widget = qobject_cast<const QWidget *>(object);
        return widget && widget->isVisible() ? 1 + int(widget->window() == used) : 0;
    };
    return objects.isEmpty() ? nullptr : *std::ranges::max_element(objects, {}, rank);
}

QObject *RunnerCommands::findObject(const QString &name) const
{
    return m_mainWidget && !name.isEmpty() && m_mainWidget->objectName() == name ? m_mainWidget.data()
                                                                                 : findChild(name);
}
