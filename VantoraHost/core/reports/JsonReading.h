#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QJsonArray;

namespace vantora {

/// The bytes of a text that JsonObject wrote, also where they are no valid UTF-8.
std::string bytesOf(const QString& text);

/// The texts of an array, with what is no text as an empty one.
std::vector<std::string> bytesOf(const QJsonArray& texts);

/// A whole number from 0 that a double holds exactly, which is what JSON's numbers are read as;
/// none for anything else.
std::optional<std::uint64_t> wholeNumber(const QJsonValue& value);

/// The object that a line holds; none when it isn't one.
std::optional<QJsonObject> jsonObjectOf(std::string_view line);

} // namespace vantora
