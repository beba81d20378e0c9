#include "VantoraHost/core/outputs/TextFile.h"

#include "KarvelPDFLibrary/io/OutputFile.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/outputs/OutputPlan.h"

#include <stdexcept>

namespace vantora {

namespace {

using karvel::io::Existing;

constexpr mode_t ownerOnly = 0600;

Outcome finish(karvel::Result<karvel::io::OutputFile> file, const Target& target,
               const std::string& bytes, mode_t allowedAtMost)
{
    if (!file) {
        return tl::unexpected<Error>(outputFailure(file.error(), target));
    }
    file->allowAtMost(allowedAtMost);
    try {
        file->write(bytes.data(), bytes.size());
    } catch (const std::runtime_error& error) {
        return tl::unexpected<Error>(
            outputFailure({karvel::ErrorCode::FileNotWritable, error.what()}, target));
    }
    if (const karvel::Outcome placed = file->commit(); !placed) {
        return tl::unexpected<Error>(outputFailure(placed.error(), target));
    }
    return {};
}

Outcome write(const std::string& path, const std::string& text, Existing existing,
              mode_t allowedAtMost)
{
    Target target;
    target.name = target.path = path;
    return finish(karvel::io::OutputFile::create(path, existing), target, text, allowedAtMost);
}

} // namespace

Outcome writeTextFile(const std::string& path, const std::string& text)
{
    constexpr mode_t whatTheUserAllows = 0777;
    return write(path, text, Existing::Replace, whatTheUserAllows);
}

Outcome writePrivateText(const std::string& path, const std::string& text, ExistingText existing)
{
    return write(path, text,
                 existing == ExistingText::Replace ? Existing::Replace : Existing::Refuse,
                 ownerOnly);
}

Outcome writePrivateFile(const Target& target, TargetFolders& folders, const std::string& bytes)
{
    const Target place = target.number ? underFreeName(target) : target;
    const auto folder = folders.of(place);
    if (!folder) {
        return tl::unexpected<Error>(folder.error());
    }
    auto file = karvel::io::OutputFile::create(
        *folder, place.path, place.replaced ? Existing::Replace : Existing::Refuse);
    if (file && place.replaced) {
        file->replaceOnly(*place.replaced);
    }
    return finish(std::move(file), place, bytes, ownerOnly);
}

} // namespace vantora
