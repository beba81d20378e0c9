#include "VantoraHost/verification/Inventory.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <map>
#include <qpdf/QPDFExc.hh>
#include <set>

namespace vantora::verification {

namespace {

/// Revisions of one object that are looked into; no honest file has more.
constexpr std::size_t mostRevisions = 50;

struct Stray {
    std::size_t offset = 0;
    QPDFObjGen number;
};

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

class InventoryTaker {
public:
    InventoryTaker(PdfFile& file, const Contents& contents) : file_(file), contents_(contents) {}

    std::vector<std::string> take()
    {
        table_ = file_.qpdf().getXRefTable();
        for (QPDFObjectHandle object : file_.qpdf().getAllObjects()) {
            goOver(object, numberText(object.getObjGen()), file_.isPage(object));
        }
        const std::vector<Stray> strays = findStrays();
        goOverStrays(strays);
        if (undecodable_ > 0) {
            notes_.push_back(std::to_string(undecodable_) +
                             " of its streams can't be decoded, such as that in " +
                             firstUndecodable_);
        }
        return std::move(notes_);
    }

private:
    // What an object is made of; what it refers to has its own turn.
    void goOver(QPDFObjectHandle root, const std::string& where, bool isKnownPage)
    {
        std::vector<QPDFObjectHandle> open = {root};
        for (bool isRoot = true; !open.empty(); isRoot = false) {
            QPDFObjectHandle object = open.back();
            open.pop_back();
            if (!isRoot && object.isIndirect()) {
                continue;
            }
            if (object.isString()) {
                contents_.string(object, where);
            } else if (object.isArray()) {
                const auto items = object.getArrayAsVector();
                open.insert(open.end(), items.begin(), items.end());
            } else if (object.isStream()) {
                open.push_back(object.getDict());
                goOverStream(object, where);
            } else if (object.isDictionary()) {
                if (isNamed(object, "/Type", "/Page") && !isKnownPage) {
                    contents_.page(object, where);
                }
                for (const auto& entry : object.getDictAsMap()) {
                    open.push_back(entry.second);
                }
            }
        }
    }

    void goOverStream(QPDFObjectHandle stream, const std::string& where)
    {
        if (isNamed(stream, "/Type", "/XRef")) {
            return;
        }
        const StreamData data = dataOf(stream);
        if (!data.decoded && !isNamed(stream, "/Subtype", "/Image")) {
            firstUndecodable_ = undecodable_++ == 0 ? where : firstUndecodable_;
        }
        contents_.stream(stream, data, where);
        if (isNamed(stream, "/Type", "/ObjStm")) {
            goOverMembers(stream, data.bytes, where);
        }
    }

    // Objects in an object stream (ISO 32000-2, 7.5.7) that the table doesn't list there.
    void goOverMembers(QPDFObjectHandle stream, const std::string& data, const std::string& where)
    {
        const int first = valueOf(stream, "/First").getIntValueAsInt();
        const int count = valueOf(stream, "/N").getIntValueAsInt();
        std::vector<std::pair<int, std::size_t>> members;
        const char* at = data.c_str();
        for (int i = 0; i < count && *at; ++i) {
            char* end = nullptr;
            const long number = std::strtol(at, &end, 10);
            const long offset = std::strtol(end, &end, 10);
            if (end == at || offset < 0) {
                break;
            }
            at = end;
            members.emplace_back(static_cast<int>(number),
                                 static_cast<std::size_t>(first + offset));
        }
        for (std::size_t i = 0; i < members.size(); ++i) {
            const auto& [number, begin] = members[i];
            const auto known = table_.find(QPDFObjGen(number, 0));
            const bool isListed = known != table_.end() && known->second.getType() == 2 &&
                                  known->second.getObjStreamNumber() == stream.getObjectID();
            const std::size_t end = i + 1 < members.size() ? members[i + 1].second : data.size();
            if (isListed || begin >= data.size() || end <= begin) {
                continue;
            }
            const std::string place = "object " + std::to_string(number) + " in " + where;
            try {
                goOver(QPDFObjectHandle::parse(&file_.qpdf(), data.substr(begin, end - begin)),
                       place, isPageNumber(QPDFObjGen(number, 0)));
            } catch (const std::exception&) {
                notes_.push_back(place + " can't be read");
            }
        }
    }

