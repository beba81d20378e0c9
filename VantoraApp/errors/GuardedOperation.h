#pragma once

#include "VantoraApp/binding/Shared.h"
#include "VantoraApp/errors/ErrorLog.h"

#include <cstddef>
#include <utility>

/// Names a guarded operation in its exception reports. The values are fixed for each operation,
/// so that reports of different builds can be compared.
struct GuardedSite {
    const char* file;
    const char* function;
    int line;
};

/// Writes the report of an exception at the site into the buffer, cut to its size and always
/// terminated (for a size above 0). Returns the number of characters written.
VANTORA_SHARED std::size_t FormatExceptionReport(const GuardedSite& site, char* buffer,
                                                 std::size_t size);

/// The exception boundary: runs the body, and when it throws anything at all, hands the report to
/// the log and gives the result of the failure path instead. Nothing the body throws gets out.
template <typename Body, typename Failure>
auto RunGuarded(const GuardedSite& site, Body&& body, Failure&& failure) -> decltype(body())
{
    try {
        try {
            return std::forward<Body>(body)();
        } catch (...) {
            char report[1024];
            FormatExceptionReport(site, report, sizeof report);
            StoreErrorToLog(report);
            throw 0;
        }
    } catch (int) {
        return std::forward<Failure>(failure)();
    }
}
