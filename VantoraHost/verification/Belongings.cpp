#include "VantoraHost/verification/Leftovers.h"

#include <algorithm>

namespace vantora::verification {

namespace {

// How deep a list beside a value may name its pages.
constexpr int deepestList = 3;

/// The pages that a value names itself or in a list.
void addPages(const Split& split, QPDFObjectHandle value, int depth, bool& removed, bool& kept)
{
    removed |= split.isRemoved(value);
    kept |= split.isKept(value);
    if (value.isArray() && depth < deepestList) {
        for (const QPDFObjectHandle& item : value.getArrayAsVector()) {
            addPages(split, item, depth + 1, removed, kept);
        }
    }
}

} // namespace

Belongings::Belongings(const Split& split, const Judgement& judgement)
    : split_(split), judgement_(judgement),
      others_(split.file(), [this](QPDFObjectHandle object) { return keepsOutOfOthers(object); }),
      removed_(split.file(), [this](QPDFObjectHandle object) {
          return others_.passed(object) || judgement_.isJudged(object);
      })
{
    const auto& pages = split.file().pages();
    for (const int place : split.kept()) {
        others_.page(pages[static_cast<std::size_t>(place)], place + 1);
    }
    for (const Judged& judged : judgement.all()) {
        if (!judged.goes) {
            others_.object(judged.object, judged.kind, judged.page, {"/K", "/Kids"});
        }
    }
    walkDocument();
    Walk first(split.file(), [this](QPDFObjectHandle object) {
        return others_.passed(object) || judgement_.isJudged(object);
    });
    walkRemovedPages(first);
    walkNames(first);
    walkRemovedPages(removed_);
    for (const QPDFObjectHandle& object : aboutRemoved_) {
        if (!others_.passed(object)) {
            removed_.object(object, Kind::PrivateData, 0);
        }
    }
}

void Belongings::walkRemovedPages(Walk& walk)
{
    const auto& pages = split_.file().pages();
    for (const int place : split_.removed()) {
        if (split_.isRemoved(pages[static_cast<std::size_t>(place)].object)) {
            walk.page(pages[static_cast<std::size_t>(place)], place + 1);
        }
    }
    for (const Judged& judged : judgement_.all()) {
        if (judged.goes && !others_.passed(judged.object)) {
            walk.object(judged.object, judged.kind, judged.page, {"/K", "/Kids"});
        }
    }
}

// What stands beside a reference to removed pages is about these, but for actions, whose other
// steps go on.
bool Belongings::isOnlyAboutRemoved(QPDFObjectHandle object) const
{
    if (!object.isDictionary() || isNamed(object, "/S", "/GoTo")) {
        return false;
    }
    bool removed = false;
    bool kept = false;
    for (const auto& entry : object.getDictAsMap()) {
        addPages(split_, entry.second, 0, removed, kept);
    }
    return removed && !kept;
}

bool Belongings::keepsOutOfOthers(QPDFObjectHandle object)
{
    // Elements and entries refer back to what holds all of them.
    if (judgement_.isJudged(object) || isNamed(object, "/Type", "/StructTreeRoot") ||
        isNamed(object, "/Type", "/Outlines")) {
        return true;
    }
    if (isOnlyAboutRemoved(object)) {
        aboutRemoved_.push_back(object);
        return true;
    }
    return false;
}

void Belongings::walkDocument()
{
    QPDFObjectHandle catalog = split_.file().catalog();
    others_.object(catalog, Kind::Metadata, 0,
                   {"/Pages", "/Outlines", "/StructTreeRoot", "/Threads", "/PageLabels", "/Dests",
                    "/Names", "/AcroForm"});
    if (QPDFObjectHandle form = valueOf(catalog, "/AcroForm"); form.isDictionary()) {
        others_.object(form, Kind::FormValue, 0, {"/Fields", "/CO", "/XFA"});
    }
    if (QPDFObjectHandle tags = valueOf(catalog, "/StructTreeRoot"); tags.isDictionary()) {
        others_.object(tags, Kind::Structure, 0, {"/K", "/IDTree", "/ParentTree"});
    }
    QPDFObjectHandle trailer = split_.file().qpdf().getTrailer();
    for (const auto& [key, value] : trailer.getDictAsMap()) {
        if (key != "/Root" && key != "/Encrypt" && key != "/ID") {
            others_.object(value, Kind::Metadata, 0);
        }
    }
}

// Media, files and appearances that pages use are listed by name as well; the last user takes them
// along.
void Belongings::walkNames(const Walk& ofRemovedPages)
{
    static const std::set<std::string> used = {"/Renditions", "/EmbeddedFiles", "/AP"};
    const auto isUsedByRemoved = [&](QPDFObjectHandle value) {
        bool passed = ofRemovedPages.passed(value);
        if (QPDFObjectHandle files = valueOf(value, "/EF"); files.isDictionary()) {
            for (const auto& file : files.getDictAsMap()) {
                passed |= ofRemovedPages.passed(file.second);
            }
        }
        return passed;
    };
    QPDFObjectHandle names = valueOf(split_.file().catalog(), "/Names");
    if (!names.isDictionary()) {
        return;
    }
    for (const auto& [key, tree] : names.getDictAsMap()) {
        if (key == "/IDS" || key == "/URLS") {
            continue; // what pages were captured from is theirs (ISO 32000-2, 14.10)
        }
        for (auto& [name, value] : treeEntries(tree, "/Names")) {
            if (key == "/Dests" || split_.file().isPage(value)) {
                continue;
            }
            if (used.count(key) > 0 && name.isString() && isUsedByRemoved(value)) {
                const Kind kind = key == "/EmbeddedFiles" ? Kind::Attachment : Kind::Name;
                listedForRemoved_.push_back({kind, 0, name.getStringValue(), true});
                aboutRemoved_.push_back(value);
            } else if (!keepsOutOfOthers(value)) {
                others_.object(value, Kind::Name, 0);
            }
        }
    }
}

} // namespace vantora::verification
