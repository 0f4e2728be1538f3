#include "CorvelCore/Layers/LayerKey.h"

#include <array>
#include <utility>
#include <vector>

#include "CorvelCore/Layers/DocumentRules.h"
#include "CorvelCore/Support/Overloaded.h"
#include "CorvelCore/TextLimits/TextLimits.h"

namespace corvel {
namespace {

struct ModifierSymbol {
  KeyModifier modifier;
  std::string_view symbol;
};

// How a shortcut's modifiers are drawn on a cap, in the order the system's
// menus draw them.
constexpr std::array<ModifierSymbol, 5> modifierSymbols{{
    {KeyModifier::fn, "fn"},
    {KeyModifier::control, "\u2303"},
    {KeyModifier::option, "\u2325"},
    {KeyModifier::shift, "\u21E7"},
    {KeyModifier::command, "\u2318"},
}};

std::string shortcutLabel(const KeyCombo& combo, const LayerKey::Legends& legends) {
  std::string label;
  for (const ModifierSymbol& entry : modifierSymbols) {
    if (combo.modifiers.contains(entry.modifier)) label.append(entry.symbol);
  }
  std::string legend = legends ? legends(combo.key) : std::string();
  if (legend.empty()) legend = std::string(keyInfo(combo.key).name);
  return label + legend;
}

// The members a key entry reads.
constexpr std::array<std::string_view, 3> keyMembers{"action", "display", "caption"};

bool installed(const LayerKey::IsInstalled& isInstalled, std::string_view bundleID) {
  return isInstalled && isInstalled(bundleID);
}

}  // namespace

LayerKey LayerKey::limited(bool clean) const {
  LayerKey result = *this;
  if (result.display) result.display = result.display->limited(clean);
  return result;
}

CapFace LayerKey::face(const Legends& legends, const IsInstalled& isInstalled) const {
  const auto appFace = [&](const std::string& bundleID) {
    return installed(isInstalled, bundleID) ? CapFace::appIcon(bundleID)
                                            : CapFace::symbol(std::string(missingAppSymbol));
  };
  if (display) {
    if (const auto* icon = std::get_if<CapFace::AppIcon>(&display->value)) {
      return appFace(icon->bundleID);
    }
    return *display;
  }
  return std::visit(Overloaded{
                        [&](const LayerAction::OpenApp& open) { return appFace(open.bundleID); },
                        [](const LayerAction::TypeText& type) {
                          return CapFace::text(TextLimits::cut(type.text, CapFace::maxTextLength));
                        },
                        [&](const LayerAction::SendShortcut& send) {
                          return CapFace::label(shortcutLabel(send.combo, legends));
                        },
                        [](const LayerAction::ShowSymbol& show) {
                          return show.caption ? CapFace::symbolCaption(show.name, *show.caption)
                                              : CapFace::symbol(show.name);
                        },
                    },
                    action.value);
}

std::optional<std::string> LayerKey::shownCaption(const AppName& name,
                                                  const IsInstalled& isInstalled) const {
  if (caption && !caption->empty()) return caption;
  const auto appName = [&](std::string_view bundleID) -> std::optional<std::string> {
    if (!installed(isInstalled, bundleID) || !name) return std::nullopt;
    return name(bundleID);
  };
  if (const auto* open = std::get_if<LayerAction::OpenApp>(&action.value)) {
    return appName(open->bundleID).value_or(open->name);
  }
  if (display) {
    if (const auto* icon = std::get_if<CapFace::AppIcon>(&display->value)) {
      return appName(icon->bundleID);
    }
  }
  return std::nullopt;
}

JSONValue LayerKey::json() const {
  // Members in ascending key order.
  std::vector<JSONObject::Member> own;
  own.emplace_back("action", action.json());
  if (caption) own.emplace_back("caption", *caption);
  if (display) own.emplace_back("display", display->json());
  return DocumentRules::recordObject(extras, std::move(own));
}

std::expected<LayerKey, LayerError> LayerKey::fromJSON(const JSONValue& json,
                                                       std::int64_t& removed) {
  const JSONObject* object = json.asObject();
  if (object == nullptr) return std::unexpected(LayerError::badKey());
  std::array<const JSONValue*, keyMembers.size()> found;
  const std::size_t unknown = DocumentRules::findMembers(*object, keyMembers, found);
  const auto [actionJSON, displayJSON, captionJSON] = found;
  if (actionJSON == nullptr) return std::unexpected(LayerError::badAction());
  auto action = LayerAction::fromJSON(*actionJSON, removed);
  if (!action) return std::unexpected(action.error());

  LayerKey key{std::move(*action), std::nullopt, std::nullopt, {}};
  if (displayJSON != nullptr && !displayJSON->isNull()) {
    auto face = CapFace::fromJSON(*displayJSON, removed);
    if (!face) return std::unexpected(face.error());
    key.display = std::move(*face);
  }
  if (unknown > 0) key.extras = DocumentRules::unknownMembers(*object, keyMembers);
  if (captionJSON != nullptr && !captionJSON->isNull()) {
    if (const JSONString* text = captionJSON->asString()) {
      key.caption = DocumentRules::cleaned(*text, removed);
    } else {
      key.extras.set("caption", *captionJSON);
    }
  }
  return key;
}

}  // namespace corvel
