#include "VantoraHost/cli/configuration/Configuration.h"
#include "VantoraHost/cli/CommandLine.h"
#include "VantoraHost/cli/Program.h"
#include "VantoraHost/core/ShownText.h"
#include "tests/VantoraHost/cli/configuration/Meaning.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>

// A configuration file of any bytes: it is refused with its line, or what `vantora config` shows of
// it is what runs get.
namespace {

using namespace vantora;
using namespace vantora::cli;

constexpr std::size_t mostProfiles = 3; // of those in a file that are looked at

void require(bool holds, const char* law)
{
    if (!holds) {
        std::cerr << "broken: " << law << '\n';
        std::abort();
    }
}

/// The user's home folder, with the file.
class Home {
public:
    Home()
    {
        require(QDir(folder_.path()).mkpath(QStringLiteral("vantora")), "there is a folder");
        qputenv("HOME", QFile::encodeName(folder_.path()));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder_.path()));
    }

    static void write(const char* bytes, std::size_t size)
    {
        QFile file(QString::fromStdString(configurationPath()));
        require(file.open(QIODevice::WriteOnly) &&
                    file.write(bytes, static_cast<qint64>(size)) == static_cast<qint64>(size),
                "the file of the input can be written");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }

private:
    QTemporaryDir folder_{QStringLiteral("/dev/shm/fuzz-configuration-XXXXXX")};
};

struct Answer {
    int status;
    std::string out;
    std::string err;
};

Answer say(const std::vector<std::string>& arguments)
{
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    const auto noGuiPart = []() -> Result<const GuiPart*> {
        return fail(Reason::LibraryMissing, {}, "is not needed");
    };
    const int status = runProgram(arguments, Installation{}, noGuiPart, {-1, out, err});
    return {status, out.str(), err.str()};
}

std::vector<std::string> withProfile(std::vector<std::string> arguments, const Profile* profile)
{
    if (profile) {
        arguments.push_back("--profile=" + profile->name);
    }
    return arguments;
}

/// A refusal is one line that can be printed, and begins with the file.
void requireRefusal(const Answer& answer)
{
    require(answer.status == WrongUsage && answer.out.empty(), "a refusal prints no result");
    require(!answer.err.empty() && answer.err.back() == '\n', "a refusal is a line");
    const std::string line = answer.err.substr(0, answer.err.size() - 1);
    require(shown(line) == line, "a refusal is one line without anything that can't be printed");
    require(line.rfind("vantora: " + configurationPath() + ":", 0) == 0,
            "a refusal names the file");
}

void requireLine(const std::string& place, const std::string& bytes)
{
    const std::string start = configurationPath() + ":";
    require(place.rfind(start, 0) == 0 && place.size() > start.size(), "an error names a line");
    const std::string number = place.substr(start.size());
    require(number.find_first_not_of("0123456789") == std::string::npos && number.size() < 7,
            "a line is a number");
    const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
    const std::size_t line = std::stoul(number);
    require(line >= 1 && line <= lines, "there is such a line");
}

QJsonObject shownBy(const Answer& answer)
{
    require(answer.err.empty(), "what is shown comes without a message");
    QJsonParseError error;
    const QJsonObject object =
        QJsonDocument::fromJson(QByteArray::fromStdString(answer.out), &error).object();
    require(error.error == QJsonParseError::NoError, "what is shown is JSON");
    return object;
}

std::string quoted(const QString& text)
{
    std::string quoted = "\"";
    for (const char character : text.toStdString()) {
        quoted += character == '"' || character == '\\' ? "\\" : "";
        quoted += character == 0x7F ? "\\u007f" : std::string(1, character);
    }
    return quoted + "\"";
}

std::string asToml(const QJsonValue& value)
{
    if (value.isBool()) {
        return value.toBool() ? "true" : "false";
    }
    if (!value.isArray()) {
        return quoted(value.toString());
    }
    std::string list = "[";
    for (const QJsonValue& one : value.toArray()) {
        list += quoted(one.toString()) + ",";
    }
    return list + "]";
}

