#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

#include <set>
#include <string_view>

namespace karvel::deletion {

/// Calls `found` for every name in a content stream's data, with its slash and with "#" escapes
/// resolved. What stands in strings or inline images and looks like a name counts as one: the
/// question is what may be used.
void forEachName(std::string_view data, const std::function<void(const std::string&)>& found);

/// Reads which resources content names, within bounds.
class ContentNames {
public:
    /// Adds all names in the content of a page, a stream or an array of streams, and in the forms,
    /// patterns, soft masks and drawn glyphs among the resources so named that have no resources of
    /// their own, or have those that `sharesResources` says; and the names by which resources so
    /// named call colour spaces. False when something cannot be read, or too much was read
    /// before.
    bool collect(const QPDFObjectHandle& content, QPDFObjectHandle resources,
                 const std::function<bool(QPDFObjectHandle)>& sharesResources,
                 std::set<std::string>& names);

private:
    bool read(QPDFObjectHandle stream, std::string& data);

    std::size_t readSoFar_ = 0;
};

} // namespace karvel::deletion
