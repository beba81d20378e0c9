#include "VantoraHost/core/outputs/TextFile.h"

#include "KarvelPDFLibrary/io/OutputFile.h"
#include "VantoraHost/core/LibraryFailure.h"

#include <stdexcept>

namespace vantora {

namespace {

using karvel::io::Existing;

Outcome write(const std::string& path, const std::string& text, Existing existing,
              mode_t allowedAtMost)
{
    using karvel::io::OutputFile;
    Target target;
    target.name = target.path = path;
    auto file = OutputFile::create(path, existing);
    if (!file) {
        return tl::unexpected<Error>(outputFailure(file.error(), target));
    }
    file->allowAtMost(allowedAtMost);
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

} // namespace

Outcome writeTextFile(const std::string& path, const std::string& text)
{
    constexpr mode_t whatTheUserAllows = 0777;
    return write(path, text, Existing::Replace, whatTheUserAllows);
}

Outcome writePrivateText(const std::string& path, const std::string& text, ExistingText existing)
{
    constexpr mode_t ownerOnly = 0600;
    return write(path, text,
                 existing == ExistingText::Replace ? Existing::Replace : Existing::Refuse,
                 ownerOnly);
}

} // namespace vantora
