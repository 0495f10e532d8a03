#pragma once
#include <exception>
#include <type_traits>

/// Reports on the warning channel that an exception has left a plug-in.
void warnOfException(const char *operation, const char *what);

/// Makes a call into a plug-in. An exception, which must not leave one, ends here: it is reported on the warning channel
/// with @p operation, "Class::method", and the result is false.
template <typename Call>
bool runPlugin(const char *operation, const Call &call)
{
    try {
        call();
        return true;
    } catch (const std::exception &exception) {
        warnOfException(operation, exception.what());
    } catch (...) {
        warnOfException(operation, "unknown exception");
    }
    return false;
}

/// The same for a call with a result, which is the neutral value of its type after an exception.
template <typename Call>
[[nodiscard]] auto askPlugin(const char *operation, const Call &call)
{
    std::invoke_result_t<Call> result{};
    runPlugin(operation, [&] { result = call(); });
    return result;
}
