#include "KarvelPDFLibrary/pages/PageTree.h"

#include <algorithm>
#include <unordered_set>

namespace karvel::pageTree {

namespace {

/// Kids of one node: few enough to be found quickly, many enough for a flat tree.
constexpr std::size_t fanOut = 64;

class Reader {
public:
    Reader(QPDF& file, Changes& changes, bool reconstructed, Warnings& warnings)
        : file_(file), changes_(changes), reconstructed_(reconstructed), warnings_(warnings)
    {
        pages_.inherited.emplace_back();
    }

    Result<ReadPages> run()
    {
        QPDFObjectHandle root = file_.getRoot().getKey("/Pages");
        if (!root.isDictionary()) {
            return fail(ErrorCode::NotPdf, "the document has no page tree");
        }
        enter(root, 0);
        while (!path_.empty()) {
            Node& node = path_.back();
            if (node.next == node.count) {
                path_.pop_back();
                continue;
            }
            const int index = node.next++;
            visit(node.kids.getArrayItem(index), index);
        }
        if (lost_ > 0) {
            return fail(ErrorCode::NotPdf, "damaged: " + std::to_string(lost_) +
                                               (lost_ == 1 ? " page" : " pages") +
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
    };

    void enter(const QPDFObjectHandle& dictionary, std::uint32_t inherited)
    {
        QPDFObjectHandle node = dictionary;
        if (node.isIndirect() && !nodes_.insert(node.getObjGen().getObj()).second) {
            warnings_.emplace_back("the page tree refers to one of its nodes twice");
            return;
        }
        QPDFObjectHandle kids = node.getKey("/Kids");
        const int count = kids.isArray() ? kids.getArrayNItems() : 0;
        const QPDFObjectHandle owner = kids.isIndirect() ? kids : node;
        path_.push_back({kids, owner, 0, count, extend(inherited, node)});
    }

    /// The inherited set below a node.
    std::uint32_t extend(std::uint32_t above, QPDFObjectHandle& node)
    {
        InheritedSet set = pages_.inherited[above];
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
        pages_.inherited.push_back(set);
        return static_cast<std::uint32_t>(pages_.inherited.size() - 1);
    }

    void visit(QPDFObjectHandle kid, int index)
    {
        if (!kid.isDictionary()) {
            passOver(kid);
        } else if (kid.hasKey("/Kids")) {
            enter(kid, path_.back().inherited);
        } else if (kid.isDictionaryOfType("/Pages")) {
            warnings_.emplace_back("the page tree has a node without children");
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
            warnings_.emplace_back("the page tree has an entry that is no page");
        }
    }

    void addPage(QPDFObjectHandle page, int index)
    {
        const std::uint32_t inherited = path_.back().inherited;
        if (!page.isIndirect()) {
            page = changes_.add(page);
            changes_.edit(path_.back().owner);
            path_.back().kids.setArrayItem(index, page);
            pages_.differsFromTree = true;
        } else if (!seen_.insert(page.getObjGen().getObj()).second) {
            // Each use is a page of its own.
            page = changes_.add(page.shallowCopy());
            pages_.differsFromTree = true;
        }
        const QPDFObjGen id = page.getObjGen();
        pages_.entries.push_back({id.getObj(), id.getGen(), inherited});
    }

    QPDF& file_;
    Changes& changes_;
    bool reconstructed_;
    Warnings& warnings_;
    ReadPages pages_;
    std::vector<Node> path_;
    std::unordered_set<int> nodes_;
    std::unordered_set<int> seen_;
    int lost_ = 0;
};

/// Gives dictionaries a number, so that pages can share them instead of each holding a copy.
void makeShareable(Changes& changes, std::vector<InheritedSet>& sets)
{
    for (InheritedSet& set : sets) {
        for (QPDFObjectHandle& value : set) {
            if (value.isInitialized() && value.isDictionary() && !value.isIndirect()) {
                value = changes.add(value.shallowCopy());
            }
        }
    }
}

/// Moves inherited values into a page that has none of its own.
void pushInto(QPDFObjectHandle& page, const InheritedSet& set)
{
    for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
        QPDFObjectHandle value = set[i];
        if (value.isInitialized() && !page.hasKey(inheritableKeys[i])) {
            page.replaceKey(inheritableKeys[i], value.isIndirect() ? value : value.shallowCopy());
        }
    }
}

void setAtRoot(QPDFObjectHandle& root, const InheritedSet& set)
{
    for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
        if (set[i].isInitialized()) {
            root.replaceKey(inheritableKeys[i], set[i]);
        } else {
            root.removeKey(inheritableKeys[i]);
        }
    }
}

/// A node of the new tree, or a page at the lowest level.
struct Child {
    QPDFObjectHandle object;
    std::size_t pages;
};

void adopt(QPDFObjectHandle& parent, std::vector<Child>::iterator begin,
           std::vector<Child>::iterator end)
{
    std::vector<QPDFObjectHandle> kids;
    std::size_t pages = 0;
    for (auto child = begin; child != end; ++child) {
        child->object.replaceKey("/Parent", parent);
        kids.push_back(child->object);
        pages += child->pages;
    }
    parent.replaceKey("/Kids", QPDFObjectHandle::newArray(kids));
    parent.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(pages)));
}

} // namespace

Result<ReadPages> read(QPDF& file, Changes& changes, bool reconstructed, Warnings& warnings)
{
    return Reader(file, changes, reconstructed, warnings).run();
}

bool write(QPDF& file, Changes& changes, const std::vector<PageEntry>& entries,
           std::vector<InheritedSet>& inherited)
{
    QPDFObjectHandle root = file.getRoot().getKey("/Pages");
    if (root.isIndirect()) {
        root = changes.edit(root);
    } else {
        root = changes.add(root);
        changes.edit(file.getRoot()).replaceKey("/Pages", root);
    }

    root.replaceKey("/Type", QPDFObjectHandle::newName("/Pages"));

    const bool alike = std::all_of(entries.begin(), entries.end(), [&](const PageEntry& entry) {
        return entry.inherited == entries.front().inherited;
    });
    if (!alike) {
        makeShareable(changes, inherited);
    }
    setAtRoot(root, alike ? inherited[entries.front().inherited] : InheritedSet());

    std::vector<Child> level;
    level.reserve(entries.size());
    for (const PageEntry& entry : entries) {
        QPDFObjectHandle page = changes.edit(file.getObject(entry.id()));
        if (!alike) {
            pushInto(page, inherited[entry.inherited]);
        }
        level.push_back({page, 1});
    }
    while (level.size() > fanOut) {
        std::vector<Child> above;
        for (auto begin = level.begin(); begin != level.end();) {
            const auto rest = static_cast<std::size_t>(level.end() - begin);
            const auto end = begin + static_cast<std::ptrdiff_t>(std::min(fanOut, rest));
            QPDFObjectHandle node = changes.add(QPDFObjectHandle::newDictionary());
            node.replaceKey("/Type", QPDFObjectHandle::newName("/Pages"));
            adopt(node, begin, end);
            above.push_back({node, 0});
            for (auto child = begin; child != end; ++child) {
                above.back().pages += child->pages;
            }
            begin = end;
        }
        level = std::move(above);
    }
    adopt(root, level.begin(), level.end());
    return alike;
}

} // namespace karvel::pageTree
