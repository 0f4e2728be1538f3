#include "CorvelCore/Automation/AutomationCommand.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "CorvelCore/Automation/LinkCoding.h"
#include "CorvelCore/Automation/TriggerText.h"
#include "CorvelCore/Brand/Brand.h"

namespace corvel {

namespace {

// The verb each case carries, in declaration order of the cases.
constexpr std::array<std::string_view, std::variant_size_v<AutomationCommand::Case>> caseVerbs{
    "show",       "hide",         "toggle", "profile", "theme",       "layer/show", "layer/store",
    "layer/edit", "layer/remove", "export", "import",  "clickToType", "layer/reset"};

// Whether a whole number is shorter written with an exponent ("1e+05")
// than plainly: its significant digits, a point when there are several,
// and "e+" with two digits (the number is below 10^15).
bool exponentIsShorter(std::uint64_t magnitude) {
  int digits = 0;
  int trailingZeros = 0;
  for (std::uint64_t rest = magnitude; rest != 0; rest /= 10) {
    trailingZeros = rest % 10 == 0 && trailingZeros == digits ? trailingZeros + 1 : trailingZeros;
    ++digits;
  }
  const int significant = digits - trailingZeros;
  return significant + (significant > 1 ? 1 : 0) + 4 < digits;
}

// Writes the number in its shortest form that reads back exactly, as
// std::to_chars does, and returns where it ends. A whole number below 10^15
// (a width, a point, a delay) is written as an integer, which costs far
// less: its shortest digits are its own without trailing zeros, since its
// neighbours lie less than 1 away, and its plain form is the shortest
// unless the one with an exponent ("1e+05" for 100000) is shorter.
char* writeNumber(char* out, char* end, double value) {
  constexpr double wholeLimit = 1e15;
  if (value != 0 && std::abs(value) < wholeLimit) {
    const auto whole = static_cast<std::int64_t>(value);
    if (static_cast<double>(whole) == value) {
      const std::uint64_t magnitude =
          whole < 0 ? 0 - static_cast<std::uint64_t>(whole) : static_cast<std::uint64_t>(whole);
      // Below 100000 the plain form is never the longer.
      constexpr std::uint64_t firstExponentWin = 100000;
      if (magnitude < firstExponentWin || !exponentIsShorter(magnitude)) {
        return std::to_chars(out, end, whole).ptr;
      }
    }
  }
  return std::to_chars(out, end, value).ptr;
}

// Writes the query of a link, or only counts its bytes, so that the parser
// can check a command's size without building its link. Counting may also
// take a quick upper bound, which looks at no byte of a text: a byte is
// encoded in at most three, a number in at most as many as its longest form.
// The link is written into room of that bound, so no byte is checked for
// room as it goes. The mode is part of the type, so that each mode's walk
// over a command does only its own work.
enum class QueryMode { write, count, bound };

template <QueryMode mode>
class QueryWriter {
 public:
  // Writing goes to `out`, which must have room for the bound of the same
  // query; counting and bounding take no `out`.
  explicit QueryWriter(char* out = nullptr) : cursor_(out) {}
  QueryWriter(const QueryWriter&) = delete;
  QueryWriter& operator=(const QueryWriter&) = delete;

  void item(std::string_view name, std::string_view value) {
    start(name);
    piece(value);
  }

  void assignment(std::string_view key, const KeyAssignment& assignment) {
    if constexpr (mode == QueryMode::bound) {
      size_ += 2 + encodedBound(key) + writtenSizeBound(assignment);
      first_ = false;
      return;
    }
    // The written form is encoded piece by piece, never joined.
    const KeyAssignment::Written written = assignment.writtenParts();
    start(key);
    for (std::string_view part : {written.prefix, written.first, written.bar, written.second}) {
      if (!part.empty()) piece(part);
    }
  }

  void integer(std::string_view name, std::int64_t value) {
    if constexpr (mode == QueryMode::bound) return boundItem(name, kLongestInteger);
    char buffer[kLongestInteger];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    item(name, std::string_view(buffer, static_cast<std::size_t>(result.ptr - buffer)));
  }

  // Numbers are written in their shortest form that reads back exactly.
  void number(std::string_view name, double value) {
    if constexpr (mode == QueryMode::bound) return boundItem(name, kLongestNumber);
    char buffer[kLongestNumber];
    const char* end = writeNumber(buffer, buffer + sizeof buffer, value);
    item(name, std::string_view(buffer, static_cast<std::size_t>(end - buffer)));
  }

