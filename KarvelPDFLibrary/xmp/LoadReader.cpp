#include "KarvelPDFLibrary/base/Module.h"
#include "KarvelPDFLibrary/xmp/Packets.h"

namespace karvel::xmp {

Result<PacketReader*> loadedReader()
{
    static Module<PacketReader> module("KarvelPDFLibraryXmp.so");
    return module.loaded();
}

} // namespace karvel::xmp
