#include "VantoraHost/cli/ThisGuiPart.h"

#include "VantoraApp/settings/StoredVariant.h"
#include "VantoraHost/cli/certificates/CertificateService.h"
#include "VantoraHost/cli/configure/ConfigureCommand.h"
#include "VantoraHost/cli/lists_favourites_settings/SavedCommand.h"

namespace vantora::cli {

namespace {

class ThisGuiPart : public GuiPart {
public:
    Result<std::vector<StepRequest>> steps(const SavedIn& saved) const override
    {
        return savedSteps(saved);
    }

    std::optional<PreferencesMap> options(const QByteArray& stored) const override
    {
        QStringList refused;
        const auto value = DecodeStoredVariant(stored, &refused);
        return value && value->type() == QVariant::Map && refused.isEmpty()
                   ? std::optional(value->toMap())
                   : std::nullopt;
    }

    int saved(const SavedOptions& options, const Installation& installation,
              const Streams& streams) const override
    {
        return workOnSaved(
            options, installation, [this] { return this; }, streams);
    }

    int configure(const ConfigureOptions& options, const Installation& installation,
                  const Streams& streams) const override
    {
        return cli::configure(options, installation, streams);
    }

    bool drawCertificates(const WorkerChannel& channel) const override
    {
        return cli::drawCertificates(channel);
    }
};

} // namespace

const GuiPart& thisGuiPart()
{
    static const ThisGuiPart part;
    return part;
}

} // namespace vantora::cli
