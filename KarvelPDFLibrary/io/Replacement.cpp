#include "KarvelPDFLibrary/io/Replacement.h"

#include "KarvelPDFLibrary/io/TemporaryFile.h"

#include <cerrno>

namespace karvel::io {

Replacement replace(const Folder& folder, const std::string& from, const FileVersion& ours,
                    const std::string& name, const FileVersion& replaced,
                    const FileDescriptor& held)
{
    const auto isOursAt = [&](const std::string& place) {
        const auto version = folder.versionAt(place);
        return version && version->isOf(ours);
    };
    const auto isReplacedAt = [&](const std::string& place) {
        const auto version = folder.versionAt(place);
        return version && *version == replaced;
    };
    if (!isOursAt(from)) {
        return {ESTALE, false};
    }
    if (!isReplacedAt(name)) {
        return {EEXIST, true};
    }
    // It bears the temporary name for a moment, and is not to be taken for what a dead process
    // left.
    if (held) {
        claimForAMoment(held.get());
    }
    int failed = folder.exchange(from, name);
    if (failed == ENOTSUP || failed == EPERM || failed == EACCES) {
        return {folder.renameOver(from, name), false};
    }
    if (failed != 0) {
        return {failed, failed == ENOENT};
    }
    // Now nobody finds the old file under its name any more, and it can be looked at in peace.
    const bool isOurs = isOursAt(name);
    const bool isReplaced = isReplacedAt(from);
    if (isOurs && isReplaced) {
        folder.removeName(from);
        return {};
    }
    failed = folder.exchange(from, name);
    return {failed != 0 ? failed : ESTALE, !isReplaced};
}

} // namespace karvel::io
