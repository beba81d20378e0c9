#include "KarvelPDFLibrary/viewer/View.h"

#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/saving/Snapshot.h"

#include <climits>
#include <string>
#include <vector>

namespace karvel::viewer {

namespace {

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

Outcome View::refresh(Document& document)
{
    const Result<viewer::Viewer*> viewer = viewer::loadedViewer();
    if (!viewer) {
        return tl::unexpected<Error>(viewer.error());
    }
    const Result<saving::Snapshot> now =
        saving::snapshot(document, saving::Encrypting::Never, saving::LostPages::ShowEmpty);
    if (!now) {
        return tl::unexpected<Error>(now.error());
    }
    seen_.reset();
    if (now->source->descriptor() >= 0) {
        // By the descriptor: the file may have another name by now, or another file its name.
        seen_ = (*viewer)->openFile("/proc/self/fd/" + std::to_string(now->source->descriptor()),
                                    now->password);
    } else {
        Result<std::vector<char>> bytes = readAll(*now->source);
        if (!bytes) {
            return tl::unexpected<Error>(bytes.error());
        }
        seen_ = (*viewer)->openBytes(std::move(*bytes), now->password);
    }
    if (!seen_) {
        return fail(ErrorCode::LibraryFailed, document.name() + ": cannot be shown");
    }
    revision_ = document.revision();
    return {};
}

Result<viewer::Viewed*> View::seen(Document& document, int page)
{
    if (Outcome status = hasPage(document, page); !status) {
        return tl::unexpected<Error>(status.error());
    }
    if (document.isLost(page)) {
        return fail(ErrorCode::NotPdf, document.name() + ": damaged: page " +
                                           std::to_string(page) + " cannot be read");
    }
    try {
        if (!seen_ || revision_ != document.revision()) {
            revision_.reset();
            if (Outcome status = refresh(document); !status) {
                return tl::unexpected<Error>(status.error());
            }
        }
        return seen_.get();
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

} // namespace karvel::viewer
