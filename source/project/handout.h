#pragma once
#include "unknown.h"
#include "varnelassert.h"
#include <QList>

/// A new wrapper of @p object as interface @p Interface, with one reference for the caller.
template <typename Interface, typename Impl, typename Object>
[[nodiscard]] Interface *handOut(Object *object)
{
    QUnknownInterface *out = nullptr;
    const QRESULT res = (new Impl(object))->queryInterface(Interface::Iid, &out);
    VARNEL_ASSERT(res == QS_OK);
    return static_cast<Interface *>(out);
}

/// The same for each of @p objects.
template <typename Interface, typename Impl, typename Object>
[[nodiscard]] QList<Interface *> handOutAll(const QList<Object *> &objects)
{
    QList<Interface *> result;
    result.reserve(objects.size());
    for (Object *object : objects)
        result += handOut<Interface, Impl>(object);
    return result;
}
