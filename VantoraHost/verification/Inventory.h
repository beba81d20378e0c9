#pragma once

#include "VantoraHost/verification/PdfFile.h"

#include <functional>
#include <string>
#include <vector>

namespace vantora::verification {

/// What is told about a file's objects, each of them where it stands.
struct Contents {
    /// A string, as it is once decrypted.
    std::function<void(QPDFObjectHandle string, const std::string& where)> string;
    std::function<void(QPDFObjectHandle stream, const StreamData& data, const std::string& where)>
        stream;
    /// A dictionary that says of itself that it is a page, and is none of the document's.
    std::function<void(QPDFObjectHandle page, const std::string& where)> page;
};

/// Goes over everything in a file: the objects that its cross-reference data list, referred to or
/// not, what is left of others between them and from earlier revisions, and what object streams
/// hold that nothing lists. Returns sentences about what could not be looked into.
std::vector<std::string> takeInventory(PdfFile& file, const Contents& contents);

} // namespace vantora::verification
