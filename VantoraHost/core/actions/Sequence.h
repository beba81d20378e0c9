#pragma once

#include "VantoraHost/core/actions/ActionCatalog.h"
#include "VantoraHost/core/actions/KnownAction.h"
#include "VantoraHost/core/choices/ChosenPages.h"

#include <optional>
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
    std::optional<ChoiceSet> choices = {}; ///< the pages are worked out for each document
    bool ownRanges = false;                ///< each document comes with its own

    /// Whether its pages are other ones in each document.
    bool hasPagesOfDocuments() const { return choices || ownRanges; }
};

/// What can only be guessed about a step: options that were set and may be none of its action.
struct OptionDoubt {
    std::string action;
    std::vector<std::string> keys;
};

/// Actions that run one after the other over each document.
class Sequence {
public:
    explicit Sequence(std::vector<Step> steps) : steps_(std::move(steps)) {}

    /// Loads the actions, and accepts their options as far as the host knows them.
    static Result<Sequence> of(const std::vector<StepRequest>& requests,
                               const ActionCatalog& catalog);

    const std::vector<Step>& steps() const { return steps_; }

    /// What was set for actions that the host has no description of, unless saved options of the
    /// same step have it, too: nobody can tell whether it is misspelt.
    const std::vector<OptionDoubt>& doubts() const { return doubts_; }

    /// What the owner of an encrypted document has to permit.
    Access access() const;

    /// The first action that may have to see all documents of a run, in their order, in one place;
    /// null when every document can be done anywhere.
    const Action* firstThatSeesTheRun() const;

    /// Works out which pages of a document its first step is about, where they are chosen by what
    /// they are or the document has its own range; to be called for each document before its pages
    /// are forecast or changed.
    Outcome choosePages(PageFacts& facts, const std::optional<std::string>& ownRange = {});

    /// The same where it is known already what the choices of its first step come to.
    void takePages(const std::string& range);

    /// The choices that each document is judged by; null for none.
    const ChoiceSet* choices() const;

    /// Tells every action that a run begins; to be called once, before any document. Where one
    /// refuses, those that have begun are told that the run is over.
    Outcome begin(KarvelPDFLibraryCPDylibCPP1311& library);

    /// Runs the steps over the document that is open and selected in the binding; the first step
    /// that fails ends it. An action's own result doesn't tell whether the library did what the
    /// action asked for: the error list and the library's last error count as well.
    Outcome process(KarvelPDFLibraryCPDylibCPP1311& library);

    /// Tells every action that the run is over; to be called once.
    Outcome end(KarvelPDFLibraryCPDylibCPP1311& library);

private:
    Outcome endFirst(std::size_t count, KarvelPDFLibraryCPDylibCPP1311& library);
    Outcome failure(std::size_t step, const std::string& said) const;
    Outcome call(std::size_t step, int (CActionInterface::*operation)(WorkProcInfoStruct*),
                 int done, KarvelPDFLibraryCPDylibCPP1311& library);

    std::vector<Step> steps_;
    std::vector<OptionDoubt> doubts_;
};

} // namespace vantora
