#include "KarvelPDFLibrary/page_tree/PageTree.h"

#include "KarvelPDFLibrary/base/InventedKeys.h"
#include "KarvelPDFLibrary/base/LargeVectors.h"
#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

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

/// Puts a node's values over those from above it; whether it has any.
bool takeInheritable(InheritedSet& set, QPDFObjectHandle& node)
{
    bool differs = false;
    for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
        QPDFObjectHandle value = node.getKey(inheritableKeys[i]);
        if (!value.isNull()) {
            set[i] = value;
            differs = true;
        }
    }
    return differs;
}

/// The inherited set below a node, given the one above it.
std::uint32_t inheritedBelow(std::vector<InheritedSet>& sets, std::uint32_t above,
                             QPDFObjectHandle& node)
{
    InheritedSet set = sets[above];
    if (!takeInheritable(set, node)) {
        return above;
    }
    sets.push_back(set);
    return static_cast<std::uint32_t>(sets.size() - 1);
}

class Reader {
public:
    Reader(QPDF& file, std::int64_t size, Changes& changes, const WasReconstructed& reconstructed,
           Warnings& warnings)
        : file_(file), size_(size), changes_(changes), reconstructed_(reconstructed),
          warnings_(warnings), leftForCopies_(static_cast<std::uint64_t>(size) + copiesBeside)
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
                leave();
                continue;
            }
            const int index = node.next++;
            visit(node.kids.getArrayItem(index), index);
            if (hasTooManyCopies_) {
                return fail(ErrorCode::NotPdf, "damaged: its page tree lists the same pages again "
                                               "more often than a file of its size can mean");
            }
        }
        if (pages_.entries.empty()) {
            return fail(ErrorCode::NotPdf, "the document has no pages");
        }
        if (pages_.entries.size() == pages_.doubts.lost.size()) {
            return fail(ErrorCode::NotPdf, "damaged: none of its pages can be recovered");
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
        std::int32_t position;      // in the list of nodes
        std::size_t before;         // how many pages come before its own
        std::int64_t declared;      // how many pages it says that it has
        bool isGarbled;             // its dictionary is damaged, or its kids are no array
        std::int32_t firstLost = 0; // the first page among its kids that can't be read; 0: none

        /// Kids that are neither references nor null: the number of the page in whose place the
        /// first one is, or 0, how many there are, and whether one is in another place.
        std::int32_t firstGarbled = 0;
        int garbled = 0;
        bool isGarbledElsewhere = false;
    };

    void enter(const QPDFObjectHandle& dictionary, std::uint32_t inherited, std::int32_t parent)
    {
        QPDFObjectHandle node = dictionary;
        if (node.isIndirect() && !nodes_.insert(node.getObjGen().getObj()).second) {
            leaveOut("the page tree refers to one of its nodes twice");
            if (!isAncestor(node.getObjectID())) { // whose pages no reader can count again
                startDoubting();
            }
            return;
        }
        QPDFObjectHandle kids = node.getKey("/Kids");
        const int count = kids.isArray() ? kids.getArrayNItems() : 0;
        const QPDFObjectHandle owner = kids.isIndirect() ? kids : node;
        const auto position = static_cast<std::int32_t>(pages_.nodes.size());
        const QPDFObjGen id = node.getObjGen();
        pages_.nodes.push_back({id.getObj(), id.getGen(), parent});
        path_.push_back({kids, owner, 0, count, extend(inherited, node), position,
                         pages_.entries.size(), declaredBy(node), isGarbled(node)});
        pages_.canBePruned = pages_.canBePruned && node.isIndirect() &&
                             path_.size() <= deepestPrunable && node.isDictionaryOfType("/Pages");
    }

    /// Pages that can't be read have certain numbers where their node's own count says that each of
    /// them is one.
    void leave()
    {
        const Node node = path_.back();
        const auto found = static_cast<std::int64_t>(pages_.entries.size() - node.before);
        if (node.firstLost > 0 && node.declared != found) {
            startDoubting(node.firstLost);
        }
        const std::int64_t missing = node.declared - found;
        if (missing > 0 && node.firstGarbled > 0) {
            const std::int64_t count = std::min<std::int64_t>(missing, node.garbled);
            dropPassedOverAt(node.firstGarbled);
            insertLost(node, node.firstGarbled, count);
            if (count > 1 || node.isGarbledElsewhere) {
                startDoubting(node.firstGarbled);
            }
        } else if (missing > 0 && node.isGarbled) {
            insertLost(node, nextNumber(), missing);
            startDoubting(static_cast<std::int32_t>(node.before) + 1);
        }
        path_.pop_back();
    }

    void dropPassedOverAt(std::int32_t number)
    {
        std::vector<std::int32_t>& numbers = pages_.doubts.passedOver;
        numbers.erase(std::remove(numbers.begin(), numbers.end(), number), numbers.end());
    }

    /// Pages that a node says that it has, where nothing leads to them any more.
    void insertLost(const Node& node, std::int32_t first, std::int64_t missing)
    {
        constexpr std::int64_t shortestKid = 6; // "1 0 R "
        const auto count = static_cast<std::int32_t>(std::min(missing, size_ / shortestKid));
        PageDoubts& doubts = pages_.doubts;
        for (std::vector<std::int32_t>* numbers : {&doubts.lost, &doubts.passedOver}) {
            for (std::int32_t& number : *numbers) {
                number += number >= first ? count : 0;
            }
        }
        std::vector<PageEntry> entries;
        for (std::int32_t number = first; number < first + count; ++number) {
            const QPDFObjGen id =
                changes_.add(QPDFObjectHandle::parse("<< /Type /Page >>")).getObjGen();
            entries.push_back({id.getObj(), id.getGen(), node.inherited,
                               static_cast<std::uint32_t>(node.position), 0});
            noteLost(number);
        }
        pages_.entries.insert(pages_.entries.begin() + (first - 1), entries.begin(), entries.end());
        std::sort(doubts.lost.begin(), doubts.lost.end());
    }

    void noteLost(std::int32_t number)
    {
        pages_.canBePruned = false;
        pages_.differsFromTree = true;
        pages_.doubts.lost.push_back(number);
        warnings_.push_back("page " + std::to_string(number) + " cannot be read");
    }

    static bool isGarbled(QPDFObjectHandle node)
    {
        return !node.getKey("/Kids").isArray() || hasInventedKey(node.getDictAsMap());
    }

    static std::int64_t declaredBy(QPDFObjectHandle node)
    {
        QPDFObjectHandle count = node.getKey("/Count");
        return count.isInteger() ? count.getIntValue() : -1;
    }

    bool isAncestor(int object) const
    {
        return std::any_of(path_.begin(), path_.end(), [&](const Node& node) {
            return pages_.nodes[static_cast<std::size_t>(node.position)].object == object;
        });
    }

    std::int32_t nextNumber() const { return static_cast<std::int32_t>(pages_.entries.size()) + 1; }

    /// From a page on, readers may count otherwise in a way that isn't known.
    void startDoubting(std::int32_t page)
    {
        std::int32_t& from = pages_.doubts.unknownFrom;
        from = from == 0 ? page : std::min(from, page);
    }
    void startDoubting() { startDoubting(nextNumber()); }

    std::uint32_t extend(std::uint32_t above, QPDFObjectHandle& node)
    {
        return inheritedBelow(pages_.inherited, above, node);
    }

    void visit(QPDFObjectHandle kid, int index)
    {
        if (!kid.isDictionary() || lostObjects_.count(kid.getObjectID()) > 0) {
            passOver(kid, index);
        } else if (kid.hasKey("/Kids")) {
            enter(kid, path_.back().inherited, path_.back().position);
        } else if (kid.isDictionaryOfType("/Pages")) {
            leaveOut("the page tree has a node without children");
            if (const std::int64_t missing = declaredBy(kid); missing > 0) {
                startDoubting();
                insertLost(path_.back(), nextNumber(), missing);
            }
        } else {
            addPage(kid, index);
        }
    }

    void passOver(QPDFObjectHandle kid, int index)
    {
        const bool inTable = kid.isIndirect() && file_.getXRefTable().count(kid.getObjGen()) > 0;
        if (inTable || (kid.isIndirect() && reconstructed_())) {
            standInFor(kid, index);
        } else {
            leaveOut("the page tree has an entry that is no page; viewers may count one there");
            const std::int32_t number = nextNumber();
            pages_.doubts.passedOver.push_back(number);
            Node& node = path_.back();
            if (!kid.isIndirect() && !kid.isNull()) {
                node.firstGarbled = node.firstGarbled == 0 ? number : node.firstGarbled;
                node.isGarbledElsewhere = node.isGarbledElsewhere || node.firstGarbled != number;
                ++node.garbled;
            }
        }
    }

    /// What leads to the page that is lost leads to the empty one, unless its number is beyond what
    /// a file of its size can have.
    void standInFor(QPDFObjectHandle kid, int index)
    {
        const std::int32_t number = nextNumber();
        QPDFObjectHandle page = QPDFObjectHandle::parse("<< /Type /Page >>");
        if (!index::isOutOfProportion(static_cast<std::uint64_t>(kid.getObjectID()),
                                      file_.getXRefTable().size())) {
            lostObjects_.insert(kid.getObjectID());
            changes_.replace(kid.getObjGen(), page);
            page = kid;
        }
        addPage(page, index);
        noteLost(number);
        std::int32_t& first = path_.back().firstLost;
        first = first == 0 ? number : first;
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
            reconstructed_(); // fetches the warnings about the object
            if (!warnings_.empty()) {
                noteLost(nextNumber());
            } else {
                leaveOut("the page tree lists an object that is something else as a page");
            }
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
    std::int64_t size_;
    Changes& changes_;
    const WasReconstructed& reconstructed_;
    Warnings& warnings_;
    ReadPages pages_;
    std::vector<Node> path_;
    std::unordered_set<int> nodes_;
    std::unordered_set<int> seen_;
    std::unordered_set<int> lostObjects_; // for which there are empty pages

    std::unordered_map<int, std::uint64_t> sizes_; // of pages that were copied
    std::uint64_t leftForCopies_;
    bool hasTooManyCopies_ = false;
};

