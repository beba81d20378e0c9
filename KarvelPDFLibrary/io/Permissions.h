#pragma once

#include <sys/stat.h>
#include <sys/types.h>

/// Who may do what with a file that is made of another one.
namespace karvel::io {

/// What a new file may allow at most by the umask of this process.
mode_t usualMode();

/// What a file with the content of this open one may allow at most. Where an access control list
/// says what the group may do, that counts, rather than the mode, which shows the list's mask.
mode_t modeOf(int descriptor);

/// The same for one whose mode is known.
mode_t modeOf(int descriptor, mode_t known);

/// Whether owner and group, too, could be handed on.
enum class HandedOn { All, Mode };

/// An open file, and its status.
struct KnownFile {
    int descriptor;
    const struct stat& status;
};

/// Gives the file `to` owner, group, access control list and mode of the file `from`, but never a
/// right that `most` hasn't. `from` may be a descriptor that is a mere path (O_PATH). Only the
/// superuser may give a file away; the group can be kept by its members. A group that isn't kept
/// gets no more than everybody. Returns 0 or an errno value.
int handOnPermissions(const KnownFile& from, const KnownFile& to, mode_t most, HandedOn& done);

} // namespace karvel::io
