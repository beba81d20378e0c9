#include "VantoraHost/cli/pages/Sheet.h"

#include "VantoraHost/core/ShownText.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/choices/RangesFile.h"
#include "VantoraHost/core/reports/Json.h"

#include <QtCore/QByteArray>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string_view>

namespace vantora::cli {

namespace {

constexpr std::string_view dataMark = "@SHEET_DATA@";

std::string base64(const std::string& bytes)
{
    return QByteArray::fromStdString(bytes).toBase64().toStdString();
}

std::string wholePath(const std::string& input)
{
    std::error_code failed;
    return input == standardStream ? input : std::filesystem::absolute(input, failed).string();
}

/// "blank, 0.2 % differs" or "duplicate of page 3".
std::string reasonText(const ChosenPage& chosen)
{
    if (!chosen.figure) {
        return shown(chosen.reason);
    }
    if (chosen.reason.rfind("duplicate", 0) == 0) {
        return "duplicate of page " + std::to_string(static_cast<int>(*chosen.figure));
    }
    std::array<char, 32> figure = {};
    std::snprintf(figure.data(), figure.size(), ", %.2g %% differs", *chosen.figure);
    return shown(chosen.reason) + figure.data();
}

JsonObject documentJson(const std::string& input, const PageSurvey& survey, std::size_t most)
{
    constexpr std::size_t mostReasons = 5000; // the page shows no more
    std::vector<JsonObject> reasons;
    for (std::size_t i = 0; i < survey.chosen.size() && i < mostReasons; ++i) {
        JsonObject reason;
        reason.add("page", survey.chosen[i].page).add("text", reasonText(survey.chosen[i]));
        reasons.push_back(std::move(reason));
    }
    JsonObject pictures;
    std::size_t taken = 0;
    for (const auto& [page, bytes] : survey.pictures) {
        if (taken++ < most) {
            pictures.add(std::to_string(page).c_str(), base64(bytes));
        }
    }
    JsonObject json;
    json.add("name", input == standardStream ? "standard input" : shown(input))
        .add("field", base64(rangesField(wholePath(input))))
        .add("pages", survey.pages)
        .add("range", rangeTextOf(survey.chosen))
        .add("reasons", reasons)
        .add("pictures", pictures);
    return json;
}

// An element of the page ends where its text says so, in whatever text of the data that stands.
std::string withinScript(const std::string& json)
{
    std::string text;
    text.reserve(json.size());
    for (const char c : json) {
        if (c == '<' || c == '>' || c == '&') {
            text += c == '<' ? "\\u003c" : c == '>' ? "\\u003e" : "\\u0026";
        } else {
            text += c;
        }
    }
    return text;
}

void append(std::string& array, const JsonObject& json)
{
    array += (array.empty() ? "" : ",\n") + json.text();
}

} // namespace

void Sheet::add(const std::string& input, const PageSurvey& survey)
{
    append(documents_, documentJson(input, survey, picturesLeft()));
    pictures_ += std::min(survey.pictures.size(), picturesLeft());
}

void Sheet::addFailure(const std::string& input, const std::string& why)
{
    JsonObject json;
    json.add("name", shown(input)).add("why", shown(why));
    append(failed_, json);
}

std::string Sheet::html() const
{
    std::vector<std::string> choices;
    for (const std::string& choice : choices_) {
        choices.push_back(shown(choice));
    }
    JsonObject json;
    json.add("choices", choices)
        .addJson("documents", "[\n" + documents_ + "\n]")
        .addJson("failed", "[\n" + failed_ + "\n]");
    const std::string_view page = sheetPage;
    const std::size_t mark = page.find(dataMark);
    return std::string(page.substr(0, mark)) + withinScript(json.text()) +
           std::string(page.substr(mark + dataMark.size()));
}

} // namespace vantora::cli
