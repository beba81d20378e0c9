#include "KarvelPDFLibrary/page_tree/PageTree.h"

#include "KarvelPDFLibrary/base/Text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace karvel::pageTree {

namespace {

/// A tree that is deeper is written anew when pages go.
constexpr std::size_t deepestPrunable = 40;

/// What copies of pages may take in memory beside the file's size, and what each takes beside its
/// objects, which take about so many times their text: some thousand copies of usual pages pass.
constexpr std::uint64_t copiesBeside = 30'000'000;
constexpr std::uint64_t leastOfCopy = 500;
constexpr std::uint64_t objectsToText = 10;

/// The inherited set below a node, given the one above it.
std::uint32_t inheritedBelow(std::vector<InheritedSet>& sets, std::uint32_t above,
                             QPDFObjectHandle& node)
{
    InheritedSet set = sets[above];
    bool differs = false;
    for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
        QPDFObjectHandle value = node.getKey(inheritableKeys[i]);
        if (!value.isNull()) {
            set[i] = value;
            differs = true;
        }
    }
    if (!differs) {
        return above;
    }
    sets.push_back(set);
    return static_cast<std::uint32_t>(sets.size() - 1);
}

class Reader {
public:
    Reader(QPDF& file, std::int64_t size, Changes& changes, bool reconstructed, Warnings& warnings)
        : file_(file), changes_(changes), reconstructed_(reconstructed), warnings_(warnings),
          leftForCopies_(static_cast<std::uint64_t>(size) + copiesBeside)
    {
        pages_.inherited.emplace_back();
    }

    Result<ReadPages> run()
    {
        QPDFObjectHandle root = file_.getRoot().getKey("/Pages");
        if (!root.isDictionary()) {
            return fail(ErrorCode::NotPdf, "the document has no page tree");
        }
        enter(root, 0, -1);
        while (!path_.empty()) {
            Node& node = path_.back();
            if (node.next == node.count) {
                path_.pop_back();
                continue;
            }
            const int index = node.next++;
            visit(node.kids.getArrayItem(index), index);
            if (hasTooManyCopies_) {
                return fail(ErrorCode::NotPdf, "damaged: its page tree lists the same pages again "
                                               "more often than a file of its size can mean");
            }
        }
        if (lost_ > 0) {
            return fail(ErrorCode::NotPdf, "damaged: " + text::counted(lost_, "page", "pages") +
                                               " cannot be recovered");
        }
        if (pages_.entries.empty()) {
            return fail(ErrorCode::NotPdf, "the document has no pages");
        }
        return std::move(pages_);
    }

private:
    struct Node {
        QPDFObjectHandle kids;
        QPDFObjectHandle owner; // the indirect object that holds the kids array
        int next;
        int count;
        std::uint32_t inherited;
        std::int32_t position; // in the list of nodes
    };

    void enter(const QPDFObjectHandle& dictionary, std::uint32_t inherited, std::int32_t parent)
    {
        QPDFObjectHandle node = dictionary;
        if (node.isIndirect() && !nodes_.insert(node.getObjGen().getObj()).second) {
            leaveOut("the page tree refers to one of its nodes twice");
            return;
        }
        QPDFObjectHandle kids = node.getKey("/Kids");
        const int count = kids.isArray() ? kids.getArrayNItems() : 0;
        const QPDFObjectHandle owner = kids.isIndirect() ? kids : node;
        const auto position = static_cast<std::int32_t>(pages_.nodes.size());
        const QPDFObjGen id = node.getObjGen();
        pages_.nodes.push_back({id.getObj(), id.getGen(), parent});
        path_.push_back({kids, owner, 0, count, extend(inherited, node), position});
        pages_.canBePruned = pages_.canBePruned && node.isIndirect() &&
                             path_.size() <= deepestPrunable && node.isDictionaryOfType("/Pages");
    }

    std::uint32_t extend(std::uint32_t above, QPDFObjectHandle& node)
    {
        return inheritedBelow(pages_.inherited, above, node);
    }

    void visit(QPDFObjectHandle kid, int index)
    {
        if (!kid.isDictionary()) {
            passOver(kid);
        } else if (kid.hasKey("/Kids")) {
            enter(kid, path_.back().inherited, path_.back().position);
        } else if (kid.isDictionaryOfType("/Pages")) {
            leaveOut("the page tree has a node without children");
        } else {
            addPage(kid, index);
        }
    }

