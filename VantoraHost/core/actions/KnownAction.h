#pragma once

#include "VantoraApp/interface/ActionInterface.h"
#include "VantoraHost/core/Access.h"
#include "VantoraHost/core/Error.h"

#include <string>
#include <vector>

namespace vantora {

/// What a step is going to do to the pages of a document, worked out without touching it.
struct PageEffect {
    std::vector<int> taken; ///< the pages that go, counted from 1 before the step; ascending
    bool emptied = false;   ///< every page goes, and a blank one takes their place
    std::vector<std::string> unmet; ///< what was asked for and this document can't give
};

/// An option of an action that the host knows.
struct KnownOption {
    const char* key;
    bool mayStandInFile = false; ///< whether "@FILE" on the command line stands for FILE's content
};

/// All that the host knows of an action beside what its interface tells. With an action that has
/// no such description, the host takes nothing for granted.
struct KnownAction {
    const char* name;
    std::vector<KnownOption> options;

    /// Whether what becomes of a document depends on it and the options alone: not on the documents
    /// before it, and not on what the action did when the run began.
    bool documentsAreIndependent;

    /// What the owner of an encrypted document has to permit.
    Access access;

    /// The option that pages chosen for one document are written to as a range; null for none.
    const char* pagesKey;

    /// Does with options what the action's options dialog does with them on OK: puts right what it
    /// puts right and refuses what it refuses. Options may come from anywhere.
    Outcome (*accept)(PreferencesMap& preferences);

    /// The effect of accepted options on a document of so many pages.
    PageEffect (*effect)(const PreferencesMap& preferences, int pageCount);

    /// What is to be said of a document that such options leave without any page of its own.
    std::string (*emptiedText)(const PreferencesMap& preferences);

    /// Its options by their keys.
    std::vector<std::string> keys() const;
    const KnownOption* option(const std::string& key) const;
};

/// The description of the action of that name; null when there is none.
const KnownAction* knownAction(const std::string& name);

} // namespace vantora
