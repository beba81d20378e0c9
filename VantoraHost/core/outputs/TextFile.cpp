#include "VantoraHost/core/outputs/TextFile.h"

#include "KarvelPDFLibrary/io/OutputFile.h"
#include "VantoraHost/core/LibraryFailure.h"

#include <stdexcept>

namespace vantora {

Outcome writeTextFile(const std::string& path, const std::string& text)
{
    using karvel::io::OutputFile;
    Target target;
    target.name = target.path = path;
    auto file = OutputFile::create(path, karvel::io::Existing::Replace);
    if (!file) {
        return tl::unexpected<Error>(outputFailure(file.error(), target));
    }
    try {
        file->write(text.data(), text.size());
    } catch (const std::runtime_error& error) {
        return tl::unexpected<Error>(
            outputFailure({karvel::ErrorCode::FileNotWritable, error.what()}, target));
    }
    if (const karvel::Outcome placed = file->commit(); !placed) {
        return tl::unexpected<Error>(outputFailure(placed.error(), target));
    }
    return {};
}

} // namespace vantora
