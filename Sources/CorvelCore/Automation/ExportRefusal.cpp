#include "CorvelCore/Automation/ExportRefusal.h"

namespace corvel {

std::string_view message(ExportRefusal refusal) {
  switch (refusal) {
    case ExportRefusal::notAbsolute:
      return "file must be a full path that starts with /, with no .. left in it once it is read.";
    case ExportRefusal::exists:
      return "A file is already there. Quillon never replaces a file, so give file a new name.";
    case ExportRefusal::noFolder:
      return "The folder for file is not there. Name a file in a folder that exists.";
    case ExportRefusal::wrongExtension:
      return "file must end in .quillonlayer or .json for layers, .quillontheme for a theme, or "
             ".quillonsheet for a sheet.";
    case ExportRefusal::insideQuillon:
      return "Quillon never writes inside its own app or its own folder. Name a file somewhere "
             "else.";
    case ExportRefusal::nothingToExport:
      return "There is nothing to export by that name. Name a layer, a theme, or an app with a "
             "cheatsheet you changed.";
    case ExportRefusal::couldNotWrite:
      return "The file could not be written. Check that the folder can be written to and the disk "
             "has room.";
    case ExportRefusal::onNetwork:
      return "file must be on this Mac. Quillon never writes under /net or /Network, so name a "
             "file in a folder here.";
  }
  return "";
}

std::string_view toolMessage(ExportRefusal refusal, ExportKind kind, bool named) {
  switch (refusal) {
    case ExportRefusal::notAbsolute:
      return "-f must name a file, with no .. climbing above the top folder.";
    case ExportRefusal::exists:
      return "A file is already there. quillon never replaces a file, so give -f a new name.";
    case ExportRefusal::noFolder:
      return "The folder for -f is not there. Name a file in a folder that exists.";
    case ExportRefusal::wrongExtension:
      switch (kind) {
        case ExportKind::layers:
          return "-f must end in .quillonlayer or .json.";
        case ExportKind::theme:
          return "-f must end in .quillontheme.";
        case ExportKind::sheet:
          return "-f must end in .quillonsheet.";
      }
      return "";
    case ExportRefusal::insideQuillon:
      return "Quillon never writes inside its own app or its own folder. Give -f a file somewhere "
             "else.";
    case ExportRefusal::nothingToExport:
      switch (kind) {
        case ExportKind::layers:
          return named ? "No layer has that name or those modifiers. Run quillon layers list to "
                         "see them."
                       : "There are no layers to export yet. Add one in Quillon's Settings, in "
                         "Layers.";
        case ExportKind::theme:
          return "No theme has that name or id. Run quillon themes list to see them.";
        case ExportKind::sheet:
          return "That app's cheatsheet has no changes to export. Run quillon sheets list to see "
                 "the ones there are.";
      }
      return "";
    case ExportRefusal::couldNotWrite:
      return "The file could not be written. Check that the folder can be written to and the disk "
             "has room.";
    case ExportRefusal::onNetwork:
      return "-f must be on this Mac. Quillon never writes under /net or /Network, so name a file "
             "in a folder here.";
  }
  return "";
}

}  // namespace corvel
