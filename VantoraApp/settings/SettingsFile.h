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
///
/// Keys are those of QSettings: "group/key" in a group, without slashes at their ends and with one
/// where several follow each other.
class VANTORA_SHARED SettingsFile {
public:
    /// The largest file that is read and written, in bytes.
    static constexpr qint64 maximumSize = 4 * 1024 * 1024;

    /// Reads a file. The error is the reason, for a person.
    static tl::expected<SettingsFile, QString> Read(const QString& path);

    /// All keys in their order, "group/key" in a group.
    QStringList Keys() const { return values_.keys(); }

    bool Contains(const QString& key) const;

    /// The value of a key: a text, a list, bytes, or a value of the types that options are made of
    /// (StoredVariant.h). Nothing when there is no such key and when its value can't be understood.
    /// Values in a map that can't be are left out of it; `refused` gets their names, "key/name".
    std::optional<QVariant> Value(const QString& key, QStringList* refused = nullptr) const;

private:
    explicit SettingsFile(QMap<QString, QStringList> values) : values_(std::move(values)) {}

    QMap<QString, QStringList> values_;
};

/// What came of writing values into a file.
struct SettingsWriting {
    bool isWritten = false; ///< else the file is as it was before

    /// The values that the file could not give back, by their names: "key", or "key/name" in a map.
    /// They were left out; all are here when they were too large together.
    QStringList refused;

    explicit operator bool() const { return isWritten; }
};

/// Writes a file that holds these values and nothing else. The file is there whole or as it was
/// before; nothing is written but it. Missing folders are created.
VANTORA_SHARED SettingsWriting WriteSettingsFile(const QString& path, const QVariantMap& values);

/// The same through a symbolic link, to the file that the link leads to, and with the permissions
/// of a file that is there.
VANTORA_SHARED SettingsWriting WriteNamedSettingsFile(const QString& path,
                                                      const QVariantMap& values);

/// The same, with all else that an existing file holds kept as it is. A file that is there but
/// can't be read is left alone.
VANTORA_SHARED SettingsWriting UpdateSettingsFile(const QString& path, const QVariantMap& values);

/// Takes the values of keys out of an existing file, whole or not at all.
VANTORA_SHARED bool RemoveFromSettingsFile(const QString& path, const QStringList& keys);
