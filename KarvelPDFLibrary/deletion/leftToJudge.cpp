#include "KarvelPDFLibrary/base/Text.h"
#include "KarvelPDFLibrary/deletion/modules.h"
#include "KarvelPDFLibrary/objects/NameTree.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace karvel::deletion {

namespace {

std::size_t namesIn(Removal& removal, const char* tree)
{
    QPDFObjectHandle names = removal.catalogEntry("/Names");
    return names.isDictionary() ? readNameTree(names.getKey(tree)).size() : 0;
}

/// The texts of the information dictionary that may come from pages; others say who and what made
/// the document, and when.
std::string describingTexts(QPDFObjectHandle information)
{
    constexpr std::array<const char*, 3> named = {"/Title", "/Subject", "/Keywords"};
    constexpr std::array<const char*, 6> others = {"/Author",  "/Creator", "/Producer",
                                                   "/ModDate", "/Trapped", "/CreationDate"};
    if (!information.isDictionary()) {
        return {};
    }
    std::string texts;
    std::size_t further = 0;
    for (const auto& [key, value] : information.getDictAsMap()) {
        QPDFObjectHandle text = value;
        if (!text.isString() || text.getStringValue().empty() ||
            std::find(others.begin(), others.end(), std::string_view(key)) != others.end()) {
            continue;
        }
        if (std::find(named.begin(), named.end(), std::string_view(key)) == named.end()) {
            ++further;
        } else {
            texts += (texts.empty() ? "" : ", ") + key.substr(1);
        }
    }
    if (further > 0) {
        texts +=
            (texts.empty() ? "" : ", ") + text::counted(further, "further text", "further texts");
    }
    return texts;
}

bool isScript(QPDFObjectHandle action)
{
    return action.isDictionary() && action.getKey("/S").isName() &&
           action.getKey("/S").getName() == "/JavaScript";
}

std::size_t scriptsOf(Removal& removal)
{
    std::size_t scripts = namesIn(removal, "/JavaScript");
    scripts += isScript(removal.catalogEntry("/OpenAction")) ? 1 : 0;
    QPDFObjectHandle further = removal.catalogEntry("/AA");
    if (further.isDictionary()) {
        for (const auto& [event, action] : further.getDictAsMap()) {
            scripts += isScript(action) ? 1 : 0;
        }
    }
    return scripts;
}

std::size_t titledThreads(Removal& removal)
{
    std::size_t titled = 0;
    QPDFObjectHandle threads = removal.catalogEntry("/Threads");
    if (threads.isArray()) {
        for (QPDFObjectHandle thread : threads.getArrayAsVector()) {
            QPDFObjectHandle about = thread.isDictionary() && !removal.isGone(thread)
                                         ? thread.getKey("/I")
                                         : QPDFObjectHandle::newNull();
            titled += about.isDictionary() && about.hasKey("/Title") ? 1 : 0;
        }
    }
    return titled;
}

} // namespace

void noteWhatIsLeft(Removal& removal)
{
    if (const std::size_t files = namesIn(removal, "/EmbeddedFiles"); files > 0) {
        removal.note(text::counted(files, "attached file", "attached files"));
    }
    if (removal.catalogEntry("/Metadata").isStream()) {
        removal.note("the document's XMP metadata");
    }
    const std::string described = describingTexts(removal.document().trailerEntry("/Info"));
    if (!described.empty()) {
        removal.note("the document's information: " + described);
    }
    if (const std::size_t scripts = scriptsOf(removal); scripts > 0) {
        removal.note(text::counted(scripts, "script of the document", "scripts of the document"));
    }
    if (const std::size_t threads = titledThreads(removal); threads > 0) {
        removal.note("the titles of " +
                     text::counted(threads, "article thread", "article threads"));
    }
}

} // namespace karvel::deletion
