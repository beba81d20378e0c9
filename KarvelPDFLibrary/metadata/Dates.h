#pragma once

#include <optional>
#include <string>

namespace karvel::metadata {

/// A point in time as information dictionaries hold it; parts left out are those of the start of
/// the period.
struct Date {
    int year = 0;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    std::optional<int> utcOffset; // minutes; unknown when absent
};

/// Whether each part is within its range and the day exists.
bool isValid(const Date& date);

/// Reads "D:20240229120000+01'00'" and its shorter forms (ISO 32000-2, 7.9.4); nothing when the
/// text is no date.
std::optional<Date> fromPdf(const std::string& text);

/// Reads "2024-02-29T12:00:00+01:00" and its shorter forms; nothing when the text is no date.
std::optional<Date> fromIso8601(const std::string& text);

std::string toPdf(const Date& date);
std::string toIso8601(const Date& date);

} // namespace karvel::metadata
