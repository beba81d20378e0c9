#include "KarvelPDFLibrary/content/ContentStreams.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <unordered_map>

namespace karvel::content {

namespace {

/// Reads a stream's bytes as they are stored from another stream.
class OtherStreamsData final : public QPDFObjectHandle::StreamDataProvider {
public:
    explicit OtherStreamsData(QPDFObjectHandle other) : other_(std::move(other)) {}

    void provideStreamData(QPDFObjGen const&, Pipeline* pipeline) override
    {
        if (!other_.pipeStreamData(pipeline, nullptr, 0, qpdf_dl_none)) {
            throw std::runtime_error("content that several pages share cannot be read");
        }
    }

private:
    QPDFObjectHandle other_;
};

QPDFObjectHandle sameStream(Document& document, QPDFObjectHandle original)
{
    QPDFObjectHandle copy = document.changes().add(document.file().newStream());
    copy.replaceDict(original.getDict().shallowCopy());
    QPDFObjectHandle dictionary = original.getDict();
    copy.replaceStreamData(std::make_shared<OtherStreamsData>(original),
                           dictionary.getKey("/Filter"), dictionary.getKey("/DecodeParms"));
    return copy;
}

bool sameData(QPDFObjectHandle& one, QPDFObjectHandle& other)
{
    if (one.getDict().getKey("/Filter").unparse() != other.getDict().getKey("/Filter").unparse()) {
        return false;
    }
    const std::shared_ptr<Buffer> a = one.getRawStreamData();
    const std::shared_ptr<Buffer> b = other.getRawStreamData();
    return a->getSize() == b->getSize() &&
           std::memcmp(a->getBuffer(), b->getBuffer(), a->getSize()) == 0;
}

/// Puts streams in the place of others in a page's /Contents.
void putStreams(Document& document, int number,
                const std::unordered_map<int, QPDFObjectHandle>& instead)
{
    QPDFObjectHandle page = document.page(number);
    std::vector<QPDFObjectHandle> streams = contentStreams(page);
    bool differs = false;
    for (QPDFObjectHandle& stream : streams) {
        const auto found = instead.find(stream.getObjectID());
        if (found != instead.end()) {
            stream = found->second;
            differs = true;
        }
    }
    if (differs) {
        document.editPage(number).replaceKey(
            "/Contents", streams.size() == 1 && !page.getKey("/Contents").isArray()
                             ? streams.front()
                             : QPDFObjectHandle::newArray(streams));
    }
}

} // namespace

std::vector<QPDFObjectHandle> contentStreams(QPDFObjectHandle page)
{
    QPDFObjectHandle contents = page.getKey("/Contents");
    std::vector<QPDFObjectHandle> streams;
    if (contents.isArray()) {
        streams = contents.getArrayAsVector();
    } else if (contents.isStream()) {
        streams.push_back(contents);
    }
    return streams;
}

void removeSharedStreams(Document& document)
{
    document.ownContentStreams = true;
}

Outcome ownStreams(Document& document, int page)
{
    if (!document.ownContentStreams) {
        return {};
    }
    try {
        std::unordered_map<int, int> others;
        for (int number = 1; number <= document.pageCount(); ++number) {
            if (number != page) {
                for (const QPDFObjectHandle& stream : contentStreams(document.page(number))) {
                    ++others[stream.getObjectID()];
                }
            }
        }
        std::unordered_map<int, QPDFObjectHandle> instead;
        for (QPDFObjectHandle& stream : contentStreams(document.page(page))) {
            const int object = stream.getObjectID();
            if (stream.isStream() && others.count(object) > 0 && instead.count(object) == 0) {
                QPDFObjectHandle own = sameStream(document, stream);
                document.separatedStreams.push_back({own, stream});
                instead.emplace(object, own);
            }
        }
        putStreams(document, page, instead);
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
    return {};
}

Outcome giveUpUnchangedStreams(Document& document)
{
    if (document.separatedStreams.empty()) {
        return {};
    }
    try {
        std::unordered_map<int, QPDFObjectHandle> instead;
        for (auto& [own, original] : document.separatedStreams) {
            if (own.isStream() && original.isStream() && sameData(own, original)) {
                instead.emplace(own.getObjectID(), original);
            }
        }
        for (int number = 1; number <= document.pageCount(); ++number) {
            putStreams(document, number, instead);
        }
        document.separatedStreams.clear();
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
    return {};
}

} // namespace karvel::content
