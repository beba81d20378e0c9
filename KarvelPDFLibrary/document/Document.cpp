#include "KarvelPDFLibrary/document/Document.h"

#include "KarvelPDFLibrary/io/WindowedInput.h"

#include <algorithm>
#include <cstring>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFLogger.hh>
#include <qpdf/QUtil.hh>
#include <unordered_set>

namespace karvel {

namespace {

std::unique_ptr<QPDF> quietFile()
{
    auto file = std::make_unique<QPDF>();
    file->setSuppressWarnings(true); // they are collected and read from the file
    return file;
}

/// Opens with the password as given and, when it does not fit, in the other encodings in which
/// programs have been known to store it.
void openWithPassword(QPDF& file, const std::shared_ptr<InputSource>& input,
                      const std::string& password)
{
    try {
        file.processInputSource(input, password.c_str());
        return;
    } catch (const QPDFExc& exception) {
        if (exception.getErrorCode() != qpdf_e_password || password.empty()) {
            throw;
        }
    }
    const std::vector<std::string> encodings = QUtil::possible_repaired_encodings(password);
    for (const std::string& encoded : encodings) {
        try {
            file.processInputSource(input, encoded.c_str());
            return;
        } catch (const QPDFExc& exception) {
            if (exception.getErrorCode() != qpdf_e_password || &encoded == &encodings.back()) {
                throw;
            }
        }
    }
}

/// One sentence for a document that cannot be opened.
Error openingError(const std::string& name)
{
    Error error = currentExceptionAsError(name);
    if (error.code == ErrorCode::WrongPassword) {
        error.text = name + ": the password is missing or wrong";
    } else if (error.code == ErrorCode::NotPdf) {
        error.text = name + ": not a PDF, or damaged beyond repair (" +
                     error.text.substr(std::min(error.text.size(), name.size() + 2)) + ")";
    }
    return error;
}

bool tellsOfReconstruction(const QPDFExc& warning)
{
    return warning.getMessageDetail().find("Attempting to reconstruct") != std::string::npos;
}

} // namespace

Document::Document(std::shared_ptr<io::ByteSource> source)
    : source_(std::move(source)), file_(quietFile()), changes_(*file_)
{
}

Result<std::unique_ptr<Document>> Document::create()
{
    std::unique_ptr<Document> document(new Document(nullptr));
    document->file_->emptyPDF();
    document->inherited_.emplace_back();
    QPDFObjectHandle page = document->file_->makeIndirectObject(QPDFObjectHandle::parse(
        "<< /Type /Page /MediaBox [0 0 595.276 841.89] /Resources << >> >>"));
    document->insertPages(1, {page});
    document->cutAndWriteTree();
    document->markSaved();
    return document;
}

Result<std::unique_ptr<Document>> Document::load(std::shared_ptr<io::ByteSource> source,
                                                 const LoadOptions& options)
{
    std::unique_ptr<Document> document(new Document(std::move(source)));
    if (Status status = document->open(options); !status) {
        return tl::unexpected<Error>(status.error());
    }
    return document;
}

Status Document::open(const LoadOptions& options)
{
    password_ = options.password;
    if (source_->size() == 0) {
        return fail(ErrorCode::NotPdf, source_->name() + ": the file is empty");
    }
    try {
        file_->setAttemptRecovery(options.reconstruct);
        openWithPassword(*file_, std::make_shared<io::WindowedInput>(source_), password_);
        if (Status status = readPages(); !status) {
            return status;
        }
    } catch (...) {
        Error error = openingError(source_->name());
        if (Status status = source_->intact(); !status) {
            return status;
        }
        return tl::unexpected<Error>(std::move(error));
    }
    savedRevision_ = changes_.revision();
    return {};
}

Status Document::readPages()
{
    warnings();
    if (reconstructed_) {
        indexRefusal_ = "the cross-reference table was rebuilt";
    } else {
        index_ = index::ReferenceIndex::build(*file_, *source_, indexRefusal_);
    }
    std::optional<ReadPages> pages;
    if (index_) {
        pages = pageTree::readFromIndex(*file_, *index_);
    }
    if (!pages) {
        Result<ReadPages> read = pageTree::read(*file_, changes_, reconstructed_, warnings_);
        if (Status status = source_->intact(); !status) {
            return status;
        }
        if (!read) {
            return fail(read.error().code, source_->name() + ": " + read.error().text);
        }
        pages = std::move(*read);
    }
    std::int32_t number = 0;
    for (PageEntry& entry : pages->entries) {
        entry.original = ++number;
    }
    order_ = PageOrder(std::move(pages->entries));
    inherited_ = std::move(pages->inherited);
    treeIsStale_ = pages->differsFromTree;
    if (pages->canBePruned && !pages->differsFromTree) {
        nodes_ = std::move(pages->nodes);
    }
    warnings();
    return source_->intact();
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
    for (const QPDFExc& warning : file_->getWarnings()) {
        reconstructed_ = reconstructed_ || tellsOfReconstruction(warning);
        warnings_.push_back(warning.getMessageDetail());
    }
    return warnings_;
}

QPDFObjectHandle Document::pageAttribute(int number, const char* key)
{
    QPDFObjectHandle own = page(number).getKey(key);
    if (!own.isNull()) {
        return own;
    }
    const InheritedSet& set = inherited_[order_.at(number).inherited];
    for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
        if (std::strcmp(inheritableKeys[i], key) == 0 && set[i].isInitialized()) {
            return set[i];
        }
    }
    return own;
}

bool Document::inheritsAttribute(int number, const char* key)
{
    return page(number).getKey(key).isNull() && !pageAttribute(number, key).isNull();
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
    }
    order_.remove(run);
    treeIsStale_ = true;
    ++orderRevision_;
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

void Document::cutAndWriteTree()
{
    if (!treeIsStale_) {
        return;
    }
    std::vector<PageEntry> entries = order_.toVector();
    if (!nodes_.empty()) {
        pageTree::prune(*file_, changes_, index_.get(), entries, removed_, nodes_);
    } else if (!pageTree::write(*file_, changes_, entries, inherited_)) {
        for (PageEntry& entry : entries) {
            entry.inherited = 0;
        }
        order_ = PageOrder(std::move(entries));
    }
    for (const PageEntry& entry : removed_) {
        changes_.remove(entry.id());
    }
    removed_.clear();
    for (int number = 1; number <= order_.count(); ++number) {
        order_.at(number).original = number;
    }
    treeIsStale_ = false;
}

} // namespace karvel
