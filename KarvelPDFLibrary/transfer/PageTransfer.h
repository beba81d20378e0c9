#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/transfer/Destinations.h"
#include "KarvelPDFLibrary/transfer/Fields.h"
#include "KarvelPDFLibrary/transfer/Layers.h"
#include "KarvelPDFLibrary/transfer/ObjectCopier.h"
#include "KarvelPDFLibrary/transfer/OutlineEntries.h"

#include <unordered_map>
#include <vector>

namespace karvel::transfer {

/// One transfer of pages, each at most once, with what belongs to them. copy() reads and adds
/// objects that nothing refers to yet; join() then changes the target.
class PageTransfer {
public:
    PageTransfer(Document& from, Document& to, ObjectCopier& copier);
    PageTransfer(const PageTransfer&) = delete;
    PageTransfer& operator=(const PageTransfer&) = delete;

    /// References to a page of the source become references to an object of the target.
    void standFor(int sourcePage, const QPDFObjectHandle& page);

    /// A page of the source to be copied, and its copy.
    QPDFObjectHandle add(int sourcePage);

    /// A page of the source whose copy is to stand in a page of the target, and its content, which
    /// is not put there yet.
    QPDFObjectHandle addContentOf(int sourcePage, const QPDFObjectHandle& page);

    void copy(bool whole, bool withOutline);
    void join();

private:
    struct Page {
        int number; // in the source
        QPDFObjectHandle content;
    };
    struct Annotation {
        QPDFObjectHandle source;
        QPDFObjectHandle copy;
        QPDFObjectHandle page; // of the copy
    };

    QPDFObjectHandle referenceTo(int number) const;
    void planAnnotations(Page& page);
    void fillPage(Page& page);
    void fillAnnotation(Annotation& annotation);

    Document& from_;
    Document& to_;
    ObjectCopier& copier_;
    std::vector<Page> pages_;
    std::vector<Annotation> annotations_;
    std::unordered_map<int, QPDFObjectHandle> copies_; // of pages, by the source's object numbers
    Fields fields_;
    Destinations destinations_;
    Layers layers_;
    OutlineEntries outline_;
};

} // namespace karvel::transfer
