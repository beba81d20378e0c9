#pragma once

#include <cstdint>
#include <string>

namespace vantora {

/// What tells whether another run would make the same of a document, and when the run was.
struct RunIdentity {
    std::string version;      ///< of the program
    std::string stepsDigest;  ///< the same for the same steps with the same options only
    std::string steps;        ///< these steps as a JSON array, for people
    std::int64_t started = 0; ///< in nanoseconds since 1970
    bool salvage = false;     ///< whether damaged documents are done with losses
    bool verify = false;      ///< whether outputs are verified before they get their names
};

/// As it stands in each line of a report: one JSON object. Long steps are left out, since a report
/// has a line for each document.
std::string toJson(const RunIdentity& run);

} // namespace vantora
