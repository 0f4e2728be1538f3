// AutomationCommand: one change that something outside the app asks of it,
// whichever way it arrived (link, notification, command line, Shortcuts).
// The tool builds a command and writes it as a quillon:// link; the app reads
// the link back into an equal command. This file also holds the payloads of
// the commands, the sources that may send them, and the link's limits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "CorvelCore/Automation/ExportKind.h"
#include "CorvelCore/Automation/KeyAssignment.h"
#include "CorvelCore/Automation/KeyNameMap.h"
#include "CorvelCore/Automation/ShowOptions.h"
#include "CorvelCore/Faces/LayerTrigger.h"
#include "CorvelCore/Layers/FillMode.h"
#include "CorvelCore/Support/EnumName.h"

namespace corvel {

// Who sent a command; each source may send only its own set of verbs.
enum class AutomationSource { url, notification, commandLine, intent };

// Key assignments by canonical key name, sorted by name.
using KeyAssignments = KeyNameMap<KeyAssignment>;
// Changes to a stored layer's keys; an absent value removes the key's assignment.
using KeyChanges = KeyNameMap<std::optional<KeyAssignment>>;

// A layer shown once and not stored.
struct TemporaryLayerSpec {
  std::optional<std::string> name{};
  KeyAssignments keys{};
  friend bool operator==(const TemporaryLayerSpec&, const TemporaryLayerSpec&) = default;
};

// A layer to be saved.
struct StoredLayerSpec {
  // The modifier combination that holds the layer.
  LayerTrigger trigger{};
  std::optional<std::string> name{};
  // A bundle identifier; the layer then applies only in that app.
  std::optional<std::string> appScope{};
  // Seconds the trigger must be held before the layer shows.
  std::optional<double> holdDelay{};
  std::optional<FillMode> fill{};
  KeyAssignments keys{};
  friend bool operator==(const StoredLayerSpec&, const StoredLayerSpec&) = default;
};

// Whether the type is one of the variant's alternatives.
template <class Kind, class Variant>
inline constexpr bool isAlternative = false;
template <class Kind, class... Kinds>
inline constexpr bool isAlternative<Kind, std::variant<Kinds...>> =
    std::disjunction_v<std::is_same<Kind, Kinds>...>;

// Names a stored layer by its trigger, its name or both, optionally in one app.
struct LayerSelector {
  std::optional<LayerTrigger> trigger{};
  std::optional<std::string> appScope{};
  std::optional<std::string> name{};
  friend bool operator==(const LayerSelector&, const LayerSelector&) = default;
};

class AutomationCommand {
 public:
  struct Show {
    ShowOptions options;
    std::optional<TemporaryLayerSpec> layer;
    friend bool operator==(const Show&, const Show&) = default;
  };
  struct Hide {
    std::optional<std::int64_t> fadeOutMS;
    friend bool operator==(const Hide&, const Hide&) = default;
  };
  struct Toggle {
    ShowOptions options;
    std::optional<TemporaryLayerSpec> layer;
    friend bool operator==(const Toggle&, const Toggle&) = default;
  };
  struct Profile {
    std::string name;
    friend bool operator==(const Profile&, const Profile&) = default;
  };
  struct Theme {
    std::string name;
    friend bool operator==(const Theme&, const Theme&) = default;
  };
  struct LayerShow {
    TemporaryLayerSpec layer;
    std::optional<ShowOptions> options;
    friend bool operator==(const LayerShow&, const LayerShow&) = default;
  };
  struct LayerStore {
    StoredLayerSpec layer;
    friend bool operator==(const LayerStore&, const LayerStore&) = default;
  };
  struct LayerEdit {
    LayerSelector selector;
    KeyChanges changes;
    friend bool operator==(const LayerEdit&, const LayerEdit&) = default;
  };
  struct LayerRemove {
    LayerSelector selector;
    friend bool operator==(const LayerRemove&, const LayerRemove&) = default;
  };
  struct Export {
    ExportKind kind = ExportKind::layers;
    // The destination path.
    std::string file;
    std::optional<std::string> name;
    std::optional<std::string> app;
    friend bool operator==(const Export&, const Export&) = default;
  };
  struct ImportFile {
    std::string file;
    friend bool operator==(const ImportFile&, const ImportFile&) = default;
  };
  struct ClickToType {
    bool on;
    friend bool operator==(const ClickToType&, const ClickToType&) = default;
  };
  struct LayerReset {
    friend bool operator==(const LayerReset&, const LayerReset&) = default;
  };

  using Case = std::variant<Show, Hide, Toggle, Profile, Theme, LayerShow, LayerStore, LayerEdit,
                            LayerRemove, Export, ImportFile, ClickToType, LayerReset>;

  // Apps one command may name.
  static constexpr std::size_t maxApps = 8;
  // Bytes of one link.
  static constexpr std::size_t maxURLBytes = 16384;
  // Query parameters in one link.
  static constexpr std::size_t maxParameters = 200;
  // Key assignments in one command.
  static constexpr std::size_t maxKeys = 80;
  // Unicode scalars in one parameter name or value.
  static constexpr std::size_t maxValueLength = 2000;

