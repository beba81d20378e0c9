#include "VantoraHost/core/actions/Sequence.h"

#include "VantoraApp/CErrorHandler.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include <exception>
#include <new>

namespace vantora {

namespace {

using Operation = int (CActionInterface::*)(WorkProcInfoStruct*);

constexpr int sequenceProcDone = 1;
constexpr int workProcDone = 0;

std::string messages(const CErrorHandler& handler)
{
    std::string text;
    for (long i = 0; i < handler.GetCount(); ++i) {
        text += (text.empty() ? "" : "; ") + handler.GetAt(i).toStdString();
    }
    return text;
}

Outcome call(Step& step, Operation operation, int done, KarvelPDFLibraryCPDylibCPP1311& library)
{
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
    return fail(Reason::ActionFailed, {}, "action \"" + step.action.name + "\": " + said);
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
    step.preferences.insert("ActionName", QString::fromStdString(step.action.name));
    if (step.action.name == deletepages::actionName) {
        if (const Outcome checked = deletepages::check(step.preferences); !checked) {
            return tl::unexpected<Error>(checked.error());
        }
    }
    return step;
}

} // namespace

Result<Sequence> Sequence::of(const std::vector<StepRequest>& requests,
                              const ActionCatalog& catalog)
{
    std::vector<Step> steps;
    for (const StepRequest& request : requests) {
        Result<Step> step = stepOf(request, catalog);
        if (!step) {
            Error error = std::move(step.error());
            if (error.file.empty()) {
                error.file = request.file;
            }
            return tl::unexpected<Error>(std::move(error));
        }
        steps.push_back(std::move(*step));
    }
    return Sequence(std::move(steps));
}

Outcome Sequence::begin(KarvelPDFLibraryCPDylibCPP1311& library)
{
    for (Step& step : steps_) {
        if (Outcome done =
                call(step, &CActionInterface::PreSequenceProc, sequenceProcDone, library);
            !done) {
            return done;
        }
    }
    return {};
}

Outcome Sequence::process(KarvelPDFLibraryCPDylibCPP1311& library)
{
    for (Step& step : steps_) {
        if (Outcome done = call(step, &CActionInterface::WorkProc, workProcDone, library); !done) {
            return done;
        }
    }
    return {};
}

Outcome Sequence::end(KarvelPDFLibraryCPDylibCPP1311& library)
{
    Outcome first;
    for (Step& step : steps_) {
        Outcome done = call(step, &CActionInterface::PostSequenceProc, sequenceProcDone, library);
        if (!done && first) {
            first = std::move(done);
        }
    }
    return first;
}

} // namespace vantora
