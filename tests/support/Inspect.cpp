#include "tests/support/Inspect.h"

#include "KarvelPDFLibrary/saving/Save.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>

namespace support {

ScratchFolder::ScratchFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "vantora-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no scratch folder could be made");
    }
    folder_ = pattern;
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::string ScratchFolder::write(const std::string& name, const std::string& bytes) const
{
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

CommandResult runCommand(const std::string& command)
{
    CommandResult result;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return result;
    }
    char buffer[4096];
    std::size_t count = 0;
    while ((count = fread(buffer, 1, sizeof buffer, pipe)) > 0) {
        result.output.append(buffer, count);
    }
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

std::vector<std::string> pageTexts(const std::string& pdf, const std::string& password)
{
    const ScratchFolder scratch;
    const CommandResult result = runCommand("pdftotext -upw '" + password + "' -opw '" + password +
                                            "' '" + scratch.write("in.pdf", pdf) + "' -");
    std::vector<std::string> pages;
    std::istringstream all(result.output);
    for (std::string page; std::getline(all, page, '\f');) {
        std::string line;
        for (const char ch : page) {
            line += ch == '\n' ? ' ' : ch;
        }
        while (!line.empty() && line.back() == ' ') {
            line.pop_back();
        }
        pages.push_back(line);
    }
    return pages;
}

std::string problems(const std::string& pdf, const std::string& password)
{
    const ScratchFolder scratch;
    const CommandResult result = runCommand("qpdf --check '--password=" + password + "' '" +
                                            scratch.write("in.pdf", pdf) + "'");
    return result.status == 0 ? std::string() : result.output;
}

std::vector<std::string> pagesNamed(const std::vector<int>& numbers)
{
    std::vector<std::string> names;
    for (const int number : numbers) {
        names.push_back("Page " + std::to_string(number));
    }
    return names;
}

std::string rewritten(const std::string& pdf, const std::string& options)
{
    const ScratchFolder scratch;
    const std::string out = scratch.path("out.pdf");
    const CommandResult result =
        runCommand("qpdf " + options + " '" + scratch.write("in.pdf", pdf) + "' '" + out + "'");
    EXPECT_EQ(result.status, 0) << result.output;
    return readFile(out);
}

std::unique_ptr<karvel::Document> opened(const std::string& pdf, const std::string& password)
{
    auto document = karvel::Document::load(karvel::io::fromMemory(pdf), {password, true});
    EXPECT_TRUE(document.has_value()) << (document ? std::string() : document.error().text);
    return document ? std::move(*document) : nullptr;
}

karvel::saving::SaveOptions keeping(karvel::saving::Way way)
{
    karvel::saving::SaveOptions options;
    options.objectStreams = karvel::saving::ObjectStreams::Keep;
    options.streamData = karvel::saving::StreamData::Keep;
    options.way = way;
    return options;
}

std::string savedIn(karvel::Document& document, karvel::saving::Way way)
{
    const auto bytes = karvel::saving::toString(document, keeping(way));
    EXPECT_TRUE(bytes.has_value()) << (bytes ? std::string() : bytes.error().text);
    return bytes.value_or("");
}

std::string saved(karvel::Document& document)
{
    const auto bytes = karvel::saving::toString(document, {});
    EXPECT_TRUE(bytes.has_value()) << (bytes ? std::string() : bytes.error().text);
    EXPECT_EQ(problems(bytes.value_or("")), "");
    return bytes.value_or("");
}

} // namespace support