    void passOver(const QPDFObjectHandle& kid)
    {
        const bool inTable = kid.isIndirect() && file_.getXRefTable().count(kid.getObjGen()) > 0;
        if (inTable || (reconstructed_ && kid.isIndirect())) {
            ++lost_;
        } else {
            leaveOut("the page tree has an entry that is no page");
        }
    }

    /// Other readers may see pages in such an entry: the tree is written anew when pages go.
    void leaveOut(const char* fault)
    {
        warnings_.emplace_back(fault);
        pages_.canBePruned = false;
    }

    static bool isSomethingElse(QPDFObjectHandle page)
    {
        QPDFObjectHandle type = page.getKey("/Type");
        QPDFObjectHandle contents = page.getKey("/Contents");
        return type.isName() && type.getName() != "/Page" && !page.hasKey("/MediaBox") &&
               !contents.isStream() && !contents.isArray();
    }

    void addPage(QPDFObjectHandle page, int index)
    {
        if (!page.isIndirect()) {
            page = changes_.add(page);
            changes_.edit(path_.back().owner);
            path_.back().kids.setArrayItem(index, page);
            pages_.differsFromTree = true;
        } else if (!seen_.insert(page.getObjGen().getObj()).second) {
            page = copyOf(page);
            pages_.differsFromTree = true;
        } else if (isSomethingElse(page)) {
            // Readers show an empty page; the object itself is not to go with it.
            leaveOut("the page tree lists an object that is something else as a page");
            page = changes_.add(QPDFObjectHandle::parse("<< /Type /Page >>"));
            pages_.differsFromTree = true;
        }
        const QPDFObjGen id = page.getObjGen();
        pages_.entries.push_back({id.getObj(), id.getGen(), path_.back().inherited,
                                  static_cast<std::uint32_t>(path_.back().position), 0});
    }

    QPDFObjectHandle copyOf(QPDFObjectHandle page)
    {
        std::uint64_t& size = sizes_[page.getObjectID()];
        if (size == 0) {
            size = leastOfCopy + objectsToText * page.unparseResolved().size();
        }
        hasTooManyCopies_ = size > leftForCopies_;
        if (hasTooManyCopies_) {
            return page;
        }
        leftForCopies_ -= size;
        const QPDFObjectHandle copy = changes_.add(page.shallowCopy());
        pages_.copies.emplace_back(copy.getObjectID(), page.getObjectID());
        return copy;
    }

    QPDF& file_;
    Changes& changes_;
    bool reconstructed_;
    Warnings& warnings_;
    ReadPages pages_;
    std::vector<Node> path_;
    std::unordered_set<int> nodes_;
    std::unordered_set<int> seen_;
    std::uint64_t lost_ = 0;

    std::unordered_map<int, std::uint64_t> sizes_; // of pages that were copied
    std::uint64_t leftForCopies_;
    bool hasTooManyCopies_ = false;
};

/// Reads a tree through the index alone; gives up at anything unusual.
class IndexReader {
public:
    IndexReader(QPDF& file, const index::ReferenceIndex& index) : file_(file), index_(index)
    {
        pages_.inherited.emplace_back();
    }

    std::optional<ReadPages> run()
    {
        QPDFObjectHandle root = file_.getRoot().getKey("/Pages");
        const std::uint32_t number =
            index_.targetOf({static_cast<std::uint32_t>(root.getObjectID()),
                             static_cast<std::uint32_t>(root.getGeneration())});
        if (!index_.contains(number) || !enter(number, 0, -1)) {
            return std::nullopt;
        }
        while (!path_.empty()) {
            Node& node = path_.back();
            if (node.next == node.end) {
                path_.pop_back();
            } else if (!visit(index_.references()[node.next++])) {
                return std::nullopt;
            }
        }
        if (pages_.entries.empty()) {
            return std::nullopt;
        }
        return std::move(pages_);
    }

private:
    struct Node {
        std::uint32_t next; // positions in the index's references
        std::uint32_t end;
        std::uint32_t inherited;
        std::int32_t position;
    };

    bool enter(std::uint32_t object, std::uint32_t inherited, std::int32_t parent)
    {
        const index::KidsOfNode* kids = index_.kidsOf(object);
        if (kids == nullptr || !take(object)) {
            return false;
        }
        const index::IndexedObject& entry = index_.object(object);
        if ((entry.flags & index::HasInheritable) != 0) {
            QPDFObjectHandle node = file_.getObject(static_cast<int>(object), entry.generation);
            inherited = inheritedBelow(pages_.inherited, inherited, node);
        }
        const auto position = static_cast<std::int32_t>(pages_.nodes.size());
        pages_.nodes.push_back({static_cast<std::int32_t>(object), entry.generation, parent});
        path_.push_back(
            {kids->firstReference, kids->firstReference + kids->count, inherited, position});
        pages_.canBePruned = pages_.canBePruned && path_.size() <= deepestPrunable;
        return true;
    }

