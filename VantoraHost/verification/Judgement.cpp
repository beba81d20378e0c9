#include "VantoraHost/verification/Split.h"

#include <algorithm>

namespace vantora::verification {

namespace {

bool isReferenceToContent(const QPDFObjectHandle& object)
{
    return isNamed(object, "/Type", "/MCR") || isNamed(object, "/Type", "/OBJR") ||
           (valueOf(object, "/S").isNull() &&
            (!valueOf(object, "/MCID").isNull() || !valueOf(object, "/Obj").isNull()));
}

std::vector<QPDFObjectHandle> listOf(QPDFObjectHandle value)
{
    if (value.isArray()) {
        return value.getArrayAsVector();
    }
    return value.isNull() ? std::vector<QPDFObjectHandle>{} : std::vector{value};
}

/// A node of a tree that is judged from its leaves upwards.
struct Node {
    QPDFObjectHandle object;
    int parent = -1; ///< position
    int page = 0;
    bool holdsRemoved = false;
    bool holdsKept = false;
    bool goes() const { return holdsRemoved && !holdsKept; }
};

// Adds what a field says itself to what it inherits; false for a widget without a name.
bool describeField(const QPDFObjectHandle& object, Field& field)
{
    QPDFObjectHandle name = valueOf(object, "/T");
    if (name.isString()) {
        field.name += (field.name.empty() ? "" : ".") + name.getUTF8Value();
    }
    QPDFObjectHandle value = valueOf(object, "/V");
    if (value.isString()) {
        field.value = value.getUTF8Value();
    } else if (value.isName() || value.isArray()) {
        field.value = value.unparseResolved();
    }
    field.isSignature |= isNamed(object, "/FT", "/Sig");
    return name.isString();
}

// Parents stand before their children in the list.
void passUpwards(std::vector<Node>& nodes)
{
    for (std::size_t i = nodes.size(); i-- > 0;) {
        if (nodes[i].parent >= 0) {
            Node& parent = nodes[static_cast<std::size_t>(nodes[i].parent)];
            parent.holdsKept |= nodes[i].holdsKept;
            parent.holdsRemoved |= nodes[i].holdsRemoved;
            parent.page = parent.page == 0 ? nodes[i].page : parent.page;
        }
    }
    // What holds nothing goes with what is above it.
    for (Node& node : nodes) {
        if (node.parent >= 0 && !node.holdsKept && !node.holdsRemoved) {
            const Node& parent = nodes[static_cast<std::size_t>(node.parent)];
            node.holdsRemoved = parent.goes();
            node.page = parent.page;
        }
    }
}

} // namespace

std::vector<QPDFObjectHandle> annotationsOf(QPDFObjectHandle page)
{
    std::vector<QPDFObjectHandle> all;
    for (const QPDFObjectHandle& item : listOf(valueOf(page, "/Annots"))) {
        if (QPDFObjectHandle(item).isDictionary()) {
            all.push_back(item);
        }
    }
    return all;
}

Judgement::Judgement(const Split& split, const Targets& targets) : split_(split)
{
    judgeAnnotations();
    judgeFollowers();
    judgeFields();
    judgeStructure();
    judgeThreads();
    judgeOutline(targets);
    judgeNames(targets);
}

void Judgement::add(Judged judged)
{
    if (judged.object.isIndirect()) {
        judged_[judged.object.getObjGen()] = judged.goes;
    }
    all_.push_back(std::move(judged));
}

bool Judgement::isJudged(QPDFObjectHandle object) const
{
    return object.isIndirect() && judged_.count(object.getObjGen()) > 0;
}

bool Judgement::goes(QPDFObjectHandle object) const
{
    const auto found = object.isIndirect() ? judged_.find(object.getObjGen()) : judged_.end();
    return found != judged_.end() && found->second;
}

// An annotation that a kept page lists, too, stays. Direct ones are part of their page.
void Judgement::judgeAnnotations()
{
    std::map<QPDFObjGen, Judged> found;
    const auto& pages = split_.file().pages();
    for (std::size_t place = 0; place < pages.size(); ++place) {
        const bool goes = split_.goes(static_cast<int>(place));
        for (const QPDFObjectHandle& annotation : annotationsOf(pages[place].object)) {
            if (!QPDFObjectHandle(annotation).isIndirect()) {
                continue;
            }
            const int number = static_cast<int>(place) + 1;
            Judged& judged = found
                                 .try_emplace(annotation.getObjGen(),
                                              Judged{annotation, Kind::Annotation, number, true})
                                 .first->second;
            if (!goes && judged.goes) {
                judged.goes = false;
                judged.page = number;
            }
        }
    }
    for (auto& [number, judged] : found) {
        ownerOf_[number] = judged.page;
        add(std::move(judged));
    }
}

// Popups and replies go with what they are about (ISO 32000-2, 12.5.6.2).
void Judgement::judgeFollowers()
{
    bool more = true;
    for (int depth = 0; more && depth < 32; ++depth) {
        more = false;
        for (Judged& judged : all_) {
            const char* leader = isNamed(judged.object, "/Subtype", "/Popup") ? "/Parent" : "/IRT";
            if (!judged.goes && goes(valueOf(judged.object, leader))) {
                judged.goes = judged_[judged.object.getObjGen()] = more = true;
            }
        }
    }
}

// Whether a node of the form's tree is a widget, and of which kind of page.
bool Judgement::judgeWidget(QPDFObjectHandle object, int& page, bool& gone) const
{
    const auto owner = object.isIndirect() ? ownerOf_.find(object.getObjGen()) : ownerOf_.end();
    if (owner != ownerOf_.end()) {
        page = owner->second;
        gone = goes(object);
        return true;
    }
    // One need not be listed by its page to be known as its own.
    page = isNamed(object, "/Subtype", "/Widget") ? split_.numberOf(valueOf(object, "/P")) : 0;
    gone = page > 0 && split_.goes(page - 1);
    return page > 0;
}

void Judgement::judgeFields()
{
    std::vector<Node> nodes;
    std::set<QPDFObjGen> seen;
    for (const QPDFObjectHandle& field :
         listOf(valueOf(valueOf(split_.file().catalog(), "/AcroForm"), "/Fields"))) {
        nodes.push_back({field});
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        QPDFObjectHandle object = nodes[i].object;
        if (!object.isDictionary() ||
            (object.isIndirect() && !seen.insert(object.getObjGen()).second)) {
            continue;
        }
        bool gone = false;
        if (judgeWidget(object, nodes[i].page, gone)) {
            (gone ? nodes[i].holdsRemoved : nodes[i].holdsKept) = true;
        }
        for (const QPDFObjectHandle& kid : listOf(object.getKey("/Kids"))) {
            nodes.push_back({kid, static_cast<int>(i)});
        }
    }
    passUpwards(nodes);
    // From above: the whole name, and what a field inherits.
    std::vector<Field> known(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        Field& field = known[i];
        if (nodes[i].parent >= 0) {
            field = known[static_cast<std::size_t>(nodes[i].parent)];
        }
        const bool isField = describeField(nodes[i].object, field) || nodes[i].parent < 0;
        field.goes = nodes[i].goes();
        if (isField && (nodes[i].holdsKept || nodes[i].holdsRemoved)) {
            fields_.push_back(field);
        }
        if (!isJudged(nodes[i].object)) {
            add({nodes[i].object, Kind::FormValue, nodes[i].page, nodes[i].goes()});
        }
    }
}

void Judgement::judgeStructure()
{
    std::vector<Node> nodes = {{valueOf(split_.file().catalog(), "/StructTreeRoot")}};
    std::set<QPDFObjGen> seen;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        QPDFObjectHandle object = nodes[i].object;
        if (!object.isDictionary() ||
            (object.isIndirect() && !seen.insert(object.getObjGen()).second)) {
            continue;
        }
        // Its own page, or that of the next element above which has one.
        const int above =
            nodes[i].parent >= 0 ? nodes[static_cast<std::size_t>(nodes[i].parent)].page : 0;
        const int own = split_.numberOf(object.getKey("/Pg"));
        nodes[i].page = own > 0 ? own : above;
        for (const QPDFObjectHandle& item : listOf(object.getKey("/K"))) {
            QPDFObjectHandle kid = item;
            if (!kid.isInteger() && !isReferenceToContent(kid)) {
                if (kid.isDictionary()) {
                    nodes.push_back({kid, static_cast<int>(i)});
                }
                continue;
            }
            const QPDFObjectHandle target = valueOf(kid, "/Obj");
            const int page = split_.numberOf(valueOf(kid, "/Pg"));
            const auto owner = target.isInitialized() && QPDFObjectHandle(target).isIndirect()
                                   ? ownerOf_.find(target.getObjGen())
                                   : ownerOf_.end();
            const int number = owner != ownerOf_.end() ? owner->second
                               : page > 0              ? page
                                                       : nodes[i].page;
            if (number > 0) {
                const bool gone = owner != ownerOf_.end() ? goes(target) : split_.goes(number - 1);
                (gone ? nodes[i].holdsRemoved : nodes[i].holdsKept) = true;
            }
        }
    }
    passUpwards(nodes);
    structureStays_ = nodes.front().holdsKept;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        add({nodes[i].object, Kind::Structure, nodes[i].page, nodes[i].goes()});
    }
}

