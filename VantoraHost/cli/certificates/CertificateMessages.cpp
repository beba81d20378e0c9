#include "VantoraHost/cli/certificates/CertificateMessages.h"

#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Json.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QByteArray>

namespace vantora::cli {

std::string certificateOrder(const CertifiedRemoval& removal)
{
    JsonObject json;
    json.addJson("report", toJson(removal.report))
        .add("command", removal.command)
        .add("time", removal.time);
    return json.text();
}

std::optional<CertifiedRemoval> certificateOrderOf(std::string_view line)
{
    const auto json = jsonObjectOf(line);
    auto report = json ? reportOf((*json)["report"].toObject()) : std::nullopt;
    if (!report) {
        return std::nullopt;
    }
    return CertifiedRemoval{std::move(*report), bytesOf((*json)["command"].toString()),
                            bytesOf((*json)["time"].toString())};
}

std::string certificateAnswer(const Result<std::string>& pdf)
{
    JsonObject json;
    if (pdf) {
        json.add("pdf", QByteArray::fromStdString(*pdf).toBase64().toStdString());
    } else {
        json.add("error", errorJson(pdf.error()));
    }
    return json.text();
}

Result<std::string> certificateAnswerOf(std::string_view line)
{
    const auto json = jsonObjectOf(line);
    if (json && (*json)["error"].isObject()) {
        return tl::unexpected<Error>(errorOf((*json)["error"].toObject(), {}));
    }
    std::string pdf =
        json ? QByteArray::fromBase64((*json)["pdf"].toString().toLatin1()).toStdString() : "";
    if (pdf.compare(0, 5, "%PDF-") != 0) {
        return tl::unexpected<Error>(noSense());
    }
    return pdf;
}

} // namespace vantora::cli
