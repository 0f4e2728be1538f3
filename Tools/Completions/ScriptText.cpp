#include "Tools/Completions/ScriptText.h"

#include <cctype>

namespace corvel {

std::string_view ScriptText::kindWord(ValueKind kind) {
  switch (kind) {
    case ValueKind::none:
      return "none";
    case ValueKind::free:
      return "free";
    case ValueKind::position:
      return "position";
    case ValueKind::fill:
      return "fill";
    case ValueKind::theme:
      return "theme";
    case ValueKind::layer:
      return "layer";
    case ValueKind::sheetApp:
      return "sheetApp";
    case ValueKind::keyAssignment:
      return "keyAssignment";
    case ValueKind::keyName:
      return "keyName";
    case ValueKind::helpTopic:
      return "helpTopic";
    case ValueKind::importFile:
      return "importFile";
    case ValueKind::exportFile:
      return "exportFile";
  }
  return "none";
}

std::pair<std::string_view, std::string_view> ScriptText::listing(ValueKind kind) {
  switch (kind) {
    case ValueKind::theme:
      return {"themes", "id name"};
    case ValueKind::layer:
      return {"layers", "name"};
    case ValueKind::sheetApp:
      return {"sheets", "app"};
    default:
      return {};
  }
}

std::string ScriptText::replaced(std::string_view text, std::string_view marker,
                                 std::string_view with) {
  std::string out(text);
  const std::size_t at = out.find(marker);
  if (at != std::string::npos) out.replace(at, marker.size(), with);
  return out;
}

std::string ScriptText::joined(const std::vector<std::string>& words, std::string_view separator) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) text += separator;
    text += words[i];
  }
  return text;
}

std::string ScriptText::singleQuoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted.push_back(c);
    }
  }
  return quoted + "'";
}

std::string ScriptText::anyCaseGlob(std::string_view extension) {
  std::string glob = "*.";
  for (const char c : extension) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalpha(byte)) {
      glob += '[';
      glob.push_back(static_cast<char>(std::tolower(byte)));
      glob.push_back(static_cast<char>(std::toupper(byte)));
      glob += ']';
    } else {
      glob.push_back(c);
    }
  }
  return glob;
}

}  // namespace corvel
