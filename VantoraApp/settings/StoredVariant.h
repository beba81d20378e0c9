#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>

/// Decodes a value as QSettings stores it behind "@Variant(": QDataStream's encoding of version
/// Qt 4.0. Takes the types that options are made of: all scalars, texts, dates, shapes, fonts, pens
/// and brushes, pictures of at most 16 million pixels, JSON values, and lists and maps of these,
/// none larger or deeper than the bytes can account for. QVariant's own operator creates objects of
/// whatever type the bytes name and allocates as much as they ask for, which bytes of unknown
/// origin must not decide. Pixmaps come as images in a program that has no windows.
///
/// Returns nothing for any other value and for damaged ones. A map loses only the values in it that
/// can't be taken; their keys ("key", "map/key") are added to `refused`.
VANTORA_SHARED std::optional<QVariant> DecodeStoredVariant(const QByteArray& bytes,
                                                           QStringList* refused = nullptr);

/// The same for a date and time behind "@DateTime(": the encoding of version Qt 5.6.
std::optional<QVariant> DecodeStoredDateTime(const QByteArray& bytes);

/// The encodings of the two. The value has to be one that can be kept.
VANTORA_SHARED QByteArray EncodeStoredVariant(const QVariant& value);
QByteArray EncodeStoredDateTime(const QVariant& value);

/// The value without what can't be kept, that is, can't be decoded again. Names of what is left out
/// are added to `refused`: `name` for the value itself, which then is invalid, "name/key" in a map
/// and "name/0" in a list, where an invalid value takes its place.
QVariant KeepableVariant(const QVariant& value, const QString& name, QStringList& refused);
