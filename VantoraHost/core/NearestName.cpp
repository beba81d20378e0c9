#include "VantoraHost/core/NearestName.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>

namespace vantora {

namespace {

// Nobody misspells what is longer; comparing takes the product of the lengths.
constexpr std::size_t longest = 200;

bool same(char a, char b)
{
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

std::size_t distance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (same(a[i], b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j + 1] + 1, row[j] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string nearestName(const std::string& misspelt, const std::vector<std::string>& names)
{
    std::string nearest;
    std::size_t least = longest;
    if (misspelt.size() > longest) {
        return nearest;
    }
    for (const std::string& name : names) {
        const std::size_t letters = name.size() > longest ? longest : distance(misspelt, name);
        if (letters < least && letters <= std::max<std::size_t>(2, name.size() / 3)) {
            nearest = name;
            least = letters;
        }
    }
    return nearest;
}

} // namespace vantora
