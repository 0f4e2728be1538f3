#include "CorvelCore/Automation/AutomationParser.h"

#include <algorithm>
#include <vector>

#include "CorvelCore/Automation/LinkComponents.h"
#include "CorvelCore/Automation/ParameterText.h"
#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {

namespace {

using Result = std::expected<AutomationCommand, AutomationError>;
using Build = Result (*)(const AutomationParameters&);

// The parameters every verb that shows the board knows.
constexpr std::array<std::string_view, 10> shownParameters{
    "position", "x:y",   "width",       "screen",    "theme",
    "fill",     "blank", "hideAfterMS", "fadeOutMS", "name"};
constexpr std::array<std::string_view, 1> hideParameters{"fadeOutMS"};
constexpr std::array<std::string_view, 1> nameParameters{"name"};
constexpr std::array<std::string_view, 6> storeParameters{"modifiers", "name", "app",
                                                          "holdDelay", "fill", "blank"};
constexpr std::array<std::string_view, 3> selectorParameters{"modifiers", "app", "name"};
constexpr std::array<std::string_view, 4> exportParameters{"what", "file", "name", "app"};
constexpr std::array<std::string_view, 1> fileParameters{"file"};
constexpr std::array<std::string_view, 1> clickParameters{"on"};
constexpr std::array<std::string_view, 0> noParameters{};

// A temporary layer's name is read like any name, then kept to a layer
// name's length.
std::expected<std::optional<std::string>, AutomationError> layerName(
    const AutomationParameters& parameters) {
  auto name = parameters.name("name");
  if (!name) return std::unexpected(name.error());
  if (!*name) return std::nullopt;
  // A name on one line is trimmed already; in ASCII (where it holds no
  // carriage return) each byte is a character, so a short one needs no cut.
  if ((*name)->size() <= static_cast<std::size_t>(TextLimits::layerName) && UTF8::isASCII(**name)) {
    return std::move(*name);
  }
  return std::string(ParameterText::trimBlanks(TextLimits::cut(**name, TextLimits::layerName)));
}

// What the verbs that show the board read. The layer is there from the
// start: `AutomationCommand::show` and `toggle` drop it when it carries
// neither keys nor a fill.
struct Shown {
  ShowOptions options;
  std::optional<TemporaryLayerSpec> layer{std::in_place};
};

// Reads the options, the layer's name and its keys into `shown`; the error
// when one does not fit.
std::optional<AutomationError> readShown(const AutomationParameters& parameters, Shown& shown) {
  auto options = ShowOptions::read(parameters);
  if (!options) return options.error();
  shown.options = std::move(*options);
  auto name = layerName(parameters);
  if (!name) return name.error();
  shown.layer->name = std::move(*name);
  auto keys = parameters.assignments();
  if (!keys) return keys.error();
  shown.layer->keys = std::move(*keys);
  return std::nullopt;
}

Result buildShow(const AutomationParameters& parameters) {
  Shown shown;
  if (auto error = readShown(parameters, shown)) return std::unexpected(std::move(*error));
  return AutomationCommand::show(std::move(shown.options), std::move(shown.layer));
}

Result buildToggle(const AutomationParameters& parameters) {
  Shown shown;
  if (auto error = readShown(parameters, shown)) return std::unexpected(std::move(*error));
  return AutomationCommand::toggle(std::move(shown.options), std::move(shown.layer));
}

Result buildLayerShow(const AutomationParameters& parameters) {
  Shown shown;
  if (auto error = readShown(parameters, shown)) return std::unexpected(std::move(*error));
  return AutomationCommand::layerShow(std::move(*shown.layer), std::move(shown.options));
}

Result buildHide(const AutomationParameters& parameters) {
  auto fadeOut = parameters.integer("fadeOutMS", ShowOptions::fadeOutRange);
  if (!fadeOut) return std::unexpected(fadeOut.error());
  return AutomationCommand::hide(*fadeOut);
}

std::expected<std::string, AutomationError> requiredName(const AutomationParameters& parameters) {
  auto name = parameters.name("name");
  if (!name) return std::unexpected(name.error());
  if (!*name) return std::unexpected(AutomationError::missing("name"));
  return std::move(**name);
}

Result buildProfile(const AutomationParameters& parameters) {
  auto name = requiredName(parameters);
  if (!name) return std::unexpected(name.error());
  return AutomationCommand::profile(std::move(*name));
}

Result buildTheme(const AutomationParameters& parameters) {
  auto name = requiredName(parameters);
  if (!name) return std::unexpected(name.error());
  return AutomationCommand::theme(std::move(*name));
}

Result buildLayerReset(const AutomationParameters&) { return AutomationCommand::layerReset(); }

Result buildLayerStore(const AutomationParameters& parameters) {
  StoredLayerSpec layer;
  auto trigger = parameters.trigger("modifiers");
  if (!trigger) return std::unexpected(trigger.error());
  if (!*trigger) return std::unexpected(AutomationError::missing("modifiers"));
  layer.trigger = std::move(**trigger);
  auto name = parameters.name("name");
  if (!name) return std::unexpected(name.error());
  layer.name = std::move(*name);
  auto app = parameters.bundleID("app");
  if (!app) return std::unexpected(app.error());
  layer.appScope = std::move(*app);
  auto holdDelay = parameters.number("holdDelay", {0, 5});
  if (!holdDelay) return std::unexpected(holdDelay.error());
  layer.holdDelay = *holdDelay;
  auto fill = parameters.fill();
  if (!fill) return std::unexpected(fill.error());
  layer.fill = *fill;
  auto keys = parameters.assignments();
  if (!keys) return std::unexpected(keys.error());
  layer.keys = std::move(*keys);
  return AutomationCommand::layerStore(std::move(layer));
}

Result buildLayerEdit(const AutomationParameters& parameters) {
  auto selector = parameters.selector();
  if (!selector) return std::unexpected(selector.error());
  auto changes = parameters.changes();
  if (!changes) return std::unexpected(changes.error());
  return AutomationCommand::layerEdit(std::move(*selector), std::move(*changes));
}

Result buildLayerRemove(const AutomationParameters& parameters) {
  auto selector = parameters.selector();
  if (!selector) return std::unexpected(selector.error());
  return AutomationCommand::layerRemove(std::move(*selector));
}

Result buildExport(const AutomationParameters& parameters) {
  ExportKind kind = ExportKind::layers;
  if (const std::optional<std::string_view> what = parameters.raw("what")) {
    std::string lowered = ParameterText::lowercased(ParameterText::trimBlanksAndLineBreaks(*what));
    auto named = exportKind(lowered);
    if (!named) return std::unexpected(AutomationError::badValue("what"));
    kind = *named;
  }
  auto file = parameters.file("file");
  if (!file) return std::unexpected(file.error());
  if (!*file) return std::unexpected(AutomationError::missing("file"));
  auto app = parameters.bundleID("app");
  if (!app) return std::unexpected(app.error());
  if (kind == ExportKind::sheet && !*app) return std::unexpected(AutomationError::missing("app"));
  auto name = parameters.name("name");
  if (!name) return std::unexpected(name.error());
  return AutomationCommand::exportFile(kind, std::move(**file), std::move(*name), std::move(*app));
}

Result buildImport(const AutomationParameters& parameters) {
  auto file = parameters.file("file");
  if (!file) return std::unexpected(file.error());
  if (!*file) return std::unexpected(AutomationError::missing("file"));
  return AutomationCommand::importFile(std::move(**file));
}

Result buildClickToType(const AutomationParameters& parameters) {
  auto on = parameters.boolean("on");
  if (!on) return std::unexpected(on.error());
  if (!*on) return std::unexpected(AutomationError::missing("on"));
  return AutomationCommand::clickToType(**on);
}

// What each verb reads: its known parameters, whether it takes keys, and how
// its command is built. A verb with `readsPairs` false ignores every pair.
struct VerbRule {
  std::string_view verb;
  AutomationParameters::KnownNames known;
  bool takesKeys;
  bool readsPairs;
  Build build;
};

constexpr std::array<VerbRule, AutomationCommand::verbs.size()> verbRules{{
    {"show", shownParameters, true, true, buildShow},
    {"hide", hideParameters, false, true, buildHide},
    {"toggle", shownParameters, true, true, buildToggle},
    {"profile", nameParameters, false, true, buildProfile},
    {"theme", nameParameters, false, true, buildTheme},
    {"layer/show", shownParameters, true, true, buildLayerShow},
    {"layer/reset", noParameters, false, false, buildLayerReset},
    {"layer/store", storeParameters, true, true, buildLayerStore},
    {"layer/edit", selectorParameters, true, true, buildLayerEdit},
    {"layer/remove", selectorParameters, false, true, buildLayerRemove},
    {"export", exportParameters, false, true, buildExport},
    {"import", fileParameters, false, true, buildImport},
    {"clickToType", clickParameters, false, true, buildClickToType},
}};

// The text with every ill-formed UTF-8 sequence replaced by U+FFFD, so the
// readers only ever see well-formed text.
std::string repaired(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  std::size_t offset = 0;
  while (offset < text.size()) UTF8::append(out, UTF8::next(text, offset));
  return out;
}

bool isTooLong(std::string_view text) {
  return text.size() > AutomationCommand::maxValueLength &&
         UTF8::scalarCount(text) > AutomationCommand::maxValueLength;
}

Result parseValid(std::string_view verb, std::span<const AutomationPairView> pairs,
                  AutomationSource source) {
  if (pairs.size() > AutomationCommand::maxParameters) {
    return std::unexpected(AutomationError::tooLarge());
  }
  for (const auto& [name, value] : pairs) {
    if (isTooLong(name) || isTooLong(value)) return std::unexpected(AutomationError::tooLarge());
  }
  while (verb.starts_with('/')) verb.remove_prefix(1);
  while (verb.ends_with('/')) verb.remove_suffix(1);

  // Verbs and short verbs are ASCII and compared ignoring its case; a
  // verb in any other text is lowercased first, as it may lowercase to one.
  std::string lowered;
  std::string_view wanted = verb;
  if (!UTF8::isASCII(verb)) {
    lowered = ParameterText::lowercased(verb);
    wanted = lowered;
  }
  for (const auto& shortVerb : AutomationCommand::shortVerbs) {
    if (ParameterText::equalsIgnoringASCIICase(wanted, shortVerb.word)) wanted = shortVerb.verb;
  }
  auto rule = std::find_if(verbRules.begin(), verbRules.end(), [&](const VerbRule& candidate) {
    return ParameterText::equalsIgnoringASCIICase(wanted, candidate.verb);
  });
  if (rule == verbRules.end()) {
    std::string echoed = AutomationError::isSafeEcho(verb) ? std::string(verb) : std::string();
    return std::unexpected(AutomationError::unknownVerb(std::move(echoed)));
  }
  if (!AutomationCommand::isAllowed(rule->verb, source)) {
    return std::unexpected(AutomationError::notAllowed(std::string(rule->verb)));
  }

  auto parameters =
      AutomationParameters::make(rule->readsPairs ? pairs : std::span<const AutomationPairView>(),
                                 rule->known, rule->takesKeys);
  if (!parameters) return std::unexpected(parameters.error());
  Result command = rule->build(*parameters);
  if (command && !command->fitsLink()) {
    return std::unexpected(AutomationError::tooLarge());
  }
  return command;
}

}  // namespace

