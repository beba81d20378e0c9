#include "KarvelPDFLibrary/pages/PageList.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <string_view>

namespace karvel::pages {

namespace {

/// A short list can name pages again and again; this bounds what it expands to.
constexpr std::int64_t mostPages = 10'000'000;

class Parser {
public:
    Parser(std::string_view text, int pageCount) : rest_(text), pageCount_(pageCount) {}

    Result<std::vector<int>> run()
    {
        const std::size_t length = rest_.size();
        do {
            const int first = number();
            const int last = first != 0 && take('-') ? number() : first;
            if (first == 0 || last == 0) {
                return fail(ErrorCode::BadPageList, error_);
            }
            const std::int64_t count = std::abs(std::int64_t{last} - first) + 1;
            if (static_cast<std::int64_t>(pages_.size()) + count > mostPages) {
                return fail(ErrorCode::OutOfMemory, "the page list names too many pages");
            }
            const int step = last < first ? -1 : 1;
            for (std::int64_t i = 0; i < count; ++i) {
                pages_.push_back(first + static_cast<int>(i) * step);
            }
        } while (take(','));
        if (rest_ == ":odd" || rest_ == ":even") {
            keepEveryOther(rest_ == ":odd" ? 0 : 1);
            rest_ = {};
        }
        if (!rest_.empty()) {
            return fail(ErrorCode::BadPageList,
                        "the page list is not understood from its character " +
                            std::to_string(length - rest_.size() + 1) + " on");
        }
        return std::move(pages_);
    }

private:
    bool take(char expected)
    {
        if (rest_.empty() || rest_.front() != expected) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    /// A page number, or 0 when there is none.
    int number()
    {
        if (take('z')) {
            return pageCount_;
        }
        const bool fromEnd = take('r');
        std::int64_t value = 0;
        std::size_t digits = 0;
        for (; digits < rest_.size() && rest_[digits] >= '0' && rest_[digits] <= '9'; ++digits) {
            value = std::min<std::int64_t>(value * 10 + (rest_[digits] - '0'), INT32_MAX);
        }
        if (digits == 0) {
            error_ = "the page list lacks a page number";
            return 0;
        }
        if (value < 1 || value > pageCount_) {
            error_ = "the page list names page " + std::string(fromEnd ? "r" : "") +
                     std::string(rest_.substr(0, std::min<std::size_t>(digits, 12))) +
                     "; there are " + std::to_string(pageCount_);
            return 0;
        }
        rest_.remove_prefix(digits);
        return static_cast<int>(fromEnd ? pageCount_ - value + 1 : value);
    }

    void keepEveryOther(std::size_t first)
    {
        std::size_t kept = 0;
        for (std::size_t i = first; i < pages_.size(); i += 2) {
            pages_[kept++] = pages_[i];
        }
        pages_.resize(kept);
    }

    std::string_view rest_;
    int pageCount_;
    std::vector<int> pages_;
    std::string error_;
};

} // namespace

Result<std::vector<int>> parsePageList(const std::string& text, int pageCount)
{
    if (text.empty()) {
        std::vector<int> all(static_cast<std::size_t>(pageCount));
        std::iota(all.begin(), all.end(), 1);
        return all;
    }
    Result<std::vector<int>> pages = Parser(text, pageCount).run();
    if (pages && pages->empty()) {
        return fail(ErrorCode::BadPageList, "the page list names no page");
    }
    return pages;
}

} // namespace karvel::pages
