#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/document/Encryption.h"
#include "KarvelPDFLibrary/document/PageLabelRanges.h"
#include "KarvelPDFLibrary/document/Roots.h"
#include "KarvelPDFLibrary/index/DecodedStreams.h"
#include "KarvelPDFLibrary/index/KnownReferences.h"
#include "KarvelPDFLibrary/index/ReferenceIndex.h"
#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/io/ObjectFile.h"
#include "KarvelPDFLibrary/objects/Changes.h"
#include "KarvelPDFLibrary/objects/ObjectView.h"
#include "KarvelPDFLibrary/objects/Warnings.h"
#include "KarvelPDFLibrary/page_tree/PageOrder.h"
#include "KarvelPDFLibrary/page_tree/PageTree.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <qpdf/QPDF.hh>
#include <string>
#include <unordered_map>
#include <vector>

namespace karvel {

struct LoadOptions {
    /// User or owner password in UTF-8; may be empty.
    std::string password;

    /// Whether a damaged cross-reference table may be rebuilt.
    bool reconstruct = true;

    /// Whether a damaged document may be saved with losses: without pages that can't be read, and
    /// where nobody can tell whether other readers number its pages in the same way. Each loss is a
    /// warning then (base/WarningKinds.h); without it, such a document can't be saved.
    bool salvage = false;
};

// What a document's pages and objects are, and which view of them is the truth when.
//
// Pages. Which pages there are, in which order, says PageOrder alone, from load() to the last save.
// The other views follow it:
//
//   the tree in the file      nodes and /Parent entries, as objects. Right after load(), unless
//                             treeIsStale_; stale from the first removal, insertion or reordering
//                             on, until cutAndWriteTree().
//   nodes_                    the tree as it was read, to be pruned instead of written anew. Empty
//                             as soon as pages were inserted or reordered, or when the tree does
//                             not say what the order says: then a balanced tree is written.
//   inherited_, and an        what a page gets from above. Valid for entries of the order until a
//   entry's `inherited`       tree is written that moved the values into the pages (then set 0).
//   removed_                  pages taken out of the order whose objects are still there, since the
//                             modules of deletion/ have to look at them. Empty after
//                             cutAndWriteTree(), which takes the objects out and notes their
//                             numbers in cutPages_.
//   copies_                   pages that the tree listed twice: the second use has a number of its
//                             own, and takes over the first one's when that is removed
//                             (handOverToCopies(), before anything looks at references).
//
// Who may change them: removePages(), insertPages() and reorderPages() change the order;
// cutAndWriteTree() brings the tree after it. Nobody else writes /Kids, /Count or /Parent of pages
// and nodes. deletion::synchronize() is the one caller that puts right first what refers to removed
// pages; between a removal and its call file() shows a document that no reader should see.
//
// Objects. One object may exist as text in the file, as a new text, and as libqpdf's object:
//
//   unchanged                 index() has its place and references, its bytes in the source count.
//                             libqpdf's object may or may not have been built; it says the same.
//   changed by text           Changes::text() is the truth. libqpdf's object is the old one until
//                             Changes builds it: present() and ObjectView see to that.
//   changed, added            libqpdf's object is the truth; the index, if it knows the number,
//                             speaks of a former value.
//   removed                   gone for every reader; libqpdf still has it until Changes::settle().
//
// Which of them holds for an object, and what it refers to then, says ObjectView; nobody decides
// that by himself. Changes::numbers() names every object of the last three states. An object that
// was changed behind its back would be saved as it was, so nobody calls replaceKey() and the like
// on an object that did not come from Changes::edit() or add().
//
// Rejected: libqpdf's own list of pages (removing one renumbers all that follow, so removing half
// of n pages costs n * n / 4 steps); one handle a page (each page is built, which costs more than
// all else for pages that stay); writing the tree anew in every case (touches every page, so that
// none could be copied byte for byte); putting references right at each removal (as many passes
// over the document as there are runs).

/// One open document: its objects (through libqpdf), the order of its pages, and the record of what
/// was changed. Operations on documents are functions of the modules beside this folder.
class Document {
public:
    /// A document of one blank A4 page.
    static Result<std::unique_ptr<Document>> create();

