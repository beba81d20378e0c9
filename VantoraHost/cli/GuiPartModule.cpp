#include "VantoraHost/cli/ThisGuiPart.h"

extern "C" __attribute__((visibility("default"))) const vantora::cli::GuiPart* vantoraGuiPart()
{
    return &vantora::cli::thisGuiPart();
}