    bool visit(std::uint32_t object)
    {
        if (!index_.contains(object)) {
            return false;
        }
        const Node& parent = path_.back();
        const index::IndexedObject& entry = index_.object(object);
        if (entry.kind == index::Kind::PageNode) {
            return enter(object, parent.inherited, parent.position);
        }
        const bool dictionary =
            (entry.flags & index::IsDictionary) != 0 && (entry.flags & index::IsStream) == 0;
        if (!dictionary || entry.kind != index::Kind::Page || !take(object)) {
            return false;
        }
        pages_.entries.push_back({static_cast<std::int32_t>(object), entry.generation,
                                  parent.inherited, static_cast<std::uint32_t>(parent.position),
                                  0});
        return true;
    }

    /// False when the object was in the tree before.
    bool take(std::uint32_t object)
    {
        if (taken_.empty()) {
            taken_.resize(index_.size());
        }
        const bool first = !taken_[object];
        taken_[object] = true;
        return first;
    }

    QPDF& file_;
    const index::ReferenceIndex& index_;
    ReadPages pages_;
    std::vector<Node> path_;
    std::vector<bool> taken_;
};

} // namespace

Result<ReadPages> read(QPDF& file, std::int64_t size, Changes& changes, bool reconstructed,
                       Warnings& warnings)
{
    return Reader(file, size, changes, reconstructed, warnings).run();
}

std::optional<ReadPages> readFromIndex(QPDF& file, const index::ReferenceIndex& index)
{
    return IndexReader(file, index).run();
}

namespace {

/// Gives a node that loses kids the others, and another count of pages.
void pruneNode(ObjectView& objects, const index::ReferenceIndex* index, QPDFObjGen node,
               const std::unordered_set<int>& gone, long long pages)
{
    std::string left;
    const auto look = [&](QPDFObjGen kid) {
        if (gone.count(kid.getObj()) == 0) {
            left += (left.empty() ? "" : " ") + kid.unparse(' ') + " R";
        }
    };
    const auto entries = [&]() -> std::vector<ObjectView::Entry> {
        return {{"Kids", "[" + left + "]"}, {"Count", std::to_string(pages)}};
    };
    const index::KidsOfNode* kids = objects.unchanged(node.getObj()) == nullptr
                                        ? nullptr
                                        : index->kidsOf(static_cast<std::uint32_t>(node.getObj()));
    if (kids == nullptr) {
        for (QPDFObjectHandle kid :
             objects.object(node.getObj()).getKey("/Kids").getArrayAsVector()) {
            look(kid.getObjGen());
        }
        objects.editObject(node, entries());
        return;
    }
    for (std::uint32_t i = 0; i < kids->count; ++i) {
        look(objects.idOf(static_cast<int>(index->references()[kids->firstReference + i])));
    }
    objects.edit(node, entries());
}

} // namespace

void prune(ObjectView& objects, const index::ReferenceIndex* index,
           const std::vector<PageEntry>& remaining, const std::vector<PageEntry>& removed,
           const std::vector<TreeNode>& nodes)
{
    std::unordered_set<int> gone;
    std::vector<bool> affected(nodes.size());
    for (const PageEntry& page : removed) {
        gone.insert(page.object);
        auto node = static_cast<std::size_t>(page.node);
        while (!affected[node]) {
            affected[node] = true;
            if (nodes[node].parent >= 0) {
                node = static_cast<std::size_t>(nodes[node].parent);
            }
        }
    }
    std::vector<long long> pages(nodes.size(), 0);
    for (const PageEntry& page : remaining) {
        ++pages[page.node];
    }
    // Children come after their parents: from the back, every count is complete when it is used.
    for (std::size_t i = nodes.size(); i-- > 0;) {
        const TreeNode& node = nodes[i];
        if (node.parent >= 0) {
            pages[static_cast<std::size_t>(node.parent)] += pages[i];
        }
        if (!affected[i]) {
            continue;
        }
        if (pages[i] == 0 && node.parent >= 0) {
            gone.insert(node.object);
            continue;
        }
        objects.note(QPDFObjGen(node.object, node.generation));
        pruneNode(objects, index, QPDFObjGen(node.object, node.generation), gone, pages[i]);
    }
}

} // namespace karvel::pageTree