/// Reads a tree through the index alone; gives up at anything unusual.
class IndexReader {
public:
    IndexReader(io::ObjectFile& file, const index::ReferenceIndex& index)
        : file_(file), index_(index)
    {
        pages_.inherited.emplace_back();
    }

    std::optional<ReadPages> run(QPDFObjGen root)
    {
        const std::uint32_t number = index_.targetOf(
            {static_cast<std::uint32_t>(root.getObj()), static_cast<std::uint32_t>(root.getGen())});
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
            inherited = below(inherited, *kids);
        }
        const auto position = static_cast<std::int32_t>(pages_.nodes.size());
        pages_.nodes.push_back({static_cast<std::int32_t>(object), entry.generation, parent});
        path_.push_back(
            {kids->firstReference, kids->firstReference + kids->count, inherited, position});
        pages_.canBePruned = pages_.canBePruned && path_.size() <= deepestPrunable;
        return true;
    }

    /// The set of inherited attributes below a node that may have some.
    std::uint32_t below(std::uint32_t above, const index::KidsOfNode& kids)
    {
        const QPDFObjGen id(static_cast<int>(kids.object), index_.object(kids.object).generation);
        if (!file_.isOpen() && hasInheritable(kids.text)) {
            const auto position = static_cast<std::uint32_t>(pages_.inherited.size());
            pages_.inherited.emplace_back();
            pages_.unread.push_back({position, above, id});
            return position;
        }
        readInherited(file_.get(), pages_.inherited, pages_.unread);
        QPDFObjectHandle node = file_.get().getObject(id);
        return inheritedBelow(pages_.inherited, above, node);
    }

    /// Whether one of the values is not null for sure.
    bool hasInheritable(const std::string& node) const
    {
        const std::string text = node + " endobj ";
        const auto dictionary = index::DictionaryText::readPlainly(text);
        const auto isThere = [&](const char* key) {
            const std::string_view value = index::trimmed(dictionary->value(key + 1));
            const auto reference = index::readReference(value);
            const std::uint32_t target = reference ? index_.targetOf(*reference) : 0;
            return reference ? target != 0 && (index_.object(target).flags & index::IsDictionary)
                             : !value.empty() && value != "null";
        };
        return dictionary && std::any_of(inheritableKeys.begin(), inheritableKeys.end(), isThere);
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
        appendLarge(pages_.entries,
                    {static_cast<std::int32_t>(object), entry.generation, parent.inherited,
                     static_cast<std::uint32_t>(parent.position), 0});
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

    io::ObjectFile& file_;
    const index::ReferenceIndex& index_;
    ReadPages pages_;
    std::vector<Node> path_;
    std::vector<bool> taken_;
};

} // namespace

