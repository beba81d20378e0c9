#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>
#include <tl/expected.hpp>

/// A file in the INI format of QSettings, read without trusting it: it may come from anybody.
/// The whole file is read at once and closed; nothing is locked, created or cached.
class VANTORA_SHARED SettingsFile {
public:
    /// The largest file that is read, in bytes.
    static constexpr qint64 maximumSize = 4 * 1024 * 1024;

    /// Reads a file. The error is the reason, for a person.
    static tl::expected<SettingsFile, QString> Read(const QString& path);

    /// All keys in their order, "group/key" in a group.
    QStringList Keys() const { return mValues.keys(); }

    bool Contains(const QString& key) const { return mValues.contains(key); }

    /// The value of a key: a text, a list of texts, bytes, or a value of the types that options are
    /// made of. Nothing when there is no such key and when its value can't be understood.
    std::optional<QVariant> Value(const QString& key) const;

private:
    explicit SettingsFile(QMap<QString, QStringList> values) : mValues(std::move(values)) {}

    QMap<QString, QStringList> mValues;
};

/// Writes a file that holds these values and nothing else, outside any group. The file is there
/// whole or, when false is returned, as it was before. Missing folders are created.
VANTORA_SHARED bool WriteSettingsFile(const QString& path, const QVariantMap& values);

/// The same, with all else that an existing file holds kept as it is. A file that is there but
/// can't be read is left alone.
VANTORA_SHARED bool UpdateSettingsFile(const QString& path, const QVariantMap& values);

/// Takes the values of keys outside any group out of an existing file, whole or not at all.
VANTORA_SHARED bool RemoveFromSettingsFile(const QString& path, const QStringList& keys);
