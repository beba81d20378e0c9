#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

// The dialect of INI files that QSettings has, as IniText reads it.

/// The line that begins a group, without its line end.
QByteArray IniHeader(const QString& group);

/// A key within its group.
QByteArray IniKey(const QString& key);

/// A value: one text, or those of a list. There is at least one.
QByteArray IniValue(const QStringList& texts);
