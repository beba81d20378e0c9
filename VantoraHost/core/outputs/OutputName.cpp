#include "VantoraHost/core/outputs/OutputName.h"

#include "VantoraApp/CActionUtils.h"

namespace vantora {

tl::expected<OutputName, std::string> OutputName::of(std::string_view text)
{
    OutputName made;
    std::string literal;
    const auto endLiteral = [&] {
        if (!literal.empty()) {
            made.parts_.push_back({Kind::Text, std::move(literal)});
            literal.clear();
        }
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        if (rest.substr(0, 2) == "{{" || rest.substr(0, 2) == "}}") {
            literal += rest[0];
            at += 2;
        } else if (rest[0] == '{') {
            const std::string_view field = rest.substr(0, rest.find('}') + 1);
            if (field != "{name}" && field != "{ext}" && field != "{number}") {
                return tl::unexpected<std::string>("takes {name}, {ext} and {number} only");
            }
            endLiteral();
            made.parts_.push_back({field == "{name}"  ? Kind::Name
                                   : field == "{ext}" ? Kind::Extension
                                                      : Kind::Number,
                                   {}});
            at += field.size();
        } else if (rest[0] == '}' || rest[0] == '/' || rest[0] == '\0') {
            return tl::unexpected<std::string>("holds a slash or a single brace");
        } else {
            literal += rest[0];
            ++at;
        }
    }
    endLiteral();
    if (made.parts_.empty()) {
        return tl::unexpected<std::string>("is empty");
    }
    return made;
}

std::string OutputName::of(std::string_view fileName, std::size_t number, std::size_t total) const
{
    const std::size_t dot = fileName.rfind('.');
    const std::size_t end = dot == 0 ? fileName.size() : std::min(dot, fileName.size());
    std::string name;
    for (const Part& part : parts_) {
        switch (part.kind) {
        case Kind::Text:
            name += part.text;
            break;
        case Kind::Name:
            name += fileName.substr(0, end);
            break;
        case Kind::Extension:
            name += fileName.substr(end);
            break;
        case Kind::Number:
            name += CActionUtils::GetStringWithLeadingZeroesFromString(
                        QString::number(number), static_cast<int>(std::to_string(total).size()))
                        .toStdString();
            break;
        }
    }
    return name;
}

} // namespace vantora
