#pragma once

#include <functional>
#include <qpdf/QPDFObjectHandle.hh>

namespace karvel {

/// Calls `found` with every reference in a value, without following it. `value` itself may be an
/// indirect object, whose value is looked into.
void forEachReference(const QPDFObjectHandle& value,
                      const std::function<void(const QPDFObjectHandle&)>& found);

} // namespace karvel
