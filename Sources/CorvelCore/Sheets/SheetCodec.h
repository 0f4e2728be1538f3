// SheetCodec: reads and writes the sheet file, a small JSON document of one
// app's cheatsheet changes:
//   { "version": 1,
//     "app": { "bundleID": "com.apple.mail", "name": "Mail" },
//     "rename": { "shift+cmd+k": "Clean up" },
//     "hide": [ "cmd+n" ],
//     "add": [ { "keys": "ctrl+k ctrl+s", "name": "Save all", "group": "Added" } ] }
// Shortcut texts are read in any spelling KeySpec accepts and written in its
// canonical form. Reading is lenient and loses nothing: entries this
// version cannot understand, sections of the wrong type and unknown members
// are kept and written back where they came from.
#pragma once

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

#include "CorvelCore/Sheets/SheetError.h"
#include "CorvelCore/Sheets/SheetOverrides.h"

namespace corvel {

struct SheetCodec {
  // The largest sheet file read, in bytes (1 MiB). Callers check it before
  // reading a file's bytes; `decode` takes whatever it is given.
  static constexpr std::size_t maxFileBytes = 1'048'576;

  // The overrides in `data`. Fails with notJSON unless the root is a JSON
  // object, unsupportedVersion for a "version" below 1 (read as a whole
  // number, default 1), and missingApp unless "app" is an object whose
  // "bundleID" is a bundle identifier. The app's name defaults to the bundle
  // identifier (also when blank) and is cut to 120 characters; labels are
  // cut to 120. A "rename" member whose key is no shortcut text or whose
  // value is not a text, a "hide" element that is no shortcut text, and an
  // "add" element that is no added shortcut go to `unparsed`; a section of
  // the wrong type goes to `extras` under its own name.
  [[nodiscard]] static std::expected<SheetOverrides, SheetError> decode(std::string_view data);

  // The overrides written back: `extras`, the app object (its kept members,
  // "bundleID" and "name"), "version", "rename", "hide" (sorted) and "add",
  // with each unparsed entry put back into its section (after the entries
  // read; a kept "rename" member never replaces a label). A section kept in
  // `extras` stays as it was while the record has no entry for it.
  // Pretty-printed with sorted keys and "/" unescaped.
  [[nodiscard]] static std::string encode(const SheetOverrides& overrides);
};

}  // namespace corvel
