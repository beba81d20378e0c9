#pragma once

#include <QtCore/QString>

#include <string>

namespace vantora::desktop {

/// A sentence of the core or of the library, as people see it: on one line, doing nothing to it,
/// and in the language of the window, as far as somebody has translated it. Those sentences come in
/// English, whole, from other processes and out of reports, too; so each is looked up by a template
/// that it fits, and what stands in it is put into the translation.
QString shownSentence(const std::string& sentence);

} // namespace vantora::desktop
