#pragma once

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/Error.h"

#include <string>

namespace vantora {

/// The original of a file that is about to be replaced, kept under a second name. From before the
/// replacement on, the original has a name at every moment; when the replacement fails the second
/// name goes away again.
class Backup {
public:
    /// Gives the file a second name beside `backup`, by a hard link, or copies it where the file
    /// system has none. Fails when there is an older backup, unless it is to be replaced.
    static Result<Backup> of(const std::string& file, const std::string& backup, bool replace);

    Backup(Backup&& other) noexcept;
    Backup& operator=(Backup&&) = delete;
    ~Backup();

    /// The file has been replaced: the original takes the name of the backup.
    Outcome keep();

private:
    Backup(std::string held, std::string name, bool replace, karvel::io::FileDescriptor claim)
        : held(std::move(held)), name(std::move(name)), replace(replace), claim(std::move(claim))
    {
    }

    std::string held; ///< where the original stands now; empty when there is nothing to undo
    std::string name; ///< where it is to stand
    bool replace;
    karvel::io::FileDescriptor claim; ///< says that `held` is in use
};

/// Settles the backups in a folder that killed processes were about to make: where the file was
/// replaced the original takes the name of the backup, otherwise its second name goes away.
void settleAbandonedBackups(const std::string& folder);

} // namespace vantora
