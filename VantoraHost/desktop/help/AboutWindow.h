#pragma once

class QWidget;

namespace vantora::desktop {

/// Shows the program's name and the versions of what it is made of, in a window that waits for
/// nobody.
void showAbout(QWidget& parent);

} // namespace vantora::desktop
