#pragma once

#include "VantoraApp/interface/ActionInterface.h"
#include "VantoraHost/core/Error.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vantora {

/// A plug-in that says in its metadata that it is an action. Nothing of it has run yet.
struct ActionFile {
    std::filesystem::path path;
    std::string identifier; ///< such as "org.karvel.vantora.deletepages"
};

/// An action that is loaded. Its operations stay valid until the program ends.
struct Action {
    ActionFile file;
    std::string name;
    CActionInterface* operations = nullptr; ///< owned by the plug-in
};

/// The actions that are installed.
class ActionCatalog {
public:
    /// Looks through the plug-ins of the folders, in their order and by name, reading their
    /// metadata only. A folder that isn't there counts as empty; of two plug-ins with one
    /// identifier the first counts.
    static ActionCatalog of(const std::vector<std::filesystem::path>& folders);

    const std::vector<ActionFile>& actions() const { return found_; }

    /// The plug-ins that are none of ours, each with the reason.
    const std::vector<Error>& rejected() const { return refused_; }

    /// Loads the action of that name, and no other where its identifier tells which one it is.
    /// Where none has that name, the name that users see counts, which is what action lists hold.
    Result<Action> find(const std::string& name) const;

    /// Loads one action.
    static Result<Action> load(const ActionFile& file);

private:
    void consider(const std::filesystem::path& file);

    std::vector<ActionFile> found_;
    std::vector<Error> refused_;
};

} // namespace vantora
