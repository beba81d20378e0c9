#include "KarvelPDFLibrary/objects/References.h"

namespace karvel {

namespace {

struct Nothing {};

} // namespace

void forEachDirectPart(const QPDFObjectHandle& value,
                       const std::function<void(QPDFObjectHandle)>& visit)
{
    walkParts(
        value, Nothing(),
        [&](const QPDFObjectHandle& part, Nothing, const PartPlace&) {
            visit(part);
            return std::optional<Nothing>(Nothing());
        },
        [](const QPDFObjectHandle&, Nothing, const PartPlace&) {});
}

void forEachReference(const QPDFObjectHandle& value,
                      const std::function<void(const QPDFObjectHandle&)>& found)
{
    walkParts(
        value, Nothing(),
        [](const QPDFObjectHandle&, Nothing, const PartPlace&) {
            return std::optional<Nothing>(Nothing());
        },
        [&](const QPDFObjectHandle& reference, Nothing, const PartPlace&) { found(reference); });
}

} // namespace karvel
