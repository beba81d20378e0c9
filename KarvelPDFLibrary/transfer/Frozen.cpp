#include "KarvelPDFLibrary/transfer/Frozen.h"

#include "KarvelPDFLibrary/saving/Snapshot.h"

namespace karvel::transfer {

namespace {

Result<std::unique_ptr<Document>> reopened(Document& document, saving::Encrypting encrypting)
{
    const Result<saving::Snapshot> now = saving::snapshot(document, encrypting);
    if (!now) {
        return tl::unexpected<Error>(now.error());
    }
    return Document::load(now->source, {now->password, document.wasReconstructed()});
}

} // namespace

Result<std::shared_ptr<Document>> Frozen::of(Document& document)
{
    if (!frozen_ || revision_ != document.revision()) {
        auto now = reopened(document, saving::Encrypting::Never);
        if (!now) {
            return tl::unexpected<Error>(now.error());
        }
        (*now)->setPath(document.path());
        frozen_ = std::move(*now);
        revision_ = document.revision();
    }
    return frozen_;
}

Result<std::unique_ptr<Document>> duplicate(Document& document)
{
    auto copy = reopened(document, saving::Encrypting::AsLoaded);
    if (copy) {
        (*copy)->raisedToOwner = document.raisedToOwner;
        (*copy)->encryption = document.encryption;
        (*copy)->forcedVersion = document.forcedVersion;
        (*copy)->ownContentStreams = document.ownContentStreams;
    }
    return copy;
}

} // namespace karvel::transfer
