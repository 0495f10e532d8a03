#include "scriptnames.h"
#include <QMetaMethod>
#include <QMetaProperty>
using namespace Qt::StringLiterals;

namespace {

struct CachedNames
{
    const char *className;
    int methodCount;
    int propertyCount;
    ScriptNames names;

    /// Whether these are the names of @p meta: the address of a meta-object made at run time may be used again.
    [[nodiscard]] bool areOf(const QMetaObject &meta) const
    {
        return className == meta.className() && methodCount == meta.methodCount()
               && propertyCount == meta.propertyCount();
    }
};

QString methodName(const QMetaMethod &slot)
{
    const QByteArray name = slot.name();
    return name == "exec" ? u"execute"_s : QString::fromUtf8(name); // "exec" is a keyword in older Python
}

QString handlerName(const QMetaMethod &signal)
{
    QString name = QString::fromUtf8(signal.name());
    name[0] = name[0].toUpper();
    return u"on"_s + name;
}

} // namespace

ScriptNames scriptNames(const QMetaObject &meta)
{
    ScriptNames names;
    for (int i = 0; i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == QMetaMethod::Slot && method.access() == QMetaMethod::Public)
            names.methods[methodName(method)] = i;
        else if (method.methodType() == QMetaMethod::Signal)
            names.handlers[handlerName(method)] = i;
    }
    for (int i = 0; i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        if (property.isScriptable())
            names.properties[QString::fromUtf8(property.name())] = i;
    }
    return names;
}

ScriptNames cachedScriptNames(const QMetaObject &meta)
{
    static auto &cache = *new QHash<const QMetaObject *, CachedNames>; // may be used until the end of the process
    const auto found = cache.constFind(&meta);
    if (found != cache.constEnd() && found->areOf(meta))
        return found->names;
    const CachedNames fresh{meta.className(), meta.methodCount(), meta.propertyCount(), scriptNames(meta)};
    cache.insert(&meta, fresh);
    return fresh.names;
}
