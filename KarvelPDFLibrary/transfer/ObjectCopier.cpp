#include "KarvelPDFLibrary/transfer/ObjectCopier.h"

#include <algorithm>
#include <stdexcept>

namespace karvel::transfer {

/// Reads the copies' data from the source's streams, as they are stored.
class ObjectCopier::SourceStreams final : public QPDFObjectHandle::StreamDataProvider {
public:
    explicit SourceStreams(std::shared_ptr<Document> source) : source_(std::move(source)) {}

    void add(int copy, const QPDFObjectHandle& stream) { streams_.emplace(copy, stream); }

    void provideStreamData(QPDFObjGen const& copy, Pipeline* pipeline) override
    {
        if (!streams_.at(copy.getObj()).pipeStreamData(pipeline, nullptr, 0, qpdf_dl_none)) {
            throw std::runtime_error(source_->name() + ": a stream cannot be read");
        }
    }

private:
    std::shared_ptr<Document> source_;
    std::unordered_map<int, QPDFObjectHandle> streams_;
};

namespace {

/// Where the numbers of the source's structure tree would mean nothing, or another thing.
bool belongsToTheStructureTree(const std::string& key)
{
    return key == "/StructParent" || key == "/StructParents";
}

/// Parts of the source's structure, which nothing that is copied may drag along.
bool isStructure(QPDFObjectHandle& object)
{
    return object.isDictionaryOfType("/Page") || object.isDictionaryOfType("/Pages") ||
           object.isDictionaryOfType("/Catalog") || object.isDictionaryOfType("/StructElem") ||
           object.isDictionaryOfType("/StructTreeRoot");
}

/// Things that pages share, whose copies say the same wherever they are used.
bool canBeShared(QPDFObjectHandle& object)
{
    return object.isStream() || object.isDictionaryOfType("/Font") ||
           object.isDictionaryOfType("/FontDescriptor") || object.isDictionaryOfType("/OCG") ||
           object.isDictionaryOfType("/OCMD") || object.isDictionaryOfType("/ExtGState");
}

QPDFObjectHandle scalar(QPDFObjectHandle& value)
{
    switch (value.getTypeCode()) {
    case ::ot_boolean:
        return QPDFObjectHandle::newBool(value.getBoolValue());
    case ::ot_integer:
        return QPDFObjectHandle::newInteger(value.getIntValue());
    case ::ot_real:
        return QPDFObjectHandle::newReal(value.getRealValue());
    case ::ot_string:
        return QPDFObjectHandle::newString(value.getStringValue());
    case ::ot_name:
        return QPDFObjectHandle::newName(value.getName());
    default:
        return QPDFObjectHandle::newNull();
    }
}

} // namespace

ObjectCopier::ObjectCopier(std::shared_ptr<Document> source, Document& target, SharedCopies& shared)
    : target_(target), shared_(&shared),
      streams_(std::make_shared<SourceStreams>(std::move(source)))
{
}

ObjectCopier::ObjectCopier(Document& document) : target_(document) {}

void ObjectCopier::map(QPDFObjectHandle source, const QPDFObjectHandle& target)
{
    copies_[source.getObjectID()] = target;
}

QPDFObjectHandle ObjectCopier::copied(QPDFObjectHandle source) const
{
    const auto found = copies_.find(source.getObjectID());
    return found == copies_.end() ? QPDFObjectHandle() : found->second;
}

QPDFObjectHandle ObjectCopier::copy(QPDFObjectHandle value)
{
    if (value.isIndirect()) {
        return reference(value);
    }
    if (value.isArray()) {
        std::vector<QPDFObjectHandle> items = value.getArrayAsVector();
        for (QPDFObjectHandle& item : items) {
            item = copy(item);
        }
        return QPDFObjectHandle::newArray(items);
    }
    if (value.isDictionary()) {
        QPDFObjectHandle dictionary = QPDFObjectHandle::newDictionary();
        copyEntries(value, dictionary);
        return dictionary;
    }
    return scalar(value);
}

void ObjectCopier::copyEntries(QPDFObjectHandle from, QPDFObjectHandle to,
                               const std::vector<std::string>& leftOut)
{
    for (const auto& [key, entry] : from.getDictAsMap()) {
        const bool goes = belongsToTheStructureTree(key) ||
                          std::find(leftOut.begin(), leftOut.end(), key) != leftOut.end();
        if (!goes) {
            to.replaceKey(key, copy(entry)); // null removes the key
        }
    }
    if (onDictionary) {
        onDictionary(from, to);
    }
}

QPDFObjectHandle ObjectCopier::reference(QPDFObjectHandle source)
{
    const int number = source.getObjectID();
    const auto found = copies_.find(number);
    if (found != copies_.end()) {
        return found->second;
    }
    if (shared_ == nullptr) {
        return source;
    }
    if (isStructure(source)) {
        return QPDFObjectHandle::newNull();
    }
    if (source.isScalar()) { // null among them
        return scalar(source);
    }
    const auto shared = shared_->find(number);
    if (shared != shared_->end() && target_.changes().isThere(shared->second)) {
        return copies_[number] = shared->second;
    }
    QPDFObjectHandle empty = source.isStream()  ? target_.file().newStream()
                             : source.isArray() ? QPDFObjectHandle::newArray()
                                                : QPDFObjectHandle::newDictionary();
    QPDFObjectHandle copy = target_.changes().add(empty);
    copies_[number] = copy;
    if (canBeShared(source)) {
        (*shared_)[number] = copy;
    }
    waiting_.emplace_back(source, copy);
    return copy;
}

void ObjectCopier::fill(QPDFObjectHandle source, QPDFObjectHandle copied)
{
    if (source.isStream()) {
        QPDFObjectHandle dictionary = QPDFObjectHandle::newDictionary();
        copyEntries(source.getDict(), dictionary, {"/Length"});
        copied.replaceDict(dictionary);
        streams_->add(copied.getObjectID(), source);
        copied.replaceStreamData(streams_, dictionary.getKey("/Filter"),
                                 dictionary.getKey("/DecodeParms"));
    } else if (source.isArray()) {
        for (const QPDFObjectHandle& item : source.getArrayAsVector()) {
            copied.appendItem(copy(item));
        }
    } else {
        copyEntries(source, copied);
    }
}

void ObjectCopier::finish()
{
    while (!waiting_.empty()) {
        const auto [source, copy] = waiting_.back();
        waiting_.pop_back();
        fill(source, copy);
    }
}

} // namespace karvel::transfer
