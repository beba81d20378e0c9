#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <utility>
#include <vector>

namespace karvel {

/// Where a value stands in the array or dictionary that holds it.
struct PartPlace {
    const std::string* key = nullptr; // in a dictionary
    std::size_t index = 0;            // in an array
};

/// Goes over a value and the arrays and dictionaries that stand in it without numbers of their own,
/// those that hold others before these. References are not followed, but `value` itself may be an
/// indirect object; a stream stands for its dictionary. Whoever changes a part while it is entered
/// changes what is gone over.
///
/// `enter(part, context, place)` gives the context for what a part holds, as an std::optional;
/// nothing lets that be passed over. `found(reference, context, place)` is called with each
/// reference. The context is that of the part around; `context` and no place for `value` itself.
template <class Context, class Enter, class Found>
void walkParts(const QPDFObjectHandle& value, const Context& context, const Enter& enter,
               const Found& found)
{
    struct Open {
        QPDFObjectHandle part;
        Context context;
    };
    std::vector<Open> open;
    const auto pass = [&](QPDFObjectHandle part, const Context& around, const PartPlace& place) {
        if (part.isStream()) {
            part = part.getDict();
        }
        if (!part.isArray() && !part.isDictionary()) {
            return;
        }
        if (std::optional<Context> inside = enter(part, around, place)) {
            open.push_back({part, std::move(*inside)});
        }
    };
    pass(value, context, {});
    for (std::size_t at = 0; at < open.size(); ++at) {
        const Open holder = open[at];
        const auto look = [&](const QPDFObjectHandle& item, const PartPlace& place) {
            if (item.isIndirect()) {
                found(item, holder.context, place);
            } else {
                pass(item, holder.context, place);
            }
        };
        if (QPDFObjectHandle(holder.part).isArray()) {
            std::size_t index = 0;
            for (const QPDFObjectHandle& item : QPDFObjectHandle(holder.part).getArrayAsVector()) {
                look(item, {nullptr, index++});
            }
        } else {
            for (const auto& [key, item] : QPDFObjectHandle(holder.part).getDictAsMap()) {
                look(item, {&key, 0});
            }
        }
    }
}

/// Calls `visit` with a value and with every array and dictionary in it, as walkParts() does.
void forEachDirectPart(const QPDFObjectHandle& value,
                       const std::function<void(QPDFObjectHandle)>& visit);

/// Calls `found` with every reference in a value, without following it.
void forEachReference(const QPDFObjectHandle& value,
                      const std::function<void(const QPDFObjectHandle&)>& found);

} // namespace karvel