Result AutomationParser::parse(std::string_view link) {
  if (link.size() > AutomationCommand::maxURLBytes) {
    return std::unexpected(AutomationError::tooLarge());
  }
  // The parts are read where they are in the link, or in `decoded` when
  // they hold escapes; the room of both is kept for the next link.
  thread_local LinkComponents::Views components;
  thread_local std::string decoded;
  // A scheme is ASCII letters, digits, "+", "-" and ".".
  if (!LinkComponents::split(link, components, decoded) ||
      !ParameterText::equalsIgnoringASCIICase(components.scheme, Brand::linkScheme)) {
    return std::unexpected(AutomationError::unknownVerb(""));
  }
  // The verb is the host and the path together; without a path it is the
  // host as it stands.
  std::string joined;
  std::string_view verb = components.host;
  if (!components.path.empty()) {
    joined.append(components.host).append(components.path);
    verb = joined;
  }
  return parseValid(verb, components.items, AutomationSource::url);
}

Result AutomationParser::parse(std::string_view verb, std::span<const AutomationPair> pairs,
                               AutomationSource source) {
  bool wellFormed =
      UTF8::isValid(verb) && std::all_of(pairs.begin(), pairs.end(), [](const auto& pair) {
        return UTF8::isValid(pair.first) && UTF8::isValid(pair.second);
      });
  std::string mendedVerb;
  std::vector<AutomationPair> mended;
  if (!wellFormed) {
    // Only other programs' pairs can be ill-formed; links are checked when split.
    mendedVerb = repaired(verb);
    verb = mendedVerb;
    mended.reserve(pairs.size());
    for (const auto& [name, value] : pairs) mended.emplace_back(repaired(name), repaired(value));
    pairs = mended;
  }
  const std::vector<AutomationPairView> views(pairs.begin(), pairs.end());
  return parseValid(verb, views, source);
}

}  // namespace corvel
