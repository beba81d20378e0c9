#include "KarvelPDFLibrary/transfer/Fields.h"

#include "KarvelPDFLibrary/transfer/DefaultAppearance.h"
#include "KarvelPDFLibrary/transfer/Editing.h"

namespace karvel::transfer {

namespace {

QPDFObjectHandle formOf(Document& document)
{
    QPDFObjectHandle form = document.catalogEntry("/AcroForm");
    return form.isDictionary() ? form : QPDFObjectHandle::newDictionary();
}

/// What makes a kid a field and not only a widget of the field above.
bool isField(QPDFObjectHandle& kid)
{
    return kid.hasKey("/T") || kid.hasKey("/Kids");
}

} // namespace

Fields::Fields(Document& from, Document& to, ObjectCopier& copier)
    : from_(from), to_(to), copier_(copier)
{
}

const std::vector<std::string>& Fields::ownEntries()
{
    static const std::vector<std::string> entries = {"/Parent", "/Kids"};
    return entries;
}

void Fields::addWidget(const QPDFObjectHandle& source, const QPDFObjectHandle& copy)
{
    widgets_.emplace(source.getObjectID(), copy);
    widgetSources_.push_back(source);
}

int Fields::addNode(const QPDFObjectHandle& source, int parent)
{
    Node node{source, parent};
    const auto widget = widgets_.find(source.getObjectID());
    node.isWidget = source.isIndirect() && widget != widgets_.end();
    if (node.isWidget) {
        node.copy = widget->second;
    }
    QPDFObjectHandle type = node.source.getKey("/FT");
    node.type = type.isName() ? type.getName()
                : parent < 0  ? std::string()
                              : nodes_[static_cast<std::size_t>(parent)].type;
    nodes_.push_back(std::move(node));
    return static_cast<int>(nodes_.size()) - 1;
}

void Fields::walk(const QPDFObjectHandle& root)
{
    const auto isNew = [this](QPDFObjectHandle field) {
        return field.isDictionary() &&
               (!field.isIndirect() || seen_.insert(field.getObjectID()).second);
    };
    if (!isNew(root)) {
        return;
    }
    for (std::size_t i = static_cast<std::size_t>(addNode(root, -1)); i < nodes_.size(); ++i) {
        for (QPDFObjectHandle kid : itemsOf(nodes_[i].source.getKey("/Kids"))) {
            if (!isNew(kid)) {
                continue;
            }
            const auto widget = widgets_.find(kid.getObjectID());
            if (isField(kid)) {
                const int node = addNode(kid, static_cast<int>(i));
                nodes_[i].kids.emplace_back(node, QPDFObjectHandle());
            } else if (kid.isIndirect() && widget != widgets_.end()) {
                nodes_[i].kids.emplace_back(-1, widget->second);
            }
        }
    }
}

/// Widgets whose field the form does not list.
void Fields::walkOrphans()
{
    for (const QPDFObjectHandle& widget : widgetSources_) {
        QPDFObjectHandle top = widget;
        std::unordered_set<int> above;
        while (seen_.count(top.getObjectID()) == 0 && above.insert(top.getObjectID()).second &&
               top.getKey("/Parent").isDictionary() && top.getKey("/Parent").isIndirect()) {
            top = top.getKey("/Parent");
        }
        if (seen_.count(top.getObjectID()) == 0 && isField(top)) {
            walk(top);
        }
    }
}

void Fields::plan(bool whole)
{
    for (const QPDFObjectHandle& root : itemsOf(formOf(from_).getKey("/Fields"))) {
        walk(root);
    }
    walkOrphans();
    for (std::size_t i = nodes_.size(); i-- > 0;) {
        Node& node = nodes_[i];
        bool hasFields = false;
        node.isKept = node.isKept || node.isWidget;
        for (const auto& [kid, widget] : node.kids) {
            hasFields = hasFields || kid >= 0;
            node.isKept = node.isKept || kid < 0;
        }
        node.isKept = node.isKept || (whole && !hasFields);
        if (node.isKept && node.parent >= 0) {
            nodes_[static_cast<std::size_t>(node.parent)].isKept = true;
        }
    }
    for (Node& node : nodes_) {
        if (node.isKept && !node.isWidget) {
            node.copy = to_.changes().add(QPDFObjectHandle::newDictionary());
        }
        if (node.source.isIndirect() && !(within() && !node.isKept)) {
            copier_.map(node.source, node.isKept ? node.copy : QPDFObjectHandle::newNull());
        }
    }
}

void Fields::fill()
{
    for (Node& node : nodes_) {
        if (!node.isKept) {
            continue;
        }
        if (!node.isWidget) {
            copier_.copyEntries(node.source, node.copy, ownEntries());
        }
        if (node.type == "/Sig") {
            node.copy.removeKey("/V"); // it signs the bytes of another file
        }
        std::vector<QPDFObjectHandle> kids;
        for (const auto& [kid, widget] : node.kids) {
            const auto index = static_cast<std::size_t>(kid);
            if (kid >= 0 && !nodes_[index].isKept) {
                continue;
            }
            QPDFObjectHandle copy = kid >= 0 ? nodes_[index].copy : widget;
            copy.replaceKey("/Parent", node.copy);
            kids.push_back(copy);
        }
        if (!kids.empty()) {
            node.copy.replaceKey("/Kids", QPDFObjectHandle::newArray(kids));
        }
    }
}

void Fields::rename(QPDFObjectHandle root, std::unordered_set<std::string>& taken)
{
    if (!root.getKey("/T").isString()) {
        return;
    }
    const std::string name = root.getKey("/T").getUTF8Value();
    std::string free = name;
    for (int number = 2; !taken.insert(free).second; ++number) {
        free = name + "-" + std::to_string(number);
    }
    if (free != name) {
        root.replaceKey("/T", QPDFObjectHandle::newUnicodeString(free));
    }
}

/// The fonts that default appearances name. Where the target has another one by the same name, the
/// source's gets a name of its own.
void Fields::joinResources(QPDFObjectHandle form)
{
    QPDFObjectHandle source = formOf(from_).getKey("/DR");
    if (!source.isDictionary()) {
        return;
    }
    QPDFObjectHandle target = editDictionary(to_, form, "/DR");
    for (const auto& [category, entries] : source.getDictAsMap()) {
        QPDFObjectHandle resources = entries;
        if (!resources.isDictionary()) {
            if (!target.hasKey(category)) {
                target.replaceKey(category, copier_.copy(resources));
            }
            continue;
        }
        QPDFObjectHandle there = editDictionary(to_, target, category);
        for (const auto& [name, resource] : resources.getDictAsMap()) {
            std::string free = name;
            if (category == "/Font" && there.hasKey(name) &&
                !isSameFont(there.getKey(name), resource)) {
                for (int number = 2; there.hasKey(free); ++number) {
                    free = name + "-" + std::to_string(number);
                }
                fontNames_[name] = free;
            }
            if (!there.hasKey(free)) {
                there.replaceKey(free, copier_.copy(resource));
            }
        }
    }
}

/// What fields inherit from their form they would now inherit from another one.
void Fields::joinDefaults()
{
    QPDFObjectHandle source = formOf(from_);
    for (Node& node : nodes_) {
        for (const char* key : {"/DA", "/Q"}) {
            if (node.isKept && node.parent < 0 && source.hasKey(key) && !node.copy.hasKey(key)) {
                node.copy.replaceKey(key, copier_.copy(source.getKey(key)));
            }
        }
        if (node.isKept) {
            renameFonts(node.copy, fontNames_);
        }
    }
    for (auto& [number, widget] : widgets_) {
        renameFonts(widget, fontNames_);
    }
}

void Fields::join()
{
    std::vector<QPDFObjectHandle> roots;
    bool hasSignatures = false;
    for (const Node& node : nodes_) {
        hasSignatures = hasSignatures || (node.isKept && node.type == "/Sig");
        if (node.isKept && node.parent < 0) {
            roots.push_back(node.copy);
        }
    }
    if (roots.empty()) {
        return;
    }
    std::unordered_set<std::string> taken;
    for (QPDFObjectHandle root : itemsOf(formOf(to_).getKey("/Fields"))) {
        if (root.isDictionary() && root.getKey("/T").isString()) {
            taken.insert(root.getKey("/T").getUTF8Value());
        }
    }
    QPDFObjectHandle form = editCatalogDictionary(to_, "/AcroForm");
    QPDFObjectHandle fields = editArray(to_, form, "/Fields");
    for (const QPDFObjectHandle& root : roots) {
        rename(root, taken);
        fields.appendItem(root);
    }
    QPDFObjectHandle source = formOf(from_);
    for (const QPDFObjectHandle& field : itemsOf(source.getKey("/CO"))) {
        const QPDFObjectHandle copy = copier_.copied(field);
        if (copy.isInitialized() && copy.isIndirect()) {
            editArray(to_, form, "/CO").appendItem(copy);
        }
    }
    if (within()) {
        return;
    }
    joinResources(form);
    joinDefaults();
    QPDFObjectHandle needAppearances = source.getKey("/NeedAppearances");
    if (needAppearances.isBool() && needAppearances.getBoolValue()) {
        form.replaceKey("/NeedAppearances", QPDFObjectHandle::newBool(true));
    }
    if (hasSignatures) {
        QPDFObjectHandle flags = form.getKey("/SigFlags");
        const long long present = flags.isInteger() ? flags.getIntValue() : 0;
        form.replaceKey("/SigFlags", QPDFObjectHandle::newInteger(present | 1));
    }
}

} // namespace karvel::transfer
