#pragma once

#include <cstdlib>
#include <unistd.h>

namespace support {

/// While it lives, a program of the administrator's, whom permissions don't hold back, works as
/// somebody who has none.
class AsNobody {
public:
    AsNobody() : worked(::geteuid() != 0 || ::seteuid(65534) == 0) {}
    ~AsNobody()
    {
        if (::getuid() == 0 && ::seteuid(0) != 0) {
            std::abort();
        }
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

    explicit operator bool() const { return worked; }

private:
    const bool worked;
};

} // namespace support
