#pragma once

#include <string>
#include <vector>

namespace karvel::boundary {

/// Texts as one: lists of names cross the interface separated by "\r\n".
inline std::string lines(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : "\r\n") + text;
    }
    return joined;
}

} // namespace karvel::boundary
