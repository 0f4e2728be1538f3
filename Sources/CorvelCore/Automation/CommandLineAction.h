// CommandLineAction: the one thing a command line asks for, as the grammar
// read it: a command for the app, a listing, an export, help or the version.
#pragma once

#include <optional>
#include <string>
#include <type_traits>
#include <variant>

#include "CorvelCore/Automation/AutomationCommand.h"

namespace corvel {

class CommandLineAction {
 public:
  struct Send {
    AutomationCommand command;
    friend bool operator==(const Send&, const Send&) = default;
  };
  struct ListLayers {
    bool json = false;
    friend bool operator==(const ListLayers&, const ListLayers&) = default;
  };
  struct ListThemes {
    bool json = false;
    friend bool operator==(const ListThemes&, const ListThemes&) = default;
  };
  struct ListSheets {
    bool json = false;
    friend bool operator==(const ListSheets&, const ListSheets&) = default;
  };
  struct ExportLayers {
    std::optional<std::string> name;  // a layer's name or modifiers; all layers when absent
    std::string path;
    friend bool operator==(const ExportLayers&, const ExportLayers&) = default;
  };
  struct ExportTheme {
    std::optional<std::string> name;  // a theme's name or id; the theme in use when absent
    std::string path;
    friend bool operator==(const ExportTheme&, const ExportTheme&) = default;
  };
  struct ExportSheet {
    std::string app;  // bundle identifier
    std::string path;
    friend bool operator==(const ExportSheet&, const ExportSheet&) = default;
  };
  struct Help {
    std::optional<std::string> topic;
    friend bool operator==(const Help&, const Help&) = default;
  };
  struct Version {
    friend bool operator==(const Version&, const Version&) = default;
  };

  using Case = std::variant<Send, ListLayers, ListThemes, ListSheets, ExportLayers, ExportTheme,
                            ExportSheet, Help, Version>;

  // Any one case becomes an action.
  template <class T>
  requires std::is_constructible_v<Case, T> CommandLineAction(T value) : value_(std::move(value)) {}

  [[nodiscard]] const Case& value() const { return value_; }
  // The payload when the action is of case T, otherwise nullptr.
  template <class T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&value_);
  }

  friend bool operator==(const CommandLineAction&, const CommandLineAction&) = default;

 private:
  Case value_;
};

}  // namespace corvel
