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

    /// Whether content of a page, or an image or form that it may show, can't be read.
    bool isLost(int page);

    /// Whether the file ends within a stream of a page's content, or it can't be decoded to its
    /// end.
    bool isBroken(int page);

private:
    bool losesPictures(const QPDFObjectHandle& resources);
    bool isLostPicture(const QPDFObjectHandle& picture);
    bool breaksOff(QPDFObjectHandle stream);
    bool canBeDecoded(QPDFObjectHandle part);
    bool isLost(QPDFObjectHandle part);

    Document& document_;
    bool streamsEmptied_ = false;
    std::unordered_map<int, bool> lostPictures_; // by number
};

} // namespace karvel::content
