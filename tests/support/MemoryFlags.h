#pragma once

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

/// Whether this system has huge pages at all.
inline bool hasHugePages()
{
    return access("/sys/kernel/mm/transparent_hugepage", F_OK) == 0;
}

/// Whether huge pages were asked for where something lies ("VmFlags", proc(5)).
inline bool isForHugePages(const void* place)
{
    const auto address = reinterpret_cast<std::uintptr_t>(place);
    std::ifstream parts("/proc/self/smaps");
    bool isThere = false;
    for (std::string line; std::getline(parts, line);) {
        std::istringstream words(line);
        std::uintptr_t start = 0;
        std::uintptr_t end = 0;
        char dash = 0;
        if (words >> std::hex >> start >> dash >> end && dash == '-') {
            isThere = start <= address && address < end;
        } else if (isThere && line.rfind("VmFlags:", 0) == 0) {
            return (line + " ").find(" hg ") != std::string::npos;
        }
    }
    return false;
}
