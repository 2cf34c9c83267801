// What every header of the library shares: symbol visibility, the precondition checks of the checked build,
// and the version. VEXABASE_VERSION, a string such as "1.2.3", and KY_CHECKED come from the build system.
#pragma once

/// Visible outside the shared library, which hides everything else.
#define KY_API __attribute__((visibility("default")))

#if defined(KY_CHECKED)

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

/// Writes "file:line: operation: message" to standard error, the file seen from the include root, and aborts.
[[noreturn, gnu::cold, gnu::format(printf, 4, 5)]] inline void KyStopOnBrokenPrecondition(
    const char* pszFile, int nLine, const char* pszOperation, const char* pszFormat, ...) {
    constexpr char szRoot[] = "VexaBase/";
    const char* pszShown = pszFile;
    for (const char* p = pszFile; (p = std::strstr(p, szRoot)) != nullptr; ++p) {
        pszShown = p;
    }
    std::fprintf(stderr, "%s:%d: %s: ", pszShown, nLine, pszOperation);
    std::va_list args;
    va_start(args, pszFormat);
    std::vfprintf(stderr, pszFormat, args);
    va_end(args);
    std::fputc('\n', stderr);
    std::abort();
}

/// KY_CHECK(condition, "Class::Operation", "what is wrong (length %ld)", values...) stops a checked build
/// when the condition fails. An ordinary build does not evaluate it.
#define KY_CHECK(condition, ...) \
    ((condition) ? static_cast<void>(0) : KyStopOnBrokenPrecondition(__FILE__, __LINE__, __VA_ARGS__))

#else

#define KY_CHECK(...) static_cast<void>(0)

#endif