  void point(std::string_view name, double x, double y) {
    if constexpr (mode == QueryMode::bound) return boundItem(name, 2 * kLongestNumber + 1);
    char buffer[2 * kLongestNumber + 1];
    char* colon = writeNumber(buffer, buffer + kLongestNumber, x);
    *colon = ':';
    const char* end = writeNumber(colon + 1, buffer + sizeof buffer, y);
    item(name, std::string_view(buffer, static_cast<std::size_t>(end - buffer)));
  }

  // What counting or bounding found.
  [[nodiscard]] std::size_t size() const { return size_; }
  // Where the written query ends.
  [[nodiscard]] char* end() const { return cursor_; }

 private:
  // The most characters an integer or a double is written with ("-" and 19
  // digits; a sign, 17 digits, a point and an exponent such as "e-308"),
  // none of which is encoded.
  static constexpr std::size_t kLongestInteger = 24;
  static constexpr std::size_t kLongestNumber = 32;

  static std::size_t encodedBound(std::string_view text) { return 3 * text.size(); }

  // A bound on an item whose value is a number, without writing the number.
  void boundItem(std::string_view name, std::size_t longestValue) {
    size_ += 2 + encodedBound(name) + longestValue;
    first_ = false;
  }

  // An item's "?" or "&", its encoded name and "=".
  void start(std::string_view name) {
    if constexpr (mode == QueryMode::write) {
      put(first_ ? '?' : '&');
      piece(name);
      put('=');
    } else {
      size_ += 2;
      piece(name);
    }
    first_ = false;
  }

  void piece(std::string_view text) {
    if constexpr (mode == QueryMode::write) {
      cursor_ = LinkCoding::encode(text, cursor_);
    } else if constexpr (mode == QueryMode::count) {
      size_ += LinkCoding::encodedSize(text);
    } else {
      size_ += encodedBound(text);
    }
  }

  void put(char c) { *cursor_++ = c; }

  // A bound on the encoded size of the written form, a text counted as if
  // it needed its "text:" prefix.
  static std::size_t writtenSizeBound(const KeyAssignment& assignment) {
    const auto& value = assignment.value();
    if (const auto* text = std::get_if<KeyAssignment::Text>(&value)) {
      return 5 + encodedBound(text->text);
    }
    if (const auto* symbol = std::get_if<KeyAssignment::Symbol>(&value)) {
      return 2 + encodedBound(symbol->symbol);
    }
    if (const auto* app = std::get_if<KeyAssignment::App>(&value)) {
      return 2 + encodedBound(app->bundleID);
    }
    const auto& both = std::get<KeyAssignment::SymbolText>(value);
    return 5 + encodedBound(both.symbol) + encodedBound(both.text);
  }

