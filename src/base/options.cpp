#include "base/options.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <memory>
#include <optional>

#include "base/number_text.h"
#include "base/path_text.h"
#include "base/report.h"
#include "platform/settings_store.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

struct Setting {
  const char* name;
  OptionField field;
};

// In the order in which they are read and written.
const Setting SETTINGS[] = {
    {"Gamma Red", &Options::gammaRed},
    {"Gamma Green", &Options::gammaGreen},
    {"Gamma Blue", &Options::gammaBlue},
    {"Undo Levels", &Options::undoLevels},
    {"Default WAD", &Options::defaultWad},
    {"Default QC", &Options::defaultQc},
    {"Quake directory", &Options::quakeDirectory},
    {"Quake executable", &Options::quakeExecutable},
    {"Default entity", &Options::defaultEntity},
    {"QBSP params", &Options::qbspParams},
    {"LIGHT params", &Options::lightParams},
    {"VIS params", &Options::visParams},
    {"QUAKE params", &Options::quakeParams},
    {"Groups Directory", &Options::groupsDirectory},
    {"1x1Mip type", &Options::mipType},
    {"Smart Selection", &Options::smartSelection},
    {"Find flags", &Options::findFlags},
    {"QBSP flags", &Options::qbspFlags},
    {"VIS level", &Options::visLevel},
    {"Compile Threds", &Options::compileThreads},  // the misspelling is in the stored settings
    {"Use Direct3D", &Options::useDirect3D},
    {"Use hardware", &Options::useHardware},
    {"Show Toolbar", &Options::showToolbar},
    {"Default WorldType", &Options::defaultWorldType},
    {"Default Sounds", &Options::defaultSounds},
    {"Dither 3D", &Options::dither3D},
    {"Force Entity Links", &Options::forceEntityLinks},
    {"Back Clip", &Options::backClip},
    {"Texture Cache", &Options::textureCache},
    {"Render Point Entities", &Options::renderPointEntities},
    {"Show Tips", &Options::showTips},
    {"Use Joystick", &Options::useJoystick},
    {"Joystick Number", &Options::joystickNumber},
    {"Joystick Speed", &Options::joystickSpeed},
    {"Track Mouse", &Options::trackMouse},
    {"Max Texture Size", &Options::maxTextureSize},
    {"Camera Move Method", &Options::cameraMoveMethod},
    {"Export Only One Wad", &Options::exportOnlyOneWad},
    {"Right Tray Size", &Options::rightTraySize},
    {"Black Back", &Options::blackBack},
    {"Entity Names", &Options::entityNames},
    {"Quake Lighting Flags", &Options::quakeLightingFlags},
    {"Swap Joy Pitch", &Options::swapJoyPitch},
    {"Draw Light Radius", &Options::drawLightRadius},
    {"Largeness", &Options::largeness},
    {"Draw Templates", &Options::drawTemplates},
    {"Small Captions", &Options::smallCaptions},
    {"No Texture Captions", &Options::noTextureCaptions},
    {"Texture Lock", &Options::textureLock},
    {"Rotation Step", &Options::rotationStep},
    {"Undo Memory", &Options::undoMegabytes},
    {"Backups", &Options::backups},
    {"Autosave Minutes", &Options::autosaveMinutes},
    {"Frame Left", &Options::frameLeft},
    {"Frame Top", &Options::frameTop},
    {"Frame Right", &Options::frameRight},
    {"Frame Bottom", &Options::frameBottom},
    {"Frame Maximised", &Options::frameMaximised},
    {"Pale Others", &Options::paleOthers},
    {"Entity Tree Place", &Options::entityTreePlace},
    {"Find Place", &Options::findPlace},
    {"Entity Tree Shows", &Options::entityTreeShows},
    {"Face Edit Place", &Options::facePlace},
    {"Properties Place", &Options::propertiesPlace},
    {"Current Texture", &Options::currentTexture},
    {"Textures Place", &Options::texturesPlace},
    {"Textures Shown", &Options::texturesShown},
    {"Textures Order", &Options::texturesOrder},
    {"Textures Zoom", &Options::texturesZoom},
    {"Replace Place", &Options::replacePlace},
    {"Replace Flags", &Options::replaceFlags},
    {"Wad Manager Place", &Options::wadManagerPlace},
    {"Primitives Follow", &Options::primitivesFollow},
    {"Hollow Follows", &Options::hollowFollows},
    {"Csg Follows", &Options::csgFollows},
};

