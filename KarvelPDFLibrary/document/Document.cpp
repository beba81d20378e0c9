#include "KarvelPDFLibrary/document/Document.h"

#include <algorithm>
#include <cstring>
#include <qpdf/QPDFExc.hh>
#include <unordered_set>

namespace karvel {

namespace {

bool tellsOfReconstruction(const QPDFExc& warning)
{
    return warning.getMessageDetail().find("Attempting to reconstruct") != std::string::npos;
}

} // namespace

Document::Document(std::shared_ptr<io::ByteSource> source)
    : source_(std::move(source)), originalSize_(source_ ? source_->size() : 0), changes_(file_)
{
    if (source_) {
        streams_.emplace(file_, *source_);
    }
}

Result<std::unique_ptr<Document>> Document::create()
{
    std::unique_ptr<Document> document(new Document(nullptr));
    document->file().emptyPDF();
    document->inherited_.emplace_back();
    QPDFObjectHandle page = document->file().makeIndirectObject(QPDFObjectHandle::parse(
        "<< /Type /Page /MediaBox [0 0 595.276 841.89] /Resources << >> >>"));
    document->insertPages(1, {page});
    document->cutAndWriteTree();
    document->markSaved();
    return document;
}

std::string Document::name() const
{
    if (!path_.empty()) {
        return path_;
    }
    return source_ ? source_->name() : "new document";
}

Warnings& Document::warnings()
{
    if (!file_.isOpen()) {
        return warnings_;
    }
    for (const QPDFExc& warning : file().getWarnings()) {
        reconstructed_ = reconstructed_ || tellsOfReconstruction(warning);
        warnings_.push_back(warning.getMessageDetail());
    }
    return warnings_;
}

QPDFObjectHandle Document::pageAttribute(int number, const char* key)
{
    QPDFObjectHandle own = page(number).getKey(key);
    return own.isNull() ? inheritedAttribute(number, key) : own;
}

QPDFObjectHandle Document::inheritedAttribute(int number, const char* key)
{
    return inheritedAttribute(order_.at(number), key);
}

QPDFObjectHandle Document::inheritedFrom(const PageEntry& page, const char* key)
{
    auto position = static_cast<std::int32_t>(page.node);
    while (!nodes_.empty() && position >= 0) {
        const TreeNode& node = nodes_[static_cast<std::size_t>(position)];
        QPDFObjectHandle object = file().getObject(node.object, node.generation);
        if (object.hasKey(key)) {
            return object;
        }
        position = node.parent;
    }
    return QPDFObjectHandle::newNull();
}

QPDFObjectHandle Document::inheritedAttribute(const PageEntry& page, const char* key)
{
    if (!unreadInherited_.empty()) {
        file(); // reads them
    }
    const InheritedSet& set = inherited_[page.inherited];
    for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
        if (std::strcmp(inheritableKeys[i], key) == 0 && set[i].isInitialized()) {
            return set[i];
        }
    }
    return QPDFObjectHandle::newNull();
}

bool Document::inheritsAttribute(int number, const char* key)
{
    return page(number).getKey(key).isNull() && !pageAttribute(number, key).isNull();
}

const PageLabelRanges& Document::pageLabels()
{
    if (!pageLabels_ || pageLabelsRevision_ != revision()) {
        pageLabels_.emplace(catalog());
        pageLabelsRevision_ = revision();
    }
    return *pageLabels_;
}

int Document::pageOfObject(int object) const
{
    for (int number = 1; number <= order_.count(); ++number) {
        if (order_.at(number).object == object) {
            return number;
        }
    }
    return 0;
}

void Document::removePages(PageRun run)
{
    for (int page = run.first; page < run.first + run.count; ++page) {
        removed_.push_back(order_.at(page));
        if (removed_.back().loaded > 0) {
            removedSinceLoading_.push_back(removed_.back().loaded);
        }
    }
    order_.remove(run);
    treeIsStale_ = true;
    ++orderRevision_;
}

std::vector<std::int32_t> Document::removedSinceLoading() const
{
    std::vector<std::int32_t> numbers = removedSinceLoading_;
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

void Document::insertPages(int beforePage, const std::vector<QPDFObjectHandle>& pages)
{
    std::vector<PageEntry> entries;
    entries.reserve(pages.size());
    for (const QPDFObjectHandle& page : pages) {
        changes_.add(page);
        entries.push_back({page.getObjGen().getObj(), page.getObjGen().getGen(), 0, 0, 0});
    }
    order_.insert(beforePage, entries);
    nodes_.clear();
    treeIsStale_ = true;
    ++orderRevision_;
}

void Document::reorderPages(std::vector<PageEntry> entries)
{
    order_ = PageOrder(std::move(entries));
    nodes_.clear();
    treeIsStale_ = true;
    ++orderRevision_;
}

void Document::handOverToCopies()
{
    if (copies_.empty()) {
        return;
    }
    std::unordered_map<std::int32_t, PageEntry*> removed;
    for (PageEntry& page : removed_) {
        removed[page.object] = &page;
    }
    for (int number = 1; number <= order_.count(); ++number) {
        PageEntry& page = order_.at(number);
        const auto copy = copies_.find(page.object);
        const auto original = copy == copies_.end() ? removed.end() : removed.find(copy->second);
        if (original != removed.end()) {
            std::swap(page.object, original->second->object);
            std::swap(page.generation, original->second->generation);
            removed.erase(original);
        }
    }
}

void Document::cutAndWriteTree()
{
    if (!treeIsStale_) {
        return;
    }
    std::vector<PageEntry> entries = order_.toVector();
    ObjectView view = objects();
    if (!nodes_.empty()) {
        pageTree::prune(view, index_.get(), entries, removed_, nodes_);
    } else if (!pageTree::write(file(), changes_, view, entries, inherited_)) {
        for (PageEntry& entry : entries) {
            entry.inherited = 0;
        }
        order_ = PageOrder(std::move(entries));
    }
    for (const PageEntry& entry : removed_) {
        changes_.remove(entry.id());
        cutPages_.push_back(entry.object);
    }
    removed_ = std::vector<PageEntry>(); // gives its memory back, as clear() and = {} do not
    for (int number = 1; number <= order_.count(); ++number) {
        order_.at(number).original = number;
    }
    treeIsStale_ = false;
}

} // namespace karvel
