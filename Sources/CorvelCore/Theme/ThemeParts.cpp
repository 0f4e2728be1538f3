#include "CorvelCore/Theme/ThemeParts.h"

#include <cmath>

namespace corvel {

namespace {

JSONValue colorJSON(const ThemeColor& color) { return JSONValue(color.hex()); }

template <class T>
JSONValue optionalJSON(const std::optional<T>& part) {
  return part ? part->json() : JSONValue();
}

JSONValue optionalColorJSON(const std::optional<ThemeColor>& color) {
  return color ? colorJSON(*color) : JSONValue();
}

}  // namespace

Shape Shape::linear(double degrees) { return {LinearShape{normalisedDegrees(degrees)}}; }

Shape Shape::radial(double centreX, double centreY, double width, double height) {
  return {RadialShape{centreX, centreY, width, height}};
}

double Shape::normalisedDegrees(double degrees) {
  if (!std::isfinite(degrees)) return 180;
  double angle = std::fmod(degrees, 360.0);
  if (angle < 0) angle += 360;
  // A tiny negative remainder plus 360 rounds to 360 itself, which is the
  // same direction as 0; -0 is 0 as well.
  if (angle >= 360 || angle == 0) return 0;
  return angle;
}

JSONValue Fill::json() const {
  struct Writer {
    JSONValue operator()(const SolidFill& solid) const { return colorJSON(solid.color); }
    JSONValue operator()(const LinearFill& linear) const {
      return JSONObject{{"top", colorJSON(linear.top)}, {"bottom", colorJSON(linear.bottom)}};
    }
    JSONValue operator()(const GradientFill& gradient) const {
      JSONObject object = gradient.extras;
      object.set("top", colorJSON(gradient.from));
      object.set("bottom", colorJSON(gradient.to));
      // The two shapes exclude each other; a stale member of the other shape
      // among the extras would make the file ambiguous.
      if (const RadialShape* radial = gradient.shape.asRadial()) {
        object.erase("angle");
        object.set("radial", JSONObject{{"x", radial->centreX},
                                        {"y", radial->centreY},
                                        {"w", radial->width},
                                        {"h", radial->height}});
      } else if (const LinearShape* linear = gradient.shape.asLinear()) {
        object.erase("radial");
        object.set("angle", linear->degrees);
      }
      return object;
    }
  };
  return std::visit(Writer{}, value);
}

JSONValue Shadow::json() const {
  JSONObject object = extras;
  object.set("color", colorJSON(color));
  object.set("radius", radius);
  object.set("x", x);
  object.set("y", y);
  return object;
}

JSONValue PlateFrame::json() const {
  JSONObject object = extras;
  object.set("color", colorJSON(colour));
  object.set("width", width);
  return object;
}

JSONValue PlateGrid::json() const {
  JSONObject object = extras;
  object.set("color", colorJSON(colour));
  object.set("spacing", spacing);
  object.set("lineWidth", lineWidth);
  return object;
}

JSONValue CornerRadii::json() const {
  return JSONArray{JSONValue(topLeft), JSONValue(topRight), JSONValue(bottomRight),
                   JSONValue(bottomLeft)};
}

JSONValue PlateStyle::json() const {
  JSONObject object = extras;
  object.set("fill", fill.json());
  object.set("material", rawValue(material));
  object.set("padding", padding);
  object.set("radius", radius);
  object.set("shadow", optionalJSON(shadow));
  object.set("frame", optionalJSON(frame));
  object.set("grid", optionalJSON(grid));
  object.set("corners", optionalJSON(corners));
  return object;
}

JSONValue CapStyle::json() const {
  JSONObject object = extras;
  object.set("profile", rawValue(profile));
  object.set("gap", gap);
  object.set("radius", radius);
  object.set("depth", depth);
  object.set("alpha", alpha.json());
  object.set("modifier", modifier.json());
  object.set("accent", accent.json());
  object.set("side", colorJSON(side));
  object.set("ring", optionalColorJSON(ring));
  return object;
}

JSONValue LegendStyle::json() const {
  JSONObject object = extras;
  object.set("font", rawValue(font));
  object.set("family", family ? JSONValue(*family) : JSONValue());
  object.set("weight", weight);
  object.set("size", size);
  object.set("modifierSize", modifierSize);
  object.set("alpha", colorJSON(alpha));
  object.set("modifier", colorJSON(modifier));
  object.set("accent", colorJSON(accent));
  object.set("placement", rawValue(placement));
  object.set("glow", optionalJSON(glow));
  return object;
}

JSONValue PressStyle::json() const {
  JSONObject object = extras;
  object.set("effect", rawValue(effect));
  object.set("fill", fill.json());
  object.set("legend", colorJSON(legend));
  object.set("glow", optionalJSON(glow));
  object.set("fadeMs", fadeMs);
  return object;
}

JSONValue CheatsheetStyle::json() const {
  JSONObject object = extras;
  object.set("label", colorJSON(label));
  object.set("fill", fill.json());
  return object;
}

JSONValue Backlight::json() const {
  JSONObject object = extras;
  object.set("mode", rawValue(mode));
  object.set("color", colorJSON(colour));
  return object;
}

JSONValue MouseStyle::json() const {
  JSONObject object = extras;
  object.set("left", colorJSON(left));
  object.set("right", colorJSON(right));
  object.set("middle", colorJSON(middle));
  object.set("halo", colorJSON(halo));
  return object;
}

JSONValue KeyOverride::json() const {
  JSONObject object = extras;
  object.set("cap", optionalJSON(cap));
  object.set("legend", optionalColorJSON(legend));
  return object;
}

}  // namespace corvel
