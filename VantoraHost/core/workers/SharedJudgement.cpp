#include "VantoraHost/core/workers/SharedJudgement.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/documents/SurveyShares.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/workers/ConfinedCall.h"
#include "VantoraHost/core/workers/Confinement.h"

namespace vantora {

namespace {

// Judging the pages of a smaller file takes about as long as opening it in several processes.
constexpr std::uint64_t leastBytes = 1024 * 1024;

std::vector<std::string> worthSharing(const Batch& batch)
{
    std::vector<std::string> inputs;
    for (std::size_t i = 0; i < batch.inputs.size(); ++i) {
        const std::string& input = batch.inputs[i];
        const auto state = stateOf(input);
        if (batch.targets[i] && input != standardStream && state && state->size >= leastBytes) {
            inputs.push_back(input);
        }
    }
    return inputs;
}

} // namespace

std::vector<JudgedDocument> judgeTogether(const ChoiceSet& choices, const Batch& batch,
                                          const Judges& judges)
{
    if (batch.inputs.size() >= judges.count || !isWorthSharing(choices)) {
        return {};
    }
    const std::vector<std::string> inputs = worthSharing(batch);
    const auto library =
        inputs.empty() ? nullptr : loadPdfLibrary(judges.library).value_or(nullptr);
    if (!library) {
        return {};
    }
    SurveyShares shares;
    ConfinedWork calls;
    calls.count = inputs.size();
    calls.limits = {{programFiles({judges.library.parent_path()}), {}}, judges.memory, judges.time};
    calls.documents = [&](std::size_t i) { return std::vector{inputs[i]}; };
    calls.work = [&](std::size_t i, std::size_t part) {
        SurveyRequest request = {choices, batch.settings.passwords};
        request.span = shares.spanOf(inputs[i], part);
        const auto survey = surveyPages(*library, inputs[i], {}, request);
        return survey ? toJson(*survey, Extent::Whole) : failureJson(survey.error(), inputs[i]);
    };
    calls.furtherParts = [&](std::size_t i, const std::string& first) {
        return shares.furtherParts(inputs[i], first, judges.count);
    };
    std::vector<JudgedDocument> judged;
    callEachConfined(calls, judges.count, judges.cancelled, [&](std::size_t, PieceAnswers found) {
        if (auto survey = std::move(found).and_then(SurveyShares::join)) {
            judged.push_back({std::move(survey->version), survey->pages,
                              rangeTextOf(survey->chosen), std::move(survey->unreadable)});
        }
    });
    return judged;
}

} // namespace vantora
