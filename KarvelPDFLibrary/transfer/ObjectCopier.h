#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace karvel::transfer {

/// What was copied from a document before and can be used again: streams, fonts and the like, by
/// the source's object numbers. So pages that come one by one share what they shared.
using SharedCopies = std::unordered_map<int, QPDFObjectHandle>;

/// Copies objects of one document into another with all that they refer to, each once and without
/// recursion over references. Where that ends is said by map(): a reference to a page, or to any
/// other part of the source's structure that is not mapped, becomes null. Data of streams is not
/// copied but read from the source when it is needed; the copies keep the source alive, which must
/// not be changed any more.
///
/// Within one document it copies only values: what they refer to is the same unless it is mapped.
class ObjectCopier {
public:
    ObjectCopier(std::shared_ptr<Document> source, Document& target, SharedCopies& shared);
    explicit ObjectCopier(Document& document);

    /// What references to an object of the source become; null leaves it out.
    void map(QPDFObjectHandle source, const QPDFObjectHandle& target);

    /// A value as it is to stand in the target. What it refers to is copied by finish().
    QPDFObjectHandle copy(QPDFObjectHandle value);

    /// Copies entries of a dictionary, all but those that `leftOut` names, into one of the target.
    void copyEntries(QPDFObjectHandle from, QPDFObjectHandle to,
                     const std::vector<std::string>& leftOut = {});

    /// Copies everything that was referred to.
    void finish();

    /// The copy of an object that was mapped or copied; an uninitialised handle for others.
    QPDFObjectHandle copied(QPDFObjectHandle source) const;

    /// Called with every dictionary that was copied.
    std::function<void(QPDFObjectHandle source, QPDFObjectHandle copy)> onDictionary;

private:
    QPDFObjectHandle reference(QPDFObjectHandle source);
    void fill(QPDFObjectHandle source, QPDFObjectHandle copy);

    class SourceStreams;

    Document& target_;
    SharedCopies* shared_ = nullptr;         // null within one document
    std::shared_ptr<SourceStreams> streams_; // likewise
    std::unordered_map<int, QPDFObjectHandle> copies_;
    std::vector<std::pair<QPDFObjectHandle, QPDFObjectHandle>> waiting_;
};

} // namespace karvel::transfer
