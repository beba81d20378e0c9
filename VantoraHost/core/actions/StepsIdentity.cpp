#include "VantoraHost/core/actions/StepsIdentity.h"

#include "VantoraHost/core/FileDigest.h"
#include "VantoraHost/core/actions/PreferencesJson.h"

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>

namespace vantora {

// By the form in which options are saved, which tells all values apart; JSON does not.
std::string stepsDigest(const std::vector<Step>& steps)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_0);
    for (const Step& step : steps) {
        stream << QByteArray::fromStdString(step.action.name) << QVariant(step.preferences);
    }
    return sha256Of({bytes.constData(), static_cast<std::size_t>(bytes.size())});
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
