#include "VantoraHost/core/outputs/TargetFolder.h"

#include <cerrno>

namespace vantora {

namespace {

tl::unexpected<Error> unusable(const std::string& folder, int why, Missing missing)
{
    if (why == ELOOP) {
        return folderBehindLink(folder);
    }
    const char* const what = missing == Missing::Make ? " can't be made: " : " can't be used: ";
    return fail(Reason::OutputNotWritable, {},
                "the output folder " + folder + what + systemMessage(why));
}

} // namespace

tl::unexpected<Error> folderBehindLink(const std::string& folder)
{
    return fail(Reason::OutputFolderIsLink, {},
                "the output folder " + folder +
                    " is a link or lies behind one, and outputs stay in the folder that was named");
}

std::string rootPathOf(const Target& target)
{
    return karvel::io::folderOf(target.path.substr(0, target.below) + 'x');
}

std::optional<FileIdentity> identityOf(const Folder& folder)
{
    const auto version = folder.version();
    return version ? std::optional<FileIdentity>({version->device, version->inode}) : std::nullopt;
}

Result<Folder::Pointer> folderOf(const Target& target, Missing missing)
{
    const std::string folder = karvel::io::folderOf(target.path);
    const std::string root = rootPathOf(target);
    auto opened = Folder::open(root);
    if (!opened) {
        return unusable(root, opened.error(), Missing::Refuse);
    }
    if (target.root && !(identityOf(**opened) == target.root)) {
        return fail(Reason::OutputNotWritable, {},
                    "the output folder " + root +
                        " was exchanged for another one while the run was at work");
    }
    const std::size_t name = target.path.rfind('/') + 1; // 0 without one
    if (name <= target.below) {
        return std::move(*opened);
    }
    auto inner = (*opened)->below(target.path.substr(target.below, name - target.below), missing);
    if (!inner) {
        return unusable(folder, inner.error(), missing);
    }
    return std::move(*inner);
}

} // namespace vantora
