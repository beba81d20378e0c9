#pragma once

#include "VantoraHost/core/actions/ActionCatalog.h"

#include <string>
#include <utility>
#include <vector>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// A step as it is asked for: an action's name and the options that differ from none.
struct StepRequest {
    std::string action; ///< its name or, where no action has that, the name that users see
    std::vector<std::pair<std::string, std::string>> options; ///< UTF-8; the last of a key counts
    PreferencesMap stored = {}; ///< options that were saved; those above count before them
    std::string file = {};      ///< which file the step comes from; empty for none
};

struct Step {
    Action action;
    PreferencesMap preferences;
};

/// Actions that run one after the other over each document.
class Sequence {
public:
    explicit Sequence(std::vector<Step> steps) : steps_(std::move(steps)) {}

    /// Loads the actions and checks their options as far as the host knows them.
    static Result<Sequence> of(const std::vector<StepRequest>& requests,
                               const ActionCatalog& catalog);

    const std::vector<Step>& steps() const { return steps_; }

    /// Tells every action that a run begins; to be called once, before any document.
    Outcome begin(KarvelPDFLibraryCPDylibCPP1311& library);

    /// Runs the steps over the document that is open and selected in the binding; the first step
    /// that fails ends it. An action's own result doesn't tell whether the library did what the
    /// action asked for: the error list and the library's last error count as well.
    Outcome process(KarvelPDFLibraryCPDylibCPP1311& library);

    /// Tells every action that the run is over; to be called once.
    Outcome end(KarvelPDFLibraryCPDylibCPP1311& library);

private:
    std::vector<Step> steps_;
};

} // namespace vantora
