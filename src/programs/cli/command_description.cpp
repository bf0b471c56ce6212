#include "programs/cli/command_description.h"

#include <algorithm>
#include <vector>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "programs/cli/program_options.h"

namespace zel::cli {

namespace {

using Json = nlohmann::ordered_json;

/// The names in a type such as "yes|no|cancel"; none for a type in capitals, such as "FILE|-".
std::vector<std::string> ChoicesOf(const std::string& type) {
    std::vector<std::string> names;
    for (std::size_t begin = 0; begin <= type.size();) {
        const std::size_t end = std::min(type.find('|', begin), type.size());
        names.push_back(type.substr(begin, end - begin));
        begin = end + 1;
    }
    const auto is_capital = [](char character) { return character >= 'A' && character <= 'Z'; };
    if (names.size() < 2 || std::ranges::any_of(type, is_capital)) return {};
    return names;
}

Json DescriptionOf(const CLI::Option& option) {
    Json names = Json::array();
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    if (names.empty()) names.push_back(option.get_name(true));
    const std::string type = option.get_type_size() != 0 ? option.get_type_name() : "";
    return {{"names", names},
            {"value", type},
            {"choices", ChoicesOf(type)},
            {"description", option.get_description()},
            {"required", option.get_required()},
            {"repeated", option.get_expected_max() >= CLI::detail::expected_max_vector_size}};
}

Json DescriptionOf(const CLI::App& app) {
    Json arguments = Json::array(), options = Json::array(), commands = Json::array();
    for (const CLI::Option* option : app.get_options())
        (option->nonpositional() ? options : arguments).push_back(DescriptionOf(*option));
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        commands.push_back(DescriptionOf(*command));
    return {{"name", app.get_name()},     {"description", app.get_description()},
            {"footer", app.get_footer()}, {"arguments", arguments},
            {"options", options},         {"commands", commands}};
}

}  // namespace

std::string DescribeCommands(std::span<const NamedCommand> commands) {
    CLI::App app;
    AddProgramOptions(app, [] { return std::string(); });
    CommandRun run;
    for (const NamedCommand& command : commands) command.add(app, run);
    return DescriptionOf(app).dump(1) + "\n";
}

}  // namespace zel::cli
