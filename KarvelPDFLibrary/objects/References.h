#pragma once

#include <functional>
#include <qpdf/QPDFObjectHandle.hh>

namespace karvel {

/// Calls `visit` with a value and with every direct object in it, each before what it holds
/// is read. References are not followed, but `value` itself may be an indirect object; a stream
/// stands for its dictionary.
void forEachDirectPart(const QPDFObjectHandle& value,
                       const std::function<void(QPDFObjectHandle)>& visit);

/// Calls `found` with every reference in a value, without following it. `value` itself may be an
/// indirect object, whose value is looked into.
void forEachReference(const QPDFObjectHandle& value,
                      const std::function<void(const QPDFObjectHandle&)>& found);

} // namespace karvel
