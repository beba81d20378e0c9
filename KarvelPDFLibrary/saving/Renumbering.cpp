#include "KarvelPDFLibrary/saving/Renumbering.h"

namespace karvel::saving {

namespace {

/// Copies a value's text up to each reference, which is written anew.
class Copier final : public index::ScanSink {
public:
    Copier(const Renumbering& numbers, std::string& out, std::string_view text, std::size_t start)
        : numbers_(numbers), out_(out), text_(text), copied_(start), scanner_(text, *this)
    {
    }

    index::ScanResult run(std::size_t& at)
    {
        const index::ScanResult result = scanner_.scan(at);
        if (result == index::ScanResult::Complete) {
            upTo(scanner_.position());
            at = scanner_.position();
        }
        return isPlain_ ? result : index::ScanResult::Malformed;
    }

    void reference(std::uint32_t object, std::uint32_t generation) override
    {
        upTo(startOfReference(scanner_.position()));
        out_ += numbers_.reference(object, generation);
        copied_ = scanner_.position();
    }
    void beforeEntry(std::string_view) override {}
    void afterEntry(std::string_view, std::string_view) override {}

private:
    void upTo(std::size_t end)
    {
        if (end >= copied_) {
            out_.append(text_.substr(copied_, end - copied_));
        }
    }

    /// Where the reference begins that ends with "R" before `end`. Comments inside of it are not
    /// passed.
    std::size_t startOfReference(std::size_t end)
    {
        std::size_t at = end - 1;
        for (int number = 0; number < 2; ++number) {
            while (at > copied_ && index::isWhiteSpace(text_[at - 1])) {
                --at;
            }
            const std::size_t last = at;
            while (at > copied_ && index::isDigit(text_[at - 1])) {
                --at;
            }
            isPlain_ = isPlain_ && at < last;
        }
        return at;
    }

    const Renumbering& numbers_;
    std::string& out_;
    std::string_view text_;
    std::size_t copied_;
    index::ValueScanner scanner_;
    bool isPlain_ = true;
};

} // namespace

index::ScanResult Renumbering::append(std::string& out, std::string_view text,
                                      std::size_t& at) const
{
    const std::size_t before = out.size();
    const index::ScanResult result = Copier(*this, out, text, at).run(at);
    if (result != index::ScanResult::Complete) {
        out.resize(before);
    }
    return result;
}

} // namespace karvel::saving
