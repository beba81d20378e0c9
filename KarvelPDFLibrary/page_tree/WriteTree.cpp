#include "KarvelPDFLibrary/page_tree/PageTree.h"

#include <algorithm>

namespace karvel::pageTree {

namespace {

/// Kids of one node: few enough to be found quickly, many enough for a flat tree.
constexpr std::size_t fanOut = 64;

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

/// A node that has all its kids, until its own place is known.
struct Node {
    QPDFObjGen number;
    std::string kids;
    std::size_t pages = 0;

    QPDFObjGen id() const { return number; }
};

std::size_t pagesIn(const Node& node)
{
    return node.pages;
}

std::size_t pagesIn(const PageEntry&)
{
    return 1;
}

/// Builds a tree from its pages upwards.
class TreeWriter {
public:
    /// `inherited` has what is moved into pages.
    TreeWriter(QPDF& file, Changes& changes, ObjectView& objects,
               const std::vector<InheritedSet>& inherited)
        : file_(file), changes_(changes), objects_(objects), inherited_(inherited)
    {
    }

    void write(QPDFObjectHandle root, const std::vector<PageEntry>& pages)
    {
        Node top;
        top.number = root.getObjGen();
        if (pages.size() <= fanOut) {
            adopt(top, pages, 0, pages.size());
        } else {
            std::vector<Node> level = above(pages);
            while (level.size() > fanOut) {
                level = above(level);
            }
            adopt(top, level, 0, level.size());
        }
        root.replaceKey("/Kids", QPDFObjectHandle::parse(&file_, "[" + top.kids + "]"));
        root.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(top.pages)));
    }

private:
    /// The nodes above a level of nodes or pages.
    template <typename Child>
    std::vector<Node> above(const std::vector<Child>& level)
    {
        std::vector<Node> nodes;
        for (std::size_t at = 0; at < level.size(); at += fanOut) {
            nodes.emplace_back();
            nodes.back().number = changes_.add(QPDFObjectHandle::newDictionary()).getObjGen();
            adopt(nodes.back(), level, at, std::min(at + fanOut, level.size()));
        }
        return nodes;
    }

    template <typename Child>
    void adopt(Node& parent, const std::vector<Child>& level, std::size_t begin, std::size_t end)
    {
        for (std::size_t i = begin; i < end; ++i) {
            place(level[i], parent.number);
            parent.kids += level[i].id().unparse(' ') + " R ";
            parent.pages += pagesIn(level[i]);
        }
    }

    void place(const Node& node, QPDFObjGen parent)
    {
        changes_.replaceText(node.number, "<< /Type /Pages /Parent " + parent.unparse(' ') +
                                              " R /Kids [" + node.kids + "] /Count " +
                                              std::to_string(node.pages) + " >>");
    }

    void place(const PageEntry& entry, QPDFObjGen parent)
    {
        std::vector<ObjectView::Entry> entries = {{"Parent", parent.unparse(' ') + " R"}};
        const InheritedSet& inherited = inherited_[entry.inherited];
        for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
            QPDFObjectHandle value = inherited[i];
            if (value.isInitialized()) {
                entries.push_back({inheritableKeys[i] + 1, value.unparse(), true});
            }
        }
        const index::IndexedObject* page = objects_.unchanged(entry.object);
        if (page != nullptr && page->kind == index::Kind::Page) {
            objects_.edit(entry.id(), entries);
        } else {
            objects_.editObject(entry.id(), entries); // it was built to see what it is
        }
    }

    QPDF& file_;
    Changes& changes_;
    ObjectView& objects_;
    const std::vector<InheritedSet>& inherited_;
};

} // namespace

bool write(QPDF& file, Changes& changes, ObjectView& objects, const std::vector<PageEntry>& entries,
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

    const std::vector<InheritedSet> nothing(alike ? inherited.size() : 0);
    TreeWriter(file, changes, objects, alike ? nothing : inherited).write(root, entries);
    return alike;
}

} // namespace karvel::pageTree