  // Every verb, in the order verbs are listed and looked up.
  static constexpr std::array<std::string_view, 13> verbs{
      "show",        "hide",       "toggle",       "profile", "theme",  "layer/show", "layer/reset",
      "layer/store", "layer/edit", "layer/remove", "export",  "import", "clickToType"};

  // A bare word that stands for a layer verb.
  struct ShortVerb {
    std::string_view word;
    std::string_view verb;
  };
  // The short layer verbs, sorted by the short word.
  static constexpr std::array<ShortVerb, 4> shortVerbs{{
      {"edit", "layer/edit"},
      {"remove", "layer/remove"},
      {"reset", "layer/reset"},
      {"store", "layer/store"},
  }};

  // `show` and `toggle` carry a temporary layer exactly when it has keys or
  // the options give a fill (an empty layer is made for a fill alone): that
  // is all a link can say, so the command is kept in the form it reads back as.
  [[nodiscard]] static AutomationCommand show(ShowOptions options,
                                              std::optional<TemporaryLayerSpec> layer);
  [[nodiscard]] static AutomationCommand hide(std::optional<std::int64_t> fadeOutMS) {
    return AutomationCommand(Hide{fadeOutMS});
  }
  [[nodiscard]] static AutomationCommand toggle(ShowOptions options,
                                                std::optional<TemporaryLayerSpec> layer);
  [[nodiscard]] static AutomationCommand profile(std::string name) {
    return AutomationCommand(Profile{std::move(name)});
  }
  [[nodiscard]] static AutomationCommand theme(std::string name) {
    return AutomationCommand(Theme{std::move(name)});
  }
  // Options that set nothing are kept as no options, the way a link reads back.
  [[nodiscard]] static AutomationCommand layerShow(TemporaryLayerSpec layer,
                                                   std::optional<ShowOptions> options);
  [[nodiscard]] static AutomationCommand layerStore(StoredLayerSpec layer) {
    return AutomationCommand(LayerStore{std::move(layer)});
  }
  [[nodiscard]] static AutomationCommand layerEdit(LayerSelector selector, KeyChanges changes) {
    return AutomationCommand(LayerEdit{std::move(selector), std::move(changes)});
  }
  [[nodiscard]] static AutomationCommand layerRemove(LayerSelector selector) {
    return AutomationCommand(LayerRemove{std::move(selector)});
  }
  [[nodiscard]] static AutomationCommand exportFile(ExportKind kind, std::string file,
                                                    std::optional<std::string> name,
                                                    std::optional<std::string> app) {
    return AutomationCommand(Export{kind, std::move(file), std::move(name), std::move(app)});
  }
  [[nodiscard]] static AutomationCommand importFile(std::string file) {
    return AutomationCommand(ImportFile{std::move(file)});
  }
  [[nodiscard]] static AutomationCommand clickToType(bool on) {
    return AutomationCommand(ClickToType{on});
  }
  [[nodiscard]] static AutomationCommand layerReset() { return AutomationCommand(LayerReset{}); }

  [[nodiscard]] const Case& value() const { return value_; }
  // The payload when the command is of case T, otherwise nullptr.
  template <class T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&value_);
  }

  // The command's verb, such as "show" or "layer/store".
  [[nodiscard]] std::string_view verb() const;

  // True when `source` may send this command.
  [[nodiscard]] bool isAllowed(AutomationSource source) const;
  // The same rule by verb text, so that a link can be refused before its
  // parameters are read: "export" and "import" never from a notification,
  // "clickToType" only from Shortcuts, every other verb from anywhere.
  [[nodiscard]] static bool isAllowed(std::string_view verb, AutomationSource source);

  // The distinct bundle identifiers the command's app key assignments name.
  [[nodiscard]] std::set<std::string> appsNamed() const;
  // The refusal of a command that names more than `maxApps` apps.
  [[nodiscard]] static std::string tooManyAppsMessage();

  // The command as a quillon:// link: the verb, then "?" and the
  // percent-encoded query items when there are any, keys sorted by name.
  // The link is built whatever its length; `maxURLBytes` is checked by the
  // parser.
  [[nodiscard]] std::string link() const;
  // The length in bytes of `link()`, without building it.
  [[nodiscard]] std::size_t linkSize() const;
  // True when `link()` is at most `maxURLBytes` bytes long.
  [[nodiscard]] bool fitsLink() const;

  // The distributed notification name for a verb: the app's bundle
  // identifier, ".", and the verb with every "/" turned into ".".
  [[nodiscard]] static std::string notificationName(std::string_view verb);
  // Every name the app listens for: the verbs, then the short verbs.
  [[nodiscard]] static std::vector<std::string> notificationNames();
  // The verb (or short verb) a notification name stands for, or nothing.
  [[nodiscard]] static std::optional<std::string> verb(std::string_view notificationName);

  friend bool operator==(const AutomationCommand&, const AutomationCommand&) = default;

 private:
  // Each case is made where it is kept, without a variant moved in between.
  template <class Kind>
  requires isAlternative<Kind, Case>
  explicit AutomationCommand(Kind value) : value_(std::in_place_type<Kind>, std::move(value)) {}

  Case value_;
};

}  // namespace corvel