/// A file that says in one profile what is shown.
std::string writtenAnew(const QJsonArray& options)
{
    std::string text = "[profile.anew]\n";
    for (const QJsonValue& one : options) {
        const QJsonObject option = one.toObject();
        if (option["origin"].toString() != QLatin1String("default")) {
            text +=
                option["option"].toString().toStdString() + " = " + asToml(option["value"]) + "\n";
        }
    }
    return text;
}

QJsonObject valuesOf(const QJsonArray& options)
{
    QJsonObject values;
    for (const QJsonValue& one : options) {
        values[one.toObject()["option"].toString()] = one.toObject()["value"];
    }
    return values;
}

bool isHeld(const std::vector<HeldOption>& held, const char* name)
{
    return std::any_of(held.begin(), held.end(), [&](const HeldOption& one) {
        return std::string(one.configured->option->name) == name;
    });
}

/// The command line that says by itself what holds, and what both begin with.
struct Typed {
    std::vector<std::string> base = {"run", "any.pdf"};
    std::vector<std::string> whole;

    explicit Typed(const std::vector<HeldOption>& held)
    {
        if (!isHeld(held, "directory")) {
            base.emplace_back("--directory=.");
        }
        const bool hasSteps = std::any_of(held.begin(), held.end(), [](const HeldOption& one) {
            const auto& rivals = one.configured->option->yieldsTo;
            return std::find(rivals.begin(), rivals.end(), std::string("pages")) != rivals.end();
        });
        if (!hasSteps) {
            base.emplace_back("--pages=1");
        }
        whole = base;
        whole.emplace_back("--no-config");
        for (const HeldOption& one : held) {
            add(*one.configured, held);
        }
    }

private:
    void add(const ConfiguredOption& one, const std::vector<HeldOption>& held)
    {
        const std::string company = one.option->goesWith ? one.option->goesWith : "directory";
        if (!one.on || (company != "directory" && !isHeld(held, company.c_str()))) {
            return;
        }
        const std::string name = "--" + std::string(one.option->name);
        if (one.option->kind == ValueKind::Flag) {
            whole.push_back(name);
        }
        for (const std::string& value : one.values) {
            whole.push_back(name + "=" + value);
        }
    }
};

bool endsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

void requireSameRun(const Configuration& configuration, const Profile* profile)
{
    const Typed typed(
        heldOptions(configuration, profile, [](const std::string&) { return false; }));
    const std::string configured = support::meaningOf(parse(withProfile(typed.base, profile)));
    const std::string explicitly = support::meaningOf(parse(typed.whole));
    // A mistake is named with its line where it is the file's.
    if (!endsWith(configured, explicitly)) {
        std::cerr << configured << "\n" << explicitly << '\n';
    }
    require(endsWith(configured, explicitly), "a run gets what is shown");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Home home;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    Home::write(bytes.data(), bytes.size());
    const auto configuration = readConfiguration(configurationPath());
    if (!configuration) {
        requireLine(configuration.error().file, bytes);
        requireRefusal(say({"config"}));
        return 0;
    }
    std::vector<const Profile*> looks = {nullptr};
    for (const Profile& profile : configuration->profiles) {
        if (looks.size() <= mostProfiles) {
            looks.push_back(&profile);
        }
    }
    for (const Profile* profile : looks) {
        requireSameRun(*configuration, profile);
        const Answer answer = say(withProfile({"config", "--json"}, profile));
        if (answer.status != AllDone) {
            continue;
        }
        const QJsonArray options = shownBy(answer)["options"].toArray();
        const std::string anew = writtenAnew(options);
        Home::write(anew.data(), anew.size());
        const QJsonArray again =
            shownBy(say({"config", "--json", "--profile=anew"}))["options"].toArray();
        require(valuesOf(again) == valuesOf(options),
                "what is shown is shown of a file that says so");
        Home::write(bytes.data(), bytes.size());
    }
    return 0;
}
