#include "VantoraHost/core/reports/RunIdentity.h"

#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/reports/Json.h"

namespace vantora {

std::string toJson(const RunIdentity& run)
{
    constexpr std::size_t longestSteps = 2000;
    JsonObject json;
    json.add("version", run.version)
        .add("started", std::to_string(run.started))
        .add("started_at", isoTime(run.started))
        .add("steps_sha256", run.stepsDigest)
        .addJson("steps",
                 run.steps.empty() || run.steps.size() > longestSteps ? "null" : run.steps);
    if (run.salvage) {
        json.add("salvage", true);
    }
    if (run.verify) {
        json.add("verify", true);
    }
    return json.text();
}

} // namespace vantora
