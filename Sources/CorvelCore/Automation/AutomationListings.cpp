#include "CorvelCore/Automation/AutomationListings.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>

#include "CorvelCore/Automation/CommandLineMessages.h"
#include "CorvelCore/Automation/TriggerText.h"
#include "CorvelCore/Layers/LayerCodec.h"
#include "CorvelCore/TextLimits/TextLimits.h"

namespace corvel {
namespace {

std::string folded(std::string_view text) {
  std::string out;
  icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())))
      .foldCase()
      .toUTF8String(out);
  return out;
}

std::string keysText(std::int64_t keys) {
  return keys == 1 ? "1 key" : std::to_string(keys) + " keys";
}

std::string layerState(const LayerRow& row) {
  if (row.needsReview) return "off, needs review";
  return row.enabled ? "on" : "off";
}

std::string encodedArray(JSONArray array) {
  return JSONValue(std::move(array)).encoded().value_or("[]");
}

LayerRow row(const LayerSummary& layer) {
  return {layer.name,        TriggerText::format(layer.trigger),
          layer.appScope,    layer.enabled,
          layer.needsReview, layer.keys};
}

}  // namespace

std::expected<std::vector<LayerRow>, LayerError> AutomationListings::layerRows(
    const std::string& data) {
  auto summaries = LayerCodec::summaries(data);
  if (!summaries) return std::unexpected(summaries.error());
  std::vector<LayerRow> out;
  out.reserve(summaries->size());
  for (const LayerSummary& summary : *summaries) out.push_back(row(summary));
  return out;
}

std::vector<ThemeRow> AutomationListings::themes(std::span<const Theme> builtIns,
                                                 std::span<const Theme> mine,
                                                 const std::optional<std::string>& inUseID) {
  std::vector<ThemeRow> out;
  for (const Theme& theme : builtIns) {
    out.push_back({theme.id, theme.name, theme.family, inUseID == theme.id});
  }
  for (const Theme& theme : mine) {
    out.push_back({theme.id, theme.name, std::nullopt, inUseID == theme.id});
  }
  return out;
}

std::vector<SheetRow> AutomationListings::rows(std::span<const SheetOverrides> sheets) {
  std::vector<SheetRow> out;
  for (const SheetOverrides& sheet : sheets) {
    out.push_back({sheet.bundleID, sheet.appName, static_cast<std::int64_t>(sheet.renamed.size()),
                   static_cast<std::int64_t>(sheet.hidden.size()),
                   static_cast<std::int64_t>(sheet.added.size())});
  }
  return out;
}

std::string AutomationListings::table(const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size(), 0);
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], TextLimits::characterCount(row[column]));
    }
  }
  std::string out;
  for (std::size_t r = 0; r < rows.size(); ++r) {
    if (r > 0) out.push_back('\n');
    const auto& row = rows[r];
    for (std::size_t column = 0; column < row.size(); ++column) {
      out += row[column];
      if (column + 1 == row.size()) break;
      out.append(widths[column] - TextLimits::characterCount(row[column]), ' ');
      out += "   ";
    }
  }
  return out;
}

std::string AutomationListings::text(std::span<const LayerRow> rows) {
  if (rows.empty()) return CommandLineMessages::text(ToolMessage::noLayers);
  std::vector<std::vector<std::string>> cells;
  for (const LayerRow& row : rows) {
    cells.push_back(
        {row.name, row.trigger, row.app.value_or("all apps"), layerState(row), keysText(row.keys)});
  }
  return table(cells);
}

std::string AutomationListings::text(std::span<const ThemeRow> rows) {
  std::vector<std::vector<std::string>> cells;
  for (const ThemeRow& row : rows) cells.push_back({row.id, row.name, row.family.value_or("Mine")});
  const std::string body = table(cells);
  // Mark the theme in use once the columns are settled, so the mark never
  // shifts them.
  std::string out;
  std::size_t start = 0;
  for (const ThemeRow& row : rows) {
    std::size_t end = body.find('\n', start);
    if (end == std::string::npos) end = body.size();
    if (!out.empty()) out.push_back('\n');
    out += row.inUse ? "* " : "  ";
    out.append(body, start, end - start);
    start = end + 1;
  }
  return out;
}

std::string AutomationListings::text(std::span<const SheetRow> rows) {
  if (rows.empty()) return CommandLineMessages::text(ToolMessage::noSheets);
  std::vector<std::vector<std::string>> cells;
  for (const SheetRow& row : rows) {
    cells.push_back({row.name, row.app,
                     std::to_string(row.renamed) + " renamed, " + std::to_string(row.hidden) +
                         " hidden, " + std::to_string(row.added) + " added"});
  }
  return table(cells);
}

std::string AutomationListings::json(std::span<const LayerRow> rows) {
  JSONArray array;
  for (const LayerRow& row : rows) {
    JSONObject object{{"name", row.name},
                      {"trigger", row.trigger},
                      {"enabled", row.enabled},
                      {"needsReview", row.needsReview},
                      {"keys", row.keys}};
    if (row.app) object.set("app", *row.app);
    array.push_back(std::move(object));
  }
  return encodedArray(std::move(array));
}

std::string AutomationListings::json(std::span<const ThemeRow> rows) {
  JSONArray array;
  for (const ThemeRow& row : rows) {
    JSONObject object{{"id", row.id}, {"name", row.name}, {"inUse", row.inUse}};
    if (row.family) object.set("family", *row.family);
    array.push_back(std::move(object));
  }
  return encodedArray(std::move(array));
}

std::string AutomationListings::json(std::span<const SheetRow> rows) {
  JSONArray array;
  for (const SheetRow& row : rows) {
    array.push_back(JSONObject{{"app", row.app},
                               {"name", row.name},
                               {"renamed", row.renamed},
                               {"hidden", row.hidden},
                               {"added", row.added}});
  }
  return encodedArray(std::move(array));
}

std::vector<Layer> AutomationListings::layers(std::span<const Layer> all, std::string_view named) {
  const std::string wanted = folded(named);
  const auto trigger = TriggerText::parse(named);
  std::vector<Layer> out;
  for (const Layer& layer : all) {
    if (folded(layer.name) == wanted || (trigger && layer.trigger == *trigger)) {
      out.push_back(layer);
    }
  }
  return out;
}

std::optional<Theme> AutomationListings::match(std::span<const Theme> builtIns,
                                               std::span<const Theme> mine,
                                               std::string_view idOrName) {
  for (auto themes : {builtIns, mine}) {
    for (const Theme& theme : themes) {
      if (theme.id == idOrName) return theme;
    }
  }
  const std::string wanted = folded(idOrName);
  for (auto themes : {builtIns, mine}) {
    for (const Theme& theme : themes) {
      if (folded(theme.name) == wanted) return theme;
    }
  }
  return std::nullopt;
}

}  // namespace corvel
