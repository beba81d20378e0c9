#pragma once

#include "VantoraHost/core/Installation.h"

#include <QtCore/QJsonObject>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// Runs commands in this process, as a person at a terminal would, and shows what was printed.
namespace terminal {

struct Answer {
    int status = -1;
    std::string out;
    std::string err;
};

/// What is on the person's desk.
struct Setting {
    std::string standardInput;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    std::function<bool()> interrupted = [] { return false; };
    std::filesystem::path library = PDF_LIBRARY;
    std::filesystem::path program = BUILT_PROGRAM; ///< for workers
    std::vector<std::filesystem::path> actionFolders = {ACTION_FOLDER, SCRIPTED_ACTION_FOLDER};
};

Answer run(const std::vector<std::string>& arguments, const Setting& setting = {});

/// The same for the words of a line; what is 'between quotes' is one of them.
Answer run(const std::string& line, const Setting& setting = {});
std::vector<std::string> words(const std::string& line);

/// The lines of a text, without their ends.
std::vector<std::string> lines(const std::string& text);

/// The objects of a text with one on each line.
std::vector<QJsonObject> objects(const std::string& jsonLines);

/// Every file below a folder with its content, and every link with its target.
std::map<std::string, std::string> contents(const std::string& folder);

} // namespace terminal
