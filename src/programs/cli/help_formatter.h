#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <CLI/App.hpp>

namespace zel::cli {

/// Lays out the help of a command in the width of the terminal, at least 40 columns. The usage line contains the
/// required options.
class HelpFormatter : public CLI::Formatter {
  public:
    HelpFormatter();

    std::string make_description(const CLI::App* app) const override;
    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    std::string make_option(const CLI::Option* option, bool is_positional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_usage(const CLI::Option* option) const override;
    std::string make_footer(const CLI::App* app) const override;

  private:
    std::string Entry(const std::string& name, std::string_view description) const;

    /// In columns.
    const std::size_t m_width;
};

}  // namespace zel::cli
