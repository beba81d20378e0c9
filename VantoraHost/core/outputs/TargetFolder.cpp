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

Result<Folder::Pointer> openRoot(const Target& target, const std::string& root)
{
    auto opened = Folder::open(root);
    if (!opened) {
        return unusable(root, opened.error(), Missing::Refuse);
    }
    if (target.root && !(identityOf(**opened) == target.root)) {
        return fail(Reason::OutputNotWritable, {},
                    "the output folder " + root +
                        " was exchanged for another one while the run was at work");
    }
    return std::move(*opened);
}

Result<Folder::Pointer> belowRoot(Folder::Pointer root, const Target& target, Missing missing)
{
    const std::size_t name = target.path.rfind('/') + 1; // 0 without one
    if (name <= target.below) {
        return root;
    }
    auto inner = root->below(target.path.substr(target.below, name - target.below), missing);
    if (!inner) {
        return unusable(karvel::io::folderOf(target.path), inner.error(), missing);
    }
    return std::move(*inner);
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
    Result<Folder::Pointer> root = openRoot(target, rootPathOf(target));
    return root ? belowRoot(std::move(*root), target, missing) : root;
}

Result<Folder::Pointer> TargetFolders::of(const Target& target)
{
    const std::string wanted = rootPathOf(target);
    const bool isHeld = root_ && target.root && wanted == path_ && identity_ == target.root &&
                        identityOf(wanted) == target.root;
    if (!isHeld) {
        Result<Folder::Pointer> opened = openRoot(target, wanted);
        if (!opened) {
            return opened;
        }
        root_ = std::move(*opened);
        path_ = wanted;
        identity_ = target.root;
    }
    return belowRoot(root_, target, Missing::Refuse);
}

} // namespace vantora
