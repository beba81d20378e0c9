#pragma once

#include "VantoraHost/core/Error.h"

#include <string>

namespace vantora {

/// The original of a file that is about to be replaced, kept under a second name. From before the
/// replacement on, the original has a name at every moment; when the replacement fails the second
/// name goes away again.
class Backup {
public:
    /// Gives the file the name `backup` as well, by a hard link, or copies it where the file system
    /// has none. With `replace` an older backup stays until keep is called.
    static Result<Backup> of(const std::string& file, const std::string& backup, bool replace);

    Backup(Backup&& other) noexcept;
    Backup& operator=(Backup&&) = delete;
    ~Backup();

    /// The file has been replaced: the backup stays.
    Outcome keep();

private:
    Backup(std::string held, std::string name) : held(std::move(held)), name(std::move(name)) {}

    std::string held; ///< where the original stands now; empty when there is nothing to undo
    std::string name; ///< where it is to stand
};

} // namespace vantora
