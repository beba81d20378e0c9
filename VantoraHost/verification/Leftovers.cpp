#include "VantoraHost/verification/Leftovers.h"

#include "VantoraHost/verification/Inventory.h"
#include "VantoraHost/verification/Patterns.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace vantora::verification {

namespace {

/// Data and strings below are too short to be anybody's own.
constexpr std::size_t shortestData = 12;
constexpr std::size_t shortestString = 4;
constexpr std::size_t shortestText = 12; ///< in characters
constexpr std::size_t longestText = 256; ///< in bytes, of what is compared

/// Of data as they stand in the file, what tells them apart.
constexpr std::size_t shortestRaw = 32;
constexpr std::size_t longestRaw = 64 * 1024;

/// Something that belonged to removed pages only.
struct Trace {
    Kind kind = Kind::Text;
    int page = 0;
    std::string shown;   ///< for people
    std::string foundIn; ///< empty: nowhere yet
    bool othersHaveIt = false;
};

using Digest = std::pair<std::size_t, std::size_t>;

Digest digestOf(const std::string& bytes)
{
    return {bytes.size(), std::hash<std::string_view>()(bytes)};
}

std::string textOf(QPDFObjectHandle string)
{
    return string.getUTF8Value();
}

std::string fingerprintOf(const QPDFObjectHandle& page)
{
    std::string all;
    for (const QPDFObjectHandle& stream : contentsOf(page)) {
        const Digest digest = digestOf(dataOf(stream).bytes);
        all += std::to_string(digest.first) + "-" + std::to_string(digest.second) + " ";
    }
    return all;
}

class Search {
public:
    Search(const Split& split, const Judgement& judgement, const Belongings& belongings,
           Findings& findings)
        : split_(split), judgement_(judgement), belongings_(belongings), findings_(findings)
    {
    }

    void gather(const Viewed* viewed)
    {
        gatherNames();
        gatherLabels();
        for (const Piece& piece : belongings_.ofRemoved()) {
            if (QPDFObjectHandle(piece.object).isStream()) {
                gatherStream(piece);
            } else {
                gatherString(piece.kind, piece.page,
                             QPDFObjectHandle(piece.object).getStringValue(), textOf(piece.object));
            }
        }
        if (viewed) {
            gatherTexts(*viewed);
        }
    }

    void lookIn(PdfFile& after)
    {
        const auto notes = takeInventory(
            after, {[&](QPDFObjectHandle string, const std::string& where) {
                        lookInString(string.getStringValue(), textOf(string), where);
                    },
                    [&](QPDFObjectHandle stream, const StreamData& data, const std::string& where) {
                        lookInStream(stream, data.bytes, where);
                    },
                    [&](QPDFObjectHandle page, const std::string& where) {
                        judgeStrayPage(page, where);
                    }});
        lookInNames(after);
        const auto foundInBytes = [&](std::size_t id) { found(id, "the file's bytes"); };
        raw_.findIn(after.bytes(), foundInBytes);
        texts_.findIn(squeezed(after.bytes()), foundInBytes);
        for (const std::string& note : notes) {
            findings_.notTold(note);
        }
    }

    void report()
    {
        askOthers();
        std::size_t shared = 0;
        for (const Trace& trace : traces_) {
            if (trace.othersHaveIt) {
                ++shared;
            } else if (!trace.foundIn.empty()) {
                findings_.add(trace.kind, trace.page, trace.foundIn, trace.shown);
            }
        }
        findings_.verdict().things = traces_.size() + split_.removed().size();
        if (shared > 0) {
            findings_.notTold("texts and data of removed pages that are the document's or kept "
                              "pages' as well: " +
                              std::to_string(shared));
        }
        if (undecoded_ > 0) {
            findings_.notTold("streams of removed pages that can't be decoded, and were looked for "
                              "as they stand in the file: " +
                              std::to_string(undecoded_));
        }
        if (alike_ > 0) {
            findings_.notTold(std::to_string(alike_) +
                              " texts begin like too many others to be looked for");
        }
        if (belongings_.guessed()) {
            findings_.notTold("content that can't be decoded may use any of its page's resources");
        }
    }

private:
    std::size_t add(Kind kind, int page, std::string shown)
    {
        traces_.push_back({kind, page, std::move(shown), {}, false});
        return traces_.size() - 1;
    }

    void found(std::size_t id, const std::string& where)
    {
        if (traces_[id].foundIn.empty()) {
            traces_[id].foundIn = where;
        }
    }

