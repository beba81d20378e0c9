#pragma once

namespace vantora::cli {

/// To be called once Qt's application is there, which takes over the user's locale: numbers are
/// written the same everywhere, and what the system says of failures goes into sentences that are
/// English until they are shown.
void keepPlainLocale();

} // namespace vantora::cli
