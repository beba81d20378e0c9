#include "KarvelPDFLibrary/deletion/ContentNames.h"

#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

/// What a stream and what all streams of a removal may come to when they are decoded.
constexpr std::size_t mostOfOneStream = 128U * 1024 * 1024;
constexpr std::size_t mostOfAll = 1024U * 1024 * 1024;

} // namespace

void forEachName(std::string_view data, const std::function<void(const std::string&)>& found)
{
    std::string name; // used again, since content has thousands
    for (std::size_t at = 0; (at = data.find('/', at)) != std::string_view::npos;) {
        const std::size_t start = at++;
        bool isEscaped = false;
        while (at < data.size() && !index::isWhiteSpace(data[at]) &&
               !index::isDelimiter(data[at])) {
            isEscaped = isEscaped || data[at] == '#';
            ++at;
        }
        name.assign(data.substr(start, at - start));
        if (isEscaped) {
            name.replace(1, std::string::npos,
                         index::decodedName(data.substr(start + 1, at - start - 1)));
        }
        found(name);
    }
}

bool ContentNames::read(QPDFObjectHandle stream, std::string& data)
{
    if (!stream.isStream()) {
        return stream.isNull();
    }
    try {
        data = index::boundedData(stream, std::min(mostOfOneStream, mostOfAll - readSoFar_));
    } catch (const std::exception&) {
        return false;
    }
    readSoFar_ += data.size();
    return true;
}

namespace {

/// Follows names in content to the resources that they stand for.
class NameFollower {
public:
    NameFollower(QPDFObjectHandle resources, std::set<std::string>& names,
                 const std::function<bool(QPDFObjectHandle)>& sharesResources)
        : resources_(std::move(resources)), names_(names), sharesResources_(sharesResources)
    {
    }

    /// Adds a name, and what it leads to.
    void use(const std::string& name)
    {
        if (names_.count(name) > 0) {
            return;
        }
        waiting_.push_back(name);
        while (!waiting_.empty()) {
            const std::string next = std::move(waiting_.back());
            waiting_.pop_back();
            if (names_.insert(next).second && resources_.isDictionary()) {
                follow(next);
            }
        }
    }

    /// Streams to be read.
    std::vector<QPDFObjectHandle> open;

private:
    void follow(const std::string& name)
    {
        for (const char* category : {"/XObject", "/Pattern"}) {
            QPDFObjectHandle drawn = entryOf(category, name);
            if (drawn.isStream()) {
                draw(drawn);
            }
        }
        QPDFObjectHandle font = entryOf("/Font", name);
        if (font.isDictionary() && !font.getKey("/Resources").isDictionary() &&
            font.getKey("/CharProcs").isDictionary()) {
            for (auto& [glyph, stream] : font.getKey("/CharProcs").getDictAsMap()) {
                if (QPDFObjectHandle(stream).isStream()) {
                    draw(stream);
                }
            }
        }
        QPDFObjectHandle state = entryOf("/ExtGState", name);
        QPDFObjectHandle mask =
            state.isDictionary() ? state.getKey("/SMask") : QPDFObjectHandle::newNull();
        QPDFObjectHandle group =
            mask.isDictionary() ? mask.getKey("/G") : QPDFObjectHandle::newNull();
        if (group.isStream()) {
            draw(group);
        }
        addNamesIn(entryOf("/ColorSpace", name));
    }

    QPDFObjectHandle entryOf(const char* category, const std::string& name)
    {
        QPDFObjectHandle entries = resources_.getKey(category);
        return entries.isDictionary() ? entries.getKey(name) : QPDFObjectHandle::newNull();
    }

    void draw(QPDFObjectHandle stream)
    {
        if (!seen_.insert(stream.getObjectID()).second) {
            return;
        }
        QPDFObjectHandle dictionary = stream.getDict();
        addNamesIn(dictionary.getKey("/ColorSpace"));
        QPDFObjectHandle group = dictionary.getKey("/Group");
        if (group.isDictionary()) {
            addNamesIn(group.getKey("/CS"));
        }
        QPDFObjectHandle subtype = dictionary.getKey("/Subtype");
        const bool image = subtype.isName() && subtype.getName() == "/Image";
        QPDFObjectHandle own = dictionary.getKey("/Resources");
        if (!image && (!own.isDictionary() || sharesResources_(own))) {
            open.push_back(stream);
        }
    }

    /// Some programs call colour spaces by their names among the resources where the standard
    /// allows names of device colour spaces.
    void addNamesIn(QPDFObjectHandle colourSpace)
    {
        if (colourSpace.isName()) {
            waiting_.push_back(colourSpace.getName());
        } else if (colourSpace.isArray()) {
            for (QPDFObjectHandle part : colourSpace.getArrayAsVector()) {
                if (part.isName()) {
                    waiting_.push_back(part.getName());
                }
            }
        }
    }

    QPDFObjectHandle resources_;
    std::set<std::string>& names_;
    const std::function<bool(QPDFObjectHandle)>& sharesResources_;
    std::vector<std::string> waiting_;
    std::unordered_set<int> seen_;
};

} // namespace

bool ContentNames::collect(const QPDFObjectHandle& content, QPDFObjectHandle resources,
                           const std::function<bool(QPDFObjectHandle)>& sharesResources,
                           std::set<std::string>& names)
{
    NameFollower follower(std::move(resources), names, sharesResources);
    follower.open = {content};
    if (QPDFObjectHandle(content).isArray()) {
        follower.open = QPDFObjectHandle(content).getArrayAsVector();
    }
    while (!follower.open.empty()) {
        QPDFObjectHandle stream = follower.open.back();
        follower.open.pop_back();
        std::string data;
        if (!read(stream, data)) {
            return false;
        }
        forEachName(data, [&](const std::string& name) { follower.use(name); });
    }
    return true;
}

} // namespace karvel::deletion
