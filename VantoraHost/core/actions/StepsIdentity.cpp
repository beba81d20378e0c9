#include "VantoraHost/core/actions/StepsIdentity.h"

#include "VantoraHost/core/FileDigest.h"
#include "VantoraHost/core/actions/PreferencesJson.h"

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>

namespace vantora {

namespace {

// By the form in which options are saved, which tells all values apart; JSON does not.
class Identity {
public:
    Identity() { stream_.setVersion(QDataStream::Qt_4_0); }

    void add(const std::string& action, const PreferencesMap& preferences)
    {
        stream_ << QByteArray::fromStdString(action) << QVariant(preferences);
    }

    std::string digest() const
    {
        return sha256Of({bytes_.constData(), static_cast<std::size_t>(bytes_.size())});
    }

private:
    QByteArray bytes_;
    QDataStream stream_{&bytes_, QIODevice::WriteOnly};
};

} // namespace

std::string stepsDigest(const std::vector<Step>& steps)
{
    Identity identity;
    for (const Step& step : steps) {
        identity.add(step.action.name, step.preferences);
    }
    return identity.digest();
}

std::string stepsDigest(const std::vector<StepRequest>& steps)
{
    Identity identity;
    for (const StepRequest& step : steps) {
        identity.add(step.action, step.stored);
    }
    return identity.digest();
}

std::string stepsJson(const std::vector<Step>& steps)
{
    std::string array;
    for (const Step& step : steps) {
        array += (array.empty() ? "" : ",") +
                 preferencesJson({{"action", QString::fromStdString(step.action.name)},
                                  {"options", step.preferences}});
    }
    return "[" + array + "]";
}

} // namespace vantora
