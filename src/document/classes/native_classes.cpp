// The help texts are shown as they stand, spelling included.
#include "document/classes/native_classes.h"

#include <algorithm>
#include <cmath>

#include "base/text_reader.h"
#include "document/classes/special_classes.h"
#include "document/entity.h"

namespace ferrowand {
namespace {

constexpr const char* UNKNOWN_HELP =
    "This class is unrecognized. It is not in the linked .qc, and is not one of Ferrowand' "
    "native classes.";

constexpr const char* BRUSH_HELP =
    "This is a special class, only used by Ferrowand.\r\n"
    "It is for solid, unmoving objects, and should only be used via the brush editting "
    "tool\r\n"
    "The keys of this class will not be printed to the .map file.";

constexpr const char* EMBED_HELP =
    "This is a special class, only used by Ferrowand.\r\n"
    "It allows you to embed other maps into the map.\r\n"
    "\r\n"
    "Keys:\r\n"
    "XMPminx\r\n"
    " The minimum x value of the embeded map\r\n"
    "XMPminy\r\n"
    " The minimum y value of the embeded map\r\n"
    "XMPminz\r\n"
    " The minimum z value of the embeded map\r\n"
    "XMPmaxx\r\n"
    " The maximum x value of the embeded map\r\n"
    "XMPmaxy\r\n"
    " The maximum y value of the embeded map\r\n"
    "XMPmaxz\r\n"
    " The maximum z value of the embeded map\r\n"
    "XMPfilename\r\n"
    " The filename of the embeded map";

constexpr const char* HIDDEN_HELP =
    "This is a special class, only used by Ferrowand.\r\n"
    "It allows you to temporarily hide entities.\r\n"
    "To return them to visibility, go to Tools/Show temp. hidden.\r\n"
    "They will all become brushes.";

constexpr const char* LAYER_HELP =
    "This is a special class, only used by Ferrowand.\r\n"
    "It allows you to group objects in layers, and should only be used via the layer "
    "list.\r\n"
    "To create a new layer, go to Tools/Add layer.\r\n"
    "It is indexed via it's entityname.\r\n"
    "\r\n"
    "Keys:\r\n"
    "XMPstate\r\n"
    " State flags, bit0=visibility\r\n"
    "XMPcolourr\r\n"
    " Red colour component of the layer when using layer colours (not implemented)\r\n"
    "XMPcolourg\r\n"
    " Green colour component\r\n"
    "XMPcolourb\r\n"
    " Blue colour component\r\n"
    "XMPoldclassname\r\n"
    " The entities' classname before it became hidden.";

constexpr const char* INSTANCE_HELP =
    "This is a special class, only used by Ferrowand.\r\n"
    "It is an instance of a certain template class, and will appear exactly as the class in "
    "Quake. Scaling takes place before rotation, which takes place around the origin. "
    "Translation is last.\r\n"
    "\r\n"
    "Keys:\r\n"
    "XMPclass\r\n"
    " The name of it's class.\r\n"
    "angle\r\n"
    " angle on XY plane.\r\n"
    "XMPscalex\r\n"
    " Scaling factor in x direction\r\n"
    "XMPscaley\r\n"
    " Scaling factor in y direction\r\n"
    "XMPscalez\r\n"
    " Scaling factor in z direction.";

constexpr const char* TEMPLATE_HELP =
    "This is a special class, only used by Ferrowand.\r\n"
    "It is a template class, from which template instances get their brushes.\r\n"
    "The template is indexed by it's entityname.";

int LayerState(const entity& e) {
  const char* state = e.GetKey("XMPstate");
  return state ? ParseInt(state) : 0;
}

}  // namespace

NativeClass::NativeClass(const ClassSet& set, const char* name, const char* help)
    : EntityClass(set) {
  classname = name;
  description = help;
}

UnknownClass::UnknownClass(const ClassSet& set) : NativeClass(set, "unknown", UNKNOWN_HELP) {}

BrushClass::BrushClass(const ClassSet& set) : NativeClass(set, "brush", BRUSH_HELP) {}

EmbedClass::EmbedClass(const ClassSet& set) : NativeClass(set, "embed", EMBED_HELP) {
  green = 0.5f;
}

HiddenClass::HiddenClass(const ClassSet& set) : NativeClass(set, "hidden", HIDDEN_HELP) {}

LayerClass::LayerClass(const ClassSet& set) : NativeClass(set, "layer", LAYER_HELP) {
  red = 0.8f;
  green = 0.1f;
  blue = 0.1f;
}

TemplateInstanceClass::TemplateInstanceClass(const ClassSet& set)
    : NativeClass(set, "templateInstance", INSTANCE_HELP) {
  red = 0.5f;
  green = 0.5f;
}

TemplateClassClass::TemplateClassClass(const ClassSet& set)
    : NativeClass(set, "templateClass", TEMPLATE_HELP) {}

Bounds EmbedClass::EntityBounds(const entity& e) const {
  if (!e.HasOrigin()) return {};
  Bounds bounds = EmbedBox(e);
  bounds.mins = bounds.mins + e.Origin();
  bounds.maxs = bounds.maxs + e.Origin();
  return bounds;
}

Colour LayerColour(const entity& layer) {
  const EntityClass& own = *layer.getClass();
  const auto component = [&](const char* key, float otherwise) {
    const char* value = layer.GetKey(key);
    const double part = value ? ParseFloat(value) : otherwise;
    return static_cast<std::uint8_t>(std::lround(255 * std::clamp(part, 0.0, 1.0)));
  };
  return {component("XMPcolourr", own.red), component("XMPcolourg", own.green),
          component("XMPcolourb", own.blue)};
}

bool LayerClass::IsVisible(const entity& e) const {
  return !(LayerState(e) & LAYER_HIDDEN);
}

bool LayerClass::IsEnabled(const entity& e) const {
  return !(LayerState(e) & LAYER_DISABLED);
}

bool TemplateInstanceClass::IsEnabled(const entity& e) const {
  return !StandsOpened(e);
}

bool TemplateClassClass::IsMarked(const entity& e) const {
  return EntityClass::IsMarked(e) && !IsOpened(e);
}

Bounds TemplateInstanceClass::EntityBounds(const entity& e) const {
  return InstanceBounds(e);
}

std::vector<std::unique_ptr<EntityClass>> MakeNativeClasses(const ClassSet& set) {
  std::vector<std::unique_ptr<EntityClass>> classes;
  classes.push_back(std::make_unique<UnknownClass>(set));
  classes.push_back(std::make_unique<BrushClass>(set));
  classes.push_back(std::make_unique<EmbedClass>(set));
  classes.push_back(std::make_unique<HiddenClass>(set));
  classes.push_back(std::make_unique<LayerClass>(set));
  classes.push_back(std::make_unique<TemplateInstanceClass>(set));
  classes.push_back(std::make_unique<TemplateClassClass>(set));
  return classes;
}

}  // namespace ferrowand