    void addString(const std::string& bytes, std::size_t id)
    {
        if (bytes.size() >= shortestString) {
            strings_.emplace(bytes, id);
        }
    }

    void addPattern(const std::string& text, std::size_t id)
    {
        const std::string looked = squeezed(text);
        if (characters(looked) >= shortestText && !texts_.add(looked.substr(0, longestText), id)) {
            ++alike_;
        }
    }

    void gatherString(Kind kind, int page, const std::string& bytes, const std::string& text)
    {
        if (bytes.size() < shortestString || !strings_.emplace(bytes, traces_.size()).second) {
            return;
        }
        const std::size_t id = add(kind, page, quoted(text));
        if (kind != Kind::Resource) { // fonts list glyphs in strings, and name them elsewhere
            addPattern(text, id);
        }
    }

    void gatherStream(const Piece& piece)
    {
        const StreamData data = dataOf(piece.object);
        undecoded_ += data.decoded || piece.kind == Kind::Image ? 0 : 1;
        if (data.bytes.size() < shortestData ||
            !streams_.emplace(digestOf(data.bytes), traces_.size()).second) {
            return;
        }
        const std::size_t id = add(piece.kind, piece.page,
                                   std::to_string(data.bytes.size()) + " bytes that were in " +
                                       numberText(QPDFObjectHandle(piece.object).getObjGen()));
        if (!split_.file().qpdf().isEncrypted()) {
            const std::string bytes = rawDataOf(piece.object);
            if (bytes.size() >= shortestRaw) {
                raw_.add(std::string_view(bytes).substr(0, longestRaw), id);
            }
        }
    }

    void gatherNames()
    {
        std::vector<NamedThing> go = belongings_.listedForRemoved();
        std::set<std::string> stay;
        for (const NamedThing& name : judgement_.names()) {
            if (name.goes) {
                go.push_back(name);
            } else {
                stay.insert(name.name);
            }
        }
        for (const NamedThing& name : belongings_.listedForRemoved()) {
            stay.erase(name.name);
        }
        for (const NamedThing& name : go) {
            if (stay.count(name.name) == 0) {
                const std::size_t id = add(name.kind, name.page, quoted(name.name));
                names_.emplace(name.name, id);
                addString(name.name, id);
            }
        }
        stayingNames_ = std::move(stay);
    }

    void gatherLabels()
    {
        const std::vector<PageLabel> labels = labelsOf(split_.file());
        std::set<std::string> stay = {""};
        for (const int place : labels.empty() ? std::vector<int>{} : split_.kept()) {
            stay.insert(labels[static_cast<std::size_t>(place)].prefix);
        }
        for (const int place : labels.empty() ? std::vector<int>{} : split_.removed()) {
            const std::string& prefix = labels[static_cast<std::size_t>(place)].prefix;
            if (stay.insert(prefix).second) {
                const std::size_t id = add(Kind::Label, place + 1, quoted(prefix));
                prefixes_.emplace(prefix, id);
                addString(prefix, id);
            }
        }
    }

    // Lines of removed pages that no kept page shows.
    void gatherTexts(const Viewed& viewed)
    {
        std::map<std::string, std::size_t> ids;
        for (const int place : split_.removed()) {
            const auto text = viewed.text(place + 1);
            if (!text) {
                findings_.notTold("the text of page " + std::to_string(place + 1) +
                                  " can't be read");
                continue;
            }
            std::istringstream lines(*text);
            for (std::string line; std::getline(lines, line);) {
                const std::string looked = squeezed(line).substr(0, longestText);
                if (characters(looked) < shortestText || ids.count(looked) > 0) {
                    continue;
                }
                const std::size_t id = add(Kind::Text, place + 1, quoted(line));
                ids.emplace(looked, id);
                if (!texts_.add(looked, id)) {
                    ++alike_;
                }
            }
        }
        for (const int place : ids.empty() ? std::vector<int>{} : split_.kept()) {
            texts_.findIn(squeezed(viewed.text(place + 1).value_or("")),
                          [&](std::size_t id) { traces_[id].othersHaveIt = true; });
        }
    }

    void lookInString(const std::string& bytes, const std::string& text, const std::string& where)
    {
        if (const auto same = strings_.find(bytes); same != strings_.end()) {
            found(same->second, where);
        }
        texts_.findIn(squeezed(text), [&](std::size_t id) { found(id, where); });
    }

