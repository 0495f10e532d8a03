#pragma once
#include <exception>
#include <type_traits>

/// Prints a warning about an exception that a plug-in has thrown.
void warnOfException(const char *operation, const char *what);

/// Makes a call into a plug-in. Catches exceptions, which a plug-in must not throw: prints a warning with @p operation,
/// "Class::method", and returns false.
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
