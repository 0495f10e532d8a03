#pragma once
#include "unknown.h"
#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <QByteArray>
#include <QString>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
class QObject;

// Calls into plug-ins. A plug-in may throw although it must not, may call back while it is called, and may do both at
// any time. So the host calls it through the functions of this file only, and a test fails if a source file
// dereferences an interface of a plug-in itself.

/// An exception that a plug-in has thrown.
struct PluginFailure
{
    QString plugin;    ///< the plug-in's name; empty if it is not known
    QString operation; ///< "Class::function"
    QString text;
    const void *object = nullptr; ///< the called one as the class of the operation; null if it is not known
};

/// Sets the function that shows failures to the user, besides the warning that each causes. An empty one removes it.
/// It is called at once for the failures that were reported while there was none.
void setPluginFailureHandler(std::function<void(const PluginFailure &)> handler);
/// Sets the function that returns the name of the plug-in in the library of a path.
void setPluginNames(std::function<QString(const QString &library)> names);
/// The name of the plug-in that has created @p object, an object with virtual functions; empty if it is not known.
[[nodiscard]] QString pluginOf(const void *object);

/// Reports an exception that has left a plug-in: prints a warning with @p operation, "Class::function", and calls the
/// failure handler. @p object, which may be null, is the called object.
void warnOfException(const char *operation, const char *what, const void *object = nullptr);

/// Whether a call runs that has not started an event loop of its own. In such a loop reports are delivered at once,
/// because the call may wait for their effects and the user may give commands.
[[nodiscard]] bool isInsidePluginCall();
/// The same, but also in such an event loop: what the caller uses must exist until the call returns.
[[nodiscard]] bool isPluginCallRunning();
/// The time after which something is tried again that could not be done during a call.
inline constexpr std::chrono::milliseconds AfterCallDelay{20};

/// What a report is about, and what it says: the program status of an environment, and "paused". Reports are equal if
/// both are.
struct ReportKey
{
    ReportKey(const char *about) : subject(about) {}
    ReportKey(QByteArray about, QByteArray says = {}, QByteArray distinction = {})
        : subject(std::move(about)), value(std::move(says)), detail(std::move(distinction))
    {}

    QByteArray subject; ///< of which a later report replaces the earlier ones
    QByteArray value;
    QByteArray detail; ///< distinguishes reports that wait, although they are equal
};

/// Delivers a report of a plug-in by calling @p deliver: at once, or, if the report comes from inside a call, when the
/// call has returned. A report from inside a function with a result, which only asks for something, replaces an equal
/// one that waits. It is dropped if it is caused by the delivery of an equal one: otherwise the report of a change
/// would start the same call again and again. Then other reports of such functions on its subject that still wait are
/// dropped too, since it is the last one. A report is also dropped if @p receiver was deleted meanwhile. A report from
/// another thread is delivered in that of @p receiver, in place of equal ones that still wait there.
void afterPluginCall(QObject *receiver, const ReportKey &key, std::function<void()> deliver);
/// Delivers the reports that wait for the end of a call. To be called in a loop that waits for a report.
void deliverPluginReports();

namespace detail {
/// Exists while a function of a plug-in runs.
class PluginCall
{
public:
    explicit PluginCall(bool asks);
    ~PluginCall();
    Q_DISABLE_COPY_MOVE(PluginCall)

private:
    const int m_outerLoopLevel;
    const bool m_outerAsks;
};
void pluginCallEnded(); ///< Delivers the reports that were received meanwhile, if no other call runs.

template <typename Call>
bool callGuarded(const char *operation, const Call &call, const void *object, bool asks)
{
    const PluginCall running(asks);
    try {
        call();
        return true;
    } catch (const std::exception &exception) {
        warnOfException(operation, exception.what(), object);
    } catch (...) {
        warnOfException(operation, "unknown exception", object);
    }
    return false;
}
} // namespace detail

/// Makes a call into a plug-in. If it throws, reports that with @p operation and returns false. @p asks is true for a
/// function with a result.
template <typename Call>
bool runPlugin(const char *operation, const Call &call, const void *object = nullptr, bool asks = false)
{
    const bool returned = detail::callGuarded(operation, call, object, asks);
    detail::pluginCallEnded();
    return returned;
}

