#include "VantoraHost/core/outputs/ChecksumFile.h"

#include "VantoraHost/core/LibraryFailure.h"

#include <stdexcept>

namespace vantora {

namespace {

using karvel::io::Existing;
using karvel::io::OutputFile;

tl::unexpected<Error> notWritten(const std::string& path, const karvel::Error& error)
{
    Target target;
    target.name = target.path = path;
    return tl::unexpected<Error>(outputFailure(error, target));
}

// A line holds one name: what would end it is written as sha256sum does.
std::string escaped(const std::string& path)
{
    std::string text;
    for (const char letter : path) {
        switch (letter) {
        case '\\':
            text += "\\\\";
            break;
        case '\n':
            text += "\\n";
            break;
        case '\r':
            text += "\\r";
            break;
        default:
            text += letter;
        }
    }
    return text;
}

} // namespace

std::string checksumLine(const std::string& sha256, const std::string& path)
{
    const std::string name = escaped(path);
    return (name == path ? "" : "\\") + sha256 + "  " + name + '\n';
}

Result<ChecksumFile> ChecksumFile::create(const std::string& path, ExistingText existing)
{
    auto file = OutputFile::create(path, existing == ExistingText::Replace ? Existing::Replace
                                                                           : Existing::Refuse);
    if (!file) {
        return notWritten(path, file.error());
    }
    ChecksumFile checksums(path, std::move(*file));
    checksums.write("# SHA-256 of outputs; sha256sum -c checks them. Inputs stand above them.\n");
    return checksums;
}

void ChecksumFile::add(const DocumentReport& report)
{
    if (report.status != DocumentStatus::Done || report.outputSha256.empty()) {
        return;
    }
    if (!report.inputSha256.empty()) {
        write("# from " + checksumLine(report.inputSha256, report.input));
    }
    write(checksumLine(report.outputSha256, report.output));
}

void ChecksumFile::write(const std::string& text)
{
    if (!failure_.empty()) {
        return;
    }
    try {
        file_.write(text.data(), text.size());
    } catch (const std::runtime_error& error) {
        failure_ = error.what();
    }
}

Outcome ChecksumFile::commit()
{
    if (!failure_.empty()) {
        return notWritten(path_, {karvel::ErrorCode::FileNotWritable, failure_});
    }
    if (const karvel::Outcome placed = file_.commit(); !placed) {
        return notWritten(path_, placed.error());
    }
    return {};
}

} // namespace vantora
