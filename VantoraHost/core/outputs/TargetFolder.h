#pragma once

#include "KarvelPDFLibrary/io/Folder.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/Target.h"

namespace vantora {

using karvel::io::Folder;
using karvel::io::Missing;

/// The path of the folder below which no link is followed on the way to a target.
std::string rootPathOf(const Target& target);

/// Which folder it is; none when the system can't tell.
std::optional<FileIdentity> identityOf(const Folder& folder);

/// The folder that a target's file is in, held open. The error is that it isn't there, that it
/// isn't the one that the run was given any more, or that a link stands on the way to it from
/// there, which could lead anywhere.
Result<Folder::Pointer> folderOf(const Target& target, Missing missing = Missing::Refuse);

/// The folders of one output after the other. The one that was named stays open between them, and
/// is looked at by its path each time, so that one that was exchanged is an error as above.
class TargetFolders {
public:
    Result<Folder::Pointer> of(const Target& target);

private:
    std::string path_;
    std::optional<FileIdentity> identity_;
    Folder::Pointer root_;
};

/// The error for a folder of outputs with a link on the way to it.
tl::unexpected<Error> folderBehindLink(const std::string& folder);

} // namespace vantora