constexpr std::array<std::uint8_t, Options::NUMKEYACTIONS> DEFAULTKEYS = {
    38, 40, 37, 39,  // forward, back, look left and right: the arrows
    87, 83,          // up and down: W, S
    90, 88,          // strafe: Z, X
    16, 17,          // mouse look: Shift; run: Control
    86, 66,          // roll: V, B
    36, 35,          // look up and down: Home, End
};

// "Key00" and "Key01" up to "Key130" and "Key131": the first key's name with its last character
// replaced, not the slot's number times ten.
std::string KeyName(std::size_t slot, std::size_t which) {
  std::string name = "Key" + std::to_string(slot) + "0";
  name.back() = static_cast<char>('0' + which);
  return name;
}

void ReadText(SettingsKey& key, const std::string& name, std::size_t length, std::string& field) {
  if (const std::optional<std::string> text = key.ReadString(name))
    field = text->substr(0, length - 1);
}

void Read(SettingsKey& key, const std::string& name, std::string& field) {
  ReadText(key, name, Options::TEXTLENGTH, field);
}

void Read(SettingsKey& key, const std::string& name, float& field) {
  if (const std::optional<std::string> text = key.ReadString(name))
    field = static_cast<float>(ParseFloat(*text));
}

// A narrow field keeps the low bits.
template <std::integral Number>
void Read(SettingsKey& key, const std::string& name, Number& field) {
  if (const std::optional<std::uint32_t> value = key.ReadNumber(name))
    field = static_cast<Number>(*value);
}

bool Write(SettingsKey& key, const std::string& name, const std::string& field) {
  return key.WriteString(name, field);
}

bool Write(SettingsKey& key, const std::string& name, float field) {
  constexpr std::size_t GAMMALENGTH = 10;
  char digits[64];
  // Without an exponent, which a cut would take away.
  const auto result =
      std::to_chars(digits, digits + sizeof digits, field, std::chars_format::fixed);
  return key.WriteString(name, std::string(digits, result.ptr).substr(0, GAMMALENGTH));
}

template <std::integral Number>
bool Write(SettingsKey& key, const std::string& name, Number field) {
  return key.WriteNumber(name, static_cast<std::uint32_t>(field));
}

template <std::size_t N>
void ReadRecent(SettingsKey& key, const std::string& prefix, std::array<std::string, N>& files) {
  for (std::size_t i = 0; i < N; ++i)
    ReadText(key, prefix + std::to_string(i), Options::RECENTLENGTH, files[i]);
}

template <std::size_t N>
bool WriteRecent(SettingsKey& key, const std::string& prefix,
                 const std::array<std::string, N>& files) {
  bool worked = true;
  for (std::size_t i = 0; i < N; ++i)
    worked &= key.WriteString(prefix + std::to_string(i), files[i]);
  return worked;
}

template <std::size_t N>
void PutInFront(const std::string& path, std::array<std::string, N>& files) {
  const auto same = [&](const std::string& file) { return EqualNoCase(file, path); };
  auto old = std::find_if(files.begin(), files.end(), same);
  if (old == files.end()) --old;
  std::rotate(files.begin(), old, old + 1);
  files.front() = path;
}