/// The same for a call with a result, which is the neutral value of its type after an exception.
template <typename Call>
[[nodiscard]] auto askPlugin(const char *operation, const Call &call, const void *object = nullptr)
{
    std::invoke_result_t<Call> result{};
    runPlugin(
        operation, [&] { result = call(); }, object, true);
    return result;
}

namespace detail {
template <typename Argument>
inline constexpr bool isWritten =
    std::is_lvalue_reference_v<Argument> && !std::is_const_v<std::remove_reference_t<Argument>>;

template <typename Function>
struct ClassOf;
template <typename Result, typename Class, typename... Arguments>
struct ClassOf<Result (Class::*)(Arguments...)>
{
    using Type = Class;
    using Value = Result;
    /// The function returns something, or writes to its arguments.
    static constexpr bool HasResult = !std::is_void_v<Result> || (isWritten<Arguments> || ...);
};
template <typename Result, typename Class, typename... Arguments>
struct ClassOf<Result (Class::*)(Arguments...) const> : ClassOf<Result (Class::*)(Arguments...)>
{
};

/// "Class::function", from the compiler's text for this function: it ends in "&Class::function" and brackets.
template <auto Function>
const char *operationName()
{
    static const std::string name = [](std::string_view text) {
        text.remove_prefix(text.rfind('&') + 1);
        return std::string(text.substr(0, text.find_first_of(";])")));
    }(__PRETTY_FUNCTION__);
    return name.c_str();
}
} // namespace detail

/// Calls Function of @p object, an interface or a smart pointer to one, which may be null. Returns whether there is an
/// object and the call has returned without an exception.
template <auto Function, typename Object, typename... Arguments>
bool runPlugin(const Object &object, Arguments &&...arguments)
{
    typename detail::ClassOf<decltype(Function)>::Type *called = std::to_address(object);
    return called
           && runPlugin(
               detail::operationName<Function>(),
               [&] { (void)(called->*Function)(std::forward<Arguments>(arguments)...); }, called,
               detail::ClassOf<decltype(Function)>::HasResult);
}

/// The same for a function with a result: nothing if there is no object, or if it has thrown an exception.
template <auto Function, typename Object, typename... Arguments>
[[nodiscard]] auto tryPlugin(const Object &object, Arguments &&...arguments)
{
    typename detail::ClassOf<decltype(Function)>::Type *called = std::to_address(object);
    std::optional<typename detail::ClassOf<decltype(Function)>::Value> result;
    if (called)
        runPlugin(
            detail::operationName<Function>(),
            [&] { result = (called->*Function)(std::forward<Arguments>(arguments)...); }, called, true);
    return result;
}

/// The same, with the result in @p value, which is not changed if there is none. Returns whether there is a result.
template <auto Function, typename Value, typename Object, typename... Arguments>
bool readPlugin(Value &value, const Object &object, Arguments &&...arguments)
{
    auto result = tryPlugin<Function>(object, std::forward<Arguments>(arguments)...);
    const bool known = result.has_value();
    if (known)
        value = *std::move(result);
    return known;
}

/// The same, with the neutral value of the type if there is no result.
template <auto Function, typename Object, typename... Arguments>
[[nodiscard]] auto askPlugin(const Object &object, Arguments &&...arguments)
{
    using Value = typename detail::ClassOf<decltype(Function)>::Value;
    return tryPlugin<Function>(object, std::forward<Arguments>(arguments)...).value_or(Value{});
}

/// The interface T of @p object, an interface or a smart pointer to one, which may be null. Null if the object does not
/// offer it, or if it throws.
template <typename T, typename Object>
[[nodiscard]] InterfacePtr<T> queryPlugin(const Object &object)
{
    QUnknownInterface *called = nullptr;
    if constexpr (!std::is_null_pointer_v<Object>)
        called = std::to_address(object);
    QUnknownInterface *found = nullptr;
    QRESULT result = QE_NOINTERFACE;
    if (called)
        runPlugin(
            "QUnknownInterface::queryInterface", [&] { result = called->queryInterface(T::Iid, &found); }, called,
            true);
    return InterfacePtr<T>(result == QS_OK ? static_cast<T *>(found) : nullptr);
}
