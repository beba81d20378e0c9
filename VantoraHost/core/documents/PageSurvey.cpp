#include "VantoraHost/core/documents/PageSurvey.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/choices/LibraryFacts.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/reports/DocumentReport.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Json.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QByteArray>
#include <QtCore/QJsonArray>

#include <algorithm>

namespace vantora {

namespace {

constexpr char jpegStart[] = "\xff\xd8\xff";

bool isPicture(const std::string& bytes)
{
    return bytes.size() <= largestPicture && bytes.compare(0, sizeof jpegStart - 1, jpegStart) == 0;
}

void takePictures(KarvelPDFLibraryCPDylibCPP1311& library, PageSurvey& survey, std::size_t most)
{
    constexpr int longerSide = 240; // in pixels, about twice as shown, for fine screens
    constexpr int asJpeg = 2;
    for (const ChosenPage& chosen : survey.chosen) {
        for (int page = std::max(1, chosen.page - 1);
             page <= std::min(survey.pages, chosen.page + 1); ++page) {
            if (survey.pictures.size() >= most) {
                return;
            }
            const auto [picture, isNew] = survey.pictures.try_emplace(page);
            if (isNew) {
                picture->second = library.RenderThumbnailToString(page, longerSide, asJpeg);
            }
        }
    }
}

// A page that can't be shown may go all the same.
void dropWhatIsNoPicture(PageSurvey& survey)
{
    for (auto picture = survey.pictures.begin(); picture != survey.pictures.end();) {
        picture = isPicture(picture->second) ? std::next(picture) : survey.pictures.erase(picture);
    }
}

JsonObject chosenJson(const ChosenPage& chosen)
{
    JsonObject json;
    json.add("page", chosen.page)
        .add("reason",
             chosen.reason.empty() ? std::nullopt : std::optional<std::string>(chosen.reason))
        .add("figure", chosen.figure);
    return json;
}

ChosenPage chosenOf(const QJsonObject& json)
{
    ChosenPage chosen = {json["page"].toInt(), bytesOf(json["reason"].toString())};
    if (json["figure"].isDouble()) {
        chosen.figure = json["figure"].toDouble();
    }
    return chosen;
}

JsonObject pictureJson(int page, const std::string& bytes)
{
    JsonObject json;
    json.add("page", page).add("jpeg", QByteArray::fromStdString(bytes).toBase64().toStdString());
    return json;
}

} // namespace

Result<PageSurvey> surveyPages(KarvelPDFLibraryCPDylibCPP1311& library, const std::string& input,
                               const std::string& standardInput,
                               const std::vector<std::string>& passwords, const ChoiceSet& choices,
                               std::size_t pictures)
{
    const auto document =
        OpenDocument::open(library, input, standardInput, passwords, Access::Read);
    if (!document) {
        return tl::unexpected<Error>(document.error());
    }
    PageSurvey survey;
    survey.input = input;
    LibraryFacts facts(library, input);
    survey.pages = facts.count();
    auto chosen = choosePages(choices, facts);
    if (!chosen) {
        return tl::unexpected<Error>(std::move(chosen.error()));
    }
    survey.chosen = std::move(*chosen);
    takePictures(library, survey, std::min(pictures, mostPictures));
    dropWhatIsNoPicture(survey);
    survey.warnings = facts.remarks();
    survey.repairs = document->repairs();
    return survey;
}

std::string toJson(const PageSurvey& survey, WithPictures pictures)
{
    std::vector<JsonObject> chosen;
    for (const ChosenPage& page : survey.chosen) {
        chosen.push_back(chosenJson(page));
    }
    JsonObject json;
    json.add("schema", reportSchema)
        .add("input", survey.input)
        .add("status", "done")
        .add("pages", survey.pages)
        .add("range", rangeTextOf(survey.chosen))
        .add("chosen", chosen)
        .add("warnings", withRepairs(survey.warnings, survey.repairs))
        .add("errors", std::vector<std::string>());
    if (pictures == WithPictures::Yes) {
        std::vector<JsonObject> objects;
        for (const auto& [page, bytes] : survey.pictures) {
            objects.push_back(pictureJson(page, bytes));
        }
        json.add("pictures", objects);
    }
    return json.text();
}

Result<PageSurvey> pageSurveyOf(std::string_view text)
{
    const Result<QJsonObject> json = doneObjectOf(text);
    if (!json) {
        return tl::unexpected<Error>(json.error());
    }
    PageSurvey survey;
    survey.input = bytesOf((*json)["input"].toString());
    survey.pages = (*json)["pages"].toInt();
    for (const QJsonValue& value : (*json)["chosen"].toArray()) {
        ChosenPage page = chosenOf(value.toObject());
        const int last = survey.chosen.empty() ? 0 : survey.chosen.back().page;
        if (page.page <= last || page.page > survey.pages) {
            return tl::unexpected<Error>(noSense());
        }
        survey.chosen.push_back(std::move(page));
    }
    for (const QJsonValue& value : (*json)["pictures"].toArray()) {
        const QJsonObject picture = value.toObject();
        survey.pictures[picture["page"].toInt()] =
            QByteArray::fromBase64(picture["jpeg"].toString().toLatin1()).toStdString();
    }
    dropWhatIsNoPicture(survey);
    takeWarnings((*json)["warnings"].toArray(), survey.warnings, survey.repairs);
    return survey;
}

} // namespace vantora
