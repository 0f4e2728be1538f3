#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CorvelCore/Layers/LayerCodec.h"

namespace corvel {
namespace {

// What a listing shows must be what the full reader keeps: the summaries
// of a file are the summaries of the layers decodeFile reads, or the same
// error.
void expectSummariesOfFullRead(const std::string& text) {
  const auto full = LayerCodec::decodeFile(text);
  const auto summaries = LayerCodec::summaries(text);
  ASSERT_EQ(full.has_value(), summaries.has_value());
  if (!full) {
    EXPECT_EQ(summaries.error(), full.error());
    return;
  }
  std::vector<LayerSummary> expected;
  for (const Layer& layer : full->layers) expected.push_back(LayerSummary::of(layer));
  EXPECT_EQ(*summaries, expected);
}

std::string fileOf(const std::string& layers) {
  return R"({"version": 1, "layers": [)" + layers + "]}";
}

constexpr std::string_view kTrigger = R"("trigger": {"parts": [{"modifier": "option"}]})";

std::string layer(const std::string& id, const std::string& members) {
  return R"({"id": ")" + id + R"(", )" + std::string(kTrigger) + (members.empty() ? "" : ", ") +
         members + "}";
}

const std::string kID = "0f8fad5b-d9cb-469f-a165-70867728950e";

TEST(LayerSummaryTest, SummariesAreThoseOfTheFullReader) {
  std::vector<std::string> files{
      fileOf(layer(kID, R"("name": "Writing", "enabled": true, "appScope": "com.apple.mail")")),
      // Refused: no id, an id that is no UUID, no trigger, an empty trigger,
      // a null trigger, an app scope that is no bundle identifier; a layer
      // that is not an object.
      fileOf(R"({"name": "x", )" + std::string(kTrigger) + "}"),
      fileOf(layer("not an id", "")),
      fileOf(R"({"id": ")" + kID + R"("})"),
      fileOf(R"({"id": ")" + kID + R"(", "trigger": {"parts": []}})"),
      fileOf(R"({"id": ")" + kID + R"(", "trigger": null})"),
      fileOf(layer(kID, R"("appScope": ".starts.with.a.dot")")),
      fileOf(R"("a layer from the future", 12, null, [1])"),
      // A refused layer does not take its id; the first readable one does,
      // in either letter case.
      fileOf(layer(kID, R"("appScope": "..")") + ", " + layer(kID, R"("name": "second")")),
      fileOf(layer(kID, R"("name": "first")") + ", " +
             layer("0F8FAD5B-D9CB-469F-A165-70867728950E", R"("name": "second")")),
      // Members given twice count by their last value.
      fileOf(R"({"id": "not an id", "id": ")" + kID + R"(", )" + std::string(kTrigger) + "}"),
      fileOf(layer(kID, R"("appScope": "..", "appScope": "com.apple.mail")")),
      fileOf(layer(kID, R"("appScope": "com.apple.mail", "appScope": "..")")),
      fileOf(layer(kID, R"("name": "A", "name": 3, "enabled": true, "enabled": "yes")")),
      // Keys escaped in the text are the same keys.
      fileOf(R"({"\u0069d": ")" + kID + R"(", "trigg\u0065r": {"parts": [{"modifier": "fn"}]},
                 "n\u0061me": "Escaped \"name\"\n"})"),
  };
  // Names, states and scopes.
  const std::vector<std::string> members{
      R"("name": "   ")",
      R"("name": "\u200bTab\there\r\nand a line")",
      R"("name": ")" + std::string(70, 'x') + R"(")",
      R"("name": "e\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301 accents")",
      R"("name": null, "appScope": "", "enabled": null, "needsReview": null)",
      R"("enabled": true, "needsReview": true)",
      R"("enabled": true, "needsReview": "please")",
      R"("enabled": true, "needsReview": false, "appScope": 12)",
      R"("trigger": {"parts": [{"modifier": "command", "side": "right"}, {"modifier": "shift"}]})",
      R"("trigger": {"parts": [{"modifier": "hyper"}]})",
  };
  for (const std::string& member : members) files.push_back(fileOf(layer(kID, member)));
  // Keys count as the full reader reads them.
  const std::vector<std::string> keys{
      R"({"keyA": {"action": {"type": "typeText", "text": "Hi"}}})",
      // Unknown key names and entries that do not read are not counted.
      R"({"keyQQ": {"action": {"type": "typeText", "text": "q"}}, "keyA": 3, "keyB": {}})",
      R"({"keyA": {"action": {"type": "typeText", "text": "\u200b"}},
          "keyB": {"action": {"type": "typeText", "text": 5}},
          "keyC": {"action": null}, "keyD": {"display": {"type": "label", "text": "D"}}})",
      R"({"keyA": {"action": {"type": "openApp", "bundleID": "com.apple.mail", "name": 3}},
          "keyB": {"action": {"type": "openApp", "bundleID": ".mail"}},
          "keyC": {"action": {"type": "sendShortcut", "key": "keyK", "modifiers": ["shift"]}},
          "keyD": {"action": {"type": "sendShortcut", "key": "keyK", "modifiers": ["hyper"]}},
          "keyE": {"action": {"type": "sendShortcut", "key": "keyK", "modifiers": "shift"}},
          "keyF": {"action": {"type": "sendShortcut", "key": "keyK", "modifiers": null}},
          "keyG": {"action": {"type": "sendShortcut", "key": "nope"}},
          "keyH": {"action": {"type": "showSymbol", "name": "star.fill", "caption": 1}},
          "keyJ": {"action": {"type": "showSymbol", "name": "Star"}},
          "keyK": {"action": {"type": "teleport"}}})",
      R"({"keyA": {"action": {"type": "showSymbol", "name": "gear"}, "display": null},
          "keyB": {"action": {"type": "showSymbol", "name": "gear"}, "display": {"type": "label"}},
          "keyC": {"action": {"type": "showSymbol", "name": "gear"},
                   "display": {"type": "symbolCaption", "symbol": "gear", "caption": "Go"}},
          "keyD": {"action": {"type": "showSymbol", "name": "gear"},
                   "display": {"type": "symbolCaption", "symbol": "gear"}},
          "keyE": {"action": {"type": "showSymbol", "name": "gear"},
                   "display": {"type": "appIcon", "bundleID": "com.apple.mail"}},
          "keyF": {"action": {"type": "showSymbol", "name": "gear"},
                   "display": {"type": "appIcon", "bundleID": 7}},
          "keyG": {"action": {"type": "showSymbol", "name": "gear"}, "display": "label"},
          "keyH": {"action": {"type": "showSymbol", "name": "gear"}, "caption": [1]}})",
      // A key given twice counts by its last entry; so does "keys" itself.
      R"({"keyA": {"action": {"type": "typeText", "text": "1"}}, "keyA": 3})",
      R"({"keyA": 3, "keyA": {"action": {"type": "typeText", "text": "1"}}})",
      R"({"keyA": {"action": {"type": "typeText", "text": "1"}}}, "keys": {})",
      R"({}, "keys": {"keyA": {"action": {"type": "typeText", "text": "1"}}})",
      R"("every key")",
      R"(null)",
  };
  for (const std::string& entries : keys) {
    files.push_back(fileOf(layer(kID, R"("keys": )" + entries)));
  }
  // Whole files fail as the full reader fails.
  files.insert(
      files.end(),
      {
          "",
          "[]",
          R"({"version": 1})",
          R"({"version": 1, "layers": {}})",
          R"({"version": 0, "layers": []})",
          R"({"version": "2", "layers": []})",
          R"({"layers": [], "version": -7})",
          R"({"layers": [], "layers": {}})",
          R"({"layers": {}, "layers": [)" + layer(kID, "") + "]}",
          // Text that is not JSON anywhere, even in members a listing skips.
          fileOf(layer(kID, R"("colour": "\x")")),
          fileOf(layer(kID, R"("colour": 01)")),
          fileOf(layer(kID, R"("colour": tru)")),
          fileOf(layer(kID,
                       R"("keys": {"keyA": {"action": {"type": "typeText", "text": "\uD800"}}})")),
          fileOf(layer(kID, "")) + " 1",
          fileOf(layer(kID, "")) + "]",
          R"({"layers": [], "note": ")" + std::string("\x01") + R"("})",
          std::string(R"({"layers": [], "note": ")") + "\xff" + R"("})",
          fileOf(layer(kID, R"("deep": )" + std::string(520, '[') + std::string(520, ']'))),
          // The deepest nesting read: the member at depth 4, its innermost array at 512.
          fileOf(layer(kID, R"("deep": )" + std::string(509, '[') + std::string(509, ']'))),
          fileOf(layer(kID, R"("deep": )" + std::string(510, '[') + std::string(510, ']'))),
      });
  for (const std::string& file : files) {
    SCOPED_TRACE(file.substr(0, 200));
    expectSummariesOfFullRead(file);
  }
}

}  // namespace
}  // namespace corvel
