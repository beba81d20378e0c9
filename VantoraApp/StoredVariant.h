#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QByteArray>
#include <QtCore/QVariant>

#include <optional>

/// Decodes a value as QSettings stores it behind "@Variant(": QDataStream's encoding of version
/// Qt 4.0. Takes only the types that options and pictures are made of, and nothing that is larger
/// or deeper than the bytes can account for. QVariant's own operator creates objects of whatever
/// type the bytes name and allocates as much as they ask for, which bytes of unknown origin must
/// not decide. Returns nothing for any other value and for damaged ones.
VANTORA_SHARED std::optional<QVariant> DecodeStoredVariant(const QByteArray& bytes);
