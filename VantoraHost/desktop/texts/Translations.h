#pragma once

#include <QtCore/QTranslator>

class QLocale;

namespace vantora::desktop {

/// The language of the window, as long as this lives: the first of the user's that there is a
/// translation for, else English. What Qt says itself, such as in dialogs for files, comes in the
/// same language where Qt's own translations are installed.
class Translations {
public:
    explicit Translations(const QLocale& locale);

private:
    QTranslator program_;
    QTranslator sentences_; ///< of other layers, which the terminal shows, too
    QTranslator toolkit_;
};

} // namespace vantora::desktop
