#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <optional>
#include <tl/expected.hpp>

/// The bytes of a regular file of at most `maximumSize` bytes. The error is the reason, for a
/// person; a pipe or a folder is one, and so is a file that grows while it is read.
tl::expected<QByteArray, QString> ReadWholeFile(const QString& path, qint64 maximumSize);

/// Puts a file in the place of any that is at the path: whole and on the disk, or, when false is
/// returned, not at all. Missing folders are created; a folder is not replaced. The permissions are
/// those of any new file unless others are given.
bool WriteWholeFile(const QString& path, const QByteArray& bytes,
                    std::optional<QFile::Permissions> permissions = std::nullopt);
