#include "VantoraHost/verification/Patterns.h"

#include <algorithm>

namespace vantora::verification {

namespace {

constexpr std::uint64_t base = 0x9E3779B97F4A7C15ULL | 1;
constexpr std::size_t mostAlike = 64;

std::uint64_t valueOf(char byte)
{
    return static_cast<unsigned char>(byte) + 1ULL;
}

std::uint64_t hashOf(std::string_view beginning)
{
    std::uint64_t hash = 0;
    for (const char byte : beginning) {
        hash = hash * base + valueOf(byte);
    }
    return hash;
}

// The base to the power of the window's last place.
std::uint64_t farthest()
{
    std::uint64_t power = 1;
    for (std::size_t i = 1; i < Patterns::shortest; ++i) {
        power *= base;
    }
    return power;
}

std::size_t slotOf(std::uint64_t hash)
{
    return static_cast<std::size_t>((hash ^ (hash >> 32)) & ((1U << 20) - 1));
}

// A string in parentheses (ISO 32000-2, 7.3.4.2) that begins at `at`; where it ends.
std::size_t addLiteral(std::string_view content, std::size_t at, std::string& all)
{
    int depth = 1;
    for (++at; at < content.size(); ++at) {
        const char c = content[at];
        if (c == '\\' && at + 1 < content.size()) {
            const char escaped = content[++at];
            if (escaped >= '0' && escaped <= '7') {
                int code = escaped - '0';
                for (int i = 0; i < 2 && at + 1 < content.size() && content[at + 1] >= '0' &&
                                content[at + 1] <= '7';
                     ++i) {
                    code = code * 8 + (content[++at] - '0');
                }
                all += static_cast<char>(code);
            } else if (escaped == '(' || escaped == ')' || escaped == '\\') {
                all += escaped;
            }
            continue;
        }
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (depth == 0) {
            return at;
        }
        all += c;
    }
    return at;
}

std::size_t addHexadecimal(std::string_view content, std::size_t at, std::string& all)
{
    int half = -1;
    for (++at; at < content.size() && content[at] != '>'; ++at) {
        const int digit = hexOf(content[at]);
        if (digit >= 0 && half >= 0) {
            all += static_cast<char>(half * 16 + digit);
            half = -1;
        } else if (digit >= 0) {
            half = digit;
        }
    }
    if (half >= 0) { // a last digit that is missing is 0 (ISO 32000-2, 7.3.4.3)
        all += static_cast<char>(half * 16);
    }
    return at;
}

} // namespace

bool Patterns::add(std::string_view bytes, std::size_t id)
{
    if (bytes.size() < shortest) {
        return false;
    }
    const std::uint64_t hash = hashOf(bytes.substr(0, shortest));
    std::vector<Pattern>& alike = byBeginning_[hash];
    if (alike.size() >= mostAlike) {
        return false;
    }
    alike.push_back({std::string(bytes), id});
    maybe_[slotOf(hash)] = true;
    return true;
}

void Patterns::findIn(std::string_view bytes, const std::function<void(std::size_t)>& found) const
{
    if (byBeginning_.empty() || bytes.size() < shortest) {
        return;
    }
    static const std::uint64_t last = farthest();
    std::uint64_t hash = hashOf(bytes.substr(0, shortest));
    for (std::size_t at = 0;; ++at) {
        if (maybe_[slotOf(hash)]) {
            const auto alike = byBeginning_.find(hash);
            if (alike != byBeginning_.end()) {
                for (const Pattern& pattern : alike->second) {
                    if (bytes.compare(at, pattern.bytes.size(), pattern.bytes) == 0) {
                        found(pattern.id);
                    }
                }
            }
        }
        if (at + shortest >= bytes.size()) {
            return;
        }
        hash = (hash - valueOf(bytes[at]) * last) * base + valueOf(bytes[at + shortest]);
    }
}

int hexOf(char c)
{
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                  : -1;
}

std::string squeezed(std::string_view text)
{
    std::string kept;
    kept.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](char c) { return static_cast<unsigned char>(c) > ' '; });
    return kept;
}

std::size_t characters(std::string_view utf8)
{
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

std::string stringsIn(std::string_view content)
{
    std::string all;
    if (content.find("Tj") == std::string_view::npos &&
        content.find("TJ") == std::string_view::npos &&
        content.find('\'') == std::string_view::npos &&
        content.find('"') == std::string_view::npos) {
        return all;
    }
    for (std::size_t at = 0; at < content.size(); ++at) {
        if (content[at] == '(') {
            at = addLiteral(content, at, all);
        } else if (content.compare(at, 2, "<<") == 0) {
            ++at; // a dictionary
        } else if (content[at] == '<') {
            at = addHexadecimal(content, at, all);
        }
    }
    return all;
}

} // namespace vantora::verification