void Validate(Options& options) {
  if (options.undoLevels == 0) options.undoLevels = 10;
  if (options.rightTraySize < 10) options.rightTraySize = 10;
  if (options.textureCache == 0) options.textureCache = DefaultTextureCache(PhysicalMemoryBytes());
  if (options.backClip == 0) options.backClip = 5000;
  if (options.rotationStep == 0 || options.rotationStep > Options::MAXROTATIONSTEP)
    options.rotationStep = Options().rotationStep;
  if (options.texturesShown > Options::MOSTSHOWN) options.texturesShown = 0;
  if (options.texturesOrder > Options::MOSTORDER) options.texturesOrder = 0;
  options.texturesZoom = std::clamp(options.texturesZoom, Options::LEASTZOOM, Options::MOSTZOOM);
  for (float Options::*gamma : {&Options::gammaRed, &Options::gammaGreen, &Options::gammaBlue})
    options.*gamma = std::max(std::min(options.*gamma, 100.0f), 0.1f);
}

void Close(SettingsKey& key, Reporter& reporter) {
  if (!key.Close()) reporter.Assert("RegCloseKey(key)==ERROR_SUCCESS", "options.cpp", __LINE__);
}

}  // namespace

Options::Options() : textureCache(DefaultTextureCache(PhysicalMemoryBytes())) {
  for (std::size_t slot = 0; slot < NUMKEYACTIONS; ++slot)
    keys[slot] = {DEFAULTKEYS[slot], DEFAULTKEYS[slot]};
}

bool Options::Load(SettingsStore& store, Reporter& reporter) {
  *this = Options();
  const std::unique_ptr<SettingsKey> key = store.OpenSettings();
  if (!key) return false;
  for (const Setting& setting : SETTINGS)
    std::visit([&](auto field) { Read(*key, setting.name, this->*field); }, setting.field);
  for (std::size_t slot = 0; slot < NUMKEYACTIONS; ++slot)
    for (std::size_t which = 0; which < 2; ++which)
      Read(*key, KeyName(slot, which), keys[slot][which]);
  ReadRecent(*key, "Previous", previousFiles);
  ReadRecent(*key, "PreviousGroup", previousGroups);
  ReadRecent(*key, "PreviousClass", recentClasses);
  ReadText(*key, "Recent Textures", LISTLENGTH, recentTextures);
  ReadText(*key, "Favourite Textures", LISTLENGTH, favouriteTextures);
  ReadText(*key, "Wad Folders", LISTLENGTH, wadFolders);
  Close(*key, reporter);
  Validate(*this);
  return true;
}

bool Options::Save(SettingsStore& store, Reporter& reporter) const {
  const std::unique_ptr<SettingsKey> key = store.CreateSettings();
  bool worked = key != nullptr;
  if (key) {
    for (const Setting& setting : SETTINGS)
      std::visit([&](auto field) { worked &= Write(*key, setting.name, this->*field); },
                 setting.field);
    for (std::size_t slot = 0; slot < NUMKEYACTIONS; ++slot)
      for (std::size_t which = 0; which < 2; ++which)
        worked &= Write(*key, KeyName(slot, which), keys[slot][which]);
    worked &= key->WriteString("Version String", "1.01");
    worked &= WriteRecent(*key, "Previous", previousFiles);
    worked &= WriteRecent(*key, "PreviousGroup", previousGroups);
    worked &= WriteRecent(*key, "PreviousClass", recentClasses);
    worked &= key->WriteString("Recent Textures", recentTextures);
    worked &= key->WriteString("Favourite Textures", favouriteTextures);
    worked &= key->WriteString("Wad Folders", wadFolders);
    Close(*key, reporter);
  }
  if (!worked) reporter.Show("Error", "Cannot write options!");
  return worked;
}

void Options::AddRecentMap(const std::string& path) {
  PutInFront(path, previousFiles);
}
void Options::AddRecentGroup(const std::string& path) {
  PutInFront(path, previousGroups);
}
void Options::AddRecentClass(const std::string& name) {
  PutInFront(name, recentClasses);
}

std::uint16_t DefaultTextureCache(std::uint64_t physicalMemory) {
  const std::uint64_t millions = physicalMemory / 1000000;
  if (millions >= 32) return 1000;
  if (millions >= 20) return 500;
  if (millions >= 16) return 100;
  return 50;
}

}  // namespace ferrowand
