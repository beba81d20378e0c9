#include "VantoraHost/core/actions/Sequence.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraApp/errors/CErrorHandler.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/NearestName.h"
#include "VantoraHost/core/choices/StepChoices.h"

#include <algorithm>
#include <exception>
#include <new>

namespace vantora {

namespace {

constexpr int sequenceProcDone = 1;
constexpr int workProcDone = 0;
constexpr char actionNameKey[] = "ActionName";

std::string messages(const CErrorHandler& handler)
{
    std::string text;
    for (long i = 0; i < handler.GetCount(); ++i) {
        text += (text.empty() ? "" : "; ") + handler.GetAt(i).toStdString();
    }
    return text;
}

Outcome checkKeys(const KnownAction& known,
                  const std::vector<std::pair<std::string, std::string>>& options)
{
    for (const auto& [key, value] : options) {
        if (known.option(key) || key == actionNameKey || isChoiceKey(key)) {
            continue;
        }
        const std::string nearest = nearestName(key, known.keys());
        std::string all;
        for (const KnownOption& option : known.options) {
            all += (all.empty() ? "" : ", ") + std::string(option.key);
        }
        return fail(Reason::OptionUnknown, {},
                    "action \"" + std::string(known.name) + "\" has no option \"" + key + "\", " +
                        (nearest.empty() ? "only: " + all : "but has " + nearest));
    }
    return {};
}

Result<Step> stepOf(const StepRequest& request, const ActionCatalog& catalog)
{
    Result<Action> action = catalog.find(request.action);
    if (!action) {
        return tl::unexpected<Error>(std::move(action.error()));
    }
    Step step{std::move(*action), request.stored};
    for (const auto& [key, value] : request.options) {
        step.preferences.insert(QString::fromStdString(key), QString::fromStdString(value));
    }
    // What every options dialog leaves in the map, too.
    step.preferences.insert(actionNameKey, QString::fromStdString(step.action.name));
    const KnownAction* known = knownAction(step.action.name);
    auto choices = choicesIn(step.preferences);
    if (!choices) {
        return tl::unexpected<Error>(std::move(choices.error()));
    }
    step.choices = std::move(*choices);
    step.ownRanges = step.preferences.contains(ownRangesKey);
    if (step.hasPagesOfDocuments()) {
        if (!known || known->pagesKey == nullptr) {
            return fail(Reason::BadChoice, {},
                        "action \"" + step.action.name + "\" has no pages to choose");
        }
        step.preferences.insert(known->pagesKey, "1"); // as good as any, so that it is accepted
    }
    if (known) {
        if (const Outcome accepted = checkKeys(*known, request.options).and_then([&] {
                return known->accept(step.preferences);
            });
            !accepted) {
            return tl::unexpected<Error>(accepted.error());
        }
    }
    if (step.hasPagesOfDocuments()) {
        step.preferences.remove(known->pagesKey); // until a document's own are known
    }
    return step;
}

// The options of a request of which nobody knows whether its action has them.
std::optional<OptionDoubt> doubtOf(const StepRequest& request, const Action& action)
{
    OptionDoubt doubt{action.name, {}};
    for (const auto& [key, value] : request.options) {
        const bool repeated =
            std::find(doubt.keys.begin(), doubt.keys.end(), key) != doubt.keys.end();
        if (!repeated && !request.stored.contains(QString::fromStdString(key))) {
            doubt.keys.push_back(key);
        }
    }
    return knownAction(action.name) || doubt.keys.empty() ? std::nullopt : std::optional(doubt);
}

} // namespace

Result<Sequence> Sequence::of(const std::vector<StepRequest>& requests,
                              const ActionCatalog& catalog)
{
    std::vector<Step> steps;
    std::vector<OptionDoubt> doubts;
    for (const StepRequest& request : requests) {
        Result<Step> step = stepOf(request, catalog);
        if (!step) {
            Error error = std::move(step.error());
            if (error.file.empty()) {
                error.file = request.file;
            }
            return tl::unexpected<Error>(std::move(error));
        }
        if (auto doubt = doubtOf(request, step->action)) {
            doubts.push_back(std::move(*doubt));
        }
        if (step->hasPagesOfDocuments() && !steps.empty()) {
            return fail(Reason::BadChoice, request.file,
                        "pages can be chosen by what they are in the first step of a run only");
        }
        steps.push_back(std::move(*step));
    }
    Sequence sequence(std::move(steps));
    sequence.doubts_ = std::move(doubts);
    return sequence;
}

Outcome Sequence::choosePages(PageFacts& facts, const std::optional<std::string>& ownRange)
{
    if (steps_.empty() || !steps_.front().hasPagesOfDocuments()) {
        return {};
    }
    const Step& step = steps_.front();
    std::string range = ownRange.value_or("");
    if (step.ownRanges && !ownRange) {
        return fail(Reason::BadRanges, {}, "no list of ranges says which of its pages go");
    }
    if (step.choices) {
        const auto chosen = vantora::choosePages(*step.choices, facts);
        if (!chosen) {
            return tl::unexpected<Error>(chosen.error());
        }
        range = rangeTextOf(*chosen);
    }
    takePages(range);
    return {};
}

void Sequence::takePages(const std::string& range)
{
    Step& step = steps_.front();
    step.preferences.insert(knownAction(step.action.name)->pagesKey, QString::fromStdString(range));
}

const ChoiceSet* Sequence::choices() const
{
    return steps_.empty() || !steps_.front().choices ? nullptr : &*steps_.front().choices;
}

Access Sequence::access() const
{
    Access needed = Access::Read;
    for (const Step& step : steps_) {
        const KnownAction* known = knownAction(step.action.name);
        needed = std::max(needed, known ? known->access : Access::Change);
    }
    return needed;
}

const Action* Sequence::firstThatSeesTheRun() const
{
    for (const Step& step : steps_) {
        const KnownAction* known = knownAction(step.action.name);
        if (!known || !known->documentsAreIndependent) {
            return &step.action;
        }
    }
    return nullptr;
}

Outcome Sequence::failure(std::size_t step, const std::string& said) const
{
    const std::string where = steps_.size() == 1 ? "" : "step " + std::to_string(step + 1) + ", ";
    return fail(Reason::ActionFailed, {},
                where + "action \"" + steps_[step].action.name + "\": " + said);
}

Outcome Sequence::call(std::size_t number, int (CActionInterface::*operation)(WorkProcInfoStruct*),
                       int done, KarvelPDFLibraryCPDylibCPP1311& library)
{
    Step& step = steps_[number];
    CErrorHandler handler;
    WorkProcInfoStruct info = {};
    info.pPDFLibrary = &library;
    info.pErrorHandler = &handler;
    info.pPrefs = &step.preferences;
    library.ClearLastError();

    int result = 0;
    std::string said;
    try {
        result = (step.action.operations->*operation)(&info);
    } catch (const std::bad_alloc&) {
        throw; // no failure of the action's: the document was too much
    } catch (const std::exception& thrown) {
        said = thrown.what();
    } catch (...) {
        said = "it threw an exception";
    }
    if (said.empty()) {
        said = messages(handler);
    }
    const auto libraryFailure = lastLibraryFailure(library, {});
    if (said.empty() && !libraryFailure && result == done) {
        return {};
    }
    if (libraryFailure) {
        said += (said.empty() ? "" : ": ") + libraryFailure->sentence;
    } else if (said.empty()) {
        said = "it failed with result " + std::to_string(result) + " and no message";
    }
    return failure(number, said);
}

Outcome Sequence::begin(KarvelPDFLibraryCPDylibCPP1311& library)
{
    for (std::size_t step = 0; step < steps_.size(); ++step) {
        Outcome done = call(step, &CActionInterface::PreSequenceProc, sequenceProcDone, library);
        if (!done) {
            static_cast<void>(endFirst(step, library)); // what counts is why the run can't begin
            return done;
        }
    }
    return {};
}

Outcome Sequence::process(KarvelPDFLibraryCPDylibCPP1311& library)
{
    for (std::size_t step = 0; step < steps_.size(); ++step) {
        Outcome done = call(step, &CActionInterface::WorkProc, workProcDone, library);
        if (!done) {
            return done;
        }
    }
    return {};
}

Outcome Sequence::end(KarvelPDFLibraryCPDylibCPP1311& library)
{
    return endFirst(steps_.size(), library);
}

Outcome Sequence::endFirst(std::size_t count, KarvelPDFLibraryCPDylibCPP1311& library)
{
    Outcome first;
    for (std::size_t step = 0; step < count; ++step) {
        Outcome done = call(step, &CActionInterface::PostSequenceProc, sequenceProcDone, library);
        if (!done && first) {
            first = std::move(done);
        }
    }
    return first;
}

} // namespace vantora
