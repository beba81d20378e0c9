#include "KarvelPDFLibrary/transfer/PageTransfer.h"

namespace karvel::transfer {

namespace {

/// Article beads and the place in the structure tree belong to parts that do not come along; the
/// place in the page tree and the annotations are given anew.
const std::vector<std::string> notOfPages = {"/Parent", "/B", "/StructParents", "/Annots"};

bool isWidget(QPDFObjectHandle& annotation)
{
    return annotation.getKey("/Subtype").isNameAndEquals("/Widget");
}

bool isLink(QPDFObjectHandle& annotation)
{
    return annotation.getKey("/Subtype").isNameAndEquals("/Link");
}

} // namespace

PageTransfer::PageTransfer(Document& from, Document& to, ObjectCopier& copier)
    : from_(from), to_(to), copier_(copier), fields_(from, to, copier),
      destinations_(from, to, copier,
                    [this](int object) {
                        const auto found = copies_.find(object);
                        return found == copies_.end() ? QPDFObjectHandle() : found->second;
                    }),
      layers_(from, to, copier), outline_(from, to, copier, destinations_)
{
    if (&from != &to) {
        copier.onDictionary = [this](const QPDFObjectHandle& source, const QPDFObjectHandle& copy) {
            destinations_.translate(source, copy);
        };
    }
}

void PageTransfer::standFor(int sourcePage, const QPDFObjectHandle& page)
{
    QPDFObjectHandle source = from_.page(sourcePage);
    copier_.map(source, page);
    copies_[source.getObjectID()] = page;
}

QPDFObjectHandle PageTransfer::add(int sourcePage)
{
    QPDFObjectHandle page = to_.changes().add(QPDFObjectHandle::newDictionary());
    standFor(sourcePage, page);
    pages_.push_back({sourcePage, page});
    return page;
}

QPDFObjectHandle PageTransfer::addContentOf(int sourcePage, const QPDFObjectHandle& page)
{
    standFor(sourcePage, page);
    pages_.push_back({sourcePage, QPDFObjectHandle::newDictionary()});
    return pages_.back().content;
}

QPDFObjectHandle PageTransfer::referenceTo(int number) const
{
    return copies_.at(from_.order().at(number).object);
}

void PageTransfer::planAnnotations(Page& page)
{
    QPDFObjectHandle annotations = from_.page(page.number).getKey("/Annots");
    if (!annotations.isArray()) {
        return;
    }
    std::vector<QPDFObjectHandle> copies;
    for (QPDFObjectHandle source : annotations.getArrayAsVector()) {
        if (!source.isDictionary()) {
            continue;
        }
        if (isLink(source) && &from_ != &to_ && destinations_.leadsToPageLeftBehind(source)) {
            if (source.isIndirect()) {
                copier_.map(source, QPDFObjectHandle::newNull());
            }
            continue;
        }
        const QPDFObjectHandle copy = to_.changes().add(QPDFObjectHandle::newDictionary());
        if (source.isIndirect()) {
            copier_.map(source, copy);
            if (isWidget(source)) {
                fields_.addWidget(source, copy);
            }
        }
        annotations_.push_back({source, copy, referenceTo(page.number)});
        copies.push_back(copy);
    }
    if (!copies.empty()) {
        page.content.replaceKey("/Annots", QPDFObjectHandle::newArray(copies));
    }
}

void PageTransfer::fillPage(Page& page)
{
    copier_.copyEntries(from_.page(page.number), page.content, notOfPages);
    for (const char* key : inheritableKeys) {
        if (!page.content.hasKey(key)) {
            page.content.replaceKey(key, copier_.copy(from_.inheritedAttribute(page.number, key)));
        }
    }
}

void PageTransfer::fillAnnotation(Annotation& annotation)
{
    std::vector<std::string> leftOut = {"/P"};
    if (isWidget(annotation.source)) {
        leftOut.insert(leftOut.end(), Fields::ownEntries().begin(), Fields::ownEntries().end());
    }
    copier_.copyEntries(annotation.source, annotation.copy, leftOut);
    annotation.copy.replaceKey("/P", annotation.page);
}

void PageTransfer::copy(bool whole, bool withOutline)
{
    // Everything that may be referred to gets its copy before anything is filled in.
    for (Page& page : pages_) {
        planAnnotations(page);
    }
    fields_.plan(whole);
    for (Page& page : pages_) {
        fillPage(page);
    }
    for (Annotation& annotation : annotations_) {
        fillAnnotation(annotation);
    }
    fields_.fill();
    if (withOutline) {
        outline_.copyAll(whole);
    }
    copier_.finish();
    if (&from_ != &to_) {
        destinations_.copyNamed(whole);
        layers_.copyAll(whole);
        copier_.finish();
    }
}

void PageTransfer::join()
{
    fields_.join();
    if (&from_ != &to_) {
        destinations_.join();
        layers_.join();
        outline_.join();
    }
    copier_.finish(); // what the form's resources refer to
}

} // namespace karvel::transfer
