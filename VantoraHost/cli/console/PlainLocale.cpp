#include "VantoraHost/cli/console/PlainLocale.h"

#include <clocale>

namespace vantora::cli {

void keepPlainLocale()
{
    std::setlocale(LC_NUMERIC, "C");
    std::setlocale(LC_MESSAGES, "C");
}

} // namespace vantora::cli
