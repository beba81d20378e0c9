#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>

// What stands for a value in an INI file of QSettings: one text, or several for a list.

/// The texts of a value that can be kept (StoredVariant.h).
QStringList StoredTexts(const QVariant& value);

/// The value that the texts stand for; nothing when they can't be understood. Values in a map that
/// can't be are left out of it and their keys added to `refused`.
std::optional<QVariant> ValueOfStoredTexts(const QStringList& texts, QStringList* refused);