void Judgement::judgeThreads()
{
    for (const QPDFObjectHandle& thread : listOf(valueOf(split_.file().catalog(), "/Threads"))) {
        Judged judged{thread, Kind::PrivateData, 0, false};
        bool kept = false;
        std::set<QPDFObjGen> seen;
        QPDFObjectHandle bead = valueOf(thread, "/F");
        while (bead.isDictionary() && bead.isIndirect() && seen.insert(bead.getObjGen()).second) {
            const QPDFObjectHandle page = valueOf(bead, "/P");
            kept |= split_.isKept(page);
            if (split_.isRemoved(page)) {
                judged.goes = true;
                judged.page = split_.numberOf(page);
            }
            bead = valueOf(bead, "/N");
        }
        judged.goes &= !kept;
        add(judged);
    }
}

void Judgement::judgeOutline(const Targets& targets)
{
    std::vector<Node> nodes = {{valueOf(split_.file().catalog(), "/Outlines")}};
    std::set<QPDFObjGen> seen;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        QPDFObjectHandle child = valueOf(nodes[i].object, "/First");
        while (child.isDictionary() && child.isIndirect() &&
               seen.insert(child.getObjGen()).second) {
            nodes.push_back({child, static_cast<int>(i)});
            child = child.getKey("/Next");
        }
    }
    std::vector<OutlineEntry> entries(nodes.size());
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        OutlineEntry& entry = entries[i];
        entry.target = targets.of(nodes[i].object);
        const QPDFObjectHandle element = valueOf(nodes[i].object, "/SE");
        const bool byElement = entry.target.where == Target::Where::Nowhere && goes(element);
        const bool goesOn = !valueOf(valueOf(nodes[i].object, "/A"), "/Next").isNull();
        entry.lostTarget = (split_.leadsToRemoved(entry.target) && !goesOn) || byElement;
        nodes[i].page = byElement ? split_.numberOf(valueOf(element, "/Pg"))
                        : entry.target.where == Target::Where::Page ? entry.target.place + 1
                                                                    : 0;
        QPDFObjectHandle title = valueOf(nodes[i].object, "/Title");
        entry.title = title.isString() ? title.getUTF8Value() : "";
    }
    // An entry goes when its target went and nothing stays below it.
    std::vector<bool> hasBelow(nodes.size());
    for (std::size_t i = nodes.size(); i-- > 1;) {
        const bool goes = entries[i].lostTarget && !hasBelow[i];
        entries[i].judged = {nodes[i].object, Kind::OutlineTitle, nodes[i].page, goes};
        if (!goes) {
            hasBelow[static_cast<std::size_t>(nodes[i].parent)] = true;
        }
    }
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        add(entries[i].judged);
        outline_.push_back(std::move(entries[i]));
    }
}

void Judgement::judgeNames(const Targets& targets)
{
    for (const auto& [name, destination] : targets.names()) {
        const Target target = targets.ofDestination(destination);
        names_.push_back({Kind::Name, target.place + 1, name, split_.leadsToRemoved(target)});
    }
    QPDFObjectHandle trees = valueOf(split_.file().catalog(), "/Names");
    if (!trees.isDictionary()) {
        return;
    }
    for (const auto& [key, tree] : trees.getDictAsMap()) {
        for (auto& [name, value] : treeEntries(tree, "/Names")) {
            if (key != "/Dests" && name.isString()) {
                names_.push_back({Kind::Name, split_.numberOf(value), name.getStringValue(),
                                  split_.isRemoved(value)});
            }
        }
    }
}

} // namespace vantora::verification
