#include "VantoraHost/core/reports/JsonReading.h"

#include "KarvelPDFLibrary/base/Text.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>

namespace vantora {

namespace {

bool isAscii(QChar unit)
{
    return unit.unicode() < 0x80;
}

} // namespace

// Qt's own conversions replace the lone surrogates that stand for such bytes.
std::string bytesOf(const QString& text)
{
    if (std::all_of(text.begin(), text.end(), isAscii)) {
        std::string bytes(static_cast<std::size_t>(text.size()), '\0');
        std::transform(text.begin(), text.end(), bytes.begin(),
                       [](QChar unit) { return unit.toLatin1(); });
        return bytes;
    }
    std::wstring wide;
    wide.reserve(static_cast<std::size_t>(text.size()));
    for (int i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        if (unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            wide += static_cast<wchar_t>(QChar::surrogateToUcs4(unit, text[++i]));
        } else {
            wide += static_cast<wchar_t>(unit.unicode());
        }
    }
    return karvel::text::fromWide(wide);
}

std::vector<std::string> bytesOf(const QJsonArray& texts)
{
    std::vector<std::string> all;
    for (const QJsonValue& value : texts) {
        all.push_back(bytesOf(value.toString()));
    }
    return all;
}

std::optional<std::uint64_t> wholeNumber(const QJsonValue& value)
{
    constexpr double exactly = 9007199254740992; // 2^53
    const double number = value.toDouble(-1);
    return number >= 0 && number <= exactly
               ? std::optional<std::uint64_t>(static_cast<std::uint64_t>(number))
               : std::nullopt;
}

std::optional<QJsonObject> jsonObjectOf(std::string_view line)
{
    const QJsonDocument document = QJsonDocument::fromJson(
        QByteArray::fromRawData(line.data(), static_cast<int>(line.size())));
    return document.isObject() ? std::optional<QJsonObject>(document.object()) : std::nullopt;
}

} // namespace vantora