    void lookInStream(const QPDFObjectHandle& stream, const std::string& data,
                      const std::string& where)
    {
        if (const auto same = streams_.find(digestOf(data)); same != streams_.end()) {
            found(same->second, where);
        }
        if (isNamed(stream, "/Subtype", "/Image") || isNamed(stream, "/Type", "/ObjStm")) {
            return; // what object streams hold has its own turn
        }
        const auto take = [&](std::size_t id) { found(id, where); };
        texts_.findIn(squeezed(data), take);
        texts_.findIn(squeezed(stringsIn(data)), take);
    }

    void judgeStrayPage(const QPDFObjectHandle& page, const std::string& where)
    {
        if (!knowsStrayPages_) { // such as templates, which the document had before
            knowsStrayPages_ = true;
            takeInventory(split_.file(),
                          {[](QPDFObjectHandle, const std::string&) {},
                           [](QPDFObjectHandle, const StreamData&, const std::string&) {},
                           [&](QPDFObjectHandle known, const std::string&) {
                               allowedPages_.insert(fingerprintOf(known));
                           }});
        }
        if (allowedPages_.count(fingerprintOf(page)) == 0) {
            findings_.add(Kind::PageObject, removedPageLike(page), where,
                          "a page that the document doesn't list");
        }
    }

    int removedPageLike(const QPDFObjectHandle& page)
    {
        const std::string fingerprint = fingerprintOf(page);
        for (const int place : split_.removed()) {
            const auto& known = split_.file().pages()[static_cast<std::size_t>(place)].object;
            if (fingerprintOf(known) == fingerprint) {
                return place + 1;
            }
        }
        return 0;
    }

    void lookInNames(PdfFile& after)
    {
        const Targets targets(after);
        for (const auto& [name, id] : names_) {
            if (targets.names().count(name) > 0) {
                found(id, "the document's names");
            }
        }
        for (const PageLabel& label : labelsOf(after)) {
            if (const auto same = prefixes_.find(label.prefix); same != prefixes_.end()) {
                found(same->second, "the page labels");
            }
        }
    }

    void askString(const std::string& bytes, const std::string& text)
    {
        const auto take = [&](std::size_t id) { traces_[id].othersHaveIt = true; };
        if (const auto same = strings_.find(bytes); same != strings_.end()) {
            take(same->second);
        }
        texts_.findIn(squeezed(text), take);
    }

    /// Of what was found, what somebody else had as well.
    void askOthers()
    {
        if (std::all_of(traces_.begin(), traces_.end(),
                        [](const Trace& trace) { return trace.foundIn.empty(); })) {
            return;
        }
        const auto take = [&](std::size_t id) { traces_[id].othersHaveIt = true; };
        for (const Piece& piece : belongings_.ofOthers()) {
            QPDFObjectHandle object = piece.object;
            if (object.isString()) {
                askString(object.getStringValue(), textOf(object));
                continue;
            }
            // One stream may hold another's bytes, such as one more line of the same content.
            raw_.findIn(rawDataOf(object), take);
            const std::string data = dataOf(object).bytes;
            if (const auto same = streams_.find(digestOf(data)); same != streams_.end()) {
                take(same->second);
            }
            if (!isNamed(object, "/Subtype", "/Image")) {
                texts_.findIn(squeezed(data), take);
                texts_.findIn(squeezed(stringsIn(data)), take);
            }
        }
        for (const std::string& name : stayingNames_) {
            askString(name, name);
        }
    }

    const Split& split_;
    const Judgement& judgement_;
    const Belongings& belongings_;
    Findings& findings_;
    std::vector<Trace> traces_;
    std::map<std::string, std::size_t> strings_;
    std::map<Digest, std::size_t> streams_;
    std::map<std::string, std::size_t> names_;
    std::set<std::string> stayingNames_;
    std::map<std::string, std::size_t> prefixes_;
    Patterns texts_;
    Patterns raw_;
    std::size_t alike_ = 0;
    std::size_t undecoded_ = 0;
    bool knowsStrayPages_ = false;
    std::set<std::string> allowedPages_;
};

} // namespace

std::string quoted(const std::string& utf8)
{
    constexpr std::size_t most = 60;
    std::size_t end = std::min(utf8.size(), most);
    while (end > 0 && end < utf8.size() &&
           (static_cast<unsigned char>(utf8[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return "\"" + utf8.substr(0, end) + (end < utf8.size() ? "…" : "") + "\"";
}

void findLeftovers(const Split& split, const Judgement& judgement, const Belongings& belongings,
                   PdfFile& after, const Viewed* viewedBefore, Findings& findings)
{
    Search search(split, judgement, belongings, findings);
    search.gather(viewedBefore);
    search.lookIn(after);
    search.report();
}

} // namespace vantora::verification
