// CapFace: what the cap of one key shows: a label, a short text, a symbol, a
// symbol with a caption, or an app's icon. Layers store it as a key's
// "display"; the board draws it.
//
// JSON form: an object whose "type" names the case, with the case's fields
// beside it:
//   { "type": "label", "text": "Mail" }
//   { "type": "text", "text": "Hi" }
//   { "type": "symbol", "symbol": "star.fill" }
//   { "type": "symbolCaption", "symbol": "star.fill", "caption": "Stars" }
//   { "type": "appIcon", "bundleID": "com.apple.mail" }
// Other members are kept in `extras` and written back.
#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <variant>

#include "CorvelCore/Layers/LayerError.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct CapFace {
  struct Label {
    std::string text;
    friend bool operator==(const Label&, const Label&) = default;
  };
  struct Text {
    std::string text;
    friend bool operator==(const Text&, const Text&) = default;
  };
  struct Symbol {
    std::string symbol;
    friend bool operator==(const Symbol&, const Symbol&) = default;
  };
  struct SymbolCaption {
    std::string symbol;
    std::string caption;
    friend bool operator==(const SymbolCaption&, const SymbolCaption&) = default;
  };
  struct AppIcon {
    std::string bundleID;
    friend bool operator==(const AppIcon&, const AppIcon&) = default;
  };
  using Value = std::variant<Label, Text, Symbol, SymbolCaption, AppIcon>;

  // Longest label, in characters.
  static constexpr std::int64_t maxLabelLength = TextLimits::name;
  // Longest text, in characters: it is drawn large on the cap.
  static constexpr std::int64_t maxTextLength = TextLimits::textFace;
  // Longest caption beside a symbol, in characters.
  static constexpr std::int64_t maxCaptionLength = TextLimits::name;

  Value value = Label{};
  // Members of the face's JSON object that this version does not know.
  JSONObject extras;

  // The helpers take their values as given; `fromJSON` is the checked way in.
  [[nodiscard]] static CapFace label(std::string text);
  [[nodiscard]] static CapFace text(std::string text);
  [[nodiscard]] static CapFace symbol(std::string symbol);
  [[nodiscard]] static CapFace symbolCaption(std::string symbol, std::string caption);
  [[nodiscard]] static CapFace appIcon(std::string bundleID);

  // The face with its texts cut to their limits, cleaned first when `clean`
  // is true; names are left as they are.
  [[nodiscard]] CapFace limited(bool clean) const;

  // The JSON form above: `extras`, then "type" and the case's fields.
  [[nodiscard]] JSONValue json() const;

  // Reads the JSON form. Texts are cleaned and cut to their limits and the
  // scalars cleaning removed are added to `removed`. Fails with badKey for a
  // value that is not an object, a missing or unknown "type", a field of the
  // case that is missing or not a text, a symbol that fails
  // LayerNames::isSymbolName, or a bundle identifier that fails
  // LayerNames::isBundleID.
  [[nodiscard]] static std::expected<CapFace, LayerError> fromJSON(const JSONValue& json,
                                                                   std::int64_t& removed);

  friend bool operator==(const CapFace&, const CapFace&) = default;
};

}  // namespace corvel
