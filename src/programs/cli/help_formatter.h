#pragma once

#include <string>

#include <CLI/App.hpp>

namespace zel::cli {

/// Lays out the help of a command in at most 80 columns. The usage line contains the required options.
class HelpFormatter : public CLI::Formatter {
  public:
    HelpFormatter();

    std::string make_description(const CLI::App* app) const override;
    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
};

}  // namespace zel::cli
