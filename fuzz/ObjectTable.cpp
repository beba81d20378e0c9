#include "fuzz/ObjectTable.h"

#include <cctype>
#include <cstdio>
#include <map>
#include <string_view>
#include <utility>

namespace fuzz {

namespace {

struct Place {
    std::size_t offset;
    int generation;
};

// The number that ends before `end`, which is moved to its first digit; -1 when there is none.
int numberBefore(std::string_view text, std::size_t& end)
{
    int value = 0;
    int factor = 1;
    std::size_t digits = 0;
    while (end > 0 && std::isdigit(static_cast<unsigned char>(text[end - 1])) != 0 && digits < 5) {
        --end;
        ++digits;
        value += (text[end] - '0') * factor;
        factor *= 10;
    }
    return digits == 0 ? -1 : value;
}

std::map<int, Place> objectsOf(std::string_view text)
{
    std::map<int, Place> objects;
    for (std::size_t at = text.find(" obj"); at != std::string_view::npos;
         at = text.find(" obj", at + 4)) {
        std::size_t start = at;
        const int generation = numberBefore(text, start);
        if (generation < 0 || start == 0 || text[start - 1] != ' ') {
            continue;
        }
        --start;
        const int number = numberBefore(text, start);
        if (number > 0 && number < 10000) {
            objects[number] = {start, generation};
        }
    }
    return objects;
}

std::string trailerOf(std::string_view text)
{
    const std::size_t trailer = text.rfind("trailer");
    const std::size_t open = trailer == std::string_view::npos ? trailer : text.find("<<", trailer);
    const std::size_t close = text.find("startxref", open == std::string_view::npos ? 0 : open);
    if (open == std::string_view::npos || close == std::string_view::npos) {
        return "<< /Root 1 0 R >>";
    }
    return std::string(text.substr(open, close - open));
}

} // namespace

std::string withFittingTable(const std::string& document)
{
    const std::map<int, Place> objects = objectsOf(document);
    if (objects.empty()) {
        return document;
    }
    const std::string trailer = trailerOf(document);
    std::string text = document.substr(0, document.rfind("xref\n", document.rfind("trailer")));
    const std::size_t table = text.size();
    text += "xref\n0 1\n0000000000 65535 f \n";
    for (const auto& [number, place] : objects) {
        char line[64];
        std::snprintf(line, sizeof(line), "%d 1\n%010zu %05d n \n", number, place.offset,
                      place.generation);
        text += line;
    }
    return text + "trailer\n" + trailer + "\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
}

} // namespace fuzz