    /// Reads a document. The source is kept and read from as long as the document lives.
    static Result<std::unique_ptr<Document>> load(std::shared_ptr<io::ByteSource> source,
                                                  const LoadOptions& options);

    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// The objects, for reading. Page tree nodes, /Parent entries and what refers to removed pages
    /// may be out of date until deletion::synchronize() was called; changes go through changes().
    /// The first call has libqpdf open a document that was read without it: what can be told by
    /// roots(), the index and the texts of objects is better asked there.
    QPDF& file() { return file_.get(); }
    QPDFObjectHandle catalog() { return file().getRoot(); }

    /// What the trailer and the catalog say; null as soon as libqpdf has opened the document, and
    /// is to be asked.
    const Roots* roots() const { return file_.isOpen() || !roots_ ? nullptr : &*roots_; }

    /// The value of a key of the catalog; null when there is none.
    QPDFObjectHandle catalogEntry(const char* key);
    QPDFObjGen catalogId();

    /// The same of the trailer.
    QPDFObjectHandle trailerEntry(const char* key);

    bool isEncrypted() const { return file_.isEncrypted(); }

    /// The one door for changes of objects.
    Changes& changes() { return changes_; }

    /// What the objects are now, changed or not, without building more than is needed.
    ObjectView objects()
    {
        return {file_, changes_, index_.get(), source_.get(), streams_ ? &*streams_ : nullptr};
    }

    /// An object stream that the index knows.
    index::DecodedStreams::Stream objectStream(std::uint32_t number)
    {
        return streams_->of(*index_, number);
    }

    // --- pages; numbers are 1-based and must be within 1 to pageCount() ---

    int pageCount() const { return order_.count(); }

    /// A page's dictionary, for reading.
    QPDFObjectHandle page(int number) { return changes_.present(order_.at(number).id()); }

    /// A page's dictionary, for changing.
    QPDFObjectHandle editPage(int number) { return changes_.edit(page(number)); }

    /// A page's value of a key, the inherited one where the key can be inherited; null when absent.
    QPDFObjectHandle pageAttribute(int number, const char* key);

    /// The value of a key that a page inherits, whether or not it has its own; null when absent.
    QPDFObjectHandle inheritedAttribute(int number, const char* key);
    QPDFObjectHandle inheritedAttribute(const PageEntry& page, const char* key);

    /// The page tree node from which a page gets a value that it inherits; null when the tree is
    /// written anew in any case.
    QPDFObjectHandle inheritedFrom(const PageEntry& page, const char* key);

    /// Whether a page has no value of its own for a key but inherits one.
    bool inheritsAttribute(int number, const char* key);

    /// The page whose dictionary has an object number; 0 when there is none.
    int pageOfObject(int object) const;

    const PageOrder& order() const { return order_; }

    /// The labels of pages as they stand in the document; valid until the document is changed.
    const PageLabelRanges& pageLabels();

    /// What is uncertain about the pages of a damaged document.
    const PageDoubts& pageDoubts() const { return doubts_; }

    /// Whether an empty page stands for one that can't be read.
    bool isLost(int number) const { return doubts_.isLost(order_.at(number).loaded); }

    /// The numbers, as the document was loaded, of all pages removed since then, ascending.
    std::vector<std::int32_t> removedSinceLoading() const;

    /// Whether it may be saved with losses.
    bool maySalvage() const { return salvage_; }

    /// Removes a run of pages. What only they use is dropped when the document is saved.
    void removePages(PageRun run);

    /// Inserts pages whose dictionaries have numbers of this document and inherit nothing.
    void insertPages(int beforePage, const std::vector<QPDFObjectHandle>& pages);

    /// Puts entries in place of the whole order, which must name the same pages.
    void reorderPages(std::vector<PageEntry> entries);

    /// Pages that were removed and not cut yet: their objects are still there.
    const std::vector<PageEntry>& removedPages() const { return removed_; }

    /// Lets a page that remains take the place of a removed one that it is a copy of, as far as
    /// objects go: what leads to the page in the file leads to the one that remains.
    void handOverToCopies();

    /// Puts the page tree right and takes the removed pages' objects out. Whoever needs an up to
    /// date document calls deletion::synchronize(), which first puts right what refers to them.
    void cutAndWriteTree();

    /// The nodes of the page tree that was read; none when it is to be written anew.
    const std::vector<TreeNode>& treeNodes() const { return nodes_; }

    /// The object numbers of all pages that were cut so far. Nothing in the document leads to them.
    const std::vector<std::int32_t>& cutPages() const { return cutPages_; }

