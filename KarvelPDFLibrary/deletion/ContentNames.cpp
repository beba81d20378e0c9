#include "KarvelPDFLibrary/deletion/ContentNames.h"

#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

/// What a stream and what all streams of a removal may come to when they are decoded.
constexpr std::size_t mostOfOneStream = 128U * 1024 * 1024;
constexpr std::size_t mostOfAll = 1024U * 1024 * 1024;

} // namespace

void forEachName(std::string_view data, const std::function<void(const std::string&)>& found)
{
    for (std::size_t at = 0; (at = data.find('/', at)) != std::string_view::npos;) {
        const std::size_t start = ++at;
        while (at < data.size() && !index::isWhiteSpace(data[at]) &&
               !index::isDelimiter(data[at])) {
            ++at;
        }
        found("/" + index::decodedName(data.substr(start, at - start)));
    }
}

bool ContentNames::read(QPDFObjectHandle stream, std::string& data)
{
    if (!stream.isStream()) {
        return stream.isNull();
    }
    try {
        data = index::boundedData(stream, std::min(mostOfOneStream, mostOfAll - readSoFar_));
    } catch (const std::exception&) {
        return false;
    }
    readSoFar_ += data.size();
    return true;
}

bool ContentNames::collect(const QPDFObjectHandle& content, QPDFObjectHandle resources,
                           const std::function<bool(QPDFObjectHandle)>& sharesResources,
                           std::set<std::string>& names)
{
    std::vector<QPDFObjectHandle> open = {content};
    if (QPDFObjectHandle(content).isArray()) {
        open = QPDFObjectHandle(content).getArrayAsVector();
    }
    std::unordered_set<int> seen;
    const auto follow = [&](const std::string& name) {
        for (const char* category : {"/XObject", "/Pattern"}) {
            QPDFObjectHandle entries = resources.getKey(category);
            QPDFObjectHandle entry =
                entries.isDictionary() ? entries.getKey(name) : QPDFObjectHandle::newNull();
            if (!entry.isStream() || !seen.insert(entry.getObjectID()).second) {
                continue;
            }
            QPDFObjectHandle subtype = entry.getDict().getKey("/Subtype");
            const bool image = subtype.isName() && subtype.getName() == "/Image";
            QPDFObjectHandle own = entry.getDict().getKey("/Resources");
            if (!image && (!own.isDictionary() || sharesResources(own))) {
                open.push_back(entry);
            }
        }
    };
    while (!open.empty()) {
        QPDFObjectHandle stream = open.back();
        open.pop_back();
        std::string data;
        if (!read(stream, data)) {
            return false;
        }
        forEachName(data, [&](const std::string& name) {
            if (names.insert(name).second && resources.isDictionary()) {
                follow(name);
            }
        });
    }
    return true;
}

} // namespace karvel::deletion
