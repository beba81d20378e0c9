#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// Makes a check box or radio button field that lost some of its widgets agree with those that are
/// left: its /Kids, the export values in /Opt, which belong to the kids in their order (ISO
/// 32000-2, 12.7.5.2.3), and its value and default value, which name states. Other fields are left
/// as they are.
void putButtonStatesRight(Removal& removal, QPDFObjectHandle field);

} // namespace karvel::deletion
