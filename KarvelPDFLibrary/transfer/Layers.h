#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/transfer/ObjectCopier.h"

namespace karvel::transfer {

/// Takes layers along (ISO 32000-2, 8.11.4): those that were copied because something uses them, or
/// all with `whole`, shown, hidden and locked in the target as they are in the source.
class Layers {
public:
    Layers(Document& from, Document& to, ObjectCopier& copier)
        : from_(from), to_(to), copier_(copier)
    {
    }

    /// Copies what belongs to them.
    void copyAll(bool whole);

    /// Adds them to the target's layers.
    void join();

private:
    bool isShown(const QPDFObjectHandle& layer) const;

    Document& from_;
    Document& to_;
    ObjectCopier& copier_;
    std::vector<std::pair<QPDFObjectHandle, QPDFObjectHandle>> layers_; // source and copy
};

} // namespace karvel::transfer
