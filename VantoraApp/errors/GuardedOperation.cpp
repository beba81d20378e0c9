#include "VantoraApp/errors/GuardedOperation.h"

#include <algorithm>
#include <cstdio>

std::size_t FormatExceptionReport(const GuardedSite& site, char* buffer, std::size_t size)
{
    const int length = std::snprintf(buffer, size,
                                     "==============================\n"
                                     "Exception handled: system\n"
                                     "File: %s\nFunction: %s\nLine: %d\n",
                                     site.file, site.function, site.line);
    if (length < 0 || size == 0)
        return 0;
    return std::min(static_cast<std::size_t>(length), size - 1);
}
