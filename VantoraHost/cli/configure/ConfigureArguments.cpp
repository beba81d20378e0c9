#include "VantoraHost/cli/configure/ConfigureArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"

namespace vantora::cli {

namespace {

constexpr char configureExamples[] = R"(Examples:
  vantora configure "Delete Pages"
  vantora configure "Delete Pages" --set byPageRangeTextEdit=1,4-6 --inside main-window

Prints the options as a JSON object when they are accepted.
Exit status: 0 accepted, 1 not accepted, 2 wrong usage, 130 interrupted.)";

constexpr char insideMainWindow[] = "main-window";
constexpr char insidePreview[] = "preview";

} // namespace

void declareConfigure(CLI::App& program, ConfigureArguments& configure)
{
    CLI::App& command =
        declareCommand(program, "configure", "Open the options dialog of an action");
    command.footer(configureExamples);
    command.add_option("ACTION", configure.action, "The action's name")
        ->required()
        ->option_text(" ");
    oneEach(command.add_option("--set", configure.settings,
                               "An option that the dialog starts from; may be repeated"),
            "KEY=VALUE");
    command.add_flag("--hide-add-to-action-list", configure.options.hideAddToActionList,
                     "Leave out the button that adds the options to an action list");
    command
        .add_option("--inside", configure.place,
                    "Show it inside a window of the host: main-window or preview")
        ->option_text("WINDOW");
}

tl::expected<ConfigureOptions, Ending> finished(ConfigureArguments& configure)
{
    configure.options.step.action = configure.action;
    for (const std::string& text : configure.settings) {
        auto setting = settingOf(text);
        if (!setting) {
            return tl::unexpected<Ending>(mistake(setting.error(), "configure"));
        }
        configure.options.step.options.push_back(std::move(*setting));
    }
    if (configure.place == insideMainWindow) {
        configure.options.place = DialogPlace::MainWindow;
    } else if (configure.place == insidePreview) {
        configure.options.place = DialogPlace::Preview;
    } else if (!configure.place.empty()) {
        return tl::unexpected<Ending>(
            mistake("--inside takes main-window or preview, not " + configure.place, "configure"));
    }
    return std::move(configure.options);
}

} // namespace vantora::cli
