#include "KarvelPDFLibrary/document/Version.h"

namespace karvel {

namespace {

/// Major times 100 plus minor; 0 when the text is no version.
int rank(const std::string& version)
{
    const auto dot = version.find('.');
    const bool digits = version.find_first_not_of("0123456789.") == std::string::npos;
    if (!digits || dot == 0 || dot == std::string::npos || version.size() > 5 ||
        dot + 1 == version.size()) {
        return 0;
    }
    return std::atoi(version.c_str()) * 100 + std::atoi(version.c_str() + dot + 1);
}

} // namespace

std::string version(Document& document)
{
    if (!document.forcedVersion.empty()) {
        return document.forcedVersion;
    }
    const std::string header = document.file().getPDFVersion();
    QPDFObjectHandle entry = document.catalogEntry("/Version");
    const std::string own = entry.isName() ? entry.getName().substr(1) : std::string();
    return rank(own) > rank(header) ? own : header;
}

Outcome setVersion(Document& document, int major, int minor)
{
    const bool first = major == 1 && minor >= 3 && minor <= 7;
    const bool second = major == 2 && minor == 0;
    if (!first && !second) {
        return fail(ErrorCode::BadArgument, "the version must be 1.3 to 1.7 or 2.0");
    }
    QPDFObjectHandle catalog = document.catalog();
    if (catalog.hasKey("/Version")) { // it would win over a lower one in the header
        document.changes().edit(catalog).removeKey("/Version");
    }
    document.forcedVersion = std::to_string(major) + "." + std::to_string(minor);
    document.changes().recordSetting();
    return {};
}

} // namespace karvel
