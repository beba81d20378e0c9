#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <string>

namespace vantora::desktop {

/// Text that came from outside, as people see it: on one line, and doing nothing to it.
QString shownText(const std::string& text);

/// The name at the end of a path, as people see it.
QString shownName(const std::string& path);

/// A text as the entry of a menu or a button that shows it as it is.
QString onButton(QString text);

/// Figures of the core, such as "12,345" or "10.1 kB", with the marks of the user's country.
QString figureText(const std::string& figures);

/// 12345 as "12,345", in the same way.
QString numberText(std::uint64_t number);

/// A size such as "1 byte", "812 bytes" or "10.1 kB".
QString sizeShown(std::uint64_t bytes);

/// A number as texts with plural forms count.
int asCount(std::uint64_t number);

/// A path as Qt has it and as the system has it.
QString qtPath(const std::string& path);
std::string systemPath(const QString& path);

} // namespace vantora::desktop
