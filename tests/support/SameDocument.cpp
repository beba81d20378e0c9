#include "tests/support/SameDocument.h"

#include <map>
#include <memory>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <set>
#include <vector>

namespace support {

namespace {

struct Pair {
    QPDFObjectHandle one;
    QPDFObjectHandle other;
    std::string path;
};

class Comparison {
public:
    std::string run(QPDF& one, QPDF& other)
    {
        for (const char* key : {"/Root", "/Info"}) {
            pending_.push_back({one.getTrailer().getKey(key), other.getTrailer().getKey(key), key});
        }
        while (!pending_.empty() && difference_.empty()) {
            const Pair pair = pending_.back();
            pending_.pop_back();
            compare(pair);
        }
        return difference_;
    }

private:
    void compare(Pair pair)
    {
        if (pair.one.isIndirect() && pair.other.isIndirect()) {
            const auto [entry, isNew] =
                partners_.emplace(pair.one.getObjGen(), pair.other.getObjGen());
            if (entry->second != pair.other.getObjGen()) {
                differ(pair, "the same object here, different ones there");
            }
            if (!isNew) {
                return;
            }
        }
        if (pair.one.getTypeCode() != pair.other.getTypeCode()) {
            differ(pair, pair.one.unparseResolved() + " and " + pair.other.unparseResolved());
        } else if (pair.one.isStream()) {
            compareStreams(pair);
        } else if (pair.one.isDictionary()) {
            compareDictionaries(pair);
        } else if (pair.one.isArray()) {
            compareArrays(pair);
        } else if (pair.one.isString()
                       ? pair.one.getStringValue() != pair.other.getStringValue()
                       : pair.one.unparseResolved() != pair.other.unparseResolved()) {
            differ(pair, pair.one.unparseResolved() + " and " + pair.other.unparseResolved());
        }
    }

    void compareDictionaries(const Pair& pair, const std::set<std::string>& without = {})
    {
        QPDFObjectHandle one = pair.one;
        QPDFObjectHandle other = pair.other;
        std::set<std::string> keys = one.getKeys();
        keys.merge(other.getKeys());
        for (const std::string& key : keys) {
            if (without.count(key) == 0) {
                pending_.push_back({one.getKey(key), other.getKey(key), pair.path + key});
            }
        }
    }

    void compareArrays(const Pair& pair)
    {
        const std::vector<QPDFObjectHandle> one = QPDFObjectHandle(pair.one).getArrayAsVector();
        const std::vector<QPDFObjectHandle> other = QPDFObjectHandle(pair.other).getArrayAsVector();
        if (one.size() != other.size()) {
            differ(pair,
                   std::to_string(one.size()) + " and " + std::to_string(other.size()) + " items");
            return;
        }
        for (std::size_t i = 0; i < one.size(); ++i) {
            pending_.push_back({one[i], other[i], pair.path + "[" + std::to_string(i) + "]"});
        }
    }

    void compareStreams(Pair pair)
    {
        std::set<std::string> without = {"/Length"};
        if (text(pair.one.getRawStreamData()) != text(pair.other.getRawStreamData())) {
            // libqpdf writes a document's metadata without compression.
            if (!pair.one.getDict().isDictionaryOfType("/Metadata") ||
                text(pair.one.getStreamData()) != text(pair.other.getStreamData())) {
                differ(pair, "different stream data");
            }
            without.insert({"/Filter", "/DecodeParms"});
        }
        compareDictionaries({pair.one.getDict(), pair.other.getDict(), pair.path}, without);
    }

    static std::string text(const std::shared_ptr<Buffer>& data)
    {
        return {reinterpret_cast<const char*>(data->getBuffer()), data->getSize()};
    }

    void differ(const Pair& pair, const std::string& how) { difference_ = pair.path + ": " + how; }

    std::vector<Pair> pending_;
    std::map<QPDFObjGen, QPDFObjGen> partners_;
    std::string difference_;
};

} // namespace

std::string firstDifference(const std::string& onePdf, const std::string& otherPdf,
                            const std::string& password)
{
    QPDF one;
    QPDF other;
    for (const auto& [file, pdf] :
         {std::pair<QPDF*, const std::string*>{&one, &onePdf}, {&other, &otherPdf}}) {
        file->setSuppressWarnings(true);
        file->processMemoryFile("document", pdf->data(), pdf->size(), password.c_str());
    }
    return Comparison().run(one, other);
}

} // namespace support
