#pragma once

#include "KarvelPDFLibrary/io/FileVersion.h"
#include "KarvelPDFLibrary/io/Folder.h"

#include <string>

namespace karvel::io {

/// What came of giving a file the name of another one.
struct Replacement {
    int error = 0; ///< an errno value; ESTALE when the file itself wasn't where it was to be
    bool overtaken = false; ///< it failed because the name isn't the replaced version's any more
};

/// Gives the file `ours`, which stands under the name `from`, the name of another one, which then
/// is gone. Whatever has come in the place of either stays: the two names are exchanged, what came
/// out is looked at, and they are exchanged back unless it is the version that was to be replaced.
/// Where the file system can't exchange, a moment is left between the look and the renaming. `held`
/// is what is to be replaced, open, or no file.
Replacement replace(const Folder& folder, const std::string& from, const FileVersion& ours,
                    const std::string& name, const FileVersion& replaced,
                    const FileDescriptor& held);

} // namespace karvel::io
