// theme-gallery: draws every built-in theme as a keyboard — plate, caps of
// the three kinds, legends, pressed keys, backlight and lock light — in SVG,
// and writes one HTML page holding all of them, for checking the catalogue by
// eye. Usage: theme-gallery OUTPUT.html
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Theme/BuiltInThemes.h"
#include "CorvelCore/Theme/Theme.h"

namespace {

using namespace corvel;

enum class Kind { alpha, modifier, accent };

// One key of the drawn board: its legend, width in key units, kind and the
// key it stands for (for per-key overrides).
struct Slot {
  std::string_view legend;
  double width;
  Kind kind;
  std::string_view identifier;
};

struct Row {
  double height;  // in key units
  std::vector<Slot> keys;
};

constexpr double fnWidth = 13.0 / 12.0;

// A laptop layout, 14.5 units wide.
const std::vector<Row>& layout() {
  static const std::vector<Row> rows = [] {
    const auto alphas = [](std::string_view legends, std::string_view identifiers) {
      std::vector<Slot> keys;
      std::size_t start = 0;
      for (std::size_t i = 0; i < legends.size(); ++i) {
        const std::size_t end = identifiers.find(' ', start);
        keys.push_back(
            {legends.substr(i, 1), 1, Kind::alpha, identifiers.substr(start, end - start)});
        start = end + 1;
      }
      return keys;
    };
    const auto join = [](std::vector<Slot> a, const std::vector<Slot>& b) {
      a.insert(a.end(), b.begin(), b.end());
      return a;
    };
    Row function{0.6, {{"esc", 1.5, Kind::accent, "escape"}}};
    static const std::array<std::string_view, 12> fNames{"F1", "F2", "F3", "F4",  "F5",  "F6",
                                                         "F7", "F8", "F9", "F10", "F11", "F12"};
    static const std::array<std::string_view, 12> fIDs{"f1", "f2", "f3", "f4",  "f5",  "f6",
                                                       "f7", "f8", "f9", "f10", "f11", "f12"};
    for (std::size_t i = 0; i < 12; ++i) {
      function.keys.push_back({fNames[i], fnWidth, Kind::modifier, fIDs[i]});
    }
    return std::vector<Row>{
        function,
        {1, join(alphas("`1234567890-=",
                        "backquote digit1 digit2 digit3 digit4 digit5 digit6 "
                        "digit7 digit8 digit9 digit0 minus equal "),
                 {{"delete", 1.5, Kind::accent, "deleteKey"}})},
        {1, join(join({{"tab", 1.5, Kind::accent, "tab"}},
                      alphas("QWERTYUIOP[]\\",
                             "keyQ keyW keyE keyR keyT keyY keyU keyI keyO keyP "
                             "bracketLeft bracketRight backslash ")),
                 {})},
        {1, join(join({{"caps lock", 1.75, Kind::modifier, "capsLock"}},
                      alphas("ASDFGHJKL;'",
                             "keyA keyS keyD keyF keyG keyH keyJ keyK keyL "
                             "semicolon quote ")),
                 {{"return", 1.75, Kind::accent, "returnKey"}})},
        {1,
         join(join({{"shift", 2.25, Kind::modifier, "shiftLeft"}},
                   alphas("ZXCVBNM,./", "keyZ keyX keyC keyV keyB keyN keyM comma period slash ")),
              {{"shift", 2.25, Kind::modifier, "shiftRight"}})},
        {1,
         {{"fn", 1, Kind::modifier, "function"},
          {"control", 1, Kind::modifier, "controlLeft"},
          {"option", 1, Kind::modifier, "optionLeft"},
          {"command", 1.25, Kind::modifier, "commandLeft"},
          {"", 5, Kind::alpha, "space"},
          {"command", 1.25, Kind::modifier, "commandRight"},
          {"option", 1, Kind::modifier, "optionRight"},
          {"◀", 1, Kind::modifier, "arrowLeft"},
          {"▲▼", 1, Kind::modifier, "arrowUp"},
          {"▶", 1, Kind::modifier, "arrowRight"}}},
    };
  }();
  return rows;
}

// Keys drawn pressed, and the key the backlight wave spreads from.
constexpr std::array<std::string_view, 2> pressedKeys{"keyD", "space"};
constexpr std::string_view waveKey = "keyK";

std::string num(double value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.2f", value);
  std::string text = buffer;
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string rgb(const ThemeColor& color) { return color.hex().substr(0, 7); }
std::string opacity(const ThemeColor& color) { return num(std::clamp(color.a, 0.0, 1.0)); }

// Collects the <defs> of one board and hands out unique ids.
struct Defs {
  std::string prefix;
  std::string text;
  int next = 0;
  std::string id() { return prefix + std::to_string(next++); }
};

std::string stop(double offset, const ThemeColor& color) {
  return "<stop offset=\"" + num(offset) + "\" stop-color=\"" + rgb(color) + "\" stop-opacity=\"" +
         opacity(color) + "\"/>";
}

// The fill attributes that paint an area with `fill`.
std::string paint(const Fill& fill, Defs& defs) {
  if (const SolidFill* solid = fill.asSolid()) {
    return "fill=\"" + rgb(solid->color) + "\" fill-opacity=\"" + opacity(solid->color) + "\"";
  }
  const std::string id = defs.id();
  if (const LinearFill* linear = fill.asLinear()) {
    defs.text += "<linearGradient id=\"" + id + "\" x1=\"0\" y1=\"0\" x2=\"0\" y2=\"1\">" +
                 stop(0, linear->top) + stop(1, linear->bottom) + "</linearGradient>";
  } else if (const GradientFill* gradient = fill.asGradient()) {
    if (const RadialShape* radial = gradient->shape.asRadial()) {
      const std::string cx = num(radial->centreX);
      const std::string cy = num(radial->centreY);
      defs.text += "<radialGradient id=\"" + id + "\" cx=\"" + cx + "\" cy=\"" + cy +
                   "\" r=\"0.5\" gradientTransform=\"translate(" + cx + " " + cy + ") scale(" +
                   num(radial->width) + " " + num(radial->height) + ") translate(-" + cx + " -" +
                   cy + ")\">" + stop(0, gradient->from) + stop(1, gradient->to) +
                   "</radialGradient>";
    } else if (const LinearShape* shape = gradient->shape.asLinear()) {
      // 0 degrees points up, 90 to the right, 180 down.
      const double radians = shape->degrees * M_PI / 180;
      const double dx = std::sin(radians) / 2;
      const double dy = -std::cos(radians) / 2;
      defs.text += "<linearGradient id=\"" + id + "\" x1=\"" + num(0.5 - dx) + "\" y1=\"" +
                   num(0.5 - dy) + "\" x2=\"" + num(0.5 + dx) + "\" y2=\"" + num(0.5 + dy) + "\">" +
                   stop(0, gradient->from) + stop(1, gradient->to) + "</linearGradient>";
    }
  }
  return "fill=\"url(#" + id + ")\"";
}

// A filter that casts `shadow` (or spreads it as a glow) under its element.
std::string shadowFilter(const Shadow& shadow, Defs& defs) {
  const std::string id = defs.id();
  defs.text += "<filter id=\"" + id +
               "\" x=\"-50%\" y=\"-50%\" width=\"200%\" height=\"200%\"><feDropShadow dx=\"" +
               num(shadow.x) + "\" dy=\"" + num(shadow.y) + "\" stdDeviation=\"" +
               num(shadow.radius / 2) + "\" flood-color=\"" + rgb(shadow.color) +
               "\" flood-opacity=\"" + opacity(shadow.color) + "\"/></filter>";
  return "filter=\"url(#" + id + ")\"";
}

// A rounded rectangle whose corners may differ.
std::string roundedPath(double x, double y, double w, double h, std::array<double, 4> radii) {
  for (double& r : radii) r = std::clamp(r, 0.0, std::min(w, h) / 2);
  const auto [tl, tr, br, bl] = radii;
  std::string path;
  const auto add = [&path](std::string_view command, std::initializer_list<double> numbers) {
    path += command;
    for (const double n : numbers) path += num(n) + " ";
  };
  add("M", {x + tl, y});
  add("H", {x + w - tr});
  add("A", {tr, tr, 0, 0, 1, x + w, y + tr});
  add("V", {y + h - br});
  add("A", {br, br, 0, 0, 1, x + w - br, y + h});
  add("H", {x + bl});
  add("A", {bl, bl, 0, 0, 1, x, y + h - bl});
  add("V", {y + tl});
  add("A", {tl, tl, 0, 0, 1, x + tl, y});
  path += "Z";
  return path;
}

std::string fontFamily(LegendFont font) {
  switch (font) {
    case LegendFont::system:
      return "-apple-system, 'SF Pro Text', 'Helvetica Neue', 'Liberation Sans', sans-serif";
    case LegendFont::rounded:
      return "'SF Pro Rounded', 'Arial Rounded MT Bold', Nunito, 'DejaVu Sans', sans-serif";
    case LegendFont::mono:
      return "'SF Mono', Menlo, 'DejaVu Sans Mono', monospace";
    case LegendFont::pixel:
      return "'Press Start 2P', 'Silkscreen', 'DejaVu Sans Mono', monospace";
    case LegendFont::handwritten:
      return "'Comic Neue', 'Marker Felt', 'Chalkboard SE', 'Comic Sans MS', cursive";
    case LegendFont::serif:
      return "'New York', Georgia, 'DejaVu Serif', serif";
  }
  return "sans-serif";
}

// The desktop the board floats over, so that glass shows what lies behind it.
std::string backdrop(double width, double height, const std::string& id) {
  return "<g id=\"" + id + "\"><rect width=\"" + num(width) + "\" height=\"" + num(height) +
         "\" fill=\"#6E7F99\"/><circle cx=\"" + num(width * 0.18) + "\" cy=\"" + num(height * 0.3) +
         "\" r=\"" + num(height * 0.45) + "\" fill=\"#F2A65A\"/><circle cx=\"" + num(width * 0.62) +
         "\" cy=\"" + num(height * 0.85) + "\" r=\"" + num(height * 0.5) +
         "\" fill=\"#3BA99C\"/><circle cx=\"" + num(width * 0.9) + "\" cy=\"" + num(height * 0.15) +
         "\" r=\"" + num(height * 0.35) + "\" fill=\"#D9519B\"/></g>";
}

struct Cap {
  double x, y, w, h;
  const Slot* slot;
};

std::string board(const Theme& theme, int index) {
  constexpr double unit = Theme::referenceUnit;
  constexpr double margin = 36;
  Defs defs{"t" + std::to_string(index) + "-", "", 0};
  const double pad = theme.plate.padding;
  double rowsHeight = 0;
  for (const Row& row : layout()) rowsHeight += row.height;
  const double plateW = 14.5 * unit + 2 * pad;
  const double plateH = rowsHeight * unit + 2 * pad;
  const double width = plateW + 2 * margin;
  const double height = plateH + 2 * margin;

  std::vector<Cap> caps;
  double y = margin + pad;
  for (const Row& row : layout()) {
    double x = margin + pad;
    for (const Slot& slot : row.keys) {
      caps.push_back({x, y, slot.width * unit, row.height * unit, &slot});
      x += slot.width * unit;
    }
    y += row.height * unit;
  }

  std::string body;
  const std::string backdropID = defs.id();
  defs.text += backdrop(width, height, backdropID);
  body += "<use href=\"#" + backdropID + "\"/>";

  // The plate, with what its material lets through.
  const auto& corners = theme.plate.corners;
  const std::array<double, 4> radii =
      corners ? std::array<double, 4>{corners->topLeft, corners->topRight, corners->bottomRight,
                                      corners->bottomLeft}
              : std::array<double, 4>{theme.plate.radius, theme.plate.radius, theme.plate.radius,
                                      theme.plate.radius};
  const std::string platePath = roundedPath(margin, margin, plateW, plateH, radii);
  const std::string clipID = defs.id();
  defs.text += "<clipPath id=\"" + clipID + "\"><path d=\"" + platePath + "\"/></clipPath>";
  if (theme.plate.shadow) {
    body += "<path d=\"" + platePath + "\" fill=\"#000\" " +
            shadowFilter(*theme.plate.shadow, defs) + " fill-opacity=\"0.01\"/>";
  }
  if (theme.plate.material == PlateMaterial::frosted ||
      theme.plate.material == PlateMaterial::smoked) {
    const std::string blurID = defs.id();
    defs.text += "<filter id=\"" + blurID + "\"><feGaussianBlur stdDeviation=\"14\"/></filter>";
    body += "<g clip-path=\"url(#" + clipID + ")\"><use href=\"#" + backdropID +
            "\" filter=\"url(#" + blurID + ")\"/></g>";
  }
  body += "<path d=\"" + platePath + "\" " + paint(theme.plate.fill, defs) + "/>";
  if (const auto& grid = theme.plate.grid) {
    const std::string patternID = defs.id();
    defs.text += "<pattern id=\"" + patternID + "\" width=\"" + num(grid->spacing) +
                 "\" height=\"" + num(grid->spacing) +
                 "\" patternUnits=\"userSpaceOnUse\"><path d=\"M" + num(grid->spacing) +
                 " 0 L0 0 0 " + num(grid->spacing) + "\" fill=\"none\" stroke=\"" +
                 rgb(grid->colour) + "\" stroke-opacity=\"" + opacity(grid->colour) +
                 "\" stroke-width=\"" + num(grid->lineWidth) + "\"/></pattern>";
    body += "<path d=\"" + platePath + "\" fill=\"url(#" + patternID + ")\"/>";
  }
  if (const auto& frame = theme.plate.frame) {
    body += "<path d=\"" + platePath + "\" fill=\"none\" clip-path=\"url(#" + clipID +
            ")\" stroke=\"" + rgb(frame->colour) + "\" stroke-opacity=\"" + opacity(frame->colour) +
            "\" stroke-width=\"" + num(frame->width * 2) + "\"/>";
  }

  const double gap = theme.caps.gap;
  const double depth = theme.caps.depth;

  // The backlight, behind the caps.
  if (theme.backlight.mode != BacklightMode::off) {
    const std::string blurID = defs.id();
    defs.text += "<filter id=\"" + blurID +
                 "\" x=\"-50%\" y=\"-50%\" width=\"200%\" height=\"200%\"><feGaussianBlur "
                 "stdDeviation=\"5\"/></filter>";
    std::string glow;
    for (const Cap& cap : caps) {
      glow += "<rect x=\"" + num(cap.x + gap / 2 - 1) + "\" y=\"" + num(cap.y + gap / 2 - 1) +
              "\" width=\"" + num(cap.w - gap + 2) + "\" height=\"" + num(cap.h - gap + 2) +
              "\" rx=\"" + num(theme.caps.radius) + "\"/>";
    }
    const ThemeColor& light = theme.backlight.colour;
    if (theme.backlight.mode == BacklightMode::underglow) {
      body += "<g clip-path=\"url(#" + clipID + ")\" fill=\"" + rgb(light) +
              "\" opacity=\"0.55\" filter=\"url(#" + blurID + ")\">" + glow + "</g>";
    } else {
      const Cap* origin = nullptr;
      for (const Cap& cap : caps) {
        if (cap.slot->identifier == waveKey) origin = &cap;
      }
      const std::string waveID = defs.id();
      const double cx = origin != nullptr ? origin->x + origin->w / 2 : width / 2;
      const double cy = origin != nullptr ? origin->y + origin->h / 2 : height / 2;
      defs.text += "<radialGradient id=\"" + waveID + "\" cx=\"" + num(cx) + "\" cy=\"" + num(cy) +
                   "\" r=\"" + num(unit * 4.5) + "\" gradientUnits=\"userSpaceOnUse\">" +
                   stop(0, light) + stop(0.35, ThemeColor{light.r, light.g, light.b, 0.55}) +
                   stop(0.62, ThemeColor{light.r, light.g, light.b, 0.05}) +
                   stop(0.7, ThemeColor{light.r, light.g, light.b, 0.4}) +
                   stop(0.78, ThemeColor{light.r, light.g, light.b, 0}) + "</radialGradient>";
      body += "<g clip-path=\"url(#" + clipID + ")\" fill=\"url(#" + waveID + ")\" filter=\"url(#" +
              blurID + ")\">" + glow + "</g>";
    }
  }

  // Filters shared by every legend and pressed cap.
  const std::string legendGlow =
      theme.legends.glow ? shadowFilter(*theme.legends.glow, defs) : std::string();
  const std::string pressGlow =
      theme.press.glow ? shadowFilter(*theme.press.glow, defs) : std::string();
  // Legends are drawn as one group, so that a glow or the pixel look is one
  // filter over the whole board.
  std::string legendFilter = legendGlow;
  if (theme.legends.font == LegendFont::pixel) {
    const std::string id = defs.id();
    defs.text += "<filter id=\"" + id +
                 "\" filterUnits=\"userSpaceOnUse\" x=\"0\" y=\"0\" width=\"" + num(width) +
                 "\" height=\"" + num(height) +
                 "\"><feFlood x=\"1\" y=\"1\" width=\"1\" height=\"1\"/>"
                 "<feComposite width=\"2\" height=\"2\"/><feTile result=\"grid\"/>"
                 "<feComposite in=\"SourceGraphic\" in2=\"grid\" operator=\"in\"/>"
                 "<feMorphology operator=\"dilate\" radius=\"0.6\"/></filter>";
    legendFilter = "filter=\"url(#" + id + ")\"";
  }
  std::string legends;
  const std::string family = theme.legends.family ? "'" + escaped(*theme.legends.family) + "', " +
                                                        fontFamily(theme.legends.font)
                                                  : fontFamily(theme.legends.font);

  // Inset of the cap's top face from its outline: left/right, top, bottom.
  double sideInset = 0, topInset = 0, bottomInset = depth, faceRadius = theme.caps.radius;
  switch (theme.caps.profile) {
    case CapProfile::flat:
      break;
    case CapProfile::low:
      sideInset = depth * 0.25;
      break;
    case CapProfile::oem:
      sideInset = depth * 0.45;
      topInset = depth * 0.15;
      bottomInset = depth * 0.85;
      break;
    case CapProfile::sa:
      sideInset = depth * 0.5;
      topInset = depth * 0.3;
      bottomInset = depth * 0.8;
      faceRadius += 3;
      break;
  }

  for (const Cap& cap : caps) {
    const Slot& slot = *cap.slot;
    bool pressed = false;
    for (const auto key : pressedKeys) pressed = pressed || key == slot.identifier;
    const KeyOverride* custom = nullptr;
    if (const auto key = keyID(slot.identifier)) {
      if (const auto found = theme.overrides.find(*key); found != theme.overrides.end()) {
        custom = &found->second;
      }
    }
    const Fill& kindFill = slot.kind == Kind::alpha      ? theme.caps.alpha
                           : slot.kind == Kind::modifier ? theme.caps.modifier
                                                         : theme.caps.accent;
    const ThemeColor& kindInk = slot.kind == Kind::alpha      ? theme.legends.alpha
                                : slot.kind == Kind::modifier ? theme.legends.modifier
                                                              : theme.legends.accent;
    const Fill& capFill = custom != nullptr && custom->cap ? *custom->cap : kindFill;
    ThemeColor ink = custom != nullptr && custom->legend ? *custom->legend : kindInk;

    const double ox = cap.x + gap / 2;
    const double oy = cap.y + gap / 2;
    const double ow = cap.w - gap;
    const double oh = cap.h - gap;
    double fx = ox + sideInset;
    double fy = oy + topInset;
    const double fw = ow - 2 * sideInset;
    const double fh = oh - topInset - bottomInset;
    const Fill* faceFill = &capFill;
    std::string faceFilter;
    if (pressed) {
      ink = theme.press.legend;
      if (theme.press.effect != PressEffect::inkOnly) faceFill = &theme.press.fill;
      if (theme.press.effect == PressEffect::sink) fy += bottomInset * 0.6;
      if (!pressGlow.empty()) faceFilter = pressGlow;
    }

    body += "<rect x=\"" + num(ox) + "\" y=\"" + num(oy) + "\" width=\"" + num(ow) +
            "\" height=\"" + num(oh) + "\" rx=\"" + num(theme.caps.radius) + "\" fill=\"" +
            rgb(theme.caps.side) + "\" fill-opacity=\"" + opacity(theme.caps.side) + "\"/>";
    body += "<rect x=\"" + num(fx) + "\" y=\"" + num(fy) + "\" width=\"" + num(fw) +
            "\" height=\"" + num(fh) + "\" rx=\"" + num(std::max(0.0, faceRadius - sideInset)) +
            "\" " + paint(*faceFill, defs) + " " + faceFilter;
    if (theme.caps.ring) {
      body += " stroke=\"" + rgb(*theme.caps.ring) + "\" stroke-opacity=\"" +
              opacity(*theme.caps.ring) + "\" stroke-width=\"1\"";
    }
    body += "/>";

    if (slot.identifier == "capsLock") {
      body += "<circle cx=\"" + num(fx + 7) + "\" cy=\"" + num(fy + 7) + "\" r=\"2.5\" fill=\"" +
              rgb(theme.lockLight) + "\"/>";
    }
    if (slot.legend.empty()) continue;
    const double size = slot.kind == Kind::alpha && slot.legend.size() == 1
                            ? theme.legends.size
                            : theme.legends.modifierSize;
    const bool topLeft = theme.legends.placement == LegendPlacement::topLeft;
    const double tx = topLeft ? fx + 5 : fx + fw / 2;
    const double ty = topLeft ? fy + size + 3 : fy + fh / 2 + size * 0.36;
    legends += "<text x=\"" + num(tx) + "\" y=\"" + num(ty) + "\" font-size=\"" + num(size) +
               "\" font-weight=\"" + std::to_string(theme.legends.weight) + "\" text-anchor=\"" +
               (topLeft ? "start" : "middle") + "\" fill=\"" + rgb(ink) + "\" fill-opacity=\"" +
               opacity(ink) + "\">" + escaped(slot.legend) + "</text>";
  }

  body += "<g " + legendFilter + ">" + legends + "</g>";

  return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + num(width) + " " +
         num(height) + "\" font-family=\"" + family + "\"><defs>" + defs.text + "</defs>" + body +
         "</svg>";
}

std::string swatch(const ThemeColor& color, std::string_view title) {
  return "<span class=\"swatch\" title=\"" + escaped(title) +
         "\" style=\"background:" + rgb(color) + ";opacity:" + opacity(color) + "\"></span>";
}

std::string card(const Theme& theme, int index) {
  std::string chips;
  const auto chip = [&](std::string_view label, std::string_view value) {
    chips += "<span class=\"chip\">" + escaped(label) + " <b>" + escaped(value) + "</b></span>";
  };
  chip("caps", rawValue(theme.caps.profile));
  chip("font", rawValue(theme.legends.font));
  chip("plate", rawValue(theme.plate.material));
  chip("press", rawValue(theme.press.effect));
  chip("light", rawValue(theme.backlight.mode));
  chip("pill", rawValue(theme.pill));
  chip("sound", theme.sound ? *theme.sound : "none");
  std::string swatches = swatch(theme.lockLight, "lock light");
  if (theme.mouse) {
    swatches += swatch(theme.mouse->left, "left click") +
                swatch(theme.mouse->right, "right click") +
                swatch(theme.mouse->middle, "middle click") + swatch(theme.mouse->halo, "halo");
  }
  return "<figure><figcaption><h2>" + escaped(theme.name) + "</h2><span class=\"family\">" +
         escaped(theme.family) + " · " + escaped(theme.id) + "</span>" + swatches +
         "</figcaption>" + board(theme, index) + "<div class=\"chips\">" + chips +
         "</div></figure>";
}

std::string page() {
  std::string html =
      "<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>Theme gallery</title><style>"
      "body{margin:0;padding:24px;background:#202124;color:#E8EAED;font:14px -apple-system,"
      "'Liberation Sans',sans-serif}"
      "main{display:grid;grid-template-columns:repeat(2,1fr);gap:20px}"
      "figure{margin:0;background:#2B2C2F;border-radius:10px;padding:12px}"
      "figcaption{display:flex;align-items:baseline;gap:10px;margin-bottom:6px}"
      "h2{margin:0;font-size:18px}.family{color:#9AA0A6;flex:1}"
      ".swatch{display:inline-block;width:14px;height:14px;border-radius:7px;"
      "border:1px solid #555}"
      "svg{display:block;width:100%;border-radius:6px}"
      ".chips{margin-top:6px;display:flex;flex-wrap:wrap;gap:6px}"
      ".chip{background:#3C4043;border-radius:9px;padding:1px 8px;color:#BDC1C6;font-size:12px}"
      "</style></head><body><main>";
  int index = 0;
  for (const Theme& theme : BuiltInThemes::all()) html += card(theme, index++);
  html += "</main></body></html>\n";
  return html;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "Usage: theme-gallery OUTPUT.html\n";
    return 1;
  }
  std::ofstream out(argv[1], std::ios::binary | std::ios::trunc);
  out << page();
  out.close();
  if (!out) {
    std::cerr << "theme-gallery: could not write " << argv[1] << ".\n";
    return 3;
  }
  return 0;
}