  char* cursor_;
  std::size_t size_ = 0;
  bool first_ = true;
};

template <class Writer>
void writeOptions(Writer& writer, const ShowOptions& options) {
  if (options.position) {
    if (const auto* named = options.position->as<PositionRequest::Named>()) {
      writer.item("position", rawValue(named->position));
    } else if (const auto* point = options.position->as<PositionRequest::Point>()) {
      writer.point("position", point->x, point->y);
    }
  }
  if (options.width) writer.number("width", *options.width);
  if (options.screen) {
    if (const auto* id = options.screen->as<ScreenRequest::ID>()) {
      writer.integer("screen", id->id);
    } else if (const auto* name = options.screen->as<ScreenRequest::Name>()) {
      writer.item("screen", name->name);
    }
  }
  if (options.theme) writer.item("theme", *options.theme);
  if (options.fill) writer.item("fill", rawValue(*options.fill));
  if (options.hideAfterMS) writer.integer("hideAfterMS", *options.hideAfterMS);
  if (options.fadeOutMS) writer.integer("fadeOutMS", *options.fadeOutMS);
}

template <class Writer>
void writeOptional(Writer& writer, std::string_view name, const std::optional<std::string>& value) {
  if (value) writer.item(name, *value);
}

template <class Writer>
void writeKeys(Writer& writer, const KeyAssignments& keys) {
  for (const auto& [key, assignment] : keys) writer.assignment(key, assignment);
}

template <class Writer>
void writeLayer(Writer& writer, const TemporaryLayerSpec& layer) {
  writeOptional(writer, "name", layer.name);
  writeKeys(writer, layer.keys);
}

template <class Writer>
void writeSelector(Writer& writer, const LayerSelector& selector) {
  if (selector.trigger) writer.item("modifiers", TriggerText::format(*selector.trigger));
  writeOptional(writer, "app", selector.appScope);
  writeOptional(writer, "name", selector.name);
}

template <class Writer>
void writeQuery(Writer& writer, const AutomationCommand::Case& value) {
  using Command = AutomationCommand;
  if (const auto* show = std::get_if<Command::Show>(&value)) {
    writeOptions(writer, show->options);
    if (show->layer) writeLayer(writer, *show->layer);
  } else if (const auto* hide = std::get_if<Command::Hide>(&value)) {
    if (hide->fadeOutMS) writer.integer("fadeOutMS", *hide->fadeOutMS);
  } else if (const auto* toggle = std::get_if<Command::Toggle>(&value)) {
    writeOptions(writer, toggle->options);
    if (toggle->layer) writeLayer(writer, *toggle->layer);
  } else if (const auto* profile = std::get_if<Command::Profile>(&value)) {
    writer.item("name", profile->name);
  } else if (const auto* theme = std::get_if<Command::Theme>(&value)) {
    writer.item("name", theme->name);
  } else if (const auto* layerShow = std::get_if<Command::LayerShow>(&value)) {
    if (layerShow->options) writeOptions(writer, *layerShow->options);
    writeLayer(writer, layerShow->layer);
  } else if (const auto* store = std::get_if<Command::LayerStore>(&value)) {
    const StoredLayerSpec& layer = store->layer;
    writer.item("modifiers", TriggerText::format(layer.trigger));
    writeOptional(writer, "name", layer.name);
    writeOptional(writer, "app", layer.appScope);
    if (layer.holdDelay) writer.number("holdDelay", *layer.holdDelay);
    if (layer.fill) writer.item("fill", rawValue(*layer.fill));
    writeKeys(writer, layer.keys);
  } else if (const auto* edit = std::get_if<Command::LayerEdit>(&value)) {
    writeSelector(writer, edit->selector);
    for (const auto& [key, change] : edit->changes) {
      // A removal is written "-"; a text that is exactly "-" is written
      // "text:-" by the assignment itself, so the two never meet.
      if (change) {
        writer.assignment(key, *change);
      } else {
        writer.item(key, "-");
      }
    }
  } else if (const auto* remove = std::get_if<Command::LayerRemove>(&value)) {
    writeSelector(writer, remove->selector);
  } else if (const auto* exported = std::get_if<Command::Export>(&value)) {
    writer.item("what", rawValue(exported->kind));
    writer.item("file", exported->file);
    writeOptional(writer, "name", exported->name);
    writeOptional(writer, "app", exported->app);
  } else if (const auto* imported = std::get_if<Command::ImportFile>(&value)) {
    writer.item("file", imported->file);
  } else if (const auto* click = std::get_if<Command::ClickToType>(&value)) {
    writer.item("on", click->on ? "1" : "0");
  }
}

void addApps(std::set<std::string>& apps, const KeyAssignments& keys) {
  for (const auto& [key, assignment] : keys) {
    if (const auto* app = std::get_if<KeyAssignment::App>(&assignment.value())) {
      apps.insert(app->bundleID);
    }
  }
}

// A shown command has a temporary layer exactly when it carries keys or a
// fill, which is all a link can say about it.
void settleShownLayer(const ShowOptions& options, std::optional<TemporaryLayerSpec>& layer) {
  if (layer && layer->keys.empty() && !options.fill) {
    layer.reset();
  } else if (!layer && options.fill) {
    layer.emplace();
  }
}

}  // namespace

AutomationCommand AutomationCommand::show(ShowOptions options,
                                          std::optional<TemporaryLayerSpec> layer) {
  settleShownLayer(options, layer);
  return AutomationCommand(Show{std::move(options), std::move(layer)});
}

AutomationCommand AutomationCommand::toggle(ShowOptions options,
                                            std::optional<TemporaryLayerSpec> layer) {
  settleShownLayer(options, layer);
  return AutomationCommand(Toggle{std::move(options), std::move(layer)});
}

AutomationCommand AutomationCommand::layerShow(TemporaryLayerSpec layer,
                                               std::optional<ShowOptions> options) {
  if (options && options->isEmpty()) options.reset();
  return AutomationCommand(LayerShow{std::move(layer), std::move(options)});
}

std::string_view AutomationCommand::verb() const { return caseVerbs[value_.index()]; }

bool AutomationCommand::isAllowed(AutomationSource source) const {
  return isAllowed(verb(), source);
}

bool AutomationCommand::isAllowed(std::string_view verb, AutomationSource source) {
  if (verb == "export" || verb == "import") return source != AutomationSource::notification;
  if (verb == "clickToType") return source == AutomationSource::intent;
  return true;
}

std::set<std::string> AutomationCommand::appsNamed() const {
  std::set<std::string> apps;
  if (const auto* show = as<Show>(); show && show->layer) addApps(apps, show->layer->keys);
  if (const auto* toggle = as<Toggle>(); toggle && toggle->layer) {
    addApps(apps, toggle->layer->keys);
  }
  if (const auto* layerShow = as<LayerShow>()) addApps(apps, layerShow->layer.keys);
  if (const auto* store = as<LayerStore>()) addApps(apps, store->layer.keys);
  if (const auto* edit = as<LayerEdit>()) {
    for (const auto& [key, change] : edit->changes) {
      if (!change) continue;
      if (const auto* app = std::get_if<KeyAssignment::App>(&change->value())) {
        apps.insert(app->bundleID);
      }
    }
  }
  return apps;
}

std::string AutomationCommand::tooManyAppsMessage() {
  return "A command may name at most " + std::to_string(maxApps) + " apps. Name fewer.";
}

std::string AutomationCommand::link() const {
  // The bound costs one walk over the command without reading its texts;
  // the link is then written once into room for it, and cut to its size.
  QueryWriter<QueryMode::bound> bound;
  writeQuery(bound, value_);
  const std::string_view verb = this->verb();
  std::string out;
  out.resize_and_overwrite(
      Brand::linkScheme.size() + 3 + verb.size() + bound.size(), [&](char* data, std::size_t) {
        char* at = std::copy(Brand::linkScheme.begin(), Brand::linkScheme.end(), data);
        at = std::copy_n("://", 3, at);
        at = std::copy(verb.begin(), verb.end(), at);
        QueryWriter<QueryMode::write> writer(at);
        writeQuery(writer, value_);
        return static_cast<std::size_t>(writer.end() - data);
      });
  return out;
}

std::size_t AutomationCommand::linkSize() const {
  QueryWriter<QueryMode::count> writer;
  writeQuery(writer, value_);
  return Brand::linkScheme.size() + 3 + verb().size() + writer.size();
}

bool AutomationCommand::fitsLink() const {
  QueryWriter<QueryMode::bound> bound;
  writeQuery(bound, value_);
  if (Brand::linkScheme.size() + 3 + verb().size() + bound.size() <= maxURLBytes) return true;
  return linkSize() <= maxURLBytes;
}

std::string AutomationCommand::notificationName(std::string_view verb) {
  std::string name(Brand::bundleID);
  name += '.';
  for (char c : verb) name += c == '/' ? '.' : c;
  return name;
}

std::vector<std::string> AutomationCommand::notificationNames() {
  std::vector<std::string> names;
  names.reserve(verbs.size() + shortVerbs.size());
  for (std::string_view verb : verbs) names.push_back(notificationName(verb));
  for (const auto& shortVerb : shortVerbs) names.push_back(notificationName(shortVerb.word));
  return names;
}

std::optional<std::string> AutomationCommand::verb(std::string_view notificationName) {
  std::string prefix(Brand::bundleID);
  prefix += '.';
  if (!notificationName.starts_with(prefix)) return std::nullopt;
  std::string verb(notificationName.substr(prefix.size()));
  std::replace(verb.begin(), verb.end(), '.', '/');
  bool known = std::find(verbs.begin(), verbs.end(), verb) != verbs.end() ||
               std::any_of(shortVerbs.begin(), shortVerbs.end(),
                           [&](const ShortVerb& shortVerb) { return shortVerb.word == verb; });
  if (!known) return std::nullopt;
  return verb;
}

}  // namespace corvel
