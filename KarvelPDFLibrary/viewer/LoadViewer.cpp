#include "KarvelPDFLibrary/base/Module.h"
#include "KarvelPDFLibrary/viewer/Viewer.h"

namespace karvel::viewer {

Result<Viewer*> loadedViewer()
{
    static Module<Viewer> module("KarvelPDFLibraryViewer.so");
    return module.loaded();
}

} // namespace karvel::viewer