Result<ReadPages> read(QPDF& file, std::int64_t size, Changes& changes,
                       const WasReconstructed& reconstructed, Warnings& warnings)
{
    return Reader(file, size, changes, reconstructed, warnings).run();
}

std::optional<ReadPages> readFromIndex(io::ObjectFile& file, const index::ReferenceIndex& index,
                                       QPDFObjGen root)
{
    return IndexReader(file, index).run(root);
}

void readInherited(QPDF& file, std::vector<InheritedSet>& sets, std::vector<UnreadSet>& unread)
{
    for (const UnreadSet& set : unread) {
        QPDFObjectHandle node = file.getObject(set.node);
        sets[set.position] = sets[set.above];
        takeInheritable(sets[set.position], node);
    }
    unread.clear();
}

namespace {

/// Gives a node that loses kids the others, and another count of pages.
void pruneNode(ObjectView& objects, const index::ReferenceIndex* index, QPDFObjGen node,
               const std::vector<bool>& gone, long long pages)
{
    std::string left;
    const auto look = [&](QPDFObjGen kid) {
        const auto number = static_cast<std::size_t>(kid.getObj());
        if (number >= gone.size() || !gone[number]) {
            left += left.empty() ? "" : " ";
            left.append(std::to_string(kid.getObj())).append(" ");
            left.append(std::to_string(kid.getGen())).append(" R");
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
    std::vector<bool> gone; // by number
    const auto goes = [&gone](std::int32_t object) {
        const auto number = static_cast<std::size_t>(object);
        if (number >= gone.size()) {
            gone.resize(std::max(number + 1, 2 * gone.size()));
        }
        gone[number] = true;
    };
    std::vector<bool> affected(nodes.size());
    for (const PageEntry& page : removed) {
        goes(page.object);
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
            goes(node.object);
            continue;
        }
        objects.note(QPDFObjGen(node.object, node.generation));
        pruneNode(objects, index, QPDFObjGen(node.object, node.generation), gone, pages[i]);
    }
}

} // namespace karvel::pageTree