    /// Where the loaded file's objects lie and what refers to what; null for a file that is not fit
    /// for it, whose reason is indexRefusal(). Objects that the index was not sure of, since the
    /// file is damaged, count as changed.
    const index::ReferenceIndex* index() const { return index_.get(); }
    const std::string& indexRefusal() const { return indexRefusal_; }

    // --- what is known about the document besides its objects ---

    /// The path that the document was loaded from or last saved to; empty for one in memory.
    const std::string& path() const { return path_; }
    void setPath(std::string path) { path_ = std::move(path); }

    /// How messages call the document.
    std::string name() const;

    /// Size in bytes of what the document was loaded from; 0 for a new one.
    std::int64_t originalSize() const { return originalSize_; }

    /// Null for a new document.
    const std::shared_ptr<io::ByteSource>& source() const { return source_; }

    /// The password that opened the document, in the encoding that fitted.
    const std::string& password() const { return password_; }

    /// Whether the owner password was proved after opening with the user password.
    bool raisedToOwner = false;

    bool wasReconstructed() const { return reconstructed_; }

    bool isModified() const { return changes_.revision() != savedRevision_ || treeIsStale_; }

    /// Whether the source still holds what a reader would see.
    bool isAsLoaded() const { return source_ && !treeIsStale_ && revision() == loadedRevision_; }
    void markSaved() { savedRevision_ = changes_.revision(); }

    /// Grows whenever the document as a reader would see it changes.
    std::uint64_t revision() const { return changes_.revision() + orderRevision_; }

    EncryptionPlan encryption;

    /// The version to write, such as "1.7"; empty keeps the present one.
    std::string forcedVersion;

    /// Warnings so far, those of libqpdf included.
    Warnings& warnings();

    /// How many of the oldest warnings the caller was told to forget. They stay in the list:
    /// whether a page can be saved depends on what was noticed about it.
    std::size_t forgottenWarnings = 0;

    /// Whether pages get content streams of their own before a change of content (content module).
    bool ownContentStreams = false;

    /// Streams that pages were given of their own, with what they were made from (content module).
    std::vector<std::pair<QPDFObjectHandle, QPDFObjectHandle>> separatedStreams;

private:
    explicit Document(std::shared_ptr<io::ByteSource> source);
    Outcome open(const LoadOptions& options,
                 const std::shared_ptr<const index::CrossReferences>& read);
    void openLater(const LoadOptions& options,
                   const std::shared_ptr<const index::CrossReferences>& read);
    index::StreamMembers membersApart();
    static std::unique_ptr<Document>
    loadWithTrailerAdded(const std::shared_ptr<io::ByteSource>& source, const LoadOptions& options);
    void keepWhatTheKeyWasMadeFrom();
    Outcome hasPossibleNumbers();
    void readIndex(const LoadOptions& options, const index::CrossReferences* read);
    std::optional<ReadPages> pagesByIndex();
    std::unique_ptr<index::ReferenceIndex> indexOfDamaged();
    Outcome readPages(const LoadOptions& options, const index::CrossReferences* read);

    std::shared_ptr<io::ByteSource> source_;
    std::int64_t originalSize_ = 0;
    std::string path_;
    std::string password_;
    io::ObjectFile file_;
    Changes changes_;
    std::optional<index::DecodedStreams> streams_; // none without a source
    std::unique_ptr<index::ReferenceIndex> index_;
    std::string indexRefusal_;
    PageOrder order_;
    std::vector<InheritedSet> inherited_;
    std::vector<UnreadSet> unreadInherited_; // of these, until libqpdf opens the document
    std::optional<Roots> roots_;
    std::vector<TreeNode> nodes_; // of the tree that was read, while it can be pruned
    PageDoubts doubts_;
    std::vector<std::int32_t> removedSinceLoading_;
    std::vector<PageEntry> removed_;
    std::vector<std::int32_t> cutPages_;
    std::unordered_map<std::int32_t, std::int32_t> copies_; // of pages used twice: the page itself
    Warnings warnings_;
    std::optional<PageLabelRanges> pageLabels_; // as of a revision
    std::uint64_t pageLabelsRevision_ = 0;
    std::uint64_t savedRevision_ = 0;
    std::uint64_t orderRevision_ = 0;
    std::uint64_t loadedRevision_ = 0;
    bool reconstructed_ = false;
    bool treeIsStale_ = false;
    bool salvage_ = false;
};

} // namespace karvel
