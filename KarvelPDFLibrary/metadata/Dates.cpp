#include "KarvelPDFLibrary/metadata/Dates.h"

#include <cstdio>
#include <cstdlib>
#include <regex>

namespace karvel::metadata {

namespace {

int daysIn(int month, int year)
{
    static constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[month - 1];
}

/// Matches year, month, day, hour, minute, second, then "Z" or sign, hours and minutes.
std::optional<Date> match(const std::string& text, const std::regex& form)
{
    std::smatch parts;
    if (text.size() > 40 || !std::regex_match(text, parts, form)) {
        return std::nullopt;
    }
    const auto number = [&](std::size_t part, int absent) {
        return parts[part].matched ? std::atoi(parts[part].str().c_str()) : absent;
    };
    Date date = {number(1, 0), number(2, 1), number(3, 1),        number(4, 0),
                 number(5, 0), number(6, 0), std::optional<int>()};
    if (parts[7].matched) {
        date.utcOffset = 0;
    } else if (parts[8].matched) {
        const int offset = number(9, 0) * 60 + number(10, 0);
        date.utcOffset = parts[8].str() == "-" ? -offset : offset;
    }
    return isValid(date) ? std::optional<Date>(date) : std::nullopt;
}

std::string print(const Date& date, const char* form, const char* offsetForm)
{
    char text[64];
    std::snprintf(text, sizeof text, form, date.year, date.month, date.day, date.hour, date.minute,
                  date.second);
    std::string printed = text;
    if (date.utcOffset) {
        const int offset = std::abs(*date.utcOffset);
        std::snprintf(text, sizeof text, offsetForm, *date.utcOffset < 0 ? '-' : '+', offset / 60,
                      offset % 60);
        printed += text;
    }
    return printed;
}

} // namespace

bool isValid(const Date& date)
{
    const auto within = [](int value, int first, int last) {
        return value >= first && value <= last;
    };
    return within(date.year, 0, 9999) && within(date.month, 1, 12) &&
           within(date.day, 1, daysIn(date.month, date.year)) && within(date.hour, 0, 23) &&
           within(date.minute, 0, 59) && within(date.second, 0, 59) &&
           within(date.utcOffset.value_or(0), -23 * 60 - 59, 23 * 60 + 59);
}

std::optional<Date> fromPdf(const std::string& text)
{
    // Writers leave out the prefix and the apostrophes, or add one at the end.
    static const std::regex form(
        R"((?:D:)?(\d{4})(?:(\d\d)(?:(\d\d)(?:(\d\d)(?:(\d\d)(\d\d)?)?)?)?)?)"
        R"((?:(Z)(?:00'?(?:00'?)?)?|([+-])(\d\d)'?(?:(\d\d)'?)?)?)");
    return match(text, form);
}

std::optional<Date> fromIso8601(const std::string& text)
{
    static const std::regex form(
        R"((\d{4})(?:-(\d\d)(?:-(\d\d)(?:[T ](\d\d):(\d\d)(?::(\d\d)(?:\.\d+)?)?)"
        R"((?:(Z)|([+-])(\d\d):?(\d\d)?)?)?)?)?)");
    return match(text, form);
}

std::string toPdf(const Date& date)
{
    return print(date, "D:%04d%02d%02d%02d%02d%02d", "%c%02d'%02d'");
}

std::string toIso8601(const Date& date)
{
    return print(date, "%04d-%02d-%02dT%02d:%02d:%02d", "%c%02d:%02d");
}

} // namespace karvel::metadata
