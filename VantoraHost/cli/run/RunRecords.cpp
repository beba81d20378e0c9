#include "VantoraHost/cli/run/RunRecords.h"

#include <unordered_set>

namespace vantora::cli {

Result<std::vector<Result<Target>>> planCertificates(const RunOptions& options,
                                                     const std::vector<Input>& inputs,
                                                     const std::vector<Result<Target>>& outputs)
{
    if (!options.certificates) {
        return std::vector<Result<Target>>();
    }
    if (inputs.size() > 1 && std::holds_alternative<ToFile>(*options.certificates)) {
        return fail(Reason::WrongUsage, {},
                    "--certificate names the certificate of one document; for " +
                        std::to_string(inputs.size()) +
                        " use a name such as {name}-certificate.pdf");
    }
    auto planned = planOutputs(inputs, *options.certificates, options.taken);
    if (!planned) {
        return planned;
    }
    std::unordered_set<std::string> taken;
    for (const Result<Target>& output : outputs) {
        if (output) {
            taken.insert(normalPath(output->path));
            taken.insert(normalPath(output->backup));
        }
    }
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        Result<Target>& place = (*planned)[i];
        if (place && !inputs[i].leftAlone && taken.count(normalPath(place->path)) > 0) {
            place = fail(Reason::OutputClash, inputs[i].path,
                         "its certificate would be written to " + place->name +
                             ", where an output or a backup goes");
        }
    }
    return planned;
}

RunRecords::RunRecords(Certifier certifier, std::vector<Result<Target>> certificates,
                       const std::vector<std::string>& inputs,
                       std::optional<ChecksumFile> checksums)
    : certifier_(std::move(certifier)), checksums_(std::move(checksums))
{
    for (std::size_t i = 0; i < certificates.size(); ++i) {
        if (certificates[i] && !certificates[i]->path.empty()) {
            certificates_.emplace(inputs[i], std::move(*certificates[i]));
        }
    }
}

Outcome RunRecords::add(const DocumentReport& report)
{
    if (report.status != DocumentStatus::Done) {
        return {};
    }
    if (checksums_) {
        checksums_->add(report);
    }
    const auto place = certificates_.find(report.input);
    return place == certificates_.end() ? Outcome() : certifier_.certify(report, place->second);
}

Outcome RunRecords::finish()
{
    return checksums_ ? checksums_->commit() : Outcome();
}

} // namespace vantora::cli
