#include "signalsink.h"
#include <QMetaMethod>

namespace {

/// Of a signal with default arguments the meta-object lists forms with fewer arguments behind the full one, which alone
/// is emitted.
int emittedForm(const QMetaObject &meta, int id)
{
    while (meta.method(id).attributes() & QMetaMethod::Cloned)
        --id;
    return id;
}

int firstSlot()
{
    return QObject::staticMetaObject.methodCount();
}

} // namespace

SignalSink::SignalSink(QObject *target, ISignalHandler *handler) : m_handler(handler)
{
    const QMetaObject &meta = *target->metaObject();
    for (int id = 0; id < meta.methodCount(); ++id) {
        if (meta.method(id).methodType() == QMetaMethod::Signal) // a signal of another thread is queued for ours
            QMetaObject::connect(target, emittedForm(meta, id), this, firstSlot() + id, Qt::AutoConnection);
    }
}

int SignalSink::qt_metacall(QMetaObject::Call call, int id, void **args)
{
    id = QObject::qt_metacall(call, id, args);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    m_handler->signal(id, args); // which may delete this object
    return -1;
}