    // An earlier version of a page that is there is no other page.
    bool isPageNumber(QPDFObjGen number)
    {
        return table_.count(number) > 0 && file_.isPage(file_.qpdf().getObject(number));
    }

    std::size_t skipSpace(std::size_t at) const
    {
        const std::string& bytes = file_.bytes();
        while (at < bytes.size() && isSpace(bytes[at])) {
            ++at;
        }
        return at;
    }

    /// Objects by how they begin ("12 0 obj") that no entry of the table leads to; what looks like
    /// one in the data of a stream is none.
    std::vector<Stray> findStrays()
    {
        std::map<std::size_t, QPDFObjGen> listed;
        for (const auto& [number, entry] : table_) {
            if (entry.getType() == 1) {
                listed[skipSpace(static_cast<std::size_t>(entry.getOffset()))] = number;
            }
        }
        std::vector<Stray> strays;
        const std::string& bytes = file_.bytes();
        Forward ends(bytes, "endobj");
        Forward streams(bytes, "stream");
        for (std::size_t at = bytes.find("obj"); at != std::string::npos;
             at = bytes.find("obj", at)) {
            Stray stray;
            if (!readHeader(at, stray)) {
                at += 3;
                continue;
            }
            const auto known = listed.find(stray.offset);
            at = endOfData(at,
                           known == listed.end() ? QPDFObjectHandle::newNull()
                                                 : file_.qpdf().getObject(known->second),
                           ends, streams);
            if (known == listed.end()) {
                strays.push_back(stray);
            }
        }
        return strays;
    }

    // Whether "obj" at some place ends "12 0 obj".
    bool readHeader(std::size_t at, Stray& stray) const
    {
        const std::string& bytes = file_.bytes();
        std::size_t numbers[2];
        for (std::size_t& number : numbers) {
            std::size_t end = at;
            while (end > 0 && isSpace(bytes[end - 1])) {
                --end;
            }
            std::size_t begin = end;
            while (begin > 0 && end - begin < 10 && isDigit(bytes[begin - 1])) {
                --begin;
            }
            if (begin == end || (&number == &numbers[1] && end == at)) {
                return false;
            }
            number = std::strtoul(bytes.substr(begin, end - begin).c_str(), nullptr, 10);
            at = begin;
        }
        if (numbers[1] == 0 || numbers[1] > 8388607 || numbers[0] > 65535) {
            return false;
        }
        stray.offset = at;
        stray.number = QPDFObjGen(static_cast<int>(numbers[1]), static_cast<int>(numbers[0]));
        return true;
    }

    /// Finds a word from places that only go forward, each byte once.
    class Forward {
    public:
        Forward(const std::string& bytes, const char* word) : bytes_(bytes), word_(word) {}

        std::size_t from(std::size_t at)
        {
            if (!looked_ || next_ < at) {
                next_ = std::min(bytes_.find(word_, at), bytes_.size());
                looked_ = true;
            }
            return next_;
        }

    private:
        const std::string& bytes_;
        const char* word_;
        std::size_t next_ = 0;
        bool looked_ = false;
    };

    bool followsDictionary(std::size_t at) const
    {
        const std::string& bytes = file_.bytes();
        while (at > 0 && isSpace(bytes[at - 1])) {
            --at;
        }
        return at > 0 && bytes[at - 1] == '>';
    }

