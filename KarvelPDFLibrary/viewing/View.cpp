#include "KarvelPDFLibrary/viewing/View.h"

#include "KarvelPDFLibrary/pages/PageArguments.h"
#include "KarvelPDFLibrary/saving/Snapshot.h"

#include <climits>
#include <mutex>
#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-page.h>
#include <string>

namespace karvel::viewing {

namespace {

/// poppler would write what it finds wrong to standard error.
void silencePoppler()
{
    static std::once_flag once;
    std::call_once(
        once, [] { poppler::set_debug_error_function([](const std::string&, void*) {}, nullptr); });
}

Result<std::vector<char>> readAll(io::ByteSource& source)
{
    if (source.size() > INT_MAX) {
        return fail(ErrorCode::OutOfMemory, source.name() + ": too large to be shown from memory");
    }
    std::vector<char> bytes(static_cast<std::size_t>(source.size()));
    bytes.resize(source.readAt(0, bytes.data(), bytes.size()));
    return bytes;
}

} // namespace

View::View() = default;
View::~View() = default;
View::View(View&& other) noexcept = default;

View& View::operator=(View&& other) noexcept
{
    seen_ = std::move(other.seen_); // before the bytes that it reads from
    bytes_ = std::move(other.bytes_);
    revision_ = other.revision_;
    return *this;
}

Status View::refresh(Document& document)
{
    silencePoppler();
    const Result<saving::Snapshot> now = saving::snapshot(document, saving::Encrypting::Never);
    if (!now) {
        return tl::unexpected<Error>(now.error());
    }
    seen_.reset();
    bytes_.clear();
    if (now->source->descriptor() >= 0) {
        // By the descriptor: the file may have another name by now, or another file its name.
        seen_.reset(poppler::document::load_from_file("/proc/self/fd/" +
                                                          std::to_string(now->source->descriptor()),
                                                      now->password, now->password));
    } else {
        Result<std::vector<char>> bytes = readAll(*now->source);
        if (!bytes) {
            return tl::unexpected<Error>(bytes.error());
        }
        bytes_ = std::move(*bytes);
        seen_.reset(poppler::document::load_from_raw_data(
            bytes_.data(), static_cast<int>(bytes_.size()), now->password, now->password));
    }
    if (!seen_ || seen_->is_locked()) {
        seen_.reset();
        return fail(ErrorCode::LibraryFailed, document.name() + ": cannot be shown");
    }
    revision_ = document.revision();
    return {};
}

Result<std::unique_ptr<poppler::page>> View::page(Document& document, int number)
{
    if (Status status = pages::hasPage(document, number); !status) {
        return tl::unexpected<Error>(status.error());
    }
    try {
        if (!seen_ || revision_ != document.revision()) {
            revision_.reset();
            if (Status status = refresh(document); !status) {
                return tl::unexpected<Error>(status.error());
            }
        }
        std::unique_ptr<poppler::page> page(seen_->create_page(number - 1));
        if (!page) {
            return fail(ErrorCode::LibraryFailed,
                        document.name() + ": page " + std::to_string(number) + " cannot be shown");
        }
        return page;
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

} // namespace karvel::viewing
