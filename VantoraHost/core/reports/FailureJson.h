#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/reports/Json.h"

#include <QtCore/QJsonObject>

#include <optional>
#include <string>
#include <string_view>

namespace vantora {

/// The format of reports and of what commands print: a number that grows when a reader of the older
/// one would be misled.
inline constexpr int reportSchema = 1;

/// An error as it stands in reports: its reason and its text.
JsonObject errorJson(const Error& error);

/// What such an object says of a file. A reason that is not known reads as LibraryFailed.
Error errorOf(const QJsonObject& json, std::string file);

/// What one line says of a document, unless it is about a failure, or makes no sense.
Result<QJsonObject> doneObjectOf(std::string_view line);

/// An input, null for none in particular, about which there is nothing to say but why: one line.
std::string failureJson(const Error& error, std::optional<std::string_view> input);

} // namespace vantora