    // Behind an object's data, if it is a stream; else behind the word at `at`.
    std::size_t endOfData(std::size_t at, QPDFObjectHandle known, Forward& ends, Forward& streams)
    {
        const std::size_t size = file_.bytes().size();
        const std::size_t data = streams.from(at);
        if (data >= size || data > ends.from(at) || !followsDictionary(data)) {
            return at + 3;
        }
        QPDFObjectHandle length =
            known.isStream() ? valueOf(known, "/Length") : QPDFObjectHandle::newNull();
        std::size_t end = data + 6;
        if (length.isInteger()) {
            const auto skipped =
                static_cast<std::size_t>(std::max<long long>(length.getIntValue(), 0));
            end += std::min(skipped, size - std::min(end, size));
        } else {
            end = std::min(file_.bytes().find("endstream", end), size);
        }
        return end;
    }

    /// Strays are read, and decrypted, by giving them an entry in a table at the end of a copy.
    void goOverStrays(const std::vector<Stray>& strays)
    {
        std::map<QPDFObjGen, std::vector<std::size_t>> revisions;
        for (const Stray& stray : strays) {
            revisions[stray.number].push_back(stray.offset);
        }
        for (std::size_t revision = 0; !revisions.empty(); ++revision) {
            std::map<QPDFObjGen, std::size_t> chosen;
            for (auto at = revisions.begin(); at != revisions.end();) {
                if (revision < at->second.size()) {
                    chosen[at->first] = at->second[revision];
                    ++at;
                } else {
                    at = revisions.erase(at);
                }
            }
            if (revision == mostRevisions && !chosen.empty()) {
                notes_.push_back("of some objects more revisions are left than are looked into");
                return;
            }
            if (!chosen.empty()) {
                goOverRevision(chosen);
            }
        }
    }

    void goOverRevision(const std::map<QPDFObjGen, std::size_t>& chosen)
    {
        const std::string copy = file_.bytes() + tableOf(chosen);
        QPDF reader;
        reader.setSuppressWarnings(true);
        reader.setAttemptRecovery(false);
        try {
            reader.processMemoryFile("", copy.data(), copy.size(), file_.password().c_str());
        } catch (const std::exception&) {
            notes_.push_back(std::to_string(chosen.size()) +
                             " objects that its table doesn't list can't be read, such as that at "
                             "byte " +
                             std::to_string(chosen.begin()->second));
            return;
        }
        for (const auto& [number, offset] : chosen) {
            QPDFObjectHandle object = reader.getObject(number);
            goOver(object, numberText(number) + " at byte " + std::to_string(offset),
                   isPageNumber(number));
        }
    }

    std::string tableOf(const std::map<QPDFObjGen, std::size_t>& chosen)
    {
        const std::string& bytes = file_.bytes();
        const std::size_t start = bytes.size() + 1;
        std::string table = "\nxref\n";
        int largest = 0;
        for (const auto& [number, offset] : chosen) {
            char row[64];
            std::snprintf(row, sizeof row, "%d 1\n%010zu %05d n \n", number.getObj(), offset,
                          number.getGen());
            table += row;
            largest = std::max(largest, number.getObj());
        }
        QPDFObjectHandle trailer = file_.qpdf().getTrailer();
        if (!table_.empty()) {
            largest = std::max(largest, table_.rbegin()->first.getObj());
        }
        table += "trailer\n<< /Size " + std::to_string(largest + 1);
        for (const char* key : {"/Root", "/Encrypt", "/ID"}) {
            if (QPDFObjectHandle value = trailer.getKey(key); !value.isNull()) {
                table += std::string(" ") + key + " " + value.unparse();
            }
        }
        const std::size_t last = bytes.rfind("startxref");
        if (last != std::string::npos) {
            table +=
                " /Prev " + std::to_string(std::strtoull(bytes.c_str() + last + 9, nullptr, 10));
        }
        return table + " >>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
    }

    PdfFile& file_;
    const Contents& contents_;
    std::map<QPDFObjGen, QPDFXRefEntry> table_;
    std::vector<std::string> notes_;
    std::size_t undecodable_ = 0;
    std::string firstUndecodable_;
};

} // namespace

std::vector<std::string> takeInventory(PdfFile& file, const Contents& contents)
{
    return InventoryTaker(file, contents).take();
}

} // namespace vantora::verification
