#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <unordered_map>

namespace karvel::content {

/// Which pages lost content to damage of the file. libqpdf replaces what it cannot read by null or
/// by an empty stream, which would make a blank page. Holds for what was read of the document by
/// now; where there are no warnings, nothing is lost.
class LostContent {
public:
    explicit LostContent(Document& document);

    /// Whether content of a page, or an image, font or another resource of it, can't be read.
    bool isLost(int page);

    /// Whether the file ends within a stream of a page's content, or it can't be decoded to its
    /// end.
    bool isBroken(int page);

private:
    bool losesResources(const QPDFObjectHandle& resources);
    bool isLostResource(QPDFObjectHandle resource);
    bool isInTable(const QPDFObjectHandle& object);
    bool breaksOff(QPDFObjectHandle stream);
    bool canBeDecoded(QPDFObjectHandle part);
    bool isLost(QPDFObjectHandle part);

    Document& document_;
    bool streamsEmptied_ = false;
    std::unordered_map<int, bool> lostResources_; // by number
};

/// Whether pages of a document that has an index may have lost content, as far as can be told
/// without reading them whole. False says that none has.
bool mayHaveLostContent(Document& document);

} // namespace karvel::content
