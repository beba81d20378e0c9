#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraHost/cli/Program.h"
#include "VantoraHost/cli/ThisGuiPart.h"
#include "tests/VantoraHost/cli/language/SpokenTo.h"
#include "tests/support/Inspect.h"

#include <QtCore/QJsonDocument>

#include <iomanip>
#include <sstream>
#include <sys/mman.h>
#include <unistd.h>

namespace terminal {

namespace fs = std::filesystem;

Answer runIn(const vantora::Language& language, const std::vector<std::string>& arguments,
             const Setting& setting)
{
    const int in = ::memfd_create("standard input", 0);
    const auto size = static_cast<ssize_t>(setting.standardInput.size());
    if (in < 0 || ::write(in, setting.standardInput.data(), setting.standardInput.size()) != size) {
        return {};
    }
    ::lseek(in, 0, SEEK_SET);

    std::ostringstream out;
    std::ostringstream err;
    const vantora::cli::Streams streams = {
        in,      out, err, setting.outIsTerminal, setting.errIsTerminal, false, setting.interrupted,
        language};
    const vantora::Installation installation = {
        setting.library, setting.actionFolders, {}, {}, setting.program, VERIFIER, {}};
    const int status = vantora::cli::runProgram(
        arguments, installation, [] { return &vantora::cli::thisGuiPart(); }, streams);
    ::close(in);
    return {status, out.str(), err.str()};
}

Answer run(const std::vector<std::string>& arguments, const Setting& setting)
{
    return runIn({}, arguments, setting);
}

Answer run(const std::string& line, const Setting& setting)
{
    return run(words(line), setting);
}

std::vector<std::string> words(const std::string& line)
{
    std::vector<std::string> found;
    std::istringstream stream(line);
    for (std::string word; stream >> std::quoted(word, '\'');) {
        found.push_back(word);
    }
    return found;
}

std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> found;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        found.push_back(line);
    }
    return found;
}

std::vector<QJsonObject> objects(const std::string& jsonLines)
{
    std::vector<QJsonObject> found;
    for (const std::string& line : lines(jsonLines)) {
        found.push_back(QJsonDocument::fromJson(QByteArray::fromStdString(line)).object());
    }
    return found;
}

std::map<std::string, std::string> contents(const std::string& folder)
{
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::string& content = found[entry.path()];
        if (entry.is_symlink()) {
            content = "link to " + fs::read_symlink(entry.path()).string();
        } else if (entry.is_regular_file()) {
            content = support::readFile(entry.path());
        }
    }
    return found;
}

} // namespace terminal
